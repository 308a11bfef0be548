#include "dxf/tag.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "dxf/number_text.h"

namespace lmt::dxf {

namespace {
ValueType ComputeType(int code);

struct TypeTable {
  ValueType type[kMaxGroupCode + 1];
  bool numeric[kMaxGroupCode + 1];
  TypeTable() {
    for (int c = 0; c <= kMaxGroupCode; ++c) {
      type[c] = ComputeType(c);
      numeric[c] = type[c] != ValueType::kString &&
                   type[c] != ValueType::kHandle &&
                   type[c] != ValueType::kBinary;
    }
  }
};

const TypeTable& Types() {
  static const TypeTable table;
  return table;
}
}  // namespace

ValueType TypeOfCode(int code) {
  if (code < 0 || code > kMaxGroupCode) return ValueType::kString;
  return Types().type[code];
}

bool IsNumericCode(int code) {
  return code >= 0 && code <= kMaxGroupCode && Types().numeric[code];
}

namespace {
ValueType ComputeType(int code) {
  if (code < 10) return ValueType::kString;
  if (code < 60) return ValueType::kDouble;
  if (code < 80) return ValueType::kInt16;
  if (code < 90) return ValueType::kString;  // undefined range
  if (code < 100) return ValueType::kInt32;
  if (code < 103) return ValueType::kString;
  if (code == 105) return ValueType::kHandle;
  if (code < 110) return ValueType::kString;
  if (code < 150) return ValueType::kDouble;
  if (code < 160) return ValueType::kString;
  if (code < 170) return ValueType::kInt64;
  if (code < 180) return ValueType::kInt16;
  if (code < 210) return ValueType::kString;
  if (code < 240) return ValueType::kDouble;
  if (code < 270) return ValueType::kString;
  if (code < 290) return ValueType::kInt16;
  if (code < 300) return ValueType::kBool;
  if (code < 310) return ValueType::kString;
  if (code < 320) return ValueType::kBinary;
  if (code < 370) return ValueType::kHandle;
  if (code < 390) return ValueType::kInt16;
  if (code < 400) return ValueType::kHandle;
  if (code < 410) return ValueType::kInt16;
  if (code < 420) return ValueType::kString;
  if (code < 430) return ValueType::kInt32;
  if (code < 440) return ValueType::kString;
  if (code < 460) return ValueType::kInt32;
  if (code < 470) return ValueType::kDouble;
  if (code < 480) return ValueType::kString;
  if (code < 482) return ValueType::kHandle;
  if (code < 1004) return ValueType::kString;
  if (code == 1004) return ValueType::kBinary;
  if (code == 1005) return ValueType::kHandle;
  if (code < 1010) return ValueType::kString;
  if (code < 1060) return ValueType::kDouble;
  if (code < 1071) return ValueType::kInt16;
  if (code == 1071) return ValueType::kInt32;
  return ValueType::kString;
}
}  // namespace

std::optional<double> ParseDouble(std::string_view s) {
  const char* b = s.data();
  const char* e = b + s.size();
  if (b != e && *b == '+') ++b;  // from_chars rejects a leading '+'
  double v = 0;
  auto [p, ec] = std::from_chars(b, e, v);
  if (ec != std::errc() || p != e || b == e) return std::nullopt;
  return v;
}

std::optional<int64_t> ParseInt(std::string_view s) {
  const char* b = s.data();
  const char* e = b + s.size();
  if (b != e && *b == '+') ++b;
  int64_t v = 0;
  auto [p, ec] = std::from_chars(b, e, v);
  if (ec == std::errc() && p == e && b != e) return v;
  // Some programs (ProE among them) write integer codes as reals.
  std::optional<double> d = ParseDouble(s);
  if (d && *d >= -9.2e18 && *d <= 9.2e18 && *d == static_cast<int64_t>(*d)) {
    return static_cast<int64_t>(*d);
  }
  return std::nullopt;
}

namespace {
struct HexTable {
  int8_t digit[256];
  HexTable() {
    for (int i = 0; i < 256; ++i) digit[i] = -1;
    for (int i = 0; i < 10; ++i) digit['0' + i] = static_cast<int8_t>(i);
    for (int i = 0; i < 6; ++i) {
      digit['A' + i] = digit['a' + i] = static_cast<int8_t>(10 + i);
    }
  }
};
const HexTable kHex;
}  // namespace

std::optional<uint64_t> ParseHandle(std::string_view s) {
  if (s.empty() || s.size() > 16) return std::nullopt;
  uint64_t v = 0;
  for (char c : s) {
    int d = kHex.digit[static_cast<unsigned char>(c)];
    if (d < 0) return std::nullopt;
    v = (v << 4) | static_cast<unsigned>(d);
  }
  return v;
}

size_t FormatDoubleTo(double v, char* buf) {
  // Whole numbers of up to five digits are most of what new records hold
  // (0, 1, 50, tab numbers), and their shortest form is the integer: an
  // exponent form ("1e+04") is never shorter, and a tie goes to the plain
  // form. Negative zero keeps its sign below.
  if (v > -1e5 && v < 1e5 && !(v == 0 && std::signbit(v))) {
    const auto whole = static_cast<int32_t>(v);
    if (static_cast<double>(whole) == v) {
      size_t n = FormatIntTo(whole, buf);
      buf[n++] = '.';
      buf[n++] = '0';
      return n;
    }
  }
  // Room for ".0" after the longest shortest form (24 characters).
  auto [p, ec] = std::to_chars(buf, buf + kNumberTextSize - 2, v);
  size_t n = static_cast<size_t>(p - buf);
  // Keep a decimal point so CAD readers see a real ("1" -> "1.0").
  if (std::string_view(buf, n).find_first_of(".eEn") ==
      std::string_view::npos) {
    buf[n++] = '.';
    buf[n++] = '0';
  }
  return n;
}

size_t FormatIntTo(int64_t v, char* buf) {
  auto [p, ec] = std::to_chars(buf, buf + kNumberTextSize, v);
  return static_cast<size_t>(p - buf);
}

std::string FormatDouble(double v) {
  char buf[kNumberTextSize];
  return std::string(buf, FormatDoubleTo(v, buf));
}

std::string FormatInt(int64_t v) {
  char buf[kNumberTextSize];
  return std::string(buf, FormatIntTo(v, buf));
}

std::string FormatHandle(uint64_t h) {
  char buf[20];
  auto [p, ec] = std::to_chars(buf, buf + sizeof buf, h, 16);
  for (char* c = buf; c != p; ++c) {
    if (*c >= 'a' && *c <= 'f') *c = static_cast<char>(*c - 'a' + 'A');
  }
  return std::string(buf, p);
}

bool EscapeControlChars(std::string_view s, std::string* out) {
  bool any = false;
  for (char c : s) {
    if (static_cast<unsigned char>(c) < 0x20 || c == '^') {
      any = true;
      break;
    }
  }
  if (!any) return false;
  out->clear();
  for (char c : s) {
    if (static_cast<unsigned char>(c) < 0x20) {
      *out += '^';
      *out += static_cast<char>(c + 64);
    } else if (c == '^') {
      *out += "^ ";
    } else {
      *out += c;
    }
  }
  return true;
}

bool UnescapeControlChars(std::string_view s, std::string* out) {
  size_t first = s.find('^');
  if (first == std::string_view::npos) return false;
  out->assign(s.substr(0, first));
  for (size_t i = first; i < s.size(); ++i) {
    char c = s[i];
    if (c == '^' && i + 1 < s.size()) {
      char n = s[i + 1];
      if (n == ' ') {
        *out += '^';
        ++i;
        continue;
      }
      if (n >= '@' && n <= '_') {
        *out += static_cast<char>(n - 64);
        ++i;
        continue;
      }
    }
    *out += c;
  }
  return true;
}

std::string_view Arena::Store(std::string_view s) {
  if (s.empty()) return std::string_view("", 0);
  used_ += s.size();
  if (s.size() > kBlockSize / 4) {  // big values get their own block
    blocks_.push_back(std::make_unique<char[]>(s.size()));
    std::memcpy(blocks_.back().get(), s.data(), s.size());
    return {blocks_.back().get(), s.size()};
  }
  if (left_ < s.size()) {
    blocks_.push_back(std::make_unique<char[]>(kBlockSize));
    cur_ = blocks_.back().get();
    left_ = kBlockSize;
  }
  std::memcpy(cur_, s.data(), s.size());
  std::string_view out(cur_, s.size());
  cur_ += s.size();
  left_ -= s.size();
  return out;
}

}  // namespace lmt::dxf

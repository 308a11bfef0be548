#include "core/text_case.h"

namespace lmt::core {

char32_t FoldCase(char32_t c) {
  if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 32 : c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c >= 0x100 && c <= 0x17F) {
    if (c == 0x130 || c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F) {
      return c;
    }
    if (c == 0x178) return 0xFF;
    bool odd_is_upper = (c >= 0x139 && c <= 0x148) || (c >= 0x179);
    bool is_odd = (c & 1) != 0;
    return is_odd == odd_is_upper ? c + 1 : c;
  }
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 32;
  if (c == 0x386) return 0x3AC;
  if (c >= 0x388 && c <= 0x38A) return c + 37;
  if (c == 0x38C) return 0x3CC;
  if (c == 0x38E || c == 0x38F) return c + 63;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if ((c >= 0x460 && c <= 0x481) || (c >= 0x48A && c <= 0x4BF) ||
      (c >= 0x4D0 && c <= 0x4FF)) {
    return (c & 1) == 0 ? c + 1 : c;
  }
  if (c == 0x4C0) return 0x4CF;
  if (c >= 0x4C1 && c <= 0x4CE) return (c & 1) != 0 ? c + 1 : c;
  return c;
}

std::vector<CodePoint> DecodeUtf8(std::string_view text) {
  std::vector<CodePoint> out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    unsigned char b = static_cast<unsigned char>(text[i]);
    std::size_t len = 0;
    char32_t value = 0;
    if (b < 0x80) {
      len = 1;
      value = b;
    } else if (b >= 0xC2 && b <= 0xDF) {
      len = 2;
      value = b & 0x1F;
    } else if (b >= 0xE0 && b <= 0xEF) {
      len = 3;
      value = b & 0x0F;
    } else if (b >= 0xF0 && b <= 0xF4) {
      len = 4;
      value = b & 0x07;
    }
    bool valid = len != 0 && i + len <= text.size();
    for (std::size_t k = 1; valid && k < len; ++k) {
      unsigned char cont = static_cast<unsigned char>(text[i + k]);
      if ((cont & 0xC0) != 0x80) valid = false;
      value = (value << 6) | (cont & 0x3F);
    }
    // Overlong forms, surrogates and values past U+10FFFF are not text.
    if (valid && ((len == 3 && value < 0x800) ||
                  (len == 4 && (value < 0x10000 || value > 0x10FFFF)) ||
                  (value >= 0xD800 && value <= 0xDFFF))) {
      valid = false;
    }
    if (!valid) {
      out.push_back({0xFFFD, i, 1});
      ++i;
      continue;
    }
    out.push_back({value, i, len});
    i += len;
  }
  return out;
}

void AppendUtf8(char32_t c, std::string& out) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

namespace {

// Folded comparison key of one code point; an invalid byte keeps its own
// identity so that two different invalid bytes never compare equal.
char32_t Key(std::string_view text, const CodePoint& cp) {
  if (cp.value == 0xFFFD && cp.size == 1) {
    return 0x110000 + static_cast<unsigned char>(text[cp.offset]);
  }
  return FoldCase(cp.value);
}

std::vector<char32_t> Keys(std::string_view text,
                           const std::vector<CodePoint>& cps) {
  std::vector<char32_t> keys;
  keys.reserve(cps.size());
  for (const CodePoint& cp : cps) keys.push_back(Key(text, cp));
  return keys;
}

bool MatchesAt(const std::vector<char32_t>& hay, std::size_t at,
               const std::vector<char32_t>& needle) {
  if (at + needle.size() > hay.size()) return false;
  for (std::size_t k = 0; k < needle.size(); ++k) {
    if (hay[at + k] != needle[k]) return false;
  }
  return true;
}

}  // namespace

std::string FoldText(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const CodePoint& cp : DecodeUtf8(text)) {
    if (cp.value == 0xFFFD && cp.size == 1) {
      out.push_back(text[cp.offset]);
    } else {
      AppendUtf8(FoldCase(cp.value), out);
    }
  }
  return out;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  // Object and entity names are ASCII nearly always: compare their ASCII
  // prefix byte by byte, as decoding would, and decode only the rest.
  std::size_t i = 0;
  for (; i < a.size() && i < b.size(); ++i) {
    const auto x = static_cast<unsigned char>(a[i]);
    const auto y = static_cast<unsigned char>(b[i]);
    if ((x | y) >= 0x80) break;
    if (FoldCase(x) != FoldCase(y)) return false;
  }
  // Whatever is left of the longer text holds at least one more code point.
  if (i == a.size() || i == b.size()) return a.size() == b.size();
  a.remove_prefix(i);
  b.remove_prefix(i);
  std::vector<CodePoint> ca = DecodeUtf8(a);
  std::vector<CodePoint> cb = DecodeUtf8(b);
  if (ca.size() != cb.size()) return false;
  for (std::size_t i = 0; i < ca.size(); ++i) {
    if (Key(a, ca[i]) != Key(b, cb[i])) return false;
  }
  return true;
}

std::size_t FindIgnoreCase(std::string_view text, std::string_view find) {
  std::vector<CodePoint> cps = DecodeUtf8(text);
  std::vector<char32_t> hay = Keys(text, cps);
  std::vector<char32_t> needle = Keys(find, DecodeUtf8(find));
  if (needle.empty()) return 0;
  for (std::size_t i = 0; i < hay.size(); ++i) {
    if (MatchesAt(hay, i, needle)) return cps[i].offset;
  }
  return std::string_view::npos;
}

std::string ReplaceIgnoreCase(std::string_view text, std::string_view find,
                              std::string_view replacement) {
  if (find.empty()) return std::string(text);
  std::vector<CodePoint> cps = DecodeUtf8(text);
  std::vector<char32_t> hay = Keys(text, cps);
  std::vector<char32_t> needle = Keys(find, DecodeUtf8(find));
  std::string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < cps.size()) {
    if (MatchesAt(hay, i, needle)) {
      out.append(replacement);
      i += needle.size();
    } else {
      out.append(text.substr(cps[i].offset, cps[i].size));
      ++i;
    }
  }
  return out;
}

std::string DropLastCodePoints(std::string_view text, std::size_t count) {
  std::vector<CodePoint> cps = DecodeUtf8(text);
  if (count >= cps.size()) return std::string();
  return std::string(text.substr(0, cps[cps.size() - count].offset));
}

}  // namespace lmt::core

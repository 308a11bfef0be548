#include "batch/script.h"

#include <array>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "batch/paths.h"
#include "batch/text_case.h"

namespace lmt::batch {
namespace {

// Windows-1251 bytes 0x80..0xBF; 0xC0..0xFF are U+0410..U+044F. The one
// unassigned byte, 0x98, maps to U+0098 as Windows does.
constexpr std::array<char16_t, 64> kCp1251High = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021,
    0x20AC, 0x2030, 0x0409, 0x2039, 0x040A, 0x040C, 0x040B, 0x040F,
    0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x0098, 0x2122, 0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F,
    0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6, 0x00A7,
    0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407,
    0x00B0, 0x00B1, 0x0406, 0x0456, 0x0491, 0x00B5, 0x00B6, 0x00B7,
    0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457,
};

std::string FromUtf16Le(std::string_view bytes) {
  std::string out;
  std::size_t i = 0;
  auto unit = [&](std::size_t at) {
    return static_cast<char32_t>(
        static_cast<unsigned char>(bytes[at]) |
        (static_cast<unsigned char>(bytes[at + 1]) << 8));
  };
  while (i + 1 < bytes.size()) {
    char32_t c = unit(i);
    i += 2;
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < bytes.size()) {
      char32_t low = unit(i);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    if (c >= 0xD800 && c <= 0xDFFF) c = 0xFFFD;  // unpaired surrogate
    AppendUtf8(c, out);
  }
  return out;
}

bool IsValidUtf8(std::string_view bytes) {
  for (const CodePoint& cp : DecodeUtf8(bytes)) {
    if (cp.value == 0xFFFD && cp.size == 1) return false;
  }
  return true;
}

std::string FromCp1251(std::string_view bytes) {
  std::string out;
  for (char ch : bytes) {
    unsigned char b = static_cast<unsigned char>(ch);
    if (b < 0x80) {
      out.push_back(ch);
    } else if (b < 0xC0) {
      AppendUtf8(kCp1251High[b - 0x80], out);
    } else {
      AppendUtf8(0x0410 + (b - 0xC0), out);
    }
  }
  return out;
}

std::string NormalizeLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\r') {
      out += "\r\n";
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else if (c == '\n') {
      out += "\r\n";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

std::vector<std::string_view> SplitCrLf(std::string_view text) {
  std::vector<std::string_view> lines;
  if (text.empty()) return lines;
  std::size_t start = 0;
  while (true) {
    std::size_t at = text.find("\r\n", start);
    if (at == std::string_view::npos) {
      lines.push_back(text.substr(start));
      return lines;
    }
    lines.push_back(text.substr(start, at - start));
    start = at + 2;
  }
}

}  // namespace

std::string DecodeTextFile(std::string_view bytes) {
  if (bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE') {
    return FromUtf16Le(bytes.substr(2));
  }
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  if (IsValidUtf8(bytes)) return std::string(bytes);
  return FromCp1251(bytes);
}

std::string BlanksToLineBreaks(std::string_view text) {
  std::string normalized = NormalizeLineEnds(text);
  // A quote opens a protected stretch only when a closing one follows.
  std::size_t quote_count = 0;
  for (char c : normalized) quote_count += c == '"';
  std::string out;
  out.reserve(normalized.size());
  std::size_t quotes_seen = 0;
  for (char c : normalized) {
    bool inside = quotes_seen % 2 == 1 && quotes_seen < quote_count;
    if (c == '"') {
      ++quotes_seen;
      out.push_back(c);
    } else if (c == ' ' && !inside) {
      out += "\r\n";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

Result<std::string> LoadScriptFile(const std::filesystem::path& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    return Status::NotFound("script file not found: " + PathToUtf8(path));
  }
  std::ifstream in(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)),
                    std::istreambuf_iterator<char>());
  if (in.bad()) {
    return Status::IOError("cannot read script file " + PathToUtf8(path));
  }
  return BlanksToLineBreaks(DecodeTextFile(bytes));
}

std::string DoubleBackslashes(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    out.push_back(c);
    if (c == '\\') out.push_back('\\');
  }
  return out;
}

std::string ScriptArguments(std::string_view script_text) {
  std::string acc;
  for (std::string_view line : SplitCrLf(script_text)) {
    acc.push_back('"');
    for (char c : line) {
      if (c != '"') acc.push_back(c);
    }
    acc.push_back('"');
  }
  return DoubleBackslashes(acc);
}

bool ScriptSendsCommand(std::string_view arguments) {
  return !arguments.empty() && arguments != " ";
}

std::string ScriptExpression(std::string_view script_text) {
  return "(command " + ScriptArguments(script_text) + ")\r";
}

}  // namespace lmt::batch

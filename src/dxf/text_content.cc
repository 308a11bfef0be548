#include "dxf/text_content.h"

#include <cctype>
#include <cstdint>

namespace lmt::dxf {
namespace {

void AppendUtf8(std::string& out, uint32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Skips "...;" after a code that takes a value up to a semicolon; returns
// the index after it (or the end when the semicolon is missing).
size_t SkipToSemicolon(std::string_view s, size_t i) {
  const size_t semi = s.find(';', i);
  return semi == std::string_view::npos ? s.size() : semi + 1;
}

}  // namespace

std::string PlainTextOf(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%' || i + 2 >= text.size() || text[i + 1] != '%') {
      out += text[i];
      continue;
    }
    const char code = static_cast<char>(
        std::tolower(static_cast<unsigned char>(text[i + 2])));
    switch (code) {
      case 'c':
        AppendUtf8(out, 0x2300);
        i += 2;
        break;
      case 'd':
        AppendUtf8(out, 0x00B0);
        i += 2;
        break;
      case 'p':
        AppendUtf8(out, 0x00B1);
        i += 2;
        break;
      case 'u':
      case 'o':
      case 'k':
        i += 2;
        break;
      case '%':
        out += '%';
        i += 2;
        break;
      default:
        if (std::isdigit(static_cast<unsigned char>(code))) {
          size_t j = i + 2;
          uint32_t value = 0;
          while (j < text.size() && j < i + 5 &&
                 std::isdigit(static_cast<unsigned char>(text[j]))) {
            value = value * 10 + static_cast<uint32_t>(text[j] - '0');
            ++j;
          }
          AppendUtf8(out, value);
          i = j - 1;
        } else {
          out += '%';
        }
    }
  }
  return out;
}

std::vector<std::string> MTextLines(std::string_view text) {
  std::vector<std::string> lines(1);
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '{' || c == '}') continue;
    if (c == '\n') {
      lines.emplace_back();
      continue;
    }
    if (c == '^' && i + 1 < text.size() && text[i + 1] == 'I') {
      lines.back() += ' ';  // caret-encoded tab
      ++i;
      continue;
    }
    if (c != '\\' || i + 1 >= text.size()) {
      lines.back() += c;
      continue;
    }
    const char code = text[i + 1];
    switch (code) {
      case 'P':
        lines.emplace_back();
        ++i;
        break;
      case '~':
        lines.back() += ' ';
        ++i;
        break;
      case '\\':
      case '{':
      case '}':
        lines.back() += code;
        ++i;
        break;
      case 'L':
      case 'l':
      case 'O':
      case 'o':
      case 'K':
      case 'k':
      case 'N':
        ++i;
        break;
      case 'S': {  // \Snum^den; or num/den; or num#den;
        const size_t end = SkipToSemicolon(text, i + 2);
        const size_t stop = text[end - 1] == ';' ? end - 1 : end;
        for (size_t j = i + 2; j < stop; ++j) {
          const char s = text[j];
          if (s == '^' || s == '#') {
            lines.back() += '/';
          } else if (s != '\\') {
            lines.back() += s;
          }
        }
        i = end - 1;
        break;
      }
      case 'A':
      case 'C':
      case 'c':
      case 'f':
      case 'F':
      case 'H':
      case 'h':
      case 'Q':
      case 'q':
      case 'T':
      case 't':
      case 'W':
      case 'w':
      case 'p':
        i = SkipToSemicolon(text, i + 2) - 1;
        break;
      default:
        lines.back() += code;  // an escaped character
        ++i;
    }
  }
  return lines;
}

}  // namespace lmt::dxf

#include "core/text_encoding.h"

#include <array>
#include <cstdint>

namespace lmt::core {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

// Windows-1251 bytes 0x80..0xBF; 0xC0..0xFF are U+0410..U+044F.
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

void AppendUtf8(std::string& out, uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Decodes one code point at `i`; returns false (and consumes one byte) on a
// malformed sequence.
bool NextCodePoint(std::string_view s, size_t& i, uint32_t& cp) {
  const auto b0 = static_cast<unsigned char>(s[i]);
  if (b0 < 0x80) {
    cp = b0;
    ++i;
    return true;
  }
  int extra = 0;
  uint32_t min = 0;
  if ((b0 & 0xE0) == 0xC0) {
    extra = 1, cp = b0 & 0x1F, min = 0x80;
  } else if ((b0 & 0xF0) == 0xE0) {
    extra = 2, cp = b0 & 0x0F, min = 0x800;
  } else if ((b0 & 0xF8) == 0xF0) {
    extra = 3, cp = b0 & 0x07, min = 0x10000;
  } else {
    ++i;
    return false;
  }
  for (int k = 1; k <= extra; ++k) {
    if (i + k >= s.size()) {
      ++i;
      return false;
    }
    const auto b = static_cast<unsigned char>(s[i + k]);
    if ((b & 0xC0) != 0x80) {
      ++i;
      return false;
    }
    cp = (cp << 6) | (b & 0x3F);
  }
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
    ++i;
    return false;
  }
  i += static_cast<size_t>(extra) + 1;
  return true;
}

char16_t LowerAscii(char16_t c) {
  return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  size_t i = 0;
  while (i < utf8.size()) {
    uint32_t cp = 0;
    if (!NextCodePoint(utf8, i, cp)) {
      out += kReplacement;
    } else if (cp >= 0x10000) {
      cp -= 0x10000;
      out += static_cast<char16_t>(0xD800 + (cp >> 10));
      out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
    } else {
      out += static_cast<char16_t>(cp);
    }
  }
  return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (size_t i = 0; i < utf16.size(); ++i) {
    uint32_t c = utf16[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < utf16.size() &&
        utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      c = kReplacement;
    }
    AppendUtf8(out, c);
  }
  return out;
}

bool IsValidUtf8(std::string_view bytes) {
  size_t i = 0;
  uint32_t cp = 0;
  while (i < bytes.size()) {
    if (!NextCodePoint(bytes, i, cp)) return false;
  }
  return true;
}

std::u16string DecodeCp1251(std::string_view bytes) {
  std::u16string out;
  out.reserve(bytes.size());
  for (char ch : bytes) {
    const auto b = static_cast<unsigned char>(ch);
    if (b < 0x80) {
      out += static_cast<char16_t>(b);
    } else if (b < 0xC0) {
      out += kCp1251High[b - 0x80];
    } else {
      out += static_cast<char16_t>(0x0410 + (b - 0xC0));
    }
  }
  return out;
}

std::string EncodeCp1251(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char16_t c : text) {
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c >= 0x0410 && c <= 0x044F) {
      out += static_cast<char>(0xC0 + (c - 0x0410));
    } else {
      char mapped = '?';
      for (size_t k = 0; k < kCp1251High.size(); ++k) {
        if (kCp1251High[k] == c) {
          mapped = static_cast<char>(0x80 + k);
          break;
        }
      }
      out += mapped;
    }
  }
  return out;
}

std::u16string DecodeUtf16Le(std::string_view bytes) {
  std::u16string out;
  out.reserve(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    out +=
        static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                              (static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  return out;
}

std::string EncodeUtf16Le(std::u16string_view text) {
  std::string out;
  out.reserve(text.size() * 2);
  for (char16_t c : text) {
    out += static_cast<char>(c & 0xFF);
    out += static_cast<char>(c >> 8);
  }
  return out;
}

std::string AsciiLower(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return out;
}

bool EqualsIgnoreAsciiCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(static_cast<unsigned char>(a[i])) !=
        LowerAscii(static_cast<unsigned char>(b[i])))
      return false;
  }
  return true;
}

bool EqualsIgnoreAsciiCase(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  }
  return true;
}

size_t Utf16Length(std::string_view utf8) { return Utf8ToUtf16(utf8).size(); }

std::string Utf16Prefix(std::string_view utf8, size_t units) {
  std::u16string wide = Utf8ToUtf16(utf8);
  if (wide.size() <= units) return std::string(utf8);
  size_t cut = units;
  if (cut > 0 && wide[cut - 1] >= 0xD800 && wide[cut - 1] <= 0xDBFF) --cut;
  return Utf16ToUtf8(std::u16string_view(wide).substr(0, cut));
}

}  // namespace lmt::core

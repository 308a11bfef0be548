#include "dxf/encoding.h"

#include <cstdint>

#include "dxf/document.h"
#include "dxf/tag.h"

namespace lmt::dxf {
namespace {

// Unicode of the bytes 0x80..0xFF.
constexpr uint16_t kCp1251[128] = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC,
    0x2030, 0x0409, 0x2039, 0x040A, 0x040C, 0x040B, 0x040F, 0x0452, 0x2018,
    0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0xFFFD, 0x2122, 0x0459,
    0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408,
    0x00A4, 0x0490, 0x00A6, 0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC,
    0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456, 0x0491, 0x00B5,
    0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455,
    0x0457, 0x0410, 0x0411, 0x0412, 0x0413, 0x0414, 0x0415, 0x0416, 0x0417,
    0x0418, 0x0419, 0x041A, 0x041B, 0x041C, 0x041D, 0x041E, 0x041F, 0x0420,
    0x0421, 0x0422, 0x0423, 0x0424, 0x0425, 0x0426, 0x0427, 0x0428, 0x0429,
    0x042A, 0x042B, 0x042C, 0x042D, 0x042E, 0x042F, 0x0430, 0x0431, 0x0432,
    0x0433, 0x0434, 0x0435, 0x0436, 0x0437, 0x0438, 0x0439, 0x043A, 0x043B,
    0x043C, 0x043D, 0x043E, 0x043F, 0x0440, 0x0441, 0x0442, 0x0443, 0x0444,
    0x0445, 0x0446, 0x0447, 0x0448, 0x0449, 0x044A, 0x044B, 0x044C, 0x044D,
    0x044E, 0x044F,
};

constexpr uint16_t kCp1252Low[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
    0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};

uint32_t ByteToUnicode(unsigned char b, CodePage cp) {
  if (b < 0x80) return b;
  if (cp == CodePage::kAnsi1251) return kCp1251[b - 0x80];
  if (b < 0xA0) return kCp1252Low[b - 0x80];
  return b;  // 0xA0..0xFF equal Latin-1
}

// The byte for `u` in the code page, or -1.
int UnicodeToByte(uint32_t u, CodePage cp) {
  if (u < 0x80) return static_cast<int>(u);
  if (cp == CodePage::kAnsi1252 && u >= 0xA0 && u <= 0xFF) {
    return static_cast<int>(u);
  }
  for (int b = 0x80; b <= 0xFF; ++b) {
    if (ByteToUnicode(static_cast<unsigned char>(b), cp) == u && u != 0xFFFD) {
      return b;
    }
  }
  return -1;
}

void AppendUtf8(uint32_t u, std::string* out) {
  if (u < 0x80) {
    *out += static_cast<char>(u);
  } else if (u < 0x800) {
    *out += static_cast<char>(0xC0 | (u >> 6));
    *out += static_cast<char>(0x80 | (u & 0x3F));
  } else if (u < 0x10000) {
    *out += static_cast<char>(0xE0 | (u >> 12));
    *out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
    *out += static_cast<char>(0x80 | (u & 0x3F));
  } else {
    *out += static_cast<char>(0xF0 | (u >> 18));
    *out += static_cast<char>(0x80 | ((u >> 12) & 0x3F));
    *out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
    *out += static_cast<char>(0x80 | (u & 0x3F));
  }
}

// Decodes one UTF-8 sequence at s[i]; returns its length, 0 if malformed.
size_t NextUtf8(std::string_view s, size_t i, uint32_t* u) {
  unsigned char c = static_cast<unsigned char>(s[i]);
  size_t n = c < 0x80         ? 1
             : (c >> 5) == 6  ? 2
             : (c >> 4) == 14 ? 3
             : (c >> 3) == 30 ? 4
                              : 0;
  if (n == 0 || i + n > s.size()) return 0;
  uint32_t v = n == 1 ? c : c & (0x7F >> n);
  for (size_t k = 1; k < n; ++k) {
    unsigned char cc = static_cast<unsigned char>(s[i + k]);
    if ((cc & 0xC0) != 0x80) return 0;
    v = (v << 6) | (cc & 0x3F);
  }
  *u = v;
  return n;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// \U+XXXX at s[i]: the code point, or -1.
int64_t Escape(std::string_view s, size_t i) {
  if (i + 7 > s.size() || s[i] != '\\' ||
      (s[i + 1] != 'U' && s[i + 1] != 'u') || s[i + 2] != '+') {
    return -1;
  }
  int64_t v = 0;
  for (size_t k = 3; k < 7; ++k) {
    int d = HexDigit(s[i + k]);
    if (d < 0) return -1;
    v = v * 16 + d;
  }
  return v;
}

}  // namespace

bool IsUnicodeEscape(std::string_view s, size_t i) { return Escape(s, i) >= 0; }

CodePage CodePageFromName(std::string_view name) {
  if (name == "ANSI_1251") return CodePage::kAnsi1251;
  return CodePage::kAnsi1252;
}

CodePage CodePageOf(const Document& doc) {
  if (doc.version() >= "AC1021") return CodePage::kUtf8;
  return CodePageFromName(doc.HeaderValue("$DWGCODEPAGE").value_or(""));
}

std::string DecodeText(std::string_view raw, CodePage cp) {
  std::string plain;
  if (UnescapeControlChars(raw, &plain)) raw = plain;
  std::string out;
  out.reserve(raw.size());
  for (size_t i = 0; i < raw.size();) {
    if (raw[i] == '\\') {
      int64_t u = Escape(raw, i);
      if (u >= 0) {
        i += 7;
        // A character beyond U+FFFF comes as its UTF-16 surrogate pair.
        int64_t low = u >= 0xD800 && u < 0xDC00 ? Escape(raw, i) : -1;
        if (low >= 0xDC00 && low < 0xE000) {
          u = 0x10000 + ((u - 0xD800) << 10) + (low - 0xDC00);
          i += 7;
        }
        AppendUtf8(static_cast<uint32_t>(u), &out);
        continue;
      }
    }
    unsigned char c = static_cast<unsigned char>(raw[i]);
    if (cp == CodePage::kUtf8 || c < 0x80) {
      out += raw[i++];
    } else {
      AppendUtf8(ByteToUnicode(c, cp), &out);
      ++i;
    }
  }
  return out;
}

std::string EncodeText(std::string_view utf8, CodePage cp) {
  std::string out;
  if (cp == CodePage::kUtf8) {
    if (!EscapeControlChars(utf8, &out)) out.assign(utf8);
    return out;
  }
  out.reserve(utf8.size());
  static constexpr char kHex[] = "0123456789ABCDEF";
  auto escape = [&](uint32_t unit) {
    out += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4)
      out += kHex[(unit >> shift) & 15];
  };
  for (size_t i = 0; i < utf8.size();) {
    uint32_t u = 0;
    size_t n = NextUtf8(utf8, i, &u);
    if (n == 0) {  // not UTF-8: pass the byte through
      out += utf8[i++];
      continue;
    }
    i += n;
    int b = UnicodeToByte(u, cp);
    if (b >= 0) {
      out += static_cast<char>(b);
    } else if (u <= 0xFFFF) {
      escape(u);
    } else {
      // As UTF-16, the way CAD programs hold it: a surrogate pair.
      escape(0xD800 + ((u - 0x10000) >> 10));
      escape(0xDC00 + ((u - 0x10000) & 0x3FF));
    }
  }
  std::string escaped;
  if (EscapeControlChars(out, &escaped)) return escaped;
  return out;
}

}  // namespace lmt::dxf

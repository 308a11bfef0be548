#include "layouts/sheet_texts.h"

#include <cmath>
#include <cstdio>

namespace lmt::layouts {
namespace {

// One character folded to lower case: ASCII letters, and the two-byte
// UTF-8 Cyrillic capitals U+0400..U+042F to U+0430..U+045F. Returns the
// folded code point and advances `i` past the character; other bytes come
// back one at a time.
unsigned FoldNext(std::string_view s, size_t& i) {
  unsigned char c = static_cast<unsigned char>(s[i]);
  if (c >= 'A' && c <= 'Z') {
    ++i;
    return c - 'A' + 'a';
  }
  if ((c == 0xD0 || c == 0xD1) && i + 1 < s.size()) {
    unsigned char c2 = static_cast<unsigned char>(s[i + 1]);
    if ((c2 & 0xC0) == 0x80) {
      unsigned cp = ((c & 0x1Fu) << 6) | (c2 & 0x3Fu);
      i += 2;
      if (cp >= 0x410 && cp <= 0x42F) return cp + 0x20;  // А..Я
      if (cp >= 0x400 && cp <= 0x40F) return cp + 0x50;  // Ѐ..Џ, Ё
      return cp;
    }
  }
  ++i;
  if (c < 0x80) return c;
  // Other bytes of multi-byte characters get a range of their own, above
  // every code point, so they never equal a decoded letter.
  return 0x110000u + c;
}

}  // namespace

std::string ScaleLabel(double scale) {
  if (!(scale > 0) || !std::isfinite(scale)) return "";
  double reciprocal = 1 / scale;
  if (!std::isfinite(reciprocal)) return "";
  char buffer[64];
  double whole = std::round(reciprocal);
  // Past 1e15 whole numbers are no longer exact in a double; write them
  // in the short form rather than as noise digits.
  if (whole >= 1 && whole < 1e15) {
    std::snprintf(buffer, sizeof buffer, "1:%.0f", whole);
  } else {
    std::snprintf(buffer, sizeof buffer, "1:%.15g", reciprocal);
  }
  return buffer;
}

std::string FillPlaceholders(std::string_view text, const SheetValues& v) {
  std::string out;
  out.reserve(text.size());
  size_t i = 0;
  while (i < text.size()) {
    if (text.compare(i, 2, "##") == 0 && i + 2 < text.size()) {
      char code = text[i + 2];
      bool known = true;
      switch (code) {
        case '1':
          out += std::to_string(v.row);
          break;
        case '2':
          out += v.drawing;
          break;
        case '3':
          out += v.layout;
          break;
        case '4':
          out += ScaleLabel(v.scale);
          break;
        case 'N':
          out += std::to_string(v.sheets);
          break;
        default:
          known = false;
      }
      if (known) {
        i += 3;
        continue;
      }
    }
    out += text[i];
    ++i;
  }
  return out;
}

int AttachmentPointFor(int option_index) {
  if (option_index == 1) return 5;
  if (option_index == 2) return 6;
  return 4;
}

bool NamesEqualNoCase(std::string_view a, std::string_view b) {
  size_t i = 0;
  size_t j = 0;
  while (i < a.size() && j < b.size()) {
    if (FoldNext(a, i) != FoldNext(b, j)) return false;
  }
  return i == a.size() && j == b.size();
}

std::string FoldedName(std::string_view name) {
  std::string key;
  key.reserve(name.size() * 3);
  size_t i = 0;
  while (i < name.size()) {
    // Three bytes hold every folded value (at most 0x110000 + 0xFF).
    const unsigned folded = FoldNext(name, i);
    key += static_cast<char>((folded >> 16) & 0xFF);
    key += static_cast<char>((folded >> 8) & 0xFF);
    key += static_cast<char>(folded & 0xFF);
  }
  return key;
}

bool BlockMatches(std::string_view block_name, std::string_view wanted) {
  return !wanted.empty() && NamesEqualNoCase(block_name, wanted);
}

AttributeChanges FillAttributeChanges(const AttributeChanges& typed,
                                      const SheetValues& values) {
  AttributeChanges filled = typed;
  for (AttributeChange& change : filled) {
    change.value = FillPlaceholders(change.value, values);
  }
  return filled;
}

std::optional<std::string> NewAttributeValue(const AttributeChanges& changes,
                                             std::string_view tag) {
  if (tag.empty()) return std::nullopt;
  for (const AttributeChange& change : changes) {
    if (!change.tag.empty() && NamesEqualNoCase(change.tag, tag)) {
      return change.value;
    }
  }
  return std::nullopt;
}

}  // namespace lmt::layouts

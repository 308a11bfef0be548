#include "batch/text_runs.h"

#include <charconv>
#include <vector>

#include "core/text_case.h"

namespace lmt::batch {
namespace {

// One piece of content: a formatting code, or one plain character with the
// bytes that spell it.
struct Piece {
  bool is_code;
  char32_t value;  // the character; for codes unused
  std::size_t offset;
  std::size_t size;
};

bool IsHex(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') ||
         (c >= 'A' && c <= 'F');
}

// Codes whose argument runs up to and including the next ';'.
bool TakesArgument(char c) {
  return std::string_view("fFHWQTACcpS").find(c) != std::string_view::npos;
}

// The comparison key of a plain character; an invalid byte keeps its own
// identity.
char32_t Key(std::string_view content, const Piece& p) {
  if (p.value == 0xFFFD && p.size == 1) {
    return 0x110000 + static_cast<unsigned char>(content[p.offset]);
  }
  return core::FoldCase(p.value);
}

std::vector<Piece> Split(std::string_view s, TextFormat format) {
  std::vector<core::CodePoint> cps = core::DecodeUtf8(s);
  std::vector<Piece> pieces;
  pieces.reserve(cps.size());
  std::size_t i = 0;  // index into cps
  auto end_of = [&](std::size_t cp_index) {
    return cp_index < cps.size() ? cps[cp_index].offset : s.size();
  };
  while (i < cps.size()) {
    const core::CodePoint& cp = cps[i];
    if (format == TextFormat::kPlain) {
      pieces.push_back({false, cp.value, cp.offset, cp.size});
      ++i;
      continue;
    }
    if (cp.value == '{' || cp.value == '}') {
      pieces.push_back({true, 0, cp.offset, 1});
      ++i;
      continue;
    }
    if (cp.value != '\\' || i + 1 >= cps.size()) {
      pieces.push_back({false, cp.value, cp.offset, cp.size});
      ++i;
      continue;
    }
    char32_t n = cps[i + 1].value;
    std::size_t start = cp.offset;
    if (n == '\\' || n == '{' || n == '}') {
      pieces.push_back({false, n, start, 2});
      i += 2;
    } else if (n == 'U' && s.size() >= start + 7 && s[start + 2] == '+' &&
               IsHex(s[start + 3]) && IsHex(s[start + 4]) &&
               IsHex(s[start + 5]) && IsHex(s[start + 6])) {
      unsigned value = 0;
      std::from_chars(s.data() + start + 3, s.data() + start + 7, value, 16);
      pieces.push_back({false, value, start, 7});
      i += 7;
    } else if (n == 'M' && i + 2 < cps.size() && cps[i + 2].value == '+') {
      // "\M+nXXXX": a character of a multibyte code page; kept as a code.
      std::size_t last = std::min(i + 8, cps.size());
      pieces.push_back({true, 0, start, end_of(last) - start});
      i = last;
    } else if (n < 0x80 && TakesArgument(static_cast<char>(n))) {
      std::size_t j = i + 2;
      while (j < cps.size() && cps[j].value != ';') ++j;
      if (j < cps.size()) ++j;  // the ';' belongs to the code
      pieces.push_back({true, 0, start, end_of(j) - start});
      i = j;
    } else {
      pieces.push_back({true, n, start, end_of(i + 2) - start});
      i += 2;
    }
  }
  return pieces;
}

}  // namespace

std::string ReplaceInContent(std::string_view content, TextFormat format,
                             std::span<const ReplacementPair> pairs) {
  std::vector<Piece> pieces = Split(content, format);
  std::vector<std::vector<char32_t>> finds;
  for (const ReplacementPair& pair : pairs) {
    std::vector<char32_t> keys;
    std::string_view find = pair.find;
    for (const core::CodePoint& cp : core::DecodeUtf8(find)) {
      keys.push_back(Key(find, {false, cp.value, cp.offset, cp.size}));
    }
    finds.push_back(std::move(keys));
  }
  auto matches = [&](std::size_t at, const std::vector<char32_t>& find) {
    if (find.empty() || at + find.size() > pieces.size()) return false;
    for (std::size_t k = 0; k < find.size(); ++k) {
      const Piece& p = pieces[at + k];
      if (p.is_code || Key(content, p) != find[k]) return false;
    }
    return true;
  };
  std::string out;
  out.reserve(content.size());
  std::size_t i = 0;
  while (i < pieces.size()) {
    std::size_t hit = finds.size();
    if (!pieces[i].is_code) {
      for (std::size_t f = 0; f < finds.size(); ++f) {
        if (matches(i, finds[f])) {
          hit = f;
          break;
        }
      }
    }
    if (hit < finds.size()) {
      out += EscapeContent(pairs[hit].replace, format);
      i += finds[hit].size();
    } else {
      out.append(content.substr(pieces[i].offset, pieces[i].size));
      ++i;
    }
  }
  return out;
}

std::string PlainContent(std::string_view content, TextFormat format) {
  std::string out;
  for (const Piece& p : Split(content, format)) {
    if (!p.is_code) {
      if (p.value == 0xFFFD && p.size == 1) {
        out.push_back(content[p.offset]);
      } else {
        core::AppendUtf8(p.value, out);
      }
    } else if (p.value == 'P') {
      out.push_back('\n');
    }
  }
  return out;
}

std::string EscapeContent(std::string_view text, TextFormat format) {
  if (format == TextFormat::kPlain) return std::string(text);
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    if (c == '\\' || c == '{' || c == '}') out.push_back('\\');
    out.push_back(c);
  }
  return out;
}

}  // namespace lmt::batch

// Case-insensitive comparison and replacement of UTF-8 texts, as the add-in
// compares tags, layout, block and set names, object names and search texts.
// Drawings of our users carry Russian names, so the folding covers Cyrillic
// besides Latin; it is a simple one-to-one lower-casing of code points (ASCII,
// Latin-1, Latin Extended-A, Greek and Cyrillic), not full Unicode folding
// ("ß" does not match "SS"). Invalid UTF-8 bytes compare as themselves and
// are copied unchanged by the replacement.
#ifndef LMT_CORE_TEXT_CASE_H_
#define LMT_CORE_TEXT_CASE_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lmt::core {

// The lower-case partner of `c` within the covered scripts, else `c`.
char32_t FoldCase(char32_t c);

// One decoded code point and where its bytes lie in the source text.
struct CodePoint {
  char32_t value;  // U+FFFD for an invalid byte, which then spans one byte
  std::size_t offset;
  std::size_t size;
};

// Decodes `text` without losing a byte: the spans cover the text exactly.
std::vector<CodePoint> DecodeUtf8(std::string_view text);
void AppendUtf8(char32_t c, std::string& out);

// The text with every code point folded; invalid bytes stay as they are.
std::string FoldText(std::string_view text);

bool EqualsIgnoreCase(std::string_view a, std::string_view b);

// Byte offset of the first case-insensitive occurrence of `find` in `text`,
// or npos. An empty `find` is found at 0.
std::size_t FindIgnoreCase(std::string_view text, std::string_view find);

// `text` with every case-insensitive occurrence of `find` replaced by
// `replacement`, scanning left to right without overlaps. An empty `find`
// leaves the text unchanged.
std::string ReplaceIgnoreCase(std::string_view text, std::string_view find,
                              std::string_view replacement);

// `text` without its last `count` code points (all of it when shorter).
std::string DropLastCodePoints(std::string_view text, std::size_t count);

}  // namespace lmt::core

#endif  // LMT_CORE_TEXT_CASE_H_

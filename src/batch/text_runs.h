// Search and replace inside the content of a text object without breaking
// its formatting. A TEXT's content is plain; an MTEXT's (and an MLEADER's
// text) mixes plain characters with formatting codes: "{" and "}" groups,
// "\f...;" fonts, "\H...;" heights, "\P" paragraph breaks, "\S...;" stacks
// and the like. Only the plain characters are searched; every code is kept
// byte for byte where it stood.
//
// A match never spans a code: in "Pl{\L an}" the word "Plan" is not found,
// since replacing across a code would have to drop or move it. Escaped
// characters ("\\", "\{", "\}", "\U+XXXX") count as the plain character
// they stand for. Stacked fractions ("\S1/2;") are codes and not searched.
// Text put into an MTEXT is escaped so that it shows as typed.
#ifndef LMT_BATCH_TEXT_RUNS_H_
#define LMT_BATCH_TEXT_RUNS_H_

#include <span>
#include <string>
#include <string_view>

namespace lmt::batch {

enum class TextFormat { kPlain, kMText };

struct ReplacementPair {
  std::string find;
  std::string replace;
};

// Scans the plain characters left to right; at each position the first pair
// (in the given order, empty finds skipped) whose find text occurs there,
// compared without regard to case, is replaced and the scan goes on after
// it. Replacements are never searched again, so a list a->b, b->c turns
// "ab" into "bc", not "cc".
std::string ReplaceInContent(std::string_view content, TextFormat format,
                             std::span<const ReplacementPair> pairs);

// The characters a reader sees: codes dropped, escapes resolved, each
// paragraph break "\P" as a line feed.
std::string PlainContent(std::string_view content, TextFormat format);

// Plain text as MTEXT content: backslashes and braces escaped. Plain format
// returns the text unchanged.
std::string EscapeContent(std::string_view text, TextFormat format);

}  // namespace lmt::batch

#endif  // LMT_BATCH_TEXT_RUNS_H_

// What a text entity shows, as plain UTF-8: the %%-codes of TEXT and
// ATTRIB resolved, and the formatting codes of MTEXT stripped.
//
// Input is already decoded to UTF-8 (encoding.h resolves \U+XXXX).
// Formatting that changes appearance (fonts, colours, heights, stacking
// layout, underlines) is dropped; only the characters and the paragraph
// breaks remain. Stacked fractions \Sa^b; read "a/b".
#ifndef LMT_DXF_TEXT_CONTENT_H_
#define LMT_DXF_TEXT_CONTENT_H_

#include <string>
#include <string_view>
#include <vector>

namespace lmt::dxf {

// TEXT/ATTRIB: %%c (diameter), %%d (degree), %%p (plus-minus), %%nnn
// (character code) become characters; %%u, %%o and %%k toggles vanish;
// %%% is a percent sign.
std::string PlainTextOf(std::string_view text);

// MTEXT: one entry per paragraph (\P, or a line break in the value).
std::vector<std::string> MTextLines(std::string_view text);

}  // namespace lmt::dxf

#endif  // LMT_DXF_TEXT_CONTENT_H_

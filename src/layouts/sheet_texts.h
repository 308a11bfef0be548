// The texts the actions after creation put on a new layout: the
// placeholders "##1" .. "##4" and "##N" filled in for one frame, the attachment
// point of the sheet text, and which block references and attributes the
// attribute change touches.
//
// Pure functions over plain values; reading the controls of `OknoDeistvie`
// and writing into the drawing belong to the host loop.
#ifndef LMT_LAYOUTS_SHEET_TEXTS_H_
#define LMT_LAYOUTS_SHEET_TEXTS_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace lmt::layouts {

// What the placeholders stand for on one new layout.
struct SheetValues {
  int row = 0;          // "##1": the frame's row number, 1 for the first
  std::string drawing;  // "##2": the active drawing's name
  std::string layout;   // "##3": the layout just created
  double scale = 0;     // "##4": from the viewport scale of this frame
  int sheets = 0;       // "##N": the rows the run makes a layout for
};

// "##4": "1:" and the reciprocal of `scale`, rounded half away from zero to
// a whole number and written with plain digits. The format the sheet label
// imitates groups thousands by the locale ("1,000" or "1 000"); a scale is
// written "1:1000" in a title block and in CAD scale lists, so no grouping
// is written, whatever the locale. A reciprocal that rounds to 0 (a scale
// above 2) or is 1e15 or more is written with up to 15 significant digits
// and "." ("1:0.1", "1:1e+20").
// A scale that is not a positive finite number gives "" (the reciprocal
// cannot be taken).
std::string ScaleLabel(double scale);

// Replaces every "##1", "##2", "##3", "##4" and "##N" in `text` in one pass
// from left to right: text put in for a placeholder is not searched again,
// so a drawing or layout name holding "##4" stays as it is. Everything else
// stays as typed. "##N" is a capital N only: "##n" is left as typed, so a
// text that happened to hold it before keeps it ("Sheet ##1 of ##N").
std::string FillPlaceholders(std::string_view text, const SheetValues& values);

// `Option_ViravnivanieText` index 0, 1, 2 -> the attachment point 4, 5, 6
// (middle left, middle centre, middle right). Any other index gives 4, the
// first option's.
int AttachmentPointFor(int option_index);

// Case-insensitive equality of block names and attribute tags: ASCII and
// Cyrillic letters (UTF-8) fold; other bytes compare as they are.
bool NamesEqualNoCase(std::string_view a, std::string_view b);

// A key for sorting and looking up names ignoring case: two names have the
// same key exactly when NamesEqualNoCase says they are equal.
std::string FoldedName(std::string_view name);

// The attribute change: a block reference is changed when its block name
// equals `Text_NameBlock` ignoring case. An empty wanted name matches
// nothing.
bool BlockMatches(std::string_view block_name, std::string_view wanted);

// The three tag/value pairs of the attribute settings, values already
// filled in.
struct AttributeChange {
  std::string tag;
  std::string value;
};
using AttributeChanges = std::array<AttributeChange, 3>;

// The three pairs with their values' placeholders filled in.
AttributeChanges FillAttributeChanges(const AttributeChanges& typed,
                                      const SheetValues& values);

// The new value for an attribute of tag `tag`: the value of the first pair
// whose tag equals it ignoring case. An empty tag field matches no
// attribute, and an attribute with an empty tag is never changed.
std::optional<std::string> NewAttributeValue(const AttributeChanges& changes,
                                             std::string_view tag);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_SHEET_TEXTS_H_

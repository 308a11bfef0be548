// The frame template: the properties of the one example frame the user
// picks, the texts they are shown as in the filter window, and the two
// selection filters built around it: the pick filter that offers only
// candidate objects, and the search filter from the template's kind and the
// filter window's ticked criteria.
//
// Pure values: the capture itself (picking, reading the entity) and the
// filter window belong to the callers, which pass the texts in.
#ifndef LMT_FRAMES_FRAME_TEMPLATE_H_
#define LMT_FRAMES_FRAME_TEMPLATE_H_

#include <string>
#include <string_view>
#include <vector>

#include "host/selection_filter.h"

namespace lmt::frames {

// `Kind` values.
inline constexpr std::string_view kKindPolyline = "POLYLINE";
inline constexpr std::string_view kKindBlock = "BLOCK";
inline constexpr std::string_view kKindXRef = "XRef";

// The words of colour and lineweight fields.
inline constexpr std::string_view kByLayer = "ByLayer";
inline constexpr std::string_view kByBlock = "ByBlock";
inline constexpr std::string_view kDefault = "Default";

// All fields are text, empty until the first successful capture.
struct FrameTemplate {
  std::string kind;
  std::string block_name;  // EffectiveName of a reference, else empty
  std::string layer;
  std::string color;  // ColorText
  std::string linetype;
  std::string line_weight;  // LineWeightText
};

// Case-insensitive equality (core::EqualsIgnoreCase, Cyrillic included):
// object names, kinds, block names, tags and the words "ByLayer", "ByBlock",
// "Default" compare this way everywhere.
bool EqualsNoCase(std::string_view a, std::string_view b);

// The kind for an entity's ObjectName: "POLYLINE" for "AcDbPolyline";
// for "AcDbBlockReference" "XRef" when its block definition `is_xref`,
// else "BLOCK"; any other object name unchanged.
std::string KindOf(std::string_view object_name, bool is_xref);

bool IsPolylineKind(std::string_view kind);
// "BLOCK" or "XRef".
bool IsReferenceKind(std::string_view kind);

// The colour number as text; 256 gives "ByLayer", 0 "ByBlock".
std::string ColorText(int color);

// The lineweight (hundredths of a millimetre) as text; -1 gives "ByLayer",
// -2 "ByBlock", -3 "Default".
std::string LineWeightText(int line_weight);

// A LineWeightText as shown in `Combo_VesLinii`: the words as they are,
// numbers in millimetres with two decimals ("0" -> "0.00", "9" -> "0.09",
// "25" -> "0.25", "211" -> "2.11"). Any other text is returned unchanged.
std::string LineWeightShown(std::string_view line_weight_text);

// The items of `Combo_ColorLinii`: "ByLayer", "ByBlock", "1".."254".
std::vector<std::string> ColorItems();
// The items of `Combo_VesLinii`: the three words and the 24 standard
// lineweights "0.00".."2.11".
std::vector<std::string> LineWeightItems();

// The twelve pairs that let the user pick a lightweight polyline of 4 or 5
// vertices or any block or external reference.
host::SelectionFilter BuildPickFilter();

// The filter window's criteria as they stand at search time.
struct FilterChoices {
  bool layer_on = false;        // Check_TolkoVSloe
  std::string layer;            // Combo_SloyLinii
  bool color_on = false;        // Check_TolkoVCvete
  std::string color;            // Combo_ColorLinii
  bool linetype_on = false;     // Check_TolkoVTip
  std::string linetype;         // Combo_TipLinii
  bool line_weight_on = false;  // Check_TolkoVVes
  std::string line_weight;      // Combo_VesLinii
  bool block_name_on = false;   // Check_TolkoNameBlock
  std::string block_name;       // UniText_NameBlock
};

// The search filter, pairs in this order, all of which must match:
// the entity type for the kind (none for an empty or unknown kind), the
// 4-to-5 vertex test for a polyline, layer (8), colour (62), linetype (6),
// lineweight (370), block name (2, with ",`*U*" so anonymous references of
// a dynamic block pass; only for a reference kind and a non-empty name),
// and always (410, "Model").
// A colour other than the two words passes as text; a lineweight field
// that does not read as a number after the words are replaced and "." is
// removed passes as its text too, so the host decides rather than a
// criterion silently vanishing.
host::SelectionFilter BuildSearchFilter(std::string_view kind,
                                        const FilterChoices& choices);

}  // namespace lmt::frames

#endif  // LMT_FRAMES_FRAME_TEMPLATE_H_

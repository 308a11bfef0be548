#include "frames/frame_template.h"

#include <charconv>
#include <cstdint>
#include <optional>

#include "core/text_case.h"

namespace lmt::frames {
namespace {

constexpr std::string_view kStandardLineWeights =
    "0.00:0.05:0.09:0.13:0.15:0.18:0.20:0.25:0.30:0.35:0.40:0.50:0.53:0.60:"
    "0.70:0.80:0.90:1.00:1.06:1.20:1.40:1.58:2.00:2.11";

std::optional<int32_t> ParseInt32(std::string_view text) {
  int32_t value = 0;
  auto [end, ec] =
      std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) {
    return std::nullopt;
  }
  return value;
}

// The lineweight filter value: the words become -1/-2/-3, every "." goes,
// and the rest is read as a whole number ("0.25" -> 25, "1.00" -> 100).
host::FilterValue LineWeightValue(std::string_view text) {
  std::string digits;
  if (EqualsNoCase(text, kByLayer)) {
    digits = "-1";
  } else if (EqualsNoCase(text, kByBlock)) {
    digits = "-2";
  } else if (EqualsNoCase(text, kDefault)) {
    digits = "-3";
  } else {
    for (char c : text) {
      if (c != '.') digits += c;
    }
  }
  if (std::optional<int32_t> v = ParseInt32(digits)) return *v;
  return std::string(text);
}

}  // namespace

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return core::EqualsIgnoreCase(a, b);
}

std::string KindOf(std::string_view object_name, bool is_xref) {
  if (EqualsNoCase(object_name, "AcDbPolyline")) {
    return std::string(kKindPolyline);
  }
  if (EqualsNoCase(object_name, "AcDbBlockReference")) {
    return std::string(is_xref ? kKindXRef : kKindBlock);
  }
  return std::string(object_name);
}

bool IsPolylineKind(std::string_view kind) {
  return EqualsNoCase(kind, kKindPolyline);
}

bool IsReferenceKind(std::string_view kind) {
  return EqualsNoCase(kind, kKindBlock) || EqualsNoCase(kind, kKindXRef);
}

std::string ColorText(int color) {
  if (color == 256) return std::string(kByLayer);
  if (color == 0) return std::string(kByBlock);
  return std::to_string(color);
}

std::string LineWeightText(int line_weight) {
  switch (line_weight) {
    case -1:
      return std::string(kByLayer);
    case -2:
      return std::string(kByBlock);
    case -3:
      return std::string(kDefault);
    default:
      return std::to_string(line_weight);
  }
}

std::string LineWeightShown(std::string_view text) {
  std::optional<int32_t> n = ParseInt32(text);
  if (!n || *n < 0) return std::string(text);
  std::string digits(text);
  if (*n >= 100) return digits.substr(0, 1) + "." + digits.substr(1);
  if (*n >= 10) return "0." + digits;
  return "0.0" + digits;
}

std::vector<std::string> ColorItems() {
  std::vector<std::string> items = {std::string(kByLayer),
                                    std::string(kByBlock)};
  // 254, not 255: the list has always stopped there.
  for (int i = 1; i <= 254; ++i) items.push_back(std::to_string(i));
  return items;
}

std::vector<std::string> LineWeightItems() {
  std::vector<std::string> items = {
      std::string(kByLayer), std::string(kByBlock), std::string(kDefault)};
  std::string_view rest = kStandardLineWeights;
  while (!rest.empty()) {
    size_t colon = rest.find(':');
    items.emplace_back(rest.substr(0, colon));
    rest = colon == std::string_view::npos ? "" : rest.substr(colon + 1);
  }
  return items;
}

host::SelectionFilter BuildPickFilter() {
  host::SelectionFilter f;
  f.Add(-4, "<OR");
  f.Add(-4, "<AND");
  f.Add(0, "LWPOLYLINE");
  f.Add(-4, ">=");
  f.Add(90, int16_t{4});
  f.Add(-4, "<=");
  f.Add(90, int16_t{5});
  f.Add(-4, "AND>");
  f.Add(-4, "<AND");
  f.Add(0, "INSERT");
  f.Add(-4, "AND>");
  f.Add(-4, "OR>");
  return f;
}

host::SelectionFilter BuildSearchFilter(std::string_view kind,
                                        const FilterChoices& c) {
  host::SelectionFilter f;
  if (IsPolylineKind(kind)) {
    f.Add(0, "LWPOLYLINE");
    // Five vertices admit an outline that repeats its first point.
    f.Add(-4, ">=");
    f.Add(90, int16_t{4});
    f.Add(-4, "<=");
    f.Add(90, int16_t{5});
  } else if (IsReferenceKind(kind)) {
    f.Add(0, "INSERT");
  }
  if (c.layer_on) f.Add(8, c.layer);
  if (c.color_on) {
    if (EqualsNoCase(c.color, kByLayer)) {
      f.Add(62, int16_t{256});
    } else if (EqualsNoCase(c.color, kByBlock)) {
      f.Add(62, int16_t{0});
    } else {
      f.Add(62, c.color);
    }
  }
  if (c.linetype_on) f.Add(6, c.linetype);
  if (c.line_weight_on) f.Add(370, LineWeightValue(c.line_weight));
  if (IsReferenceKind(kind) && c.block_name_on && !c.block_name.empty()) {
    // References of a dynamic block are anonymous ("*U..."); the back-quote
    // escapes the asterisk. The search checks their effective name.
    f.Add(2, c.block_name + ",`*U*");
  }
  f.Add(410, "Model");
  return f;
}

}  // namespace lmt::frames

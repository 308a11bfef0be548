#include "ui/key_filters.h"

#include "core/numbers.h"
#include "layouts/layout_naming.h"

namespace lmt::ui {
namespace {

constexpr std::string_view kNumericFields[] = {
    "Text_MashtabBumaga",
    "Text_MashtabModel",
    "Text_AutoMashtabRamka",
    "Text_CoordY",
    "Text_CoordX",
    "Text_RamkaPrirachenie",
    "Text_CopyMashtabBumaga",
    "Text_CopyMashtabModel",
    "Text_CopyCoordY",
    "Text_CopyCoordX",
    "Text_CopyShirina",
    "Text_CopyVisota",
    "Text_MashtabAnnotationBumaga",
    "Text_MashtabAnnotationModel",
    "Text_TextVisota",
    "Text_TextCoordX",
    "Text_TextCoordY",
    "Text_ScalePDF",
    "Text_IntervalPDF",
};

}  // namespace

KeyFilter KeyFilterOf(std::string_view control_name) {
  if (control_name == "Text_StrokaNameFile") return KeyFilter::kNaming;
  for (std::string_view name : kNumericFields)
    if (name == control_name) return KeyFilter::kNumeric;
  return KeyFilter::kNone;
}

std::optional<wchar_t> FilterKey(KeyFilter filter, wchar_t key,
                                 std::string_view field_text,
                                 bool decimal_comma) {
  switch (filter) {
    case KeyFilter::kNone:
      return key;
    case KeyFilter::kNaming:
      if (layouts::NamingKeyAllowed(static_cast<int>(key))) return key;
      return std::nullopt;
    case KeyFilter::kNumeric: {
      if (key > 0x7F) return std::nullopt;
      std::optional<char> c = core::FilterNumericKey(static_cast<char>(key),
                                                     field_text, decimal_comma);
      if (!c) return std::nullopt;
      return static_cast<wchar_t>(*c);
    }
  }
  return std::nullopt;
}

}  // namespace lmt::ui

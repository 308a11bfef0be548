#include "layouts/paper_choice.h"

#include <algorithm>
#include <cmath>

#include "host/paper_media.h"

namespace lmt::layouts {
namespace {

// ISO 216 sheets, and the elongated ones of ISO 5457 (also GOST 2.301):
// n short sides of the base sheet by its long side, rounded as published.
constexpr SheetSize kSheets[] = {
    {"A4", 297, 210, false},    {"A3", 420, 297, false},
    {"A2", 594, 420, false},    {"A1", 841, 594, false},
    {"A0", 1189, 841, false},   {"A4x3", 630, 297, true},
    {"A4x4", 841, 297, true},   {"A4x5", 1051, 297, true},
    {"A4x6", 1261, 297, true},  {"A4x7", 1471, 297, true},
    {"A4x8", 1682, 297, true},  {"A4x9", 1892, 297, true},
    {"A3x3", 891, 420, true},   {"A3x4", 1189, 420, true},
    {"A3x5", 1486, 420, true},  {"A3x6", 1783, 420, true},
    {"A3x7", 2080, 420, true},  {"A2x3", 1261, 594, true},
    {"A2x4", 1682, 594, true},  {"A2x5", 2102, 594, true},
    {"A1x3", 1783, 841, true},  {"A1x4", 2378, 841, true},
    {"A0x2", 1682, 1189, true}, {"A0x3", 2523, 1189, true},
};

}  // namespace

std::span<const SheetSize> IsoSheetSizes() { return kSheets; }

std::optional<PaperChoice> ChoosePaper(double width, double height,
                                       double tolerance) {
  if (!(width > 0) || !(height > 0)) return std::nullopt;
  tolerance = std::max(0.0, tolerance);
  const double long_side = std::max(width, height);
  const double short_side = std::min(width, height);
  const bool landscape = width >= height;
  // A hair of slack so that a tolerance typed as 1 takes a side 1 mm off,
  // whatever the floating-point noise of the scale.
  const double slack = tolerance + 1e-9;
  const SheetSize* best = nullptr;
  for (const SheetSize& sheet : kSheets) {
    if (std::abs(sheet.long_side - long_side) <= slack &&
        std::abs(sheet.short_side - short_side) <= slack) {
      return PaperChoice{sheet, landscape, true};
    }
    const bool holds = sheet.long_side + slack >= long_side &&
                       sheet.short_side + slack >= short_side;
    if (holds && (best == nullptr || sheet.long_side * sheet.short_side <
                                         best->long_side * best->short_side)) {
      best = &sheet;
    }
  }
  if (best == nullptr) return std::nullopt;
  return PaperChoice{*best, landscape, false};
}

std::string MediaNameOf(const PaperChoice& choice) {
  const std::string prefix =
      choice.sheet.extended
          ? std::string("UserDefinedMetric_")
          : "ISO_full_bleed_" + std::string(choice.sheet.name) + "_";
  return host::MetricMediaName(prefix, choice.width(), choice.height());
}

}  // namespace lmt::layouts

// The paper of each new layout: an ISO sheet (A4 to A0, ISO 5457) or one of
// its extended sizes (A4x3 ... A0x3, made of several base sheets side by
// side, as drawing offices use them), picked from the frame's size on paper
// and turned the way the frame lies; or one paper for every layout.
//
// Sizes are in millimetres. A sheet is described lying down (its long side
// first); a choice says which way it is fed.
//
// Pure: no host calls.
#ifndef LMT_LAYOUTS_PAPER_CHOICE_H_
#define LMT_LAYOUTS_PAPER_CHOICE_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lmt::layouts {

struct SheetSize {
  std::string_view name;  // "A3", "A3x3"
  double long_side = 0;
  double short_side = 0;
  bool extended = false;  // not a plain A size: no stock device paper
};

// A4, A3, A2, A1, A0, then the extended sizes, each group from small to
// large.
std::span<const SheetSize> IsoSheetSizes();

// The sheet for a frame of `width` by `height` on paper.
struct PaperChoice {
  SheetSize sheet;
  bool landscape = true;  // the frame is at least as wide as it is high
  // The frame matches the sheet within the tolerance; else the sheet is the
  // smallest one that holds the frame.
  bool exact = true;
  // The sheet as fed: width across, height down, following `landscape`.
  double width() const {
    return landscape ? sheet.long_side : sheet.short_side;
  }
  double height() const {
    return landscape ? sheet.short_side : sheet.long_side;
  }
};

// The sheet whose sides both lie within `tolerance` of the frame's, else
// the smallest sheet (by area) holding the frame with that tolerance;
// nullopt when no sheet holds it or the size is not positive. A square
// frame counts as landscape.
std::optional<PaperChoice> ChoosePaper(double width, double height,
                                       double tolerance);

// The device's name of the chosen paper. The plain A sizes get the names
// the built-in PDF devices use ("ISO_full_bleed_A3_(420.00_x_297.00_MM)");
// the extended ones the name a CAD program gives a size the user adds to a
// device ("UserDefinedMetric_(891.00_x_420.00_MM)"): such a device needs
// that size added before it plots the sheet.
std::string MediaNameOf(const PaperChoice& choice);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_PAPER_CHOICE_H_

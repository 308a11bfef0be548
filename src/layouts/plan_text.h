// A creation plan in words, for the user to check before anything is made:
// per planned layout its name, the frame's kind and model-space centre, the
// viewport's size on paper, its scale and twist. The command line's dry run
// prints these fields; the main window shows PlanText.
#ifndef LMT_LAYOUTS_PLAN_TEXT_H_
#define LMT_LAYOUTS_PLAN_TEXT_H_

#include <string>
#include <vector>

#include "frames/frame_table.h"
#include "layouts/layout_creation.h"

namespace lmt::layouts {

// Enough digits for a drawing's coordinates without the noise of the last
// bits of a double; never "-0".
std::string PlanNumber(double value);

// A viewport's twist as a host shows it: degrees in [0, 360).
double TwistDegrees(double radians);

// "polyline", "block" or "xref" from row `row`'s "Typ" cell (the cell's
// text when it is none of them).
std::string KindOfRow(const frames::FrameTable& table, int row);

// One planned layout as texts; the viewport's fields are "-" for a layout
// without a viewport.
struct PlanRow {
  std::string name;
  std::string kind;
  std::string centre;  // "X,Y"
  std::string size;    // "WxH" on paper
  std::string scale;   // ScaleRatioText
  std::string twist;   // degrees
};

// The rows of `plan`, whose frames index `table`.
std::vector<PlanRow> PlanRows(const CreationPlan& plan,
                              const frames::FrameTable& table);

// The plan as a tab-separated table under a header line, the count of
// layouts, then the warnings one per line (or that there are none); lines
// end with "\n".
std::string PlanText(const CreationPlan& plan, const frames::FrameTable& table,
                     const std::vector<std::string>& warnings);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_PLAN_TEXT_H_

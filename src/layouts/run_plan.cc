#include "layouts/run_plan.h"

namespace lmt::layouts {

std::vector<FramePlan> PlanRun(const frames::FrameTable& table,
                               const CreationParameters& params,
                               std::string_view drawing_name) {
  std::vector<FramePlan> plans;
  double scale = params.scale;
  for (int r = 1; r <= table.last_row(); ++r) {
    const std::string& name = table.Cell(r, frames::Column::kLayoutName);
    if (name.empty()) break;
    FramePlan plan;
    plan.row = r;
    plan.layout_name = name;
    if (std::optional<FrameRow> frame = ReadFrameRow(table, r)) {
      plan.viewport = PlanViewport(*frame, params, scale);
      // The scale moves on even when the viewport cannot be made.
      scale = FrameScale(*frame, params, scale);
    }
    plan.sheet = {r, std::string(drawing_name), name, scale};
    plans.push_back(std::move(plan));
  }
  for (FramePlan& plan : plans) {
    plan.sheet.sheets = static_cast<int>(plans.size());
  }
  return plans;
}

}  // namespace lmt::layouts

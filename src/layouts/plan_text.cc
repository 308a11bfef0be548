#include "layouts/plan_text.h"

#include <cmath>
#include <cstdio>
#include <numbers>

#include "frames/frame_record.h"
#include "layouts/plan_checks.h"

namespace lmt::layouts {

std::string PlanNumber(double value) {
  if (std::abs(value) < 1e-9) value = 0;
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.10g", value);
  return buffer;
}

double TwistDegrees(double radians) {
  double degrees = radians * 180 / std::numbers::pi;
  if (std::abs(degrees - 360) < 1e-9) degrees = 0;
  return degrees;
}

std::string KindOfRow(const frames::FrameTable& table, int row) {
  frames::FrameRecord record = frames::ReadRecord(table, row);
  if (record.kind == frames::FrameKind::kNone) return record.typ;
  return std::string(frames::KindWord(record.kind));
}

std::vector<PlanRow> PlanRows(const CreationPlan& plan,
                              const frames::FrameTable& table) {
  std::vector<PlanRow> rows;
  for (const FramePlan& frame : plan.frames) {
    PlanRow row{
        frame.layout_name, KindOfRow(table, frame.row), "-", "-", "-", "-"};
    if (const std::optional<ViewportPlan>& vp = frame.viewport) {
      row.centre =
          PlanNumber(vp->frame_centre.x) + "," + PlanNumber(vp->frame_centre.y);
      row.size = PlanNumber(vp->viewport.width) + "x" +
                 PlanNumber(vp->viewport.height);
      row.scale = ScaleRatioText(vp->scale);
      row.twist = PlanNumber(TwistDegrees(vp->viewport.twist));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string PlanText(const CreationPlan& plan, const frames::FrameTable& table,
                     const std::vector<std::string>& warnings) {
  std::string text = "Layout\tFrame\tCentre\tViewport\tScale\tTwist\n";
  for (const PlanRow& row : PlanRows(plan, table)) {
    text += row.name + "\t" + row.kind + "\t" + row.centre + "\t" + row.size +
            "\t" + row.scale + "\t" + row.twist + "\n";
  }
  text += std::to_string(plan.frames.size()) +
          (plan.frames.size() == 1 ? " layout" : " layouts") +
          " planned; nothing is made by this check.\n";
  if (warnings.empty()) return text + "No warnings.\n";
  text += "\nWarnings:\n";
  for (const std::string& warning : warnings) text += "- " + warning + "\n";
  return text;
}

}  // namespace lmt::layouts

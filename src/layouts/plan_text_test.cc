#include "layouts/plan_text.h"

#include <gtest/gtest.h>

#include <numbers>
#include <string>

namespace lmt::layouts {
namespace {

using frames::Column;

TEST(PlanTextTest, RowsWithAndWithoutViewportThenTheWarnings) {
  frames::FrameTable table;
  table.SetRowCount(3);
  table.SetCell(1, Column::kTyp, std::string(frames::kTypBlock));
  table.SetCell(2, Column::kTyp, std::string(frames::kTypPolyline));
  CreationPlan plan;
  FramePlan with;
  with.row = 1;
  with.layout_name = "Лист 1";
  ViewportPlan vp;
  vp.frame_centre = {115000, -0.0000000001};  // no "-0"
  vp.scale = 0.01;
  vp.viewport.width = 420;
  vp.viewport.height = 297.5;
  vp.viewport.twist = 2 * std::numbers::pi;  // a full turn is none
  with.viewport = vp;
  FramePlan without;
  without.row = 2;
  without.layout_name = "B";
  plan.frames = {with, without};

  const std::string rows =
      "Layout\tFrame\tCentre\tViewport\tScale\tTwist\n"
      "Лист 1\tblock\t115000,0\t420x297.5\t1:100\t0\n"
      "B\tpolyline\t-\t-\t-\t-\n"
      "2 layouts planned; nothing is made by this check.\n";
  EXPECT_EQ(PlanText(plan, table, {}), rows + "No warnings.\n");
  EXPECT_EQ(PlanText(plan, table, {"one", "two"}),
            rows + "\nWarnings:\n- one\n- two\n");

  plan.frames.resize(1);
  plan.frames[0].viewport->viewport.twist = std::numbers::pi / 2;
  EXPECT_NE(
      PlanText(plan, table, {}).find("\t90\n1 layout planned; nothing is made"),
      std::string::npos);
}

}  // namespace
}  // namespace lmt::layouts

#include "layouts/run_plan.h"

#include <gtest/gtest.h>

namespace lmt::layouts {
namespace {

using frames::Column;
using frames::FrameTable;
using frames::Quad;

Quad Box(double x, double y, double w, double h) {
  return {{{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}};
}

class PlanRunTest : public ::testing::Test {
 protected:
  void SetUp() override {
    table_.SetRowCount(6);
    AddFrame(1, "A-1", Box(0, 0, 42000, 29700));
    AddFrame(2, "A-2", Box(50000, 0, 0, 0));  // collapsed outline
    AddFrame(3, "A-3", Box(100000, 0, 84000, 59400));
    AddFrame(5, "after the gap", Box(0, 0, 42000, 29700));
    params_.scale_mode = ScaleMode::kFromWidth;
    params_.scale = 1;
    params_.frame_paper_length = 420;
  }
  void AddFrame(int row, const char* name, const Quad& corners) {
    table_.SetCell(row, Column::kLayoutName, name);
    table_.SetCorners(row, corners);
    table_.SetCell(row, Column::kTyp, "Polyline");
  }
  FrameTable table_;
  CreationParameters params_;
};

TEST_F(PlanRunTest, StopsAtTheFirstUnnamedRow) {
  std::vector<FramePlan> plans = PlanRun(table_, params_, "plan.dwg");
  ASSERT_EQ(plans.size(), 3u);
  EXPECT_EQ(plans[2].layout_name, "A-3");
  EXPECT_EQ(plans[2].sheet.row, 3);
  EXPECT_EQ(plans[2].sheet.drawing, "plan.dwg");
  // Rows past the gap are not made, so they do not count as sheets either.
  for (const FramePlan& plan : plans) EXPECT_EQ(plan.sheet.sheets, 3);
}

TEST_F(PlanRunTest, FrameWithoutWidthKeepsTheScaleBefore) {
  std::vector<FramePlan> plans = PlanRun(table_, params_, "plan.dwg");
  ASSERT_EQ(plans.size(), 3u);
  ASSERT_TRUE(plans[0].viewport);
  EXPECT_FALSE(plans[1].viewport);  // nothing to show
  ASSERT_TRUE(plans[2].viewport);
  EXPECT_EQ(FillPlaceholders("##4", plans[0].sheet), "1:100");
  EXPECT_EQ(FillPlaceholders("##4", plans[1].sheet), "1:100");
  EXPECT_EQ(FillPlaceholders("##4", plans[2].sheet), "1:200");
}

TEST_F(PlanRunTest, UnreadableCornersGiveALayoutWithoutViewport) {
  table_.SetCell(1, Column::kPointX3, "");
  std::vector<FramePlan> plans = PlanRun(table_, params_, "");
  ASSERT_EQ(plans.size(), 3u);
  EXPECT_FALSE(plans[0].viewport);
  EXPECT_EQ(plans[0].sheet.scale, 1);  // the fixed scale, nothing before it
  EXPECT_EQ(plans[2].sheet.scale, 0.005);
}

}  // namespace
}  // namespace lmt::layouts

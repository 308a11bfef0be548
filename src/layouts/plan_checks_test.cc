#include "layouts/plan_checks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace lmt::layouts {
namespace {

using frames::Column;
using frames::Quad;

Quad Box(double x, double y, double w, double h) {
  return {{{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}};
}

bool HasLineWith(const std::vector<std::string>& lines,
                 const std::string& part) {
  for (const std::string& line : lines) {
    if (line.find(part) != std::string::npos) return true;
  }
  return false;
}

class PlanChecksTest : public ::testing::Test {
 protected:
  void Add(const std::string& name, const Quad& corners, double scale = 0.01) {
    const int row = static_cast<int>(plans_.size()) + 1;
    table_.SetRowCount(row + 1);
    table_.SetCell(row, Column::kLayoutName, name);
    table_.SetCorners(row, corners);
    FramePlan plan;
    plan.row = row;
    plan.layout_name = name;
    plan.viewport = ViewportPlan{};
    plan.viewport->scale = scale;
    plans_.push_back(plan);
  }
  frames::FrameTable table_;
  std::vector<FramePlan> plans_;
};

TEST_F(PlanChecksTest, CleanSheetSetLaidEdgeToEdgeGivesNoWarning) {
  // Three A3 frames sharing borders, and one turned by 30 degrees far off.
  Add("S-1", Box(0, 0, 420, 297));
  Add("S-2", Box(420, 0, 420, 297));
  Add("S-3", Box(0, 297, 420, 297));
  const double c = std::cos(0.5235987755982988),
               s = std::sin(0.5235987755982988);
  Add("S-4", {{{5000, 0},
               {5000 + 420 * c, 420 * s},
               {5000 + 420 * c - 297 * s, 420 * s + 297 * c},
               {5000 - 297 * s, 297 * c}}});
  EXPECT_TRUE(CheckPlan(plans_, table_, {"Model", "Layout1"}).empty());
}

TEST_F(PlanChecksTest, NamesRepeatedTakenOrRefused) {
  Add("Sheet", Box(0, 0, 10, 10));
  Add("SHEET", Box(20, 0, 10, 10));  // the same name to a layout
  Add("Лист", Box(40, 0, 10, 10));   // taken: "ЛИСТ" in the drawing
  Add("a/b", Box(60, 0, 10, 10));    // a refused character
  Add(std::string(256, 'x'), Box(80, 0, 10, 10));
  Add(std::string(255, 'y'), Box(100, 0, 10, 10));  // just fits
  const std::vector<std::string> w =
      CheckLayoutNames(plans_, {"Model", "ЛИСТ"});
  ASSERT_EQ(w.size(), 4u) << ::testing::PrintToString(w);
  EXPECT_NE(w[0].find("rows 1, 2"), std::string::npos) << w[0];
  EXPECT_NE(w[1].find("\"ЛИСТ\""), std::string::npos) << w[1];
  EXPECT_NE(w[2].find("'/'"), std::string::npos) << w[2];
  EXPECT_NE(w[3].find("255"), std::string::npos) << w[3];
}

TEST_F(PlanChecksTest, OverlapAndInsideAreToldApart) {
  Add("big", Box(0, 0, 1000, 1000));
  Add("inner", Box(100, 100, 200, 200));
  Add("across", Box(900, 500, 300, 300));
  Add("twin", Box(5000, 0, 100, 100));
  Add("twin2", Box(5000, 0, 100, 100));
  const std::vector<std::string> w = CheckFrameOverlaps(plans_, table_);
  ASSERT_EQ(w.size(), 3u) << ::testing::PrintToString(w);
  EXPECT_EQ(w[0],
            "the frame of row 2 (\"inner\") lies inside the frame of "
            "row 1 (\"big\")");
  EXPECT_EQ(w[1],
            "the frames of row 1 (\"big\") and row 3 (\"across\") "
            "overlap");
  EXPECT_TRUE(HasLineWith(w, "row 5 (\"twin2\") lies inside"));
}

TEST_F(PlanChecksTest, TurnedFramesOverlapOnlyWhenTheirInsidesDo) {
  // Bounding boxes meet, the diamonds do not.
  Add("d1", {{{0, 50}, {50, 0}, {100, 50}, {50, 100}}});
  Add("d2", {{{80, 100}, {130, 50}, {180, 100}, {130, 150}}});
  EXPECT_TRUE(CheckFrameOverlaps(plans_, table_).empty());
  Add("d3", {{{60, 60}, {110, 10}, {160, 60}, {110, 110}}});
  EXPECT_EQ(CheckFrameOverlaps(plans_, table_).size(), 2u);
}

TEST(StandardScaleTest, MetricAndImperialRatios) {
  for (double ratio : {1.0, 50.0, 100.0, 2500.0, 48.0, 96.0, 120.0, 1200.0}) {
    EXPECT_TRUE(IsStandardScale(1 / ratio)) << ratio;
  }
  EXPECT_TRUE(IsStandardScale(10));  // 10:1
  for (double ratio : {137.0, 99.9, 3.0, 0.0}) {
    EXPECT_FALSE(IsStandardScale(ratio == 0 ? 0 : 1 / ratio)) << ratio;
  }
}

TEST_F(PlanChecksTest, OddScalesAreToldOncePerScale) {
  Add("A", Box(0, 0, 10, 10), 1 / 137.5);
  Add("B", Box(20, 0, 10, 10), 0.01);
  Add("C", Box(40, 0, 10, 10), 1 / 137.5);
  Add("D", Box(60, 0, 10, 10), 2.5);
  const std::vector<std::string> w = CheckScales(plans_);
  ASSERT_EQ(w.size(), 2u) << ::testing::PrintToString(w);
  EXPECT_EQ(w[0],
            "scale 1:137.5 of layout \"A\" and 1 more is not a "
            "standard scale");
  EXPECT_EQ(w[1], "scale 2.5:1 of layout \"D\" is not a standard scale");
}

}  // namespace
}  // namespace lmt::layouts

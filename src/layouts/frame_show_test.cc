#include "layouts/frame_show.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <variant>

#include "dxfhost/test_support.h"
#include "testing/failing_host.h"

namespace lmt::layouts {
namespace {

using frames::Column;
using frames::Quad;

constexpr double kPi = std::numbers::pi;

// A w x h rectangle centred on (cx, cy), turned by `angle` about it.
Quad Turned(double cx, double cy, double w, double h, double angle) {
  Quad q;
  const double xs[] = {-w / 2, w / 2, w / 2, -w / 2};
  const double ys[] = {-h / 2, -h / 2, h / 2, h / 2};
  for (int i = 0; i < 4; ++i) {
    q[i] = {cx + xs[i] * std::cos(angle) - ys[i] * std::sin(angle),
            cy + xs[i] * std::sin(angle) + ys[i] * std::cos(angle)};
  }
  return q;
}

frames::FrameTable TableOf(const Quad& corners, std::string_view typ,
                           double angle) {
  frames::FrameTable table;
  table.SetRowCount(1);
  const int row = table.AddRow();
  table.SetCorners(row, corners);
  table.SetCell(row, Column::kTyp, std::string(typ));
  table.SetNumber(row, Column::kAngle, angle);
  table.Renumber();
  return table;
}

// Upright means the frame's own up: a block keeps a portrait sheet
// portrait, a bare polyline has no up and lies on its longer side.
TEST(FrameShotTest, TwistFollowsTheFrameAndTheMarginItsLargerSide) {
  const struct {
    const char* what;
    Quad corners;
    std::string_view typ;
    double angle;
    double twist, width, height;
  } cases[] = {
      {"straight sheet", Turned(10, 20, 400, 200, 0), frames::kTypPolyline, 0,
       0, 440, 240},
      {"turned block", Turned(10, 20, 400, 200, kPi / 6), frames::kTypBlock,
       kPi / 6, 11 * kPi / 6, 440, 240},
      {"portrait block", Turned(0, 0, 200, 400, kPi / 2), frames::kTypBlock,
       kPi / 2, 3 * kPi / 2, 240, 440},
      {"portrait polyline", Turned(0, 0, 200, 400, 0), frames::kTypPolyline, 0,
       3 * kPi / 2, 440, 240},
  };
  for (const auto& c : cases) {
    const frames::FrameTable table = TableOf(c.corners, c.typ, c.angle);
    std::optional<FrameShot> shot = FrameShotOf(table, 1);
    ASSERT_TRUE(shot.has_value()) << c.what;
    EXPECT_NEAR(shot->twist, c.twist, 1e-9) << c.what;
    EXPECT_NEAR(shot->width, c.width, 1e-6) << c.what;
    EXPECT_NEAR(shot->height, c.height, 1e-6) << c.what;
    EXPECT_NEAR(shot->center.x, (c.corners[0].x + c.corners[2].x) / 2, 1e-9);
  }
}

class ShowFrameTest : public ::testing::Test {
 protected:
  double Variable(const char* name) {
    return std::get<double>(*s_.doc->GetVariable(name));
  }
  dxfhost::test::Session s_{dxfhost::test::TestdataPath("example.dxf")};
};

TEST_F(ShowFrameTest, RowsOutsideTheTableOrWithoutCornersAreRefused) {
  frames::FrameTable table = TableOf(Turned(0, 0, 40, 20, 0), "Polyline", 0);
  table.AddRow();
  host::SkipLog skips;
  for (int row : {0, 2, 3}) {
    Status shown = ShowFrame(*s_.doc, table, row, skips);
    EXPECT_EQ(shown.code(), StatusCode::kInvalidArgument) << row;
  }
  EXPECT_EQ(Variable("VIEWSIZE"), 1000);  // nothing moved
  EXPECT_TRUE(skips.empty());
}

// A host without a view twist still shows the whole frame, as it lies in
// the view's present twist, and says what it left out.
TEST_F(ShowFrameTest, WithoutTwistTheFrameIsFittedToThePresentView) {
  host::ViewportPtr view = *s_.doc->ActiveViewport();
  ASSERT_TRUE(view->SetTwist(kPi / 2).ok());
  ASSERT_TRUE(s_.doc->SetActiveViewport(view).ok());
  testing::FailingHost failing(*s_.app);
  failing.Refuse("Viewport.SetTwist");
  const frames::FrameTable table =
      TableOf(Turned(500, 300, 400, 200, 0), frames::kTypPolyline, 0);
  host::SkipLog skips;
  ASSERT_TRUE(ShowFrame(*s_.doc, table, 1, skips).ok());
  EXPECT_EQ(skips.Count("view twist"), 1);
  EXPECT_NEAR(Variable("VIEWTWIST"), kPi / 2, 1e-9);
  // The quarter-turned view sees the frame 200 wide and 400 high, 20 more
  // on every side.
  EXPECT_NEAR(Variable("VIEWSIZE"), 440, 1e-6);
  const host::Point centre =
      std::get<host::Point>(*s_.doc->GetVariable("VIEWCTR"));
  EXPECT_NEAR(centre.x, 500, 1e-6);
  EXPECT_NEAR(centre.y, 300, 1e-6);
}

}  // namespace
}  // namespace lmt::layouts

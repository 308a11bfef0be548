#include "layouts/viewport_geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

namespace lmt::layouts {
namespace {

using frames::FrameKind;
using frames::Point;
using frames::Quad;

constexpr double kPi = std::numbers::pi;
constexpr double kEps = 1e-7;

double Deg(double degrees) { return degrees * kPi / 180; }

// A rectangle of `along` by `across` centred on `centre`, its first side
// (corner 1 to 2) pointing at `angle`, the corners going counter-clockwise.
Quad Rectangle(Point centre, double along, double across, double angle) {
  const Point local[4] = {{-along / 2, -across / 2},
                          {along / 2, -across / 2},
                          {along / 2, across / 2},
                          {-along / 2, across / 2}};
  Quad q;
  double c = std::cos(angle);
  double s = std::sin(angle);
  for (int i = 0; i < 4; ++i) {
    q[i] = {centre.x + local[i].x * c - local[i].y * s,
            centre.y + local[i].x * s + local[i].y * c};
  }
  return q;
}

Quad Corners(std::initializer_list<Point> points) {
  Quad q;
  std::copy(points.begin(), points.end(), q.begin());
  return q;
}

void ExpectNear(Point actual, Point expected, double eps = kEps) {
  EXPECT_NEAR(actual.x, expected.x, eps);
  EXPECT_NEAR(actual.y, expected.y, eps);
}

TEST(FrameCentreTest, MidpointOfTheFirstDiagonal) {
  ExpectNear(FrameCentre(Corners({{10, 20}, {430, 20}, {430, 317}, {10, 317}})),
             {220, 168.5});
}

struct AngleCase {
  Point side;  // corner 1 to corner 2
  double expected_degrees;
};

TEST(StandardViewAngleTest, QuadrantRule) {
  const AngleCase cases[] = {
      {{4, 3}, 36.8698976458},         // up right
      {{-4, -3}, 36.8698976458},       // down left: the same line
      {{-4, 3}, 360 - 36.8698976458},  // up left
      {{4, -3}, 360 - 36.8698976458},  // down right
      {{5, 0}, 0},
      {{-5, 0}, 0},  // straight left keeps 0
      {{0, 5}, 0},   // vertical keeps 0
      {{0, -5}, 0},
      {{0, 0}, 0},
  };
  for (const AngleCase& c : cases) {
    Quad q = Corners({{100, 100}, {100 + c.side.x, 100 + c.side.y}, {}, {}});
    EXPECT_NEAR(StandardViewAngle(q, FrameOrientation::kHorizontal),
                Deg(c.expected_degrees), 1e-9)
        << c.side.x << "," << c.side.y;
  }
}

TEST(StandardViewAngleTest, VerticalOptionUsesTheSecondSide) {
  Quad q = Rectangle({0, 0}, 420, 297, Deg(20));
  EXPECT_NEAR(StandardViewAngle(q, FrameOrientation::kHorizontal), Deg(20),
              1e-9);
  // The second side points at 110 degrees: the same line as 290.
  EXPECT_NEAR(StandardViewAngle(q, FrameOrientation::kVertical), Deg(290),
              1e-9);
}

TEST(StandardViewAngleTest, DownLeftFrameGetsTheTwistOfUpRight) {
  Point c{5000, 3000};
  for (double a : {0.0, 25.0, 70.0}) {
    CreationParameters p;
    p.scale = 0.01;
    FrameRow up{Rectangle(c, 420, 297, Deg(a)), FrameKind::kPolyline, 0};
    FrameRow down{Rectangle(c, 420, 297, Deg(a + 180)), FrameKind::kPolyline,
                  0};
    auto pu = PlanViewport(up, p, 0);
    auto pd = PlanViewport(down, p, 0);
    ASSERT_TRUE(pu && pd);
    EXPECT_NEAR(pu->viewport.twist, pd->viewport.twist, 1e-9) << a;
    ExpectNear(pu->viewport.view_centre, pd->viewport.view_centre, 1e-6);
  }
}

struct ExtendedCase {
  double along, across, first_side_degrees;
  FrameOrientation orientation;
  double expected_degrees;
};

TEST(ExtendedViewAngleTest, LongerSideFollowsTheOrientation) {
  using O = FrameOrientation;
  const ExtendedCase cases[] = {
      // Landscape frame, first side long.
      {420, 297, 30, O::kHorizontal, 30},
      {420, 297, 210, O::kHorizontal, 30},
      {420, 297, 150, O::kHorizontal, 330},
      {420, 297, 300, O::kHorizontal, 300},
      {420, 297, 30, O::kVertical, 300},
      // Portrait outline: the first side is the short one.
      {297, 420, 30, O::kHorizontal, 300},
      {297, 420, 30, O::kVertical, 30},
      // Turned by exactly a quarter: still landscape.
      {420, 297, 90, O::kHorizontal, 90},
      {420, 297, 270, O::kHorizontal, 90},
      {420, 297, 90, O::kVertical, 0},
      // Exactly 45 degrees off: the half turn is taken in (-90, 90].
      {420, 297, 135, O::kHorizontal, 315},
  };
  for (const ExtendedCase& c : cases) {
    Quad q =
        Rectangle({-700, 1200}, c.along, c.across, Deg(c.first_side_degrees));
    double got = ExtendedViewAngle(q, c.orientation);
    // Compare on the circle.
    double diff = std::remainder(got - Deg(c.expected_degrees), 2 * kPi);
    EXPECT_NEAR(diff, 0, 1e-9) << c.first_side_degrees << " -> " << got;
    EXPECT_GE(got, 0);
    EXPECT_LT(got, 2 * kPi);
  }
}

TEST(ExtendedViewAngleTest, ExactlyVerticalSideGivesAQuarterTurn) {
  Quad q = Corners({{0, 0}, {0, 420}, {-297, 420}, {-297, 0}});
  EXPECT_NEAR(ExtendedViewAngle(q, FrameOrientation::kHorizontal), kPi / 2,
              1e-12);
  EXPECT_EQ(StandardViewAngle(q, FrameOrientation::kHorizontal), 0);
}

TEST(BlockAngleTest, OnlyForBlocksAndXRefsWithTheCheck) {
  EXPECT_EQ(BlockAngle({{}, FrameKind::kBlock, 1.5}, true), 1.5);
  EXPECT_EQ(BlockAngle({{}, FrameKind::kXRef, 1.5}, true), 1.5);
  EXPECT_EQ(BlockAngle({{}, FrameKind::kPolyline, 1.5}, true), 0);
  EXPECT_EQ(BlockAngle({{}, FrameKind::kBlock, 1.5}, false), 0);
}

// Every combination of frame direction, outline orientation, rule, block
// rotation and scale source: the frame must fill its viewport exactly.
struct FillCase {
  double first_side_degrees;
  bool portrait_outline;
  FrameOrientation orientation;
  RotationRule rule;
  bool block;
  bool rotate_by_block;
  bool from_width;
};

std::vector<FillCase> AllFillCases() {
  std::vector<FillCase> cases;
  for (double a : {0.0, 30.0, 90.0, 135.0, 180.0, 225.0, 270.0, 315.0}) {
    for (bool portrait : {false, true}) {
      for (auto o :
           {FrameOrientation::kHorizontal, FrameOrientation::kVertical}) {
        for (auto rule : {RotationRule::kStandard, RotationRule::kExtended}) {
          for (int block = 0; block < 3; ++block) {
            for (bool from_width : {false, true}) {
              cases.push_back(
                  {a, portrait, o, rule, block > 0, block == 2, from_width});
            }
          }
        }
      }
    }
  }
  return cases;
}

std::string FillCaseName(const FillCase& c) {
  std::string name = "At" + std::to_string(int(c.first_side_degrees));
  name += c.portrait_outline ? "Portrait" : "Landscape";
  name += c.orientation == FrameOrientation::kHorizontal ? "Hor" : "Vert";
  name += c.rule == RotationRule::kStandard ? "Standard" : "Extended";
  name += !c.block ? "Polyline" : c.rotate_by_block ? "BlockTurned" : "Block";
  name += c.from_width ? "FromWidth" : "Fixed";
  return name;
}

// The frame's corners land on the viewport's corners and its centre on
// the viewport's centre, and the paper-to-model mapping undoes it.
void ExpectFrameFillsViewport(const FrameRow& row,
                              const CreationParameters& p) {
  const Point centre = FrameCentre(row.corners);
  std::optional<ViewportPlan> plan = PlanViewport(row, p, 0.01);
  ASSERT_TRUE(plan);
  const ViewportView& vp = plan->viewport;
  if (p.scale_mode == ScaleMode::kFromWidth) {
    EXPECT_NEAR(vp.width, p.frame_paper_length, 1e-9);
  }
  EXPECT_NEAR(vp.scale(), plan->scale, 1e-15);
  EXPECT_NEAR(vp.twist, std::fmod(2 * kPi - plan->view_angle, 2 * kPi), 1e-12);
  ExpectNear(vp.centre,
             {p.corner.x + vp.width / 2, p.corner.y + vp.height / 2});
  ExpectNear(ShownAtCentre(vp), centre, 1e-6);
  ExpectNear(ModelToPaper(vp, centre), vp.centre);
  for (const Point& corner : row.corners) {
    Point q = ModelToPaper(vp, corner);
    EXPECT_NEAR(std::abs(q.x - vp.centre.x), vp.width / 2, 1e-7);
    EXPECT_NEAR(std::abs(q.y - vp.centre.y), vp.height / 2, 1e-7);
    ExpectNear(PaperToModel(vp, q), corner, 1e-6);
  }
}

void CheckFrameFillsViewport(const FillCase& c) {
  const Point centre{12345.5, -6789.25};
  const double along = c.portrait_outline ? 29700 : 42000;
  const double across = c.portrait_outline ? 42000 : 29700;
  FrameRow row{Rectangle(centre, along, across, Deg(c.first_side_degrees)),
               c.block ? FrameKind::kBlock : FrameKind::kPolyline,
               Deg(c.first_side_degrees)};
  CreationParameters p;
  p.scale_mode = c.from_width ? ScaleMode::kFromWidth : ScaleMode::kFixed;
  p.scale = 0.01;
  p.frame_paper_length = 594;
  p.corner = {15, 7};
  p.orientation = c.orientation;
  p.rotation_rule = c.rule;
  p.rotate_by_block = c.rotate_by_block;
  ExpectFrameFillsViewport(row, p);
}

TEST(PlanViewportTest, FrameFillsItsViewportInEveryDirection) {
  for (const FillCase& c : AllFillCases()) {
    SCOPED_TRACE(FillCaseName(c));
    CheckFrameFillsViewport(c);
  }
}

// Outlines whose sides are exactly vertical or point straight left: the
// standard rule keeps the angle 0 there.
TEST(PlanViewportTest, ExactlyAxisAlignedOutlinesFillTheirViewport) {
  const Quad outlines[] = {
      Corners({{0, 0}, {0, 420}, {-297, 420}, {-297, 0}}),
      Corners({{420, 0}, {0, 0}, {0, 297}, {420, 297}}),
      Corners({{0, 297}, {0, 0}, {420, 0}, {420, 297}}),
  };
  for (const Quad& q : outlines) {
    for (auto o :
         {FrameOrientation::kHorizontal, FrameOrientation::kVertical}) {
      for (auto rule : {RotationRule::kStandard, RotationRule::kExtended}) {
        CreationParameters p;
        p.scale = 0.5;
        p.orientation = o;
        p.rotation_rule = rule;
        SCOPED_TRACE(::testing::Message() << q[1].x << "," << q[1].y << " o"
                                          << int(o) << " r" << int(rule));
        ExpectFrameFillsViewport({q, FrameKind::kPolyline, 0}, p);
      }
    }
  }
}

TEST(PlanViewportTest, ScaleFromWidthIgnoresTheFixedFields) {
  CreationParameters p;
  p.scale_mode = ScaleMode::kFromWidth;
  p.scale = 1;  // the fixed fields say 1:1
  p.frame_paper_length = 420;
  FrameRow wide{Rectangle({0, 0}, 84000, 59400, 0), FrameKind::kPolyline, 0};
  EXPECT_DOUBLE_EQ(PlanViewport(wide, p, 1)->scale, 0.005);
  FrameRow a3{Rectangle({0, 0}, 42000, 29700, 0), FrameKind::kPolyline, 0};
  EXPECT_DOUBLE_EQ(PlanViewport(a3, p, 1)->scale, 0.01);
}

TEST(PlanViewportTest, ZeroWidthFrameKeepsThePreviousScale) {
  CreationParameters p;
  p.scale_mode = ScaleMode::kFromWidth;
  p.frame_paper_length = 420;
  p.increment = 5;
  FrameRow flat{Corners({{0, 0}, {0, 0}, {0, 0}, {0, 0}}), FrameKind::kPolyline,
                0};
  std::optional<ViewportPlan> plan = PlanViewport(flat, p, 0.02);
  ASSERT_TRUE(plan);
  EXPECT_EQ(plan->scale, 0.02);
  EXPECT_TRUE(std::isfinite(plan->viewport.view_height));
}

TEST(PlanViewportTest, NoViewportWithoutScaleOrSize) {
  CreationParameters p;
  FrameRow a3{Rectangle({0, 0}, 42000, 29700, 0), FrameKind::kPolyline, 0};
  p.scale = 0;
  EXPECT_FALSE(PlanViewport(a3, p, 0));
  p.scale_mode = ScaleMode::kFromWidth;  // L = 0 gives scale 0 too
  EXPECT_FALSE(PlanViewport(a3, p, 0.01));
  FrameRow flat{Corners({{0, 0}, {0, 0}, {0, 0}, {0, 0}}), FrameKind::kPolyline,
                0};
  p.scale_mode = ScaleMode::kFixed;
  p.scale = 0.01;
  EXPECT_FALSE(PlanViewport(flat, p, 0.01));
}

TEST(PlanViewportTest, IncrementWidensAroundTheSameCentre) {
  CreationParameters p;
  p.scale = 0.01;
  p.corner = {10, 10};
  FrameRow row{Rectangle({500, 500}, 42000, 29700, Deg(30)),
               FrameKind::kPolyline, 0};
  auto plain = PlanViewport(row, p, 0);
  p.increment = 10;
  auto wider = PlanViewport(row, p, 0);
  ASSERT_TRUE(plain && wider);
  EXPECT_NEAR(plain->viewport.width, 420, 1e-9);
  EXPECT_NEAR(plain->viewport.height, 297, 1e-9);
  EXPECT_NEAR(wider->viewport.width, 430, 1e-9);
  EXPECT_NEAR(wider->viewport.height, 307, 1e-9);
  ExpectNear(wider->viewport.centre, plain->viewport.centre);
  ExpectNear(wider->viewport.centre, {220, 158.5});
  // Same scale, the frame now i / 2 inside the border.
  EXPECT_NEAR(wider->viewport.scale(), 0.01, 1e-15);
  for (const Point& corner : row.corners) {
    Point q = ModelToPaper(wider->viewport, corner);
    EXPECT_NEAR(std::abs(q.x - 220), 210, 1e-7);
    EXPECT_NEAR(std::abs(q.y - 158.5), 148.5, 1e-7);
  }
}

// Worked example of the VIEWPORT notes: centre (5000, 3000), 30 degrees,
// 1:50, an A1 frame.
TEST(PlanViewportTest, MatchesTheWorkedViewportExample) {
  CreationParameters p;
  p.scale = 1.0 / 50;
  FrameRow a1{Rectangle({5000, 3000}, 42050, 29700, Deg(30)),
              FrameKind::kPolyline, 0};
  auto plan = PlanViewport(a1, p, 0);
  ASSERT_TRUE(plan);
  const ViewportView& vp = plan->viewport;
  ExpectNear(vp.view_centre, {5830.127, 98.076}, 1e-3);
  EXPECT_NEAR(vp.view_height, 29700, 1e-6);
  EXPECT_NEAR(vp.twist, Deg(330), 1e-12);
  EXPECT_NEAR(vp.width, 841, 1e-9);
  EXPECT_NEAR(vp.height, 594, 1e-9);
}

TEST(ViewportViewTest, WithTargetKeepsEveryPointInPlace) {
  CreationParameters p;
  p.scale = 0.01;
  FrameRow row{Rectangle({800, -300}, 42000, 29700, Deg(-40)),
               FrameKind::kBlock, 0};
  ViewportView vp = PlanViewport(row, p, 0)->viewport;
  ViewportView at_frame = WithTarget(vp, {800, -300});
  ExpectNear(at_frame.view_centre, {0, 0}, 1e-6);
  for (Point m : {Point{0, 0}, Point{800, -300}, Point{-5000, 7000}}) {
    ExpectNear(ModelToPaper(at_frame, m), ModelToPaper(vp, m), 1e-9);
  }
}

TEST(PlanViewportTest, CopyViewportShowsTheFrameCentreAtItsOwnScale) {
  CreationParameters p;
  p.scale = 0.01;
  p.copy_viewport = true;
  p.copy_scale = 0.002;
  p.copy_corner = {450, 20};
  p.copy_width = 80;
  p.copy_height = 60;
  Point centre{3000, 4000};
  FrameRow row{Rectangle(centre, 42000, 29700, Deg(15)), FrameKind::kPolyline,
               0};
  auto plan = PlanViewport(row, p, 0);
  ASSERT_TRUE(plan && plan->copy);
  const ViewportView& copy = *plan->copy;
  ExpectNear(copy.centre, {490, 50});
  EXPECT_NEAR(copy.scale(), 0.002, 1e-15);
  EXPECT_EQ(copy.twist, plan->viewport.twist);
  ExpectNear(ModelToPaper(copy, centre), copy.centre);
  // The host's move: the copy, resized about the viewport's centre, has its
  // lower-left corner at the move's start and lands on the copy corner.
  ExpectNear(plan->copy_move_from,
             {plan->viewport.centre.x - 40, plan->viewport.centre.y - 30});
  ExpectNear(plan->copy_move_to, {450, 20});

  p.copy_scale = 0;
  EXPECT_FALSE(PlanViewport(row, p, 0)->copy);
  p.copy_scale = 0.002;
  p.copy_viewport = false;
  EXPECT_FALSE(PlanViewport(row, p, 0)->copy);
}

}  // namespace
}  // namespace lmt::layouts

#include "frames/frame_ordering.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <tuple>
#include <vector>

namespace lmt::frames {
namespace {

Quad Rect(double x, double y, double w, double h) {
  return {{{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}};
}

// Fills a table the way the search does: one row per frame, ID, corners and
// measures.
struct Frame {
  std::string id;
  Quad corners;
  std::string attribute;
};

FrameTable TableOf(const std::vector<Frame>& frames,
                   const MeasureOptions& options) {
  FrameTable table;
  table.SetRowCount(static_cast<int>(frames.size()) + 1);
  for (size_t i = 0; i < frames.size(); ++i) {
    int row = static_cast<int>(i) + 1;
    table.SetCell(row, Column::kId, frames[i].id);
    table.SetCell(row, Column::kAttribute, frames[i].attribute);
    table.SetCorners(row, frames[i].corners);
    WriteMeasures(table, row, MeasureFrame(frames[i].corners, 0, options));
  }
  return table;
}

std::vector<std::string> Ids(const FrameTable& table) {
  std::vector<std::string> ids;
  for (int r = 1; r <= table.last_row(); ++r) {
    ids.push_back(table.Cell(r, Column::kId));
    EXPECT_EQ(table.Cell(r, Column::kNumber), std::to_string(r));
  }
  return ids;
}

TEST(FormatRoundTest, RoundsHalfAwayFromZeroAtFifteenDigits) {
  struct Case {
    double value, rounded;
  } cases[] = {
      {2.5, 3},         {-2.5, -3},   {0.5, 1},    {-0.5, -1},
      {1.4999, 1},      {41.96, 42},  {41.49, 41}, {41.49999999999999, 42},
      {41.4999999, 41}, {-0.4, -0.0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FormatRound(c.value), c.rounded) << c.value;
  }
}

TEST(RoundSortCoordinateTest, RoundsToTheChosenStep) {
  struct Case {
    double value;
    Rounding rounding;
    double rounded;
  } cases[] = {
      {419.6, Rounding::kTen, 420},   {414.9, Rounding::kTen, 410},
      {415, Rounding::kTen, 420},     {-415, Rounding::kTen, -420},
      {12.5, Rounding::kWhole, 13},   {12.5, Rounding::kOne, 13},
      {12.49, Rounding::kOne, 12},    {449.9, Rounding::kHundred, 400},
      {450, Rounding::kHundred, 500}, {-449.9, Rounding::kHundred, -400},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(RoundSortCoordinate(c.value, c.rounding), c.rounded)
        << c.value << " option " << static_cast<int>(c.rounding);
  }
}

TEST(RoundSortCoordinateTest, TableShowsRoundedSortCoordinates) {
  FrameTable table = TableOf({{"1", Rect(409.6, 404.9, 20, 20), ""}},
                             {Rounding::kTen, SortPoint::kCentre, {}, {}});
  EXPECT_EQ(table.Cell(1, Column::kSortX), "420");  // centre 419.6
  EXPECT_EQ(table.Cell(1, Column::kSortY), "410");  // centre 414.9
}

// 3 x 3 A3 sheets 500 apart in X and 400 in Y. Each sheet is moved by less
// than the rounding step, in a pattern that would reorder every column and
// row if the rounding did not put them together. The frames are handed
// over in a scrambled order.
class GridOrderingTest
    : public testing::TestWithParam<std::tuple<SortOrder, Rounding>> {};

double Step(Rounding r) {
  switch (r) {
    case Rounding::kWhole:
    case Rounding::kOne:
      return 1;
    case Rounding::kTen:
      return 10;
    case Rounding::kHundred:
      return 100;
  }
  return 0;
}

TEST_P(GridOrderingTest, PutsSheetsInColumnsOrRows) {
  struct {
    SortOrder order;
    Rounding rounding;
  } c{std::get<0>(GetParam()), std::get<1>(GetParam())};
  // Sheet centres sit on multiples of 100, so a jitter below half the step
  // rounds back onto them.
  double jitter = 0.4 * Step(c.rounding);
  std::vector<Frame> frames;
  const int scramble[] = {4, 0, 8, 2, 6, 1, 7, 3, 5};
  for (int k : scramble) {
    int col = k % 3;
    int row = k / 3;
    double jx = (row % 2 == 0 ? 1 : -1) * jitter * (col == 1 ? 1 : 0.5);
    double jy = (col % 2 == 0 ? -1 : 1) * jitter * (row == 1 ? 1 : 0.5);
    std::string id = std::to_string(col) + "," + std::to_string(row);
    frames.push_back(
        {id, Rect(col * 500 - 210 + jx, row * 400 - 150 + jy, 420, 300), ""});
  }
  FrameTable table = TableOf(frames, {c.rounding, SortPoint::kCentre, {}, {}});
  OrderTable(table, c.order);

  std::vector<std::string> expected;
  auto add = [&expected](int col, int row) {
    expected.push_back(std::to_string(col) + "," + std::to_string(row));
  };
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b < 3; ++b) {
      switch (c.order) {
        case SortOrder::kColumnsTopDown:
          add(a, 2 - b);
          break;
        case SortOrder::kColumnsBottomUp:
          add(a, b);
          break;
        case SortOrder::kRowsTopDown:
          add(b, 2 - a);
          break;
        case SortOrder::kRowsBottomUp:
          add(b, a);
          break;
        default:
          FAIL();
      }
    }
  }
  EXPECT_EQ(Ids(table), expected);
}

INSTANTIATE_TEST_SUITE_P(
    AllOrdersAndRoundings, GridOrderingTest,
    testing::Combine(testing::Values(SortOrder::kColumnsTopDown,
                                     SortOrder::kColumnsBottomUp,
                                     SortOrder::kRowsTopDown,
                                     SortOrder::kRowsBottomUp),
                     testing::Values(Rounding::kWhole, Rounding::kOne,
                                     Rounding::kTen, Rounding::kHundred)));

TEST(OrderTableTest, ByStartPointNearestFirst) {
  MeasureOptions options{
      Rounding::kWhole, SortPoint::kCentre, {1000, 1000}, {}};
  FrameTable table = TableOf({{"far", Rect(0, 0, 100, 100), ""},
                              {"near", Rect(900, 900, 100, 100), ""},
                              {"mid", Rect(500, 500, 100, 100), ""}},
                             options);
  EXPECT_EQ(table.Cell(2, Column::kDist), FormatNumber(std::hypot(50, 50)));
  OrderTable(table, SortOrder::kStartPoint);
  EXPECT_EQ(Ids(table), (std::vector<std::string>{"near", "mid", "far"}));
}

TEST(OrderTableTest, ByAttributeNumbersFirstThenTextStable) {
  FrameTable table = TableOf({{"1", Rect(0, 0, 1, 1), "B"},
                              {"2", Rect(0, 0, 1, 1), "10"},
                              {"3", Rect(0, 0, 1, 1), ""},
                              {"4", Rect(0, 0, 1, 1), "9"},
                              {"5", Rect(0, 0, 1, 1), "a"},
                              {"6", Rect(0, 0, 1, 1), "9"}},
                             {});
  OrderTable(table, SortOrder::kAttribute);
  EXPECT_EQ(Ids(table),
            (std::vector<std::string>{"4", "6", "2", "3", "1", "5"}));
}

TEST(OrderTableTest, DoesNothingBeforeASearch) {
  FrameTable table;
  table.SetCell(1, Column::kSortX, "500");
  table.SetCell(2, Column::kSortX, "100");
  table.SetCell(2, Column::kId, "7");
  OrderTable(table, SortOrder::kColumnsBottomUp);
  EXPECT_EQ(table.Cell(1, Column::kSortX), "500");
  EXPECT_EQ(table.Cell(1, Column::kNumber), "");
  EXPECT_EQ(table.row_count(), kResetRowCount);
}

// An L-shaped direction polyline: 1000 to the right, then 1000 up.
const std::vector<Point> kL = {{0, 0}, {1000, 0}, {1000, 1000}};

TEST(ProjectOntoPolylineTest, MeasuresAlongAnLShape) {
  struct Case {
    Point p;
    double distance;
    Point on;
  } cases[] = {
      {{200, 50}, 200, {200, 0}},
      {{800, -60}, 800, {800, 0}},
      {{1100, -100}, 1000, {1000, 0}},  // beyond the corner: the vertex
      {{1050, 300}, 1300, {1000, 300}},
      {{-50, -50}, 0, {0, 0}},  // before the start
      {{1000, 1200}, 2000, {1000, 1000}},
      {{900, 100}, 900, {900, 0}},  // equally near both legs: the first
  };
  for (const Case& c : cases) {
    std::optional<PolylinePosition> pos = ProjectOntoPolyline(kL, c.p);
    ASSERT_TRUE(pos.has_value());
    EXPECT_NEAR(pos->distance, c.distance, 1e-9) << c.p.x << "," << c.p.y;
    EXPECT_NEAR(pos->point.x, c.on.x, 1e-9);
    EXPECT_NEAR(pos->point.y, c.on.y, 1e-9);
  }
  EXPECT_EQ(ProjectOntoPolyline({}, {1, 1}), std::nullopt);
  EXPECT_EQ(ProjectOntoPolyline({{5, 5}}, {1, 1})->distance, 0);
}

TEST(OrderTableTest, ByPolylineFollowsTheDirection) {
  MeasureOptions options{Rounding::kWhole, SortPoint::kCentre, {}, kL};
  FrameTable table = TableOf({{"up", Rect(1010, 250, 100, 100), ""},
                              {"top", Rect(900, 850, 100, 100), ""},
                              {"first", Rect(150, 0, 100, 100), ""},
                              {"second", Rect(750, -110, 100, 100), ""}},
                             options);
  EXPECT_EQ(table.Cell(1, Column::kPoly), "1300");
  EXPECT_EQ(table.Cell(1, Column::kPolyX), "1000");
  EXPECT_EQ(table.Cell(1, Column::kPolyY), "300");
  OrderTable(table, SortOrder::kPolyline);
  EXPECT_EQ(Ids(table),
            (std::vector<std::string>{"first", "second", "up", "top"}));
}

TEST(MeasureFrameTest, WithoutDirectionPolylineLeavesPolyEmpty) {
  FrameTable table = TableOf({{"1", Rect(0, 0, 420, 297), ""}}, {});
  EXPECT_EQ(table.Cell(1, Column::kPoly), "");
  EXPECT_EQ(table.Cell(1, Column::kPolyX), "");
  EXPECT_EQ(table.Cell(1, Column::kMaxX), "420");
  EXPECT_EQ(table.Cell(1, Column::kMinY), "0");
  EXPECT_EQ(table.Cell(1, Column::kWidth), "420");
  EXPECT_EQ(table.Cell(1, Column::kHeight), "297");
}

TEST(SortPointOfTest, CornersOfTheExtentsWhereverTheOutlineStarts) {
  Quad a = Rect(10, 20, 420, 297);
  Quad b = {a[2], a[3], a[0], a[1]};  // same frame, drawn from another corner
  struct Case {
    SortPoint sp;
    Point p;
  } cases[] = {
      {SortPoint::kCentre, {220, 168.5}},  {SortPoint::kLowerLeft, {10, 20}},
      {SortPoint::kUpperLeft, {10, 317}},  {SortPoint::kUpperRight, {430, 317}},
      {SortPoint::kLowerRight, {430, 20}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SortPointOf(a, c.sp), c.p) << static_cast<int>(c.sp);
    EXPECT_EQ(SortPointOf(b, c.sp), c.p) << static_cast<int>(c.sp);
  }
}

Quad Rotated(const Quad& q, double angle) {
  Quad r;
  for (int i = 0; i < 4; ++i) {
    r[i] = {q[i].x * std::cos(angle) - q[i].y * std::sin(angle),
            q[i].x * std::sin(angle) + q[i].y * std::cos(angle)};
  }
  return r;
}

TEST(SizeOfTest, TrueSizeOfRotatedAndOddlyDrawnFrames) {
  const double a30 = std::numbers::pi / 6;
  const double a90 = std::numbers::pi / 2;
  Quad upright = Rect(0, 0, 420, 297);
  Quad drawn_up_first = {{{0, 0}, {0, 297}, {420, 297}, {420, 0}}};
  struct Case {
    Quad q;
    double angle;
    double width, height;
  } cases[] = {
      {upright, 0, 420, 297},
      {drawn_up_first, 0, 420, 297},
      {Rotated(upright, a30), a30, 420, 297},
      {Rotated(upright, a90), a90, 420, 297},
      {Rotated(drawn_up_first, a30), a30, 420, 297},
  };
  for (const Case& c : cases) {
    FrameSize s = SizeOf(c.q, c.angle);
    EXPECT_NEAR(s.width, c.width, 1e-9);
    EXPECT_NEAR(s.height, c.height, 1e-9);
  }
}

}  // namespace
}  // namespace lmt::frames

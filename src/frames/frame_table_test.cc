#include "frames/frame_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <numbers>
#include <string>
#include <vector>

namespace lmt::frames {
namespace {

struct FormatCase {
  double value;
  const char* text;
};

TEST(FormatNumberTest, WritesTheShortestTextThatReadsBack) {
  const FormatCase cases[] = {
      {12.345, "12.345"},
      {-12.345, "-12.345"},
      {420, "420"},
      {-420, "-420"},
      {0, "0"},
      {-0.0, "0"},
      {-0.5, "-0.5"},
      {0.1 + 0.2, "0.30000000000000004"},  // the value, not a rounding of it
      {12.9999999999, "12.9999999999"},
      {-1e-12, "-0.000000000001"},  // fixed notation, never an exponent
      {1e20, "100000000000000000000"},
      {5987654.321, "5987654.321"},
      {std::numbers::pi / 6, "0.5235987755982988"},  // a block turned 30°
      {std::numeric_limits<double>::quiet_NaN(), ""},
      {std::numeric_limits<double>::infinity(), ""},
  };
  for (const FormatCase& c : cases) {
    EXPECT_EQ(FormatNumber(c.value), c.text) << c.value;
  }
}

TEST(FormatNumberTest, ReadsBackToTheSameDouble) {
  for (double base : {0.0, 1.0, -1.0, 419.6, -414.9, 84100.25, -9999999.0}) {
    for (int k = 0; k < 200; ++k) {
      const double v = base + k * 12.3457 - 1234.5678 + k * 1e-11;
      EXPECT_EQ(ParseNumber(FormatNumber(v)), v) << FormatNumber(v);
    }
  }
  for (double v :
       {std::numeric_limits<double>::max(), -std::numeric_limits<double>::max(),
        std::numeric_limits<double>::denorm_min(),
        std::numeric_limits<double>::min(), 1e-300}) {
    EXPECT_EQ(ParseNumber(FormatNumber(v)), v) << v;
  }
}

// A numpunct that writes "1.234,5", as German and Russian settings do.
struct CommaPunct : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(FormatNumberTest, IgnoresACommaLocale) {
  std::locale old =
      std::locale::global(std::locale(std::locale::classic(), new CommaPunct));
  EXPECT_EQ(FormatNumber(1234.5), "1234.5");
  EXPECT_EQ(ParseNumber("1234.5"), 1234.5);
  EXPECT_EQ(ParseNumber("1234,5"), std::nullopt);
  FrameTable table;
  table.SetNumber(1, Column::kWidth, 420.25);
  EXPECT_EQ(table.Cell(1, Column::kWidth), "420.25");
  std::locale::global(old);
}

TEST(ParseNumberTest, AcceptsOnlyPlainDecimalNumbers) {
  EXPECT_EQ(ParseNumber(" 12.5 "), 12.5);
  EXPECT_EQ(ParseNumber("+3"), 3);
  EXPECT_EQ(ParseNumber("-.5"), -0.5);
  EXPECT_EQ(ParseNumber("1e3"), 1000);
  for (const char* bad : {"", " ", "abc", "1,5", "inf", "nan", "-inf", "--1",
                          "+-1", "1.2.3", "0x10", "12a", "A1"}) {
    EXPECT_EQ(ParseNumber(bad), std::nullopt) << bad;
  }
}

TEST(FrameTableTest, ResetLeavesHeaderAndBlankRows) {
  FrameTable table;
  table.SetCell(3, Column::kId, "77");
  table.SetRowCount(60);
  table.Reset();
  ASSERT_EQ(table.row_count(), kResetRowCount);
  EXPECT_EQ(table.Cell(0, Column::kNumber), "№");
  EXPECT_EQ(table.Cell(0, Column::kHeight), "Height");
  for (int r = 1; r < table.row_count(); ++r) {
    for (int c = 0; c < kColumnCount; ++c) {
      EXPECT_EQ(table.Cell(r, static_cast<Column>(c)), "");
    }
  }
}

TEST(FrameTableTest, LanguageCaptionsLabelTheirColumnsOnly) {
  FrameTable table(
      {"N", "Имя вкладки", "Код", "Имя блока", "Атрибут", "СортX", "СортY"});
  EXPECT_EQ(table.Cell(0, Column::kNumber), "N");
  EXPECT_EQ(table.Cell(0, Column::kLayoutName), "Имя вкладки");
  EXPECT_EQ(table.Cell(0, Column::kAttribute), "Атрибут");
  EXPECT_EQ(table.Cell(0, Column::kBlockName), "Имя блока");
  EXPECT_EQ(table.Cell(0, Column::kSortX), "СортX");
  EXPECT_EQ(table.Cell(0, Column::kSortY), "СортY");
  EXPECT_EQ(table.Cell(0, Column::kId), "Код");
  EXPECT_EQ(table.Cell(0, Column::kPointX1), "PointX1");
  EXPECT_EQ(table.Cell(0, Column::kDist), "Dist");

  table.SetCell(1, Column::kId, "5");
  table.SetCaptions(DefaultTableCaptions());
  EXPECT_EQ(table.Cell(0, Column::kId), "ID");
  EXPECT_EQ(table.Cell(1, Column::kId), "5");
}

TEST(FrameTableTest, CornersRoundTripAndNeedAllEightCells) {
  FrameTable table;
  Quad q = {{{0.5, -1.25}, {420.5, -1.25}, {420.5, 296.75}, {0.5, 296.75}}};
  table.SetCorners(2, q);
  EXPECT_EQ(table.Cell(2, Column::kPointY1), "-1.25");
  EXPECT_EQ(table.Corners(2), q);
  table.SetCell(2, Column::kPointX3, "");
  EXPECT_EQ(table.Corners(2), std::nullopt);

  // A closed outline that repeats its first point: the first four count.
  EXPECT_EQ(FirstFourVertices({0.5, -1.25, 420.5, -1.25, 420.5, 296.75, 0.5,
                               296.75, 0.5, -1.25}),
            q);
  EXPECT_EQ(FirstFourVertices({0, 0, 1, 0, 1, 1}), std::nullopt);
}

TEST(FrameTableTest, CompareCellsLikeTheGridsGenericSort) {
  EXPECT_LT(FrameTable::CompareCells("9", "10"), 0);  // as numbers
  EXPECT_LT(FrameTable::CompareCells("-420", "-10"), 0);
  EXPECT_EQ(FrameTable::CompareCells("10", "10.0"), 0);
  EXPECT_GT(FrameTable::CompareCells("a", "10"), 0);  // numbers first
  EXPECT_GT(FrameTable::CompareCells("", "-5"), 0);
  EXPECT_LT(FrameTable::CompareCells("B", "a"), 0);  // text byte order
  EXPECT_LT(FrameTable::CompareCells("", "B"), 0);
}

// Row commands on rows whose IDs are a, b, c, d.
enum class RowCommand { kToFirst, kUp, kDown, kDelete };

struct RowCommandCase {
  RowCommand command;
  int row;
  std::vector<std::string> ids;
};

class RowCommandTest : public testing::TestWithParam<RowCommandCase> {};

TEST_P(RowCommandTest, RearrangesAndRenumbers) {
  FrameTable table;
  table.SetRowCount(5);
  const char* ids[] = {"a", "b", "c", "d"};
  for (int r = 1; r <= 4; ++r) {
    table.SetCell(r, Column::kId, ids[r - 1]);
    table.SetCell(r, Column::kNumber, "x");
  }
  const RowCommandCase& c = GetParam();
  switch (c.command) {
    case RowCommand::kToFirst:
      table.MoveRowToFirst(c.row);
      break;
    case RowCommand::kUp:
      table.MoveRowUp(c.row);
      break;
    case RowCommand::kDown:
      table.MoveRowDown(c.row);
      break;
    case RowCommand::kDelete:
      table.DeleteRow(c.row);
      break;
  }
  ASSERT_EQ(table.last_row(), static_cast<int>(c.ids.size()));
  for (int r = 1; r <= table.last_row(); ++r) {
    EXPECT_EQ(table.Cell(r, Column::kId), c.ids[r - 1]) << r;
    EXPECT_EQ(table.Cell(r, Column::kNumber), std::to_string(r));
  }
  EXPECT_EQ(table.Cell(0, Column::kId), "ID");
}

INSTANTIATE_TEST_SUITE_P(
    All, RowCommandTest,
    testing::Values(
        RowCommandCase{RowCommand::kToFirst, 3, {"c", "a", "b", "d"}},
        RowCommandCase{RowCommand::kToFirst, 1, {"a", "b", "c", "d"}},
        RowCommandCase{RowCommand::kToFirst, 4, {"d", "a", "b", "c"}},
        RowCommandCase{RowCommand::kUp, 3, {"a", "c", "b", "d"}},
        RowCommandCase{RowCommand::kUp, 1, {"a", "b", "c", "d"}},
        RowCommandCase{RowCommand::kDown, 2, {"a", "c", "b", "d"}},
        RowCommandCase{RowCommand::kDown, 4, {"a", "b", "c", "d"}},
        RowCommandCase{RowCommand::kDelete, 1, {"b", "c", "d"}},
        RowCommandCase{RowCommand::kDelete, 4, {"a", "b", "c"}}));

TEST(FrameTableDeathTest, RowCommandsRequireADataRow) {
  FrameTable table;
  table.SetRowCount(3);
  EXPECT_DEATH(table.MoveRowUp(0), "LMT_CHECK failed");
  EXPECT_DEATH(table.DeleteRow(3), "LMT_CHECK failed");
  EXPECT_DEATH(table.MoveRowToFirst(-1), "LMT_CHECK failed");
  EXPECT_DEATH(table.SetRowCount(0), "LMT_CHECK failed");
}

}  // namespace
}  // namespace lmt::frames

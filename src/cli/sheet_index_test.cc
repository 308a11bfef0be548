#include "cli/sheet_index.h"

#include <gtest/gtest.h>

namespace lmt::cli {
namespace {

TEST(SheetIndexTest, GridHangsFromItsCornerWithColumnsAsWideAsTheirText) {
  // Two columns; the second's widest text is Cyrillic (4 letters, 8 bytes).
  const IndexCells cells = {{"No.", "Layout"}, {"1", "Лист"}, {"2", ""}};
  const IndexDrawing d = LayOutIndex(cells, 100, 200);
  const double first = 3 * 0.8 * kIndexTextHeight + 2 * kIndexCellMargin;
  const double second = 6 * 0.8 * kIndexTextHeight + 2 * kIndexCellMargin;
  EXPECT_DOUBLE_EQ(d.width, first + second);
  EXPECT_DOUBLE_EQ(d.height, 3 * kIndexRowHeight);
  // Four horizontal lines, three vertical ones, all inside the frame.
  ASSERT_EQ(d.lines.size(), 7u);
  for (const IndexLine& l : d.lines) {
    for (double x : {l.x1, l.x2}) {
      EXPECT_GE(x, 100);
      EXPECT_LE(x, 100 + d.width + 1e-9);
    }
    for (double y : {l.y1, l.y2}) {
      EXPECT_LE(y, 200);
      EXPECT_GE(y, 200 - d.height - 1e-9);
    }
  }
  // Texts row by row, left to right, inside their cells; the empty cell
  // gets no text.
  ASSERT_EQ(d.texts.size(), 5u);
  EXPECT_EQ(d.texts[0].text, "No.");
  EXPECT_EQ(d.texts[1].text, "Layout");
  EXPECT_EQ(d.texts[3].text, "Лист");
  EXPECT_EQ(d.texts[4].text, "2");
  EXPECT_DOUBLE_EQ(d.texts[3].x, 100 + first + kIndexCellMargin);
  const double base =
      200 - 2 * kIndexRowHeight + (kIndexRowHeight - kIndexTextHeight) / 2;
  EXPECT_DOUBLE_EQ(d.texts[3].y, base);
  EXPECT_DOUBLE_EQ(d.texts[2].y, base);
}

}  // namespace
}  // namespace lmt::cli

#include "layouts/layout_naming.h"

#include <gtest/gtest.h>

#include <string>

namespace lmt::layouts {
namespace {

using frames::Column;
using frames::FrameTable;

const NamingTexts kTexts{"Sheet-", "AB", "Z"};

struct NameCase {
  const char* name_template;
  int row;
  const char* block;
  const char* attribute;
  const char* expected;
};

TEST(BuildLayoutNameTest, ExpandsCodesAndCleans) {
  const NameCase cases[] = {
      {"10/20", 3, "", "", "Sheet-3"},
      {"", 7, "A3", "x", "7"},
      {"99/20", 4, "", "", "4"},  // unknown code ignored
      {"31", 1, "", "A/B: 1", "A.B. 1"},
      {"31", 1, "", "one\\Ptwo\\pthree", "one two three"},
      {"31", 1, "", "one\r\ntwo", "one two"},
      {"20/20/11/12", 12, "", "", "1212ABZ"},  // codes may repeat
      {"30/10", 2, "Format A3", "", "Format A3Sheet-"},
      {"10/", 5, "", "", "Sheet-"},
      {"/", 5, "", "", ""},  // only empty parts
      {"31", 1, "", "<a>/\\:;?*|,='\"", ".a............"},
  };
  for (const NameCase& c : cases) {
    EXPECT_EQ(
        BuildLayoutName(c.name_template, c.row, kTexts, c.block, c.attribute),
        c.expected)
        << c.name_template << " / " << c.attribute;
  }
}

TEST(BuildLayoutNameTest, CleanKeepsNonAsciiText) {
  EXPECT_EQ(CleanLayoutName("Лист 1: План"), "Лист 1. План");
}

TEST(NameAllRowsTest, NamesEveryRowFromItsCells) {
  FrameTable table;
  table.SetRowCount(4);
  table.SetCell(1, Column::kBlockName, "A3");
  table.SetCell(2, Column::kAttribute, "Plan\\PFloor 2");
  table.SetCell(3, Column::kLayoutName, "old");
  NameAllRows(table, "30/31/20", kTexts);
  EXPECT_EQ(table.Cell(1, Column::kLayoutName), "A31");
  EXPECT_EQ(table.Cell(2, Column::kLayoutName), "Plan Floor 22");
  EXPECT_EQ(table.Cell(3, Column::kLayoutName), "3");
  EXPECT_EQ(table.Cell(0, Column::kLayoutName), "Layout Name");
}

TEST(NameAllRowsTest, UpdateRenumbersAfterRowCommandsThenNames) {
  FrameTable table;
  table.SetRowCount(4);
  for (int r = 1; r <= 3; ++r) {
    table.SetCell(r, Column::kAttribute, std::string(1, char('a' + r - 1)));
  }
  table.Renumber();
  table.MoveRowToFirst(3);  // c a b
  NameAllRows(table, "31", kTexts);
  table.SetCell(2, Column::kNumber, "9");
  UpdateTable(table, "20/31", kTexts);
  EXPECT_EQ(table.Cell(1, Column::kLayoutName), "1c");
  EXPECT_EQ(table.Cell(2, Column::kLayoutName), "2a");
  EXPECT_EQ(table.Cell(2, Column::kNumber), "2");
  EXPECT_EQ(table.Cell(3, Column::kLayoutName), "3b");
}

TEST(NamingKeyFilterTest, DigitsSlashAndBackspaceOnly) {
  for (int key = 0; key < 256; ++key) {
    bool allowed = (key >= '0' && key <= '9') || key == '/' || key == 8;
    EXPECT_EQ(NamingKeyAllowed(key), allowed) << key;
  }
  EXPECT_FALSE(NamingKeyAllowed(0x0431));  // a Cyrillic letter
}

}  // namespace
}  // namespace lmt::layouts

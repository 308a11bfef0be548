#include "core/text_case.h"

#include <gtest/gtest.h>

namespace lmt::core {
namespace {

TEST(TextCaseTest, FoldsLatinAndCyrillic) {
  EXPECT_TRUE(EqualsIgnoreCase("Ёлка ŁÓDŹ Ω", "ёЛКА łódź ω"));
  EXPECT_FALSE(EqualsIgnoreCase("Е", "Ё"));
  EXPECT_FALSE(EqualsIgnoreCase("a", "ab"));
  EXPECT_FALSE(EqualsIgnoreCase("\xFF", "\xFE"));  // invalid bytes differ
  // An ASCII start followed by other letters, on either side.
  EXPECT_TRUE(EqualsIgnoreCase("Sheet Ж1", "sHEET ж1"));
  EXPECT_FALSE(EqualsIgnoreCase("Sheet", "Sheetж"));
  EXPECT_FALSE(EqualsIgnoreCase("Sheetж", "Sheet"));
  EXPECT_FALSE(EqualsIgnoreCase("AbЖ", "AcЖ"));
  EXPECT_EQ(ReplaceIgnoreCase("x\xFFЯя", "я", "R"), "x\xFFRR");
  EXPECT_EQ(FindIgnoreCase("abcБВ", "бв"), 3u);
  EXPECT_EQ(DropLastCodePoints("абв", 1), "аб");
  EXPECT_EQ(FoldCase(0x17F), char32_t{0x17F});  // long s has no upper case
  EXPECT_EQ(FoldCase(0x178), char32_t{0xFF});
}

}  // namespace
}  // namespace lmt::core

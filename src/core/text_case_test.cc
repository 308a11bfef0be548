#include "core/text_case.h"

#include <gtest/gtest.h>

namespace lmt::core {
namespace {

TEST(TextCaseTest, FoldsLatinAndCyrillic) {
  EXPECT_TRUE(EqualsIgnoreCase("Ёлка ŁÓDŹ Ω", "ёЛКА łódź ω"));
  EXPECT_FALSE(EqualsIgnoreCase("Е", "Ё"));
  EXPECT_FALSE(EqualsIgnoreCase("a", "ab"));
  EXPECT_FALSE(EqualsIgnoreCase("\xFF", "\xFE"));  // invalid bytes differ
  EXPECT_EQ(ReplaceIgnoreCase("x\xFFЯя", "я", "R"), "x\xFFRR");
  EXPECT_EQ(FindIgnoreCase("abcБВ", "бв"), 3u);
  EXPECT_EQ(DropLastCodePoints("абв", 1), "аб");
  EXPECT_EQ(FoldCase(0x17F), char32_t{0x17F});  // long s has no upper case
  EXPECT_EQ(FoldCase(0x178), char32_t{0xFF});
}

}  // namespace
}  // namespace lmt::core

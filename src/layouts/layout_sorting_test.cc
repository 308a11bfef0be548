// The orders of layout sorting that need no drawing; the sorting itself is
// tested on drawings through `layomat sort-layouts`.
#include "layouts/layout_sorting.h"

#include <gtest/gtest.h>

namespace lmt::layouts {
namespace {

TEST(CompareNaturalTest, NumbersCompareByValueLettersWithoutCase) {
  const struct {
    const char* a;
    const char* b;
  } before[] = {
      {"Sheet-2", "Sheet-10"},
      {"sheet-1", "Sheet-2"},
      {"A9", "a10"},
      {"Sheet-02", "Sheet-3"},
      {"Sheet", "Sheet-1"},
      {"1-9", "1-10"},
      {"B", "c"},
      {"x2y9", "x2y10"},
  };
  for (const auto& c : before) {
    EXPECT_LT(CompareNatural(c.a, c.b), 0) << c.a << " < " << c.b;
    EXPECT_GT(CompareNatural(c.b, c.a), 0) << c.b << " > " << c.a;
  }
  EXPECT_EQ(CompareNatural("Sheet-7", "Sheet-7"), 0);
}

TEST(ParseLayoutSortTest, TheFourOrdersAndNothingElse) {
  EXPECT_EQ(ParseLayoutSort("name")->order, LayoutOrder::kName);
  EXPECT_EQ(ParseLayoutSort("reverse")->order, LayoutOrder::kReverse);
  EXPECT_EQ(ParseLayoutSort("table")->order, LayoutOrder::kTable);
  Result<LayoutSort> by_tag = ParseLayoutSort("attribute:SHEET");
  ASSERT_TRUE(by_tag.ok());
  EXPECT_EQ(by_tag->order, LayoutOrder::kAttribute);
  EXPECT_EQ(by_tag->tag, "SHEET");
  for (const char* bad : {"", "size", "attribute:", "Name"}) {
    EXPECT_FALSE(ParseLayoutSort(bad).ok()) << bad;
  }
}

}  // namespace
}  // namespace lmt::layouts

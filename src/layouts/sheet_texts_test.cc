#include "layouts/sheet_texts.h"

#include <gtest/gtest.h>

namespace lmt::layouts {
namespace {

const SheetValues kThird{3, "plan.dwg", "A-03", 0.01};

TEST(ScaleLabelTest, ReciprocalWithoutGrouping) {
  EXPECT_EQ(ScaleLabel(0.01), "1:100");
  EXPECT_EQ(ScaleLabel(0.001), "1:1000");
  EXPECT_EQ(ScaleLabel(0.00002), "1:50000");
  EXPECT_EQ(ScaleLabel(1), "1:1");
  EXPECT_EQ(ScaleLabel(1 / 285.714), "1:286");  // rounded to a whole number
  EXPECT_EQ(ScaleLabel(1 / 2.5), "1:3");        // half away from zero
  EXPECT_EQ(ScaleLabel(10), "1:0.1");
  EXPECT_EQ(ScaleLabel(0), "");
  EXPECT_EQ(ScaleLabel(-0.01), "");
}

TEST(FillPlaceholdersTest, ReplacesEveryOccurrenceAndKeepsTheRest) {
  EXPECT_EQ(FillPlaceholders("Sheet ##1", kThird), "Sheet 3");
  EXPECT_EQ(FillPlaceholders("##3 (##1/##1) ##4, ##2", kThird),
            "A-03 (3/3) 1:100, plan.dwg");
  EXPECT_EQ(FillPlaceholders("  Лист  ##1 ", kThird), "  Лист  3 ");
  EXPECT_EQ(FillPlaceholders("##5 ## # ##", kThird), "##5 ## # ##");
  EXPECT_EQ(FillPlaceholders("###1", kThird), "#3");
  EXPECT_EQ(FillPlaceholders("", kThird), "");
}

TEST(FillPlaceholdersTest, SheetCountNeedsACapitalN) {
  SheetValues v = kThird;
  v.sheets = 12;
  EXPECT_EQ(FillPlaceholders("Sheet ##1 of ##N", v), "Sheet 3 of 12");
  EXPECT_EQ(FillPlaceholders("##N##1##N", v), "12312");
  EXPECT_EQ(FillPlaceholders("##n ##NN ##", v), "##n 12N ##");
}

TEST(FillPlaceholdersTest, InsertedNamesAreNotSearchedAgain) {
  SheetValues v{2, "a##3b.dwg", "L##1", 0.5};
  EXPECT_EQ(FillPlaceholders("##2|##3", v), "a##3b.dwg|L##1");
}

TEST(NamesEqualNoCaseTest, FoldsAsciiAndCyrillic) {
  EXPECT_TRUE(NamesEqualNoCase("Format_A3", "FORMAT_a3"));
  EXPECT_TRUE(NamesEqualNoCase("Штамп", "ШТАМП"));
  EXPECT_TRUE(NamesEqualNoCase("Ёлка", "ёЛКА"));
  EXPECT_FALSE(NamesEqualNoCase("Штамп", "Штамп1"));
  EXPECT_FALSE(NamesEqualNoCase("Штамп", "Штамм"));
  EXPECT_FALSE(NamesEqualNoCase("A", "a "));
  // Latin "A" and Cyrillic "А" look alike but are different names.
  EXPECT_FALSE(NamesEqualNoCase("A", "А"));
}

TEST(BlockMatchesTest, EmptyWantedNameMatchesNothing) {
  EXPECT_TRUE(BlockMatches("TitleBlock", "titleblock"));
  EXPECT_FALSE(BlockMatches("", ""));
  EXPECT_FALSE(BlockMatches("TitleBlock", ""));
}

TEST(AttributeChangesTest, FillsValuesAndMatchesTags) {
  AttributeChanges typed{{{"SHEET", "##1"}, {"", "ignored"}, {"Scale", "##4"}}};
  AttributeChanges filled = FillAttributeChanges(typed, kThird);
  EXPECT_EQ(NewAttributeValue(filled, "sheet"), "3");
  EXPECT_EQ(NewAttributeValue(filled, "SCALE"), "1:100");
  EXPECT_EQ(NewAttributeValue(filled, "OTHER"), std::nullopt);
  EXPECT_EQ(NewAttributeValue(filled, ""), std::nullopt);
  EXPECT_EQ(filled[0].tag, "SHEET");  // tags are not touched
  typed[1] = {"COUNT", "##1/##N"};
  SheetValues last = kThird;
  last.sheets = 3;
  EXPECT_EQ(NewAttributeValue(FillAttributeChanges(typed, last), "count"),
            "3/3");
}

}  // namespace
}  // namespace lmt::layouts

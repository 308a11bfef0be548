#include "core/numbers.h"

#include <gtest/gtest.h>

namespace lmt::core {
namespace {

const NumberFormatter kCommaLocale = [](double) { return std::string("0,2"); };
const NumberFormatter kPointLocale = [](double) { return std::string("0.2"); };
const NumberFormatter kOddLocale = [](double) { return std::string("0"); };

TEST(DetectDecimalSeparatorTest, LooksAtTheSecondCharacter) {
  EXPECT_TRUE(DetectDecimalSeparator(kCommaLocale, false));
  EXPECT_FALSE(DetectDecimalSeparator(kPointLocale, true));
  EXPECT_TRUE(DetectDecimalSeparator(kOddLocale, true));
  EXPECT_FALSE(DetectDecimalSeparator(kOddLocale, false));
}

TEST(TextToNumberTest, BothSeparatorsInBothLocales) {
  for (bool comma : {false, true}) {
    EXPECT_DOUBLE_EQ(TextToNumber("2.5", comma), 2.5);
    EXPECT_DOUBLE_EQ(TextToNumber("2,5", comma), 2.5);
    EXPECT_DOUBLE_EQ(TextToNumber("", comma), 0);
    EXPECT_DOUBLE_EQ(TextToNumber(" 100 ", comma), 100);
    EXPECT_DOUBLE_EQ(TextToNumber("-0,25", comma), -0.25);
    EXPECT_DOUBLE_EQ(TextToNumber("abc", comma), 0);
    EXPECT_DOUBLE_EQ(TextToNumber("1,2,3", comma), 0);
  }
}

TEST(FilterNumericKeyTest, OneLocaleSeparatorAndDigitsOnly) {
  EXPECT_EQ(FilterNumericKey('.', "12", true), ',');
  EXPECT_EQ(FilterNumericKey(',', "12", false), '.');
  EXPECT_EQ(FilterNumericKey('.', "1,2", true), std::nullopt);
  EXPECT_EQ(FilterNumericKey(',', "1.2", false), std::nullopt);
  EXPECT_EQ(FilterNumericKey('7', "1.2", false), '7');
  EXPECT_EQ(FilterNumericKey(kBackspace, "", false), kBackspace);
  EXPECT_EQ(FilterNumericKey('-', "", false), std::nullopt);
  EXPECT_EQ(FilterNumericKey('e', "", false), std::nullopt);
}

}  // namespace
}  // namespace lmt::core

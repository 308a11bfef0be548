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

}  // namespace
}  // namespace lmt::core

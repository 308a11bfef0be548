#include "host/variant.h"

#include <gtest/gtest.h>

#include <string>

namespace lmt::host {
namespace {

TEST(VariantTest, NumbersFromEveryNumericKind) {
  EXPECT_EQ(ToDouble(int16_t{1}).value(), 1);
  EXPECT_EQ(ToDouble(int32_t{-7}).value(), -7);
  EXPECT_EQ(ToDouble(0.25).value(), 0.25);
  EXPECT_EQ(ToDouble(std::string(" 42.5 ")).value(), 42.5);
  EXPECT_FALSE(ToDouble(std::string("1:100")).ok());
  EXPECT_FALSE(ToDouble(std::string("")).ok());
  EXPECT_FALSE(ToDouble(Point{1, 2, 3}).ok());
}

TEST(VariantTest, IntegersRoundAndStayInRange) {
  EXPECT_EQ(ToInt(int16_t{1}).value(), 1);
  EXPECT_EQ(ToInt(2.5).value(), 3);
  EXPECT_EQ(ToInt(-2.5).value(), -3);
  EXPECT_EQ(ToInt(std::string("16")).value(), 16);
  EXPECT_FALSE(ToInt(1e12).ok());
  EXPECT_FALSE(ToInt(std::string("x")).ok());
}

TEST(VariantTest, TextOfNumbersIsShortest) {
  EXPECT_EQ(ToText(std::string("*TOPVIEW*")).value(), "*TOPVIEW*");
  EXPECT_EQ(ToText(int16_t{1}).value(), "1");
  EXPECT_EQ(ToText(0.25).value(), "0.25");
  EXPECT_EQ(ToText(100.0).value(), "100");
  EXPECT_FALSE(ToText(Point{}).ok());
}

TEST(VariantTest, PointsOnlyFromPoints) {
  EXPECT_EQ(ToPoint(Point{0, 0, 1}).value(), (Point{0, 0, 1}));
  EXPECT_FALSE(ToPoint(1.0).ok());
}

}  // namespace
}  // namespace lmt::host

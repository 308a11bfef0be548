#include "core/status.h"

#include <gtest/gtest.h>

#include <string>

namespace lmt {
namespace {

Result<int> Half(int n) {
  if (n % 2 != 0) return Status::InvalidArgument("odd: " + std::to_string(n));
  return n / 2;
}

TEST(ResultTest, CarriesValueOrFailure) {
  Result<int> good = Half(8);
  ASSERT_TRUE(good.ok());
  EXPECT_EQ(*good, 4);
  Result<int> bad = Half(3);
  EXPECT_FALSE(bad.ok());
  EXPECT_EQ(bad.status().code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(bad.status().ToString(), "Invalid argument: odd: 3");
  EXPECT_EQ(bad.value_or(-1), -1);
}

TEST(ResultDeathTest, ReadingFailedValueIsABug) {
  Result<std::string> bad = Status::Refused("no");
  EXPECT_DEATH((void)bad.value(), "LMT_CHECK failed");
}

TEST(ResultDeathTest, OkStatusIsNotAFailure) {
  EXPECT_DEATH((void)Result<int>(Status::Ok()), "LMT_CHECK failed");
}

}  // namespace
}  // namespace lmt

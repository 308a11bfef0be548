#include "testing/shell.h"

#include <gtest/gtest.h>

namespace lmt::testing {
namespace {

#ifndef _WIN32
TEST(ShellTest, QuotedTextReachesTheCommandUnchangedWithItsExitCode) {
  const std::string awkward = "it's a $HOME `x` \"y\" \\ z";
  ShellRun run = RunShell("printf '%s' " + ShellQuote(awkward) + "; exit 3");
  EXPECT_EQ(run.out, awkward);
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(RunShell("kill -9 $$").status, -1);
}
#endif

}  // namespace
}  // namespace lmt::testing

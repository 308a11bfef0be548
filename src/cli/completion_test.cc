// The bash completion script as bash runs it: sourced, with COMP_WORDS set
// as bash sets them while the user presses Tab.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <string>

#include "cli/layomat_run_test_support.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

class CompletionTest : public ::testing::Test {
 protected:
  CompletionTest() {
    script_ = (home_ / "layomat.bash").string();
    test::LayomatRun run = test::RunLayomat(
        "completion bash > " + testing::ShellQuote(script_), home_.path());
    EXPECT_EQ(run.status, 0) << run.err;
  }

  // What Tab offers after `words` (the last one is being typed), sorted
  // and joined by blanks.
  std::string Complete(const std::string& words) {
    const std::string body =
        "cd " + testing::ShellQuote(home_.path().string()) + " && source " +
        testing::ShellQuote(script_) + " && COMP_WORDS=(" + words +
        ") && COMP_CWORD=$((${#COMP_WORDS[@]} - 1))"
        " && _layomat && printf '%s\\n' \"${COMPREPLY[@]}\""
        " | sort | tr '\\n' ' '";
    testing::ShellRun run =
        testing::RunShell("bash -c " + testing::ShellQuote(body) + " 2>&1");
    EXPECT_EQ(run.status, 0) << run.out;
    return run.out;
  }

  testing::TempDir home_;
  std::string script_;
};

TEST_F(CompletionTest, CommandsOptionsAndWords) {
  EXPECT_EQ(Complete("layomat cre"), "create-layouts ");
  const std::string all = Complete("layomat ''");
  for (const char* command : {"completion ", "create-layouts ", "viewports "}) {
    EXPECT_NE(all.find(command), std::string::npos) << all;
  }
  EXPECT_EQ(Complete("layomat create-layouts a.dxf --sc"), "--scale ");
  EXPECT_EQ(Complete("layomat frames --qu"), "--quiet ");
  EXPECT_EQ(Complete("layomat create-layouts --order rows"), "rows rows-up ");
  EXPECT_EQ(Complete("layomat viewports o"), "off on ");
  // An option's value is not the command: the command is still to come.
  EXPECT_EQ(Complete("layomat --settings cre cre"), "create-layouts ");
  EXPECT_EQ(Complete("layomat --template-file f.dxf Pattern tem"),
            "templates ");
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

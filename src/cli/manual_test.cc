// The manual page: it renders, and it names every command and option the
// program itself lists, so that it cannot fall behind them.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "cli/layomat_run_test_support.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

const std::string kManual = LMT_BINARY_DIR "/layomat.1";

// Commands of `layomat --help` ("  layomat NAME ...") and every option it
// or `layomat help options` spells out.
std::set<std::string> NamesTheProgramLists(const std::filesystem::path& home) {
  std::set<std::string> names;
  const std::string help = test::RunLayomat("--help", home).out;
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    std::smatch m;
    if (std::regex_search(line, m, std::regex("^  layomat ([a-z-]+)"))) {
      names.insert(m[1]);
    }
  }
  const std::string all = help + test::RunLayomat("help options", home).out;
  const std::regex option("(^|[ `,(\\[])(--?[a-z][a-z-]*)");
  for (auto it = std::sregex_iterator(all.begin(), all.end(), option);
       it != std::sregex_iterator(); ++it) {
    names.insert((*it)[2]);
  }
  return names;
}

TEST(ManualTest, RendersAndNamesEveryCommandAndOption) {
#ifndef LMT_HAVE_MANUAL
  GTEST_SKIP() << "go-md2man missing: the build made no manual page";
#endif
  ASSERT_TRUE(std::filesystem::exists(kManual));
  const std::string quoted = testing::ShellQuote(kManual);
  // groff warns about what it cannot lay out (-k reads UTF-8 as man does;
  // -z renders to nothing).
  testing::ShellRun warnings =
      testing::RunShell("groff -k -man -Tutf8 -ww -z " + quoted + " 2>&1");
  EXPECT_EQ(warnings.status, 0);
  EXPECT_EQ(warnings.out, "");
  testing::ShellRun page =
      testing::RunShell("MANWIDTH=80 man -l " + quoted + " 2>&1 | col -b");
  ASSERT_EQ(page.status, 0) << page.out;
  // man may print hyphens as U+2010 where groff decides; read them as "-".
  std::string text =
      std::regex_replace(page.out, std::regex("\xE2\x80\x90"), "-");
  ASSERT_NE(text.find("EXIT STATUS"), std::string::npos) << text;

  testing::TempDir home;
  const std::set<std::string> names = NamesTheProgramLists(home.path());
  ASSERT_GT(names.size(), 40u);  // the listing was read at all
  for (const std::string& name : names) {
    const std::regex word("(^|[^a-z-])" + name + "([^a-z-]|$)");
    EXPECT_TRUE(std::regex_search(text, word))
        << name << " is not in the manual";
  }
  for (const char* command : {"create-layouts", "completion", "settings"}) {
    EXPECT_TRUE(names.count(command)) << command;
  }
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

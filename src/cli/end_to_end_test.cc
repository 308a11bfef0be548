// Runs the built `layomat` binary as a user would.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <string>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "core/ini_unicode.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

test::LayomatRun Layomat(const std::string& args,
                         const testing::TempDir& home) {
  return test::RunLayomat(args, home.path());
}

TEST(EndToEndTest, VersionAndHelp) {
  testing::TempDir home;
  EXPECT_EQ(Layomat("--version", home).all(), "layomat 1.9.2\n");
  test::LayomatRun help = Layomat("--help", home);
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.all().find("--settings FILE"), std::string::npos);
}

TEST(EndToEndTest, SettingsAndSetReachTheModels) {
  testing::TempDir home;
  const auto file = home / "mine.ini";
  std::string value = "  1:50  ";
  ASSERT_TRUE(
      core::WriteIniUnicode(file, "OknoLmt", "UniTextLeyoutName0", value).ok());
  test::LayomatRun run =
      Layomat("settings OknoLmt --settings '" + file.string() +
                  "' --set OknoLmt.OptionSortPoint1=True",
              home);
  EXPECT_EQ(run.status, 0) << run.all();
  EXPECT_NE(run.all().find("OknoLmt.UniTextLeyoutName0=  1:50  \n"),
            std::string::npos);
  EXPECT_NE(run.all().find("OknoLmt.OptionSortPoint1=True\n"),
            std::string::npos);
  EXPECT_NE(run.all().find("OknoLmt.OptionSortPoint0=False\n"),
            std::string::npos);
  EXPECT_FALSE(core::FolderExists(home / "Layomat"));
}

TEST(EndToEndTest, BadCommandLinesExitWithTwo) {
  testing::TempDir home;
  test::LayomatRun unknown = Layomat("settings --set OknoLmt.Bogus=1", home);
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.all().find("Bogus"), std::string::npos);
  EXPECT_EQ(Layomat("frobnicate", home).status, 2);
  EXPECT_EQ(Layomat("settings --settings /nonexistent.ini", home).status, 3);
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

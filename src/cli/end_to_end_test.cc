// Runs the built `layomat` binary as a user would.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

#include "core/file_util.h"
#include "core/ini_unicode.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

struct Outcome {
  int status;
  std::string output;  // stdout and stderr together
};

Outcome Layomat(const std::string& args, const testing::TempDir& home) {
  const std::string command = "XDG_CONFIG_HOME='" + home.path().string() +
                              "' '" LMT_BINARY_DIR "/layomat' " + args +
                              " 2>&1";
  Outcome outcome{-1, ""};
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return outcome;
  std::array<char, 256> buffer;
  while (fgets(buffer.data(), buffer.size(), pipe) != nullptr)
    outcome.output += buffer.data();
  const int raw = pclose(pipe);
  outcome.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return outcome;
}

TEST(EndToEndTest, VersionAndHelp) {
  testing::TempDir home;
  EXPECT_EQ(Layomat("--version", home).output, "layomat 1.9.2\n");
  Outcome help = Layomat("--help", home);
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.output.find("--settings FILE"), std::string::npos);
}

TEST(EndToEndTest, SettingsAndSetReachTheModels) {
  testing::TempDir home;
  const auto file = home / "mine.ini";
  std::string value = "  1:50  ";
  ASSERT_TRUE(
      core::WriteIniUnicode(file, "OknoLmt", "UniTextLeyoutName0", value).ok());
  Outcome run = Layomat("settings OknoLmt --settings '" + file.string() +
                            "' --set OknoLmt.OptionSortPoint1=True",
                        home);
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_NE(run.output.find("OknoLmt.UniTextLeyoutName0=  1:50  \n"),
            std::string::npos);
  EXPECT_NE(run.output.find("OknoLmt.OptionSortPoint1=True\n"),
            std::string::npos);
  EXPECT_NE(run.output.find("OknoLmt.OptionSortPoint0=False\n"),
            std::string::npos);
  EXPECT_FALSE(core::FolderExists(home / "Layomat"));
}

TEST(EndToEndTest, BadCommandLinesExitWithTwo) {
  testing::TempDir home;
  Outcome unknown = Layomat("settings --set OknoLmt.Bogus=1", home);
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.output.find("Bogus"), std::string::npos);
  EXPECT_EQ(Layomat("frobnicate", home).status, 2);
  EXPECT_EQ(Layomat("settings --settings /nonexistent.ini", home).status, 3);
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

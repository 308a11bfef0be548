// The batch commands run as a user would run the built `layomat`: the
// window's settings from --set, outputs where the options say, a file that
// cannot be read reported with the run going on and exit status 3.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

namespace fs = std::filesystem;

struct Outcome {
  int status;
  std::string output;  // stdout and stderr together
};

Outcome Layomat(const std::string& args, const testing::TempDir& home) {
  const std::string command =
      "cd '" + home.path().string() + "' && XDG_CONFIG_HOME='" +
      home.path().string() + "' '" LMT_BINARY_DIR "/layomat' " + args + " 2>&1";
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

std::string ReadValues(const fs::path& file) {
  std::string command = "/usr/bin/python3 '" LMT_TESTDATA_DIR
                        "/batch/read_values.py' '" +
                        file.string() + "'";
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 256> buffer;
  while (pipe != nullptr && fgets(buffer.data(), buffer.size(), pipe))
    out += buffer.data();
  if (pipe != nullptr) pclose(pipe);
  return out;
}

void CopyDrawing(const char* source, const fs::path& target) {
  fs::copy_file(fs::path(LMT_TESTDATA_DIR) / "batch" / source, target);
}

TEST(BatchCommandsTest, ReplaceAttributesIntoNewFolderWithABadFile) {
  testing::TempDir home;
  CopyDrawing("attributes.dxf", home / "a.dxf");
  std::ofstream(home / "bad.dxf") << "junk";
  CopyDrawing("attributes.dxf", home / "c.dxf");
  Outcome run = Layomat(
      "replace-attributes a.dxf bad.dxf missing.dxf c.dxf"
      " --set OknoFunctionReplaceAtribut.UniTextNameAtribut1=SHEET"
      " --set OknoFunctionReplaceAtribut.UniTextValueAtribut1=S-9"
      " --set OknoFunctionReplaceAtribut.CheckSuffixAtribut1=1"
      " --set OknoFunctionReplaceAtribut.UniTextSuffixAtribut1=/x"
      " --set OknoFunctionReplaceAtribut.OptionSaveKuda2=True"
      " --set OknoFunctionReplaceAtribut.UniTextNamePapkaSave=done",
      home);
  EXPECT_EQ(run.status, 3) << run.output;
  EXPECT_NE(run.output.find("bad.dxf"), std::string::npos);
  EXPECT_NE(run.output.find("missing.dxf"), std::string::npos);
  for (const char* name : {"a.dxf", "c.dxf"}) {
    std::string values = ReadValues(home / "done" / name);
    EXPECT_NE(values.find("attrib Sheet B|TITLE|SHEET=S-9/x\n"),
              std::string::npos)
        << values;
    EXPECT_NE(values.find("audit 0\n"), std::string::npos);
  }
  EXPECT_FALSE(fs::exists(home / "done" / "bad.dxf"));
}

TEST(BatchCommandsTest, ReplaceTextOverTheSourceExitsZero) {
  testing::TempDir home;
  CopyDrawing("texts.dxf", home / "t.dxf");
  Outcome run = Layomat(
      "replace-text t.dxf"
      " --set OknoFunctionReplaceText.UniTextNameTEXT1=plan"
      " --set OknoFunctionReplaceText.OptionValueTEXT11=True"
      " --set OknoFunctionReplaceText.UniTextZamNaTEXT1=Sheet"
      " --set OknoFunctionReplaceText.OptionSaveKuda3=True",
      home);
  EXPECT_EQ(run.status, 0) << run.output;
  std::string values = ReadValues(home / "t.dxf");
  EXPECT_NE(values.find("text Model|TEXT=Sheet 1\n"), std::string::npos)
      << values;
  EXPECT_EQ(std::distance(fs::directory_iterator(home.path()),
                          fs::directory_iterator()),
            1);  // no temporary file or numbered copy left behind
}

TEST(BatchCommandsTest, RunScriptRefusesWhatTheEmbeddedHostDoesNotKnow) {
  testing::TempDir home;
  CopyDrawing("attributes.dxf", home / "a.dxf");
  std::ofstream(home / "s.scr") << "_PURGE _ALL";
  Outcome run = Layomat(
      "run-script a.dxf --set "
      "OknoFunctionRunScript.UniTextNameScriptFile=s.scr",
      home);
  EXPECT_EQ(run.status, 3) << run.output;
  EXPECT_NE(run.output.find("PURGE"), std::string::npos);
  EXPECT_FALSE(fs::exists(home / "a(1).dxf"));
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

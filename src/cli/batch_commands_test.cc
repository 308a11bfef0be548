// The batch commands run as a user would run the built `layomat`: the
// window's settings from --set, outputs where the options say, a file that
// cannot be read reported with the run going on and exit status 3.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <fstream>
#include <string>

#include "cli/layomat_run_test_support.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

namespace fs = std::filesystem;

test::LayomatRun Layomat(const std::string& args,
                         const testing::TempDir& home) {
  return test::RunLayomat(args, home.path());
}

std::string ReadValues(const fs::path& file) {
  return testing::RunShell(testing::PythonCommand() +
                           "'" LMT_TESTDATA_DIR "/batch/read_values.py' " +
                           testing::ShellQuote(file.string()))
      .out;
}

void CopyDrawing(const char* source, const fs::path& target) {
  fs::copy_file(fs::path(LMT_TESTDATA_DIR) / "batch" / source, target);
}

TEST(BatchCommandsTest, ReplaceAttributesIntoNewFolderWithABadFile) {
  testing::TempDir home;
  CopyDrawing("attributes.dxf", home / "a.dxf");
  std::ofstream(home / "bad.dxf") << "junk";
  CopyDrawing("attributes.dxf", home / "c.dxf");
  test::LayomatRun run = Layomat(
      "replace-attributes a.dxf bad.dxf missing.dxf c.dxf"
      " --set OknoFunctionReplaceAtribut.UniTextNameAtribut1=SHEET"
      " --set OknoFunctionReplaceAtribut.UniTextValueAtribut1=S-9"
      " --set OknoFunctionReplaceAtribut.CheckSuffixAtribut1=1"
      " --set OknoFunctionReplaceAtribut.UniTextSuffixAtribut1=/x"
      " --set OknoFunctionReplaceAtribut.OptionSaveKuda2=True"
      " --set OknoFunctionReplaceAtribut.UniTextNamePapkaSave=done",
      home);
  EXPECT_EQ(run.status, 3) << run.all();
  EXPECT_NE(run.all().find("bad.dxf"), std::string::npos);
  EXPECT_NE(run.all().find("missing.dxf"), std::string::npos);
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
  test::LayomatRun run = Layomat(
      "replace-text t.dxf"
      " --set OknoFunctionReplaceText.UniTextNameTEXT1=plan"
      " --set OknoFunctionReplaceText.OptionValueTEXT11=True"
      " --set OknoFunctionReplaceText.UniTextZamNaTEXT1=Sheet"
      " --set OknoFunctionReplaceText.OptionSaveKuda3=True",
      home);
  EXPECT_EQ(run.status, 0) << run.all();
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
  test::LayomatRun run = Layomat(
      "run-script a.dxf --set "
      "OknoFunctionRunScript.UniTextNameScriptFile=s.scr",
      home);
  EXPECT_EQ(run.status, 3) << run.all();
  EXPECT_NE(run.all().find("PURGE"), std::string::npos);
  EXPECT_FALSE(fs::exists(home / "a(1).dxf"));
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

// The layout utilities' commands run as a user would: the built `layomat`
// on copies of test drawings, the results read back by ezdxf.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/drawing_output.h"
#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/dxf_check.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

namespace fs = std::filesystem;

using testing::SharedDir;

const std::string kTestdata = std::string(LMT_TESTDATA_DIR) + "/utilities/";

std::string Bytes(const fs::path& path) {
  return core::ReadFileBytes(path).value_or("");
}

class UtilityCommandsTest : public ::testing::Test {
 protected:
  UtilityCommandsTest() {
    fs::copy_file(kTestdata + "sheets.dxf", dir_ / "sheets.dxf");
  }

  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  // describe.py's lines for `file` in the scratch folder.
  std::string Describe(const std::string& file) {
    testing::ShellRun ran = testing::RunShell(
        testing::PythonCommand() + kTestdata + "describe.py " +
        testing::ShellQuote((dir_ / file).string()) + " 2>&1");
    EXPECT_EQ(ran.status, 0) << ran.out;
    return ran.out;
  }
  // Only the given files are left in the scratch folder (no temporaries).
  void ExpectFiles(std::vector<std::string> expected) {
    std::vector<std::string> names;
    for (const fs::directory_entry& e : fs::directory_iterator(dir_.path())) {
      if (e.is_regular_file()) names.push_back(e.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names, expected);
  }

  testing::TempDir dir_;
};

TEST_F(UtilityCommandsTest, ViewportsOffWritesOutAndLeavesTheSourceAlone) {
  const std::string before = Bytes(dir_ / "sheets.dxf");
  test::LayomatRun ran = Layomat("viewports off sheets.dxf -o out.dxf");
  EXPECT_EQ(ran.status, 0) << ran.all();
  EXPECT_NE(ran.all().find(": Ok\n"), std::string::npos) << ran.all();
  EXPECT_EQ(Bytes(dir_ / "sheets.dxf"), before);
  std::string out = Describe("out.dxf");
  EXPECT_NE(out.find("vp 9C A3 4 off"), std::string::npos) << out;
  EXPECT_NE(out.find("vp 9B A3 1 on"), std::string::npos) << out;
  // sheets.dxf itself is clean, so no problem is allowed.
  EXPECT_EQ(testing::DxfProblems((dir_ / "out.dxf").string()), "");
  ExpectFiles({"out.dxf", "sheets.dxf"});
}

TEST_F(UtilityCommandsTest, OutputEqualToTheDrawingReplacesIt) {
  test::LayomatRun ran = Layomat("viewports on sheets.dxf -o sheets.dxf");
  EXPECT_EQ(ran.status, 0) << ran.all();
  EXPECT_NE(Describe("sheets.dxf").find("vp A4 Pair 7 on"), std::string::npos);
  ExpectFiles({"sheets.dxf"});
}

TEST_F(UtilityCommandsTest, DeleteOutsideGoesToThePickedViewportsLayout) {
  // The drawing was saved with the model tab current.
  test::LayomatRun ran =
      Layomat("delete-outside sheets.dxf --viewport 9C -o out.dxf");
  EXPECT_EQ(ran.status, 0) << ran.all();
  std::string out = Describe("out.dxf");
  std::string model;
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("msp ", 0) == 0) model += line.substr(4, 2) + " ";
  }
  EXPECT_EQ(model, "8A 8B 8E 8F ");
  EXPECT_EQ(testing::DxfProblems((dir_ / "out.dxf").string()), "");
  EXPECT_NE(out.find("psp A3 9D LINE"), std::string::npos);
}

TEST_F(UtilityCommandsTest, RefusalsExitOneAndWriteNothing) {
  test::LayomatRun circle =
      Layomat("delete-outside sheets.dxf --viewport 8A -o out.dxf");
  EXPECT_EQ(circle.status, 1);
  ExpectFiles({"sheets.dxf"});
}

TEST_F(UtilityCommandsTest, BadCommandLinesExitTwo) {
  EXPECT_EQ(Layomat("viewports sideways sheets.dxf -o out.dxf").status, 2);
  EXPECT_EQ(Layomat("viewports on sheets.dxf").status, 2);
  EXPECT_EQ(Layomat("delete-outside --viewport 9C -o out.dxf").status, 2);
  // The synopsis requires the viewport: its absence is the command line's
  // fault, found before the drawing is touched.
  test::LayomatRun none = Layomat("delete-outside sheets.dxf -o out.dxf");
  EXPECT_EQ(none.status, 2);
  EXPECT_NE(none.err.find("--viewport"), std::string::npos) << none.err;
  ExpectFiles({"sheets.dxf"});
}

TEST_F(UtilityCommandsTest, UnreadableOrUnwritableDrawingsExitThree) {
  LMT_SKIP_WITHOUT_SHARED();
  test::LayomatRun missing = Layomat("viewports on nothing.dxf -o out.dxf");
  EXPECT_EQ(missing.status, 3);
  EXPECT_NE(missing.all().find("nothing.dxf"), std::string::npos);
  // The engine reads R12 but writes 2000 and later only.
  test::LayomatRun r12 = Layomat("viewports on '" + SharedDir() +
                                 "/dxf-samples/s_AC1009.dxf' -o out.dxf");
  EXPECT_EQ(r12.status, 3);
  EXPECT_NE(r12.all().find("out.dxf"), std::string::npos);
  ExpectFiles({"sheets.dxf"});
}

TEST_F(UtilityCommandsTest, OurR12DrawingIsReadButNotWritten) {
  test::LayomatRun r12 = Layomat(
      "viewports on " +
      testing::ShellQuote(testing::TestdataPath("releases/sheets_r12.dxf")) +
      " -o out.dxf");
  EXPECT_EQ(r12.status, 3);
  EXPECT_NE(r12.all().find("out.dxf"), std::string::npos);
  ExpectFiles({"sheets.dxf"});
}

TEST(DxfReleaseTest, ReadsTheHeadersOfOurReleases) {
  const std::string dir = testing::TestdataPath("releases/");
  EXPECT_EQ(*DxfRelease(dir + "sheets_2018_bin.dxf"), "AC1032");
  EXPECT_EQ(*DxfRelease(dir + "sheets_2018.dxf"), "AC1032");
  EXPECT_EQ(*DxfRelease(dir + "sheets_2000.dxf"), "AC1015");
  EXPECT_EQ(*DxfRelease(dir + "sheets_r12.dxf"), "AC1009");
}

TEST(DxfReleaseTest, ReadsAsciiAndBinaryHeaders) {
  LMT_SKIP_WITHOUT_SHARED();
  const std::string samples = SharedDir() + "/dxf-samples/";
  EXPECT_EQ(*DxfRelease(samples + "s_AC1032_bin.dxf"), "AC1032");
  EXPECT_EQ(*DxfRelease(samples + "s_AC1015.dxf"), "AC1015");
  EXPECT_EQ(*DxfSaveType("AC1015"), 13);
  EXPECT_EQ(DxfSaveType("AC1009").status().code(), StatusCode::kNotSupported);
  EXPECT_EQ(DxfRelease(samples + "missing.dxf").status().code(),
            StatusCode::kIOError);
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

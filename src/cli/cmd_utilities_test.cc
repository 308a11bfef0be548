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

TEST_F(UtilityCommandsTest, UnreadableDrawingsExitThree) {
  test::LayomatRun missing = Layomat("viewports on nothing.dxf -o out.dxf");
  EXPECT_EQ(missing.status, 3);
  EXPECT_NE(missing.all().find("nothing.dxf"), std::string::npos);
  ExpectFiles({"sheets.dxf"});
}

// R12 keeps a viewport's view in extended data and says "off" with 68 = 0
// alone: the edits keep to that form and to the release.
TEST_F(UtilityCommandsTest, R12DrawingsAreEditedInTheirOwnRelease) {
  LMT_SKIP_WITHOUT_SHARED();
  // Written by a CAD program: the layout's own viewport 267 and 26B.
  fs::copy_file(lmt::testing::CorpusPath("024_sample_AC1009_ascii.dxf"),
                dir_ / "r12.dxf");
  // The test drawing's viewport shows the frame at (0..42000, 0..29700);
  // the circle far below it goes, the one inside stays.
  fs::copy_file(std::string(LMT_TESTDATA_DIR) + "/cli/frames_r12.dxf",
                dir_ / "frames.dxf");
  ASSERT_EQ(Layomat("viewports off r12.dxf -o off.dxf").status, 0);
  ASSERT_EQ(Layomat("viewports on off.dxf -o on.dxf").status, 0);
  ASSERT_EQ(
      Layomat("delete-outside frames.dxf --viewport 35 -o cut.dxf").status, 0);
  testing::ShellRun read = testing::RunShell(
      testing::PythonCommand() + "- " +
      testing::ShellQuote(dir_.path().string()) +
      " <<'EOF'\n"
      "import ezdxf, sys, os\n"
      "for name in ('off', 'on', 'cut'):\n"
      "    doc = ezdxf.readfile(os.path.join(sys.argv[1], name + '.dxf'))\n"
      "    vps = [(v.dxf.handle, v.dxf.status, v.dxf.hasattr('flags'))"
      " for v in doc.layout().query('VIEWPORT')]\n"
      "    circles = sorted(round(c.dxf.center.y) for c in"
      " doc.modelspace().query('CIRCLE'))\n"
      "    print(name, doc.dxfversion, vps, circles if name == 'cut' else '')\n"
      "EOF\n");
  ASSERT_EQ(read.status, 0) << read.out;
  EXPECT_EQ(read.out,
            "off AC1009 [('267', 1, False), ('26B', 0, False)] \n"
            "on AC1009 [('267', 1, False), ('26B', 2, False)] \n"
            "cut AC1009 [('35', 1, False)] [14850]\n");
  // Off and on again gives back the input byte for byte: the status number
  // given out again is the same, and keeps the width of its field.
  EXPECT_TRUE(Bytes(dir_ / "on.dxf") == Bytes(dir_ / "r12.dxf"));
}

TEST_F(UtilityCommandsTest, FilesWithoutAReleaseAreReadAndWrittenAsR12) {
  // The smallest drawing a CAD program reads: entities only.
  const std::string bare =
      "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n0\n20\n0\n11\n"
      "1\n21\n1\n0\nENDSEC\n0\nEOF\n";
  ASSERT_TRUE(core::WriteFileAtomically(dir_ / "bare.dxf", bare).ok());
  EXPECT_EQ(*DxfRelease((dir_ / "bare.dxf").string()), "AC1009");
  test::LayomatRun run = Layomat("recover bare.dxf -o out.dxf");
  ASSERT_EQ(run.status, 0) << run.all();
  EXPECT_EQ(Bytes(dir_ / "out.dxf"), bare);
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
  EXPECT_EQ(*DxfSaveType("AC1009"), 1);
  EXPECT_EQ(DxfSaveType("AC1099").status().code(), StatusCode::kNotSupported);
  EXPECT_EQ(DxfRelease(samples + "missing.dxf").status().code(),
            StatusCode::kIOError);
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

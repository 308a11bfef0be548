// `layomat create-layouts --insert` as a user runs it on the example
// drawing: a drawing file beside the working folder stamped on every sheet
// with the sheet's values, read back with ezdxf; the dry run names what
// would be inserted and warns of a source that cannot be; a missing block
// is said once and the sheets are still made.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <string>
#include <vector>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

int Count(const std::string& text, const std::string& part) {
  int n = 0;
  for (size_t at = text.find(part); at != std::string::npos;
       at = text.find(part, at + 1)) {
    ++n;
  }
  return n;
}

class InsertEndToEndTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(core::WriteFileAtomically(Out("empty.ini"), "").ok());
  }
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat("create-layouts --settings '" + Out("empty.ini") +
                                "' '" + example_ + "'" + sheets_ + " " + args,
                            dir_.path());
  }
  testing::ShellRun Script(const std::string& script, const std::string& arg) {
    return testing::RunShell(
        testing::PythonCommand() +
        testing::ShellQuote(testing::TestdataPath("layouts/" + script)) + " " +
        testing::ShellQuote(arg) + " 2>/dev/null");
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  const std::string sheets_ =
      " --by-size --numbering 10/20 --names Sheet- --pattern-layout Pattern"
      " --scale 1:100 --layer Viewports";
  lmt::testing::TempDir dir_;
};

TEST_F(InsertEndToEndTest, DrawingFileStampedOnEverySheet) {
  ASSERT_EQ(Script("make_stamp.py", Out("stamp.dxf")).status, 0);
  // Relative: found in the working folder.
  const std::string insert =
      "--insert stamp.dxf --insert-at 400,20 --insert-scale 0.5"
      " --insert-rotation 90 --insert-layer STAMP";
  test::LayomatRun dry = Layomat("--dry-run " + insert);
  ASSERT_EQ(dry.status, 0) << dry.err;
  EXPECT_NE(dry.out.find("\ninsert\tstamp.dxf\tfile\t400,20\t0.5\t90\tSTAMP\n"),
            std::string::npos)
      << dry.out;
  EXPECT_EQ(dry.err.find("would not be inserted"), std::string::npos);

  test::LayomatRun run = Layomat("-o '" + Out("out.dxf") + "' " + insert);
  ASSERT_EQ(run.status, 0) << run.err;
  testing::ShellRun back = Script("describe_inserts.py", Out("out.dxf"));
  ASSERT_EQ(back.status, 0) << back.out;
  for (int i = 1; i <= 9; ++i) {
    const std::string sheet = "Sheet-" + std::to_string(i);
    SCOPED_TRACE(sheet);
    EXPECT_EQ(Count(back.out, "insert\t" + sheet + "\t"), 1);
    EXPECT_NE(back.out.find("insert\t" + sheet +
                            "\tstamp\t400.0\t20.0\t0.5\t0.5\t90.0\tSTAMP\n"),
              std::string::npos);
    EXPECT_NE(
        back.out.find("attrib\t" + sheet + "\tstamp\tLAYOUT\t" + sheet + "\t"),
        std::string::npos);
    EXPECT_NE(back.out.find("attrib\t" + sheet + "\tstamp\tSHEET\tSheet " +
                            std::to_string(i) + " of 9\t"),
              std::string::npos);
  }
  EXPECT_EQ(Count(back.out, "block\tstamp\t"), 1);
  EXPECT_NE(back.out.find("block\tstamp\t180.0\t0.0\t7\t"), std::string::npos)
      << back.out;
}

TEST_F(InsertEndToEndTest, MissingBlockToldOnceAndSheetsStillMade) {
  test::LayomatRun dry = Layomat("--dry-run --insert NoSuchBlock");
  ASSERT_EQ(dry.status, 0) << dry.err;
  EXPECT_NE(dry.err.find("warning: \"NoSuchBlock\" would not be inserted"),
            std::string::npos)
      << dry.err;

  test::LayomatRun run =
      Layomat("-o '" + Out("out.dxf") + "' --insert NoSuchBlock");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Count(run.err, "\"NoSuchBlock\""), 1) << run.err;
  EXPECT_NE(run.out.find("9 of 9 layouts made"), std::string::npos) << run.out;
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

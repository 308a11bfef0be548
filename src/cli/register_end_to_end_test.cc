// `create-layouts --register FILE` as a drafter uses it: `frames --csv`,
// the file edited as in a spreadsheet program, then the run, read back
// with ezdxf: the layouts, their order, names and title-block values, the
// frames' own title blocks, and the sheet index drawn on a layout.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <string>
#include <vector>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

// testdata/cli/sheets.py: the word of its job, then that job's arguments.
testing::ShellRun Sheets(const std::vector<std::string>& args) {
  return test::RunTestScript("sheets.py", args);
}

class RegisterCommandTest : public ::testing::Test {
 protected:
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }
  std::string Run(const std::string& register_file, const std::string& out) {
    return "create-layouts '" + Out("titled.dxf") + "' --settings '" +
           Out("empty.ini") + "' --by-size --pattern-layout Pattern" +
           " --register '" + register_file + "' -o '" + out + "'";
  }
  void SetUp() override {
    ASSERT_TRUE(core::WriteFileAtomically(Out("empty.ini"), "").ok());
    ASSERT_EQ(Sheets({"add-title-block", example_, Out("titled.dxf")}).status,
              0);
    test::LayomatRun frames =
        Layomat("frames '" + Out("titled.dxf") + "' --settings '" +
                Out("empty.ini") + "' --by-size --csv '" + Out("f.csv") + "'");
    ASSERT_EQ(frames.status, 0) << frames.err;
  }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  lmt::testing::TempDir dir_;
};

TEST_F(RegisterCommandTest, AnEditedRegisterGivesExactlyItsSheets) {
  ASSERT_EQ(Sheets({"edit-register", Out("f.csv"), Out("r.csv")}).status, 0);
  test::LayomatRun run = Layomat(Run(Out("r.csv"), Out("out.dxf")) +
                                 " --index-layout Pattern --index-at 10,260"
                                 " --index-columns SHEET,TITLE");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.err.find("warning: register row 6 (line 7) matches no frame: "
                         "ID 99999, corner 777.5,"),
            std::string::npos)
      << run.err;
  // The polylines and the deleted A-05 (search rows 3, 5, 6, 7).
  EXPECT_NE(run.err.find("warning: 4 frames have no register row and are "
                         "left out of the run: 3 (ID 190), 5 (ID 176), "
                         "6 (ID 192), 7 (ID 194)\n"),
            std::string::npos)
      << run.err;
  // --dry-run plans the register's sheets, in its order.
  test::LayomatRun dry =
      Layomat(Run(Out("r.csv"), Out("dry.dxf")) + " --dry-run");
  ASSERT_EQ(dry.status, 0) << dry.err;
  EXPECT_TRUE(dry.out.starts_with("plan\tЛист 1\tblock\t115000,-19850\t"))
      << dry.out;
  EXPECT_NE(dry.err.find("matches no frame"), std::string::npos);
  testing::ShellRun back = Sheets({"register-result", Out("out.dxf")});
  ASSERT_EQ(back.status, 0) << back.out;
  EXPECT_EQ(back.out,
            "Лист 1 Л-1|План, \"этаж\" 1\n"
            "Лист 2 Л-2|First floor\n"
            "Лист 3 Л-3|Ground floor\n"
            "Лист 4 Л-4|Roof\n"
            "Лист 5 Л-5|Site plan\n"
            "model ['A-05|Section A-A', 'Л-1|План, \"этаж\" 1', "
            "'Л-2|First floor', 'Л-3|Ground floor', 'Л-4|Roof', "
            "'Л-5|Site plan']\n"
            "index at 12,254.25\n"
            "index No.;Layout;SHEET;TITLE;Scale;"
            "1;Лист 1;Л-1;План, \"этаж\" 1;1:100;"
            "2;Лист 2;Л-2;First floor;1:100;3;Лист 3;Л-3;Ground floor;1:100;"
            "4;Лист 4;Л-4;Roof;1:100;5;Лист 5;Л-5;Site plan;1:100\n"
            "audit errors 0\n");
}

// The JSON documents of the run and of the dry run carry the warnings the
// text output prints on standard error, the register's among them.
TEST_F(RegisterCommandTest, JsonReportsCarryTheWarnings) {
  ASSERT_EQ(Sheets({"edit-register", Out("f.csv"), Out("r.csv")}).status, 0);
  for (const std::string mode : {" --json", " --dry-run --json"}) {
    test::LayomatRun run = Layomat(Run(Out("r.csv"), Out("j.dxf")) + mode);
    ASSERT_EQ(run.status, 0) << mode << run.err;
    ASSERT_TRUE(core::WriteFileAtomically(Out("out.json"), run.out).ok());
    ASSERT_TRUE(core::WriteFileAtomically(Out("err.txt"), run.err).ok());
    testing::ShellRun check =
        Sheets({"same-warnings", Out("out.json"), Out("err.txt")});
    EXPECT_EQ(check.status, 0) << mode << "\n" << check.out;
  }
}

TEST_F(RegisterCommandTest, RegistersThatCannotBeUsedWriteNothing) {
  // Missing: a file error naming it.
  test::LayomatRun missing = Layomat(Run(Out("none.csv"), Out("a.dxf")));
  EXPECT_EQ(missing.status, 3);
  EXPECT_NE(missing.err.find("none.csv: cannot read the register"),
            std::string::npos)
      << missing.err;
  // A file that is no register (the column was renamed): bad command line,
  // naming the file and line.
  ASSERT_TRUE(
      core::WriteFileAtomically(Out("bad.csv"), "\xEF\xBB\xBFNo,Name,ID\r\n")
          .ok());
  test::LayomatRun bad = Layomat(Run(Out("bad.csv"), Out("a.dxf")));
  EXPECT_EQ(bad.status, 2);
  EXPECT_NE(bad.err.find("bad.csv:1: the register has no \"Layout Name\""),
            std::string::npos)
      << bad.err;
  // The index needs its point, and a layout the drawing has.
  EXPECT_EQ(
      Layomat(Run(Out("f.csv"), Out("a.dxf")) + " --index-layout P").status, 2);
  test::LayomatRun no_layout = Layomat(Run(Out("f.csv"), Out("a.dxf")) +
                                       " --index-layout Nope --index-at 0,0");
  EXPECT_EQ(no_layout.status, 1);
  EXPECT_NE(no_layout.err.find("no layout \"Nope\""), std::string::npos)
      << no_layout.err;
  EXPECT_FALSE(std::filesystem::exists(Out("a.dxf")));
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

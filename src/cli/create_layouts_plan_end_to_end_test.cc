// `layomat create-layouts` beyond one output drawing, as a user runs it:
// "sheet x of N" on every sheet, --dry-run (writes nothing, and plans what
// the real run then makes), the plan's warnings, and the output split into
// several drawings (all written or none). Drawings are read back with
// ezdxf.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <set>
#include <sstream>
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

std::string WarningLines(const std::string& err) {
  std::istringstream lines(err);
  std::string line, warnings;
  while (std::getline(lines, line)) {
    if (line.starts_with("warning: ")) warnings += line + "\n";
  }
  return warnings;
}

class CreateLayoutsPlanTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(core::WriteFileAtomically(Out("empty.ini"), "").ok());
  }
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(
        "create-layouts --settings '" + Out("empty.ini") + "' " + args,
        dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir_.path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  // The demo's sheets: nine frames, Sheet-1 .. Sheet-9 from "Pattern".
  const std::string sheets_ =
      " --by-size --numbering 10/20 --names Sheet- --pattern-layout Pattern"
      " --scale 1:100 --layer Viewports";
  lmt::testing::TempDir dir_;
};

TEST_F(CreateLayoutsPlanTest, SheetXOfNOnEverySheetTextAndAttribute) {
  ASSERT_EQ(Sheets({"add-title-block", example_, Out("titled.dxf")}).status, 0);
  test::LayomatRun run = Layomat(
      "'" + Out("titled.dxf") + "' -o '" + Out("out.dxf") + "'" + sheets_ +
      " --text 'Sheet ##1 of ##N' --text-at 300,20 --text-height 5"
      " --attribute-block FRAME_A3 --attribute 'SHEET=##1/##N'");
  ASSERT_EQ(run.status, 0) << run.err;
  testing::ShellRun back = Sheets({"layouts", Out("out.dxf"), "Sheet-"});
  ASSERT_EQ(back.status, 0) << back.out;
  for (int i = 1; i <= 9; ++i) {
    const std::string n = std::to_string(i);
    EXPECT_NE(
        back.out.find("Sheet-" + n + "|Sheet " + n + " of 9|" + n + "/9\n"),
        std::string::npos)
        << back.out;
  }
}

TEST_F(CreateLayoutsPlanTest, DryRunWritesNothingAndPlansWhatTheRunMakes) {
  const std::string before = core::ReadFileBytes(example_).value_or("");
  const std::set<std::string> files = Files();
  // --scale 1:137 is not a standard scale: both runs warn alike.
  std::string options = sheets_;
  options.replace(options.find("1:100"), 5, "1:137");
  test::LayomatRun dry = Layomat("'" + example_ + "' --dry-run --json -o '" +
                                 Out("planned.dxf") + "'" + options);
  ASSERT_EQ(dry.status, 0) << dry.err;
  EXPECT_EQ(Files(), files);
  EXPECT_EQ(core::ReadFileBytes(example_).value_or(""), before);
  ASSERT_TRUE(core::WriteFileAtomically(Out("plan.json"), dry.out).ok());

  test::LayomatRun real =
      Layomat("'" + example_ + "' -o '" + Out("real.dxf") + "'" + options);
  ASSERT_EQ(real.status, 0) << real.err;
  EXPECT_EQ(WarningLines(real.err), WarningLines(dry.err));
  EXPECT_NE(real.err.find("warning: scale 1:137 of layout \"Sheet-1\" and 8 "
                          "more is not a standard scale\n"),
            std::string::npos)
      << real.err;

  testing::ShellRun compared =
      Sheets({"compare-plan", Out("plan.json"), "Sheet-", Out("real.dxf")});
  EXPECT_EQ(compared.out, "compared 9 not made []\n");
  EXPECT_NE(dry.out.find("\"scale_text\": \"1:137\""), std::string::npos);
  // The turned polyline frame is planned with its twist.
  EXPECT_NE(dry.out.find("\"twist\": 330"), std::string::npos) << dry.out;
}

TEST_F(CreateLayoutsPlanTest, DryRunTextNeedsNoOutputAndRefusesOtherCommands) {
  test::LayomatRun dry = Layomat("'" + example_ + "' --dry-run" + sheets_);
  ASSERT_EQ(dry.status, 0) << dry.err;
  EXPECT_NE(dry.out.find("plan\tSheet-1\tblock\t"), std::string::npos)
      << dry.out;
  EXPECT_NE(dry.out.find("\t1:100\t"), std::string::npos) << dry.out;
  EXPECT_NE(dry.out.find("9 layouts planned; nothing written"),
            std::string::npos);
  // The turned frame of the example overlaps two of its neighbours.
  EXPECT_EQ(WarningLines(dry.err),
            "warning: the frames of row 6 (\"Sheet-6\") and row 7 "
            "(\"Sheet-7\") overlap\n"
            "warning: the frames of row 7 (\"Sheet-7\") and row 9 "
            "(\"Sheet-9\") overlap\n");
  // A pattern layout the drawing lacks: the run would be refused.
  test::LayomatRun missing =
      Layomat("'" + example_ + "' --dry-run --pattern-layout Nope");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("\"Nope\""), std::string::npos) << missing.err;
  EXPECT_EQ(
      test::RunLayomat("viewports on '" + example_ + "' --dry-run", dir_.path())
          .status,
      2);
}

// Each warning on a drawing that has it; the run goes on regardless.
TEST_F(CreateLayoutsPlanTest, WarningsOfNamesFramesAndLayoutCount) {
  ASSERT_EQ(Sheets({"busy-frames", example_, Out("busy.dxf"), Out("many.dxf")})
                .status,
            0);
  const std::string busy = "'" + Out("busy.dxf") + "' --dry-run";
  test::LayomatRun frames = Layomat(busy + " --names S-");
  EXPECT_EQ(frames.status, 0);
  EXPECT_NE(frames.err.find("\") and row "), std::string::npos) << frames.err;
  EXPECT_NE(frames.err.find("\") overlap\n"), std::string::npos) << frames.err;
  EXPECT_NE(frames.err.find("\") lies inside the frame of row "),
            std::string::npos)
      << frames.err;

  test::LayomatRun same = Layomat(busy + " --names S- --numbering 10");
  EXPECT_NE(same.err.find("warning: layout name \"S-\" is given to rows 1, 2, "
                          "3,"),
            std::string::npos)
      << same.err;
  test::LayomatRun taken = Layomat(busy + " --numbering 10/20 --names Layout");
  EXPECT_NE(taken.err.find("\"Layout1\" of row 1 is taken by the drawing's "
                           "layout \"Layout1\""),
            std::string::npos)
      << taken.err;
  test::LayomatRun bad = Layomat(busy + " --numbering 10/20 --names 'a`b'");
  EXPECT_NE(bad.err.find("cannot be used: layout names cannot hold '`'"),
            std::string::npos)
      << bad.err;
  test::LayomatRun longer =
      Layomat(busy + " --numbering 10/20 --names " + std::string(300, 'x'));
  EXPECT_NE(longer.err.find("longer than 255 bytes"), std::string::npos)
      << longer.err;

  // More than 255 layouts: the dry run and the real run say how to split,
  // and a split into small enough files does not warn.
  const std::string many = "'" + Out("many.dxf") + "' --names S-";
  const std::string split_hint =
      "warning: 260 layouts in one drawing: more than 255 are not shown by "
      "every CAD program; split the output with --sheets-per-file 255 (2 "
      "drawings) or --file-per-sheet\n";
  test::LayomatRun plan = Layomat(many + " --dry-run");
  EXPECT_NE(plan.err.find(split_hint), std::string::npos) << plan.err;
  test::LayomatRun real = Layomat(many + " -o '" + Out("many-out.dxf") + "'");
  EXPECT_EQ(real.status, 0) << real.err;
  EXPECT_NE(real.err.find(split_hint), std::string::npos) << real.err;
  test::LayomatRun split = Layomat(many + " --dry-run --sheets-per-file 200");
  EXPECT_EQ(split.err.find("260 layouts"), std::string::npos) << split.err;
}

TEST_F(CreateLayoutsPlanTest, SplitDrawingsHoldTheirShareEach) {
  test::LayomatRun run = Layomat("'" + example_ + "' -o '" + Out("set.dxf") +
                                 "' --sheets-per-file 4" + sheets_);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_FALSE(std::filesystem::exists(Out("set.dxf")));
  EXPECT_NE(run.out.find("file\t" + Out("set-1.dxf") + "\t4 layouts\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("file\t" + Out("set-3.dxf") + "\t1 layouts\n"),
            std::string::npos)
      << run.out;
  const char* expected[] = {"1234", "5678", "9"};
  for (int part = 1; part <= 3; ++part) {
    const std::string file = Out("set-" + std::to_string(part) + ".dxf");
    testing::ShellRun back = Sheets({"layouts", file, ""});
    ASSERT_EQ(back.status, 0) << back.out;
    std::string sheets;
    for (size_t at = back.out.find("Sheet-"); at != std::string::npos;
         at = back.out.find("Sheet-", at + 1)) {
      sheets += back.out[at + 6];
    }
    EXPECT_EQ(sheets, expected[part - 1]) << back.out;
    EXPECT_NE(back.out.find("\nPattern|"), std::string::npos) << back.out;
    EXPECT_NE(back.out.find("release AC1032\naudit errors 0\n"),
              std::string::npos)
        << back.out;
  }
  test::LayomatRun dry = Layomat("'" + example_ + "' -o '" + Out("set.dxf") +
                                 "' --dry-run --file-per-sheet" + sheets_);
  EXPECT_NE(dry.out.find("\t" + Out("set-9.dxf") + "\n"), std::string::npos)
      << dry.out;
}

TEST_F(CreateLayoutsPlanTest, FailedSplitLeavesNoFileOfTheSet) {
  std::filesystem::create_directory(Out("set-5.dxf"));
  const std::set<std::string> files = Files();
  test::LayomatRun run = Layomat("'" + example_ + "' -o '" + Out("set.dxf") +
                                 "' --file-per-sheet" + sheets_);
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("set-5.dxf"), std::string::npos) << run.err;
  EXPECT_EQ(run.out, "");  // no success claimed
  EXPECT_EQ(Files(), files);
  // Both split options at once are a bad command line.
  EXPECT_EQ(Layomat("'" + example_ + "' -o '" + Out("set.dxf") +
                    "' --file-per-sheet --sheets-per-file 2")
                .status,
            2);
  EXPECT_EQ(Layomat("'" + example_ + "' -o x.dxf --sheets-per-file 0").status,
            2);
}

// frames --csv: the title blocks' Cyrillic values (one with a comma and
// quotes) read back by Python's csv module, one column per tag.
TEST_F(CreateLayoutsPlanTest, FramesCsvCarriesEveryAttributeTag) {
  ASSERT_EQ(Sheets({"cyrillic-titles", example_, Out("ru.dxf")}).status, 0);
  test::LayomatRun run = test::RunLayomat(
      "frames '" + Out("ru.dxf") + "' --settings '" + Out("empty.ini") +
          "' --by-size --csv '" + Out("frames.csv") + "'",
      dir_.path());
  ASSERT_EQ(run.status, 0) << run.err;
  testing::ShellRun back = Sheets({"read-csv", Out("frames.csv")});
  ASSERT_EQ(back.status, 0) << back.out;
  EXPECT_TRUE(back.out.starts_with("9 ['Height', 'SHEET', 'TITLE']\n"))
      << back.out;
  EXPECT_NE(back.out.find("Block A-01 Разрез 1, \"эскиз\"\n"),
            std::string::npos)
      << back.out;
  EXPECT_NE(back.out.find("Polyline  \n"), std::string::npos) << back.out;
  // No temporary file is left beside it; an unwritable target is exit 3.
  EXPECT_EQ(Files().count("frames.csv"), 1u);
  EXPECT_EQ(test::RunLayomat("frames '" + Out("ru.dxf") + "' --csv '" +
                                 Out("none/f.csv") + "'",
                             dir_.path())
                .status,
            3);
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

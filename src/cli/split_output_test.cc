#include "cli/split_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "core/file_util.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

std::vector<std::string> Names(int count) {
  std::vector<std::string> names;
  for (int i = 1; i <= count; ++i) names.push_back("S" + std::to_string(i));
  return names;
}

TEST(SplitOutputTest, FileNamesArePaddedToTheCountsWidth) {
  EXPECT_EQ(SplitFileNames("a/b.dxf", 3),
            (std::vector<std::string>{"a/b-1.dxf", "a/b-2.dxf", "a/b-3.dxf"}));
  const std::vector<std::string> twelve = SplitFileNames("out.dxf", 12);
  EXPECT_EQ(twelve.front(), "out-01.dxf");
  EXPECT_EQ(twelve.back(), "out-12.dxf");
  EXPECT_EQ(SplitFileNames("dir.v2/листы", 1),
            std::vector<std::string>{"dir.v2/листы-1"});
}

TEST(SplitOutputTest, GroupsKeepTheOrderAndTheLastIsShorter) {
  const std::vector<std::vector<std::string>> groups =
      SplitIntoFiles(Names(7), 3);
  ASSERT_EQ(groups.size(), 3u);
  EXPECT_EQ(groups[0], (std::vector<std::string>{"S1", "S2", "S3"}));
  EXPECT_EQ(groups[2], std::vector<std::string>{"S7"});
  EXPECT_EQ(SplitIntoFiles(Names(7), 0).size(), 1u);
  EXPECT_EQ(SplitIntoFiles({}, 2).size(), 1u);  // one file, no new layouts
}

TEST(SplitOutputTest, TooManyLayoutsSaysHowToSplit) {
  EXPECT_EQ(TooManyLayoutsWarning(SplitIntoFiles(Names(255), 0)), "");
  const std::string one_file =
      TooManyLayoutsWarning(SplitIntoFiles(Names(600), 0));
  EXPECT_NE(one_file.find("600 layouts"), std::string::npos) << one_file;
  EXPECT_NE(one_file.find("--sheets-per-file 255 (3 drawings)"),
            std::string::npos)
      << one_file;
  EXPECT_EQ(TooManyLayoutsWarning(SplitIntoFiles(Names(600), 250)), "");
  EXPECT_NE(TooManyLayoutsWarning(SplitIntoFiles(Names(600), 300)), "");
}

TEST(SplitOutputTest, SheetsPerFileFromTheOptions) {
  CliOptions o;
  EXPECT_EQ(SheetsPerFile(o).value_or(-1), 0);
  o.file_per_sheet = true;
  EXPECT_EQ(SheetsPerFile(o).value_or(-1), 1);
  o.pdf = "plot.pdf";  // plots one PDF per sheet; the drawing stays whole
  EXPECT_EQ(SheetsPerFile(o).value_or(-1), 0);
  o.sheets_per_file = 4;
  EXPECT_FALSE(SheetsPerFile(o).ok());
  o.file_per_sheet = false;
  EXPECT_FALSE(SheetsPerFile(o).ok());  // still with --pdf
  o.pdf.reset();
  EXPECT_EQ(SheetsPerFile(o).value_or(-1), 4);
}

class WriteFileSetTest : public ::testing::Test {
 protected:
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir_.path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  std::vector<std::string> Targets(int count) const {
    return SplitFileNames((dir_ / "set.dxf").string(),
                          static_cast<size_t>(count));
  }
  lmt::testing::TempDir dir_;
};

Status WriteText(const std::string& path, const std::string& text) {
  return core::WriteFileAtomically(core::PathFromUtf8(path), text);
}

TEST_F(WriteFileSetTest, AllFilesAppearOnlyWhenAllAreWritten) {
  const std::vector<std::string> targets = Targets(3);
  Status s = WriteFileSet(targets, [&](size_t i, const std::string& temp) {
    // Nothing of the set is in place while it is being written.
    EXPECT_FALSE(std::filesystem::exists(targets[0]));
    return WriteText(temp, "part " + std::to_string(i));
  });
  ASSERT_TRUE(s.ok()) << s.message();
  EXPECT_EQ(Files(),
            (std::set<std::string>{"set-1.dxf", "set-2.dxf", "set-3.dxf"}));
  EXPECT_EQ(core::ReadFileBytes(targets[2]).value_or(""), "part 2");
}

TEST_F(WriteFileSetTest, FailedWriteLeavesNoFileOfTheSet) {
  const std::vector<std::string> targets = Targets(3);
  ASSERT_TRUE(WriteText(targets[0], "older").ok());
  Status s = WriteFileSet(targets, [&](size_t i, const std::string& temp) {
    if (i == 2) return Status::IOError(targets[i] + ": disk full");
    return WriteText(temp, "new");
  });
  EXPECT_EQ(s.code(), StatusCode::kIOError);
  EXPECT_NE(s.message().find("set-3.dxf"), std::string::npos);
  // The earlier file is untouched: nothing was renamed yet.
  EXPECT_EQ(Files(), std::set<std::string>{"set-1.dxf"});
  EXPECT_EQ(core::ReadFileBytes(targets[0]).value_or(""), "older");
}

TEST_F(WriteFileSetTest, FolderAtOneTargetUndoesTheFilesPlacedBefore) {
  const std::vector<std::string> targets = Targets(3);
  std::filesystem::create_directory(targets[1]);
  Status s = WriteFileSet(targets, [&](size_t, const std::string& temp) {
    return WriteText(temp, "new");
  });
  EXPECT_EQ(s.code(), StatusCode::kIOError);
  EXPECT_NE(s.message().find("set-2.dxf"), std::string::npos) << s.message();
  EXPECT_EQ(Files(), std::set<std::string>{"set-2.dxf"});  // the folder only
  EXPECT_TRUE(std::filesystem::is_directory(targets[1]));
}

}  // namespace
}  // namespace lmt::cli

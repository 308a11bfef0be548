#include "batch/file_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "batch/paths.h"
#include "testing/temp_dir.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Names(const FileTable& table) {
  std::vector<std::string> names;
  for (const FileEntry& f : table.Files()) names.push_back(f.name);
  return names;
}

class FileTableFolderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = temp_.path();
    for (const char* rel :
         {"b.DWG", "A.dxf", "c.txt", "a2.dwg", "notes.dwg.bak", "sub/z.dwg",
          "sub/deep/y.dxf", "Sub2/x.dwg", "план.dwg"}) {
      fs::path p = dir_ / PathFromUtf8(rel);
      fs::create_directories(p.parent_path());
      std::ofstream(p) << "x";
    }
  }
  lmt::testing::TempDir temp_;
  fs::path dir_;
};

TEST_F(FileTableFolderTest, AddsDrawingsInNameOrder) {
  FileTable table;
  EXPECT_EQ(table.AddFolder(dir_, kDrawingExtensions, false), 4);
  EXPECT_EQ(Names(table),
            (std::vector<std::string>{"A.dxf", "a2.dwg", "b.DWG", "план.dwg"}));
  EXPECT_EQ(table.Files()[0].path, PathToUtf8(dir_ / "A.dxf"));
  EXPECT_EQ(table.Cell(4, FileColumn::kNumber), "4");
  EXPECT_EQ(table.next_row(), 5);
}

TEST_F(FileTableFolderTest, RecursiveListsFilesBeforeSubfolders) {
  FileTable table;
  table.Append(fs::path("/x/first.dwg"));
  EXPECT_EQ(table.AddFolder(dir_, kDrawingExtensions, true), 7);
  EXPECT_EQ(Names(table),
            (std::vector<std::string>{"first.dwg", "A.dxf", "a2.dwg", "b.DWG",
                                      "план.dwg", "z.dwg", "y.dxf", "x.dwg"}));
}

TEST_F(FileTableFolderTest, OtherExtensionsAndMissingFolders) {
  FileTable table;
  const std::string_view txt[] = {".TXT"};
  EXPECT_EQ(table.AddFolder(dir_, txt, false), 1);
  EXPECT_EQ(table.AddFolder(dir_ / "none", kDrawingExtensions, true), 0);
  EXPECT_EQ(table.AddFolder(fs::path(), kDrawingExtensions, true), 0);
  EXPECT_EQ(table.AddFolder(dir_ / "c.txt", kDrawingExtensions, true), 0);
  EXPECT_EQ(Names(table), (std::vector<std::string>{"c.txt"}));
}

TEST(FileTableTest, ListEndsAtFirstEmptyName) {
  FileTable table;
  table.Append(
      {fs::path("/d/a.dwg"), fs::path("/d/b.dwg"), fs::path("/d/c.dwg")});
  table.SetCell(2, FileColumn::kName, "");
  EXPECT_EQ(Names(table), (std::vector<std::string>{"a.dwg"}));
}

TEST(FileTableTest, RemoveRenumbersAndClearRestarts) {
  FileTable table;
  table.Append(
      {fs::path("/d/a.dwg"), fs::path("/d/b.dwg"), fs::path("/d/c.dwg")});
  table.RemoveRow(1);
  EXPECT_EQ(Names(table), (std::vector<std::string>{"b.dwg", "c.dwg"}));
  EXPECT_EQ(table.Cell(1, FileColumn::kNumber), "1");
  EXPECT_EQ(table.Cell(2, FileColumn::kNumber), "2");
  table.Append(fs::path("/d/d.dwg"));
  EXPECT_EQ(table.Cell(3, FileColumn::kNumber), "3");
  table.Reset();
  EXPECT_TRUE(table.Files().empty());
  EXPECT_EQ(table.next_row(), 1);
  EXPECT_EQ(table.row_count(), 1);
  EXPECT_EQ(table.Cell(0, FileColumn::kName), "File Name");
}

TEST(FileTableDeathTest, RemovingTheHeaderIsABug) {
  FileTable table;
  EXPECT_DEATH(table.RemoveRow(0), "");
}

}  // namespace
}  // namespace lmt::batch

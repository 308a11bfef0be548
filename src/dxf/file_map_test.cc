#include "dxf/file_map.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "dxf/document.h"
#include "dxf/test_util.h"

namespace lmt::dxf {
namespace {

constexpr size_t kLimit = size_t{2} << 30;

void WriteFile(const std::string& path, const std::string& bytes) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  ASSERT_NE(f, nullptr) << path;
  std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
}

const std::string kDrawing =
    "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  5\n2A\n  8\nWalls\n"
    " 10\n1.5\n 20\n2.5\n 11\n3\n 21\n4\n  0\nENDSEC\n  0\nEOF\n";

TEST(FileMapTest, HoldsTheFileBytesAndCanBeReopened) {
  std::string a = testing::TempPath("file_map_a.dxf");
  std::string b = testing::TempPath("file_map_b.dxf");
  WriteFile(a, kDrawing);
  WriteFile(b, "x");
  FileMap map;
  ASSERT_TRUE(map.Open(a, kLimit).ok());
  EXPECT_EQ(map.data(), kDrawing);
  ASSERT_TRUE(map.Open(b, kLimit).ok());
  EXPECT_EQ(map.data(), "x");
}

TEST(FileMapTest, RefusesMissingAndOversizedFiles) {
  std::string path = testing::TempPath("file_map_big.dxf");
  WriteFile(path, std::string(100, '0'));
  FileMap map;
  Status s = map.Open(path, 100);
  EXPECT_TRUE(s.IsCorruption()) << s.ToString();
  EXPECT_EQ(map.data(), "");
  EXPECT_TRUE(map.Open(testing::TempPath("no_such.dxf"), kLimit).IsIOError());
  EXPECT_TRUE(map.Open(testing::TempPath(""), kLimit).IsIOError())
      << "a folder is not a drawing";
}

// Files too short to hold a drawing are refused by the reader, with the
// line where it gave up, whether mapped or not.
TEST(FileMapTest, EmptyAndOneByteFilesAreRefused) {
  struct Case {
    std::string bytes;
    std::string message;
  };
  const Case cases[] = {
      {"", ":1: expected a group code, got end of file"},
      {"0", ":2: expected a value after group code 0, got end of file"},
      {"\n", ":1: expected 0 EOF, got end of file"},
  };
  for (const Case& c : cases) {
    std::string path = testing::TempPath("file_map_short.dxf");
    WriteFile(path, c.bytes);
    std::unique_ptr<Document> doc;
    Status s = Document::Load(path, &doc);
    EXPECT_TRUE(s.IsCorruption()) << s.ToString();
    EXPECT_EQ(s.message(), path + c.message);
    EXPECT_EQ(doc, nullptr);
  }
}

// Values point into the mapped file: saving over it (the usual in-place
// edit) must neither change what the loaded document holds nor the bytes
// it writes next.
TEST(FileMapTest, SavingOverTheLoadedFileKeepsTheDocumentIntact) {
  std::string path = testing::TempPath("file_map_inplace.dxf");
  WriteFile(path, kDrawing);
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Load(path, &doc).ok());
  const std::string before = doc->ToString();
  const auto mtime = std::filesystem::last_write_time(path);
  EXPECT_EQ(testing::ReadAll(path), kDrawing) << "loading wrote to the input";
  EXPECT_EQ(std::filesystem::last_write_time(path), mtime);

  ASSERT_TRUE(doc->Save(path).ok());
  WriteFile(path + ".other", "garbage");
  std::filesystem::rename(path + ".other", path);
  EXPECT_EQ(doc->ToString(), before);
  Entity line = doc->entity(doc->model_space()->entities.at(0));
  EXPECT_EQ(line.GetString(8), "Walls");
  EXPECT_EQ(line.GetDouble(20), 2.5);
}

}  // namespace
}  // namespace lmt::dxf

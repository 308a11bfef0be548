// Saving a drawing large enough to be written on the second thread: the file
// holds exactly what ToString makes, and a write that fails halfway leaves
// the old file as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "dxf/document.h"
#include "dxf/test_util.h"

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

namespace lmt::dxf {
namespace {

using testing::ReadAll;

// About 4 MB of LINEs, of which a few stretches are edited: the output then
// mixes formatted records (dense edits fill whole buffers) with long runs of
// untouched text that go to the file without a copy.
std::unique_ptr<Document> LargeEditedDrawing(DxfFormat format) {
  std::string text =
      "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n"
      "  9\n$HANDSEED\n  5\n10\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";
  for (int i = 0; i < 50000; ++i) {
    const std::string n = std::to_string(i);
    text += "  0\nLINE\n  5\n" + std::to_string(100000 + i) + "\n  8\nlayer" +
            n + "\n 10\n" + n + ".5\n 20\n0.25\n 30\n0.0\n" + " 11\n" + n +
            "\n 21\n1e3\n 31\n0.0\n";
  }
  text += "  0\nENDSEC\n  0\nEOF\n";
  std::unique_ptr<Document> doc;
  EXPECT_TRUE(Document::Parse(text, "large.dxf", &doc).ok());
  if (!doc) return nullptr;
  if (format == DxfFormat::kBinary) {
    std::string binary;
    EXPECT_TRUE(doc->ToString(DxfFormat::kBinary, &binary).ok());
    EXPECT_TRUE(Document::Parse(binary, "large.dxf", &doc).ok());
    if (!doc) return nullptr;
    EXPECT_EQ(doc->format(), DxfFormat::kBinary);
  }
  const auto& ids = doc->model_space()->entities;
  for (size_t i = 0; i < ids.size(); ++i) {
    if (i % 9000 == 5 || (i >= 20000 && i < 35000 && i % 3 == 0)) {
      doc->entity(ids[i]).SetColor(static_cast<int>(i % 255) + 1);
    }
  }
  return doc;
}

TEST(DocumentSaveTest, ALargeSaveHoldsExactlyWhatToStringMakes) {
  for (DxfFormat format : {DxfFormat::kAscii, DxfFormat::kBinary}) {
    auto doc = LargeEditedDrawing(format);
    ASSERT_TRUE(doc);
    std::string expected;
    ASSERT_TRUE(doc->ToString(format, &expected).ok());
    ASSERT_GT(expected.size(), size_t{3} << 20);
    const std::string path = testing::TempPath("large_save.dxf");
    ASSERT_TRUE(doc->Save(path).ok());
    EXPECT_TRUE(ReadAll(path) == expected)
        << (format == DxfFormat::kBinary ? "binary" : "ascii");
    EXPECT_FALSE(std::filesystem::exists(path + ".lmt-tmp"));
  }
}

#ifndef _WIN32
// Files may grow to `bytes` only while it lives; beyond, a write fails
// (EFBIG) instead of stopping the process.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &old_);
    rlimit limit = old_;
    limit.rlim_cur = bytes;
    set_ = setrlimit(RLIMIT_FSIZE, &limit) == 0;
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
  }
  bool set() const { return set_; }

 private:
  rlimit old_{};
  void (*old_handler_)(int);
  bool set_ = false;
};

TEST(DocumentSaveTest, AWriteFailingHalfwayLeavesTheOldFileAndNoTemporary) {
  for (DxfFormat format : {DxfFormat::kAscii, DxfFormat::kBinary}) {
    auto doc = LargeEditedDrawing(format);
    ASSERT_TRUE(doc);
    const std::string path = testing::TempPath("limited_save.dxf");
    {
      std::FILE* f = std::fopen(path.c_str(), "wb");
      ASSERT_TRUE(f);
      std::fputs("old", f);
      std::fclose(f);
    }
    Status s;
    {
      FileSizeLimit limit(size_t{2} << 20);
      ASSERT_TRUE(limit.set());
      s = doc->Save(path);
    }
    EXPECT_TRUE(s.IsIOError()) << s.ToString();
    EXPECT_NE(s.ToString().find(path + ".lmt-tmp: write failed"),
              std::string::npos)
        << s.ToString();
    EXPECT_EQ(ReadAll(path), "old");
    EXPECT_FALSE(std::filesystem::exists(path + ".lmt-tmp"));
    // Nothing of the failure lingers: the next save goes through.
    ASSERT_TRUE(doc->Save(path).ok());
    EXPECT_GT(std::filesystem::file_size(path), size_t{3} << 20);
  }
}
#endif

}  // namespace
}  // namespace lmt::dxf

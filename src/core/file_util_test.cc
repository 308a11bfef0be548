#include "core/file_util.h"

#include <gtest/gtest.h>

#include "testing/temp_dir.h"

namespace lmt::core {
namespace {

TEST(GetBaseNameTest, EitherSeparator) {
  EXPECT_EQ(GetBaseName("C:\\dir\\plan.dwg"), "plan");
  EXPECT_EQ(GetBaseName("/d/plan.v2.dxf"), "plan.v2");
  EXPECT_EQ(GetBaseName("noext"), "noext");
}

TEST(FileUtilTest, BomDetectionAndTextReaders) {
  testing::TempDir dir;
  const auto file = dir / "t.txt";
  ASSERT_TRUE(CreateUnicodeFile(file).ok());
  EXPECT_TRUE(HasUtf16Bom(file));
  EXPECT_EQ(ReadFileBytes(file).value(), "\xFF\xFE");

  ASSERT_TRUE(
      WriteTextFile(file, "Скрипт\r\n_Layout", TextEncoding::kUtf16Le).ok());
  EXPECT_TRUE(HasUtf16Bom(file));
  EXPECT_EQ(ReadUtf16TextFile(file).value(), "Скрипт\r\n_Layout");
  EXPECT_EQ(ReadTextFile(file).value(), "Скрипт\r\n_Layout");

  ASSERT_TRUE(WriteTextFile(file, "Скрипт", TextEncoding::kAnsi).ok());
  EXPECT_FALSE(HasUtf16Bom(file));
  EXPECT_EQ(ReadAnsiTextFile(file).value(), "Скрипт");
  EXPECT_EQ(ReadTextFile(file).value(), "Скрипт");

  ASSERT_TRUE(WriteFileAtomically(file, "\xFE\xFF").ok());  // big-endian
  EXPECT_FALSE(HasUtf16Bom(file));
  ASSERT_TRUE(WriteFileAtomically(file, "\xEF\xBB\xBFx").ok());
  EXPECT_FALSE(HasUtf16Bom(file));
  EXPECT_FALSE(HasUtf16Bom(dir / "missing"));
  EXPECT_FALSE(ReadTextFile(dir / "missing").ok());
}

TEST(FileUtilTest, FoldersAndFiles) {
  testing::TempDir dir;
  EXPECT_TRUE(FolderExists(dir.path()));
  EXPECT_FALSE(FileExists(dir.path()));
  ASSERT_TRUE(CreateFolder(dir / "Layomat").ok());
  EXPECT_TRUE(CreateFolder(dir / "Layomat").ok());  // already there
  EXPECT_FALSE(CreateFolder(dir / "no" / "parent").ok());
  EXPECT_FALSE(WriteFileAtomically(dir / "no" / "f", "x").ok());
}

}  // namespace
}  // namespace lmt::core

#include "core/private_profile.h"

#include <gtest/gtest.h>

#include <string>

#include "core/file_util.h"
#include "core/text_encoding.h"
#include "testing/temp_dir.h"

namespace lmt::core {
namespace {

// Files as the system's profile routines leave them: UTF-16LE with a
// byte-order mark and CR LF line ends.
std::string WindowsBytes(std::string_view utf8) {
  return "\xFF\xFE" + EncodeUtf16Le(Utf8ToUtf16(utf8));
}

class PrivateProfileTest : public ::testing::Test {
 protected:
  void Put(const std::string& bytes) {
    ASSERT_TRUE(WriteFileAtomically(file_, bytes).ok());
  }
  std::string Bytes() { return ReadFileBytes(file_).value(); }

  testing::TempDir dir_;
  std::filesystem::path file_ = dir_ / "LayomatNas.ini";
};

TEST_F(PrivateProfileTest, ReadsWindowsFileIgnoringCaseBlanksAndQuotes) {
  Put(WindowsBytes(
      "; comment\r\n[OknoLmt]\r\nTextStrokaNameFile =  10/20 \r\n"
      "UniTextNameAtribute=\"  quoted  \"\r\n[Другое]\r\nКлюч=значение\r\n"));
  EXPECT_EQ(GetProfileString(file_, "oknolmt", "TEXTSTROKANAMEFILE", "x"),
            "10/20");
  EXPECT_EQ(GetProfileString(file_, "OknoLmt", "UniTextNameAtribute", ""),
            "  quoted  ");
  EXPECT_EQ(GetProfileString(file_, "Другое", "Ключ", ""), "значение");
  EXPECT_EQ(GetProfileString(file_, "OknoLmt", "Missing", "dflt  "), "dflt");
  EXPECT_EQ(GetProfileString(dir_ / "absent.ini", "A", "B", "d"), "d");
}

TEST_F(PrivateProfileTest, FirstMatchingSectionAndKeyWin) {
  Put(WindowsBytes("[A]\r\nk=1\r\nK=2\r\n[a]\r\nk=3\r\n"));
  EXPECT_EQ(GetProfileString(file_, "A", "k", ""), "1");
}

TEST_F(PrivateProfileTest, EditChangesOnlyTheKeyLine) {
  const std::string before =
      "; kept comment\r\n[OknoLmt]\r\n  Key = old  \r\nOther=1\r\n\r\n"
      "[Next]\r\nx=y";
  Put(WindowsBytes(before));
  ASSERT_TRUE(WriteProfileString(file_, "OKNOLMT", "key", "new").ok());
  EXPECT_EQ(Bytes(), WindowsBytes("; kept comment\r\n[OknoLmt]\r\nKey=new\r\n"
                                  "Other=1\r\n\r\n[Next]\r\nx=y"));
}

TEST_F(PrivateProfileTest, NewKeyJoinsItsSectionAndNewSectionGoesLast) {
  Put(WindowsBytes("[A]\r\na=1\r\n\r\n[B]\r\nb=2"));
  ASSERT_TRUE(WriteProfileString(file_, "A", "a2", "x").ok());
  ASSERT_TRUE(WriteProfileString(file_, "B", "b2", "y").ok());
  ASSERT_TRUE(WriteProfileString(file_, "C", "c", "z").ok());
  EXPECT_EQ(Bytes(), WindowsBytes("[A]\r\na=1\r\na2=x\r\n\r\n[B]\r\nb=2\r\n"
                                  "b2=y\r\n[C]\r\nc=z\r\n"));
}

TEST_F(PrivateProfileTest, NewFileIsUtf16WithBom) {
  ASSERT_TRUE(WriteProfileString(file_, "Окно", "Ключ", "Лайомат").ok());
  EXPECT_TRUE(HasUtf16Bom(file_));
  EXPECT_EQ(Bytes(), WindowsBytes("[Окно]\r\nКлюч=Лайомат\r\n"));
  EXPECT_EQ(GetProfileString(file_, "Окно", "Ключ", ""), "Лайомат");
}

TEST_F(PrivateProfileTest, EmptyCreatedFileBecomesUtf16) {
  ASSERT_TRUE(CreateUnicodeFile(file_).ok());
  ASSERT_TRUE(WriteProfileString(file_, "S", "k", "v").ok());
  EXPECT_EQ(Bytes(), WindowsBytes("[S]\r\nk=v\r\n"));
}

TEST_F(PrivateProfileTest, OtherEncodingsAreReadAndKept) {
  Put("[S]\nk=значение\n");  // UTF-8, LF line ends
  EXPECT_EQ(GetProfileString(file_, "S", "k", ""), "значение");
  ASSERT_TRUE(WriteProfileString(file_, "S", "n", "1").ok());
  EXPECT_EQ(Bytes(), "[S]\nk=значение\nn=1\r\n");

  Put("[S]\r\nk=\xE7\xED\xE0\xF7\r\n");  // Windows-1251 "знач"
  EXPECT_EQ(GetProfileString(file_, "S", "k", ""), "знач");
  ASSERT_TRUE(WriteProfileString(file_, "S", "k", "да").ok());
  EXPECT_EQ(Bytes(), "[S]\r\nk=\xE4\xE0\r\n");
}

TEST_F(PrivateProfileTest, HandWrittenShapes) {
  Put("stray=1\n[ Spaced ]\nnoequals\n'half=\"open\nq='x'\n\tk\t=\tv\t\n");
  EXPECT_EQ(GetProfileString(file_, "", "stray", "d"), "d");
  EXPECT_EQ(GetProfileString(file_, "Spaced", "noequals", "d"), "d");
  EXPECT_EQ(GetProfileString(file_, "Spaced", "'half", ""), "\"open");
  EXPECT_EQ(GetProfileString(file_, "Spaced", "q", ""), "x");
  EXPECT_EQ(GetProfileString(file_, "Spaced", "k", ""), "v");
}

TEST_F(PrivateProfileTest, EditOfLfFileKeepsOtherLineEnds) {
  Put("[A]\na=1\nb=2\n");
  ASSERT_TRUE(WriteProfileString(file_, "A", "a", "9").ok());
  EXPECT_EQ(Bytes(), "[A]\na=9\nb=2\n");
  ASSERT_TRUE(WriteProfileString(file_, "A", "c", "3").ok());
  EXPECT_EQ(Bytes(), "[A]\na=9\nb=2\nc=3\r\n");
}

TEST_F(PrivateProfileTest, AppendsToAFileWithoutFinalLineEnd) {
  Put(WindowsBytes("[A]\r\na=1"));
  ASSERT_TRUE(WriteProfileString(file_, "A", "b", "2").ok());
  ASSERT_TRUE(WriteProfileString(file_, "Z", "z", "").ok());
  EXPECT_EQ(Bytes(), WindowsBytes("[A]\r\na=1\r\nb=2\r\n[Z]\r\nz=\r\n"));
  EXPECT_EQ(GetProfileString(file_, "Z", "z", "dflt"), "");
}

// A snapshot answers as the file did when it was taken, for every look-up,
// including the first-match and default rules; a missing file gives the
// defaults.
TEST_F(PrivateProfileTest, SnapshotAnswersAsTheFileWhenTaken) {
  Put(WindowsBytes("[A]\r\na = \"1 \"\r\na=2\r\n[a]\r\nb=3\r\n[B]\r\nc=4\r\n"));
  const ProfileSnapshot snapshot(file_);
  ASSERT_TRUE(WriteProfileString(file_, "B", "c", "5").ok());
  EXPECT_EQ(snapshot.Get("a", "A", "x"), "1 ");
  EXPECT_EQ(snapshot.Find("A", "b"), std::nullopt);  // only the first [A]
  EXPECT_EQ(snapshot.Get("B", "c", "x"), "4");
  EXPECT_EQ(snapshot.Get("B", "d", "dflt \t"), "dflt");
  EXPECT_EQ(GetProfileString(file_, "B", "c", "x"), "5");

  const ProfileSnapshot missing(dir_ / "none.ini");
  EXPECT_EQ(missing.Find("A", "a"), std::nullopt);
  EXPECT_EQ(missing.Get("A", "a", "dflt"), "dflt");
}

}  // namespace
}  // namespace lmt::core

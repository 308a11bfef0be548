#include "core/ini_unicode.h"

#include <gtest/gtest.h>

#include <string>

#include "core/private_profile.h"
#include "testing/temp_dir.h"

namespace lmt::core {
namespace {

class IniUnicodeTest : public ::testing::Test {
 protected:
  std::string RoundTrip(std::string value) {
    EXPECT_TRUE(WriteIniUnicode(file_, "S", "K", value).ok());
    return ReadIniUnicode(file_, "S", "K", "default");
  }
  testing::TempDir dir_;
  std::filesystem::path file_ = dir_ / "LayomatNas.ini";
};

TEST_F(IniUnicodeTest, ValuesRoundTrip) {
  struct Case {
    std::string written, read;
  } cases[] = {
      {"  blanks kept  ", "  blanks kept  "},
      {"\"quoted\"", "\"quoted\""},
      {"a:;:b", "ab"},
      {"line1\r\nline2", "line1vbCrLfline2"},
      {"unix\nline", "unix line"},
      {"", ""},
      {"Лайомат", "Лайомат"},
      {std::string(127, 'x'), std::string(127, 'x')},
      {std::string(130, 'y'), std::string(127, 'y')},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(RoundTrip(c.written), c.read) << c.written;
  }
}

TEST_F(IniUnicodeTest, StoresFramedValue) {
  std::string value = "  a  ";
  ASSERT_TRUE(WriteIniUnicode(file_, "S", "K", value).ok());
  EXPECT_EQ(GetProfileString(file_, "S", "K", ""), ":;:  a  :;:");
}

TEST_F(IniUnicodeTest, LineBreakReplacementReachesCallersValue) {
  std::string value = "a\r\nb\nc";
  ASSERT_TRUE(WriteIniUnicode(file_, "S", "K", value).ok());
  EXPECT_EQ(value, "avbCrLfb c");
}

TEST_F(IniUnicodeTest, MissingKeyGivesDefaultCleaned) {
  EXPECT_EQ(ReadIniUnicode(file_, "S", "K", "dflt"), "dflt");
  EXPECT_EQ(ReadIniUnicode(file_, "S", "K", ":;:Commands:;:"), "Commands");
  EXPECT_EQ(ReadIniUnicode(file_, "S", "K", ""), "");
}

TEST_F(IniUnicodeTest, UnframedValuesFromHandWrittenFiles) {
  ASSERT_TRUE(
      WriteProfileString(file_, "OknoLmt", "mnuComand", "Команды").ok());
  EXPECT_EQ(ReadIniUnicode(file_, "OknoLmt", "mnuComand", "Commands"),
            "Команды");
}

}  // namespace
}  // namespace lmt::core

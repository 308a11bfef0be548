#include "core/text_encoding.h"

#include <gtest/gtest.h>

namespace lmt::core {
namespace {

TEST(TextEncodingTest, AnsiCodePageRoundTripsEveryByte) {
  std::string all;
  for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(EncodeCp1251(DecodeCp1251(all)), all);
  EXPECT_EQ(Utf16ToUtf8(DecodeCp1251("\xCB\xE0\xE9\xEE\xEC\xE0\xF2\xA8")),
            "ЛайоматЁ");
  EXPECT_EQ(EncodeCp1251(u"日本"), "??");
}

TEST(TextEncodingTest, Utf8AndUtf16) {
  const std::string text = "Лайомат ✓ 𝄞";
  EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16(text)), text);
  EXPECT_EQ(Utf8ToUtf16("\xFF"
                        "a"),
            u"\xFFFD"
            u"a");
  EXPECT_EQ(Utf8ToUtf16("\xE2\x82"), u"\xFFFD\xFFFD");  // cut sequence
  EXPECT_FALSE(IsValidUtf8("\xC0\xAF"));                // overlong
  EXPECT_EQ(Utf16ToUtf8(u"\xD800x"), "\xEF\xBF\xBDx");
  EXPECT_EQ(DecodeUtf16Le(EncodeUtf16Le(u"Ключ")), u"Ключ");
}

TEST(TextEncodingTest, Utf16PrefixNeverSplitsAPair) {
  EXPECT_EQ(Utf16Length("a𝄞"), 3u);
  EXPECT_EQ(Utf16Prefix("a𝄞b", 2), "a");
  EXPECT_EQ(Utf16Prefix("a𝄞b", 3), "a𝄞");
  EXPECT_EQ(Utf16Prefix("Лайомат", 3), "Лай");
}

TEST(TextEncodingTest, CaseFoldingIsAsciiOnly) {
  EXPECT_TRUE(EqualsIgnoreAsciiCase("OknoFunctionReplaceTEXT",
                                    "OknoFunctionReplaceText"));
  EXPECT_FALSE(EqualsIgnoreAsciiCase("Окно", "ОКНО"));
  EXPECT_FALSE(EqualsIgnoreAsciiCase("ab", "abc"));
}

}  // namespace
}  // namespace lmt::core

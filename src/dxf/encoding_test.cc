#include "dxf/encoding.h"

#include <gtest/gtest.h>

#include "dxf/builders.h"
#include "dxf/document.h"
#include "dxf/test_util.h"
#include "testing/dxf_check.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

constexpr std::string_view kSample = "Лист №1 Ø";

TEST(EncodingTest, Ansi1252EscapesWhatItCannotHold) {
  std::string raw = EncodeText(kSample, CodePage::kAnsi1252);
  EXPECT_EQ(raw,
            "\\U+041B\\U+0438\\U+0441\\U+0442 \\U+2116"
            "1 \xD8");
  EXPECT_EQ(DecodeText(raw, CodePage::kAnsi1252), kSample);
}

TEST(EncodingTest, Ansi1251KeepsCyrillicAsBytesAndEscapesTheRest) {
  std::string raw = EncodeText(kSample, CodePage::kAnsi1251);
  // Ø is not in 1251: an escape, not the 1252 byte ezdxf 0.18 wrote.
  EXPECT_EQ(raw,
            "\xCB\xE8\xF1\xF2 \xB9"
            "1 \\U+00D8");
  EXPECT_EQ(DecodeText(raw, CodePage::kAnsi1251), kSample);
}

TEST(EncodingTest, Utf8PassesThroughAndStillDecodesEscapes) {
  EXPECT_EQ(EncodeText(kSample, CodePage::kUtf8), kSample);
  EXPECT_EQ(DecodeText("94\\U+00B0 \\u+00d8", CodePage::kUtf8), "94° Ø");
  // Not an escape: fewer than four hex digits.
  EXPECT_EQ(DecodeText("\\U+12", CodePage::kUtf8), "\\U+12");
}

TEST(EncodingTest, CodePageFollowsVersionAndHeader) {
  LMT_SKIP_WITHOUT_SHARED();
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Load(testing::SamplePath("s_AC1015.dxf"), &doc).ok());
  EXPECT_EQ(CodePageOf(*doc), CodePage::kAnsi1252);
  doc->SetHeader("$DWGCODEPAGE", 3, "ANSI_1251");
  EXPECT_EQ(CodePageOf(*doc), CodePage::kAnsi1251);
  ASSERT_TRUE(Document::Load(testing::SamplePath("s_AC1032.dxf"), &doc).ok());
  EXPECT_EQ(CodePageOf(*doc), CodePage::kUtf8);
}

// ezdxf decodes the bytes by $DWGCODEPAGE and the escapes as we wrote them.
TEST(EncodingTest, OldFilesReadBackInEzdxfForBothCodePages) {
  LMT_SKIP_WITHOUT_SHARED();
  LMT_SKIP_WITHOUT_EZDXF();
  for (const char* cp : {"ANSI_1251", "ANSI_1252"}) {
    std::unique_ptr<Document> doc;
    ASSERT_TRUE(Document::Load(testing::SamplePath("s_AC1015.dxf"), &doc).ok());
    doc->SetHeader("$DWGCODEPAGE", 3, cp);
    Entity mt = AddMText(*doc, doc->model_space(), {0, 0, 0}, 2.5,
                         EncodeText(kSample, CodePageOf(*doc)));
    std::string path =
        testing::TempPath(std::string("codepage_") + cp + ".dxf");
    ASSERT_TRUE(doc->Save(path).ok());
    EXPECT_EQ(testing::EzdxfText(path, mt.handle()), kSample) << cp;
  }
}

}  // namespace
}  // namespace lmt::dxf

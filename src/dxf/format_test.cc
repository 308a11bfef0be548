// Saving keeps the input's form (binary or ASCII) and every string byte;
// caret form and \U+XXXX escapes read back as what was written. Drawings
// from testdata/dxf/make_format_samples.py: 2000, 2018 and 2018 binary.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "dxf/builders.h"
#include "dxf/document.h"
#include "dxf/encoding.h"
#include "dxf/layout_edit.h"
#include "dxf/tag_reader.h"
#include "dxf/test_util.h"
#include "testing/dxf_check.h"

namespace lmt::dxf {
namespace {

using testing::ReadAll;

std::string FormatSample(const std::string& name) {
  return std::string(LMT_TESTDATA_DIR) + "/dxf/" + name;
}

std::unique_ptr<Document> Open(const std::string& path) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(path, &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

std::unique_ptr<Document> FromText(std::string data) {
  std::unique_ptr<Document> doc;
  Status s = Document::Parse(std::move(data), "mem.dxf", &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

bool IsBinary(const std::string& data) {
  return data.compare(0, kBinarySentinel.size(), kBinarySentinel) == 0;
}

// The handle of the TEXT whose value is `value` (as stored), 0 if none.
uint64_t TextHandle(Document& doc, std::string_view value) {
  for (RecordId id : doc.model_space()->entities) {
    Entity e = doc.entity(id);
    if (e.type() == "TEXT" && e.Get(1) == value) return e.handle();
  }
  return 0;
}

class FormatTest : public ::testing::TestWithParam<const char*> {};

TEST_P(FormatTest, SaveKeepsTheFormAndEveryTag) {
  std::string in = FormatSample(GetParam());
  auto doc = Open(in);
  ASSERT_TRUE(doc);
  std::string out = testing::TempPath(std::string("kept_") + GetParam());
  ASSERT_TRUE(doc->Save(out).ok());
  std::string written = ReadAll(out);
  EXPECT_EQ(IsBinary(written), IsBinary(ReadAll(in)));
  auto back = Open(out);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->ToString(), doc->ToString());
  // The caret and the tab are the same characters whatever the form.
  uint64_t caret = TextHandle(*back, "caret^ [kept");
  ASSERT_NE(caret, 0u);
  // ezdxf reads binary strings as they are and leaves ASCII caret forms.
  if (::lmt::testing::HaveEzdxf()) {
    EXPECT_EQ(testing::EzdxfText(out, caret),
              IsBinary(written) ? "caret^[kept" : "caret^ [kept");
  }
}

TEST_P(FormatTest, BinaryAsciiBinaryKeepsEveryStringByte) {
  auto doc = Open(FormatSample(GetParam()));
  ASSERT_TRUE(doc);
  std::string binary;
  ASSERT_TRUE(doc->ToString(DxfFormat::kBinary, &binary).ok());
  EXPECT_NE(binary.find(std::string("caret^[kept\0", 12)), std::string::npos);
  EXPECT_NE(binary.find(std::string("tab\there\0", 9)), std::string::npos);
  auto from_binary = FromText(binary);
  ASSERT_TRUE(from_binary);
  std::string ascii = from_binary->ToString();
  EXPECT_NE(ascii.find("caret^ [kept"), std::string::npos);
  EXPECT_NE(ascii.find("tab^Ihere"), std::string::npos);
  auto from_ascii = FromText(ascii);
  ASSERT_TRUE(from_ascii);
  std::string again;
  ASSERT_TRUE(from_ascii->ToString(DxfFormat::kBinary, &again).ok());
  EXPECT_EQ(again, binary);
}

TEST_P(FormatTest, ExplicitFormWins) {
  auto doc = Open(FormatSample(GetParam()));
  ASSERT_TRUE(doc);
  std::string out = testing::TempPath(std::string("ascii_") + GetParam());
  ASSERT_TRUE(doc->Save(out, DxfFormat::kAscii).ok());
  EXPECT_FALSE(IsBinary(ReadAll(out)));
  // The samples' own: ezdxf's extra layouts have no main viewport.
  EXPECT_EQ(testing::Problems(out, 2), "");
  ASSERT_TRUE(doc->Save(out, DxfFormat::kBinary).ok());
  EXPECT_TRUE(IsBinary(ReadAll(out)));
  if (::lmt::testing::HaveEzdxf()) {
    EXPECT_NE(testing::EzdxfLayouts(out).find("layout Sheet 2 "),
              std::string::npos);
  }
}

INSTANTIATE_TEST_SUITE_P(Drawings, FormatTest,
                         ::testing::Values("format_2000.dxf", "format_2018.dxf",
                                           "format_2018_binary.dxf"),
                         [](const auto& info) {
                           std::string n = info.param;
                           return n.substr(0, n.find('.'));
                         });

TEST(FormatTest, ValueOfTheWrongTypeStopsABinarySave) {
  auto doc = Open(FormatSample("format_2018.dxf"));
  ASSERT_TRUE(doc);
  Entity text = doc->FindByHandle(TextHandle(*doc, "tab^Ihere"));
  ASSERT_TRUE(text.valid());
  text.Set(40, "tall");
  std::string out = testing::TempPath("wrong_type.dxf");
  Status s = doc->Save(out, DxfFormat::kBinary);
  EXPECT_TRUE(s.IsCorruption()) << s.ToString();
  EXPECT_NE(s.message().find("group 40 expects a number, got 'tall'"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(out));
}

// Caret form: read(write(x)) == x for every byte string.
TEST(CaretTest, EscapeThenUnescapeGivesTheBytesBack) {
  const std::string cases[] = {"^",    "^^",   "a^[b",
                               "^ ",   "x^",   std::string("\x1b[0m", 4),
                               "\n",   "\t^I", std::string("\0z", 2),
                               "^@^_", "plain"};
  for (const std::string& raw : cases) {
    std::string escaped = raw, back;
    EscapeControlChars(raw, &escaped);
    for (char c : escaped) {
      EXPECT_GE(static_cast<unsigned char>(c), 0x20) << raw;
    }
    if (!UnescapeControlChars(escaped, &back)) back = escaped;
    EXPECT_EQ(back, raw) << escaped;
  }
}

TEST(CaretTest, LenientReadOfACaretBeforeOtherCharacters) {
  std::string out;
  ASSERT_TRUE(UnescapeControlChars("x^2 and ^", &out));
  EXPECT_EQ(out, "x^2 and ^");
  ASSERT_TRUE(UnescapeControlChars("^J^ ", &out));
  EXPECT_EQ(out, "\n^");
}

// Names and texts outside the page, in each encoding.
struct Encoded {
  const char* utf8;
  CodePage page;
  const char* raw;
};

class EncodeTest : public ::testing::TestWithParam<Encoded> {};

TEST_P(EncodeTest, EncodesAndReadsBack) {
  const Encoded& c = GetParam();
  EXPECT_EQ(EncodeText(c.utf8, c.page), c.raw);
  EXPECT_EQ(DecodeText(c.raw, c.page), c.utf8);
}

INSTANTIATE_TEST_SUITE_P(
    Pages, EncodeTest,
    ::testing::Values(
        Encoded{"Sheet \xE2\x84\x96"
                "5",
                CodePage::kAnsi1252, "Sheet \\U+21165"},
        Encoded{"\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82-1", CodePage::kAnsi1252,
                "\\U+041B\\U+0438\\U+0441\\U+0442-1"},
        Encoded{"\xF0\x9F\x98\x80", CodePage::kAnsi1252, "\\U+D83D\\U+DE00"},
        Encoded{"a^b\nc", CodePage::kAnsi1251, "a^ b^Jc"},
        Encoded{"a^b\tc", CodePage::kUtf8, "a^ b^Ic"},
        Encoded{"\xF0\x9F\x98\x80", CodePage::kUtf8, "\xF0\x9F\x98\x80"}));

TEST(EncodeTest, EscapedNamesAreValidTableNames) {
  auto doc = Open(FormatSample("format_2000.dxf"));
  ASSERT_TRUE(doc);
  CodePage page = CodePageOf(*doc);
  EXPECT_TRUE(IsValidName(*doc, EncodeText("Sheet \xE2\x84\x96"
                                           "5",
                                           page)));
  EXPECT_TRUE(IsValidName(
      *doc, EncodeText("\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82-1", page)));
  EXPECT_FALSE(IsValidName(*doc, "a\\b"));
}

// A 2000 drawing in ANSI_1252 takes layouts named in other scripts.
TEST(EncodeTest, LayoutNamedOutsideThePageIsMade) {
  auto doc = Open(FormatSample("format_2000.dxf"));
  ASSERT_TRUE(doc);
  for (const char* name : {"\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82-1",
                           "Sheet \xE2\x84\x96"
                           "5"}) {
    Layout layout{Entity()};
    Status s = AddLayout(*doc, EncodeText(name, CodePageOf(*doc)), &layout);
    ASSERT_TRUE(s.ok()) << s.ToString();
  }
  std::string out = testing::TempPath("layouts_outside_page.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  LMT_SKIP_WITHOUT_EZDXF();
  std::string layouts = testing::EzdxfLayouts(out);
  // ezdxf lists the names as stored.
  EXPECT_NE(layouts.find("layout \\U+041B\\U+0438\\U+0441\\U+0442-1 "),
            std::string::npos)
      << layouts;
  EXPECT_NE(layouts.find("layout Sheet \\U+21165 "), std::string::npos);
  EXPECT_EQ(testing::Problems(out, 2), "");
}

}  // namespace
}  // namespace lmt::dxf

// What a command did not change comes back byte for byte: padding, line
// ends, number text, an end-of-file mark after EOF, a header without
// $HANDSEED, a file without ENTITIES. What it changed is written afresh.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "dxf/document.h"
#include "dxf/viewport.h"

namespace lmt::dxf {
namespace {

std::unique_ptr<Document> ParseOrDie(const std::string& text) {
  std::unique_ptr<Document> doc;
  Status s = Document::Parse(text, "t.dxf", &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

// Written the way small programs write: codes not right-aligned, numbers
// padded, CR LF, a trailing DOS end-of-file mark.
constexpr char kOddlyWritten[] =
    "0\r\nSECTION\r\n2\r\nHEADER\r\n9\r\n$ACADVER\r\n1\r\nAC1009\r\n"
    "9\r\n$INSUNITS\r\n 70\r\n     4\r\n0\r\nENDSEC\r\n"
    "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n"
    "0\r\nLINE\r\n8\r\nWalls \r\n 10\r\n -0.5000    \r\n20\r\n1e3\r\n"
    "11\r\n2.\r\n21\r\n0.0\r\n"
    "0\r\nTEXT\r\n8\r\n0\r\n10\r\n0\r\n20\r\n0\r\n40\r\n  2.5\r\n"
    "1\r\n  keep my spaces  \r\n"
    "0\r\nENDSEC\r\n0\r\nEOF\r\n\x1a";

TEST(UntouchedTest, ReadThenWrittenIsTheSameFile) {
  for (const std::string& text :
       {std::string(kOddlyWritten),
        // A header alone: no ENTITIES section is made up, no $HANDSEED
        // added to a 2000 file that gained no handle.
        std::string("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n"
                    "0\nENDSEC\n0\nEOF\n"),
        // No newline after EOF.
        std::string("0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\n0\n10\n1\n20\n2\n"
                    "0\nENDSEC\n0\nEOF")}) {
    auto doc = ParseOrDie(text);
    ASSERT_TRUE(doc);
    EXPECT_EQ(doc->ToString(), text);
  }
}

TEST(UntouchedTest, AnEditIsWrittenAfreshAndItsNeighboursAsRead) {
  auto doc = ParseOrDie(kOddlyWritten);
  ASSERT_TRUE(doc);
  Entity line = doc->entity(doc->model_space()->entities[0]);
  ASSERT_EQ(line.type(), "LINE");
  line.SetDouble(20, 7);
  std::string expected = kOddlyWritten;
  const std::string before = "20\r\n1e3\r\n";
  expected.replace(expected.find(before), before.size(), " 20\r\n7.0\r\n");
  EXPECT_EQ(doc->ToString(), expected);
}

TEST(UntouchedTest, AnEditedNumberKeepsTheWidthOfItsField) {
  auto doc = ParseOrDie(kOddlyWritten);
  ASSERT_TRUE(doc);
  Entity text = doc->entity(doc->model_space()->entities[1]);
  text.SetDouble(40, 3);  // "  2.5" right-aligned in five columns
  std::string written = doc->ToString();
  EXPECT_NE(written.find("40\r\n  3.0\r\n"), std::string::npos) << written;
  EXPECT_DOUBLE_EQ(text.GetDouble(40), 3);  // the value itself is trimmed
  text.SetDouble(40, 12345.5);  // wider than the field: written as it is
  written = doc->ToString();
  EXPECT_NE(written.find("40\r\n12345.5\r\n"), std::string::npos) << written;
}

TEST(UntouchedTest, TextThatMerelyLiesInTheFileIsNotCopiedAsRead) {
  // Value "0" taken from elsewhere in the file, under another code: the
  // writer must not copy the line it came from.
  auto doc = ParseOrDie(kOddlyWritten);
  ASSERT_TRUE(doc);
  Entity text = doc->entity(doc->model_space()->entities[1]);
  ASSERT_EQ(text.type(), "TEXT");
  int layer = text.Find(8);
  ASSERT_GE(layer, 0);
  std::string_view zero = text.tags()[layer].value();  // "0" in the file
  text.InsertTag(layer + 1, 62, zero);
  const std::string written = doc->ToString();
  EXPECT_NE(written.find("8\r\n0\r\n 62\r\n0\r\n"), std::string::npos)
      << written;
}

}  // namespace
}  // namespace lmt::dxf

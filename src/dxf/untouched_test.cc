// What a command did not change comes back byte for byte: padding, line
// ends, number text, an end-of-file mark after EOF, a header without
// $HANDSEED, a file without ENTITIES. What it changed is written afresh.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "dxf/document.h"
#include "dxf/tag_reader.h"
#include "dxf/tag_writer.h"
#include "dxf/test_util.h"
#include "dxf/viewport.h"

namespace lmt::dxf {
namespace {

// Where two long texts part, for a readable failure (a full diff of
// thousands of lines costs more memory than a test has).
std::string Mismatch(const std::string& got, const std::string& want) {
  if (got == want) return "";
  size_t at = 0;
  while (at < got.size() && at < want.size() && got[at] == want[at]) ++at;
  const size_t from = at < 40 ? 0 : at - 40;
  return "at byte " + std::to_string(at) + ": got \"" + got.substr(from, 80) +
         "\", want \"" + want.substr(from, 80) + "\"";
}

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

// Long runs of untouched records go to the file in one piece, past the
// writer's buffer; the edits between them must still land in their place.
TEST(UntouchedTest, EditsBetweenLongUntouchedRunsLandInPlace) {
  std::string head = "0\nSECTION\n2\nENTITIES\n";
  std::string text = head;
  auto point = [](int i) {
    return "0\nPOINT\n8\nP" + std::to_string(i) + "\n 10\n" +
           std::to_string(i) + ".50\n20\n0\n";
  };
  const int kPoints = 6000;  // some 200 KB: runs longer than the buffer
  for (int i = 0; i < kPoints; ++i) text += point(i);
  text += "0\nENDSEC\n0\nEOF\n";
  auto doc = ParseOrDie(text);
  ASSERT_TRUE(doc);
  const std::vector<RecordId> ids = doc->model_space()->entities;
  ASSERT_EQ(ids.size(), static_cast<size_t>(kPoints));
  doc->entity(ids[0]).SetDouble(20, 7);                 // first record
  doc->Erase(doc->entity(ids[1]));                      // its neighbour
  doc->entity(ids[3000]).Set(8, "Moved");               // mid-file
  doc->entity(ids[kPoints - 1]).InsertTag(1, 62, "1");  // last record

  std::string expected = text;
  auto replace = [&](const std::string& from, const std::string& to) {
    size_t at = expected.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    expected.replace(at, from.size(), to);
  };
  replace(point(0) + point(1), "0\nPOINT\n8\nP0\n 10\n0.50\n 20\n7.0\n");
  replace(point(3000), "0\nPOINT\n  8\nMoved\n 10\n3000.50\n20\n0\n");
  replace(point(kPoints - 1),
          "0\nPOINT\n 62\n1\n8\nP5999\n 10\n5999.50\n"
          "20\n0\n");
  EXPECT_EQ(Mismatch(doc->ToString(), expected), "");
  const std::string path = testing::TempPath("untouched_runs.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_EQ(Mismatch(testing::ReadAll(path), expected), "");

  // Binary output never takes the input's text.
  ASSERT_TRUE(doc->Save(path, DxfFormat::kBinary).ok());
  std::string binary = testing::ReadAll(path);
  EXPECT_EQ(binary.compare(0, kBinarySentinel.size(), kBinarySentinel), 0);
  EXPECT_EQ(binary.find("\nPOINT\n"), std::string::npos);
  auto back = ParseOrDie(binary);
  ASSERT_TRUE(back);
  std::string ascii;
  ASSERT_TRUE(back->ToString(DxfFormat::kAscii, &ascii).ok());
  auto again = ParseOrDie(ascii);
  ASSERT_TRUE(again);
  ASSERT_EQ(again->model_space()->entities.size(),
            static_cast<size_t>(kPoints - 1));
  EXPECT_EQ(again->entity(again->model_space()->entities[2999]).Get(8),
            "Moved");
  EXPECT_DOUBLE_EQ(
      again->entity(again->model_space()->entities.back()).GetDouble(10),
      5999.5);
}

// A binary file's untouched records go out as the bytes they were read
// from; what was edited is written tag by tag, in place.
TEST(UntouchedTest, BinaryRecordsAreCopiedAsReadAndEditsLandInPlace) {
  std::string text = "0\nSECTION\n2\nENTITIES\n";
  const int kPoints = 3000;  // runs longer than the writer's buffer
  for (int i = 0; i < kPoints; ++i) {
    text += "0\nPOINT\n8\nP" + std::to_string(i) + "\n10\n" +
            std::to_string(i) + ".25\n20\n-0.1\n";
  }
  text += "0\nENDSEC\n0\nEOF\n";
  auto ascii = ParseOrDie(text);
  ASSERT_TRUE(ascii);
  std::string binary;
  ASSERT_TRUE(ascii->ToString(DxfFormat::kBinary, &binary).ok());
  auto doc = ParseOrDie(binary);
  ASSERT_TRUE(doc);
  std::string written;
  ASSERT_TRUE(doc->ToString(DxfFormat::kBinary, &written).ok());
  EXPECT_EQ(Mismatch(written, binary), "");

  // The same edits on both: the copy must match writing every tag.
  for (Document* d : {ascii.get(), doc.get()}) {
    const std::vector<RecordId> ids = d->model_space()->entities;
    d->entity(ids[0]).SetDouble(20, 7);
    d->Erase(d->entity(ids[1]));
    d->entity(ids[1500]).Set(8, "Moved");
    d->entity(ids[kPoints - 1]).InsertTag(1, 62, "1");
  }
  std::string expected;
  ASSERT_TRUE(ascii->ToString(DxfFormat::kBinary, &expected).ok());
  const std::string path = testing::TempPath("untouched_binary.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_EQ(Mismatch(testing::ReadAll(path), expected), "");
  // Saved as ASCII, nothing of the binary source may leak in.
  std::string as_text;
  ASSERT_TRUE(doc->ToString(DxfFormat::kAscii, &as_text).ok());
  auto back = ParseOrDie(as_text);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->entity(back->model_space()->entities[1499]).Get(8), "Moved");
}

// A record's tags need not be one stretch of the file: the reader may drop
// a line between them (a repair), or the file may open with a byte-order
// mark. Such records are written tag by tag, not as the text they span.
TEST(UntouchedTest, RecordsThatAreNotOneStretchOfTheFileAreWrittenByTag) {
  // Header variables after the header's ENDSEC are moved into the header.
  const std::string moved =
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
      "9\n$INSUNITS\n70\n4\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\n0\n10\n1\n20\n2\n"
      "0\nENDSEC\n0\nEOF\n";
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Parse(moved, "t.dxf", &doc, {.recover = true}).ok());
  ASSERT_EQ(doc->repairs().size(), 1u);
  std::string expected = moved;
  expected.erase(expected.find("0\nENDSEC\n"), 9);
  EXPECT_EQ(doc->ToString(), expected);
  // The same file in binary: repaired, its tags no longer match its bytes.
  std::string binary;
  ASSERT_TRUE(doc->ToString(DxfFormat::kBinary, &binary).ok());
  std::string damaged;
  {
    TagWriter w = TagWriter::Binary(&damaged);
    const char* p = moved.data();
    while (*p != '\0') {  // "code\nvalue\n" pairs
      const char* nl = std::strchr(p, '\n');
      const char* vnl = std::strchr(nl + 1, '\n');
      w.Write(std::atoi(p), std::string_view(nl + 1, vnl - nl - 1));
      p = vnl + 1;
    }
    ASSERT_TRUE(w.Flush());
  }
  ASSERT_TRUE(Document::Parse(damaged, "t.dxf", &doc, {.recover = true}).ok());
  ASSERT_EQ(doc->repairs().size(), 1u);
  std::string rewritten;
  ASSERT_TRUE(doc->ToString(DxfFormat::kBinary, &rewritten).ok());
  EXPECT_EQ(Mismatch(rewritten, binary), "");

  const std::string plain =
      "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\n0\n10\n1\n20\n2\n"
      "0\nENDSEC\n0\nEOF\n";
  doc = ParseOrDie("\xEF\xBB\xBF" + plain);
  ASSERT_TRUE(doc);
  // The mark goes; the first code is written afresh, all else as read.
  EXPECT_EQ(doc->ToString(), "  0\n" + plain.substr(2));
}

}  // namespace
}  // namespace lmt::dxf

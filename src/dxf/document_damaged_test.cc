// Drawings whose tags read fine but whose structure is broken: each gives
// a Corruption naming the file, line and what was expected.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "dxf/document.h"
#include "dxf/test_util.h"

namespace lmt::dxf {
namespace {

struct Case {
  const char* label;
  const char* text;  // tags as "code value" lines, joined below
  const char* message;
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.label; }

using testing::Dxf;

class DamagedDocumentTest : public ::testing::TestWithParam<Case> {};

TEST_P(DamagedDocumentTest, GivesCorruptionWithLocation) {
  std::unique_ptr<Document> doc;
  Status s = Document::Parse(Dxf(GetParam().text), "bad.dxf", &doc);
  ASSERT_TRUE(s.IsCorruption()) << GetParam().label;
  EXPECT_EQ(s.message(), GetParam().message) << GetParam().label;
  EXPECT_EQ(doc, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, DamagedDocumentTest,
    ::testing::Values(
        Case{"no section", "0 LINE|8 0|0 EOF",
             "bad.dxf:1: expected 0 SECTION, got 0 LINE"},
        Case{"section without name", "0 SECTION|8 X|0 EOF",
             "bad.dxf:3: expected 2 <section name> after 0 SECTION, got 8 X"},
        Case{"missing ENDSEC", "0 SECTION|2 ENTITIES|0 LINE|0 EOF",
             "bad.dxf:7: expected 0 ENDSEC for section ENTITIES, got 0 EOF"},
        Case{"section inside section",
             "0 SECTION|2 ENTITIES|0 SECTION|2 BLOCKS|0 ENDSEC|0 EOF",
             "bad.dxf:5: expected 0 ENDSEC for section ENTITIES, got 0 "
             "SECTION"},
        Case{"header with a record",
             "0 SECTION|2 HEADER|9 $ACADVER|1 AC1032|0 LINE|0 ENDSEC|0 EOF",
             "bad.dxf:9: expected 0 ENDSEC for section HEADER, got 0 LINE"},
        Case{"block in entities",
             "0 SECTION|2 ENTITIES|0 LINE|0 ENDBLK|0 ENDSEC|0 EOF",
             "bad.dxf:7: expected an entity in section ENTITIES, got 0 ENDBLK"},
        Case{"entry outside table",
             "0 SECTION|2 TABLES|0 LAYER|2 0|0 ENDSEC|0 EOF",
             "bad.dxf:5: expected 0 TABLE, got 0 LAYER"},
        Case{"missing ENDTAB",
             "0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 0|0 ENDSEC|0 EOF",
             "bad.dxf:13: expected 0 ENDTAB for table LAYER, got 0 ENDSEC"},
        Case{"table in table",
             "0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 TABLE|2 LTYPE|0 ENDTAB|"
             "0 ENDSEC|0 EOF",
             "bad.dxf:9: expected 0 ENDTAB for table LAYER, got 0 TABLE"},
        Case{"entity outside block", "0 SECTION|2 BLOCKS|0 LINE|0 ENDSEC|0 EOF",
             "bad.dxf:5: expected 0 BLOCK, got 0 LINE"},
        Case{"missing ENDBLK",
             "0 SECTION|2 BLOCKS|0 BLOCK|2 A|0 LINE|0 ENDSEC|0 EOF",
             "bad.dxf:11: expected 0 ENDBLK for block A, got 0 ENDSEC"},
        Case{"block in block",
             "0 SECTION|2 BLOCKS|0 BLOCK|2 A|0 BLOCK|2 B|0 ENDBLK|0 ENDSEC|"
             "0 EOF",
             "bad.dxf:9: expected 0 ENDBLK for block A, got 0 BLOCK"}),
    [](const auto& info) {
      std::string n = info.param.label;
      for (char& c : n) {
        if (!isalnum(static_cast<unsigned char>(c))) c = '_';
      }
      return n;
    });

TEST(DocumentStructureTest, MinimalR12WithOnlyEntities) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Parse(Dxf("0 SECTION|2 ENTITIES|0 LINE|8 0|10 0|20 0|"
                                  "11 1|21 1|0 ENDSEC|0 EOF"),
                              "r12.dxf", &doc)
                  .ok());
  EXPECT_TRUE(doc->IsR12());
  ASSERT_EQ(doc->model_space()->entities.size(), 1u);
  // The made-up model space block is not written to a BLOCKS section.
  EXPECT_EQ(doc->ToString(), Dxf("0 SECTION|2 ENTITIES|0 LINE|8 0|10 0|20 0|"
                                 "11 1|21 1|0 ENDSEC|0 EOF"));
}

TEST(DocumentStructureTest, DuplicateHandleKeepsFirstAndWarns) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Parse(Dxf("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|"
                                  "0 ENDSEC|0 SECTION|2 ENTITIES|0 LINE|5 A|"
                                  "0 CIRCLE|5 a|0 ENDSEC|0 EOF"),
                              "dup.dxf", &doc)
                  .ok());
  ASSERT_EQ(doc->warnings().size(), 1u);
  EXPECT_EQ(doc->warnings()[0],
            "dup.dxf: duplicate handle A; the first is kept");
  EXPECT_EQ(doc->FindByHandle(0xA).type(), "LINE");
}

// A file whose model space record is called "*U": the ENTITIES section
// still holds model space (and paper space for 67 1), whatever the owner
// says; the entity keeps its owner tag, and the reader says what it did.
TEST(DocumentStructureTest, EntitiesSectionHoldsOnlyTheSpaces) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(
      Document::Parse(
          Dxf("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|0 ENDSEC|"
              "0 SECTION|2 TABLES|0 TABLE|2 BLOCK_RECORD|5 1|"
              "0 BLOCK_RECORD|5 1F|330 1|2 *U|0 ENDTAB|0 ENDSEC|"
              "0 SECTION|2 BLOCKS|0 BLOCK|5 20|330 1F|2 *U|0 ENDBLK|5 21|"
              "330 1F|0 ENDSEC|0 SECTION|2 ENTITIES|0 LINE|5 A|330 1F|"
              "0 CIRCLE|5 B|330 1F|67 1|0 ENDSEC|0 EOF"),
          "u.dxf", &doc)
          .ok());
  ASSERT_EQ(doc->model_space()->entities.size(), 1u);
  EXPECT_EQ(doc->entity(doc->model_space()->entities[0]).type(), "LINE");
  ASSERT_NE(doc->paper_space(), nullptr);
  ASSERT_EQ(doc->paper_space()->entities.size(), 1u);
  EXPECT_TRUE(doc->FindBlock("*U")->entities.empty());
  EXPECT_EQ(doc->FindByHandle(0xA).GetString(330), "1F");
  ASSERT_EQ(doc->warnings().size(), 1u);
  EXPECT_EQ(doc->warnings()[0],
            "u.dxf: entities in ENTITIES name block *U as owner; read as "
            "model space");
}

// The name index behind FindBlock follows every change of the block list:
// a damaged file's second block of a name takes over when the first goes,
// and a renamed block answers to its new name only.
TEST(DocumentStructureTest, BlockNamesFollowRenamesAndRemovals) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Parse(Dxf("0 SECTION|2 BLOCKS|0 BLOCK|2 Dup|0 ENDBLK|"
                                  "0 BLOCK|2 DUP|0 ENDBLK|0 ENDSEC|0 EOF"),
                              "names.dxf", &doc)
                  .ok());
  Block* first = doc->FindBlock("dup");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->name, "Dup");
  ASSERT_TRUE(doc->RemoveBlock(first));
  Block* second = doc->FindBlock("Dup");
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->name, "DUP");

  Block* added = doc->AddBlock("Frame");
  EXPECT_EQ(doc->AddBlock("FRAME"), added);  // taken: the existing one
  EXPECT_FALSE(doc->RenameBlock(second, "frame"));
  ASSERT_TRUE(doc->RenameBlock(added, "Sheet"));
  EXPECT_EQ(doc->FindBlock("frame"), nullptr);
  EXPECT_EQ(doc->FindBlock("SHEET"), added);
  ASSERT_TRUE(doc->RenameBlock(second, "Frame"));
  EXPECT_EQ(doc->FindBlock("dup"), nullptr);
  EXPECT_EQ(doc->FindBlock("frame"), second);
  ASSERT_TRUE(doc->RemoveBlock(added));
  EXPECT_EQ(doc->FindBlock("Sheet"), nullptr);
  EXPECT_EQ(doc->blocks().size(), 2u);  // the made-up model space and Frame
}

// Inputs the fuzzer found: each must parse to a Status or to a document
// whose output parses again.
TEST(FuzzRegressionTest, EveryFoundInputReadsOrFailsCleanly) {
  std::string dir = std::string(LMT_TESTDATA_DIR) + "/dxf/fuzz_regressions";
  int n = 0;
  for (const auto& f : std::filesystem::directory_iterator(dir)) {
    std::ifstream in(f.path(), std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    std::unique_ptr<Document> doc;
    if (Document::Parse(ss.str(), f.path().string(), &doc).ok()) {
      std::unique_ptr<Document> again;
      Status s = Document::Parse(doc->ToString(), "again", &again);
      EXPECT_TRUE(s.ok()) << f.path() << ": " << s.ToString();
    }
    ++n;
  }
  EXPECT_GT(n, 0);
}

}  // namespace
}  // namespace lmt::dxf

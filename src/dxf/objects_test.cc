#include "dxf/objects.h"

#include <gtest/gtest.h>

#include "dxf/insert.h"
#include "dxf/test_util.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

std::unique_ptr<Document> Open(const std::string& name) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(testing::SamplePath(name), &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

TEST(ObjectsTest, LayoutsInTabOrderWithTheirBlocks) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* sample : {"s_AC1032.dxf", "s_AC1015.dxf"}) {
    auto doc = Open(sample);
    ASSERT_TRUE(doc);
    std::vector<std::string_view> names;
    for (const Layout& l : Layouts(*doc)) {
      names.push_back(l.name());
      Block* b = LayoutBlock(*doc, l);
      ASSERT_NE(b, nullptr) << l.name();
      if (l.is_model()) {
        EXPECT_EQ(b, doc->model_space());
      }
    }
    EXPECT_EQ(names, (std::vector<std::string_view>{"Model", "Layout1",
                                                    "Layout2", "MyLayout"}))
        << sample;
  }
  auto r12 = Open("s_AC1009.dxf");
  ASSERT_TRUE(r12);
  EXPECT_TRUE(Layouts(*r12).empty());
}

TEST(ObjectsTest, ActiveLayoutSwitchesByRenamingBlocks) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Block* active = doc->paper_space();
  Block* other = doc->FindBlock("*Paper_Space0");
  ASSERT_NE(other, nullptr);
  size_t active_count = active->entities.size();
  size_t other_count = other->entities.size();
  EXPECT_FALSE(doc->RenameBlock(active, "*Paper_Space0"));  // taken
  ASSERT_TRUE(doc->RenameBlock(active, "*Paper_Space_tmp"));
  ASSERT_TRUE(doc->RenameBlock(other, "*Paper_Space"));
  ASSERT_TRUE(doc->RenameBlock(active, "*Paper_Space0"));
  EXPECT_EQ(doc->paper_space(), other);
  std::string path = testing::TempPath("switched.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_EQ(testing::Problems(path), "");
  std::unique_ptr<Document> back;
  ASSERT_TRUE(Document::Load(path, &back).ok());
  EXPECT_EQ(back->paper_space()->entities.size(), other_count);
  EXPECT_EQ(back->FindBlock("*Paper_Space0")->entities.size(), active_count);
}

TEST(ObjectsTest, ReadsAnnotationScaleVariable) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  EXPECT_FALSE(DictionaryVar(*doc, "CANNOSCALE").empty());
  EXPECT_TRUE(DictionaryVar(*doc, "NO_SUCH_VAR").empty());
}

TEST(ObjectsTest, ExtensionDictionaryCreatedOnceAndAudited) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Entity line;
  for (RecordId id : doc->model_space()->entities) {
    if (doc->entity(id).type() == "LINE") line = doc->entity(id);
  }
  ASSERT_TRUE(line.valid());
  ASSERT_EQ(line.ExtensionDictionary(), 0u);
  Entity xd = GetOrCreateExtensionDictionary(*doc, line);
  ASSERT_TRUE(xd.valid());
  EXPECT_EQ(GetOrCreateExtensionDictionary(*doc, line), xd);
  EXPECT_EQ(xd.owner(), line.handle());
  Entity rec = doc->AddObject(
      {doc->MakeTag(0, "XRECORD"), doc->MakeTag(100, "AcDbXrecord"),
       doc->MakeTag(280, "1"), doc->MakeTag(90, "1")},
      xd.handle());
  rec.AddReactor(xd.handle());
  doc->AddToDictionary(xd, "LMT_TEST", rec.handle());
  EXPECT_EQ(doc->DictionaryLookup(xd, "LMT_TEST"), rec.handle());
  EXPECT_EQ(DictionaryEntries(xd).size(), 1u);
  std::string path = testing::TempPath("xdict.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_EQ(testing::Problems(path), "");
}

// New keys go at the end of the dictionary's own entries (before a later
// subclass or extended data); a key it already has is pointed elsewhere,
// wherever its entry lies.
TEST(ObjectsTest, DictionaryKeysAreAddedInsideTheEntriesOrReplaced) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(
      Document::Parse(testing::Dxf("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|"
                                   "0 ENDSEC|0 SECTION|2 OBJECTS|"
                                   "0 DICTIONARY|5 C|3 EARLY|350 E1|"
                                   "100 AcDbDictionary|280 0|3 A|350 A1|"
                                   "100 AcDbLater|1001 APP|1000 x|"
                                   "0 DICTIONARY|5 D|3 K|360 D1|1001 APP|"
                                   "0 DICTIONARY|5 F|100 AcDbDictionary|"
                                   "281 1|3 G|360 F1|280 1|"
                                   "0 ENDSEC|0 EOF"),
                      "dict.dxf", &doc)
          .ok());
  Entity dict = doc->FindByHandle(0xC);
  ASSERT_TRUE(dict.valid());
  doc->AddToDictionary(dict, "B", 0xB1);
  doc->AddToDictionary(dict, "A", 0xA2);
  doc->AddToDictionary(dict, "EARLY", 0xE2);
  std::string tags;
  for (const Tag& t : dict.tags()) {
    tags += std::to_string(t.code) + " " + std::string(t.value()) + "|";
  }
  EXPECT_EQ(tags,
            "0 DICTIONARY|5 C|3 EARLY|350 E2|100 AcDbDictionary|280 0|"
            "3 A|350 A2|3 B|350 B1|100 AcDbLater|1001 APP|1000 x|");

  // Without the subclass marker, entries go before the extended data.
  Entity bare = doc->FindByHandle(0xD);
  ASSERT_TRUE(bare.valid());
  doc->AddToDictionary(bare, "K", 0xD2);
  doc->AddToDictionary(bare, "L", 0xD3);
  EXPECT_EQ(doc->DictionaryLookup(bare, "K"), 0xD2u);
  EXPECT_EQ(doc->DictionaryLookup(bare, "L"), 0xD3u);
  auto t = bare.tags();
  ASSERT_EQ(t.size(), 7u);
  EXPECT_EQ(t[6].code, 1001);

  // A hard owner (280 1, wherever it stands) points to its entries by 360.
  Entity owner = doc->FindByHandle(0xF);
  ASSERT_TRUE(owner.valid());
  doc->AddToDictionary(owner, "H", 0xF2);
  auto h = owner.tags();
  ASSERT_EQ(h.size(), 9u);
  EXPECT_EQ(h[7].code, 3);
  EXPECT_EQ(h[8].code, 360);
  EXPECT_EQ(h[8].value(), "F2");
}

// A large dictionary keeps its keys between additions; whatever else
// edits it must still be seen by the next one.
TEST(ObjectsTest, LargeDictionaryKeysFollowOtherEdits) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(
      Document::Parse(testing::Dxf("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|"
                                   "0 ENDSEC|0 SECTION|2 OBJECTS|"
                                   "0 DICTIONARY|5 C|100 AcDbDictionary|"
                                   "281 1|1001 APP|1000 x|"
                                   "0 DICTIONARY|5 D|100 AcDbDictionary|"
                                   "0 ENDSEC|0 EOF"),
                      "big.dxf", &doc)
          .ok());
  Entity dict = doc->FindByHandle(0xC);
  Entity other = doc->FindByHandle(0xD);
  ASSERT_TRUE(dict.valid() && other.valid());
  for (uint64_t h = 0x100; h < 0x150; ++h) {
    doc->AddToDictionary(other, "O" + std::to_string(h), h);
  }
  for (uint64_t h = 0x100; h < 0x150; ++h) {
    doc->AddToDictionary(dict, "K" + std::to_string(h), h);
  }
  auto count = [&](std::string_view key) {
    int n = 0;
    for (const auto& [k, h] : DictionaryEntries(dict)) n += k == key;
    return n;
  };
  EXPECT_EQ(DictionaryEntries(dict).size(), 0x50u);
  EXPECT_EQ(doc->DictionaryLookup(dict, "K256"), 0x100u);
  doc->AddToDictionary(dict, "K256", 0x200);  // a key it has: replaced
  EXPECT_EQ(doc->DictionaryLookup(dict, "K256"), 0x200u);
  EXPECT_EQ(count("K256"), 1);

  // Renamed in place, then added under the new name: replaced too.
  const int renamed = dict.Find(3, dict.FindSubclass("AcDbDictionary"));
  ASSERT_GT(renamed, 0);
  dict.SetValueAt(renamed, "RENAMED");
  doc->AddToDictionary(dict, "RENAMED", 0x300);
  EXPECT_EQ(count("RENAMED"), 1);
  EXPECT_EQ(doc->DictionaryLookup(dict, "RENAMED"), 0x300u);

  doc->AddToDictionary(other, "O-LAST", 0x600);  // another large one between

  // An entry taken out goes in again once, still before the extended data.
  const int second = dict.Find(3, renamed + 2);
  const std::string gone(dict.tags()[second].value());
  dict.EraseTags(second, second + 2);
  doc->AddToDictionary(dict, gone, 0x400);
  doc->AddToDictionary(dict, "LAST", 0x500);
  EXPECT_EQ(count(gone), 1);
  EXPECT_EQ(DictionaryEntries(dict).size(), 0x51u);
  auto t = dict.tags();
  ASSERT_GE(t.size(), 4u);
  EXPECT_EQ(t[t.size() - 4].value(), "LAST");
  EXPECT_EQ(t[t.size() - 2].code, 1001);
  EXPECT_EQ(DictionaryEntries(other).size(), 0x51u);
}

TEST(ObjectsTest, OldMultiLineAttribLosesItsRoundTripMText) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1015.dxf");
  ASSERT_TRUE(doc);
  Entity target;
  for (auto& b : doc->blocks()) {
    for (RecordId id : b->entities) {
      for (RecordId c : doc->db().children(id)) {
        Entity e = doc->entity(c);
        if (e.type() == "ATTRIB" && Attrib(e).tag() == "MULTI_LINE_ATT_001") {
          target = e;
        }
      }
    }
  }
  ASSERT_TRUE(target.valid());
  Entity xd = doc->FindByHandle(target.ExtensionDictionary());
  ASSERT_TRUE(xd.valid());
  uint64_t mlatt = doc->DictionaryLookup(xd, "ACAD_MLATT");
  ASSERT_NE(mlatt, 0u);
  SetAttribValue(*doc, target, "new value");
  EXPECT_EQ(doc->DictionaryLookup(xd, "ACAD_MLATT"), 0u);
  EXPECT_FALSE(doc->FindByHandle(mlatt).valid());
  std::string path = testing::TempPath("mlatt.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_EQ(testing::Problems(path), "");
}

}  // namespace
}  // namespace lmt::dxf

#include "dxf/document.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "dxf/tag_reader.h"
#include "dxf/test_util.h"
#include "testing/dxf_check.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

using testing::ReadAll;

using testing::SampleNames;
using testing::SamplePath;

std::unique_ptr<Document> LoadOrDie(const std::string& path) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(path, &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

std::vector<Tag> TagsOf(const std::string& data, Arena* arena) {
  TagFile f;
  Status s = ReadTags(data, "x", arena, &f);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return f.tags;
}

// Tags equal except the $HANDSEED value.
void ExpectSameTags(const std::vector<Tag>& a, const std::vector<Tag>& b,
                    const std::string& label) {
  ASSERT_EQ(a.size(), b.size()) << label;
  for (size_t i = 0; i < a.size(); ++i) {
    if (i > 0 && a[i - 1].Is(9, "$HANDSEED")) continue;
    ASSERT_EQ(a[i].code, b[i].code) << label << " tag " << i;
    ASSERT_EQ(a[i].value(), b[i].value()) << label << " tag " << i;
  }
}

// The round trips run over the shared folder's samples and over our own
// sheet set (testdata/releases), which needs nothing beside the checkout.
std::string SampleFile(const std::string& name) {
  return name.rfind("releases/", 0) == 0 ? lmt::testing::TestdataPath(name)
                                         : SamplePath(name);
}

class SampleTest : public ::testing::TestWithParam<std::string> {};

TEST_P(SampleTest, WritesEveryTagBack) {
  LMT_SKIP_WITHOUT_SHARED_FOR(SampleFile(GetParam()));
  std::string path = SampleFile(GetParam());
  auto doc = LoadOrDie(path);
  ASSERT_TRUE(doc);
  std::string written = doc->ToString();
  Arena a1, a2;
  std::unique_ptr<Document> again;
  ASSERT_TRUE(Document::Parse(written, "again", &again).ok());
  // Binary input comes back as ASCII holding the same tags.
  ExpectSameTags(TagsOf(ReadAll(path), &a1), TagsOf(written, &a2), GetParam());
}

TEST_P(SampleTest, HandseedExceedsEveryHandleAfterSave) {
  LMT_SKIP_WITHOUT_SHARED_FOR(SampleFile(GetParam()));
  auto doc = LoadOrDie(SampleFile(GetParam()));
  ASSERT_TRUE(doc);
  std::unique_ptr<Document> again;
  ASSERT_TRUE(Document::Parse(doc->ToString(), "again", &again).ok());
  auto seed = again->HeaderValue("$HANDSEED");
  if (!seed) GTEST_SKIP() << "no handles";
  EXPECT_GT(ParseHandle(*seed).value_or(0), again->db().max_handle());
}

TEST_P(SampleTest, SavedCopyPassesEzdxfAudit) {
  const std::string path = SampleFile(GetParam());
  LMT_SKIP_WITHOUT_SHARED_FOR(path);
  auto doc = LoadOrDie(path);
  ASSERT_TRUE(doc);
  std::string out = testing::TempPath(
      "saved_" + std::filesystem::path(path).filename().string());
  ASSERT_TRUE(doc->Save(out).ok());
  if (doc->was_binary()) {
    // Saved binary, as read; ezdxf reads it back. The structural check
    // reads ASCII only: it gets the same drawing as ASCII.
    EXPECT_EQ(ReadAll(out).substr(0, kBinarySentinel.size()), kBinarySentinel);
    if (::lmt::testing::HaveEzdxf()) {
      EXPECT_NE(testing::EzdxfLayouts(out), "") << out;
    }
    out += ".ascii.dxf";
    ASSERT_TRUE(doc->Save(out, DxfFormat::kAscii).ok());
  }
  EXPECT_EQ(testing::Problems(out, testing::KnownProblems(path)), "");
}

std::string SampleName(const ::testing::TestParamInfo<std::string>& info) {
  std::string n = info.param;
  for (char& c : n) {
    if (!isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return n;
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleTest,
                         ::testing::ValuesIn(SampleNames()), SampleName);
INSTANTIATE_TEST_SUITE_P(Releases, SampleTest,
                         ::testing::Values("releases/sheets_r12.dxf",
                                           "releases/sheets_2000.dxf",
                                           "releases/sheets_2018.dxf",
                                           "releases/sheets_2018_bin.dxf"),
                         SampleName);

TEST(DocumentTest, MissingFileIsAnIOError) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(testing::TempPath("does_not_exist.dxf"), &doc);
  EXPECT_TRUE(s.IsIOError()) << s.ToString();
  EXPECT_EQ(doc, nullptr);
}

TEST(DocumentTest, FailedSaveLeavesTheOldFileAlone) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("Minimal_DXF_AC1021.dxf"));
  ASSERT_TRUE(doc);
  std::string path = testing::TempPath("keep.dxf");
  {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    std::fputs("old", f);
    std::fclose(f);
  }
  // The temporary file cannot be created: a directory is in the way.
  std::filesystem::create_directories(path + ".lmt-tmp");
  Status s = doc->Save(path);
  EXPECT_TRUE(s.IsIOError());
  EXPECT_EQ(ReadAll(path), "old");
  std::filesystem::remove_all(path + ".lmt-tmp");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_NE(ReadAll(path), "old");
  EXPECT_FALSE(std::filesystem::exists(path + ".lmt-tmp"));
}

TEST(DocumentTest, ReadsHeaderVariables) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(doc);
  EXPECT_EQ(doc->version(), "AC1032");
  EXPECT_EQ(doc->HeaderValue("$DWGCODEPAGE"), "ANSI_1252");
  EXPECT_FALSE(doc->HeaderValue("$NOSUCHVAR"));
  auto extmin = doc->HeaderTags("$EXTMIN");
  ASSERT_EQ(extmin.size(), 3u);
  EXPECT_EQ(extmin[1].code, 20u);
}

TEST(DocumentTest, SetHeaderReplacesOrAppends) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("s_AC1015.dxf"));
  ASSERT_TRUE(doc);
  EXPECT_EQ(doc->HeaderInt("$INSUNITS", -1), 1);  // inches in this sample
  doc->SetHeader("$INSUNITS", 70, "6");
  doc->SetHeader("$LMTTEST", 1, "x");
  std::unique_ptr<Document> again;
  ASSERT_TRUE(Document::Parse(doc->ToString(), "again", &again).ok());
  EXPECT_EQ(again->HeaderInt("$INSUNITS"), 6);
  EXPECT_EQ(again->HeaderValue("$LMTTEST"), "x");
  EXPECT_EQ(again->HeaderNames().size(), doc->HeaderNames().size());
}

TEST(DocumentTest, NewHandlesFollowHandseedAsTheHeaderChanges) {
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Parse("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\n"
                              "AC1032\n9\n$HANDSEED\n5\n100\n0\nENDSEC\n"
                              "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n",
                              "seed", &doc)
                  .ok());
  EXPECT_EQ(doc->AllocateHandle(), 0x100u);
  EXPECT_EQ(doc->AllocateHandle(), 0x101u);
  // Variables before it go and come: the seed moves among the tags.
  ASSERT_TRUE(doc->RemoveHeader("$ACADVER"));
  doc->SetHeader("$HANDSEED", 5, "200");
  EXPECT_EQ(doc->AllocateHandle(), 0x200u);
  doc->SetHeader("$ACADVER", 1, "AC1032");
  ASSERT_TRUE(doc->RemoveHeader("$HANDSEED"));
  EXPECT_EQ(doc->AllocateHandle(), 0x201u);
  doc->SetHeader("$HANDSEED", 5, "300");
  EXPECT_EQ(doc->AllocateHandle(), 0x300u);
}

TEST(DocumentTest, FindsTableEntriesIgnoringCase) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(doc);
  for (const char* t : {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS",
                        "APPID", "DIMSTYLE", "BLOCK_RECORD"}) {
    EXPECT_NE(doc->table(t), nullptr) << t;
  }
  EXPECT_TRUE(doc->FindTableEntry("layer", "0").valid());
  EXPECT_TRUE(doc->FindTableEntry("LTYPE", "continuous").valid());
  EXPECT_TRUE(doc->FindTableEntry("BLOCK_RECORD", "*MODEL_SPACE").valid());
  EXPECT_FALSE(doc->FindTableEntry("LAYER", "no such layer").valid());
  Entity std_dim = doc->FindTableEntry("DIMSTYLE", "Standard");
  ASSERT_TRUE(std_dim.valid());
  EXPECT_NE(std_dim.handle(), 0u);  // from code 105
  EXPECT_EQ(doc->FindByHandle(std_dim.handle()), std_dim);
}

TEST(DocumentTest, RoutesEntitiesToTheirLayoutBlocks) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* name : {"s_AC1032.dxf", "s_AC1015.dxf"}) {
    auto doc = LoadOrDie(SamplePath(name));
    ASSERT_NE(doc->model_space(), nullptr);
    ASSERT_NE(doc->paper_space(), nullptr);
    EXPECT_FALSE(doc->model_space()->entities.empty()) << name;
    for (RecordId id : doc->paper_space()->entities) {
      EXPECT_TRUE(doc->entity(id).paper_space()) << name;
      EXPECT_EQ(doc->entity(id).owner(), doc->paper_space()->record_handle);
    }
    for (RecordId id : doc->model_space()->entities) {
      EXPECT_FALSE(doc->entity(id).paper_space()) << name;
    }
  }
}

TEST(DocumentTest, R12UsesDollarBlocksAndPaperFlag) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("s_AC1009.dxf"));
  ASSERT_TRUE(doc);
  EXPECT_TRUE(doc->IsR12());
  ASSERT_NE(doc->model_space(), nullptr);
  EXPECT_EQ(doc->model_space()->name, "$MODEL_SPACE");
  EXPECT_FALSE(doc->model_space()->entities.empty());
  if (doc->paper_space()) {
    for (RecordId id : doc->paper_space()->entities) {
      EXPECT_TRUE(doc->entity(id).paper_space());
    }
  }
}

TEST(DocumentTest, AttribsAndSeqendFollowTheirInsert) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(doc);
  int with_attribs = 0;
  for (auto& b : doc->blocks()) {
    for (RecordId id : b->entities) {
      Entity e = doc->entity(id);
      EXPECT_NE(e.type(), "ATTRIB");
      EXPECT_NE(e.type(), "SEQEND");
      const auto& kids = doc->db().children(id);
      if (kids.empty()) continue;
      ++with_attribs;
      EXPECT_EQ(doc->entity(kids.back()).type(), "SEQEND");
      for (RecordId k : kids) EXPECT_EQ(doc->entity(k).owner(), e.handle());
    }
  }
  EXPECT_GT(with_attribs, 0);
}

TEST(DocumentTest, RootDictionaryListsLayouts) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = LoadOrDie(SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(doc);
  Entity root = doc->root_dictionary();
  ASSERT_TRUE(root.valid());
  EXPECT_EQ(root.type(), "DICTIONARY");
  EXPECT_EQ(root.owner(), 0u);
  Entity layouts =
      doc->FindByHandle(doc->DictionaryLookup(root, "ACAD_LAYOUT"));
  ASSERT_TRUE(layouts.valid());
  Entity model = doc->FindByHandle(doc->DictionaryLookup(layouts, "Model"));
  ASSERT_TRUE(model.valid());
  EXPECT_EQ(model.type(), "LAYOUT");
  EXPECT_EQ(model.Reactors(), std::vector<uint64_t>{layouts.handle()});
}

}  // namespace
}  // namespace lmt::dxf

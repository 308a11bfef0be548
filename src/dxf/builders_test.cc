#include "dxf/builders.h"

#include <gtest/gtest.h>

#include "dxf/test_util.h"
#include "dxf/text.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

std::unique_ptr<Document> Open(const std::string& name) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(testing::SamplePath(name), &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

TEST(BuildersTest, NewEntitiesAndTablesPassEzdxfAudit) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* sample :
       {"s_AC1032.dxf", "s_AC1015.dxf", "Minimal_DXF_AC1021.dxf"}) {
    auto doc = Open(sample);
    ASSERT_TRUE(doc);
    Entity layer = AddLayer(*doc, "FRAMES", 3);
    ASSERT_TRUE(layer.valid()) << sample;
    EXPECT_EQ(AddLayer(*doc, "frames"), layer);  // names ignore case
    ASSERT_TRUE(AddTextStyle(*doc, "Title", "arial.ttf").valid());
    std::vector<LwVertex> rect = {
        {0, 0}, {42000, 0}, {42000, 29700}, {0, 29700}};
    Entity pl = AddLwPolyline(*doc, doc->model_space(), rect, true,
                              {.layer = "FRAMES"});
    ASSERT_TRUE(pl.valid());
    Block* paper = doc->paper_space();
    ASSERT_NE(paper, nullptr) << sample;
    Entity mt =
        AddMText(*doc, paper, {10, 10, 0}, 2.5, "Лист №1", {}, 0, 7, "Title");
    ASSERT_TRUE(mt.valid());
    EXPECT_TRUE(mt.paper_space());
    EXPECT_EQ(mt.owner(), paper->record_handle);
    EXPECT_GT(pl.handle(), 0u);
    EXPECT_NE(pl.handle(), mt.handle());

    std::string path = testing::TempPath(std::string("built_") + sample);
    ASSERT_TRUE(doc->Save(path).ok());
    EXPECT_EQ(testing::Problems(
                  path, testing::KnownProblems(testing::SamplePath(sample))),
              "")
        << sample;
    std::unique_ptr<Document> back;
    ASSERT_TRUE(Document::Load(path, &back).ok());
    EXPECT_TRUE(back->FindTableEntry("LAYER", "FRAMES").valid());
    EXPECT_TRUE(back->FindTableEntry("STYLE", "Title").valid());
    Entity pl2 = back->FindByHandle(pl.handle());
    ASSERT_TRUE(pl2.valid());
    EXPECT_EQ(LwPolyline(pl2).vertices().size(), 4u);
    EXPECT_EQ(back->BlockOf(pl2), back->model_space());
    Entity mt2 = back->FindByHandle(mt.handle());
    EXPECT_EQ(MText(mt2).text(), "Лист №1");
    EXPECT_EQ(back->BlockOf(mt2), back->paper_space());
  }
}

TEST(BuildersTest, NewBlockWithFrameAndReference) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* sample : {"s_AC1032.dxf", "s_AC1015.dxf", "s_AC1009.dxf"}) {
    auto doc = Open(sample);
    ASSERT_TRUE(doc);
    Block* frame = doc->AddBlock("LMT_FRAME");
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(doc->AddBlock("lmt_frame"), frame);
    if (!doc->IsR12()) {
      std::vector<LwVertex> rect = {{0, 0}, {420, 0}, {420, 297}, {0, 297}};
      ASSERT_TRUE(AddLwPolyline(*doc, frame, rect, true).valid());
    }
    Entity ref = AddInsert(*doc, doc->model_space(), "LMT_FRAME",
                           {1000, 2000, 0}, 100, 30);
    ASSERT_TRUE(ref.valid());
    std::string path = testing::TempPath(std::string("block_") + sample);
    ASSERT_TRUE(doc->Save(path).ok());
    EXPECT_EQ(testing::Problems(
                  path, testing::KnownProblems(testing::SamplePath(sample))),
              "")
        << sample;
    std::unique_ptr<Document> back;
    ASSERT_TRUE(Document::Load(path, &back).ok());
    Block* b = back->FindBlock("LMT_FRAME");
    ASSERT_NE(b, nullptr) << sample;
    EXPECT_EQ(b->entities.size(), doc->IsR12() ? 0u : 1u);
    EXPECT_EQ(back->entity(b->begin).owner(), b->record_handle);
  }
}

TEST(BuildersTest, RefusesBadNamesAndR12OnlyTypes) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1009.dxf");
  ASSERT_TRUE(doc);
  EXPECT_FALSE(AddLayer(*doc, "a/b").valid());
  EXPECT_FALSE(AddLayer(*doc, "with space").valid());  // R12 rule
  EXPECT_FALSE(AddLayer(*doc, "").valid());
  EXPECT_TRUE(AddLayer(*doc, "FRAME_1").valid());
  std::vector<LwVertex> v = {{0, 0}, {1, 0}};
  EXPECT_FALSE(AddLwPolyline(*doc, doc->model_space(), v, false).valid());
  std::string path = testing::TempPath("built_r12.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
  EXPECT_EQ(testing::Problems(path), "");
}

TEST(BuildersTest, AllocatedHandlesStayAboveHandseed) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  uint64_t seed = ParseHandle(*doc->HeaderValue("$HANDSEED")).value();
  uint64_t max = doc->db().max_handle();
  uint64_t a = doc->AllocateHandle();
  uint64_t b = doc->AllocateHandle();
  EXPECT_GE(a, seed);
  EXPECT_GT(a, max);
  EXPECT_EQ(b, a + 1);
  EXPECT_FALSE(doc->FindByHandle(a).valid());
}

}  // namespace
}  // namespace lmt::dxf

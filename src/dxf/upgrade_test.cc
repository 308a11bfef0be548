// Drawings before DXF 2000: their viewports read from extended data, and
// R12, R13 and R14 drawings made DXF 2000 so that they can hold layouts.
#include "dxf/upgrade.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "dxf/layout_edit.h"
#include "dxf/objects.h"
#include "dxf/test_util.h"
#include "dxf/viewport.h"
#include "testing/dxf_check.h"

namespace lmt::dxf {
namespace {

std::unique_ptr<Document> Load(const std::string& path) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(path, &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

Viewport ViewportWithHandle(Document& doc, uint64_t handle) {
  Entity e = doc.FindByHandle(handle);
  return Viewport(e.valid() && e.type() == "VIEWPORT" ? e : Entity());
}

Viewport ViewportWithId(Document& doc, Block* block, int id) {
  for (RecordId r : block->entities) {
    Entity e = doc.entity(r);
    if (e.type() == "VIEWPORT" && Viewport(e).id() == id) return Viewport(e);
  }
  return Viewport(Entity());
}

TEST(LegacyViewportTest, ViewComesFromExtendedDataAndOffIsStatusZero) {
  // testdata/cli/make_inputs.py: the R12 viewport shows the A3 frame at
  // 1:100, centred at (21000, 14850).
  auto doc = Load(std::string(LMT_TESTDATA_DIR) + "/cli/frames_r12.dxf");
  ASSERT_TRUE(doc);
  Viewport vp = ViewportWithHandle(*doc, 0x35);
  ASSERT_TRUE(vp.valid());
  EXPECT_TRUE(vp.is_legacy());
  EXPECT_DOUBLE_EQ(vp.view_center().x, 21000);
  EXPECT_DOUBLE_EQ(vp.view_center().y, 14850);
  EXPECT_DOUBLE_EQ(vp.view_height(), 29700);
  EXPECT_EQ(vp.view_direction(), (Vec3{0, 0, 1}));
  EXPECT_TRUE(vp.is_on());
  const size_t tags = vp.tags().size();
  vp.SetOn(false);
  EXPECT_FALSE(vp.is_on());
  EXPECT_EQ(vp.status(), 0);
  EXPECT_EQ(vp.Find(90), -1) << "R12 has no group 90";
  EXPECT_EQ(vp.tags().size(), tags);
  vp.SetOn(true, 3);
  EXPECT_TRUE(vp.is_on());
  EXPECT_EQ(vp.status(), 3);
}

// R12 reaches 2000 through R14's model: its viewport's view moves out of
// the extended data as R14's does, and the paper space becomes Layout1.
TEST(UpgradeTest, R12GetsLayoutsAndFullViewports) {
  const std::string path =
      std::string(LMT_TESTDATA_DIR) + "/cli/frames_r12.dxf";
  auto doc = Load(path);
  ASSERT_TRUE(doc);
  ASSERT_TRUE(UpgradeForLayouts(*doc).ok());
  EXPECT_EQ(doc->version(), "AC1015");
  std::vector<std::string> names;
  for (const Layout& l : Layouts(*doc)) names.emplace_back(l.name());
  EXPECT_EQ(names, (std::vector<std::string>{"Model", "Layout1"}));
  Viewport vp = ViewportWithHandle(*doc, 0x35);
  ASSERT_TRUE(vp.valid());
  EXPECT_FALSE(vp.is_legacy());
  EXPECT_TRUE(vp.XData("ACAD").empty());
  EXPECT_DOUBLE_EQ(vp.view_center().x, 21000);
  EXPECT_DOUBLE_EQ(vp.view_center().y, 14850);
  EXPECT_DOUBLE_EQ(vp.view_height(), 29700);
  EXPECT_TRUE(vp.is_on());
  // The drawing (made by ezdxf) has no layout viewport of id 1; that is
  // its own problem, kept.
  const std::string out = testing::TempPath("upgraded_r12.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  EXPECT_EQ(testing::Problems(out, 1), "");
}

TEST(UpgradeTest, R14GetsLayoutsAndFullViewportsAndTakesNewLayouts) {
  const std::string path =
      testing::CorpusPath("394_Test2.dxf");  // R14, 2 viewports
  LMT_SKIP_WITHOUT_SHARED_FOR(path);
  LMT_SKIP_WITHOUT_EZDXF();
  auto doc = Load(path);
  ASSERT_TRUE(doc);
  ASSERT_EQ(doc->version(), "AC1014");
  Viewport before = ViewportWithId(*doc, doc->paper_space(), 2);
  ASSERT_TRUE(before.is_legacy());
  const double height = before.view_height();
  const Vec3 center = before.view_center();

  ASSERT_TRUE(UpgradeForLayouts(*doc).ok());
  EXPECT_EQ(doc->version(), "AC1015");
  std::vector<std::string> names;
  for (const Layout& l : Layouts(*doc)) names.emplace_back(l.name());
  EXPECT_EQ(names, (std::vector<std::string>{"Model", "Layout1"}));
  Viewport after = ViewportWithId(*doc, doc->paper_space(), 2);
  EXPECT_FALSE(after.is_legacy());
  EXPECT_TRUE(after.XData("ACAD").empty()) << "MVIEW moved into the entity";
  EXPECT_DOUBLE_EQ(after.view_height(), height);
  EXPECT_EQ(after.view_center(), center);
  EXPECT_TRUE(after.is_on());

  Layout sheet{Entity()};
  ASSERT_TRUE(AddLayout(*doc, "Sheet 1", &sheet).ok());
  const std::string out = testing::TempPath("upgraded.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  EXPECT_EQ(testing::Problems(out), "");
  EXPECT_NE(testing::EzdxfLayouts(out).find("Sheet 1"), std::string::npos);
}

}  // namespace
}  // namespace lmt::dxf

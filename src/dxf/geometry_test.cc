#include "dxf/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>

#include "dxf/layout_edit.h"
#include "dxf/test_util.h"
#include "dxf/viewport_edit.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

void ExpectNear(Vec3 a, Vec3 b, double eps = 1e-6) {
  EXPECT_NEAR(a.x, b.x, eps);
  EXPECT_NEAR(a.y, b.y, eps);
  EXPECT_NEAR(a.z, b.z, eps);
}

TEST(GeometryTest, ArbitraryAxisAlgorithm) {
  ExpectNear(OcsToWcs({0, 0, 1}).Apply({1, 2, 3}), {1, 2, 3});
  // Mirrored: x turns round.
  ExpectNear(OcsToWcs({0, 0, -1}).Apply({1, 2, 0}), {-1, 2, 0});
  // N along X: Ax = Z x N = (0,1,0), Ay = N x Ax = (0,0,1).
  ExpectNear(OcsToWcs({2, 0, 0}).Apply({1, 2, 3}), {3, 1, 2});
}

TEST(GeometryTest, InverseUndoesAChain) {
  Affine m = Affine::Translation({5, -3, 1})
                 .Then(Affine::RotationZ(0.7))
                 .Then(Affine::Scaling({2, -0.5, 3}));
  ExpectNear(m.Inverse().Apply(m.Apply({1.5, 2.5, -4})), {1.5, 2.5, -4});
}

// An A1 frame at 5000,3000 turned 30 degrees, shown at 1:50 on an A1 sheet
// (checked against ezdxf's viewport matrix): its corners land on the sheet
// corners.
TEST(GeometryTest, ViewportMapsItsFrameOntoThePaper) {
  LMT_SKIP_WITHOUT_SHARED();
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Load(testing::SamplePath("s_AC1032.dxf"), &doc).ok());
  Layout sheet(Entity{});
  ASSERT_TRUE(AddLayout(*doc, "A1", &sheet).ok());
  ViewportSettings entry;
  entry.center = {420.5, 297, 0};
  entry.width = 841;
  entry.height = 594;
  entry.view_center_x = 5830.127018922193;
  entry.view_center_y = 98.07621135331502;
  entry.view_height = 29700;
  entry.twist = 330;
  Viewport vp = AddViewport(*doc, LayoutBlock(*doc, sheet), entry);
  Affine to_paper = ViewportModelToPaper(vp);
  Affine to_model = ViewportPaperToModel(vp);
  double a = 30 * std::numbers::pi / 180;
  for (int i = 0; i < 4; ++i) {
    double lx = (i == 1 || i == 2) ? 21025 : -21025;
    double ly = i >= 2 ? 14850 : -14850;
    Vec3 corner{5000 + lx * std::cos(a) - ly * std::sin(a),
                3000 + lx * std::sin(a) + ly * std::cos(a), 0};
    Vec3 paper{lx > 0 ? 841.0 : 0.0, ly > 0 ? 594.0 : 0.0, 0};
    ExpectNear(to_paper.Apply(corner), paper);
    ExpectNear(to_model.Apply(paper), corner, 1e-5);
  }
}

TEST(GeometryTest, InsertPlacesItsAttributeDefinitions) {
  LMT_SKIP_WITHOUT_SHARED();
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Load(testing::SamplePath("s_AC1032.dxf"), &doc).ok());
  Insert ins(doc->FindByHandle(0x704));
  Block* block = doc->FindBlock(ins.block_name());
  ASSERT_NE(block, nullptr);
  Affine m = InsertTransform(*doc, ins);
  Attrib attrib = ins.FindAttrib("ATTINFO");
  ASSERT_TRUE(attrib.valid());
  for (RecordId id : block->entities) {
    Entity e = doc->entity(id);
    if (e.type() == "ATTDEF" && Attrib(e).tag() == "ATTINFO") {
      ExpectNear(m.Apply(Attrib(e).insert_point()), attrib.insert_point(),
                 1e-6);
    }
  }
}

TEST(GeometryTest, XrefsResolveRelativeAndAbsolutePaths) {
  std::string host = std::string(LMT_TESTDATA_DIR) + "/dxfhost/viewports.dxf";
  std::unique_ptr<Document> doc;
  ASSERT_TRUE(Document::Load(host, &doc).ok());
  Block* part = doc->FindBlock("part");
  ASSERT_NE(part, nullptr);
  std::unique_ptr<Document> xref;
  ASSERT_TRUE(LoadXref(*doc, *part, host, &xref).ok());
  EXPECT_FALSE(xref->model_space()->entities.empty());
  // The same file named by its absolute path, from a drawing elsewhere.
  std::string absolute = std::filesystem::absolute(
                             std::filesystem::path(XrefPath(*doc, *part, host)))
                             .string();
  doc->entity(part->begin).Set(1, absolute);
  ASSERT_TRUE(LoadXref(*doc, *part, "/nowhere/else.dxf", &xref).ok());
  EXPECT_FALSE(LoadXref(*doc, *doc->FindBlock("TB"), host, &xref).ok());
}

}  // namespace
}  // namespace lmt::dxf

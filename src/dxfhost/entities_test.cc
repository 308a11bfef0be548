// Entities of the embedded host on real drawings: ids, class names,
// properties, block references and attributes, texts, extents, erase.
#include "dxfhost/entities.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "dxfhost/test_support.h"
#include "testing/test_paths.h"

namespace lmt::dxfhost {
namespace {

TEST(EntitiesTest, ObjectIdIsTheHandleValue) {
  test::Session s(test::TestdataPath("example.dxf"));
  Result<host::BlockPtr> model = s.doc->ModelSpace();
  ASSERT_TRUE(model.ok());
  Result<host::EntityPtr> first = (*model)->Item(0);
  ASSERT_TRUE(first.ok());
  EXPECT_EQ(*(*first)->Handle(), "94");
  EXPECT_EQ(*(*first)->ObjectID(), 0x94);
  Result<host::ObjectPtr> again = s.doc->ObjectIdToObject(0x94);
  ASSERT_TRUE(again.ok());
  EXPECT_EQ(*host::As<host::Entity>(*again)->Handle(), "94");
  EXPECT_EQ(s.doc->ObjectIdToObject(0xFFFFFF).status().code(),
            StatusCode::kNotFound);
}

// Some CAD programs number handles above 2^63: ids must keep all 64 bits
// through ObjectID, OwnerID and ObjectIdToObject.
TEST(EntitiesTest, IdsAboveTwoToTheSixtyThreeFindTheirObjects) {
  test::Session s(test::TestdataPath("dxf/format_2018_high_handles.dxf"));
  ASSERT_TRUE(s.doc);
  Result<host::BlockPtr> model = s.doc->ModelSpace();
  ASSERT_TRUE(model.ok());
  Result<host::EntityPtr> first = (*model)->Item(0);
  ASSERT_TRUE(first.ok());
  EXPECT_EQ(*(*first)->Handle(), "800000000000002F");
  EXPECT_EQ(*(*first)->ObjectID(), 0x800000000000002Fu);
  Result<host::ObjectPtr> again =
      s.doc->ObjectIdToObject(*(*first)->ObjectID());
  ASSERT_TRUE(again.ok()) << again.status().ToString();
  EXPECT_EQ(*host::As<host::Entity>(*again)->Handle(), "800000000000002F");
  Result<uint64_t> owner = (*first)->OwnerID();
  ASSERT_TRUE(owner.ok());
  EXPECT_GT(*owner, 0x8000000000000000u);
  Result<host::ObjectPtr> block = s.doc->ObjectIdToObject(*owner);
  ASSERT_TRUE(block.ok()) << block.status().ToString();
  EXPECT_EQ(*host::As<host::Block>(*block)->Name(), "*Model_Space");
  EXPECT_EQ(s.doc->ObjectIdToObject(0xFFFFFFFFFFFFFFFFu).status().code(),
            StatusCode::kNotFound);
}

TEST(EntitiesTest, ClassNamesAndKindsAgree) {
  test::Session s(test::TestdataPath("example.dxf"));
  struct Row {
    const char* handle;
    const char* name;
  };
  const Row kRows[] = {{"94", "AcDbBlockReference"},
                       {"98", "AcDbCircle"},
                       {"99", "AcDbLine"},
                       {"9A", "AcDbText"},
                       {"BE", "AcDbPolyline"}};
  for (const Row& row : kRows) {
    host::EntityPtr e = s.ByHandle(row.handle);
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(*e->ObjectName(), row.name);
  }
  EXPECT_NE(host::As<host::BlockReference>(s.ByHandle("94")), nullptr);
  EXPECT_NE(host::As<host::Polyline>(s.ByHandle("BE")), nullptr);
  EXPECT_NE(host::As<host::Text>(s.ByHandle("9A")), nullptr);
  EXPECT_EQ(host::As<host::Polyline>(s.ByHandle("98")), nullptr);
  EXPECT_EQ(ObjectNameOfType("MULTILEADER"), "AcDbMLeader");
  EXPECT_EQ(ObjectNameOfType("MTEXT"), "AcDbMText");
  EXPECT_EQ(ObjectNameOfType("VIEWPORT"), "AcDbViewport");
}

TEST(EntitiesTest, CommonPropertiesReadAndWrite) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::EntityPtr frame = s.ByHandle("94");
  EXPECT_EQ(*frame->Layer(), "FRAMES");
  EXPECT_EQ(*frame->Color(), 256);
  EXPECT_EQ(*frame->Linetype(), "BYLAYER");
  EXPECT_EQ(*frame->LineWeight(), -1);
  EXPECT_TRUE(*frame->Visible());
  Result<uint64_t> owner = frame->OwnerID();
  ASSERT_TRUE(owner.ok());
  Result<host::ObjectPtr> model = s.doc->ObjectIdToObject(*owner);
  ASSERT_TRUE(model.ok());
  EXPECT_EQ(*host::As<host::Block>(*model)->Name(), "*Model_Space");

  ASSERT_TRUE(frame->SetLayer("CONTENT").ok());
  ASSERT_TRUE(frame->SetColor(3).ok());
  ASSERT_TRUE(frame->SetLineWeight(50).ok());
  EXPECT_EQ(*frame->Layer(), "CONTENT");
  EXPECT_EQ(*frame->Color(), 3);
  EXPECT_EQ(*frame->LineWeight(), 50);
  EXPECT_EQ(frame->SetLayer("NO_SUCH").code(), StatusCode::kNotFound);
  EXPECT_EQ(frame->SetLinetype("NO_SUCH").code(), StatusCode::kNotFound);
}

TEST(EntitiesTest, PolylineVertices) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::PolylinePtr rotated = host::As<host::Polyline>(s.ByHandle("C2"));
  Result<std::vector<double>> xy = rotated->Coordinates();
  ASSERT_TRUE(xy.ok());
  ASSERT_EQ(xy->size(), 8u);
  // Second corner: the start plus 42000 along 30 degrees.
  EXPECT_NEAR((*xy)[2] - (*xy)[0], 42000 * std::cos(std::numbers::pi / 6),
              1e-6);
  EXPECT_NEAR((*xy)[3] - (*xy)[1], 42000 * std::sin(std::numbers::pi / 6),
              1e-6);
  Result<host::Point> p = rotated->Coordinate(3);
  ASSERT_TRUE(p.ok());
  EXPECT_EQ(p->x, (*xy)[6]);
  EXPECT_EQ(rotated->Coordinate(4).status().code(), StatusCode::kNotFound);
  EXPECT_TRUE(*rotated->Closed());
}

TEST(EntitiesTest, BlockReferenceAndAttributes) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::BlockReferencePtr ref =
      host::As<host::BlockReference>(s.ByHandle("9B"));
  EXPECT_EQ(*ref->Name(), "FRAME_A3");
  EXPECT_EQ(*ref->EffectiveName(), "FRAME_A3");
  EXPECT_EQ(*ref->Rotation(), 0);
  EXPECT_EQ(*ref->XScaleFactor(), 1);
  EXPECT_EQ(ref->InsertionPoint()->x, 47000);
  EXPECT_TRUE(*ref->HasAttributes());
  Result<std::vector<host::AttributePtr>> attrs = ref->GetAttributes();
  ASSERT_TRUE(attrs.ok());
  ASSERT_EQ(attrs->size(), 2u);
  EXPECT_EQ(*(*attrs)[0]->TagString(), "SHEET");
  EXPECT_EQ(*(*attrs)[0]->TextString(), "A-02");
  EXPECT_EQ(*(*attrs)[1]->TextString(), "Ground floor");
  ASSERT_TRUE((*attrs)[1]->SetTextString("Plan 1").ok());
  EXPECT_EQ(*(*ref->GetAttributes())[1]->TextString(), "Plan 1");
  EXPECT_TRUE(ref->GetConstantAttributes()->empty());
}

TEST(EntitiesTest, ConstantAttributesComeFromTheDefinition) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  Result<host::BlockPtr> model = s.doc->ModelSpace();
  host::BlockReferencePtr ref =
      host::As<host::BlockReference>(*(*model)->Item(0));
  ASSERT_NE(ref, nullptr);
  Result<std::vector<host::AttributePtr>> attrs = ref->GetAttributes();
  ASSERT_EQ(attrs->size(), 1u);
  EXPECT_EQ(*(*attrs)[0]->TagString(), "NO");
  Result<std::vector<host::AttributePtr>> constant =
      ref->GetConstantAttributes();
  ASSERT_TRUE(constant.ok());
  ASSERT_EQ(constant->size(), 1u);
  EXPECT_EQ(*(*constant)[0]->TagString(), "FIRM");
  EXPECT_EQ(*(*constant)[0]->TextString(), "ACME");
  EXPECT_EQ(*(*constant)[0]->ObjectName(), "AcDbAttributeDefinition");
}

TEST(EntitiesTest, DynamicBlockReferencesGiveTheirEffectiveName) {
  LMT_SKIP_WITHOUT_SHARED();
  test::Session s(test::SamplePath("dynvis.dxf"));
  ASSERT_TRUE(s.doc);
  Result<host::BlockPtr> model = s.doc->ModelSpace();
  Result<std::vector<host::EntityPtr>> items = (*model)->Items();
  ASSERT_TRUE(items.ok());
  ASSERT_EQ(items->size(), 4u);
  for (const host::EntityPtr& e : *items) {
    host::BlockReferencePtr ref = host::As<host::BlockReference>(e);
    ASSERT_NE(ref, nullptr);
    EXPECT_EQ(ref->Name()->substr(0, 2), "*U");
    EXPECT_EQ(*ref->EffectiveName(), "block_visibility_parameter");
  }
}

TEST(EntitiesTest, TextsOfTheSampleDrawing) {
  LMT_SKIP_WITHOUT_SHARED();
  test::Session s(test::SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(s.doc);
  SCOPED_TRACE("s_AC1032");
  int texts = 0, mtexts = 0, leaders = 0;
  Result<host::BlocksPtr> blocks = s.doc->Blocks();
  std::vector<host::BlockPtr> all = *(*blocks)->Items();
  for (const host::BlockPtr& b : all) {
    std::vector<host::EntityPtr> entities = *b->Items();
    for (const host::EntityPtr& e : entities) {
      if (auto t = host::As<host::Text>(e)) {
        texts += t->TextString().ok();
      } else if (auto m = host::As<host::MText>(e)) {
        mtexts += m->TextString().ok();
      } else if (auto l = host::As<host::MLeader>(e)) {
        Result<std::string> text = l->TextString();
        ASSERT_TRUE(text.ok());
        ASSERT_TRUE(l->SetTextString("New leader").ok());
        EXPECT_EQ(*l->TextString(), "New leader");
        ++leaders;
      }
    }
  }
  EXPECT_GT(texts + mtexts, 0);
  EXPECT_GT(leaders, 0);
}

void ExpectBox(const host::BoundingBox& box, double x0, double y0, double x1,
               double y1, double eps = 1e-6) {
  EXPECT_NEAR(box.min.x, x0, eps);
  EXPECT_NEAR(box.min.y, y0, eps);
  EXPECT_NEAR(box.max.x, x1, eps);
  EXPECT_NEAR(box.max.y, y1, eps);
}

TEST(EntitiesTest, BoundingBoxes) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  std::vector<host::EntityPtr> items = *(*s.doc->ModelSpace())->Items();
  ASSERT_EQ(items.size(), 7u);
  // The block: its 100 x 50 outline (attribute texts lie inside it).
  ExpectBox(*items[0]->GetBoundingBox(), 0, 0, 100, 50);
  // A half circle bulging below the chord (0,0)-(10,0).
  ExpectBox(*items[1]->GetBoundingBox(), 0, -5, 10, 0);
  // The xref's line, read from xref_part.dxf and moved to (1000, 0).
  ExpectBox(*items[2]->GetBoundingBox(), 1000, 0, 1100, 50);
  ExpectBox(*items[3]->GetBoundingBox(), 4900, 2900, 5100, 3100);

  test::Session example(test::TestdataPath("example.dxf"));
  // The frame turned by 30 degrees: its corners' extents.
  double c = std::cos(std::numbers::pi / 6),
         sn = std::sin(std::numbers::pi / 6);
  Result<host::BoundingBox> turned = example.ByHandle("C2")->GetBoundingBox();
  ASSERT_TRUE(turned.ok());
  EXPECT_NEAR(turned->max.x - turned->min.x, 42000 * c + 29700 * sn, 1e-6);
  EXPECT_NEAR(turned->max.y - turned->min.y, 42000 * sn + 29700 * c, 1e-6);
  // A text: 800 high, about 0.6 of that per character.
  Result<host::BoundingBox> text = example.ByHandle("9A")->GetBoundingBox();
  ASSERT_TRUE(text.ok());
  EXPECT_NEAR(text->max.y - text->min.y, 800, 1e-6);
  EXPECT_NEAR(text->max.x - text->min.x, 0.6 * 800 * 9, 1e-6);
}

TEST(EntitiesTest, EraseSaveAndReopen) {
  std::string dir = test::ScratchDir();
  std::string out = dir + "/erased.dxf";
  {
    test::Session s(test::TestdataPath("example.dxf"));
    host::EntityPtr frame = s.ByHandle("94");
    ASSERT_TRUE(frame->Erase().ok());
    EXPECT_EQ(frame->Layer().status().code(), StatusCode::kNotFound);
    EXPECT_EQ(*(*s.doc->ModelSpace())->Count(), 29);
    ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  }
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
  test::Session reopened(out);
  EXPECT_EQ(*(*reopened.doc->ModelSpace())->Count(), 29);
  EXPECT_EQ(reopened.doc->ObjectIdToObject(0x94).status().code(),
            StatusCode::kNotFound);
}

}  // namespace
}  // namespace lmt::dxfhost

namespace lmt::dxfhost {
namespace {

// Every entity of every sample answers the common members without a crash
// (R12, 2000, 2018 ASCII and binary, dynamic blocks).
TEST(EntitiesTest, EveryEntityOfEverySampleAnswers) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* name :
       {"s_AC1009.dxf", "s_AC1015.dxf", "s_AC1032.dxf", "s_AC1032_bin.dxf",
        "dynvis.dxf", "text_negative_extrusion.dxf",
        "Minimal_DXF_AC1021.dxf"}) {
    SCOPED_TRACE(name);
    test::Session s(test::SamplePath(name));
    ASSERT_NE(s.doc, nullptr);
    int boxes = 0, entities = 0;
    std::vector<host::BlockPtr> blocks = *(*s.doc->Blocks())->Items();
    for (const host::BlockPtr& b : blocks) {
      std::vector<host::EntityPtr> items = *b->Items();
      for (const host::EntityPtr& e : items) {
        ++entities;
        EXPECT_TRUE(e->ObjectName().ok());
        EXPECT_TRUE(e->Layer().ok());
        EXPECT_TRUE(e->OwnerID().ok());
        Result<host::BoundingBox> box = e->GetBoundingBox();
        if (box.ok()) {
          ++boxes;
          EXPECT_LE(box->min.x, box->max.x);
          EXPECT_LE(box->min.y, box->max.y);
        }
        if (auto ref = host::As<host::BlockReference>(e)) {
          EXPECT_TRUE(ref->EffectiveName().ok());
          EXPECT_TRUE(ref->GetAttributes().ok());
          EXPECT_TRUE(ref->GetConstantAttributes().ok());
        }
      }
    }
    if (entities > 0) {
      EXPECT_GT(boxes, 0);
    }
  }
}

TEST(EntitiesTest, ViewportSettersKeepTheFileValid) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  ASSERT_TRUE(
      s.doc->SetVariable("CTAB", host::Variant(std::string("Sheet"))).ok());
  std::vector<host::EntityPtr> items = *(*s.doc->PaperSpace())->Items();
  host::PViewportPtr vp = host::As<host::PViewport>(items.back());
  ASSERT_NE(vp, nullptr);
  ASSERT_TRUE(vp->SetDirection(host::Point{0, 0, 1}).ok());
  ASSERT_TRUE(vp->SetStandardScale(host::kCustomScale).ok());
  EXPECT_EQ(vp->SetStandardScale(1).code(), StatusCode::kNotSupported);
  ASSERT_TRUE(vp->SetCustomScale(0.02).ok());
  EXPECT_NEAR(*vp->CustomScale(), 0.02, 1e-12);
  ASSERT_TRUE(vp->SetHeight(200).ok());  // the scale stays
  EXPECT_NEAR(*vp->CustomScale(), 0.02, 1e-12);
  ASSERT_TRUE(vp->SetTwistAngle(-std::numbers::pi / 6).ok());
  EXPECT_NEAR(*vp->TwistAngle(), 2 * std::numbers::pi - std::numbers::pi / 6,
              1e-9);
  ASSERT_TRUE(vp->SetTarget(host::Point{5000, 3000, 0}).ok());
  EXPECT_EQ(*vp->Target(), (host::Point{5000, 3000, 0}));
  ASSERT_TRUE(vp->Display(false).ok());
  EXPECT_FALSE(*vp->ViewportOn());
  ASSERT_TRUE(vp->Display(true).ok());
  EXPECT_TRUE(*vp->ViewportOn());
  ASSERT_TRUE(vp->SetLayer("VP").ok());
  ASSERT_TRUE(vp->SetDisplayLocked(true).ok());
  EXPECT_TRUE(*vp->DisplayLocked());

  Result<host::EntityPtr> copy = vp->Copy();
  ASSERT_TRUE(copy.ok()) << copy.status().ToString();
  host::PViewportPtr second = host::As<host::PViewport>(*copy);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(*second->Handle(), *vp->Handle());
  ASSERT_TRUE(second->SetWidth(100).ok());
  ASSERT_TRUE(
      second->Move(host::Point{160, 48.5, 0}, host::Point{10, 10, 0}).ok());
  EXPECT_EQ(*second->Center(), (host::Point{60, 110, 0}));
  EXPECT_NEAR(*second->CustomScale(), 0.02, 1e-12);

  std::string out = test::ScratchDir() + "/viewports.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
}

TEST(EntitiesTest, NewTextsAndPolylinesInABlock) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::BlockPtr model = *s.doc->ModelSpace();
  Result<host::TextPtr> text = model->AddText("Лист 1", {10, 20, 0}, 5);
  ASSERT_TRUE(text.ok());
  EXPECT_EQ(*(*text)->TextString(), "Лист 1");
  EXPECT_EQ(*(*text)->Height(), 5);
  Result<host::MTextPtr> mtext = model->AddMText({0, 0, 0}, 100, "A\\PB");
  ASSERT_TRUE(mtext.ok());
  ASSERT_TRUE((*mtext)->SetAttachmentPoint(5).ok());
  EXPECT_EQ(*(*mtext)->AttachmentPoint(), 5);
  Result<host::PolylinePtr> pl =
      model->AddLightWeightPolyline({0, 0, 10, 0, 10, 10});
  ASSERT_TRUE(pl.ok());
  ASSERT_TRUE((*pl)->SetClosed(true).ok());
  EXPECT_EQ(*(*pl)->Coordinates(), (std::vector<double>{0, 0, 10, 0, 10, 10}));
  EXPECT_EQ(model->AddLightWeightPolyline({1, 2, 3}).status().code(),
            StatusCode::kInvalidArgument);
  std::string out = test::ScratchDir() + "/added.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
}

// TEXT and MTEXT share their placement members; both kinds must keep them.
template <typename T>
void ExpectPlacedTextMembers(const std::shared_ptr<T>& text) {
  SCOPED_TRACE(*text->ObjectName());
  ASSERT_TRUE(text->SetInsertionPoint({3, 4, 0}).ok());
  EXPECT_EQ(text->InsertionPoint()->y, 4);
  EXPECT_EQ(text->SetHeight(0).code(), StatusCode::kInvalidArgument);
  ASSERT_TRUE(text->SetHeight(2.5).ok());
  EXPECT_EQ(*text->Height(), 2.5);
  EXPECT_EQ(text->SetStyleName("No such style").code(), StatusCode::kNotFound);
  ASSERT_TRUE(text->SetStyleName("OpenSans-Bold").ok());
  EXPECT_EQ(*text->StyleName(), "OpenSans-Bold");
  ASSERT_TRUE(text->SetTextString("Лист 2").ok());
  EXPECT_EQ(*text->TextString(), "Лист 2");
  ASSERT_TRUE(text->Erase().ok());
  EXPECT_EQ(text->Height().status().code(), StatusCode::kNotFound);
}

TEST(EntitiesTest, PlacedTextMembersOfBothKinds) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::BlockPtr model = *s.doc->ModelSpace();
  ExpectPlacedTextMembers(*model->AddText("A", {0, 0, 0}, 1));
  ExpectPlacedTextMembers(*model->AddMText({0, 0, 0}, 10, "B"));
}

}  // namespace
}  // namespace lmt::dxfhost

// Typed views over the sample drawings: read, edit, write, read back, and
// have ezdxf audit what we wrote.
#include <gtest/gtest.h>

#include "dxf/document.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "dxf/test_util.h"
#include "dxf/text.h"
#include "dxf/viewport.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

class EntitiesTest : public ::testing::Test {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_SHARED(); }
  void Open(const std::string& name) {
    Status s = Document::Load(testing::SamplePath(name), &doc_);
    ASSERT_TRUE(s.ok()) << s.ToString();
  }
  // First entity of `type` in any block, children included.
  Entity First(std::string_view type, int skip = 0) {
    for (auto& b : doc_->blocks()) {
      for (RecordId id : b->entities) {
        for (RecordId c : doc_->db().children(id)) {
          if (doc_->entity(c).type() == type && skip-- == 0) {
            return doc_->entity(c);
          }
        }
        if (doc_->entity(id).type() == type && skip-- == 0) {
          return doc_->entity(id);
        }
      }
    }
    return Entity();
  }
  // Saves, checks the file with ezdxf, and loads it back into doc_.
  void SaveCheckAndReload(const std::string& name) {
    std::string path = testing::TempPath(name);
    ASSERT_TRUE(doc_->Save(path).ok());
    EXPECT_EQ(testing::Problems(path), "");
    Status s = Document::Load(path, &doc_);
    ASSERT_TRUE(s.ok()) << s.ToString();
  }
  Entity Reloaded(uint64_t handle) { return doc_->FindByHandle(handle); }

  std::unique_ptr<Document> doc_;
};

TEST_F(EntitiesTest, LwPolylineVerticesRoundTrip) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  Entity e = First("LWPOLYLINE");
  ASSERT_TRUE(e.valid());
  LwPolyline pl(e);
  EXPECT_EQ(pl.vertices().size(), static_cast<size_t>(pl.GetInt(90)));
  std::vector<LwVertex> rect = {{0, 0, 0, 0, 0},
                                {420, 0, 0, 0, 0},
                                {420, 297, 1, 2, 0},
                                {0, 297, 0, 0, 0.5}};
  pl.SetVertices(rect);
  pl.SetClosed(true);
  uint64_t h = pl.handle();
  SaveCheckAndReload("lwpolyline.dxf");
  LwPolyline back(Reloaded(h));
  EXPECT_EQ(back.vertices(), rect);
  EXPECT_TRUE(back.closed());
  // The count must open the subclass.
  int m = back.FindSubclass("AcDbPolyline");
  EXPECT_EQ(back.tags()[m + 1].code, 90u);
  EXPECT_EQ(back.GetInt(90), 4);
}

TEST_F(EntitiesTest, AttribValuesIncludingMultiLine) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  Entity e = First("INSERT");
  Insert ins(e);
  Attrib multi(Entity{});
  Insert with_multi(Entity{});
  for (auto& b : doc_->blocks()) {
    for (RecordId id : b->entities) {
      Entity x = doc_->entity(id);
      if (x.type() != "INSERT") continue;
      for (Attrib a : Insert(x).attribs()) {
        if (a.is_multiline()) {
          multi = a;
          with_multi = Insert(x);
        }
      }
    }
  }
  ASSERT_TRUE(multi.valid());
  EXPECT_EQ(multi.value(), "my multi line text for the attrrib");
  EXPECT_EQ(with_multi.FindAttrib("multi_line_att"), multi);
  multi.SetValue("Лист №1 Ø");
  uint64_t h = multi.handle();
  SaveCheckAndReload("attrib.dxf");
  Attrib back(Reloaded(h));
  EXPECT_EQ(back.value(), "Лист №1 Ø");
  EXPECT_EQ(back.GetString(1), "");  // the AcDbText 1 stays empty
}

TEST_F(EntitiesTest, SingleLineAttribAndText) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1015.dxf"));
  Entity a = First("ATTRIB");
  ASSERT_TRUE(a.valid());
  Attrib attrib(a);
  EXPECT_FALSE(attrib.is_multiline());
  attrib.SetValue("A-101");
  Text text(First("TEXT"));
  ASSERT_TRUE(text.valid());
  text.SetText("new text");
  uint64_t ha = attrib.handle(), ht = text.handle();
  SaveCheckAndReload("text.dxf");
  EXPECT_EQ(Attrib(Reloaded(ha)).value(), "A-101");
  EXPECT_EQ(Text(Reloaded(ht)).text(), "new text");
}

TEST_F(EntitiesTest, MTextSplitsLongTextIntoChunks) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  MText mt(First("MTEXT"));
  ASSERT_TRUE(mt.valid());
  std::string text;
  for (int i = 0; i < 120; ++i) text += "Ли\\U+00D8";  // 2-byte chars, escapes
  mt.SetText(text);
  EXPECT_EQ(mt.text(), text);
  for (const Tag& t : mt.tags()) {
    if (t.code != 3) continue;
    EXPECT_LE(t.size(), 250u);
    // Neither a UTF-8 sequence nor a \U+ escape is cut.
    unsigned char next = static_cast<unsigned char>(t.data()[t.size()]);
    EXPECT_NE(next & 0xC0, 0x80);
    EXPECT_EQ(t.value().find("\\U+", t.size() > 6 ? t.size() - 6 : 0),
              std::string_view::npos);
  }
  uint64_t h = mt.handle();
  SaveCheckAndReload("mtext.dxf");
  EXPECT_EQ(MText(Reloaded(h)).text(), text);
}

TEST_F(EntitiesTest, MLeaderTextReplacedAndProxyGraphicsDropped) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  MLeader ml(First("MULTILEADER"));
  ASSERT_TRUE(ml.valid());
  EXPECT_EQ(ml.text(), "MLeader text, hello!");
  size_t leader_lines = ml.GetAll(304).size();
  ASSERT_TRUE(ml.SetText("changed"));
  EXPECT_EQ(ml.Find(310), -1);
  EXPECT_EQ(ml.Find(160), -1);
  uint64_t h = ml.handle();
  SaveCheckAndReload("mleader.dxf");
  MLeader back(Reloaded(h));
  EXPECT_EQ(back.text(), "changed");
  EXPECT_EQ(back.GetAll(304).size(), leader_lines);
}

TEST_F(EntitiesTest, ViewportOnOffUsesFlagBit) {
  ASSERT_NO_FATAL_FAILURE(Open("text_negative_extrusion.dxf"));
  Viewport vp(First("VIEWPORT", 1));
  ASSERT_TRUE(vp.valid());
  EXPECT_TRUE(vp.is_on());  // even with 68 = 0 in a layout never shown
  vp.SetOn(false);
  EXPECT_FALSE(vp.is_on());
  EXPECT_EQ(vp.status(), 0);
  vp.SetOn(true, 2);
  vp.SetLocked(true);
  EXPECT_TRUE(vp.is_on());
  EXPECT_EQ(vp.status(), 2);
  uint64_t h = vp.handle();
  SaveCheckAndReload("viewport.dxf");
  EXPECT_TRUE(Viewport(Reloaded(h)).is_locked());
}

TEST_F(EntitiesTest, ViewportGeometryAndAttdefPrompt) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  Viewport vp(doc_->FindByHandle(0x245));
  ASSERT_EQ(vp.type(), "VIEWPORT");
  EXPECT_EQ(vp.id(), 2);
  EXPECT_EQ(vp.status(), 2);
  EXPECT_NEAR(vp.height() / vp.view_height(), 0.693488, 1e-6);
  EXPECT_EQ(vp.view_center(), (Vec3{6.0, 4.5, 0}));
  EXPECT_EQ(vp.view_direction(), (Vec3{0, 0, 1}));
  EXPECT_EQ(vp.twist(), 0);
  Attrib def(doc_->FindByHandle(0x796));
  ASSERT_EQ(def.type(), "ATTDEF");
  EXPECT_EQ(def.tag(), "MULTI_LINE_ATT");
  EXPECT_EQ(def.prompt(), "this is an example of prompt");
  EXPECT_TRUE(def.is_multiline());
}

TEST_F(EntitiesTest, CommonPropertiesInsertedInAcDbEntity) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  Entity line = First("LINE");
  ASSERT_TRUE(line.valid());
  line.SetLayer("FRAME");
  line.SetColor(1);
  line.SetLineweight(50);
  EXPECT_EQ(line.layer(), "FRAME");
  EXPECT_EQ(line.color(), 1);
  EXPECT_EQ(line.lineweight(), 50);
  int m = line.FindSubclass("AcDbEntity");
  EXPECT_GE(line.FindIn("AcDbEntity", 62), m);
}

TEST_F(EntitiesTest, DynamicBlockEffectiveName) {
  ASSERT_NO_FATAL_FAILURE(Open("dynvis.dxf"));
  int anonymous = 0;
  for (RecordId id : doc_->model_space()->entities) {
    Entity e = doc_->entity(id);
    if (e.type() != "INSERT") continue;
    Insert ins(e);
    if (ins.block_name().starts_with("*U")) {
      ++anonymous;
      EXPECT_EQ(EffectiveBlockName(*doc_, ins), "block_visibility_parameter");
    }
  }
  EXPECT_EQ(anonymous, 4);
}

TEST_F(EntitiesTest, EraseInsertTakesItsAttribsAlong) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  Entity target;
  for (RecordId id : doc_->model_space()->entities) {
    Entity e = doc_->entity(id);
    if (e.type() == "INSERT" && !Insert(e).attribs().empty()) target = e;
  }
  ASSERT_TRUE(target.valid());
  uint64_t h = target.handle();
  std::vector<uint64_t> kids;
  for (RecordId c : doc_->db().children(target.id())) {
    kids.push_back(doc_->entity(c).handle());
  }
  size_t before = doc_->model_space()->entities.size();
  doc_->Erase(target);
  EXPECT_EQ(doc_->model_space()->entities.size(), before - 1);
  SaveCheckAndReload("erase.dxf");
  EXPECT_FALSE(Reloaded(h).valid());
  for (uint64_t k : kids) EXPECT_FALSE(Reloaded(k).valid());
}

TEST_F(EntitiesTest, EraseAllCompactsEachBlockOnce) {
  ASSERT_NO_FATAL_FAILURE(Open("s_AC1032.dxf"));
  std::vector<Entity> doomed;
  size_t kept = 0;
  for (RecordId id : doc_->model_space()->entities) {
    Entity e = doc_->entity(id);
    if (e.type() == "INSERT" || e.type() == "LINE") {
      doomed.push_back(e);
    } else {
      ++kept;
    }
  }
  ASSERT_GT(doomed.size(), 1u);
  doomed.push_back(doomed.front());  // twice is harmless
  doc_->EraseAll(doomed);
  EXPECT_EQ(doc_->model_space()->entities.size(), kept);
  SaveCheckAndReload("erase_all.dxf");
  for (RecordId id : doc_->model_space()->entities) {
    EXPECT_NE(doc_->entity(id).type(), "INSERT");
  }
}

}  // namespace
}  // namespace lmt::dxf

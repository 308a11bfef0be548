// Erasing entities of a drawing written by a CAD program: what they own
// goes along, what survives forgets them, and the saved file is clean.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "dxf/document.h"
#include "dxf/objects.h"
#include "dxf/test_util.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

class EraseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    LMT_SKIP_WITHOUT_SHARED();
    Status s = Document::Load(testing::SamplePath("s_AC1032.dxf"), &doc_);
    ASSERT_TRUE(s.ok()) << s.ToString();
  }
  bool Live(uint64_t handle) { return doc_->FindByHandle(handle).valid(); }
  void EraseHandles(const std::vector<uint64_t>& handles) {
    std::vector<Entity> doomed;
    for (uint64_t h : handles) doomed.push_back(doc_->FindByHandle(h));
    doc_->EraseAll(doomed);
  }
  std::vector<uint64_t> GroupMembers(uint64_t group) {
    std::vector<uint64_t> out;
    for (std::string_view v : doc_->FindByHandle(group).GetAll(340)) {
      out.push_back(ParseHandle(v).value_or(0));
    }
    return out;
  }
  std::string SaveAndCheck(const std::string& name) {
    std::string path = testing::TempPath(name);
    Status s = doc_->Save(path);
    EXPECT_TRUE(s.ok()) << s.ToString();
    return testing::Problems(path);
  }

  std::unique_ptr<Document> doc_;
};

struct OwnedCase {
  const char* what;
  uint64_t entity;
  std::vector<uint64_t> owned;   // erased with it
  std::vector<uint64_t> shared;  // only pointed to: they stay
};

// The owner chains of the sample: a table's extension dictionary holds an
// XRECORD that owns the table's content and geometry; an image owns its
// definition's reactor; a solid owns its history and the history's graph.
const OwnedCase kOwned[] = {
    {"table", 0x528, {0x12CF, 0x12D0, 0x747, 0x748}, {0x87, 0x570}},
    {"image", 0x8C6, {0x8C5}, {0x8C4}},
    {"solid", 0xD65, {0xD66, 0xD67}, {}},
};

TEST_F(EraseTest, OwnedRecordsGoAlongAndSharedOnesStay) {
  for (const OwnedCase& c : kOwned) {
    SetUp();
    ASSERT_TRUE(Live(c.entity)) << c.what;
    doc_->Erase(doc_->FindByHandle(c.entity));
    EXPECT_FALSE(Live(c.entity)) << c.what;
    for (uint64_t h : c.owned) {
      EXPECT_FALSE(Live(h)) << c.what << " " << FormatHandle(h);
    }
    for (uint64_t h : c.shared) {
      EXPECT_TRUE(Live(h)) << c.what << " " << FormatHandle(h);
    }
    EXPECT_EQ(SaveAndCheck(std::string("erased_") + c.what + ".dxf"), "");
  }
}

TEST_F(EraseTest, ImageDefinitionForgetsTheErasedReactor) {
  ASSERT_EQ(doc_->FindByHandle(0x8C4).Reactors(),
            (std::vector<uint64_t>{0x8C2, 0x8C5}));
  doc_->Erase(doc_->FindByHandle(0x8C6));
  EXPECT_EQ(doc_->FindByHandle(0x8C4).Reactors(), std::vector<uint64_t>{0x8C2});
}

// Group *A1 (69E) holds the lines 698-69D, *A2 (6A5) the lines 69F-6A4.
TEST_F(EraseTest, GroupsLoseErasedMembersAndGoWhenEmpty) {
  Entity groups = doc_->FindByHandle(0xD);
  EraseHandles({0x69D, 0x69A});
  EXPECT_EQ(GroupMembers(0x69E),
            (std::vector<uint64_t>{0x69C, 0x69B, 0x699, 0x698}));
  EXPECT_EQ(doc_->DictionaryLookup(groups, "*A1"), 0x69Eu);

  EraseHandles({0x69C, 0x69B, 0x699, 0x698});
  EXPECT_FALSE(Live(0x69E));
  EXPECT_EQ(doc_->DictionaryLookup(groups, "*A1"), 0u);
  EXPECT_EQ(doc_->DictionaryLookup(groups, "*A2"), 0x6A5u);
  // Members of another group keep their reactor to it.
  EXPECT_EQ(doc_->FindByHandle(0x6A4).Reactors(), std::vector<uint64_t>{0x6A5});
  EXPECT_EQ(SaveAndCheck("erased_group.dxf"), "");
}

// A whole model space at once, as erasing outside a viewport may do.
// What names an erased entity without being reached from it: the draw
// order table, a layout's last active viewport, another entity's XDATA.
TEST_F(EraseTest, ReferencesFromElsewhereForgetTheErased) {
  constexpr uint64_t kSorted = 0x353, kSortTable = 0x355, kOther = 0x35A;
  Entity other = doc_->FindByHandle(kOther);
  ASSERT_TRUE(other.valid());
  const Tag link[] = {doc_->MakeTag(1001, "ACAD"), doc_->MakeTag(1005, "353")};
  other.InsertTags(static_cast<int>(other.tags().size()), link);
  Layout layout{Entity()};
  uint64_t last_viewport = 0;
  for (const Layout& l : Layouts(*doc_)) {
    int at = l.FindIn("AcDbLayout", 331);
    uint64_t h = at >= 0 ? ParseHandle(l.tags()[at].value()).value_or(0) : 0;
    Entity vp = doc_->FindByHandle(h);
    if (vp.valid() && vp.type() == "VIEWPORT") {
      layout = l;
      last_viewport = h;
      break;
    }
  }
  ASSERT_NE(last_viewport, 0u);
  EraseHandles({kSorted, last_viewport});
  // The layout has lost its own viewport: that problem is this test's.
  const std::string path = testing::TempPath("forgotten.dxf");
  ASSERT_TRUE(doc_->Save(path).ok());
  EXPECT_EQ(testing::Problems(path, 1), "");
  auto sorted = doc_->FindByHandle(kSortTable).GetAll(331);
  EXPECT_EQ(std::count(sorted.begin(), sorted.end(), "353"), 0);
  EXPECT_EQ(std::count(sorted.begin(), sorted.end(), "35A"), 1);
  EXPECT_EQ(other.tags().back().value(), "0");
  EXPECT_LT(layout.FindIn("AcDbLayout", 331), 0);
}

// Entities made and erased in one run: only what was made or edited since
// loading can name them, and those names are forgotten all the same.
TEST_F(EraseTest, MadeAndErasedEntitiesAreForgottenByTheOthersMade) {
  auto line = [&] {
    return doc_->AddEntity(doc_->model_space(),
                           {doc_->MakeTag(0, "LINE"), doc_->MakeTag(8, "0"),
                            doc_->MakeTag(100, "AcDbLine")});
  };
  Entity doomed = line();
  Entity naming = line();
  const std::string name = FormatHandle(doomed.handle());
  const Tag link[] = {doc_->MakeTag(1001, "ACAD"), doc_->MakeTag(1005, name)};
  naming.InsertTags(static_cast<int>(naming.tags().size()), link);
  const std::vector<Entity> gone = {doomed};
  doc_->EraseAll(gone);
  EXPECT_EQ(SaveAndCheck("made_and_erased.dxf"), "");
  EXPECT_EQ(naming.tags().back().value(), "0");
}

TEST_F(EraseTest, EverythingInModelSpaceLeavesACleanFile) {
  std::vector<Entity> all;
  for (RecordId id : doc_->model_space()->entities) {
    all.push_back(doc_->entity(id));
  }
  doc_->EraseAll(all);
  EXPECT_TRUE(doc_->model_space()->entities.empty());
  EXPECT_EQ(doc_->DictionaryLookup(doc_->FindByHandle(0xD), "*A2"), 0u);
  EXPECT_EQ(SaveAndCheck("erased_model.dxf"), "");
}

}  // namespace
}  // namespace lmt::dxf

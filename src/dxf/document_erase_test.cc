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

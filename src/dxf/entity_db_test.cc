#include "dxf/entity_db.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace lmt::dxf {
namespace {

// A database of LINEs, one a handle, loaded in the given order (0 gives a
// record without a handle). Handle texts live in `texts`.
std::unique_ptr<EntityDb> Load(const std::vector<uint64_t>& handles,
                               std::vector<std::string>* texts) {
  texts->reserve(handles.size());  // the tags point into it
  std::vector<Tag> tags;
  for (uint64_t h : handles) {
    tags.emplace_back(0, "LINE");
    if (h != 0) {
      texts->push_back(FormatHandle(h));
      tags.emplace_back(5, texts->back());
    }
    tags.emplace_back(8, "0");
  }
  auto db = std::make_unique<EntityDb>();
  db->SetBase(std::move(tags));
  uint32_t begin = 0;
  for (uint64_t h : handles) {
    uint32_t end = begin + (h != 0 ? 3 : 2);
    db->AddLoaded(begin, end);
    begin = end;
  }
  return db;
}

TEST(EntityDbIndexTest, FindsEveryHandleWhateverTheOrder) {
  // In order, a few apart (the merge), a few made last written early, and
  // most apart (the full sort).
  std::vector<std::vector<uint64_t>> orders = {
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
      {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 2, 3},
      {1,  2,  0,  40, 41, 42, 43, 44, 45, 46,
       47, 48, 49, 50, 51, 52, 53, 54, 5,  0},
      {1, 2, 50, 51, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17},
      {1, 3, 4, 2, 5, 7, 8, 6, 9, 11, 12, 10, 13, 14, 15, 16, 17, 18, 19},
      {9, 8, 7, 6, 5, 4, 3, 2, 1},
      {100, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}};
  for (const auto& order : orders) {
    SCOPED_TRACE(::testing::PrintToString(order));
    std::vector<std::string> texts;
    std::unique_ptr<EntityDb> loaded = Load(order, &texts);
    EntityDb& db = *loaded;
    EXPECT_TRUE(db.BuildIndex().empty());
    uint64_t max = 0;
    for (RecordId id = 0; id < order.size(); ++id) {
      if (order[id] == 0) continue;
      EXPECT_EQ(db.Find(order[id]), id);
      max = std::max(max, order[id]);
    }
    EXPECT_EQ(db.max_handle(), max);
    EXPECT_EQ(db.Find(999), kNoRecord);
    EXPECT_EQ(db.Find(0), kNoRecord);
  }
}

TEST(EntityDbIndexTest, RepeatedHandlesKeepTheFirstRecord) {
  // Repeats both in order and out of it.
  std::vector<std::string> texts;
  std::unique_ptr<EntityDb> loaded =
      Load({1, 2, 3, 3, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 2, 8}, &texts);
  EntityDb& db = *loaded;
  std::vector<RecordId> dups = db.BuildIndex();
  std::sort(dups.begin(), dups.end());
  EXPECT_EQ(dups, (std::vector<RecordId>{3, 14, 15}));
  EXPECT_EQ(db.Find(2), 1u);
  EXPECT_EQ(db.Find(3), 2u);
  EXPECT_EQ(db.Find(8), 5u);
}

TEST(EntityDbTest, DetachedAndNewRecordsKeepTheirTags) {
  std::vector<std::string> texts;
  std::unique_ptr<EntityDb> loaded = Load({1, 2, 3}, &texts);
  EntityDb& db = *loaded;
  db.BuildIndex();
  // Detaching one record neither moves the others nor loses its own tags,
  // and references to detached tags survive more detaching and creating.
  std::vector<Tag>& first = db.Detach(0);
  first.emplace_back(62, "1");
  RecordId made = db.Create({Tag(0, "CIRCLE"), Tag(5, "A")});
  std::vector<Tag>& third = db.Detach(2);
  third.erase(third.begin() + 2);
  EXPECT_EQ(&db.Detach(0), &first);
  ASSERT_EQ(db.tags(0).size(), 4u);
  EXPECT_TRUE(db.tags(0)[3].Is(62, "1"));
  EXPECT_EQ(db.tags(1).size(), 3u);
  EXPECT_TRUE(db.tags(1)[1].Is(5, "2"));
  EXPECT_EQ(db.tags(2).size(), 2u);
  EXPECT_TRUE(db.tags(made)[0].Is(0, "CIRCLE"));
  EXPECT_EQ(db.Find(0xA), made);

  db.MarkErased(1);
  EXPECT_TRUE(db.erased(1));
  EXPECT_FALSE(db.erased(0));
  EXPECT_FALSE(db.erased(2));
  EXPECT_EQ(db.Find(2), kNoRecord);
  EXPECT_EQ(db.handle(1), 2u);
  // The erased record's tags are still there for anything that holds it.
  EXPECT_EQ(db.tags(1).size(), 3u);
}

}  // namespace
}  // namespace lmt::dxf

namespace lmt::dxf {
namespace {

TEST(EntityDbTypeTest, RecordsOfTypeFollowEditsAndNewRecords) {
  EntityDb db;
  std::vector<Tag> tags;
  for (const char* type : {"LINE", "CIRCLE", "LINE", "TEXT", "LINE"}) {
    tags.emplace_back(0, type);
    tags.emplace_back(8, "0");
  }
  db.SetBase(std::move(tags));
  for (uint32_t begin = 0; begin < 10; begin += 2) {
    db.AddLoaded(begin, begin + 2);
  }
  int asked = 0;
  auto lines = [&] {
    return db.RecordsOfType([&](std::string_view type) {
      ++asked;
      return type == "LINE";
    });
  };
  EXPECT_EQ(lines(), (std::vector<RecordId>{0, 2, 4}));
  EXPECT_EQ(asked, 3);  // once per type of the records as loaded
  auto loaded_type = [&](RecordId id) -> std::string_view {
    const uint16_t t = db.LoadedType(id);
    return t == EntityDb::kNoLoadedType ? "-" : db.loaded_types()[t];
  };
  EXPECT_EQ(db.loaded_types().size(), 3u);
  EXPECT_EQ(loaded_type(1), "CIRCLE");
  EXPECT_EQ(loaded_type(4), "LINE");

  // A loaded record turned into a LINE in place, another replaced by a
  // TEXT, one erased (still listed: callers check), and a new LINE.
  db.mutable_tags(3)[0] = Tag(0, "LINE");
  db.Detach(2) = {Tag(0, "TEXT"), Tag(8, "0")};
  db.MarkErased(4);
  const RecordId made = db.Create({Tag(0, "LINE"), Tag(8, "0")});
  db.mutable_tags(made)[1] = Tag(8, "1");
  EXPECT_EQ(lines(), (std::vector<RecordId>{0, 3, 4, made}));
  // Only the records still as loaded keep their loaded type.
  EXPECT_EQ(loaded_type(0), "LINE");
  EXPECT_EQ(loaded_type(2), "-");
  EXPECT_EQ(loaded_type(3), "-");
  EXPECT_EQ(loaded_type(made), "-");
  EXPECT_EQ(db.RecordsOfType([](std::string_view t) { return t == "TEXT"; }),
            std::vector<RecordId>{2});
  EXPECT_TRUE(
      db.RecordsOfType([](std::string_view t) { return t == "ARC"; }).empty());
}

// A damaged file may hold more made-up types than the index can number:
// those records go without one and are still found by their type.
TEST(EntityDbTypeTest, EveryTypeIsFoundBeyondTheIndexLimit) {
  constexpr int kTypes = 70000;
  std::vector<std::string> names;
  names.reserve(kTypes);
  for (int i = 0; i < kTypes; ++i) names.push_back("T" + std::to_string(i));
  EntityDb db;
  std::vector<Tag> tags;
  for (const std::string& name : names) tags.emplace_back(0, name);
  db.SetBase(std::move(tags));
  for (uint32_t i = 0; i < kTypes; ++i) db.AddLoaded(i, i + 1);
  size_t typed = 0;
  for (RecordId id = 0; id < kTypes; ++id) {
    const uint16_t t = db.LoadedType(id);
    if (t == EntityDb::kNoLoadedType) continue;
    ASSERT_EQ(db.loaded_types()[t], names[id]) << id;
    ++typed;
  }
  EXPECT_EQ(typed, db.loaded_types().size());
  EXPECT_GT(typed, 60000u);
  EXPECT_LT(typed, static_cast<size_t>(kTypes));
  for (RecordId id : {RecordId{0}, RecordId{40000}, RecordId{kTypes - 1}}) {
    EXPECT_EQ(db.RecordsOfType(
                  [&](std::string_view type) { return type == names[id]; }),
              std::vector<RecordId>{id});
  }
}

}  // namespace
}  // namespace lmt::dxf

#include "host/selection_set.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/entity.h"

namespace lmt::host {
namespace {

// An entity that answers only its object name; an empty name is refused.
class NamedEntity : public Entity {
 public:
  NamedEntity(std::shared_ptr<CallGate> gate, std::string name)
      : Entity(std::move(gate)), name_(std::move(name)) {}

 protected:
  Result<std::string> DoObjectName() const override {
    if (name_.empty()) return Status::Refused("no name");
    return name_;
  }

 private:
  std::string name_;
};

// A set that knows only its whole member list, as a COM host does.
class ListedSet : public SelectionSet {
 public:
  ListedSet(std::shared_ptr<CallGate> gate, std::vector<EntityPtr> items)
      : SelectionSet(std::move(gate)), items_(std::move(items)) {}

 protected:
  Result<std::vector<EntityPtr>> DoItems() const override { return items_; }

 private:
  std::vector<EntityPtr> items_;
};

TEST(SelectionSetTest, NamedWalkAsksEachMemberAndKeepsPositions) {
  auto gate = std::make_shared<CallGate>();
  std::vector<EntityPtr> items;
  for (const char* name :
       {"AcDbLine", "AcDbPolyline", "", "acdbBLOCKreference", "AcDbPolyline"}) {
    items.push_back(std::make_shared<NamedEntity>(gate, name));
  }
  ListedSet set(gate, items);
  const std::string_view names[] = {"AcDbPolyline", "AcDbBlockReference"};
  std::vector<int32_t> positions;
  ASSERT_TRUE(set.ForEachItemNamed(names,
                                   [&](const EntityPtr& e, int32_t at) {
                                     EXPECT_EQ(e, items[at]);
                                     positions.push_back(at);
                                     return true;
                                   })
                  .ok());
  EXPECT_EQ(positions, (std::vector<int32_t>{1, 3, 4}));

  positions.clear();
  ASSERT_TRUE(set.ForEachItemNamed(names,
                                   [&](const EntityPtr&, int32_t at) {
                                     positions.push_back(at);
                                     return false;
                                   })
                  .ok());
  EXPECT_EQ(positions, std::vector<int32_t>{1});

  gate->Refuse("SelectionSet.Items");
  EXPECT_EQ(set.ForEachItemNamed(names,
                                 [](const EntityPtr&, int32_t) { return true; })
                .code(),
            StatusCode::kRefused);
}

}  // namespace
}  // namespace lmt::host

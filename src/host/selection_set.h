// Named selection sets of a document. The add-in always deletes a set of the
// same name before adding it anew. Members are entities; AddItems/RemoveItems
// recognise them by their identity in the drawing (handle), not by pointer.
// Gate names and failure rules as in entity.h; both Select overloads share the
// gate name "SelectionSet.Select".
#ifndef LMT_HOST_SELECTION_SET_H_
#define LMT_HOST_SELECTION_SET_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"
#include "host/selection_filter.h"

namespace lmt::host {

// Selection modes of SelectionSet::Select, with the object model's values.
enum class SelectMode : int32_t {
  kWindow = 0,
  kCrossing = 1,
  kFence = 2,
  kPrevious = 3,
  kLast = 4,
  kAll = 5,
};

// A named selection set.
class SelectionSet : public Object {
 public:
  ~SelectionSet() override = default;

  Result<std::string> Name() const {
    return Gated("SelectionSet.Name", [&] { return DoName(); });
  }
  Result<int32_t> Count() const {
    return Gated("SelectionSet.Count", [&] { return DoCount(); });
  }
  // Member `index` (zero-based) in selection order.
  Result<EntityPtr> Item(int32_t index) const {
    return Gated("SelectionSet.Item", [&] { return DoItemAt(index); });
  }
  // Every member in selection order (the For Each walk).
  Result<std::vector<EntityPtr>> Items() const {
    return Gated("SelectionSet.Items", [&] { return DoItems(); });
  }
  // The same walk, one member at a time: `visit` gets each in selection
  // order until it returns false. A host may make each object only when its
  // turn comes, so that a walk over a whole drawing never holds an object
  // per entity at once. Shares the gate name of Items.
  Status ForEachItem(const std::function<bool(const EntityPtr&)>& visit) const {
    return Gated("SelectionSet.Items", [&] { return DoForEachItem(visit); });
  }
  // The same walk over the members whose ObjectName is one of `names`
  // (compared without regard to case); `visit` also gets the member's
  // position among all members. A host that knows an object's kind without
  // making the object passes over the others at little cost. Shares the
  // gate name of Items.
  Status ForEachItemNamed(
      std::span<const std::string_view> names,
      const std::function<bool(const EntityPtr&, int32_t)>& visit) const {
    return Gated("SelectionSet.Items",
                 [&] { return DoForEachItemNamed(names, visit); });
  }
  // Adds the objects that `mode` finds and `filter` admits (an empty filter
  // admits everything). kAll needs no corners.
  Status Select(SelectMode mode, const SelectionFilter& filter) {
    return Gated("SelectionSet.Select", [&] {
      return DoSelect(mode, std::nullopt, std::nullopt, filter);
    });
  }
  // Window and crossing selections between two corners (current UCS).
  Status Select(SelectMode mode, const Point& corner1, const Point& corner2,
                const SelectionFilter& filter) {
    return Gated("SelectionSet.Select",
                 [&] { return DoSelect(mode, corner1, corner2, filter); });
  }
  // Lets the user pick objects that pass `filter`; an empty pick leaves the set
  // empty and is not a failure. kCancelled when the user cancels.
  Status SelectOnScreen(const SelectionFilter& filter) {
    return Gated("SelectionSet.SelectOnScreen",
                 [&] { return DoSelectOnScreen(filter); });
  }
  Status AddItems(const std::vector<EntityPtr>& items) {
    return Gated("SelectionSet.AddItems", [&] { return DoAddItems(items); });
  }
  // Members not in the set are ignored.
  Status RemoveItems(const std::vector<EntityPtr>& items) {
    return Gated("SelectionSet.RemoveItems",
                 [&] { return DoRemoveItems(items); });
  }
  // Empties the set; the objects stay in the drawing.
  Status Clear() {
    return Gated("SelectionSet.Clear", [&] { return DoClear(); });
  }
  // Erases every member from the drawing and empties the set.
  Status Erase() {
    return Gated("SelectionSet.Erase", [&] { return DoErase(); });
  }
  // Removes the set itself from SelectionSets.
  Status Delete() {
    return Gated("SelectionSet.Delete", [&] { return DoDelete(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("SelectionSet.Name");
  }
  virtual Result<int32_t> DoCount() const {
    return Unsupported("SelectionSet.Count");
  }
  virtual Result<EntityPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("SelectionSet.Item");
  }
  virtual Result<std::vector<EntityPtr>> DoItems() const {
    return Unsupported("SelectionSet.Items");
  }
  // By default a walk over DoItems.
  virtual Status DoForEachItem(
      const std::function<bool(const EntityPtr&)>& visit) const {
    Result<std::vector<EntityPtr>> items = DoItems();
    if (!items.ok()) return items.status();
    for (const EntityPtr& item : *items) {
      if (!visit(item)) break;
    }
    return Status();
  }
  // By default a walk over DoForEachItem that asks each member its name; a
  // member whose name cannot be read is passed over.
  virtual Status DoForEachItemNamed(
      std::span<const std::string_view> names,
      const std::function<bool(const EntityPtr&, int32_t)>& visit) const;
  virtual Status DoSelectOnScreen(const SelectionFilter& /*filter*/) {
    return Unsupported("SelectionSet.SelectOnScreen");
  }
  virtual Status DoAddItems(const std::vector<EntityPtr>& /*items*/) {
    return Unsupported("SelectionSet.AddItems");
  }
  virtual Status DoRemoveItems(const std::vector<EntityPtr>& /*items*/) {
    return Unsupported("SelectionSet.RemoveItems");
  }
  virtual Status DoClear() { return Unsupported("SelectionSet.Clear"); }
  virtual Status DoErase() { return Unsupported("SelectionSet.Erase"); }
  virtual Status DoDelete() { return Unsupported("SelectionSet.Delete"); }
  virtual Status DoSelect(SelectMode /*mode*/,
                          const std::optional<Point>& /*corner1*/,
                          const std::optional<Point>& /*corner2*/,
                          const SelectionFilter& /*filter*/) {
    return Unsupported("SelectionSet.Select");
  }
};

// The document's selection sets.
class SelectionSets : public Object {
 public:
  ~SelectionSets() override = default;

  Result<int32_t> Count() const {
    return Gated("SelectionSets.Count", [&] { return DoCount(); });
  }
  // Zero-based; kNotFound out of range.
  Result<SelectionSetPtr> Item(int32_t index) const {
    return Gated("SelectionSets.Item", [&] { return DoItemAt(index); });
  }
  // By name, without regard to case; kNotFound when absent.
  Result<SelectionSetPtr> Item(std::string_view name) const {
    return Gated("SelectionSets.Item", [&] { return DoItemNamed(name); });
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<SelectionSetPtr>> Items() const {
    return Gated("SelectionSets.Items", [&] { return DoItems(); });
  }
  // A new empty set; kRefused when a set of that name exists (delete it
  // first, as every caller does).
  Result<SelectionSetPtr> Add(std::string_view name) {
    return Gated("SelectionSets.Add", [&] { return DoAdd(name); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("SelectionSets.Count");
  }
  virtual Result<SelectionSetPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("SelectionSets.Item");
  }
  virtual Result<SelectionSetPtr> DoItemNamed(std::string_view /*name*/) const {
    return Unsupported("SelectionSets.Item");
  }
  virtual Result<std::vector<SelectionSetPtr>> DoItems() const {
    return Unsupported("SelectionSets.Items");
  }
  virtual Result<SelectionSetPtr> DoAdd(std::string_view /*name*/) {
    return Unsupported("SelectionSets.Add");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_SELECTION_SET_H_

// Named selection sets of a document. The add-in always deletes a set of the
// same name before adding it anew. Members are entities; AddItems/RemoveItems
// recognise them by their identity in the drawing (handle), not by pointer.
// Gate names and failure rules as in entity.h; both Select overloads share the
// gate name "SelectionSet.Select".
#ifndef LMT_HOST_SELECTION_SET_H_
#define LMT_HOST_SELECTION_SET_H_

#include <cstdint>
#include <optional>
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
    if (Status s = Enter("SelectionSet.Name"); !s.ok()) return s;
    return DoName();
  }
  Result<int32_t> Count() const {
    if (Status s = Enter("SelectionSet.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Member `index` (zero-based) in selection order.
  Result<EntityPtr> Item(int32_t index) const {
    if (Status s = Enter("SelectionSet.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // Every member in selection order (the For Each walk).
  Result<std::vector<EntityPtr>> Items() const {
    if (Status s = Enter("SelectionSet.Items"); !s.ok()) return s;
    return DoItems();
  }
  // Adds the objects that `mode` finds and `filter` admits (an empty filter
  // admits everything). kAll needs no corners.
  Status Select(SelectMode mode, const SelectionFilter& filter) {
    if (Status s = Enter("SelectionSet.Select"); !s.ok()) return s;
    return DoSelect(mode, std::nullopt, std::nullopt, filter);
  }
  // Window and crossing selections between two corners (current UCS).
  Status Select(SelectMode mode, const Point& corner1, const Point& corner2,
                const SelectionFilter& filter) {
    if (Status s = Enter("SelectionSet.Select"); !s.ok()) return s;
    return DoSelect(mode, corner1, corner2, filter);
  }
  // Lets the user pick objects that pass `filter`; an empty pick leaves the set
  // empty and is not a failure. kCancelled when the user cancels.
  Status SelectOnScreen(const SelectionFilter& filter) {
    if (Status s = Enter("SelectionSet.SelectOnScreen"); !s.ok()) return s;
    return DoSelectOnScreen(filter);
  }
  Status AddItems(const std::vector<EntityPtr>& items) {
    if (Status s = Enter("SelectionSet.AddItems"); !s.ok()) return s;
    return DoAddItems(items);
  }
  // Members not in the set are ignored.
  Status RemoveItems(const std::vector<EntityPtr>& items) {
    if (Status s = Enter("SelectionSet.RemoveItems"); !s.ok()) return s;
    return DoRemoveItems(items);
  }
  // Empties the set; the objects stay in the drawing.
  Status Clear() {
    if (Status s = Enter("SelectionSet.Clear"); !s.ok()) return s;
    return DoClear();
  }
  // Erases every member from the drawing and empties the set.
  Status Erase() {
    if (Status s = Enter("SelectionSet.Erase"); !s.ok()) return s;
    return DoErase();
  }
  // Removes the set itself from SelectionSets.
  Status Delete() {
    if (Status s = Enter("SelectionSet.Delete"); !s.ok()) return s;
    return DoDelete();
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Result<int32_t> DoCount() const;
  virtual Result<EntityPtr> DoItemAt(int32_t index) const;
  virtual Result<std::vector<EntityPtr>> DoItems() const;
  virtual Status DoSelectOnScreen(const SelectionFilter& filter);
  virtual Status DoAddItems(const std::vector<EntityPtr>& items);
  virtual Status DoRemoveItems(const std::vector<EntityPtr>& items);
  virtual Status DoClear();
  virtual Status DoErase();
  virtual Status DoDelete();
  virtual Status DoSelect(SelectMode mode, const std::optional<Point>& corner1,
                          const std::optional<Point>& corner2,
                          const SelectionFilter& filter);
};

// The document's selection sets.
class SelectionSets : public Object {
 public:
  ~SelectionSets() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("SelectionSets.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Zero-based; kNotFound out of range.
  Result<SelectionSetPtr> Item(int32_t index) const {
    if (Status s = Enter("SelectionSets.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // By name, without regard to case; kNotFound when absent.
  Result<SelectionSetPtr> Item(std::string_view name) const {
    if (Status s = Enter("SelectionSets.Item"); !s.ok()) return s;
    return DoItemNamed(name);
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<SelectionSetPtr>> Items() const {
    if (Status s = Enter("SelectionSets.Items"); !s.ok()) return s;
    return DoItems();
  }
  // A new empty set; kRefused when a set of that name exists (delete it
  // first, as every caller does).
  Result<SelectionSetPtr> Add(std::string_view name) {
    if (Status s = Enter("SelectionSets.Add"); !s.ok()) return s;
    return DoAdd(name);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<SelectionSetPtr> DoItemAt(int32_t index) const;
  virtual Result<SelectionSetPtr> DoItemNamed(std::string_view name) const;
  virtual Result<std::vector<SelectionSetPtr>> DoItems() const;
  virtual Result<SelectionSetPtr> DoAdd(std::string_view name);
};

}  // namespace lmt::host

#endif  // LMT_HOST_SELECTION_SET_H_

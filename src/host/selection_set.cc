#include "host/selection_set.h"

namespace lmt::host {

Result<std::string> SelectionSet::DoName() const {
  return Unsupported("SelectionSet.Name");
}

Result<int32_t> SelectionSet::DoCount() const {
  return Unsupported("SelectionSet.Count");
}

Result<EntityPtr> SelectionSet::DoItemAt(int32_t /*index*/) const {
  return Unsupported("SelectionSet.Item");
}

Result<std::vector<EntityPtr>> SelectionSet::DoItems() const {
  return Unsupported("SelectionSet.Items");
}

Status SelectionSet::DoSelectOnScreen(const SelectionFilter& /*filter*/) {
  return Unsupported("SelectionSet.SelectOnScreen");
}

Status SelectionSet::DoAddItems(const std::vector<EntityPtr>& /*items*/) {
  return Unsupported("SelectionSet.AddItems");
}

Status SelectionSet::DoRemoveItems(const std::vector<EntityPtr>& /*items*/) {
  return Unsupported("SelectionSet.RemoveItems");
}

Status SelectionSet::DoClear() { return Unsupported("SelectionSet.Clear"); }

Status SelectionSet::DoErase() { return Unsupported("SelectionSet.Erase"); }

Status SelectionSet::DoDelete() { return Unsupported("SelectionSet.Delete"); }

Result<int32_t> SelectionSets::DoCount() const {
  return Unsupported("SelectionSets.Count");
}

Result<SelectionSetPtr> SelectionSets::DoItemAt(int32_t /*index*/) const {
  return Unsupported("SelectionSets.Item");
}

Result<SelectionSetPtr> SelectionSets::DoItemNamed(
    std::string_view /*name*/) const {
  return Unsupported("SelectionSets.Item");
}

Result<std::vector<SelectionSetPtr>> SelectionSets::DoItems() const {
  return Unsupported("SelectionSets.Items");
}

Result<SelectionSetPtr> SelectionSets::DoAdd(std::string_view /*name*/) {
  return Unsupported("SelectionSets.Add");
}

Status SelectionSet::DoSelect(SelectMode /*mode*/,
                              const std::optional<Point>& /*corner1*/,
                              const std::optional<Point>& /*corner2*/,
                              const SelectionFilter& /*filter*/) {
  return Unsupported("SelectionSet.Select");
}

}  // namespace lmt::host

#include "dxfhost/selection.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/text_case.h"
#include "dxfhost/entities.h"
#include "dxfhost/filter.h"
#include "dxfhost/geometry.h"

namespace lmt::dxfhost {
namespace {

// The block the user works in now (what window selections and picks see).
dxf::Block* CurrentSpace(Drawing& d) {
  if (d.IsModel(d.active_block) || d.InViewport()) {
    return d.doc->model_space();
  }
  return d.active_block;
}

class DxfSelectionSet : public host::SelectionSet {
 public:
  DxfSelectionSet(std::shared_ptr<Drawing> d,
                  std::shared_ptr<SelectionData> data)
      : host::SelectionSet(d->gate), d_(std::move(d)), data_(std::move(data)) {}

 protected:
  Status Live() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (data_->deleted)
      return Status::NotFound("the selection set was deleted");
    return Status();
  }
  // Members still in the drawing.
  std::vector<dxf::RecordId> Members() const {
    std::vector<dxf::RecordId> out;
    for (dxf::RecordId id : data_->members) {
      if (!d_->entity(id).erased()) out.push_back(id);
    }
    return out;
  }
  void Add(dxf::RecordId id) {
    if (std::find(data_->members.begin(), data_->members.end(), id) ==
        data_->members.end()) {
      data_->members.push_back(id);
    }
  }

  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return data_->name;
  }
  // Counted and indexed in place: a whole-drawing set holds a member per
  // entity, too many to copy for one number.
  Result<int32_t> DoCount() const override {
    if (Status s = Live(); !s.ok()) return s;
    int32_t live = 0;
    for (dxf::RecordId id : data_->members) {
      if (!d_->entity(id).erased()) ++live;
    }
    return live;
  }
  Result<host::EntityPtr> DoItemAt(int32_t index) const override {
    if (Status s = Live(); !s.ok()) return s;
    int32_t live = 0;
    for (dxf::RecordId id : data_->members) {
      if (d_->entity(id).erased()) continue;
      if (live++ == index) return MakeEntity(d_, id);
    }
    return Status::NotFound("index " + std::to_string(index) +
                            " is out of range");
  }
  Result<std::vector<host::EntityPtr>> DoItems() const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<host::EntityPtr> out;
    for (dxf::RecordId id : Members()) out.push_back(MakeEntity(d_, id));
    return out;
  }
  Status DoForEachItem(
      const std::function<bool(const host::EntityPtr&)>& visit) const override {
    if (Status s = Live(); !s.ok()) return s;
    for (dxf::RecordId id : Members()) {
      if (!visit(MakeEntity(d_, id))) break;
    }
    return Status();
  }
  Status DoForEachItemNamed(
      std::span<const std::string_view> names,
      const std::function<bool(const host::EntityPtr&, int32_t)>& visit)
      const override {
    if (Status s = Live(); !s.ok()) return s;
    // The name follows from the record's type, and a drawing holds few
    // types: each is named once, and only the members named are made.
    auto named = [&](std::string_view type) {
      const std::string name = ObjectNameOfType(type);
      return std::any_of(names.begin(), names.end(), [&](std::string_view n) {
        return core::EqualsIgnoreCase(name, n);
      });
    };
    // Records as loaded carry their type's index: no text is compared.
    const dxf::EntityDb& db = d_->doc->db();
    enum : int8_t { kUnasked = -1 };
    std::vector<int8_t> loaded_named(db.loaded_types().size(), kUnasked);
    std::vector<std::pair<std::string, bool>> types;  // of the others
    const std::vector<dxf::RecordId> members = Members();
    for (size_t i = 0; i < members.size(); ++i) {
      bool wanted;
      if (const uint16_t t = db.LoadedType(members[i]);
          t != dxf::EntityDb::kNoLoadedType) {
        if (loaded_named[t] == kUnasked) {
          loaded_named[t] = named(db.loaded_types()[t]) ? 1 : 0;
        }
        wanted = loaded_named[t] == 1;
      } else {
        std::string_view type = d_->entity(members[i]).type();
        auto known =
            std::find_if(types.begin(), types.end(),
                         [&](const auto& k) { return k.first == type; });
        if (known == types.end()) {
          known = types.emplace(types.end(), std::string(type), named(type));
        }
        wanted = known->second;
      }
      if (!wanted) continue;
      if (!visit(MakeEntity(d_, members[i]), static_cast<int32_t>(i))) break;
    }
    return Status();
  }
  Status DoSelect(host::SelectMode mode, const std::optional<host::Point>& c1,
                  const std::optional<host::Point>& c2,
                  const host::SelectionFilter& filter) override {
    if (Status s = Live(); !s.ok()) return s;
    Result<CompiledFilter> f = CompiledFilter::Compile(filter);
    if (!f.ok()) return f.status();
    if (mode == host::SelectMode::kAll) {
      // A whole-drawing selection adds many members: mark the earlier ones
      // in a bit per record, not by walking the list for each.
      std::vector<bool> present(d_->doc->db().size());
      for (dxf::RecordId id : data_->members) present[id] = true;
      auto take = [&](dxf::RecordId id, const LayoutInfo& layout) {
        dxf::Entity e = d_->entity(id);
        if (!e.erased() && !present[id] && f->Matches(*d_, e, layout.name)) {
          present[id] = true;
          data_->members.push_back(id);
        }
      };
      // A filter of one type (all viewports, say) looks only at the records
      // of that type instead of at every entity of the drawing.
      std::vector<dxf::RecordId> typed;
      if (f->NamesOneType()) {
        typed = d_->doc->db().RecordsOfType(
            [&](std::string_view type) { return f->AdmitsType(type); });
      }
      for (const LayoutInfo& layout : d_->Layouts()) {
        const std::vector<dxf::RecordId>& list = layout.block->entities;
        if (!f->NamesOneType() || list.size() <= typed.size() ||
            !std::is_sorted(list.begin(), list.end())) {
          for (dxf::RecordId id : list) take(id, layout);
          continue;
        }
        // New entities are appended with new, larger ids, so a block's
        // list is in record order unless a damaged file mixed it: then the
        // records of the type that it holds come in the list's order.
        for (dxf::RecordId id : typed) {
          if (std::binary_search(list.begin(), list.end(), id)) {
            take(id, layout);
          }
        }
      }
      return Status();
    }
    if (mode != host::SelectMode::kCrossing &&
        mode != host::SelectMode::kWindow) {
      return Status::NotSupported(
          "SelectionSet.Select: only the modes all, window and crossing are "
          "supported by this host");
    }
    if (!c1 || !c2) {
      return Status::InvalidArgument("window selections need two corners");
    }
    dxf::Block* space = CurrentSpace(*d_);
    std::string space_name = d_->SpaceName(space);
    // Corners are in the current UCS, a rotation about Z; entity extents
    // are carried into it, so a rotated UCS gets a rotated window.
    double angle = d_->IsModel(space) ? d_->ucs_angle : 0;
    double x0 = std::min(c1->x, c2->x), x1 = std::max(c1->x, c2->x);
    double y0 = std::min(c1->y, c2->y), y1 = std::max(c1->y, c2->y);
    for (dxf::RecordId id : space->entities) {
      dxf::Entity e = d_->entity(id);
      if (e.erased() || !f->Matches(*d_, e, space_name)) continue;
      std::optional<host::BoundingBox> box = EntityExtents(*d_, id);
      if (!box) continue;
      double ux0 = INFINITY, ux1 = -INFINITY, uy0 = INFINITY, uy1 = -INFINITY;
      for (double x : {box->min.x, box->max.x}) {
        for (double y : {box->min.y, box->max.y}) {
          host::Point u = Rotate(host::Point{x, y, 0}, -angle);
          ux0 = std::min(ux0, u.x);
          ux1 = std::max(ux1, u.x);
          uy0 = std::min(uy0, u.y);
          uy1 = std::max(uy1, u.y);
        }
      }
      bool hit = mode == host::SelectMode::kWindow
                     ? (ux0 >= x0 && ux1 <= x1 && uy0 >= y0 && uy1 <= y1)
                     : (ux1 >= x0 && ux0 <= x1 && uy1 >= y0 && uy0 <= y1);
      if (hit) Add(id);
    }
    return Status();
  }
  Status DoSelectOnScreen(const host::SelectionFilter& filter) override {
    if (Status s = Live(); !s.ok()) return s;
    Result<CompiledFilter> f = CompiledFilter::Compile(filter);
    if (!f.ok()) return f.status();
    if (d_->user == nullptr) {
      return Status::Cancelled("no user to pick objects");
    }
    Result<std::vector<std::string>> picked = d_->user->PickEntities(filter);
    if (!picked.ok()) return picked.status();
    for (const std::string& handle : *picked) {
      std::optional<uint64_t> h = dxf::ParseHandle(handle);
      dxf::Entity e = h ? d_->doc->FindByHandle(*h) : dxf::Entity();
      if (!e.valid() || e.erased()) continue;  // a pick of nothing
      dxf::Block* block = d_->BlockOfEntity(e.id());
      if (f->Matches(*d_, e, d_->SpaceName(block))) Add(e.id());
    }
    return Status();
  }
  Status DoAddItems(const std::vector<host::EntityPtr>& items) override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<dxf::RecordId> ids;
    for (const host::EntityPtr& item : items) {
      dxf::RecordId id = item ? RecordOf(*item, d_.get()) : dxf::kNoRecord;
      if (id == dxf::kNoRecord) {
        return Status::InvalidArgument(
            "AddItems: an object is not from this drawing");
      }
      ids.push_back(id);
    }
    for (dxf::RecordId id : ids) Add(id);
    return Status();
  }
  Status DoRemoveItems(const std::vector<host::EntityPtr>& items) override {
    if (Status s = Live(); !s.ok()) return s;
    for (const host::EntityPtr& item : items) {
      if (!item) continue;
      dxf::RecordId id = RecordOf(*item, d_.get());
      std::erase(data_->members, id);
    }
    return Status();
  }
  Status DoClear() override {
    if (Status s = Live(); !s.ok()) return s;
    data_->members.clear();
    return Status();
  }
  Status DoErase() override {
    if (Status s = Live(); !s.ok()) return s;
    // One engine erase for all: each block's list is compacted once.
    std::vector<dxf::Entity> doomed;
    for (dxf::RecordId id : Members()) doomed.push_back(d_->entity(id));
    d_->doc->EraseAll(doomed);
    data_->members.clear();
    return Status();
  }
  Status DoDelete() override {
    if (Status s = Live(); !s.ok()) return s;
    data_->deleted = true;
    std::erase(d_->selection_sets, data_);
    return Status();
  }

 private:
  std::shared_ptr<Drawing> d_;
  std::shared_ptr<SelectionData> data_;
};

class DxfSelectionSets : public host::SelectionSets {
 public:
  explicit DxfSelectionSets(std::shared_ptr<Drawing> d)
      : host::SelectionSets(d->gate), d_(std::move(d)) {}

 protected:
  host::SelectionSetPtr Wrap(const std::shared_ptr<SelectionData>& data) const {
    return std::make_shared<DxfSelectionSet>(d_, data);
  }
  Result<int32_t> DoCount() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return static_cast<int32_t>(d_->selection_sets.size());
  }
  Result<host::SelectionSetPtr> DoItemAt(int32_t index) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (index < 0 || static_cast<size_t>(index) >= d_->selection_sets.size()) {
      return Status::NotFound("index " + std::to_string(index) +
                              " is out of range");
    }
    return Wrap(d_->selection_sets[index]);
  }
  Result<host::SelectionSetPtr> DoItemNamed(
      std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    for (const auto& set : d_->selection_sets) {
      if (dxf::EqualsNoCase(set->name, name)) return Wrap(set);
    }
    return Status::NotFound("selection set \"" + std::string(name) +
                            "\" does not exist");
  }
  Result<std::vector<host::SelectionSetPtr>> DoItems() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<host::SelectionSetPtr> out;
    for (const auto& set : d_->selection_sets) out.push_back(Wrap(set));
    return out;
  }
  Result<host::SelectionSetPtr> DoAdd(std::string_view name) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    for (const auto& set : d_->selection_sets) {
      if (dxf::EqualsNoCase(set->name, name)) {
        return Status::Refused("selection set \"" + std::string(name) +
                               "\" already exists");
      }
    }
    auto data = std::make_shared<SelectionData>();
    data->name = std::string(name);
    d_->selection_sets.push_back(data);
    return Wrap(data);
  }

 private:
  std::shared_ptr<Drawing> d_;
};

}  // namespace

host::SelectionSetsPtr MakeSelectionSets(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfSelectionSets>(d);
}

}  // namespace lmt::dxfhost

#include "utilities/viewports_on_off.h"

#include <string>
#include <unordered_map>
#include <vector>

#include "core/text_case.h"
#include "host/block.h"
#include "host/entity.h"
#include "host/host_kind.h"
#include "host/object.h"
#include "host/selection_set.h"
#include "utilities/named_sets.h"

namespace lmt::utilities {
namespace {

constexpr std::string_view kViewportObjectName = "AcDbViewport";

// The set "NaborObiektov" holding every viewport of the drawing, or nullptr
// when the host would not make the set. A refused Select leaves it empty.
host::SelectionSetPtr SelectAllViewports(host::Document& document,
                                         host::SkipLog& skips) {
  Result<host::SelectionSetPtr> set =
      RecreateSelectionSet(document, kSetAllViewports);
  if (!set.ok()) {
    skips.Add(std::string(kSetAllViewports), "create set", set.status());
    return nullptr;
  }
  if (Status s = (*set)->Select(host::SelectMode::kAll, ViewportFilter());
      !s.ok()) {
    skips.Add(std::string(kSetAllViewports), "select", s);
  }
  return *set;
}

// The set's members in its order; empty when it has none or cannot be read.
std::vector<host::EntityPtr> Members(const host::SelectionSet& set,
                                     host::SkipLog& skips) {
  Result<int32_t> count = set.Count();
  if (!count.ok()) {
    skips.Add(std::string(kSetAllViewports), "count", count.status());
    return {};
  }
  if (*count == 0) return {};
  Result<std::vector<host::EntityPtr>> items = set.Items();
  if (!items.ok()) {
    skips.Add(std::string(kSetAllViewports), "walk", items.status());
    return {};
  }
  return std::move(*items);
}

// The handle of entity 0 of the block of the layout whose block is
// `owner_id`: that layout's own paper viewport. Found through the layout's
// name, as the object model walks it.
Result<std::string> OwnViewportHandle(const host::Document& document,
                                      uint64_t owner_id) {
  Result<host::ObjectPtr> owner = document.ObjectIdToObject(owner_id);
  if (!owner.ok()) return owner.status();
  host::BlockPtr owner_block = host::As<host::Block>(*owner);
  if (owner_block == nullptr) {
    return Status::NotFound("the owner is not a block");
  }
  Result<host::LayoutPtr> layout = owner_block->Layout();
  if (!layout.ok()) return layout.status();
  Result<std::string> layout_name = (*layout)->Name();
  if (!layout_name.ok()) return layout_name.status();
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return layouts.status();
  Result<host::LayoutPtr> by_name = (*layouts)->Item(*layout_name);
  if (!by_name.ok()) return by_name.status();
  Result<host::BlockPtr> block = (*by_name)->Block();
  if (!block.ok()) return block.status();
  Result<host::EntityPtr> first = (*block)->Item(0);
  if (!first.ok()) return first.status();
  return (*first)->Handle();
}

// OwnViewportHandle by owner: the viewports of one layout share the answer,
// which the walk would otherwise ask the host for once per viewport.
using OwnHandles = std::unordered_map<uint64_t, Result<std::string>>;

// One entity of the walk; counts and records into `report`.
void SwitchOne(const host::Document& document, const host::EntityPtr& entity,
               bool on, OwnHandles& own_handles, SwitchReport& report) {
  Result<std::string> handle = entity->Handle();
  if (!handle.ok()) {
    report.skips.Add("", "handle", handle.status());
    return;
  }
  Result<uint64_t> owner_id = entity->OwnerID();
  if (!owner_id.ok()) {
    report.skips.Add(*handle, "own viewport", owner_id.status());
    return;
  }
  auto known = own_handles.find(*owner_id);
  if (known == own_handles.end()) {
    known =
        own_handles.emplace(*owner_id, OwnViewportHandle(document, *owner_id))
            .first;
  }
  const Result<std::string>& own_handle = known->second;
  if (!own_handle.ok()) {
    report.skips.Add(*handle, "own viewport", own_handle.status());
    return;
  }
  if (core::EqualsIgnoreCase(*handle, *own_handle)) {
    ++report.own_viewports;
    return;
  }
  Result<std::string> object_name = entity->ObjectName();
  if (!object_name.ok()) {
    report.skips.Add(*handle, "object name", object_name.status());
    return;
  }
  if (!core::EqualsIgnoreCase(*object_name, kViewportObjectName)) return;
  host::PViewportPtr viewport = host::As<host::PViewport>(entity);
  if (viewport == nullptr) {
    report.skips.Add(*handle, "switch",
                     Status::NotSupported("no viewport interface"));
    return;
  }
  if (Status s = viewport->SetViewportOn(on); !s.ok()) {
    report.skips.Add(*handle, "switch", s);
    return;
  }
  ++report.switched;
  report.switched_handles.push_back(*handle);
}

void SwitchAll(const host::Document& document,
               const std::vector<host::EntityPtr>& members, host::User& user,
               bool on, SwitchReport& report) {
  user.SetProgressRange(static_cast<int32_t>(members.size()));
  user.SetProgressValue(0);
  int32_t done = 0;
  OwnHandles own_handles;
  for (const host::EntityPtr& entity : members) {
    user.PumpEvents();
    SwitchOne(document, entity, on, own_handles, report);
    user.SetProgressValue(++done);
  }
}

// The layout named `name` found by walking the collection (without regard to
// case), or nullptr when there is none or the walk failed (recorded).
host::LayoutPtr FindLayout(const host::Layouts& layouts, std::string_view name,
                           host::SkipLog& skips) {
  Result<std::vector<host::LayoutPtr>> items = layouts.Items();
  if (!items.ok()) {
    skips.Add(std::string(name), "find layout", items.status());
    return nullptr;
  }
  for (const host::LayoutPtr& layout : *items) {
    Result<std::string> layout_name = layout->Name();
    if (layout_name.ok() && core::EqualsIgnoreCase(*layout_name, name)) {
      return layout;
    }
  }
  return nullptr;
}

void MakeTemporaryLayoutCurrent(host::Document& document,
                                host::SkipLog& skips) {
  const std::string name(kTemporaryLayoutName);
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) {
    skips.Add(name, "temporary layout", layouts.status());
    return;
  }
  host::LayoutPtr layout = FindLayout(**layouts, name, skips);
  if (layout == nullptr) {
    Result<host::LayoutPtr> added = (*layouts)->Add(name);
    if (!added.ok()) {
      skips.Add(name, "temporary layout", added.status());
      return;
    }
    layout = *added;
  }
  if (Status s = document.SetActiveLayout(layout); !s.ok()) {
    skips.Add(name, "temporary layout", s);
  }
}

void DeleteTemporaryLayout(host::Document& document, std::string_view host_name,
                           host::SkipLog& skips) {
  const std::string name(kTemporaryLayoutName);
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) {
    skips.Add(name, "delete layout", layouts.status());
    return;
  }
  if (FindLayout(**layouts, name, skips) == nullptr) return;
  Result<host::LayoutPtr> layout =
      LookUpLayout(**layouts, name, TemporaryLayoutLookup(host_name));
  if (!layout.ok()) {
    skips.Add(name, "delete layout", layout.status());
    return;
  }
  if (Status s = (*layout)->Delete(); !s.ok()) {
    skips.Add(name, "delete layout", s);
  }
}

}  // namespace

SwitchReport SwitchViewports(host::Document& document, host::User& user,
                             bool on) {
  SwitchReport report;
  host::SelectionSetPtr set = SelectAllViewports(document, report.skips);
  if (set == nullptr) return report;
  std::vector<host::EntityPtr> members = Members(*set, report.skips);
  report.selected = static_cast<int32_t>(members.size());
  if (members.empty()) return report;
  SwitchAll(document, members, user, on, report);
  return report;
}

LayoutLookup TemporaryLayoutLookup(std::string_view host_name) {
  return host::HostNameIs(host_name, host::kNanoCadName)
             ? LayoutLookup::kDefaultMember
             : LayoutLookup::kItem;
}

Result<host::LayoutPtr> LookUpLayout(const host::Layouts& layouts,
                                     std::string_view name,
                                     LayoutLookup lookup) {
  switch (lookup) {
    case LayoutLookup::kItem:
      return layouts.Item(name);
    case LayoutLookup::kDefaultMember:
      // The object model's collections have Item as their default member, so
      // Layouts(name) reaches the same call; a late-bound host dispatches it
      // as the default member.
      return layouts.Item(name);
  }
  LMT_CHECK(false);
  return Status::InvalidArgument("unknown lookup");
}

SwitchReport ViewportOffOn(host::Document& document, std::string_view host_name,
                           host::User& user, bool on) {
  SwitchReport report;
  host::SelectionSetPtr set = SelectAllViewports(document, report.skips);
  if (set == nullptr) return report;
  std::vector<host::EntityPtr> members = Members(*set, report.skips);
  report.selected = static_cast<int32_t>(members.size());
  if (members.empty()) return report;
  user.SetStatusText(on ? kStatusViewportsOn : kStatusViewportsOff);
  if (on) MakeTemporaryLayoutCurrent(document, report.skips);
  SwitchAll(document, members, user, on, report);
  if (on) DeleteTemporaryLayout(document, host_name, report.skips);
  return report;
}

SwitchReport ViewportOffOn(host::Session& session, bool on) {
  return ViewportOffOn(session.document(), session.connection().host_name,
                       session.user(), on);
}

host::Outcome StartViewportsOnOff(host::Session& session,
                                  SwitchReport* report) {
  if (!session.Connect()) return host::Outcome::kNotConnected;
  const core::OknoFunctionOnOffViewport& window =
      session.windows().okno_function_on_off_viewport;
  if (window.check_viewport_on_off.checked()) {
    bool on = window.option_viewport_on_off.is_selected(0);
    SwitchReport done = SwitchViewports(session.document(), session.user(), on);
    if (report != nullptr) *report = std::move(done);
  }
  // The add-in's main window carries the product name as its title.
  session.user().ShowMessage(kOkText, host::MessageIcon::kInformation,
                             host::MessageButtons::kOk,
                             session.globals().product_name);
  return host::Outcome::kDone;
}

}  // namespace lmt::utilities

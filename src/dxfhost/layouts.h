// Layouts of the object model over dxf::Document: the tabs in tab order,
// "Model" first. Lookups by name ignore case.
//
// Layouts are added, renamed, deleted and given page setups through the
// engine's layout editing: a taken name (case ignored, "Model" included) is
// refused, deleting the active layout first moves the session to the next
// one, and the last paper layout stays. A wrapper of a deleted layout answers
// kNotFound. R12 drawings have one implied layout and answer kNotSupported to
// all of it.
#ifndef LMT_DXFHOST_LAYOUTS_H_
#define LMT_DXFHOST_LAYOUTS_H_

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dxfhost/drawing.h"
#include "host/layout.h"

namespace lmt::dxfhost {

host::LayoutPtr MakeLayout(const std::shared_ptr<Drawing>& d,
                           const LayoutInfo& info);
host::LayoutsPtr MakeLayouts(const std::shared_ptr<Drawing>& d);

// The engine block behind a Layout of drawing `d`; nullptr for an object of
// another drawing or host.
dxf::Block* BlockOf(const host::Layout& layout, const Drawing* d);

// Deletes the layouts named `names` from `d` in this order, leaving what
// Layout.Delete on each in turn leaves (the session moving off an active
// one alike), in one pass of the engine (dxf::DeleteLayouts). Nullopt, with
// nothing changed, unless the names are each a different paper layout of
// the list and a paper layout stays: the caller then deletes them one by
// one, which meets the errors.
std::optional<Status> DeleteLayoutsAtOnce(
    Drawing& d, const std::vector<std::string>& names);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_LAYOUTS_H_

// Layout editing of the embedded host: adding a layout (block record,
// block, LAYOUT object, dictionary entry and the layout's own viewport),
// copying a page set-up, deleting a layout, and adding a paper-space
// viewport, written as a CAD program writes them (R2000 and later).
//
// Chosen semantics for a new viewport: it is made switched off (as the
// object model's AddPViewport leaves it until Display), with scale 1, view
// centre (0, 0) and target (0, 0, 0), so that the builder's target alone
// places the view; its id (69) is the next one of its layout and its layer
// the current layer. A new layout gets paper 420 x 297 mm (A3 landscape,
// no device) until a page set-up is copied into it.
#ifndef LMT_DXFHOST_LAYOUT_EDIT_H_
#define LMT_DXFHOST_LAYOUT_EDIT_H_

#include <string_view>

#include "core/status.h"
#include "dxfhost/drawing.h"
#include "host/point.h"

namespace lmt::dxfhost {

// A new layout named `name` (kRefused when the name is taken or "Model",
// kInvalidArgument for a name the file cannot hold, kNotSupported in R12).
Result<LayoutInfo> AddLayout(Drawing& d, std::string_view name);

// Copies the AcDbPlotSettings part of LAYOUT `source` into LAYOUT
// `target` (keeping the target's model-type bit) and recomputes the
// target's limits.
Status CopyPageSetup(Drawing& d, uint64_t target, uint64_t source);

// Deletes a paper layout with everything in it; the model tab and the last
// paper layout are refused. When it is the active layout another one
// becomes active first.
Status DeleteLayout(Drawing& d, const LayoutInfo& layout);

// A model viewport in paper-space block `block` (see above).
Result<dxf::RecordId> AddPaperViewport(Drawing& d, dxf::Block* block,
                                       const host::Point& center, double width,
                                       double height);

// A deep copy of entity `source` (with its attributes and SEQEND, without
// its reactors and extension dictionary) appended to `target`.
Result<dxf::RecordId> CopyEntityInto(Drawing& d, dxf::RecordId source,
                                     dxf::Block* target);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_LAYOUT_EDIT_H_

// Named selection sets of a DXF drawing.
//
// Select kAll takes every entity of model space and of every layout (the
// filter's 410 tells them apart); kCrossing and kWindow look at the current
// space (model space in the Model tab or through an entered viewport, else
// the active layout) and compare each entity's extents with the rectangle of
// the two corners, given in the current UCS. SelectOnScreen asks
// host::User::PickEntities for handles and keeps the picked entities of the
// current space that pass the filter. Sets keep members in selection order
// without duplicates.
#ifndef LMT_DXFHOST_SELECTION_H_
#define LMT_DXFHOST_SELECTION_H_

#include <memory>

#include "dxfhost/drawing.h"
#include "host/selection_set.h"

namespace lmt::dxfhost {

host::SelectionSetsPtr MakeSelectionSets(const std::shared_ptr<Drawing>& d);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_SELECTION_H_

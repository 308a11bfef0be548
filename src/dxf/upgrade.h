// Making an R12, R13 or R14 drawing a DXF 2000 one, so that it can hold
// layouts.
//
// R13 and R14 already have the object model of 2000 (handles, owners,
// subclass markers, BLOCK_RECORD, OBJECTS). What they lack is what layouts
// need: the ACAD_LAYOUT dictionary with a LAYOUT per space, the block
// records' links to them, the LAYOUT class, and the full AcDbViewport data,
// which R13 and R14 keep in the ACAD application's MVIEW extended data.
// Everything else stays as it was read.
//
// R12 lacks the object model too; it is given R14's first (r12_upgrade.h).
#ifndef LMT_DXF_UPGRADE_H_
#define LMT_DXF_UPGRADE_H_

#include "dxf/document.h"
#include "dxf/status.h"

namespace lmt::dxf {

// Converts `doc` in place to DXF 2000 (AC1015) when it is R12, R13 or R14;
// does nothing for 2000 and later. InvalidArgument for an R13/R14 drawing
// without a root dictionary.
Status UpgradeForLayouts(Document& doc);

}  // namespace lmt::dxf

#endif  // LMT_DXF_UPGRADE_H_

// Giving an R12 drawing the object model of R13/R14, in memory, so that
// the R14 path of UpgradeForLayouts can take it on to DXF 2000.
//
// R12 has no handles to speak of (they are optional), no owners, no
// subclass markers, no BLOCK_RECORD table and no CLASSES or OBJECTS
// sections; its spaces are the blocks $MODEL_SPACE and $PAPER_SPACE, or
// none at all. This adds what R13 requires (dxf-notes "R12 compared with
// R2000+"; DXF reference "Common Group Codes for Entities", "Symbol Table
// Group Codes"):
//   - a handle on every table, table entry, block, end of block and
//     entity, keeping those the file had;
//   - owners: tables 0, table entries their table, BLOCK and ENDBLK and
//     entities their BLOCK_RECORD, ATTRIB/VERTEX/SEQEND their parent;
//   - subclass markers (r12_markers.h);
//   - the tables 2000 lists, with the entries it needs (ByBlock, ByLayer
//     and Continuous linetypes, layer 0, style Standard, application ACAD,
//     dimension style Standard), and a BLOCK_RECORD per block;
//   - *Model_Space and *Paper_Space blocks;
//   - CLASSES, and OBJECTS with the root dictionary and ACAD_GROUP;
//   - simple 2D POLYLINEs made LWPOLYLINEs, as CAD programs open R12
//     drawings (r12_polylines.h).
// Entities keep their codes and order within each subclass; viewports keep
// their view in the ACAD MVIEW extended data, which R14 shares.
#ifndef LMT_DXF_R12_UPGRADE_H_
#define LMT_DXF_R12_UPGRADE_H_

#include "dxf/document.h"

namespace lmt::dxf {

// Makes an R12 `doc` an R14 (AC1014) one; does nothing to a later release.
void GiveR12TheR14Model(Document& doc);

}  // namespace lmt::dxf

#endif  // LMT_DXF_R12_UPGRADE_H_

// Subclass markers (100) for the records of an R12 drawing, which has none.
//
// DXF 2000 scopes an entity's codes by subclass: `100 AcDbEntity` with the
// common codes (layer, colour, linetype, ...), then the type's own
// subclasses in order, e.g. TEXT's `100 AcDbText` ... `100 AcDbText 73`
// (the DXF reference's entity pages; ezdxf's entities/*.py write the same
// order). Table entries get `100 AcDbSymbolTableRecord` and their table's
// record class. Which subclass a code belongs to depends on the type and,
// for POLYLINE, VERTEX, INSERT and DIMENSION, on its flags or kind.
#ifndef LMT_DXF_R12_MARKERS_H_
#define LMT_DXF_R12_MARKERS_H_

#include <vector>

#include "dxf/document.h"
#include "dxf/entity.h"
#include "dxf/tag.h"

namespace lmt::dxf {

// The tags of `e` (an entity, BLOCK, ENDBLK or table entry read from R12)
// with subclass markers placed and its codes grouped under them, in their
// order within each subclass. The handle (5, or 105 for DIMSTYLE) stays
// first; extended data stays last. Tags already holding a marker are
// returned unchanged.
std::vector<Tag> WithSubclassMarkers(Document& doc, Entity e);

}  // namespace lmt::dxf

#endif  // LMT_DXF_R12_MARKERS_H_

// World extents of drawing entities, computed from their DXF data, for
// GetBoundingBox and crossing selections.
//
// Exact for lines, points, circles, arcs and polylines with bulges (the arc
// extrema are found for any affine placement), block references (their
// block's entities transformed, nested to a fixed depth, MINSERT grids, plus
// their attributes) and viewports. Texts are estimated without font metrics
// (a character is 0.6 of the height wide; MTEXT uses the 42/43 sizes the CAD
// program wrote when present), ellipses are sampled and splines use their
// control points. External references count when their DXF file can be read
// beside the drawing. Types without geometry here (hatches, images, ...)
// contribute nothing.
#ifndef LMT_DXFHOST_GEOMETRY_H_
#define LMT_DXFHOST_GEOMETRY_H_

#include <optional>

#include "dxfhost/drawing.h"
#include "host/point.h"

namespace lmt::dxfhost {

// The extents of entity `id` of `d`; nullopt when it has none.
std::optional<host::BoundingBox> EntityExtents(Drawing& d, dxf::RecordId id);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_GEOMETRY_H_

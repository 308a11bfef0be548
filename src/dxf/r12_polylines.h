// Old-style 2D polylines of an R12 drawing made lightweight, as CAD programs
// do when they open one: a POLYLINE with its VERTEXes and SEQEND becomes one
// LWPOLYLINE (the type R14 introduced) with the POLYLINE's handle, common
// codes and extended data, its closed and linetype-generation flags, its
// elevation (the Z of its 10/20/30 point, as 38), thickness, extrusion, and
// per vertex the point, widths and bulge. Widths equal on every vertex are
// one constant width (43); a vertex without its own widths has the
// polyline's defaults (40/41).
//
// Left as they are: 3D polylines, polygon and polyface meshes, curve-fit
// and spline-fit polylines (or vertices made or marked by fitting),
// polylines with fewer than two vertices, with extended data on a vertex
// or its SEQEND, or with a code a simple 2D polyline does not have.
#ifndef LMT_DXF_R12_POLYLINES_H_
#define LMT_DXF_R12_POLYLINES_H_

#include <cstddef>

#include "dxf/document.h"

namespace lmt::dxf {

// Converts the simple 2D POLYLINEs of every block of the R12 `doc` (model
// space, paper space and the others). The LWPOLYLINEs have R12's shape,
// without subclass markers (WithSubclassMarkers gives them theirs).
// Returns how many were converted.
size_t MakePolylinesLightweight(Document& doc);

}  // namespace lmt::dxf

#endif  // LMT_DXF_R12_POLYLINES_H_

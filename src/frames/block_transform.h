// The block reader's geometry: takes a vertex of the polyline drawn inside
// a block definition into model space the way the reference places it.
//
// The block's base point is subtracted first, then the vertex is scaled by
// the X and Y scale factors, rotated by the reference's rotation and moved
// to the insertion point: the same placement the CAD program draws, so the
// corners coincide with the drawn frame whatever base point the block has.
// Mirrored references need no special branch: a negative scale factor
// mirrors the vertex in the block's own axes before the rotation, which is
// exactly how such a reference is drawn.
//
// Limits: only references in plan (extrusion along +Z, as the search makes
// sure by bringing the drawing into world coordinates); Z is ignored.
#ifndef LMT_FRAMES_BLOCK_TRANSFORM_H_
#define LMT_FRAMES_BLOCK_TRANSFORM_H_

#include "frames/frame_table.h"

namespace lmt::frames {

// What the reader takes from a reference and its definition.
struct BlockPlacement {
  Point insertion;      // insertionPoint, model space
  double x_scale = 1;   // XScaleFactor; negative when mirrored
  double y_scale = 1;   // YScaleFactor; negative when mirrored
  double rotation = 0;  // Rotation, radians
  Point base;           // the definition's base point (Origin)
};

// One vertex of the definition's polyline in model space.
Point PlaceVertex(Point local, const BlockPlacement& placement);

// The first four vertices, placed, in their order.
Quad PlaceCorners(const Quad& local, const BlockPlacement& placement);

}  // namespace lmt::frames

#endif  // LMT_FRAMES_BLOCK_TRANSFORM_H_

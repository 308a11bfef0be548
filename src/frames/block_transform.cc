#include "frames/block_transform.h"

#include <cmath>

namespace lmt::frames {

Point PlaceVertex(Point local, const BlockPlacement& p) {
  double x = (local.x - p.base.x) * p.x_scale;
  double y = (local.y - p.base.y) * p.y_scale;
  double c = std::cos(p.rotation);
  double s = std::sin(p.rotation);
  return {p.insertion.x + x * c - y * s, p.insertion.y + x * s + y * c};
}

Quad PlaceCorners(const Quad& local, const BlockPlacement& placement) {
  Quad placed;
  for (int i = 0; i < 4; ++i) placed[i] = PlaceVertex(local[i], placement);
  return placed;
}

}  // namespace lmt::frames

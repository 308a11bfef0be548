// Points and boxes as the object model passes them: three doubles, world or
// the coordinate system the member states. Lightweight polylines have z = 0.
#ifndef LMT_HOST_POINT_H_
#define LMT_HOST_POINT_H_

namespace lmt::host {

struct Point {
  double x = 0;
  double y = 0;
  double z = 0;

  bool operator==(const Point&) const = default;
};

// GetBoundingBox's two corners: min holds the smallest coordinates.
struct BoundingBox {
  Point min;
  Point max;

  bool operator==(const BoundingBox&) const = default;
};

}  // namespace lmt::host

#endif  // LMT_HOST_POINT_H_

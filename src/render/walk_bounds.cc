#include "render/walk_bounds.h"

#include <algorithm>
#include <cmath>

namespace lmt::render {

void Box2::Add(double x, double y) {
  if (empty()) {
    x0 = x1 = x;
    y0 = y1 = y;
    return;
  }
  x0 = std::min(x0, x);
  y0 = std::min(y0, y);
  x1 = std::max(x1, x);
  y1 = std::max(y1, y);
}

bool Box2::Meets(const Box2& o) const {
  return !empty() && !o.empty() && x0 <= o.x1 && o.x0 <= x1 && y0 <= o.y1 &&
         o.y0 <= y1;
}

void BoundsSink::Add(dxf::Primitive p) {
  for (const auto& path : p.paths) {
    for (const dxf::Point2& q : path) Point(q.x, q.y);
  }
  if (p.kind == dxf::Primitive::Kind::kText) Text(p.text);
}

void BoundsSink::Point(double x, double y) {
  if (std::isfinite(x) && std::isfinite(y)) box.Add(x, y);
}

// A box in the text's own frame (x along the baseline in widths, y up in
// heights), placed by its alignment.
void BoundsSink::Text(const dxf::TextRun& t) {
  const double length = t.fit_length > 0
                            ? t.fit_length
                            : 1.2 * static_cast<double>(t.text.size()) + 1;
  const double from = t.fit_length > 0 ? 0
                      : t.halign == 1  ? -length / 2
                      : t.halign == 2  ? -length
                                       : 0;
  for (double u : {from - 1, from + length + 1}) {
    for (double v : {-1.5, 1.5}) {
      Point(t.origin.x + u * t.x_axis.x + v * t.y_axis.x,
            t.origin.y + u * t.x_axis.y + v * t.y_axis.y);
    }
  }
}

}  // namespace lmt::render

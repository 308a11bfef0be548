// Extents of what the entity walker draws: Box2, and BoundsSink, which
// grows a box over every primitive a walk hands it. Texts count with a box
// that holds them in any font whose letters are at most 1.2 heights wide,
// as no font metrics are at hand.
#ifndef LMT_RENDER_WALK_BOUNDS_H_
#define LMT_RENDER_WALK_BOUNDS_H_

#include "dxf/entity_walk.h"

namespace lmt::render {

struct Box2 {
  double x0 = 0, y0 = 0, x1 = -1, y1 = -1;  // empty when x1 < x0
  bool empty() const { return x1 < x0 || y1 < y0; }
  void Add(double x, double y);
  bool Meets(const Box2& other) const;
};

class BoundsSink : public dxf::PrimitiveSink {
 public:
  void Add(dxf::Primitive p) override;
  Box2 box;

 private:
  void Point(double x, double y);
  void Text(const dxf::TextRun& t);
};

}  // namespace lmt::render

#endif  // LMT_RENDER_WALK_BOUNDS_H_

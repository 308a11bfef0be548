// ModelIndex: which model-space entities a viewport can show.
//
// A sheet's viewport shows a small window of a model that may hold a
// thousand frames; walking the whole model for every sheet made plotting a
// large set quadratic. The index walks every model entity once, keeps its
// extents in a uniform grid, and answers a window with the entities that
// may meet it, in drawing order (fills and texts keep their stacking).
//
// Entities that give no extents (hidden layers, types the walker does not
// draw, infinite lines) are always returned, so that the walker still counts
// what it does not draw. The index holds record ids: it is valid until the
// model changes.
#ifndef LMT_RENDER_MODEL_INDEX_H_
#define LMT_RENDER_MODEL_INDEX_H_

#include <cstdint>
#include <vector>

#include "dxf/document.h"
#include "dxf/entity_walk.h"
#include "render/walk_bounds.h"

namespace lmt::render {

class ModelIndex {
 public:
  explicit ModelIndex(dxf::Document& doc);

  // Model entities whose extents meet `window` (model units), plus those
  // without extents, in the model's order.
  std::vector<dxf::RecordId> Meeting(const Box2& window) const;

  size_t size() const { return ids_.size(); }

 private:
  struct Cell {
    int x0, y0, x1, y1;
  };
  Cell CellsOf(const Box2& box) const;

  std::vector<dxf::RecordId> ids_;  // model order
  std::vector<Box2> boxes_;         // per entry of ids_
  std::vector<uint32_t> always_;    // entries without extents, or huge ones
  Box2 extents_;
  int grid_ = 1;
  double cell_w_ = 1, cell_h_ = 1;
  std::vector<std::vector<uint32_t>> cells_;  // grid_ * grid_
};

// The model window a viewport shows: its paper rectangle mapped into the
// model (twist included), as a box.
Box2 ViewportWindow(const dxf::Viewport& vp);

}  // namespace lmt::render

#endif  // LMT_RENDER_MODEL_INDEX_H_

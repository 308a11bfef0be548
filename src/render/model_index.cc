#include "render/model_index.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "dxf/geometry.h"
#include "dxf/viewport.h"

namespace lmt::render {
namespace {

// Above this many cells an entity is cheaper to keep in the always list.
constexpr size_t kMaxCellsPerEntity = 4096;

}  // namespace

ModelIndex::ModelIndex(dxf::Document& doc) {
  const dxf::Block* model = doc.model_space();
  if (model == nullptr) return;
  dxf::EntityWalker walker(doc);
  // Extents need not be exact: a chord error of a thousandth of a unit is
  // far below any line width on a sheet.
  walker.set_tolerance(1e-3);
  const dxf::Affine identity;
  for (dxf::RecordId id : model->entities) {
    dxf::Entity e = doc.entity(id);
    if (e.erased()) continue;
    BoundsSink bounds;
    // Infinite lines would stretch the grid over nothing: always walked.
    if (e.type() != "RAY" && e.type() != "XLINE") {
      walker.WalkEntity(e, identity, bounds);
    }
    ids_.push_back(id);
    boxes_.push_back(bounds.box);
    if (!bounds.box.empty()) {
      extents_.Add(bounds.box.x0, bounds.box.y0);
      extents_.Add(bounds.box.x1, bounds.box.y1);
    }
  }
  // About four entities a cell on a model that is evenly filled.
  grid_ = std::clamp(
      static_cast<int>(std::sqrt(static_cast<double>(ids_.size()) / 4)), 1,
      1024);
  cell_w_ = std::max((extents_.x1 - extents_.x0) / grid_, 1e-9);
  cell_h_ = std::max((extents_.y1 - extents_.y0) / grid_, 1e-9);
  cells_.resize(static_cast<size_t>(grid_) * grid_);
  for (uint32_t i = 0; i < ids_.size(); ++i) {
    if (boxes_[i].empty()) {
      always_.push_back(i);
      continue;
    }
    const Cell c = CellsOf(boxes_[i]);
    const size_t count = static_cast<size_t>(c.x1 - c.x0 + 1) *
                         static_cast<size_t>(c.y1 - c.y0 + 1);
    if (count > kMaxCellsPerEntity) {
      always_.push_back(i);
      continue;
    }
    for (int y = c.y0; y <= c.y1; ++y) {
      for (int x = c.x0; x <= c.x1; ++x) {
        cells_[static_cast<size_t>(y) * grid_ + x].push_back(i);
      }
    }
  }
}

ModelIndex::Cell ModelIndex::CellsOf(const Box2& box) const {
  auto clamp_cell = [this](double v) {
    if (!(v > 0)) return 0;  // also NaN
    return static_cast<int>(std::min<double>(v, grid_ - 1));
  };
  return Cell{clamp_cell((box.x0 - extents_.x0) / cell_w_),
              clamp_cell((box.y0 - extents_.y0) / cell_h_),
              clamp_cell((box.x1 - extents_.x0) / cell_w_),
              clamp_cell((box.y1 - extents_.y0) / cell_h_)};
}

std::vector<dxf::RecordId> ModelIndex::Meeting(const Box2& window) const {
  std::vector<uint32_t> found = always_;
  if (window.Meets(extents_)) {
    const Cell c = CellsOf(window);
    std::vector<bool> seen(ids_.size(), false);
    for (int y = c.y0; y <= c.y1; ++y) {
      for (int x = c.x0; x <= c.x1; ++x) {
        for (uint32_t i : cells_[static_cast<size_t>(y) * grid_ + x]) {
          if (seen[i] || !boxes_[i].Meets(window)) continue;
          seen[i] = true;
          found.push_back(i);
        }
      }
    }
  }
  std::sort(found.begin(), found.end());
  std::vector<dxf::RecordId> out;
  out.reserve(found.size());
  for (uint32_t i : found) out.push_back(ids_[i]);
  return out;
}

Box2 ViewportWindow(const dxf::Viewport& vp) {
  const dxf::Affine to_model = dxf::ViewportModelToPaper(vp).Inverse();
  const dxf::Vec3 c = vp.center();
  const double w = vp.width() / 2, h = vp.height() / 2;
  Box2 box;
  for (auto [x, y] : {std::pair{-w, -h}, {w, -h}, {w, h}, {-w, h}}) {
    const dxf::Vec3 q = to_model.Apply({c.x + x, c.y + y, 0});
    box.Add(q.x, q.y);
  }
  return box;
}

}  // namespace lmt::render

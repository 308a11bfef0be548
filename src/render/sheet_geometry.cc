#include "render/sheet_geometry.h"

#include <algorithm>
#include <cmath>

#include "dxf/entity_walk.h"
#include "render/walk_bounds.h"

namespace lmt::render {

SheetGeometry SheetGeometryOf(dxf::Document& doc, const dxf::Layout& layout) {
  SheetGeometry g;
  // Paper-space units are inches when the page setup says so.
  const double unit = layout.GetInt(72, 1) == 0 ? 25.4 : 1.0;
  const double paper_w = layout.GetDouble(44, 0);
  const double paper_h = layout.GetDouble(45, 0);
  if (paper_w > 0 && paper_h > 0) {
    const int rotation = static_cast<int>(layout.GetInt(73, 0)) & 3;
    const bool turned = rotation == 1 || rotation == 3;
    g.width_mm = turned ? paper_h : paper_w;
    g.height_mm = turned ? paper_w : paper_h;
    // Margins are given on the unrotated paper; the printable corner of
    // the turned sheet is the one the rotation brings to its lower left.
    const double left = layout.GetDouble(40, 0),
                 bottom = layout.GetDouble(41, 0);
    const double right = layout.GetDouble(42, 0), top = layout.GetDouble(43, 0);
    const double corner[4][2] = {
        {left, bottom}, {bottom, right}, {right, top}, {top, left}};
    const dxf::Vec3 shift{corner[rotation][0] + layout.GetDouble(46, 0),
                          corner[rotation][1] + layout.GetDouble(47, 0), 0};
    g.paper_to_page = dxf::Affine::Translation(shift).Then(
        dxf::Affine::Scaling({unit, unit, 1}));
    g.source = SheetGeometry::Source::kPageSetup;
    return g;
  }
  const dxf::Vec3 lim_lo = layout.GetPoint(10);
  const dxf::Vec3 lim_hi = layout.GetPoint(11);
  if (lim_hi.x > lim_lo.x && lim_hi.y > lim_lo.y) {
    g.width_mm = (lim_hi.x - lim_lo.x) * unit;
    g.height_mm = (lim_hi.y - lim_lo.y) * unit;
    g.paper_to_page =
        dxf::Affine::Scaling({unit, unit, 1})
            .Then(dxf::Affine::Translation({-lim_lo.x, -lim_lo.y, 0}));
    g.source = SheetGeometry::Source::kLimits;
    return g;
  }
  g.source = SheetGeometry::Source::kExtents;
  BoundsSink bounds;
  if (const dxf::Block* block = dxf::LayoutBlock(doc, layout)) {
    dxf::EntityWalker walker(doc);
    walker.WalkBlock(*block, dxf::Affine(), bounds);
  }
  if (bounds.box.empty()) {
    g.width_mm = 297;
    g.height_mm = 210;
    return g;
  }
  const double margin = 0.05 * std::max(bounds.box.x1 - bounds.box.x0,
                                        bounds.box.y1 - bounds.box.y0) +
                        1e-6;
  g.width_mm = (bounds.box.x1 - bounds.box.x0 + 2 * margin) * unit;
  g.height_mm = (bounds.box.y1 - bounds.box.y0 + 2 * margin) * unit;
  g.paper_to_page =
      dxf::Affine::Scaling({unit, unit, 1})
          .Then(dxf::Affine::Translation(
              {margin - bounds.box.x0, margin - bounds.box.y0, 0}));
  return g;
}

}  // namespace lmt::render

// Where a layout lies on its sheet of paper: the page size in millimetres
// and the map from paper-space units to page millimetres (origin at the
// page's lower-left corner, y up).
//
// Read from the layout's page setup (LAYOUT's AcDbPlotSettings: paper size
// 44/45, rotation 73, unprintable margins 40-43, plot origin 46/47, paper
// units 72), as CAD programs place the paper-space origin at the printable
// area's corner shifted by the plot origin. A layout without a paper size
// falls back to its limits, and one without limits to the extents of its
// entities with a small margin.
#ifndef LMT_RENDER_SHEET_GEOMETRY_H_
#define LMT_RENDER_SHEET_GEOMETRY_H_

#include "dxf/document.h"
#include "dxf/geometry.h"
#include "dxf/objects.h"

namespace lmt::render {

struct SheetGeometry {
  enum class Source { kPageSetup, kLimits, kExtents };
  double width_mm = 0;
  double height_mm = 0;
  dxf::Affine paper_to_page;
  Source source = Source::kPageSetup;
};

// Never fails: an empty layout gets an A4 landscape sheet.
SheetGeometry SheetGeometryOf(dxf::Document& doc, const dxf::Layout& layout);

}  // namespace lmt::render

#endif  // LMT_RENDER_SHEET_GEOMETRY_H_

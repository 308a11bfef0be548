// Drawing one layout onto a cairo context: paper-space entities in order,
// and at each viewport the model space it shows, clipped to its outline, at
// its scale and twist, without the layers frozen in it.
//
// The context's user space must be page millimetres with y up (see
// plot_file.cc); the renderer neither paints a background nor ends the
// page. White (ACI 7 and true white) plots black, as on white paper.
#ifndef LMT_RENDER_SHEET_RENDERER_H_
#define LMT_RENDER_SHEET_RENDERER_H_

#include <cairo.h>

#include <map>
#include <string>

#include "dxf/document.h"
#include "dxf/entity_walk.h"
#include "dxf/objects.h"
#include "render/model_index.h"
#include "render/sheet_geometry.h"

namespace lmt::render {

struct RenderOptions {
  bool monochrome = false;  // everything black
};

// Draws `layout` placed by `geometry`. Returns what was not drawn, counted
// by DXF type (with a reason in brackets for some). With `model_index`, a
// viewport walks only the model entities it can show.
std::map<std::string, int> RenderSheet(dxf::Document& doc,
                                       const dxf::Layout& layout,
                                       const SheetGeometry& geometry,
                                       const RenderOptions& options,
                                       cairo_t* cr,
                                       const ModelIndex* model_index = nullptr);

// Draws one primitive (exposed for tests of the pen and text handling).
void DrawPrimitive(cairo_t* cr, const dxf::Primitive& p,
                   const RenderOptions& options);

}  // namespace lmt::render

#endif  // LMT_RENDER_SHEET_RENDERER_H_

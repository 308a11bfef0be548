// Renders one layout's entities ("Model" for model space) inside a window
// of its own units into a PNG of a given pixel size, white background: the
// raster that render_quality.py compares with ezdxf's drawing add-on.
//
//   render_window DRAWING LAYOUT X0 Y0 X1 Y1 WIDTH_PX HEIGHT_PX OUT.png
//
// Exit 0 and "not drawn: TYPE N ..." on standard output; 1 when the drawing
// cannot be read, the layout is missing or the PNG cannot be written.
#include <cairo.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "dxf/document.h"
#include "dxf/layout_edit.h"
#include "render/sheet_renderer.h"

namespace {

class ModelSink : public lmt::dxf::PrimitiveSink {
 public:
  explicit ModelSink(cairo_t* cr) : cr_(cr) {}
  void Add(lmt::dxf::Primitive p) override {
    lmt::render::DrawPrimitive(cr_, p, lmt::render::RenderOptions{});
  }

 private:
  cairo_t* cr_;
};

}  // namespace

int main(int argc, char** argv) {
  using namespace lmt;
  if (argc != 10) {
    std::cerr << "usage: render_window DRAWING LAYOUT X0 Y0 X1 Y1 WIDTH_PX "
                 "HEIGHT_PX OUT.png\n";
    return 2;
  }
  std::unique_ptr<dxf::Document> doc;
  if (dxf::Status s = dxf::Document::Load(argv[1], &doc); !s.ok()) {
    std::cerr << s.message() << "\n";
    return 1;
  }
  // Model space is walked directly: R12 drawings have no LAYOUT objects.
  const bool model = dxf::EqualsNoCase(argv[2], "Model");
  const dxf::Layout layout = dxf::FindLayout(*doc, argv[2]);
  if (!model && !layout.valid()) {
    std::cerr << argv[2] << ": no such layout\n";
    return 1;
  }
  const double x0 = std::atof(argv[3]), y0 = std::atof(argv[4]);
  const double x1 = std::atof(argv[5]), y1 = std::atof(argv[6]);
  const int width = std::atoi(argv[7]), height = std::atoi(argv[8]);
  if (!(x1 > x0) || !(y1 > y0) || width <= 0 || height <= 0) {
    std::cerr << "empty window or raster\n";
    return 2;
  }
  // Four pixels a page millimetre, so that a plain 0.25 mm line is one
  // pixel wide; the window fills the raster.
  constexpr double kPixelsPerMm = 4;
  render::SheetGeometry g;
  g.width_mm = width / kPixelsPerMm;
  g.height_mm = height / kPixelsPerMm;
  g.paper_to_page =
      dxf::Affine::Scaling({g.width_mm / (x1 - x0), g.height_mm / (y1 - y0), 1})
          .Then(dxf::Affine::Translation({-x0, -y0, 0}));
  cairo_surface_t* surface =
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
  cairo_t* cr = cairo_create(surface);
  cairo_set_source_rgb(cr, 1, 1, 1);
  cairo_paint(cr);
  cairo_translate(cr, 0, height);
  cairo_scale(cr, kPixelsPerMm, -kPixelsPerMm);
  std::map<std::string, int> not_drawn;
  if (model) {
    dxf::EntityWalker walker(*doc);
    ModelSink sink(cr);
    walker.WalkBlock(*doc->model_space(), g.paper_to_page, sink);
    not_drawn = walker.not_drawn();
  } else {
    not_drawn = render::RenderSheet(*doc, layout, g, {}, cr);
  }
  cairo_destroy(cr);
  const cairo_status_t status = cairo_surface_write_to_png(surface, argv[9]);
  cairo_surface_destroy(surface);
  std::cout << "not drawn:";
  for (const auto& [type, count] : not_drawn)
    std::cout << " " << type << " " << count;
  std::cout << "\n";
  return status == CAIRO_STATUS_SUCCESS ? 0 : 1;
}

#include "cli/frame_preview.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <vector>

#include "core/file_util.h"
#include "dxf/document.h"
#include "dxf/entity_walk.h"
#include "dxf/tag.h"
#include "frames/frame_ordering.h"
#include "frames/frame_record.h"

namespace lmt::cli {
namespace {

struct Bounds {
  double min_x = std::numeric_limits<double>::infinity();
  double min_y = std::numeric_limits<double>::infinity();
  double max_x = -std::numeric_limits<double>::infinity();
  double max_y = -std::numeric_limits<double>::infinity();
  void Add(frames::Point p) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
    min_x = std::min(min_x, p.x);
    min_y = std::min(min_y, p.y);
    max_x = std::max(max_x, p.x);
    max_y = std::max(max_y, p.y);
  }
  bool empty() const { return !(min_x <= max_x && min_y <= max_y); }
};

// Chords within about a pixel of a 5000 pixel wide picture of the
// drawing's extents ($EXTMIN/$EXTMAX; 1 unit when they are unset).
double PreviewTolerance(const dxf::Document& doc) {
  auto corner = [&](std::string_view name, dxf::Vec3* p) {
    bool any = false;
    for (const dxf::Tag& t : doc.HeaderTags(name)) {
      const std::optional<double> v = dxf::ParseDouble(t.value());
      if (!v) continue;
      if (t.code == 10) p->x = *v, any = true;
      if (t.code == 20) p->y = *v;
    }
    return any;
  };
  dxf::Vec3 lo, hi;
  if (!corner("$EXTMIN", &lo) || !corner("$EXTMAX", &hi)) return 1;
  const double span = std::hypot(hi.x - lo.x, hi.y - lo.y);
  return span > 0 && span < 1e15 ? span / 5000 : 1;
}

// SVG paths of the walked model space: strokes, and the outlines of fills.
class Painter : public dxf::PrimitiveSink {
 public:
  void Add(dxf::Primitive p) override {
    if (p.kind != dxf::Primitive::Kind::kStroke &&
        p.kind != dxf::Primitive::Kind::kFill) {
      return;
    }
    for (const std::vector<dxf::Point2>& path : p.paths) {
      Polyline(path, p.kind == dxf::Primitive::Kind::kFill);
    }
  }

  std::string paths;
  Bounds bounds;

 private:
  void Polyline(const std::vector<dxf::Point2>& points, bool closed) {
    if (points.size() < 2) return;
    std::ostringstream s;
    s.precision(10);
    s << "M";
    for (size_t i = 0; i < points.size(); ++i) {
      s << (i == 0 ? "" : " L") << points[i].x << "," << -points[i].y;
      bounds.Add({points[i].x, points[i].y});
    }
    if (closed) s << " Z";
    paths += "<path d=\"" + s.str() + "\"/>\n";
  }
};

std::string Escape(std::string_view text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

}  // namespace

Result<std::string> RenderFramePreview(const std::string& drawing,
                                       const frames::FrameTable& table,
                                       bool recover) {
  std::unique_ptr<dxf::Document> doc;
  dxf::Status loaded = dxf::Document::Load(drawing, &doc, {recover});
  if (loaded.IsIOError()) return Status::IOError(loaded.message());
  if (!loaded.ok()) return Status::Corruption(loaded.message());

  Painter painter;
  if (doc->model_space() != nullptr) {
    dxf::EntityWalker walker(*doc);
    walker.set_tolerance(PreviewTolerance(*doc));
    walker.WalkBlock(*doc->model_space(), dxf::Affine(), painter);
  }

  Bounds view;
  std::ostringstream outlines, labels;
  outlines.precision(10);
  labels.precision(10);
  for (int r = 1; r < table.row_count(); ++r) {
    const frames::FrameRecord frame = frames::ReadRecord(table, r);
    const std::optional<frames::Quad>& q = frame.corners;
    if (!q) continue;
    outlines << "<polygon points=\"";
    for (const frames::Point& p : *q) {
      outlines << p.x << "," << -p.y << " ";
      view.Add(p);
    }
    outlines << "\"/>\n";
    const frames::Extents e = frames::ExtentsOf(*q);
    const double size = std::max(e.max_x - e.min_x, e.max_y - e.min_y) / 12;
    const double cx = (e.min_x + e.max_x) / 2, cy = (e.min_y + e.max_y) / 2;
    labels << "<text x=\"" << cx << "\" y=\"" << -cy << "\" font-size=\""
           << size << "\">" << Escape(frame.number) << "</text>\n<text x=\""
           << cx << "\" y=\"" << -cy + size << "\" font-size=\"" << size / 2
           << "\">" << Escape(frame.layout_name) << "</text>\n";
  }
  if (view.empty()) view = painter.bounds;
  if (view.empty()) view = Bounds{0, 0, 1, 1};
  const double margin =
      std::max(view.max_x - view.min_x, view.max_y - view.min_y) * 0.05 + 1e-9;
  const double x = view.min_x - margin, y = -view.max_y - margin;
  const double w = view.max_x - view.min_x + 2 * margin;
  const double h = view.max_y - view.min_y + 2 * margin;

  std::ostringstream svg;
  svg.precision(10);
  svg << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" << x << " " << y
      << " " << w << " " << h << "\" width=\"1200\" height=\""
      << std::max(1, static_cast<int>(1200 * h / w)) << "\">\n"
      << "<rect x=\"" << x << "\" y=\"" << y << "\" width=\"" << w
      << "\" height=\"" << h << "\" fill=\"white\"/>\n"
      << "<g fill=\"none\" stroke=\"#444\" stroke-width=\"1\" "
         "vector-effect=\"non-scaling-stroke\">\n"
      << painter.paths << "</g>\n"
      << "<g fill=\"none\" stroke=\"red\" stroke-width=\"3\" "
         "vector-effect=\"non-scaling-stroke\">\n";
  svg << outlines.str() << "</g>\n"
      << "<g fill=\"red\" text-anchor=\"middle\" font-family=\"sans-serif\">\n"
      << labels.str() << "</g>\n</svg>\n";
  return svg.str();
}

Status WriteFramePreview(const std::string& drawing,
                         const frames::FrameTable& table,
                         const std::string& svg_path, bool recover) {
  Result<std::string> svg = RenderFramePreview(drawing, table, recover);
  if (!svg.ok()) return svg.status();
  return core::WriteFileAtomically(core::PathFromUtf8(svg_path), *svg);
}

}  // namespace lmt::cli

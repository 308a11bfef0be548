#include "cli/frame_preview.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <sstream>
#include <vector>

#include "core/file_util.h"
#include "dxf/document.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "frames/frame_ordering.h"

namespace lmt::cli {
namespace {

constexpr int kMaxNesting = 4;
constexpr double kDegree = std::numbers::pi / 180;

// 2D affine map: x' = a x + b y + e, y' = c x + d y + f.
struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  frames::Point operator()(double x, double y) const {
    return {a * x + b * y + e, c * x + d * y + f};
  }
  Affine Then(const Affine& o) const {  // first this, then o
    return {o.a * a + o.b * c,       o.a * b + o.b * d,
            o.c * a + o.d * c,       o.c * b + o.d * d,
            o.a * e + o.b * f + o.e, o.c * e + o.d * f + o.f};
  }
  double Scale() const { return std::sqrt(std::fabs(a * d - b * c)); }
};

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

class Painter {
 public:
  explicit Painter(dxf::Document& doc) : doc_(doc) {}

  void Block(const dxf::Block& block, const Affine& m, int depth) {
    if (depth > kMaxNesting) return;
    for (dxf::RecordId id : block.entities) {
      dxf::Entity e = doc_.entity(id);
      if (e.erased() || e.invisible()) continue;
      Entity(e, m, depth);
    }
  }

  std::string paths;
  Bounds bounds;

 private:
  void Polyline(const std::vector<frames::Point>& points, bool closed) {
    if (points.size() < 2) return;
    std::ostringstream s;
    s.precision(10);
    s << "M";
    for (size_t i = 0; i < points.size(); ++i) {
      s << (i == 0 ? "" : " L") << points[i].x << "," << -points[i].y;
      bounds.Add(points[i]);
    }
    if (closed) s << " Z";
    paths += "<path d=\"" + s.str() + "\"/>\n";
  }

  void Arc(const Affine& m, dxf::Vec3 c, double r, double start, double end) {
    if (!(r > 0)) return;
    if (end <= start) end += 360;
    const int steps = std::max(8, static_cast<int>((end - start) / 10));
    std::vector<frames::Point> points;
    for (int i = 0; i <= steps; ++i) {
      const double t = (start + (end - start) * i / steps) * kDegree;
      points.push_back(m(c.x + r * std::cos(t), c.y + r * std::sin(t)));
    }
    Polyline(points, false);
  }

  void Entity(const dxf::Entity& e, const Affine& m, int depth) {
    const std::string_view type = e.type();
    if (type == "LINE") {
      dxf::Vec3 a = e.GetPoint(10), b = e.GetPoint(11);
      Polyline({m(a.x, a.y), m(b.x, b.y)}, false);
    } else if (type == "LWPOLYLINE") {
      dxf::LwPolyline pl(e);
      std::vector<frames::Point> points;
      for (const dxf::LwVertex& v : pl.vertices())
        points.push_back(m(v.x, v.y));
      Polyline(points, pl.closed());
    } else if (type == "CIRCLE") {
      Arc(m, e.GetPoint(10), e.GetDouble(40), 0, 360);
    } else if (type == "ARC") {
      Arc(m, e.GetPoint(10), e.GetDouble(40), e.GetDouble(50), e.GetDouble(51));
    } else if (type == "INSERT") {
      dxf::Insert insert(e);
      const dxf::Block* block = doc_.FindBlock(insert.block_name());
      if (block == nullptr || block->begin == dxf::kNoRecord) return;
      const dxf::Vec3 base = doc_.entity(block->begin).GetPoint(10);
      const dxf::Vec3 scale = insert.scale();
      const dxf::Vec3 at = insert.insert_point();
      const double r = insert.rotation() * kDegree;
      Affine local{scale.x * std::cos(r),
                   -scale.y * std::sin(r),
                   scale.x * std::sin(r),
                   scale.y * std::cos(r),
                   0,
                   0};
      local.e = at.x - (local.a * base.x + local.b * base.y);
      local.f = at.y - (local.c * base.x + local.d * base.y);
      Block(*block, local.Then(m), depth + 1);
    }
  }

  dxf::Document& doc_;
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
                                       const frames::FrameTable& table) {
  std::unique_ptr<dxf::Document> doc;
  dxf::Status loaded = dxf::Document::Load(drawing, &doc);
  if (loaded.IsIOError()) return Status::IOError(loaded.message());
  if (!loaded.ok()) return Status::Corruption(loaded.message());

  Painter painter(*doc);
  if (doc->model_space() != nullptr) painter.Block(*doc->model_space(), {}, 0);

  Bounds view;
  std::ostringstream outlines, labels;
  outlines.precision(10);
  labels.precision(10);
  for (int r = 1; r < table.row_count(); ++r) {
    std::optional<frames::Quad> q = table.Corners(r);
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
           << size << "\">" << Escape(table.Cell(r, frames::Column::kNumber))
           << "</text>\n<text x=\"" << cx << "\" y=\"" << -cy + size
           << "\" font-size=\"" << size / 2 << "\">"
           << Escape(table.Cell(r, frames::Column::kLayoutName)) << "</text>\n";
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
                         const std::string& svg_path) {
  Result<std::string> svg = RenderFramePreview(drawing, table);
  if (!svg.ok()) return svg.status();
  return core::WriteFileAtomically(core::PathFromUtf8(svg_path), *svg);
}

}  // namespace lmt::cli

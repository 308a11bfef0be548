#include "render/sheet_renderer.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "dxf/tag.h"
#include "dxf/viewport.h"

namespace lmt::render {
namespace {

// Capitals of the sans faces fill about 0.72 of the em; CAD text heights
// are capital heights.
constexpr double kCapHeight = 0.72;
// The thinnest line a plot shows (lineweight 0), in mm.
constexpr double kThinnest = 0.05;
// Viewport status bit: clipped by the entity named in 340.
constexpr int kNonRectClip = 65536;

bool Finite(const dxf::Point2& p) {
  return std::isfinite(p.x) && std::isfinite(p.y);
}

bool AddPaths(cairo_t* cr, const std::vector<std::vector<dxf::Point2>>& paths,
              bool close) {
  cairo_new_path(cr);
  bool any = false;
  for (const auto& path : paths) {
    if (path.empty() || !std::all_of(path.begin(), path.end(), Finite)) {
      continue;
    }
    cairo_move_to(cr, path[0].x, path[0].y);
    for (size_t i = 1; i < path.size(); ++i) {
      cairo_line_to(cr, path[i].x, path[i].y);
    }
    const bool ends_at_start = path.size() > 2 &&
                               path.front().x == path.back().x &&
                               path.front().y == path.back().y;
    if (close || ends_at_start) cairo_close_path(cr);
    any = true;
  }
  return any;
}

void SetColor(cairo_t* cr, dxf::Rgb c, const RenderOptions& options) {
  if (options.monochrome || (c.r == 255 && c.g == 255 && c.b == 255)) {
    cairo_set_source_rgb(cr, 0, 0, 0);
    return;
  }
  cairo_set_source_rgb(cr, c.r / 255.0, c.g / 255.0, c.b / 255.0);
}

void DrawText(cairo_t* cr, const dxf::TextRun& t) {
  const double det = t.x_axis.x * t.y_axis.y - t.x_axis.y * t.y_axis.x;
  if (!(std::fabs(det) > 1e-18) || !Finite(t.origin) || t.text.empty()) return;
  cairo_save(cr);
  // Text space: x along the baseline in text heights, y down (cairo's
  // glyph orientation), so the up axis enters negated.
  cairo_matrix_t m;
  cairo_matrix_init(&m, t.x_axis.x, t.x_axis.y, -t.y_axis.x, -t.y_axis.y,
                    t.origin.x, t.origin.y);
  cairo_transform(cr, &m);
  cairo_select_font_face(cr, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                         CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, 1 / kCapHeight);
  cairo_text_extents_t ext;
  cairo_text_extents(cr, t.text.c_str(), &ext);
  double dx = 0;
  if (t.fit_length > 0 && ext.x_advance > 0) {
    cairo_scale(cr, t.fit_length / ext.x_advance, 1);
  } else {
    dx = -ext.x_advance * (t.halign == 1 ? 0.5 : (t.halign == 2 ? 1 : 0));
  }
  double dy = 0;
  if (t.valign == 1) {
    cairo_font_extents_t fe;
    cairo_font_extents(cr, &fe);
    dy = -fe.descent;
  } else if (t.valign == 2) {
    dy = 0.5;
  } else if (t.valign == 3) {
    dy = 1;
  }
  cairo_move_to(cr, dx, dy);
  cairo_show_text(cr, t.text.c_str());
  cairo_restore(cr);
}

// Layer names from the handles a viewport lists as frozen in it.
std::vector<std::string_view> FrozenLayers(dxf::Document& doc,
                                           const dxf::Viewport& vp) {
  std::vector<std::string_view> names;
  for (int code : {331, 341}) {
    for (std::string_view h : vp.GetAll(code)) {
      const std::optional<uint64_t> handle = dxf::ParseHandle(h);
      if (!handle) continue;
      dxf::Entity layer = doc.FindByHandle(*handle);
      if (layer.valid() && layer.type() == "LAYER") {
        names.push_back(layer.GetString(2));
      }
    }
  }
  return names;
}

// Collects the outline of a clipping entity.
class OutlineSink : public dxf::PrimitiveSink {
 public:
  void Add(dxf::Primitive p) override {
    for (auto& path : p.paths) loops.push_back(std::move(path));
  }
  std::vector<std::vector<dxf::Point2>> loops;
};

// Draws primitives as they come.
class CairoSink : public dxf::PrimitiveSink {
 public:
  CairoSink(cairo_t* cr, const RenderOptions& options)
      : cr_(cr), options_(options) {}
  void Add(dxf::Primitive p) override { DrawPrimitive(cr_, p, options_); }

 private:
  cairo_t* cr_;
  const RenderOptions& options_;
};

void DrawViewport(dxf::Document& doc, const dxf::Viewport& vp,
                  const SheetGeometry& geometry, const ModelIndex* index,
                  dxf::EntityWalker& walker, CairoSink& sink, cairo_t* cr) {
  const dxf::Block* model = doc.model_space();
  if (model == nullptr || vp.height() <= 0 || vp.view_height() <= 0) return;
  cairo_save(cr);
  bool clipped = false;
  if (vp.flags() & kNonRectClip) {
    if (const std::optional<uint64_t> h = dxf::ParseHandle(vp.GetString(340))) {
      dxf::Entity outline = doc.FindByHandle(*h);
      if (outline.valid()) {
        OutlineSink loops;
        dxf::EntityWalker plain(doc);
        plain.WalkEntity(outline, geometry.paper_to_page, loops);
        if (AddPaths(cr, loops.loops, true)) {
          cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
          cairo_clip(cr);
          clipped = true;
        }
      }
    }
  }
  if (!clipped) {
    const dxf::Vec3 c = vp.center();
    const double w = vp.width() / 2, h = vp.height() / 2;
    std::vector<dxf::Point2> box;
    for (auto [x, y] : {std::pair{-w, -h}, {w, -h}, {w, h}, {-w, h}}) {
      const dxf::Vec3 q = geometry.paper_to_page.Apply({c.x + x, c.y + y, 0});
      box.push_back({q.x, q.y});
    }
    AddPaths(cr, {box}, true);
    cairo_clip(cr);
  }
  walker.set_hidden_layers(FrozenLayers(doc, vp));
  const dxf::Affine to_page =
      geometry.paper_to_page.Then(dxf::ViewportModelToPaper(vp));
  if (index != nullptr) {
    for (dxf::RecordId id : index->Meeting(ViewportWindow(vp))) {
      walker.WalkEntity(doc.entity(id), to_page, sink);
    }
  } else {
    walker.WalkBlock(*model, to_page, sink);
  }
  walker.set_hidden_layers({});
  cairo_restore(cr);
}

}  // namespace

void DrawPrimitive(cairo_t* cr, const dxf::Primitive& p,
                   const RenderOptions& options) {
  SetColor(cr, p.pen.color, options);
  switch (p.kind) {
    case dxf::Primitive::Kind::kStroke: {
      cairo_save(cr);
      if (!p.clip.empty()) {
        if (!AddPaths(cr, p.clip, true)) {
          cairo_restore(cr);
          return;
        }
        cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
        cairo_clip(cr);
      }
      if (AddPaths(cr, p.paths, false)) {
        const double width = p.width > 0 ? p.width : p.pen.lineweight_mm;
        cairo_set_line_width(cr, std::max(width, kThinnest));
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
        cairo_stroke(cr);
      }
      cairo_restore(cr);
      break;
    }
    case dxf::Primitive::Kind::kFill:
      if (AddPaths(cr, p.paths, true)) {
        cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
        cairo_fill(cr);
      }
      break;
    case dxf::Primitive::Kind::kDot:
      if (!p.paths.empty() && !p.paths[0].empty() && Finite(p.paths[0][0])) {
        cairo_new_path(cr);
        cairo_arc(cr, p.paths[0][0].x, p.paths[0][0].y,
                  std::max(p.pen.lineweight_mm, 0.2) / 2, 0, 2 * M_PI);
        cairo_fill(cr);
      }
      break;
    case dxf::Primitive::Kind::kText:
      DrawText(cr, p.text);
      break;
  }
}

std::map<std::string, int> RenderSheet(dxf::Document& doc,
                                       const dxf::Layout& layout,
                                       const SheetGeometry& geometry,
                                       const RenderOptions& options,
                                       cairo_t* cr,
                                       const ModelIndex* model_index) {
  dxf::EntityWalker walker(doc);
  CairoSink sink(cr, options);
  const dxf::Block* block = dxf::LayoutBlock(doc, layout);
  if (block == nullptr) return {};
  // The layout's own viewport (id 1, else the first) is the sheet itself.
  dxf::RecordId main = dxf::kNoRecord;
  for (dxf::RecordId id : block->entities) {
    dxf::Entity e = doc.entity(id);
    if (e.erased() || e.type() != "VIEWPORT") continue;
    if (main == dxf::kNoRecord) main = id;
    if (dxf::Viewport(e).id() == 1) {
      main = id;
      break;
    }
  }
  for (dxf::RecordId id : block->entities) {
    dxf::Entity e = doc.entity(id);
    if (e.erased()) continue;
    if (e.type() == "VIEWPORT") {
      if (id == main) continue;
      const dxf::Viewport vp(e);
      if (!vp.is_on()) continue;
      DrawViewport(doc, vp, geometry, model_index, walker, sink, cr);
    }
    walker.WalkEntity(e, geometry.paper_to_page, sink);
  }
  return walker.not_drawn();
}

}  // namespace lmt::render

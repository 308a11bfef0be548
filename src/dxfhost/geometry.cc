#include "dxfhost/geometry.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "dxf/geometry.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "dxf/text.h"
#include "dxf/viewport.h"

namespace lmt::dxfhost {
namespace {

constexpr int kMaxNesting = 16;
constexpr double kDeg = std::numbers::pi / 180.0;

// The engine's maps (dxf/geometry.h) under the names used here.
using Matrix = dxf::Affine;
Matrix Ocs(dxf::Vec3 n) { return dxf::OcsToWcs(n); }
Matrix Translation(dxf::Vec3 t) { return Matrix::Translation(t); }
Matrix RotationZ(double a) { return Matrix::RotationZ(a); }
Matrix Scaling(dxf::Vec3 s) { return Matrix::Scaling(s); }

struct Box {
  bool empty = true;
  dxf::Vec3 min, max;

  void Add(const dxf::Vec3& p) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
      return;
    }
    if (empty) {
      min = max = p;
      empty = false;
      return;
    }
    min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
    max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
  }
};

double NormalizeAngle(double a) {
  a = std::fmod(a, 2 * std::numbers::pi);
  return a < 0 ? a + 2 * std::numbers::pi : a;
}

// Arc of centre `c` and radius `r` in the plane of `m`'s input (OCS), from
// `start` counter-clockwise through `sweep` radians.
void AddArc(Box& box, const Matrix& m, dxf::Vec3 c, double r, double start,
            double sweep) {
  auto at = [&](double t) {
    return m.Apply(
        dxf::Vec3{c.x + r * std::cos(t), c.y + r * std::sin(t), c.z});
  };
  box.Add(at(start));
  box.Add(at(start + sweep));
  // Along each output axis the image is a·cos t + b·sin t: extreme at
  // atan2(b, a) and half a turn later.
  for (int axis = 0; axis < 3; ++axis) {
    double base = std::atan2(m.m[axis][1], m.m[axis][0]);
    for (double t : {base, base + std::numbers::pi}) {
      if (NormalizeAngle(t - start) <= sweep) box.Add(at(t));
    }
  }
}

// A polyline segment from a to b with `bulge`.
void AddSegment(Box& box, const Matrix& m, dxf::Vec3 a, dxf::Vec3 b,
                double bulge) {
  box.Add(m.Apply(a));
  box.Add(m.Apply(b));
  if (bulge == 0) return;
  double dx = b.x - a.x, dy = b.y - a.y;
  double chord = std::sqrt(dx * dx + dy * dy);
  if (chord == 0) return;
  double sweep = 4 * std::atan(bulge);  // signed
  double r = chord / (2 * std::sin(std::fabs(sweep) / 2));
  // Centre: from the chord midpoint along the normal.
  double sagitta_to_center = r * std::cos(std::fabs(sweep) / 2);
  double nx = -dy / chord, ny = dx / chord;  // left normal
  double sign = sweep > 0 ? 1 : -1;
  dxf::Vec3 c{(a.x + b.x) / 2 + sign * nx * sagitta_to_center,
              (a.y + b.y) / 2 + sign * ny * sagitta_to_center, a.z};
  double sa = std::atan2(a.y - c.y, a.x - c.x);
  if (sweep > 0) {
    AddArc(box, m, c, r, sa, sweep);
  } else {
    double sb = std::atan2(b.y - c.y, b.x - c.x);
    AddArc(box, m, c, r, sb, -sweep);
  }
}

// Rectangle (0,0)-(w,h) placed at `origin` rotated by `angle` in OCS.
void AddRect(Box& box, const Matrix& m, dxf::Vec3 origin, double angle,
             double x0, double y0, double w, double h) {
  double c = std::cos(angle), s = std::sin(angle);
  for (double px : {x0, x0 + w}) {
    for (double py : {y0, y0 + h}) {
      box.Add(m.Apply(dxf::Vec3{origin.x + px * c - py * s,
                                origin.y + px * s + py * c, origin.z}));
    }
  }
}

// Estimated single-line text extents (no font metrics).
void AddText(Box& box, const Matrix& world, const dxf::Entity& e,
             std::string_view text) {
  double h = e.GetDouble(40, 1);
  double wf = e.GetDouble(41, 1);
  double w = 0.6 * h * wf * static_cast<double>(text.size());
  int halign = static_cast<int>(e.GetInt(72, 0));
  dxf::Vec3 p = e.GetPoint(10);
  if (halign != 0 && e.Find(11) >= 0) p = e.GetPoint(11);
  double x0 = 0;
  if (halign == 1 || halign == 4) x0 = -w / 2;
  if (halign == 2) x0 = -w;
  Matrix m = world.Then(Ocs(e.GetPoint(210, dxf::Vec3{0, 0, 1})));
  AddRect(box, m, p, e.GetDouble(50, 0) * kDeg, x0, 0, w, h);
}

void AddMText(Box& box, const Matrix& world, const dxf::Entity& e) {
  dxf::MText mt(e);
  double h = mt.height() > 0 ? mt.height() : 1;
  std::string text = mt.text();
  size_t lines = 1, longest = 0, current = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == 'P') {
      ++lines;
      longest = std::max(longest, current);
      current = 0;
      ++i;
    } else {
      ++current;
    }
  }
  longest = std::max(longest, current);
  double w = e.GetDouble(42, 0);
  if (w <= 0) w = mt.width() > 0 ? mt.width() : 0.6 * h * longest;
  double ht = e.GetDouble(43, 0);
  if (ht <= 0) ht = h * (1 + 1.667 * static_cast<double>(lines - 1));
  int attach = mt.attachment();
  int col = (attach - 1) % 3, row = (attach - 1) / 3;
  double x0 = -w * col / 2.0;
  double y0 = -ht + ht * row / 2.0;
  double angle = e.GetDouble(50, 0) * kDeg;
  if (e.Find(11) >= 0) {
    dxf::Vec3 xdir = e.GetPoint(11);
    angle = std::atan2(xdir.y, xdir.x);
  }
  AddRect(box, world, mt.insert_point(), angle, x0, y0, w, ht);
}

class Extents {
 public:
  explicit Extents(Drawing& d) : d_(d) {}

  void AddEntity(dxf::Document& doc, dxf::Entity e, const Matrix& m, int depth,
                 Box& box);

 private:
  void AddBlock(dxf::Document& doc, dxf::Block* block, const Matrix& m,
                int depth, Box& box);
  dxf::Document* Xref(dxf::Document& doc, dxf::Block* block);

  Drawing& d_;
};

dxf::Document* Extents::Xref(dxf::Document& doc, dxf::Block* block) {
  std::shared_ptr<Drawing> x = d_.Xref(doc, *block);
  return x != nullptr ? x->doc.get() : nullptr;
}

void Extents::AddBlock(dxf::Document& doc, dxf::Block* block, const Matrix& m,
                       int depth, Box& box) {
  if (depth > kMaxNesting || block == nullptr) return;
  int flags = block->begin != dxf::kNoRecord
                  ? static_cast<int>(doc.entity(block->begin).GetInt(70, 0))
                  : 0;
  if (flags & 4) {
    if (dxf::Document* xdoc = Xref(doc, block)) {
      AddBlock(*xdoc, xdoc->model_space(), m, depth + 1, box);
    }
    return;
  }
  for (dxf::RecordId id : block->entities) {
    dxf::Entity child = doc.entity(id);
    if (child.erased()) continue;
    if (child.type() == "ATTDEF" && (dxf::Attrib(child).flags() & 2) == 0) {
      continue;  // only constant attributes show in references
    }
    AddEntity(doc, child, m, depth + 1, box);
  }
}

void Extents::AddEntity(dxf::Document& doc, dxf::Entity e, const Matrix& m,
                        int depth, Box& box) {
  std::string_view type = e.type();
  dxf::Vec3 normal = e.GetPoint(210, dxf::Vec3{0, 0, 1});
  if (type == "LINE") {
    box.Add(m.Apply(e.GetPoint(10)));
    box.Add(m.Apply(e.GetPoint(11)));
  } else if (type == "POINT") {
    box.Add(m.Apply(e.GetPoint(10)));
  } else if (type == "CIRCLE" || type == "ARC") {
    Matrix om = m.Then(Ocs(normal));
    double start = 0, sweep = 2 * std::numbers::pi;
    if (type == "ARC") {
      start = e.GetDouble(50, 0) * kDeg;
      sweep = NormalizeAngle(e.GetDouble(51, 0) * kDeg - start);
      if (sweep == 0) sweep = 2 * std::numbers::pi;
    }
    AddArc(box, om, e.GetPoint(10), e.GetDouble(40, 0), start, sweep);
  } else if (type == "LWPOLYLINE") {
    dxf::LwPolyline pl(e);
    Matrix om = m.Then(Ocs(pl.extrusion()));
    std::vector<dxf::LwVertex> v = pl.vertices();
    double z = pl.elevation();
    for (size_t i = 0; i < v.size(); ++i) {
      size_t j = i + 1;
      if (j == v.size()) {
        if (!pl.closed()) {
          box.Add(om.Apply(dxf::Vec3{v[i].x, v[i].y, z}));
          break;
        }
        j = 0;
      }
      AddSegment(box, om, dxf::Vec3{v[i].x, v[i].y, z},
                 dxf::Vec3{v[j].x, v[j].y, z}, v[i].bulge);
    }
  } else if (type == "POLYLINE") {
    bool is3d = (e.GetInt(70, 0) & (8 | 16 | 64)) != 0;
    Matrix om = is3d ? m : m.Then(Ocs(normal));
    std::vector<dxf::Entity> verts;
    for (dxf::RecordId c : doc.db().children(e.id())) {
      dxf::Entity v = doc.entity(c);
      if (v.type() == "VERTEX") verts.push_back(v);
    }
    bool closed = (e.GetInt(70, 0) & 1) != 0;
    for (size_t i = 0; i < verts.size(); ++i) {
      size_t j = i + 1 == verts.size() ? 0 : i + 1;
      if (i + 1 == verts.size() && !closed) {
        box.Add(om.Apply(verts[i].GetPoint(10)));
        break;
      }
      AddSegment(box, om, verts[i].GetPoint(10), verts[j].GetPoint(10),
                 is3d ? 0 : verts[i].GetDouble(42, 0));
    }
  } else if (type == "SOLID" || type == "TRACE" || type == "3DFACE") {
    Matrix om = type == "3DFACE" ? m : m.Then(Ocs(normal));
    for (int code : {10, 11, 12, 13}) {
      if (e.Find(code) >= 0) box.Add(om.Apply(e.GetPoint(code)));
    }
  } else if (type == "ELLIPSE") {
    dxf::Vec3 c = e.GetPoint(10), major = e.GetPoint(11);
    double ratio = e.GetDouble(40, 1);
    // Minor axis = ratio * (N x major).
    dxf::Vec3 minor{ratio * (normal.y * major.z - normal.z * major.y),
                    ratio * (normal.z * major.x - normal.x * major.z),
                    ratio * (normal.x * major.y - normal.y * major.x)};
    double t0 = e.GetDouble(41, 0), t1 = e.GetDouble(42, 2 * std::numbers::pi);
    double sweep = NormalizeAngle(t1 - t0);
    if (sweep == 0) sweep = 2 * std::numbers::pi;
    constexpr int kSteps = 128;
    for (int i = 0; i <= kSteps; ++i) {
      double t = t0 + sweep * i / kSteps;
      box.Add(m.Apply(
          dxf::Vec3{c.x + major.x * std::cos(t) + minor.x * std::sin(t),
                    c.y + major.y * std::cos(t) + minor.y * std::sin(t),
                    c.z + major.z * std::cos(t) + minor.z * std::sin(t)}));
    }
  } else if (type == "SPLINE") {
    auto xs = e.GetAll(10);
    for (size_t i = 0; i < e.tags().size(); ++i) {
      const dxf::Tag& t = e.tags()[i];
      if (t.code != 10) continue;
      dxf::Vec3 p{dxf::ParseDouble(t.value()).value_or(0), 0, 0};
      if (i + 1 < e.tags().size() && e.tags()[i + 1].code == 20) {
        p.y = dxf::ParseDouble(e.tags()[i + 1].value()).value_or(0);
      }
      if (i + 2 < e.tags().size() && e.tags()[i + 2].code == 30) {
        p.z = dxf::ParseDouble(e.tags()[i + 2].value()).value_or(0);
      }
      box.Add(m.Apply(p));
    }
    (void)xs;
  } else if (type == "TEXT") {
    AddText(box, m, e, dxf::Text(e).text());
  } else if (type == "ATTRIB" || type == "ATTDEF") {
    dxf::Attrib a(e);
    if (type == "ATTRIB" && (a.flags() & 1)) return;  // invisible
    std::string value = type == "ATTDEF" && (a.flags() & 2) == 0
                            ? std::string(a.tag())
                            : a.value();
    AddText(box, m, e, value);
  } else if (type == "MTEXT") {
    AddMText(box, m, e);
  } else if (type == "VIEWPORT") {
    dxf::Viewport vp(e);
    dxf::Vec3 c = vp.center();
    double w = vp.width() / 2, h = vp.height() / 2;
    box.Add(m.Apply(dxf::Vec3{c.x - w, c.y - h, c.z}));
    box.Add(m.Apply(dxf::Vec3{c.x + w, c.y + h, c.z}));
  } else if (type == "INSERT" || type == "DIMENSION") {
    dxf::Block* block = doc.FindBlock(e.GetString(2));
    if (block == nullptr) return;
    dxf::Vec3 base{};
    if (block->begin != dxf::kNoRecord) {
      base = doc.entity(block->begin).GetPoint(10);
    }
    if (type == "DIMENSION") {
      // The *D block already holds world geometry.
      AddBlock(doc, block, m.Then(Translation({-base.x, -base.y, -base.z})),
               depth, box);
      return;
    }
    dxf::Insert ins(e);
    dxf::Vec3 s = ins.scale();
    Matrix local = RotationZ(ins.rotation() * kDeg)
                       .Then(Scaling(s))
                       .Then(Translation({-base.x, -base.y, -base.z}));
    Matrix ocs = Ocs(ins.extrusion());
    double col_spacing = e.GetDouble(44, 0), row_spacing = e.GetDouble(45, 0);
    for (int row = 0; row < std::max(1, ins.rows()); ++row) {
      for (int col = 0; col < std::max(1, ins.columns()); ++col) {
        // MINSERT cells shift the insertion point, rotated but not scaled.
        dxf::Vec3 shift =
            RotationZ(ins.rotation() * kDeg)
                .Apply(dxf::Vec3{col * col_spacing, row * row_spacing, 0});
        dxf::Vec3 p = ins.insert_point();
        Matrix placed = m.Then(ocs).Then(
            Translation({p.x + shift.x, p.y + shift.y, p.z + shift.z}));
        AddBlock(doc, block, placed.Then(local), depth, box);
      }
    }
    for (const dxf::Attrib& a : ins.attribs()) {
      AddEntity(doc, a, m, depth + 1, box);
    }
  }
}

}  // namespace

std::optional<host::BoundingBox> EntityExtents(Drawing& d, dxf::RecordId id) {
  Box box;
  Extents extents(d);
  extents.AddEntity(*d.doc, d.entity(id), Matrix(), 0, box);
  if (box.empty) return std::nullopt;
  return host::BoundingBox{host::Point{box.min.x, box.min.y, box.min.z},
                           host::Point{box.max.x, box.max.y, box.max.z}};
}

}  // namespace lmt::dxfhost

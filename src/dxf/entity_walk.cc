#include "dxf/entity_walk.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numbers>

#include "dxf/encoding.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "dxf/tag.h"
#include "dxf/text.h"
#include "dxf/text_content.h"

namespace lmt::dxf {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180;
// Block references nest deeper only in damaged (cyclic) drawings.
constexpr int kMaxDepth = 32;
constexpr int kMaxGridCells = 10000;
// How far an infinite line reaches each way, in target units.
constexpr double kInfiniteReach = 1e5;
constexpr int kMaxPatternSegments = 50000;
// CAD programs space lines of text 5/3 of the text height apart.
constexpr double kLineSpacing = 5.0 / 3.0;

std::string Upper(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

Point2 Map(const Affine& a, double x, double y, double z = 0) {
  const Vec3 p = a.Apply(Vec3{x, y, z});
  return Point2{p.x, p.y};
}

Point2 MapVector(const Affine& a, double x, double y, double z = 0) {
  return Point2{a.m[0][0] * x + a.m[0][1] * y + a.m[0][2] * z,
                a.m[1][0] * x + a.m[1][1] * y + a.m[1][2] * z};
}

Affine OcsOf(const Entity& e) {
  return OcsToWcs(e.GetPoint(210, Vec3{0, 0, 1}));
}

struct PolyVertex {
  double x = 0, y = 0;
  double start_width = 0, end_width = 0;
  double bulge = 0;
};

// Points of an arc around (cx, cy) from angle a0 through the signed sweep,
// in local coordinates.
std::vector<Point2> ArcLocal(double cx, double cy, double r, double a0,
                             double sweep, int segments) {
  std::vector<Point2> pts;
  pts.reserve(static_cast<size_t>(segments) + 1);
  for (int k = 0; k <= segments; ++k) {
    const double a = a0 + sweep * k / segments;
    pts.push_back(Point2{cx + r * std::cos(a), cy + r * std::sin(a)});
  }
  return pts;
}

int SegmentsFor(double sweep, double radius, double max_error) {
  sweep = std::fabs(sweep);
  int n = static_cast<int>(std::ceil(sweep / (kPi / 4)));  // at least 8 a turn
  if (radius > max_error && max_error > 0) {
    const double step = 2 * std::acos(1 - max_error / radius);
    if (step > 0) n = std::max(n, static_cast<int>(std::ceil(sweep / step)));
  }
  return std::clamp(n, 1, 4096);
}

std::vector<Point2> MapAll(const Affine& a, const std::vector<Point2>& pts,
                           double z = 0) {
  std::vector<Point2> out;
  out.reserve(pts.size());
  for (const Point2& p : pts) out.push_back(Map(a, p.x, p.y, z));
  return out;
}

// de Boor evaluation of a (rational) B-spline at `samples` + 1 parameters.
std::vector<Vec3> SplinePoints(int degree, std::vector<double> knots,
                               const std::vector<Vec3>& ctrl,
                               std::vector<double> weights, int samples) {
  const int n = static_cast<int>(ctrl.size());
  if (n == 0) return {};
  degree = std::clamp(degree, 1, n - 1 > 0 ? n - 1 : 1);
  if (n <= degree) return ctrl;
  if (static_cast<int>(knots.size()) != n + degree + 1) {
    knots.clear();  // clamped uniform
    for (int i = 0; i < n + degree + 1; ++i) {
      knots.push_back(std::clamp(i - degree, 0, n - degree));
    }
  }
  if (static_cast<int>(weights.size()) != n) weights.assign(n, 1.0);
  const double t0 = knots[degree];
  const double t1 = knots[n];
  std::vector<Vec3> out;
  std::vector<double> dx(degree + 1), dy(degree + 1), dz(degree + 1),
      dw(degree + 1);
  for (int s = 0; s <= samples; ++s) {
    const double t = t0 + (t1 - t0) * s / samples;
    int k = degree;
    while (k < n - 1 && knots[k + 1] <= t) ++k;
    for (int j = 0; j <= degree; ++j) {
      const int idx = j + k - degree;
      const double w = weights[idx];
      dx[j] = ctrl[idx].x * w, dy[j] = ctrl[idx].y * w;
      dz[j] = ctrl[idx].z * w, dw[j] = w;
    }
    for (int r = 1; r <= degree; ++r) {
      for (int j = degree; j >= r; --j) {
        const double lo = knots[j + k - degree];
        const double hi = knots[j + 1 + k - r];
        const double alpha = hi > lo ? (t - lo) / (hi - lo) : 0;
        dx[j] = (1 - alpha) * dx[j - 1] + alpha * dx[j];
        dy[j] = (1 - alpha) * dy[j - 1] + alpha * dy[j];
        dz[j] = (1 - alpha) * dz[j - 1] + alpha * dz[j];
        dw[j] = (1 - alpha) * dw[j - 1] + alpha * dw[j];
      }
    }
    const double w = dw[degree] != 0 ? dw[degree] : 1;
    out.push_back(Vec3{dx[degree] / w, dy[degree] / w, dz[degree] / w});
  }
  return out;
}

// Sequential reader over a record's tags, for the nested structures of
// HATCH boundaries.
class TagCursor {
 public:
  TagCursor(std::span<const Tag> tags, int at, int end)
      : tags_(tags), at_(at), end_(end) {}
  bool at(int code) const { return at_ < end_ && tags_[at_].code == code; }
  // The value of `code` at the cursor, advancing; false when absent.
  bool Read(int code, double* v) {
    if (!at(code)) return false;
    *v = ParseDouble(tags_[at_].value()).value_or(0);
    ++at_;
    return true;
  }
  bool ReadInt(int code, int* v) {
    double d = 0;
    if (!Read(code, &d)) return false;
    *v = static_cast<int>(d);
    return true;
  }
  void Skip() { ++at_; }
  bool done() const { return at_ >= end_; }

 private:
  std::span<const Tag> tags_;
  int at_;
  int end_;
};

using Loop = std::vector<Point2>;

void AppendPoints(Loop& loop, const std::vector<Point2>& pts) {
  for (const Point2& p : pts) {
    if (!loop.empty() && std::fabs(loop.back().x - p.x) < 1e-12 &&
        std::fabs(loop.back().y - p.y) < 1e-12) {
      continue;
    }
    loop.push_back(p);
  }
}

// One boundary path of a HATCH in its OCS; false when the tags do not
// follow the boundary structure.
bool ReadHatchPath(TagCursor& c, double max_error, Loop* loop) {
  int flags = 0;
  if (!c.ReadInt(92, &flags)) return false;
  if (flags & 2) {  // polyline path
    int has_bulge = 0, closed = 0, count = 0;
    if (!c.ReadInt(72, &has_bulge) || !c.ReadInt(73, &closed) ||
        !c.ReadInt(93, &count)) {
      return false;
    }
    std::vector<PolyVertex> v(static_cast<size_t>(std::max(count, 0)));
    for (PolyVertex& p : v) {
      if (!c.Read(10, &p.x) || !c.Read(20, &p.y)) return false;
      c.Read(42, &p.bulge);
    }
    const size_t n = v.size();
    for (size_t i = 0; i < n; ++i) {
      const PolyVertex& a = v[i];
      const PolyVertex& b = v[(i + 1) % n];
      // Boundaries are closed whatever 73 says.
      AppendPoints(*loop,
                   BulgeSegment({a.x, a.y}, {b.x, b.y}, a.bulge, max_error));
    }
  } else {
    int edges = 0;
    if (!c.ReadInt(93, &edges)) return false;
    for (int k = 0; k < edges; ++k) {
      int type = 0;
      if (!c.ReadInt(72, &type)) return false;
      if (type == 1) {
        double x0, y0, x1, y1;
        if (!c.Read(10, &x0) || !c.Read(20, &y0) || !c.Read(11, &x1) ||
            !c.Read(21, &y1)) {
          return false;
        }
        AppendPoints(*loop, {{x0, y0}, {x1, y1}});
      } else if (type == 2 || type == 3) {
        double cx, cy, mx = 0, my = 0, r, a0, a1;
        int ccw = 1;
        if (!c.Read(10, &cx) || !c.Read(20, &cy)) return false;
        if (type == 3 && (!c.Read(11, &mx) || !c.Read(21, &my))) return false;
        if (!c.Read(40, &r) || !c.Read(50, &a0) || !c.Read(51, &a1)) {
          return false;
        }
        c.ReadInt(73, &ccw);
        // Clockwise edges store their angles mirrored.
        if (!ccw) a0 = -a0, a1 = -a1;
        double sweep = (a1 - a0) * kDegree;
        if (ccw) {
          while (sweep <= 0) sweep += 2 * kPi;
        } else {
          while (sweep >= 0) sweep -= 2 * kPi;
        }
        if (type == 2) {
          AppendPoints(*loop, ArcLocal(cx, cy, r, a0 * kDegree, sweep,
                                       SegmentsFor(sweep, r, max_error)));
        } else {
          const double major = std::hypot(mx, my);
          const double ux = mx, uy = my;  // major axis; minor = ratio * perp
          const int n = SegmentsFor(sweep, major, max_error);
          std::vector<Point2> pts;
          for (int s = 0; s <= n; ++s) {
            const double t = a0 * kDegree + sweep * s / n;
            pts.push_back({cx + ux * std::cos(t) - r * uy * std::sin(t),
                           cy + uy * std::cos(t) + r * ux * std::sin(t)});
          }
          AppendPoints(*loop, pts);
        }
      } else if (type == 4) {
        int degree = 3, rational = 0, periodic = 0, nk = 0, nc = 0;
        if (!c.ReadInt(94, &degree) || !c.ReadInt(73, &rational) ||
            !c.ReadInt(74, &periodic) || !c.ReadInt(95, &nk) ||
            !c.ReadInt(96, &nc)) {
          return false;
        }
        std::vector<double> knots(static_cast<size_t>(std::max(nk, 0)));
        for (double& kv : knots) {
          if (!c.Read(40, &kv)) return false;
        }
        std::vector<Vec3> ctrl(static_cast<size_t>(std::max(nc, 0)));
        std::vector<double> weights;
        for (Vec3& p : ctrl) {
          if (!c.Read(10, &p.x) || !c.Read(20, &p.y)) return false;
          double w = 1;
          if (c.Read(42, &w)) weights.push_back(w);
        }
        // Newer files add fit points and end tangents; a 97 here may also
        // be the path's source count, which ReadHatchPaths reads as well.
        int nf = 0;
        if (c.at(97)) {
          c.ReadInt(97, &nf);
          for (int f = 0; f < nf; ++f) {
            double x, y;
            if (!c.Read(11, &x) || !c.Read(21, &y)) return false;
          }
        }
        double tx;
        if (c.Read(12, &tx)) c.Skip();
        if (c.Read(13, &tx)) c.Skip();
        std::vector<Point2> pts;
        for (const Vec3& p :
             SplinePoints(degree, knots, ctrl, weights, std::max(16, nc * 8))) {
          pts.push_back({p.x, p.y});
        }
        AppendPoints(*loop, pts);
      } else {
        return false;
      }
    }
  }
  int sources = 0;
  if (c.ReadInt(97, &sources)) {
    for (int s = 0; s < sources && c.at(330); ++s) c.Skip();
  }
  return true;
}

struct PatternLine {
  double angle = 0;  // degrees
  Point2 base, offset;
  std::vector<double> dashes;
};

// Pattern line segments (pairs of points) covering the box, in OCS; false
// when there would be more than `limit`.
bool PatternSegments(const std::vector<PatternLine>& lines, Point2 lo,
                     Point2 hi, int limit, std::vector<Loop>* out) {
  const Point2 corners[4] = {lo, {hi.x, lo.y}, hi, {lo.x, hi.y}};
  for (const PatternLine& line : lines) {
    const double dx = std::cos(line.angle * kDegree);
    const double dy = std::sin(line.angle * kDegree);
    const double nx = -dy, ny = dx;
    const double step = line.offset.x * nx + line.offset.y * ny;
    if (std::fabs(step) < 1e-9) continue;
    double nmin = 1e300, nmax = -1e300;
    for (const Point2& c : corners) {
      const double d = (c.x - line.base.x) * nx + (c.y - line.base.y) * ny;
      nmin = std::min(nmin, d), nmax = std::max(nmax, d);
    }
    const double k0 = std::ceil(std::min(nmin / step, nmax / step));
    const double k1 = std::floor(std::max(nmin / step, nmax / step));
    double period = 0;
    for (double d : line.dashes) period += std::fabs(d);
    for (double k = k0; k <= k1; ++k) {
      const double px = line.base.x + k * line.offset.x;
      const double py = line.base.y + k * line.offset.y;
      double tmin = 1e300, tmax = -1e300;
      for (const Point2& c : corners) {
        const double t = (c.x - px) * dx + (c.y - py) * dy;
        tmin = std::min(tmin, t), tmax = std::max(tmax, t);
      }
      auto add = [&](double a, double b) {
        out->push_back(
            {{px + a * dx, py + a * dy}, {px + b * dx, py + b * dy}});
        return static_cast<int>(out->size()) <= limit;
      };
      if (period <= 0) {
        if (!add(tmin, tmax)) return false;
        continue;
      }
      double t = std::floor(tmin / period) * period;
      while (t < tmax) {
        for (double d : line.dashes) {
          if (d >= 0 && t + d >= tmin && t <= tmax && !add(t, t + d)) {
            return false;
          }
          t += std::fabs(d);
        }
      }
    }
  }
  return true;
}

}  // namespace

std::vector<Point2> BulgeSegment(Point2 a, Point2 b, double bulge,
                                 double max_error) {
  const double cx = b.x - a.x, cy = b.y - a.y;
  const double chord = std::hypot(cx, cy);
  if (std::fabs(bulge) < 1e-12 || chord < 1e-12) return {a, b};
  const double sweep = 4 * std::atan(bulge);
  const double radius = chord / (2 * std::fabs(std::sin(sweep / 2)));
  // The centre lies off the chord's midpoint along its left normal.
  const double d = (1 - bulge * bulge) / (4 * bulge);
  const double ox = (a.x + b.x) / 2 - cy * d;
  const double oy = (a.y + b.y) / 2 + cx * d;
  const double a0 = std::atan2(a.y - oy, a.x - ox);
  std::vector<Point2> pts = ArcLocal(ox, oy, radius, a0, sweep,
                                     SegmentsFor(sweep, radius, max_error));
  pts.front() = a;
  pts.back() = b;
  return pts;
}

double AffineScale2(const Affine& a) {
  return std::sqrt(std::fabs(a.m[0][0] * a.m[1][1] - a.m[0][1] * a.m[1][0]));
}

EntityWalker::EntityWalker(Document& doc) : doc_(doc) {
  if (Table* table = doc_.table("LAYER")) {
    for (RecordId id : table->entries) {
      Entity layer = doc_.entity(id);
      LayerInfo info;
      const int color = static_cast<int>(layer.GetInt(62, 7));
      info.pen.color = layer.Find(420) >= 0 ? TrueColor(layer.GetInt(420))
                                            : AciColor(std::abs(color));
      const int lw = static_cast<int>(layer.GetInt(370, -3));
      info.pen.lineweight_mm = lw >= 0 ? lw / 100.0 : 0.25;
      info.hidden = color < 0 || (layer.GetInt(70, 0) & 1) != 0 ||
                    layer.GetInt(290, 1) == 0;
      layers_[Upper(layer.GetString(2))] = info;
    }
  }
}

void EntityWalker::set_hidden_layers(
    const std::vector<std::string_view>& names) {
  hidden_.clear();
  for (std::string_view n : names) hidden_.insert(Upper(n));
}

const EntityWalker::LayerInfo& EntityWalker::Layer(std::string_view name) {
  static const LayerInfo kUnknown{Pen{AciColor(7), 0.25}, false};
  auto it = layers_.find(Upper(name));
  return it == layers_.end() ? kUnknown : it->second;
}

std::string EntityWalker::EffectiveLayer(const Entity& e,
                                         const Context& c) const {
  const std::string_view layer = e.layer();
  if (c.depth > 0 && layer == "0") return c.block_layer;
  return std::string(layer);
}

bool EntityWalker::Visible(const Entity& e, const Context& c) {
  if (e.invisible()) return false;
  const std::string layer = EffectiveLayer(e, c);
  return !Layer(layer).hidden && !hidden_.contains(Upper(layer));
}

Pen EntityWalker::PenOf(const Entity& e, const Context& c) {
  const LayerInfo& layer = Layer(EffectiveLayer(e, c));
  Pen pen;
  const int color = e.color();
  if (e.Find(420) >= 0) {
    pen.color = TrueColor(e.GetInt(420));
  } else if (color == 0) {
    pen.color = c.by_block.color;
  } else if (color >= 256 || color < -255) {
    pen.color = layer.pen.color;
  } else {
    pen.color = AciColor(std::abs(color));
  }
  const int lw = e.lineweight();
  if (lw == -1) {
    pen.lineweight_mm = layer.pen.lineweight_mm;
  } else if (lw == -2) {
    pen.lineweight_mm = c.by_block.lineweight_mm;
  } else {
    pen.lineweight_mm = lw >= 0 ? lw / 100.0 : 0.25;
  }
  return pen;
}

int EntityWalker::Segments(double sweep, double r) const {
  return SegmentsFor(sweep, r, tolerance_);
}

void EntityWalker::WalkBlock(const Block& block, const Affine& to_target,
                             PrimitiveSink& sink) {
  for (RecordId id : block.entities) {
    WalkEntity(doc_.entity(id), to_target, sink);
  }
}

void EntityWalker::WalkEntity(Entity e, const Affine& to_target,
                              PrimitiveSink& sink) {
  Context c;
  c.xf = to_target;
  c.by_block = Pen{AciColor(7), 0.25};
  Walk(e, c, sink);
}

namespace {

// Emits a polyline with widths and bulges given in the OCS mapped by `xf`.
void EmitPolyline(const std::vector<PolyVertex>& v, bool closed, double z,
                  const Affine& xf, const Pen& pen, double tolerance,
                  PrimitiveSink& sink) {
  const size_t n = v.size();
  if (n == 0) return;
  const double scale = AffineScale2(xf);
  const double local_error = scale > 0 ? tolerance / scale : tolerance;
  const size_t segments = closed ? n : n - 1;
  if (segments == 0) {
    Primitive dot{Primitive::Kind::kDot, pen, {{Map(xf, v[0].x, v[0].y, z)}}};
    sink.Add(std::move(dot));
    return;
  }
  bool constant = true;
  for (size_t i = 0; i < segments; ++i) {
    if (v[i].start_width != v[0].start_width ||
        v[i].end_width != v[0].start_width) {
      constant = false;
    }
  }
  if (constant) {
    std::vector<Point2> local;
    for (size_t i = 0; i < segments; ++i) {
      const PolyVertex& a = v[i];
      const PolyVertex& b = v[(i + 1) % n];
      AppendPoints(local,
                   BulgeSegment({a.x, a.y}, {b.x, b.y}, a.bulge, local_error));
    }
    Primitive p{Primitive::Kind::kStroke, pen, {MapAll(xf, local, z)}};
    p.width = v[0].start_width * scale;
    sink.Add(std::move(p));
    return;
  }
  // Tapering segments become filled outlines, one per segment.
  for (size_t i = 0; i < segments; ++i) {
    const PolyVertex& a = v[i];
    const PolyVertex& b = v[(i + 1) % n];
    std::vector<Point2> pts =
        BulgeSegment({a.x, a.y}, {b.x, b.y}, a.bulge, local_error);
    if (a.start_width == 0 && a.end_width == 0) {
      sink.Add(Primitive{Primitive::Kind::kStroke, pen, {MapAll(xf, pts, z)}});
      continue;
    }
    std::vector<Point2> left, right;
    const size_t m = pts.size();
    for (size_t k = 0; k < m; ++k) {
      const Point2& p = pts[k];
      const Point2& p0 = pts[k == 0 ? 0 : k - 1];
      const Point2& p1 = pts[k + 1 < m ? k + 1 : k];
      double tx = p1.x - p0.x, ty = p1.y - p0.y;
      const double len = std::hypot(tx, ty);
      if (len > 0) tx /= len, ty /= len;
      const double t = m > 1 ? static_cast<double>(k) / (m - 1) : 0;
      const double half =
          (a.start_width + (a.end_width - a.start_width) * t) / 2;
      left.push_back({p.x - ty * half, p.y + tx * half});
      right.push_back({p.x + ty * half, p.y - tx * half});
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    sink.Add(Primitive{Primitive::Kind::kFill, pen, {MapAll(xf, left, z)}});
  }
}

}  // namespace

void EntityWalker::Walk(Entity e, const Context& c, PrimitiveSink& sink) {
  if (!e.valid() || e.erased()) return;
  const std::string_view type = e.type();
  if (!Visible(e, c)) return;
  const Pen pen = PenOf(e, c);
  if (type == "LINE") {
    const Vec3 a = e.GetPoint(10), b = e.GetPoint(11);
    sink.Add(Primitive{Primitive::Kind::kStroke,
                       pen,
                       {{Map(c.xf, a.x, a.y, a.z), Map(c.xf, b.x, b.y, b.z)}}});
  } else if (type == "CIRCLE" || type == "ARC") {
    const Affine xf = c.xf.Then(OcsOf(e));
    const Vec3 o = e.GetPoint(10);
    const double r = e.GetDouble(40);
    double a0 = 0, sweep = 2 * kPi;
    if (type == "ARC") {
      a0 = e.GetDouble(50) * kDegree;
      sweep = e.GetDouble(51) * kDegree - a0;
      while (sweep <= 0) sweep += 2 * kPi;
    }
    const int n = Segments(sweep, r * AffineScale2(xf));
    sink.Add(Primitive{Primitive::Kind::kStroke,
                       pen,
                       {MapAll(xf, ArcLocal(o.x, o.y, r, a0, sweep, n), o.z)}});
  } else if (type == "ELLIPSE") {
    const Vec3 o = e.GetPoint(10), major = e.GetPoint(11);
    const Vec3 n = e.GetPoint(210, Vec3{0, 0, 1});
    const double ratio = e.GetDouble(40, 1);
    double t0 = e.GetDouble(41, 0), t1 = e.GetDouble(42, 2 * kPi);
    while (t1 <= t0) t1 += 2 * kPi;
    // minor = ratio * (n x major), n normalised
    const double nl = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    const Vec3 u = nl > 0 ? Vec3{n.x / nl, n.y / nl, n.z / nl} : Vec3{0, 0, 1};
    const Vec3 minor{ratio * (u.y * major.z - u.z * major.y),
                     ratio * (u.z * major.x - u.x * major.z),
                     ratio * (u.x * major.y - u.y * major.x)};
    const double len =
        std::sqrt(major.x * major.x + major.y * major.y + major.z * major.z);
    const int segs = Segments(t1 - t0, len * AffineScale2(c.xf));
    std::vector<Point2> pts;
    for (int k = 0; k <= segs; ++k) {
      const double t = t0 + (t1 - t0) * k / segs;
      const double cs = std::cos(t), sn = std::sin(t);
      pts.push_back(Map(c.xf, o.x + cs * major.x + sn * minor.x,
                        o.y + cs * major.y + sn * minor.y,
                        o.z + cs * major.z + sn * minor.z));
    }
    sink.Add(Primitive{Primitive::Kind::kStroke, pen, {std::move(pts)}});
  } else if (type == "LWPOLYLINE") {
    LwPolyline lw(e);
    const double constant = e.GetDouble(43, 0);
    std::vector<PolyVertex> v;
    for (const LwVertex& x : lw.vertices()) {
      const bool own = x.start_width != 0 || x.end_width != 0;
      v.push_back({x.x, x.y, own ? x.start_width : constant,
                   own ? x.end_width : constant, x.bulge});
    }
    EmitPolyline(v, lw.closed(), lw.elevation(), c.xf.Then(OcsOf(e)), pen,
                 tolerance_, sink);
  } else if (type == "POLYLINE") {
    WalkPolyline(e, c, sink);
  } else if (type == "SPLINE") {
    std::vector<double> knots, weights;
    std::vector<Vec3> ctrl, fit;
    for (const Tag& t : e.tags()) {
      const double v = ParseDouble(t.value()).value_or(0);
      switch (t.code) {
        case 40:
          knots.push_back(v);
          break;
        case 41:
          weights.push_back(v);
          break;
        case 10:
          ctrl.push_back({v, 0, 0});
          break;
        case 20:
          if (!ctrl.empty()) ctrl.back().y = v;
          break;
        case 30:
          if (!ctrl.empty()) ctrl.back().z = v;
          break;
        case 11:
          fit.push_back({v, 0, 0});
          break;
        case 21:
          if (!fit.empty()) fit.back().y = v;
          break;
        case 31:
          if (!fit.empty()) fit.back().z = v;
          break;
        default:
          break;
      }
    }
    std::vector<Vec3> pts =
        !ctrl.empty()
            ? SplinePoints(static_cast<int>(e.GetInt(71, 3)), knots, ctrl,
                           weights,
                           std::max(16, static_cast<int>(ctrl.size()) * 8))
            : fit;
    std::vector<Point2> out;
    for (const Vec3& p : pts) out.push_back(Map(c.xf, p.x, p.y, p.z));
    if (out.size() < 2) {
      NotDrawn("SPLINE (no points)");
      return;
    }
    sink.Add(Primitive{Primitive::Kind::kStroke, pen, {std::move(out)}});
  } else if (type == "POINT") {
    const Vec3 p = e.GetPoint(10);
    sink.Add(
        Primitive{Primitive::Kind::kDot, pen, {{Map(c.xf, p.x, p.y, p.z)}}});
  } else if (type == "SOLID" || type == "TRACE") {
    const Affine xf = c.xf.Then(OcsOf(e));
    const Vec3 p0 = e.GetPoint(10), p1 = e.GetPoint(11), p2 = e.GetPoint(12);
    const Vec3 p3 = e.GetPoint(13, p2);
    // The third and fourth corners are stored crosswise.
    sink.Add(
        Primitive{Primitive::Kind::kFill,
                  pen,
                  {{Map(xf, p0.x, p0.y, p0.z), Map(xf, p1.x, p1.y, p1.z),
                    Map(xf, p3.x, p3.y, p3.z), Map(xf, p2.x, p2.y, p2.z)}}});
  } else if (type == "3DFACE") {
    std::vector<Point2> pts;
    for (int code : {10, 11, 12, 13, 10}) {
      const Vec3 p = e.GetPoint(code);
      pts.push_back(Map(c.xf, p.x, p.y, p.z));
    }
    sink.Add(Primitive{Primitive::Kind::kStroke, pen, {std::move(pts)}});
  } else if (type == "LEADER") {
    std::vector<Point2> pts;
    std::vector<Vec3> vertices;
    for (const Tag& t : e.tags()) {
      const double v = ParseDouble(t.value()).value_or(0);
      if (t.code == 10) vertices.push_back({v, 0, 0});
      if (t.code == 20 && !vertices.empty()) vertices.back().y = v;
      if (t.code == 30 && !vertices.empty()) vertices.back().z = v;
    }
    for (const Vec3& p : vertices) pts.push_back(Map(c.xf, p.x, p.y, p.z));
    if (pts.size() >= 2) {
      sink.Add(Primitive{Primitive::Kind::kStroke, pen, {std::move(pts)}});
    }
  } else if (type == "TEXT") {
    WalkText(e, c, sink, false);
  } else if (type == "ATTDEF") {
    // Definitions show inside a block only through their ATTRIBs.
    if (c.depth == 0) WalkText(e, c, sink, true);
  } else if (type == "ATTRIB") {
    WalkText(e, c, sink, true);
  } else if (type == "MTEXT") {
    WalkMText(e, c, sink);
  } else if (type == "INSERT") {
    WalkInsert(e, c, sink);
  } else if (type == "DIMENSION") {
    const Vec3 at = e.GetPoint(12);
    WalkBlockRef(e.GetString(2), c.xf.Then(Affine::Translation(at)), e, c,
                 sink);
  } else if (type == "ACAD_TABLE") {
    // The drawn table is its anonymous block, placed at the insertion
    // point (both are the block reference part's, which comes first).
    WalkBlockRef(e.GetString(2), c.xf.Then(Affine::Translation(e.GetPoint(10))),
                 e, c, sink);
  } else if (type == "IMAGE") {
    WalkImageFrame(e, c, pen, sink);
  } else if (type == "RAY" || type == "XLINE") {
    // Infinite: long enough to cross any sheet, short enough for the
    // rasteriser's fixed-point coordinates. The viewport clips it.
    const Vec3 p = e.GetPoint(10), d = e.GetPoint(11);
    const double norm = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
    const double scale = AffineScale2(c.xf);
    if (!(norm > 0) || !(scale > 0)) {
      NotDrawn(std::string(type) + " (no direction)");
      return;
    }
    const double reach = kInfiniteReach / scale / norm;
    const double from = type == "RAY" ? 0 : -reach;
    sink.Add(Primitive{
        Primitive::Kind::kStroke,
        pen,
        {{Map(c.xf, p.x + d.x * from, p.y + d.y * from, p.z + d.z * from),
          Map(c.xf, p.x + d.x * reach, p.y + d.y * reach,
              p.z + d.z * reach)}}});
  } else if (type == "HATCH") {
    WalkHatch(e, c, sink);
  } else if (type == "VIEWPORT") {
    // Only the border: what a viewport shows is the renderer's.
    const Vec3 o = e.GetPoint(10);
    const double w = e.GetDouble(40) / 2, h = e.GetDouble(41) / 2;
    sink.Add(
        Primitive{Primitive::Kind::kStroke,
                  pen,
                  {{Map(c.xf, o.x - w, o.y - h), Map(c.xf, o.x + w, o.y - h),
                    Map(c.xf, o.x + w, o.y + h), Map(c.xf, o.x - w, o.y + h),
                    Map(c.xf, o.x - w, o.y - h)}}});
  } else {
    NotDrawn(std::string(type));
  }
}

void EntityWalker::WalkImageFrame(Entity e, const Context& c, const Pen& pen,
                                  PrimitiveSink& sink) {
  // The picture itself is not plotted; its frame is, as CAD programs show
  // it by default. 10 is the outer corner of the first pixel, 11 and 12 one
  // pixel's width and height, 13/23 the size in pixels.
  const Vec3 o = e.GetPoint(10), u = e.GetPoint(11), v = e.GetPoint(12);
  const double w = e.GetDouble(13), h = e.GetDouble(23);
  if (!(w > 0) || !(h > 0)) {
    NotDrawn("IMAGE (no size)");
    return;
  }
  NotDrawn("IMAGE (picture; frame drawn)");
  auto at = [&](double a, double b) {
    return Map(c.xf, o.x + a * u.x + b * v.x, o.y + a * u.y + b * v.y,
               o.z + a * u.z + b * v.z);
  };
  sink.Add(Primitive{Primitive::Kind::kStroke,
                     pen,
                     {{at(0, 0), at(w, 0), at(w, h), at(0, h), at(0, 0)}}});
}

void EntityWalker::WalkPolyline(Entity e, const Context& c,
                                PrimitiveSink& sink) {
  const int flags = static_cast<int>(e.GetInt(70, 0));
  if (flags & (16 | 64)) {
    NotDrawn("POLYLINE (mesh)");
    return;
  }
  const bool is_3d = (flags & 8) != 0;
  const double w0 = e.GetDouble(40, 0), w1 = e.GetDouble(41, 0);
  std::vector<PolyVertex> v;
  for (RecordId id : doc_.db().children(e.id())) {
    Entity vertex = doc_.entity(id);
    if (vertex.type() != "VERTEX") continue;
    // Control points of a spline-fit polyline are not on the curve.
    if (vertex.GetInt(70, 0) & 16) continue;
    const Vec3 p = vertex.GetPoint(10);
    v.push_back({p.x, p.y, vertex.GetDouble(40, w0), vertex.GetDouble(41, w1),
                 is_3d ? 0 : vertex.GetDouble(42, 0)});
  }
  const Pen pen = PenOf(e, c);
  const Affine xf = is_3d ? c.xf : c.xf.Then(OcsOf(e));
  EmitPolyline(v, (flags & 1) != 0, is_3d ? 0 : e.GetPoint(10).z, xf, pen,
               tolerance_, sink);
}

void EntityWalker::WalkInsert(Entity e, const Context& c, PrimitiveSink& sink) {
  Insert insert(e);
  const Affine placed = InsertTransform(doc_, insert);
  const int columns = std::max(1, insert.columns());
  const int rows = std::max(1, insert.rows());
  if (static_cast<int64_t>(columns) * rows > kMaxGridCells) {
    NotDrawn("INSERT (grid too large)");
    return;
  }
  const double dx = e.GetDouble(44, 0), dy = e.GetDouble(45, 0);
  const double rot = insert.rotation() * kDegree;
  const Affine ocs = OcsToWcs(insert.extrusion());
  for (int r = 0; r < rows; ++r) {
    for (int k = 0; k < columns; ++k) {
      // A MINSERT cell is offset along the rotated, unscaled grid.
      const double ox = k * dx * std::cos(rot) - r * dy * std::sin(rot);
      const double oy = k * dx * std::sin(rot) + r * dy * std::cos(rot);
      const Point2 v = MapVector(ocs, ox, oy);
      const Vec3 w{v.x, v.y, ocs.m[2][0] * ox + ocs.m[2][1] * oy};
      WalkBlockRef(insert.block_name(),
                   c.xf.Then(Affine::Translation(w).Then(placed)), e, c, sink);
    }
  }
  for (const Attrib& a : insert.attribs()) {
    if (Visible(a, c)) WalkText(a, c, sink, true);
  }
}

void EntityWalker::WalkBlockRef(std::string_view name, const Affine& xf,
                                Entity ref, const Context& c,
                                PrimitiveSink& sink) {
  const Block* block = doc_.FindBlock(name);
  if (block == nullptr) {
    NotDrawn(std::string(ref.type()) + " (missing block)");
    return;
  }
  if (c.depth >= kMaxDepth) {
    NotDrawn(std::string(ref.type()) + " (nested too deep)");
    return;
  }
  Context inner;
  inner.xf = xf;
  inner.by_block = PenOf(ref, c);
  inner.block_layer = EffectiveLayer(ref, c);
  inner.depth = c.depth + 1;
  for (RecordId id : block->entities) Walk(doc_.entity(id), inner, sink);
}

void EntityWalker::WalkText(Entity e, const Context& c, PrimitiveSink& sink,
                            bool attribute) {
  const CodePage cp = CodePageOf(doc_);
  std::vector<std::string> lines;
  if (attribute) {
    Attrib a(e);
    if (a.flags() & 1) return;  // invisible attribute
    const std::string raw =
        e.type() == "ATTDEF" ? std::string(a.tag()) : a.value();
    if (a.is_multiline()) {
      lines = MTextLines(DecodeText(raw, cp));
    } else {
      lines.push_back(PlainTextOf(DecodeText(raw, cp)));
    }
  } else {
    lines.push_back(PlainTextOf(DecodeText(Text(e).text(), cp)));
  }
  const double h = e.GetDouble(40, 0);
  if (h <= 0) {
    NotDrawn(std::string(e.type()) + " (no height)");
    return;
  }
  const Affine xf = c.xf.Then(OcsOf(e));
  const Vec3 p10 = e.GetPoint(10);
  const Vec3 p11 = e.GetPoint(11, p10);
  double rotation = e.GetDouble(50, 0) * kDegree;
  const double width = e.GetDouble(41, 1) > 0 ? e.GetDouble(41, 1) : 1;
  const int generation = static_cast<int>(e.GetInt(71, 0));
  int ha = static_cast<int>(e.GetInt(72, 0));
  // ATTRIB and ATTDEF keep the vertical alignment in 74 (73 is the field
  // length there).
  int va = static_cast<int>(e.GetInt(attribute ? 74 : 73, 0));
  Vec3 anchor = p10;
  double fit = 0;
  if (ha == 3 || ha == 5) {  // aligned or fit between 10 and 11
    const double len = std::hypot(p11.x - p10.x, p11.y - p10.y);
    if (len > 1e-12) {
      rotation = std::atan2(p11.y - p10.y, p11.x - p10.x);
      fit = len / (h * width);
    }
    ha = 0, va = 0;
  } else if (ha != 0 || va != 0) {
    anchor = p11;
  }
  if (ha == 4) ha = 1, va = 2;  // "middle"
  if (ha > 2) ha = 0;
  double ux = std::cos(rotation) * h * width,
         uy = std::sin(rotation) * h * width;
  double vx = -std::sin(rotation) * h, vy = std::cos(rotation) * h;
  if (generation & 2) ux = -ux, uy = -uy;
  if (generation & 4) vx = -vx, vy = -vy;
  const Pen pen = PenOf(e, c);
  for (size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    // Lines of a multi-line attribute go down by the line spacing.
    const double down = kLineSpacing * static_cast<double>(i);
    Primitive p{Primitive::Kind::kText, pen};
    p.text.text = lines[i];
    p.text.origin =
        Map(xf, anchor.x - vx * down, anchor.y - vy * down, anchor.z);
    p.text.x_axis = MapVector(xf, ux, uy);
    p.text.y_axis = MapVector(xf, vx, vy);
    p.text.halign = ha;
    p.text.valign = std::clamp(va, 0, 3);
    p.text.fit_length = fit;
    sink.Add(std::move(p));
  }
}

void EntityWalker::WalkMText(Entity e, const Context& c, PrimitiveSink& sink) {
  const double h = e.GetDouble(40, 0);
  if (h <= 0) {
    NotDrawn("MTEXT (no height)");
    return;
  }
  const Vec3 ins = e.GetPoint(10);
  Vec3 dir;
  if (e.Find(11) >= 0) {
    dir = e.GetPoint(11);
  } else {
    const double r = e.GetDouble(50, 0) * kDegree;
    const Affine ocs = OcsOf(e);
    dir = Vec3{ocs.m[0][0] * std::cos(r) + ocs.m[0][1] * std::sin(r),
               ocs.m[1][0] * std::cos(r) + ocs.m[1][1] * std::sin(r),
               ocs.m[2][0] * std::cos(r) + ocs.m[2][1] * std::sin(r)};
  }
  const double dl = std::sqrt(dir.x * dir.x + dir.y * dir.y + dir.z * dir.z);
  if (dl < 1e-12)
    dir = Vec3{1, 0, 0};
  else
    dir = Vec3{dir.x / dl, dir.y / dl, dir.z / dl};
  Vec3 n = e.GetPoint(210, Vec3{0, 0, 1});
  const double nl = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
  n = nl > 0 ? Vec3{n.x / nl, n.y / nl, n.z / nl} : Vec3{0, 0, 1};
  const Vec3 up{n.y * dir.z - n.z * dir.y, n.z * dir.x - n.x * dir.z,
                n.x * dir.y - n.y * dir.x};
  const std::vector<std::string> lines =
      MTextLines(DecodeText(MText(e).text(), CodePageOf(doc_)));
  const double spacing = kLineSpacing * h * e.GetDouble(44, 1);
  const int attachment = std::clamp(static_cast<int>(e.GetInt(71, 1)), 1, 9);
  const int column = (attachment - 1) % 3;
  const int row = (attachment - 1) / 3;
  const double block = spacing * static_cast<double>(lines.size() - 1) + h;
  const double top = row == 0 ? 0 : (row == 1 ? block / 2 : block);
  const Pen pen = PenOf(e, c);
  for (size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    const double shift = top - spacing * static_cast<double>(i);
    Primitive p{Primitive::Kind::kText, pen};
    p.text.text = lines[i];
    p.text.origin = Map(c.xf, ins.x + up.x * shift, ins.y + up.y * shift,
                        ins.z + up.z * shift);
    p.text.x_axis = MapVector(c.xf, dir.x * h, dir.y * h, dir.z * h);
    p.text.y_axis = MapVector(c.xf, up.x * h, up.y * h, up.z * h);
    p.text.halign = column;
    p.text.valign = 3;
    sink.Add(std::move(p));
  }
}

void EntityWalker::WalkHatch(Entity e, const Context& c, PrimitiveSink& sink) {
  const int marker = e.FindSubclass("AcDbHatch");
  const std::span<const Tag> tags = e.tags();
  const int end = marker >= 0 ? e.SubclassEnd(marker) : e.XDataBegin();
  int at = marker >= 0 ? marker + 1 : 1;
  while (at < end && tags[at].code != 91) ++at;
  TagCursor cursor(tags, at, end);
  int paths = 0;
  const Affine xf = c.xf.Then(OcsOf(e));
  const double scale = AffineScale2(xf);
  const double local_error = scale > 0 ? tolerance_ / scale : tolerance_;
  std::vector<Loop> loops;
  bool readable = cursor.ReadInt(91, &paths);
  for (int i = 0; readable && i < paths; ++i) {
    Loop loop;
    readable = ReadHatchPath(cursor, local_error, &loop);
    if (loop.size() >= 3) loops.push_back(std::move(loop));
  }
  if (!readable || loops.empty()) {
    NotDrawn("HATCH (unreadable boundary)");
    return;
  }
  const double z = e.GetPoint(10).z;
  std::vector<Loop> mapped;
  for (const Loop& loop : loops) mapped.push_back(MapAll(xf, loop, z));
  const Pen pen = PenOf(e, c);
  const bool solid = e.GetInt(70, 0) == 1 || e.GetInt(450, 0) != 0;
  if (solid) {
    sink.Add(Primitive{Primitive::Kind::kFill, pen, std::move(mapped)});
    return;
  }
  // Pattern lines, already scaled and turned in the file.
  std::vector<PatternLine> lines;
  while (!cursor.done() && !cursor.at(78)) cursor.Skip();
  int count = 0;
  if (cursor.ReadInt(78, &count)) {
    for (int i = 0; i < count; ++i) {
      PatternLine line;
      int dashes = 0;
      if (!cursor.Read(53, &line.angle) || !cursor.Read(43, &line.base.x) ||
          !cursor.Read(44, &line.base.y) || !cursor.Read(45, &line.offset.x) ||
          !cursor.Read(46, &line.offset.y) || !cursor.ReadInt(79, &dashes)) {
        break;
      }
      for (int d = 0; d < dashes; ++d) {
        double len = 0;
        if (!cursor.Read(49, &len)) break;
        line.dashes.push_back(len);
      }
      lines.push_back(std::move(line));
    }
  }
  if (lines.empty()) {
    NotDrawn("HATCH (pattern without lines)");
    return;
  }
  Point2 lo{1e300, 1e300}, hi{-1e300, -1e300};
  for (const Loop& loop : loops) {
    for (const Point2& p : loop) {
      lo.x = std::min(lo.x, p.x), lo.y = std::min(lo.y, p.y);
      hi.x = std::max(hi.x, p.x), hi.y = std::max(hi.y, p.y);
    }
  }
  std::vector<Loop> segments;
  if (!PatternSegments(lines, lo, hi, kMaxPatternSegments, &segments)) {
    NotDrawn("HATCH (pattern too dense)");
    return;
  }
  Primitive p{Primitive::Kind::kStroke, pen};
  for (const Loop& s : segments) p.paths.push_back(MapAll(xf, s, z));
  p.clip = std::move(mapped);
  sink.Add(std::move(p));
}

}  // namespace lmt::dxf

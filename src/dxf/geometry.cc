#include "dxf/geometry.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>

namespace lmt::dxf {
namespace {
constexpr double kDeg = std::numbers::pi / 180.0;
}  // namespace

Vec3 Affine::Apply(const Vec3& p) const {
  return Vec3{m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + m[0][3],
              m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + m[1][3],
              m[2][0] * p.x + m[2][1] * p.y + m[2][2] * p.z + m[2][3]};
}

Affine Affine::Then(const Affine& inner) const {
  Affine r;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) {
      double v = (j == 3) ? m[i][3] : 0;
      for (int k = 0; k < 3; ++k) v += m[i][k] * inner.m[k][j];
      r.m[i][j] = v;
    }
  }
  return r;
}

Affine Affine::Inverse() const {
  // Inverse of the linear 3x3 part by cofactors, then the translation.
  const double(&a)[3][4] = m;
  double det = a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) -
               a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
               a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
  Affine r;
  if (det == 0) return r;
  double inv = 1 / det;
  r.m[0][0] = (a[1][1] * a[2][2] - a[1][2] * a[2][1]) * inv;
  r.m[0][1] = (a[0][2] * a[2][1] - a[0][1] * a[2][2]) * inv;
  r.m[0][2] = (a[0][1] * a[1][2] - a[0][2] * a[1][1]) * inv;
  r.m[1][0] = (a[1][2] * a[2][0] - a[1][0] * a[2][2]) * inv;
  r.m[1][1] = (a[0][0] * a[2][2] - a[0][2] * a[2][0]) * inv;
  r.m[1][2] = (a[0][2] * a[1][0] - a[0][0] * a[1][2]) * inv;
  r.m[2][0] = (a[1][0] * a[2][1] - a[1][1] * a[2][0]) * inv;
  r.m[2][1] = (a[0][1] * a[2][0] - a[0][0] * a[2][1]) * inv;
  r.m[2][2] = (a[0][0] * a[1][1] - a[0][1] * a[1][0]) * inv;
  for (int i = 0; i < 3; ++i) {
    r.m[i][3] =
        -(r.m[i][0] * a[0][3] + r.m[i][1] * a[1][3] + r.m[i][2] * a[2][3]);
  }
  return r;
}

Affine Affine::Translation(Vec3 t) {
  Affine r;
  r.m[0][3] = t.x;
  r.m[1][3] = t.y;
  r.m[2][3] = t.z;
  return r;
}

Affine Affine::RotationZ(double a) {
  Affine r;
  r.m[0][0] = std::cos(a);
  r.m[0][1] = -std::sin(a);
  r.m[1][0] = std::sin(a);
  r.m[1][1] = std::cos(a);
  return r;
}

Affine Affine::Scaling(Vec3 s) {
  Affine r;
  r.m[0][0] = s.x;
  r.m[1][1] = s.y;
  r.m[2][2] = s.z;
  return r;
}

Affine OcsToWcs(Vec3 n) {
  Affine r;
  double len = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
  if (len == 0 || (n.x == 0 && n.y == 0 && n.z > 0)) return r;
  n = {n.x / len, n.y / len, n.z / len};
  Vec3 ax;
  if (std::fabs(n.x) < 1.0 / 64 && std::fabs(n.y) < 1.0 / 64) {
    ax = {n.z, 0, -n.x};  // (0,1,0) x N
  } else {
    ax = {-n.y, n.x, 0};  // (0,0,1) x N
  }
  double al = std::sqrt(ax.x * ax.x + ax.y * ax.y + ax.z * ax.z);
  ax = {ax.x / al, ax.y / al, ax.z / al};
  Vec3 ay{n.y * ax.z - n.z * ax.y, n.z * ax.x - n.x * ax.z,
          n.x * ax.y - n.y * ax.x};
  const Vec3 cols[3] = {ax, ay, n};
  for (int j = 0; j < 3; ++j) {
    r.m[0][j] = cols[j].x;
    r.m[1][j] = cols[j].y;
    r.m[2][j] = cols[j].z;
  }
  return r;
}

Affine InsertTransform(Document& doc, const Insert& insert) {
  Vec3 base;
  if (Block* b = doc.FindBlock(insert.block_name());
      b != nullptr && b->begin != kNoRecord) {
    base = doc.entity(b->begin).GetPoint(10);
  }
  return OcsToWcs(insert.extrusion())
      .Then(Affine::Translation(insert.insert_point()))
      .Then(Affine::RotationZ(insert.rotation() * kDeg))
      .Then(Affine::Scaling(insert.scale()))
      .Then(Affine::Translation(Vec3{-base.x, -base.y, -base.z}));
}

Affine ViewportModelToPaper(const Viewport& vp) {
  double h = vp.height(), vh = vp.view_height();
  if (!(h > 0) || !(vh > 0)) return Affine();
  double s = h / vh;
  Vec3 c = vp.center(), vc = vp.view_center(), t = vp.view_target();
  return Affine::Translation(Vec3{c.x, c.y, 0})
      .Then(Affine::Scaling(Vec3{s, s, 1}))
      .Then(Affine::Translation(Vec3{-vc.x, -vc.y, 0}))
      .Then(Affine::RotationZ(vp.twist() * kDeg))
      .Then(Affine::Translation(Vec3{-t.x, -t.y, -t.z}));
}

Affine ViewportPaperToModel(const Viewport& vp) {
  return ViewportModelToPaper(vp).Inverse();
}

std::string XrefPath(Document& doc, const Block& block,
                     const std::string& drawing_path) {
  if (block.begin == kNoRecord) return "";
  Entity begin = doc.entity(block.begin);
  if ((begin.GetInt(70, 0) & 4) == 0) return "";
  std::string file(begin.GetString(1));
  if (file.empty()) return "";
  std::replace(file.begin(), file.end(), '\\', '/');
  std::filesystem::path p(file);
  if (p.is_relative()) {
    p = std::filesystem::path(drawing_path).parent_path() / p;
  }
  return p.lexically_normal().string();
}

Status LoadXref(Document& doc, const Block& block,
                const std::string& drawing_path,
                std::unique_ptr<Document>* out) {
  std::string path = XrefPath(doc, block, drawing_path);
  if (path.empty()) {
    return Status::InvalidArgument("block \"" + block.name +
                                   "\" is no external reference");
  }
  std::filesystem::path p(path);
  p.replace_extension(".dxf");
  return Document::Load(p.string(), out);
}

}  // namespace lmt::dxf

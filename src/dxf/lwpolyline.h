// LwPolyline: typed view of an LWPOLYLINE (vertices, bulges, widths, closed
// flag, elevation, extrusion).
//
// Vertices are in the entity's OCS (see extrusion()). SetVertices rewrites
// the vertex tags and the 90 count in place; other codes are kept.
#ifndef LMT_DXF_LWPOLYLINE_H_
#define LMT_DXF_LWPOLYLINE_H_

#include <span>
#include <vector>

#include "dxf/entity.h"

namespace lmt::dxf {

struct LwVertex {
  double x = 0, y = 0;
  double start_width = 0, end_width = 0;
  double bulge = 0;  // tan(sweep / 4), positive counter-clockwise
  bool operator==(const LwVertex&) const = default;
};

class LwPolyline : public Entity {
 public:
  // REQUIRES: e.type() == "LWPOLYLINE".
  explicit LwPolyline(Entity e) : Entity(e) {}

  std::vector<LwVertex> vertices() const;
  void SetVertices(std::span<const LwVertex> vertices);
  bool closed() const { return (GetInt(70, 0) & 1) != 0; }
  void SetClosed(bool closed);
  double elevation() const { return GetDouble(38, 0); }
  void SetElevation(double z) { SetDouble(38, z, VertexInsertPoint()); }
  Vec3 extrusion() const { return GetPoint(210, Vec3{0, 0, 1}); }

 private:
  int VertexInsertPoint() const;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_LWPOLYLINE_H_

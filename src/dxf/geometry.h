// Coordinate geometry over DXF data: affine maps, the arbitrary axis
// algorithm (OCS to WCS), block-reference placement, a viewport's
// model-to-paper map and its inverse, and external-reference files.
//
// Viewport maps assume a plan view (direction (0,0,1)), the only kind the
// layouts we make use; other directions are treated as plan. Angles in DXF
// data are degrees; the angle arguments here are radians unless named
// otherwise. Bounding boxes of entities are the embedded host's
// (dxfhost/geometry.h), built on these maps.
#ifndef LMT_DXF_GEOMETRY_H_
#define LMT_DXF_GEOMETRY_H_

#include <memory>
#include <string>

#include "dxf/document.h"
#include "dxf/insert.h"
#include "dxf/status.h"
#include "dxf/viewport.h"

namespace lmt::dxf {

// p' = m * (p, 1); rows are x, y, z.
struct Affine {
  double m[3][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};

  Vec3 Apply(const Vec3& p) const;
  // this * inner: `inner` applies first.
  Affine Then(const Affine& inner) const;
  // REQUIRES: invertible (no zero scale).
  Affine Inverse() const;

  static Affine Translation(Vec3 t);
  static Affine RotationZ(double radians);
  static Affine Scaling(Vec3 s);
};

// The arbitrary axis algorithm: OCS of extrusion `n` -> WCS. Identity for
// (0,0,1) or a zero vector.
Affine OcsToWcs(Vec3 n);

// Block coordinates of the INSERT's block -> WCS (without MINSERT grid
// offsets): OCS(210) * (insert + Rz(50) * diag(41,42,43) * (p - base)).
Affine InsertTransform(Document& doc, const Insert& insert);

// Model (WCS) -> paper for a plan-view viewport:
//   q = C + s * (R(+twist) * (p - T) - VC), s = 41 / 45.
// Identity when 41 or 45 is not positive.
Affine ViewportModelToPaper(const Viewport& vp);
// Paper -> model, the inverse of the above.
Affine ViewportPaperToModel(const Viewport& vp);

// The file an external-reference block names (BLOCK code 1), resolved:
// backslashes become slashes, a relative path is taken from the folder of
// `drawing_path`. "" when the block is no xref or names no file.
std::string XrefPath(Document& doc, const Block& block,
                     const std::string& drawing_path);

// Reads the referenced drawing (its model space then holds the block's
// contents). A DWG reference is read from the DXF of the same name beside
// it, the engine reading DXF only. IOError / Corruption from loading;
// InvalidArgument when the block is no xref.
Status LoadXref(Document& doc, const Block& block,
                const std::string& drawing_path,
                std::unique_ptr<Document>* out);

}  // namespace lmt::dxf

#endif  // LMT_DXF_GEOMETRY_H_

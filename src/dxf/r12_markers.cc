#include "dxf/r12_markers.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace lmt::dxf {
namespace {

// A subclass and the codes it holds. `rest` takes every code no other part
// of the type names; a part without codes and without `rest` is a bare
// marker (AcDbVertex, AcDbSymbolTableRecord).
struct Part {
  std::string_view marker;
  std::vector<int> codes;
  bool rest = false;
};

Part Rest(std::string_view marker) { return Part{marker, {}, true}; }

// The codes of the points 1x, with their y (2x) and z (3x).
std::vector<int> Points(std::initializer_list<int> xs,
                        std::initializer_list<int> more = {}) {
  std::vector<int> codes(more);
  for (int x : xs) {
    codes.insert(codes.end(), {x, x + 10, x + 20});
  }
  return codes;
}

// DXF reference, "Symbol Table Group Codes" pages; BLOCK_RECORD is the
// table 2000 adds.
std::string_view TableRecordClass(std::string_view type) {
  static constexpr std::pair<std::string_view, std::string_view> kClasses[] = {
      {"VPORT", "AcDbViewportTableRecord"},
      {"LTYPE", "AcDbLinetypeTableRecord"},
      {"LAYER", "AcDbLayerTableRecord"},
      {"STYLE", "AcDbTextStyleTableRecord"},
      {"VIEW", "AcDbViewTableRecord"},
      {"UCS", "AcDbUCSTableRecord"},
      {"APPID", "AcDbRegAppTableRecord"},
      {"DIMSTYLE", "AcDbDimStyleTableRecord"},
      {"BLOCK_RECORD", "AcDbBlockTableRecord"},
  };
  for (const auto& [t, c] : kClasses) {
    if (t == type) return c;
  }
  return {};
}

// DIMENSION's kind is 70 & 7; each kind has its own subclasses after
// AcDbDimension (DXF reference "DIMENSION"; ezdxf entities/dimension.py).
std::vector<Part> DimensionParts(int kind) {
  std::vector<Part> p = {Rest("AcDbDimension")};
  switch (kind) {
    case 0:  // rotated, horizontal or vertical
      // Its angle (50) sits with the aligned part and the rotated marker
      // stands alone, as in files AutoCAD writes as 2000.
      p.push_back({"AcDbAlignedDimension", Points({13, 14}, {50})});
      p.push_back({"AcDbRotatedDimension", {}, false});
      break;
    case 1:
      p.push_back({"AcDbAlignedDimension", Points({13, 14})});
      break;
    case 2:
      p.push_back({"AcDb2LineAngularDimension", Points({13, 14, 15, 16})});
      break;
    case 3:
      p.push_back({"AcDbDiametricDimension", Points({15}, {40})});
      break;
    case 4:
      p.push_back({"AcDbRadialDimension", Points({15}, {40})});
      break;
    case 5:
      p.push_back({"AcDb3PointAngularDimension", Points({13, 14, 15, 16})});
      break;
    case 6:
      p.push_back({"AcDbOrdinateDimension", Points({13, 14})});
      break;
    default:
      break;
  }
  return p;
}

// VERTEX flags (70): 32 3D polyline, 64 polygon mesh, 128 polyface mesh;
// 128 without 64 is a polyface's face record, which has no AcDbVertex.
std::vector<Part> VertexParts(int64_t flags) {
  if ((flags & 128) != 0 && (flags & 64) == 0) {
    return {Rest("AcDbFaceRecord")};
  }
  std::string_view kind = "AcDb2dVertex";
  if ((flags & 128) != 0) {
    kind = "AcDbPolyFaceMeshVertex";
  } else if ((flags & 64) != 0) {
    kind = "AcDbPolygonMeshVertex";
  } else if ((flags & 32) != 0) {
    kind = "AcDb3dPolylineVertex";
  }
  return {Part{"AcDbVertex", {}, false}, Rest(kind)};
}

// POLYLINE flags (70): 8 3D polyline, 16 polygon mesh, 64 polyface mesh.
std::string_view PolylineClass(int64_t flags) {
  if ((flags & 8) != 0) return "AcDb3dPolyline";
  if ((flags & 16) != 0) return "AcDbPolygonMesh";
  if ((flags & 64) != 0) return "AcDbPolyFaceMesh";
  return "AcDb2dPolyline";
}

std::vector<Part> EntityParts(Entity e) {
  const std::string_view type = e.type();
  if (type == "LINE") return {Rest("AcDbLine")};
  if (type == "POINT") return {Rest("AcDbPoint")};
  if (type == "CIRCLE") return {Rest("AcDbCircle")};
  if (type == "ARC") return {Rest("AcDbCircle"), {"AcDbArc", {50, 51}}};
  if (type == "TRACE" || type == "SOLID") return {Rest("AcDbTrace")};
  if (type == "3DFACE") return {Rest("AcDbFace")};
  if (type == "SHAPE") return {Rest("AcDbShape")};
  if (type == "VIEWPORT") return {Rest("AcDbViewport")};
  if (type == "BLOCK") return {Rest("AcDbBlockBegin")};
  if (type == "ENDBLK") return {Rest("AcDbBlockEnd")};
  if (type == "SEQEND") return {};
  // TEXT keeps its vertical alignment in a second AcDbText.
  if (type == "TEXT") return {Rest("AcDbText"), {"AcDbText", {73}}};
  if (type == "ATTDEF") {
    return {Rest("AcDbText"), {"AcDbAttributeDefinition", {3, 2, 70, 73, 74}}};
  }
  if (type == "ATTRIB") {
    return {Rest("AcDbText"), {"AcDbAttribute", {2, 70, 73, 74}}};
  }
  if (type == "INSERT") {
    // Columns or rows make it a MINSERT.
    const bool multi = e.GetInt(70, 1) > 1 || e.GetInt(71, 1) > 1;
    return {Rest(multi ? "AcDbMInsertBlock" : "AcDbBlockReference")};
  }
  if (type == "POLYLINE") return {Rest(PolylineClass(e.GetInt(70, 0)))};
  // Made from a simple 2D POLYLINE (r12_polylines.h).
  if (type == "LWPOLYLINE") return {Rest("AcDbPolyline")};
  if (type == "VERTEX") return VertexParts(e.GetInt(70, 0));
  if (type == "DIMENSION") {
    return DimensionParts(static_cast<int>(e.GetInt(70, 0) & 7));
  }
  return {Rest("")};  // a type 2000 does not know keeps its codes
}

bool Holds(const Part& p, int code) {
  return std::find(p.codes.begin(), p.codes.end(), code) != p.codes.end();
}

}  // namespace

std::vector<Tag> WithSubclassMarkers(Document& doc, Entity e) {
  auto t = e.tags();
  if (e.Find(100) >= 0) return {t.begin(), t.end()};
  const std::string_view type = e.type();
  const std::string_view record = TableRecordClass(type);
  const bool entry = !record.empty();
  std::vector<Part> parts =
      entry ? std::vector<Part>{Part{"AcDbSymbolTableRecord", {}, false},
                                Rest(record)}
            : EntityParts(e);
  const int handle_code = type == "DIMSTYLE" ? 105 : 5;
  const size_t xdata = static_cast<size_t>(e.XDataBegin());

  std::vector<Tag> out = {t[0]};
  std::vector<Tag> common;
  std::vector<std::vector<Tag>> buckets(parts.size());
  auto rest = std::find_if(parts.begin(), parts.end(),
                           [](const Part& p) { return p.rest; });
  for (size_t i = 1; i < xdata; ++i) {
    const int code = t[i].code;
    if (code == handle_code || code == 330) {
      out.push_back(t[i]);
      continue;
    }
    // Common entity codes: paper space, layer, linetype, colour, linetype
    // scale, invisibility, lineweight ("Common Group Codes for Entities").
    if (!entry && (code == 67 || code == 8 || code == 6 || code == 62 ||
                   code == 48 || code == 60 || code == 370)) {
      common.push_back(t[i]);
      continue;
    }
    auto part = std::find_if(parts.begin(), parts.end(),
                             [&](const Part& p) { return Holds(p, code); });
    if (part == parts.end()) part = rest;
    if (part == parts.end()) {
      // SEQEND has no subclass of its own; anything else stays with the
      // entity's common part.
      common.push_back(t[i]);
      continue;
    }
    buckets[static_cast<size_t>(part - parts.begin())].push_back(t[i]);
  }
  if (!entry) {
    out.push_back(doc.MakeTag(100, "AcDbEntity"));
    out.insert(out.end(), common.begin(), common.end());
  }
  for (size_t p = 0; p < parts.size(); ++p) {
    if (!parts[p].marker.empty()) {
      out.push_back(doc.MakeTag(100, parts[p].marker));
    }
    out.insert(out.end(), buckets[p].begin(), buckets[p].end());
  }
  out.insert(out.end(), t.begin() + static_cast<std::ptrdiff_t>(xdata),
             t.end());
  return out;
}

}  // namespace lmt::dxf

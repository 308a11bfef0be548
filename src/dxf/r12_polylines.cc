#include "dxf/r12_polylines.h"

#include <optional>
#include <string_view>
#include <vector>

#include "dxf/tag.h"

namespace lmt::dxf {
namespace {

// POLYLINE flags (70, DXF reference "POLYLINE"): 2 curve-fit, 4
// spline-fit, 8 3D polyline, 16 polygon mesh, 64 polyface mesh. Closed (1)
// and linetype generation (128) mean the same on an LWPOLYLINE; 32 (mesh
// closed in N) means nothing without a mesh.
constexpr int64_t kNotSimple = 2 | 4 | 8 | 16 | 64;
constexpr int64_t kKeptFlags = 1 | 128;

// Handle, linetype, layer, linetype scale, invisibility, colour, paper
// space, lineweight ("Common Group Codes for Entities").
bool IsCommon(int code) {
  switch (code) {
    case 5:
    case 6:
    case 8:
    case 48:
    case 60:
    case 62:
    case 67:
    case 370:
      return true;
    default:
      return false;
  }
}

double Value(const Tag& t) { return ParseDouble(t.value()).value_or(0); }
double Value(const std::optional<Tag>& t, double fallback) {
  return t ? Value(*t) : fallback;
}

// The same value under another group code of the same type.
Tag Recoded(Tag t, int code) {
  t.code = static_cast<uint32_t>(code);
  return t;
}

struct Polyline {
  std::vector<Tag> common;  // the handle and common codes, in file order
  std::vector<Tag> xdata;
  int64_t flags = 0;
  std::optional<Tag> z, thickness, start_width, end_width;
  std::optional<Tag> extrusion[3];
};

struct Vertex {
  std::optional<Tag> x, y, start_width, end_width, bulge;
};

// The POLYLINE's codes; nullopt when it is not a simple 2D polyline or has
// a code one does not have.
std::optional<Polyline> ReadPolyline(const Entity& e) {
  Polyline p;
  auto t = e.tags();
  const size_t xdata = static_cast<size_t>(e.XDataBegin());
  p.xdata.assign(t.begin() + static_cast<std::ptrdiff_t>(xdata), t.end());
  for (size_t i = 1; i < xdata; ++i) {
    const Tag& tag = t[i];
    const int code = tag.code;
    if (IsCommon(code)) {
      p.common.push_back(tag);
      continue;
    }
    switch (code) {
      case 66:  // vertices follow
      case 10:  // X and Y of the polyline's point are always 0
      case 20:
      case 71:  // mesh counts and smoothing, meaningless without a mesh
      case 72:
      case 73:
      case 74:
      case 75:
        break;
      case 30:
        p.z = tag;
        break;
      case 39:
        p.thickness = tag;
        break;
      case 40:
        p.start_width = tag;
        break;
      case 41:
        p.end_width = tag;
        break;
      case 70:
        p.flags = ParseInt(tag.value()).value_or(0);
        break;
      case 210:
      case 220:
      case 230:
        p.extrusion[(code - 210) / 10] = tag;
        break;
      default:
        return std::nullopt;
    }
  }
  if ((p.flags & kNotSimple) != 0) return std::nullopt;
  return p;
}

// A VERTEX of a simple 2D polyline: no flags (fit vertices, tangents,
// spline frames, 3D and mesh vertices all have some), no face indices,
// no extended data. Its own layer, colour and the like go, as in CAD
// programs: a lightweight polyline has one set.
std::optional<Vertex> ReadVertex(const Entity& e) {
  Vertex v;
  auto t = e.tags();
  if (e.XDataBegin() != static_cast<int>(t.size())) return std::nullopt;
  for (size_t i = 1; i < t.size(); ++i) {
    const Tag& tag = t[i];
    const int code = tag.code;
    if (IsCommon(code)) continue;
    switch (code) {
      case 10:
        v.x = tag;
        break;
      case 20:
        v.y = tag;
        break;
      case 30:  // the polyline's elevation
      case 50:  // a tangent, used only with flag 2
        break;
      case 40:
        v.start_width = tag;
        break;
      case 41:
        v.end_width = tag;
        break;
      case 42:
        v.bulge = tag;
        break;
      case 70:
      case 71:
      case 72:
      case 73:
      case 74:
        if (ParseInt(tag.value()).value_or(1) != 0) return std::nullopt;
        break;
      default:
        return std::nullopt;
    }
  }
  return v;
}

// Only common codes on the SEQEND, which goes.
bool IsPlainSeqend(const Entity& e) {
  auto t = e.tags();
  for (size_t i = 1; i < t.size(); ++i) {
    if (!IsCommon(t[i].code)) return false;
  }
  return true;
}

// Values for codes a record leaves out, made once.
struct Defaults {
  Tag zero;  // "0.0"
  Tag one;   // "1.0"
};

// The LWPOLYLINE tags for POLYLINE `e`, in the order CAD programs write
// them: 90, 70, 43, 38, 39, the vertices, 210 (DXF reference
// "LWPOLYLINE"); nullopt when it stays as it is.
std::optional<std::vector<Tag>> Lightweight(Document& doc, const Entity& e,
                                            const Defaults& d) {
  std::optional<Polyline> p = ReadPolyline(e);
  if (!p) return std::nullopt;
  const std::vector<RecordId>& children = doc.db().children(e.id());
  std::vector<Vertex> vertices;
  for (size_t i = 0; i < children.size(); ++i) {
    Entity child = doc.entity(children[i]);
    if (child.type() == "SEQEND" && i + 1 == children.size()) {
      if (!IsPlainSeqend(child)) return std::nullopt;
      continue;
    }
    std::optional<Vertex> v =
        child.type() == "VERTEX" ? ReadVertex(child) : std::nullopt;
    if (!v) return std::nullopt;
    vertices.push_back(*v);
  }
  if (vertices.size() < 2) return std::nullopt;

  // A vertex without its own widths has the polyline's.
  const Tag default_start = p->start_width.value_or(Recoded(d.zero, 40));
  const Tag default_end = p->end_width.value_or(Recoded(d.zero, 41));
  auto start = [&](const Vertex& v) {
    return v.start_width.value_or(default_start);
  };
  auto end = [&](const Vertex& v) { return v.end_width.value_or(default_end); };
  const double width = Value(start(vertices[0]));
  bool constant = true;
  for (const Vertex& v : vertices) {
    constant = constant && Value(start(v)) == width && Value(end(v)) == width;
  }

  std::vector<Tag> out = {doc.MakeTag(0, "LWPOLYLINE")};
  out.insert(out.end(), p->common.begin(), p->common.end());
  out.push_back(
      doc.MakeTag(90, FormatInt(static_cast<int64_t>(vertices.size()))));
  out.push_back(doc.MakeTag(70, FormatInt(p->flags & kKeptFlags)));
  if (constant) out.push_back(Recoded(start(vertices[0]), 43));
  if (Value(p->z, 0) != 0) out.push_back(Recoded(*p->z, 38));
  if (Value(p->thickness, 0) != 0) out.push_back(*p->thickness);
  for (const Vertex& v : vertices) {
    out.push_back(v.x.value_or(Recoded(d.zero, 10)));
    out.push_back(v.y.value_or(Recoded(d.zero, 20)));
    if (!constant) {
      out.push_back(start(v));
      out.push_back(end(v));
    }
    if (Value(v.bulge, 0) != 0) out.push_back(*v.bulge);
  }
  const double ex = Value(p->extrusion[0], 0);
  const double ey = Value(p->extrusion[1], 0);
  const double ez = Value(p->extrusion[2], 1);
  if (ex != 0 || ey != 0 || ez != 1) {
    for (int i = 0; i < 3; ++i) {
      const Tag fallback = Recoded(i == 2 ? d.one : d.zero, 210 + 10 * i);
      out.push_back(p->extrusion[i].value_or(fallback));
    }
  }
  out.insert(out.end(), p->xdata.begin(), p->xdata.end());
  return out;
}

}  // namespace

size_t MakePolylinesLightweight(Document& doc) {
  EntityDb& db = doc.db();
  const Defaults defaults{doc.MakeTag(40, "0.0"), doc.MakeTag(40, "1.0")};
  size_t converted = 0;
  for (auto& block : doc.blocks()) {
    for (RecordId id : block->entities) {
      Entity e = doc.entity(id);
      if (e.erased() || e.type() != "POLYLINE") continue;
      std::optional<std::vector<Tag>> tags = Lightweight(doc, e, defaults);
      if (!tags) continue;
      std::vector<RecordId>& children = db.mutable_children(id);
      for (RecordId c : children) db.MarkErased(c);
      children.clear();
      db.Detach(id) = std::move(*tags);
      ++converted;
    }
  }
  return converted;
}

}  // namespace lmt::dxf

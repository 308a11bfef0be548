#include "dxf/lwpolyline.h"

namespace lmt::dxf {
namespace {
bool IsVertexCode(int code) {
  return code == 10 || code == 20 || code == 40 || code == 41 || code == 42 ||
         code == 91;
}
}  // namespace

std::vector<LwVertex> LwPolyline::vertices() const {
  std::vector<LwVertex> out;
  int m = FindSubclass("AcDbPolyline");
  int b = m >= 0 ? m + 1 : 1;
  int e = m >= 0 ? SubclassEnd(m) : XDataBegin();
  auto t = tags();
  for (int i = b; i < e; ++i) {
    double v = ParseDouble(t[i].value()).value_or(0);
    switch (t[i].code) {
      case 10:
        out.push_back(LwVertex{v, 0, 0, 0, 0});
        break;
      case 20:
        if (!out.empty()) out.back().y = v;
        break;
      case 40:
        if (!out.empty()) out.back().start_width = v;
        break;
      case 41:
        if (!out.empty()) out.back().end_width = v;
        break;
      case 42:
        if (!out.empty()) out.back().bulge = v;
        break;
      default:
        break;
    }
  }
  return out;
}

int LwPolyline::VertexInsertPoint() const {
  int m = FindSubclass("AcDbPolyline");
  int e = m >= 0 ? SubclassEnd(m) : XDataBegin();
  auto t = tags();
  for (int i = m >= 0 ? m + 1 : 1; i < e; ++i) {
    if (t[i].code == 10 || t[i].code == 210) return i;
  }
  return e;
}

void LwPolyline::SetVertices(std::span<const LwVertex> vertices) {
  int m = FindSubclass("AcDbPolyline");
  int b = m >= 0 ? m + 1 : 1;
  int e = m >= 0 ? SubclassEnd(m) : XDataBegin();
  // Remove the old vertex tags, remembering where the first one was.
  std::vector<Tag>& t = db_->Detach(id_);
  int at = -1;
  std::vector<Tag> kept;
  for (int i = b; i < e; ++i) {
    if (IsVertexCode(t[i].code)) {
      if (at < 0) at = static_cast<int>(kept.size()) + b;
    } else {
      kept.push_back(t[i]);
    }
  }
  t.erase(t.begin() + b, t.begin() + e);
  t.insert(t.begin() + b, kept.begin(), kept.end());
  if (at < 0) at = VertexInsertPoint();
  std::vector<Tag> added;
  added.reserve(vertices.size() * 5);
  for (const LwVertex& v : vertices) {
    added.push_back(db_->MakeTag(10, FormatDouble(v.x)));
    added.push_back(db_->MakeTag(20, FormatDouble(v.y)));
    if (v.start_width != 0 || v.end_width != 0) {
      added.push_back(db_->MakeTag(40, FormatDouble(v.start_width)));
      added.push_back(db_->MakeTag(41, FormatDouble(v.end_width)));
    }
    if (v.bulge != 0) added.push_back(db_->MakeTag(42, FormatDouble(v.bulge)));
  }
  t.insert(t.begin() + at, added.begin(), added.end());
  // The count must be the first tag of the subclass, or CAD programs ignore
  // the closed flag.
  int count = Find(90, b);
  if (count >= 0) {
    SetValueAt(count, FormatInt(static_cast<int64_t>(vertices.size())));
  } else {
    InsertTag(b, 90, FormatInt(static_cast<int64_t>(vertices.size())));
  }
}

void LwPolyline::SetClosed(bool closed) {
  int64_t flags = GetInt(70, 0);
  flags = closed ? (flags | 1) : (flags & ~int64_t{1});
  int m = FindSubclass("AcDbPolyline");
  int count = Find(90);
  SetInt(70, flags, count >= 0 ? count + 1 : (m >= 0 ? m + 1 : 1));
}

}  // namespace lmt::dxf

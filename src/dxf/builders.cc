#include "dxf/builders.h"

#include "dxf/encoding.h"
#include "dxf/text.h"

namespace lmt::dxf {
namespace {

class TagList {
 public:
  explicit TagList(Document& doc) : doc_(doc) {}
  TagList& Add(int code, std::string_view value) {
    tags_.push_back(doc_.MakeTag(code, value));
    return *this;
  }
  TagList& Add(int code, double v) { return Add(code, FormatDouble(v)); }
  TagList& AddInt(int code, int64_t v) { return Add(code, FormatInt(v)); }
  std::vector<Tag> Take() { return std::move(tags_); }

 private:
  Document& doc_;
  std::vector<Tag> tags_;
};

void UpdateCount(Document& doc, std::string_view table) {
  Table* t = doc.table(table);
  if (!t) return;
  int64_t n = 0;
  for (RecordId id : t->entries) n += doc.db().erased(id) ? 0 : 1;
  Entity head = doc.entity(t->head);
  int i = head.Find(70);
  if (i >= 0) head.SetValueAt(i, FormatInt(n));
}

void AddEntityStyle(TagList& tags, const EntityStyle& style) {
  tags.Add(8, style.layer);
  if (style.color != 256) tags.AddInt(62, style.color);
}

}  // namespace

bool IsValidName(const Document& doc, std::string_view name) {
  if (name.empty() || name.size() > 255) return false;
  for (size_t i = 0; i < name.size(); ++i) {
    // Up to 2004 a character outside the code page is stored as \U+XXXX:
    // that backslash is part of the character, not one in the name.
    if (name[i] == '\\' && IsUnicodeEscape(name, i)) {
      i += 6;
      continue;
    }
    if (std::string_view("<>/\\\":;?*|,=`").find(name[i]) !=
        std::string_view::npos) {
      return false;
    }
  }
  if (doc.IsR12()) {
    // R12: at most 31 of A-Z 0-9 $ - _ ("Improper table entry name").
    if (name.size() > 31) return false;
    for (char c : name) {
      bool ok = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                (c >= '0' && c <= '9') || c == '$' || c == '-' || c == '_';
      if (!ok) return false;
    }
  }
  return true;
}

Entity AddLayer(Document& doc, std::string_view name, int color,
                std::string_view linetype) {
  if (Entity e = doc.FindTableEntry("LAYER", name); e.valid()) return e;
  if (!IsValidName(doc, name) || !doc.table("LAYER")) return Entity();
  TagList t(doc);
  t.Add(0, "LAYER");
  if (!doc.IsR12()) {
    t.Add(100, "AcDbSymbolTableRecord").Add(100, "AcDbLayerTableRecord");
  }
  t.Add(2, name).AddInt(70, 0).AddInt(62, color).Add(6, linetype);
  if (!doc.IsR12()) t.AddInt(370, -3);
  Entity e = doc.AddTableEntry("LAYER", t.Take());
  UpdateCount(doc, "LAYER");
  return e;
}

Entity AddTextStyle(Document& doc, std::string_view name,
                    std::string_view font) {
  if (Entity e = doc.FindTableEntry("STYLE", name); e.valid()) return e;
  if (!IsValidName(doc, name) || !doc.table("STYLE")) return Entity();
  TagList t(doc);
  t.Add(0, "STYLE");
  if (!doc.IsR12()) {
    t.Add(100, "AcDbSymbolTableRecord").Add(100, "AcDbTextStyleTableRecord");
  }
  t.Add(2, name).AddInt(70, 0).Add(40, 0.0).Add(41, 1.0).Add(50, 0.0);
  t.AddInt(71, 0).Add(42, 2.5).Add(3, font).Add(4, "");
  Entity e = doc.AddTableEntry("STYLE", t.Take());
  UpdateCount(doc, "STYLE");
  return e;
}

Entity AddLwPolyline(Document& doc, Block* block,
                     std::span<const LwVertex> vertices, bool closed,
                     EntityStyle style) {
  if (doc.IsR12()) return Entity();
  TagList t(doc);
  t.Add(0, "LWPOLYLINE").Add(100, "AcDbEntity");
  AddEntityStyle(t, style);
  t.Add(100, "AcDbPolyline").AddInt(90, 0).AddInt(70, closed ? 1 : 0);
  t.Add(43, 0.0);
  LwPolyline pl(doc.AddEntity(block, t.Take()));
  pl.SetVertices(vertices);
  return pl;
}

Entity AddInsert(Document& doc, Block* block, std::string_view block_name,
                 Vec3 point, double scale, double rotation, EntityStyle style) {
  TagList t(doc);
  t.Add(0, "INSERT");
  if (!doc.IsR12()) t.Add(100, "AcDbEntity");
  AddEntityStyle(t, style);
  if (!doc.IsR12()) t.Add(100, "AcDbBlockReference");
  t.Add(2, block_name).Add(10, point.x).Add(20, point.y).Add(30, point.z);
  if (scale != 1) t.Add(41, scale).Add(42, scale).Add(43, scale);
  if (rotation != 0) t.Add(50, rotation);
  return doc.AddEntity(block, t.Take());
}

Entity AddMText(Document& doc, Block* block, Vec3 insert, double height,
                std::string_view text, EntityStyle style, double width,
                int attachment, std::string_view text_style) {
  if (doc.IsR12()) return Entity();
  TagList t(doc);
  t.Add(0, "MTEXT").Add(100, "AcDbEntity");
  AddEntityStyle(t, style);
  t.Add(100, "AcDbMText").Add(10, insert.x).Add(20, insert.y).Add(30, insert.z);
  t.Add(40, height).Add(41, width).AddInt(71, attachment).AddInt(72, 1);
  t.Add(1, "").Add(7, text_style);
  MText mt(doc.AddEntity(block, t.Take()));
  mt.SetText(text);
  return mt;
}

}  // namespace lmt::dxf

#include "dxf/insert.h"

#include "dxf/document.h"
#include "dxf/text.h"

namespace lmt::dxf {

std::string_view Attrib::SubclassName() const {
  return type() == "ATTDEF" ? "AcDbAttributeDefinition" : "AcDbAttribute";
}

std::string_view Attrib::tag() const {
  int i = FindField(SubclassName(), 2);
  return i >= 0 ? tags()[i].value() : std::string_view();
}

int Attrib::flags() const {
  int i = FindField(SubclassName(), 70);
  return i >= 0 ? static_cast<int>(ParseInt(tags()[i].value()).value_or(0)) : 0;
}

int Attrib::EmbeddedBegin() const {
  auto t = tags();
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 101) return static_cast<int>(i) + 1;
  }
  return -1;
}

std::string Attrib::value() const {
  int b = EmbeddedBegin();
  if (b >= 0) {
    std::string text = ReadChunkedText(*this, b, XDataBegin());
    if (!text.empty()) return text;
  }
  int i = FindField("AcDbText", 1);
  return i >= 0 ? std::string(tags()[i].value()) : std::string();
}

void Attrib::SetValue(std::string_view text) {
  int b = EmbeddedBegin();
  if (b >= 0) {
    Entity self = *this;
    WriteChunkedText(self, b, XDataBegin(), text);
    return;
  }
  int i = FindField("AcDbText", 1);
  if (i >= 0) {
    SetValueAt(i, text);
  } else {
    int m = FindSubclass("AcDbText");
    InsertTag(m >= 0 ? SubclassEnd(m) : XDataBegin(), 1, text);
  }
}

Vec3 Insert::scale() const {
  return Vec3{GetDouble(41, 1), GetDouble(42, 1), GetDouble(43, 1)};
}

std::vector<Attrib> Insert::attribs() const {
  std::vector<Attrib> out;
  for (RecordId c : db_->children(id_)) {
    Entity e(db_, c);
    if (!e.erased() && e.type() == "ATTRIB") out.emplace_back(e);
  }
  return out;
}

Attrib Insert::FindAttrib(std::string_view tag) const {
  for (const Attrib& a : attribs()) {
    if (EqualsNoCase(a.tag(), tag)) return a;
  }
  return Attrib(Entity());
}

std::string EffectiveBlockName(Document& doc, const Insert& insert) {
  auto record_name = [&](uint64_t h) -> std::string {
    Entity r = doc.FindByHandle(h);
    if (r.valid() && r.type() == "BLOCK_RECORD") {
      return std::string(r.GetString(2));
    }
    return {};
  };
  // B: the representation data in the INSERT's extension dictionary.
  if (Entity xd = doc.FindByHandle(insert.ExtensionDictionary()); xd.valid()) {
    Entity rep =
        doc.FindByHandle(doc.DictionaryLookup(xd, "AcDbBlockRepresentation"));
    if (rep.valid()) {
      Entity data = doc.FindByHandle(doc.DictionaryLookup(rep, "AcDbRepData"));
      if (data.valid()) {
        int i = data.FindIn("AcDbBlockRepresentationData", 340);
        if (i >= 0) {
          std::string n =
              record_name(ParseHandle(data.tags()[i].value()).value_or(0));
          if (!n.empty()) return n;
        }
      }
    }
  }
  // A: the anonymous block record names its original in XDATA.
  Entity rec = doc.FindTableEntry("BLOCK_RECORD", insert.block_name());
  if (rec.valid()) {
    for (const Tag& t : rec.XData("AcDbBlockRepBTag")) {
      if (t.code == 1005) {
        std::string n = record_name(ParseHandle(t.value()).value_or(0));
        if (!n.empty()) return n;
      }
    }
  }
  return std::string(insert.block_name());
}

}  // namespace lmt::dxf

#include "dxf/version.h"

#include <initializer_list>
#include <string>
#include <utility>

#include "dxf/encoding.h"
#include "dxf/insert.h"

namespace lmt::dxf {
namespace {

constexpr std::string_view kR2000 = "AC1015";
constexpr std::string_view kR2004 = "AC1018";
constexpr std::string_view kR2007 = "AC1021";
constexpr std::string_view kR2010 = "AC1024";
constexpr std::string_view kR2013 = "AC1027";
constexpr std::string_view kR2018 = "AC1032";

// Header variables by the first release that has them.
struct NewVariables {
  std::string_view since;
  std::initializer_list<std::string_view> names;
};
const NewVariables kNewVariables[] = {
    {kR2004,
     {"$DIMASSOC", "$HALOGAP", "$HIDETEXT", "$INDEXCTL", "$INTERSECTIONCOLOR",
      "$INTERSECTIONDISPLAY", "$LASTSAVEDBY", "$OBSCOLOR", "$OBSLTYPE",
      "$PROJECTNAME", "$SORTENTS", "$XCLIPFRAME"}},
    {kR2007,
     {"$3DDWFPREC",
      "$CAMERADISPLAY",
      "$CAMERAHEIGHT",
      "$CMATERIAL",
      "$CSHADOW",
      "$DGNFRAME",
      "$DIMARCSYM",
      "$DIMFXL",
      "$DIMFXLON",
      "$DIMJOGANG",
      "$DIMLTEX1",
      "$DIMLTEX2",
      "$DIMLTYPE",
      "$DIMTFILL",
      "$DIMTFILLCLR",
      "$DWFFRAME",
      "$INTERFERECOLOR",
      "$INTERFEREOBJVS",
      "$INTERFEREVPVS",
      "$LATITUDE",
      "$LENSLENGTH",
      "$LIGHTGLYPHDISPLAY",
      "$LOFTANG1",
      "$LOFTANG2",
      "$LOFTMAG1",
      "$LOFTMAG2",
      "$LOFTNORMALS",
      "$LOFTPARAM",
      "$LONGITUDE",
      "$NORTHDIRECTION",
      "$PSOLHEIGHT",
      "$PSOLWIDTH",
      "$REALWORLDSCALE",
      "$SHADOWPLANELOCATION",
      "$SHOWHIST",
      "$SOLIDHIST",
      "$STEPSIZE",
      "$STEPSPERSEC",
      "$TILEMODELIGHTSYNCH",
      "$TIMEZONE",
      "$DRAGVS"}},
    {kR2010, {"$DIMTXTDIRECTION"}},
    {kR2013, {"$REQUIREDVERSIONS"}},
};

// $ACADMAINTVER values CAD programs write for each release.
std::string_view MaintenanceVersion(std::string_view v) {
  if (v == kR2000) return "20";
  if (v == kR2004) return "104";
  if (v == kR2007) return "50";
  if (v == kR2010) return "226";
  if (v == kR2013) return "125";
  return "329";
}

// Erases every tag with one of `codes` inside `subclass`.
void DropIn(Entity e, std::string_view subclass,
            std::initializer_list<int> codes) {
  int m = e.FindSubclass(subclass);
  if (m < 0) return;
  for (int i = e.SubclassEnd(m) - 1; i > m; --i) {
    for (int c : codes) {
      if (static_cast<int>(e.tags()[i].code) == c) {
        e.EraseTags(i, i + 1);
        break;
      }
    }
  }
}

// Erases the `101 Embedded Object` part (2018 only).
void DropEmbedded(Entity e) {
  int at = e.Find(101);
  if (at >= 0) e.EraseTags(at, e.XDataBegin());
}

// Line breaks (\P, and ^J in caret form) become spaces. A caret pair is copied
// whole, so "^ " (a caret) never starts a break.
std::string Flatten(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    char next = i + 1 < text.size() ? text[i + 1] : '\0';
    if ((c == '\\' && next == 'P') || (c == '^' && next == 'J')) {
      out += ' ';
      ++i;
    } else if (c == '^' && next != '\0') {
      out += c;
      out += next;
      ++i;
    } else {
      out += c;
    }
  }
  return out;
}

void ConvertAttribute(Entity e, std::string_view v) {
  std::string_view subclass =
      e.type() == "ATTDEF" ? "AcDbAttributeDefinition" : "AcDbAttribute";
  if (v < kR2018) {
    Attrib a(e);
    if (a.is_multiline()) {
      std::string text = Flatten(a.value());
      DropEmbedded(e);
      int i = e.FindIn("AcDbText", 1);
      if (i >= 0) e.SetValueAt(i, text);
    }
    DropIn(e, subclass, {71, 72, 11, 21, 31});
  }
  if (v < kR2010) {  // the version 280 before the tag
    int m = e.FindSubclass(subclass);
    if (m >= 0 && m + 1 < static_cast<int>(e.tags().size()) &&
        e.tags()[m + 1].code == 280) {
      e.EraseTags(m + 1, m + 2);
    }
  }
  if (v < kR2007) DropIn(e, subclass, {280});  // lock position
}

void ConvertRecord(Entity e, std::string_view v) {
  std::string_view type = e.type();
  if (e.FindSubclass("AcDbEntity") >= 0) {
    if (v < kR2004) DropIn(e, "AcDbEntity", {420, 430, 440});
    if (v < kR2007) DropIn(e, "AcDbEntity", {284, 347});
    if (v < kR2010) {
      DropIn(e, "AcDbEntity", {348});
      // Proxy graphics size: 92 before 2010, 160 after.
      int m = e.FindSubclass("AcDbEntity");
      for (int i = e.SubclassEnd(m) - 1; i > m; --i) {
        if (e.tags()[i].code == 160) {
          std::string size(e.tags()[i].value());
          e.EraseTags(i, i + 1);
          e.InsertTag(i, 92, size);
        }
      }
    }
  }
  if (v < kR2018 && type != "ATTRIB" && type != "ATTDEF") DropEmbedded(e);
  if (type == "VIEWPORT") {
    if (v < kR2004) DropIn(e, "AcDbViewport", {170});
    if (v < kR2007) {
      DropIn(e, "AcDbViewport", {61, 348, 292, 282, 141, 142, 63, 421, 431});
    }
  } else if (type == "LAYER") {
    if (v < kR2004) DropIn(e, "AcDbLayerTableRecord", {420, 430});
    if (v < kR2007) DropIn(e, "AcDbLayerTableRecord", {347, 348});
  } else if (type == "BLOCK_RECORD") {
    if (v < kR2007) DropIn(e, "AcDbBlockTableRecord", {70, 280, 281});
  } else if (type == "MTEXT") {
    if (v < kR2007) DropIn(e, "AcDbMText", {46, 90, 63, 45, 421, 431, 441});
  } else if (type == "ATTRIB" || type == "ATTDEF") {
    ConvertAttribute(e, v);
  } else if (type == "CLASS") {
    if (v < kR2004) {
      int i = e.Find(91);
      if (i >= 0) e.EraseTags(i, i + 1);
    } else if (e.Find(91) < 0) {
      int i = e.Find(280);
      e.InsertTag(i >= 0 ? i : static_cast<int>(e.tags().size()), 91, "0");
    }
  }
}

// Re-encodes string values between code pages and UTF-8.
void Reencode(Entity e, CodePage from, CodePage to) {
  for (int i = 0; i < static_cast<int>(e.tags().size()); ++i) {
    const Tag& t = e.tags()[i];
    if (TypeOfCode(static_cast<int>(t.code)) != ValueType::kString) continue;
    std::string_view raw = t.value();
    bool plain = true;
    for (char c : raw) plain = plain && static_cast<unsigned char>(c) < 0x80;
    if (plain) continue;
    e.SetValueAt(i, EncodeText(DecodeText(raw, from), to));
  }
}

}  // namespace

std::string_view AcadVerOfYear(int year) {
  switch (year) {
    case 2000:
      return kR2000;
    case 2004:
      return kR2004;
    case 2007:
      return kR2007;
    case 2010:
      return kR2010;
    case 2013:
      return kR2013;
    case 2018:
      return kR2018;
    default:
      return "";
  }
}

std::string_view ReleaseAsRead(std::string_view acadver) {
  const bool release_word =
      acadver.size() == 6 && acadver.starts_with("AC") &&
      acadver.find_first_not_of("0123456789", 2) == std::string_view::npos;
  return release_word && acadver >= "AC1009" ? acadver
                                             : std::string_view("AC1009");
}

std::string_view ReleaseName(std::string_view acadver) {
  static constexpr std::pair<std::string_view, std::string_view> kNames[] = {
      {"AC1009", "R12"},    {"AC1012", "R13"},    {"AC1014", "R14"},
      {kR2000, "DXF 2000"}, {kR2004, "DXF 2004"}, {kR2007, "DXF 2007"},
      {kR2010, "DXF 2010"}, {kR2013, "DXF 2013"}, {kR2018, "DXF 2018"}};
  for (const auto& [word, name] : kNames) {
    if (word == acadver) return name;
  }
  return acadver;
}

Status CheckTargetVersion(std::string_view v) {
  if (v == kR2000 || v == kR2004 || v == kR2007 || v == kR2010 || v == kR2013 ||
      v == kR2018) {
    return Status::Ok();
  }
  if (v <= "AC1009") {
    return Status::InvalidArgument(
        "R12 DXF cannot hold layouts: it keeps a single paper space and has "
        "no LWPOLYLINE or MTEXT, so the layouts would be lost; save as DXF "
        "2000 or later");
  }
  if (v == "AC1012" || v == "AC1014") {
    return Status::InvalidArgument(
        std::string(ReleaseName(v)) +
        " DXF has a single paper space and no layouts, so the layouts would "
        "be lost; save as DXF 2000 or later");
  }
  return Status::InvalidArgument("unknown DXF release \"" + std::string(v) +
                                 "\"; use AC1015 (2000) to AC1032 (2018)");
}

Status ConvertVersion(Document& doc, std::string_view v) {
  if (Status s = CheckTargetVersion(v); !s.ok()) return s;
  std::string from(doc.version());
  if (from < kR2000) {
    return Status::InvalidArgument("drawing \"" + doc.file_name() + "\" is " +
                                   from +
                                   "; only 2000 and later can be converted");
  }
  CodePage from_cp = CodePageOf(doc);
  doc.SetHeader("$ACADVER", 1, v);
  if (doc.HeaderValue("$ACADMAINTVER")) {
    doc.SetHeader("$ACADMAINTVER", v >= kR2018 ? 90 : 70,
                  MaintenanceVersion(v));
  }
  if (v < kR2007 && !doc.HeaderValue("$DWGCODEPAGE")) {
    doc.SetHeader("$DWGCODEPAGE", 3, "ANSI_1252");
  }
  CodePage to_cp = CodePageOf(doc);
  for (const NewVariables& group : kNewVariables) {
    if (v >= group.since) continue;
    for (std::string_view name : group.names) doc.RemoveHeader(name);
  }
  // $XCLIPFRAME is a 290 before 2010 and a 280 after.
  if (auto x = doc.HeaderValue("$XCLIPFRAME")) {
    std::string value(*x);
    doc.SetHeader("$XCLIPFRAME", v >= kR2010 ? 280 : 290, value);
  }
  if (v < kR2013) doc.DropRawSection("ACDSDATA");
  if (v < kR2004) {
    // 2000 readers need these listed; newer ones know them.
    doc.EnsureClass("ACDBPLACEHOLDER", "AcDbPlaceHolder", 0, false);
    doc.EnsureClass("LAYOUT", "AcDbLayout", 0, false);
  }
  EntityDb& db = doc.db();
  for (RecordId id = 0; id < db.size(); ++id) {
    if (db.erased(id)) continue;
    Entity e = doc.entity(id);
    if (from_cp != to_cp) Reencode(e, from_cp, to_cp);
    if (!e.tags().empty() && e.tags()[0].code == 0) ConvertRecord(e, v);
  }
  return Status::Ok();
}

}  // namespace lmt::dxf

// System variables of the embedded host.
//
// Where the drawing stores a variable it is read from and written to the
// drawing (TILEMODE in $TILEMODE, CLAYER, TEXTSTYLE, CANNOSCALE in the
// AcDbVariableDictionary, any "$NAME" header variable under its name);
// variables of the program (FILEDIA, PEDITACCEPT, DRAWORDERCTL, SECURELOAD,
// CMDECHO) live in the session. View variables answer for the current view:
//
//  - Tiled model space: the VPORT *Active view. VIEWCTR is its centre in the
//    current UCS (T + R(-twist)·centre, see dxf-notes 6.9), VIEWDIR its
//    direction.
//  - Inside a paper viewport (MSpace on): the same of that viewport.
//  - Paper space: this host has no screen, so the paper view is centred on
//    the paper origin: VIEWCTR is (0, 0, 0) and the paper display system is
//    paper coordinates (utility.cc). The layout builder turns the frame's
//    centre C into its viewport target by C - R(b)·VIEWCTR translated from
//    display to world; with this choice that is C itself for every block
//    angle b, and a new viewport (view centre (0, 0)) then shows exactly its
//    frame.
#include <cmath>
#include <string>

#include "dxf/entity.h"
#include "dxf/tag.h"
#include "dxf/viewport.h"
#include "dxf/viewport_edit.h"
#include "dxfhost/session.h"

namespace lmt::dxfhost {
namespace {

struct SessionDefault {
  std::string_view name;
  int16_t value;
};
// Program settings the add-in reads or sets, with the values a fresh CAD
// session has.
constexpr SessionDefault kSessionDefaults[] = {
    {"FILEDIA", 1},         {"PEDITACCEPT", 0},     {"DRAWORDERCTL", 3},
    {"SECURELOAD", 1},      {"CMDECHO", 1},         {"LAYOUTREGENCTL", 2},
    {"PDFIMPORTFILTER", 8}, {"PDFIMPORTLAYERS", 0}, {"PDFIMPORTMODE", 2},
    {"BACKGROUNDPLOT", 2},
};

// Program settings held as text, empty in a fresh session.
constexpr std::string_view kSessionTexts[] = {"PDFIMPORTIMAGEPATH"};

bool Is(std::string_view a, std::string_view b) {
  return dxf::EqualsNoCase(a, b);
}

ViewFrame CurrentView(Drawing& d) {
  if (d.InViewport()) return ViewportView(d, d.active_pviewport);
  return TiledView(d);
}

// AcDbVariableDictionary entry `name` (a DICTIONARYVAR), invalid if none.
dxf::Entity DictionaryVar(Drawing& d, std::string_view name) {
  dxf::Entity root = d.doc->root_dictionary();
  if (!root.valid()) return {};
  uint64_t vars = d.doc->DictionaryLookup(root, "AcDbVariableDictionary");
  dxf::Entity dict = vars ? d.doc->FindByHandle(vars) : dxf::Entity();
  if (!dict.valid()) return {};
  uint64_t h = d.doc->DictionaryLookup(dict, name);
  return h ? d.doc->FindByHandle(h) : dxf::Entity();
}

Status ReadOnly(std::string_view name) {
  return Status::Refused("system variable " + std::string(name) +
                         " is read-only");
}

// The programs keep these variables as 16-bit integers and refuse any other
// variant type for them (a VT_I4 fails as a type mismatch), so the engine
// does too: a caller that passes 32-bit values would work here and fail there.
Result<int16_t> ShortValue(std::string_view name, const host::Variant& v) {
  if (const int16_t* value = std::get_if<int16_t>(&v)) return *value;
  return Status::InvalidArgument("system variable " + std::string(name) +
                                 " takes a 16-bit integer");
}

Result<int32_t> IntValue(std::string_view name, const host::Variant& v) {
  Result<int32_t> i = host::ToInt(v);
  if (!i.ok()) {
    return Status::InvalidArgument("system variable " + std::string(name) +
                                   " takes a whole number");
  }
  return i;
}

// A header variable read as the variant kind its code suggests.
Result<host::Variant> HeaderVariable(Drawing& d, std::string_view name) {
  std::string key = "$" + std::string(name);
  std::span<const dxf::Tag> tags = d.doc->HeaderTags(key);
  if (tags.empty()) {
    return Status::NotFound("unknown system variable " + std::string(name));
  }
  const dxf::Tag& t = tags[0];
  if (t.code == 10 && tags.size() >= 2) {
    host::Point p{dxf::ParseDouble(tags[0].value()).value_or(0),
                  dxf::ParseDouble(tags[1].value()).value_or(0), 0};
    if (tags.size() >= 3) p.z = dxf::ParseDouble(tags[2].value()).value_or(0);
    return host::Variant(p);
  }
  switch (dxf::TypeOfCode(t.code)) {
    case dxf::ValueType::kInt16:
    case dxf::ValueType::kBool:
      return host::Variant(
          static_cast<int16_t>(dxf::ParseInt(t.value()).value_or(0)));
    case dxf::ValueType::kInt32:
    case dxf::ValueType::kInt64:
      return host::Variant(
          static_cast<int32_t>(dxf::ParseInt(t.value()).value_or(0)));
    case dxf::ValueType::kDouble:
      return host::Variant(dxf::ParseDouble(t.value()).value_or(0));
    default:
      return host::Variant(std::string(t.value()));
  }
}

}  // namespace

Result<host::Variant> ReadVariable(Drawing& d, std::string_view name) {
  if (Is(name, "TILEMODE")) {
    return host::Variant(static_cast<int16_t>(d.IsModel(d.active_block)));
  }
  if (Is(name, "CTAB")) return host::Variant(d.SpaceName(d.active_block));
  if (Is(name, "VIEWDIR")) {
    if (!d.IsModel(d.active_block) && !d.InViewport()) {
      return host::Variant(host::Point{0, 0, 1});
    }
    return host::Variant(Rotate(CurrentView(d).direction, -d.ucs_angle));
  }
  if (Is(name, "VIEWCTR")) {
    if (!d.IsModel(d.active_block) && !d.InViewport()) {
      return host::Variant(host::Point{0, 0, 0});
    }
    ViewFrame v = CurrentView(d);
    host::Point c = Rotate(v.view_center, -v.twist);
    host::Point world{v.target.x + c.x, v.target.y + c.y, v.target.z};
    return host::Variant(Rotate(world, -d.ucs_angle));
  }
  if (Is(name, "VIEWSIZE")) {
    if (d.InViewport()) {
      return host::Variant(
          dxf::Viewport(d.entity(d.active_pviewport)).view_height());
    }
    dxf::Entity vport = d.doc->FindTableEntry("VPORT", "*Active");
    return host::Variant(vport.valid() ? vport.GetDouble(40, 0) : 0.0);
  }
  if (Is(name, "VIEWTWIST")) return host::Variant(CurrentView(d).twist);
  if (Is(name, "UCSNAME")) return host::Variant(d.Decode(d.ucs_name));
  if (Is(name, "WORLDUCS")) {
    return host::Variant(static_cast<int16_t>(d.ucs_world ? 1 : 0));
  }
  if (Is(name, "CANNOSCALE")) {
    if (d.InViewport()) {
      std::string own =
          dxf::ViewportAnnotationScale(*d.doc, d.entity(d.active_pviewport));
      if (!own.empty()) return host::Variant(own);
    }
    auto session = d.session_vars.find("CANNOSCALE");
    if (session != d.session_vars.end()) return session->second;
    dxf::Entity var = DictionaryVar(d, "CANNOSCALE");
    if (var.valid()) return host::Variant(std::string(var.GetString(1)));
    return host::Variant(std::string("1:1"));
  }
  if (Is(name, "CLAYER")) {
    return host::Variant(d.Decode(d.doc->HeaderValue("$CLAYER").value_or("0")));
  }
  if (Is(name, "TEXTSTYLE")) {
    return host::Variant(
        d.Decode(d.doc->HeaderValue("$TEXTSTYLE").value_or("Standard")));
  }
  if (Is(name, "DWGNAME") || Is(name, "DWGPREFIX")) {
    std::string path = d.path;
    size_t slash = path.find_last_of("/\\");
    std::string folder =
        slash == std::string::npos ? "" : path.substr(0, slash + 1);
    std::string file =
        slash == std::string::npos ? path : path.substr(slash + 1);
    return host::Variant(Is(name, "DWGNAME") ? file : folder);
  }
  auto it = d.session_vars.find(name);
  if (it != d.session_vars.end()) return it->second;
  for (const SessionDefault& s : kSessionDefaults) {
    if (Is(name, s.name)) return host::Variant(s.value);
  }
  for (std::string_view text : kSessionTexts) {
    if (Is(name, text)) return host::Variant(std::string());
  }
  return HeaderVariable(d, name);
}

Status WriteVariable(Drawing& d, std::string_view name,
                     const host::Variant& value) {
  if (Is(name, "TILEMODE")) {
    Result<int16_t> v = ShortValue(name, value);
    if (!v.ok()) return v.status();
    if (*v == 1) return ActivateBlock(d, d.doc->model_space());
    if (*v != 0) return Status::InvalidArgument("TILEMODE is 0 or 1");
    dxf::Block* paper =
        d.last_paper_block ? d.last_paper_block : d.doc->paper_space();
    if (paper == nullptr) return Status::Refused("the drawing has no layout");
    return ActivateBlock(d, paper);
  }
  if (Is(name, "CTAB")) {
    Result<std::string> tab = host::ToText(value);
    if (!tab.ok()) return tab.status();
    for (const LayoutInfo& info : d.Layouts()) {
      if (dxf::EqualsNoCase(info.name, *tab)) {
        return ActivateBlock(d, info.block);
      }
    }
    return Status::InvalidArgument("layout \"" + *tab + "\" does not exist");
  }
  if (Is(name, "CANNOSCALE")) {
    Result<std::string> scale = host::ToText(value);
    if (!scale.ok()) return scale.status();
    size_t colon = scale->find(':');
    if (colon == std::string::npos ||
        !dxf::ParseDouble(scale->substr(0, colon)) ||
        !dxf::ParseDouble(scale->substr(colon + 1))) {
      return Status::InvalidArgument("\"" + *scale +
                                     "\" is not an annotation scale");
    }
    if (d.InViewport()) {
      // The viewport's own scale record (extension dictionary -> XRECORD ->
      // SCALE), the SCALE created when the drawing lacks it.
      if (!dxf::SetViewportAnnotationScale(*d.doc, d.entity(d.active_pviewport),
                                           *scale)) {
        return Status::InvalidArgument("\"" + *scale +
                                       "\" is not an annotation scale");
      }
      return Status();
    }
    dxf::Entity var = DictionaryVar(d, "CANNOSCALE");
    if (var.valid() && var.Find(1) >= 0) {
      var.Set(1, *scale);
      d.session_vars.erase("CANNOSCALE");
    } else {
      d.session_vars["CANNOSCALE"] = host::Variant(*scale);
    }
    return Status();
  }
  if (Is(name, "CLAYER") || Is(name, "TEXTSTYLE")) {
    Result<std::string> text = host::ToText(value);
    if (!text.ok()) return text.status();
    bool layer = Is(name, "CLAYER");
    dxf::Entity rec =
        d.doc->FindTableEntry(layer ? "LAYER" : "STYLE", d.Encode(*text));
    if (!rec.valid()) {
      return Status::InvalidArgument("\"" + *text + "\" does not exist");
    }
    if (layer && (rec.GetInt(70, 0) & 1)) {
      return Status::Refused("a frozen layer cannot be made current");
    }
    d.doc->SetHeader(layer ? "$CLAYER" : "$TEXTSTYLE", layer ? 8 : 7,
                     rec.GetString(2));
    return Status();
  }
  static constexpr std::string_view kReadOnly[] = {
      "VIEWDIR", "VIEWCTR",  "VIEWSIZE", "VIEWTWIST",
      "UCSNAME", "WORLDUCS", "DWGNAME",  "DWGPREFIX"};
  for (std::string_view ro : kReadOnly) {
    if (Is(name, ro)) return ReadOnly(ro);
  }
  for (std::string_view text : kSessionTexts) {
    if (!Is(name, text)) continue;
    const std::string* value_text = std::get_if<std::string>(&value);
    if (value_text == nullptr) {
      return Status::InvalidArgument("system variable " + std::string(name) +
                                     " takes a text");
    }
    d.session_vars[std::string(text)] = host::Variant(*value_text);
    return Status();
  }
  for (const SessionDefault& s : kSessionDefaults) {
    if (!Is(name, s.name)) continue;
    Result<int16_t> v = ShortValue(name, value);
    if (!v.ok()) return v.status();
    d.session_vars[std::string(s.name)] = host::Variant(*v);
    return Status();
  }
  // A variable the drawing's header holds as one value.
  std::string key = "$" + std::string(name);
  std::span<const dxf::Tag> tags = d.doc->HeaderTags(key);
  if (tags.size() != 1) {
    return Status::NotFound("unknown system variable " + std::string(name));
  }
  int code = tags[0].code;
  std::string text;
  switch (dxf::TypeOfCode(code)) {
    case dxf::ValueType::kInt16: {
      Result<int16_t> v = ShortValue(name, value);
      if (!v.ok()) return v.status();
      text = dxf::FormatInt(*v);
      break;
    }
    case dxf::ValueType::kInt32:
    case dxf::ValueType::kInt64:
    case dxf::ValueType::kBool: {
      Result<int32_t> v = IntValue(name, value);
      if (!v.ok()) return v.status();
      text = dxf::FormatInt(*v);
      break;
    }
    case dxf::ValueType::kDouble: {
      Result<double> v = host::ToDouble(value);
      if (!v.ok()) return v.status();
      text = dxf::FormatDouble(*v);
      break;
    }
    default: {
      Result<std::string> v = host::ToText(value);
      if (!v.ok()) return v.status();
      text = *v;
    }
  }
  d.doc->SetHeader(key, code, text);
  return Status();
}

}  // namespace lmt::dxfhost

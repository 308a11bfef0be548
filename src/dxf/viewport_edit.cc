#include "dxf/viewport_edit.h"

#include <cmath>
#include <vector>

#include "dxf/objects.h"

namespace lmt::dxf {
namespace {

constexpr char kScaleInfo[] = "ASDK_XREC_ANNOTATION_SCALE_INFO";
// CAD programs' defaults: grid beyond limits, adaptive grid, "always set",
// UCS icon visible; model viewports add the grid and UCS icon at origin.
constexpr int kMainViewportFlags = 819232;
constexpr int kModelViewportFlags = 819808;

// "1:50" -> (1, 50); nullopt when not of that form.
bool ParseScaleName(std::string_view name, double* paper, double* drawing) {
  size_t colon = name.find(':');
  if (colon == std::string_view::npos) return false;
  auto a = ParseDouble(name.substr(0, colon));
  auto b = ParseDouble(name.substr(colon + 1));
  if (!a || !b || !(*a > 0) || !(*b > 0)) return false;
  *paper = *a;
  *drawing = *b;
  return true;
}

Entity RootEntry(Document& doc, std::string_view key, bool create) {
  Entity root = doc.root_dictionary();
  if (!root.valid()) return Entity();
  if (Entity e = doc.FindByHandle(doc.DictionaryLookup(root, key)); e.valid()) {
    return e;
  }
  if (!create) return Entity();
  Entity dict =
      doc.AddObject({doc.MakeTag(0, "DICTIONARY"),
                     doc.MakeTag(100, "AcDbDictionary"), doc.MakeTag(281, "1")},
                    root.handle());
  dict.AddReactor(root.handle());
  doc.AddToDictionary(root, key, dict.handle());
  return dict;
}

// The SCALE named `name` in ACAD_SCALELIST, created when absent; invalid
// when the name cannot be parsed and there is none.
Entity FindOrAddScale(Document& doc, std::string_view name) {
  Entity list = RootEntry(doc, "ACAD_SCALELIST", true);
  if (!list.valid()) return Entity();
  std::vector<std::pair<std::string_view, uint64_t>> entries =
      DictionaryEntries(list);
  for (const auto& [key, h] : entries) {
    Entity s = doc.FindByHandle(h);
    if (s.valid() && s.type() == "SCALE" && Scale(s).name() == name) return s;
  }
  double paper = 0, drawing = 0;
  if (!ParseScaleName(name, &paper, &drawing)) return Entity();
  doc.EnsureClass("SCALE", "AcDbScale", 1153, false);
  Entity s =
      doc.AddObject({doc.MakeTag(0, "SCALE"), doc.MakeTag(100, "AcDbScale"),
                     doc.MakeTag(70, "0"), doc.MakeTag(300, name),
                     doc.MakeTag(140, FormatDouble(paper)),
                     doc.MakeTag(141, FormatDouble(drawing)),
                     doc.MakeTag(290, paper == drawing ? "1" : "0")},
                    list.handle());
  s.AddReactor(list.handle());
  // Keys only need to be unique; CAD programs use A0, A1, ...
  std::string key;
  for (size_t n = entries.size();; ++n) {
    key = "A" + std::to_string(n);
    if (doc.DictionaryLookup(list, key) == 0) break;
  }
  doc.AddToDictionary(list, key, s.handle());
  return s;
}

Entity ScaleRecord(Document& doc, const Entity& viewport) {
  Entity xd = doc.FindByHandle(viewport.ExtensionDictionary());
  if (!xd.valid()) return Entity();
  return doc.FindByHandle(doc.DictionaryLookup(xd, kScaleInfo));
}

}  // namespace

std::string ScaleName(double paper_per_model) {
  if (!(paper_per_model > 0)) return "1:1";
  auto fmt = [](double v) {
    double r = std::round(v * 1e6) / 1e6;
    if (r == std::round(r)) return FormatInt(static_cast<int64_t>(r));
    return FormatDouble(r);
  };
  if (paper_per_model >= 1) return fmt(paper_per_model) + ":1";
  return "1:" + fmt(1 / paper_per_model);
}

bool SetViewportAnnotationScale(Document& doc, Entity viewport,
                                std::string_view name) {
  if (doc.IsR12()) return false;
  Entity scale = FindOrAddScale(doc, name);
  if (!scale.valid()) return false;
  if (Entity rec = ScaleRecord(doc, viewport); rec.valid()) {
    rec.Set(340, FormatHandle(scale.handle()));
    return true;
  }
  Entity xd = GetOrCreateExtensionDictionary(doc, viewport);
  Entity rec =
      doc.AddObject({doc.MakeTag(0, "XRECORD"), doc.MakeTag(100, "AcDbXrecord"),
                     doc.MakeTag(280, "1"), doc.MakeTag(90, "1"),
                     doc.MakeTag(340, FormatHandle(scale.handle()))},
                    xd.handle());
  rec.AddReactor(xd.handle());
  doc.AddToDictionary(xd, kScaleInfo, rec.handle());
  return true;
}

std::string ViewportAnnotationScale(Document& doc, const Entity& viewport) {
  Entity rec = ScaleRecord(doc, viewport);
  if (!rec.valid()) return {};
  Entity scale = doc.FindByHandle(ParseHandle(rec.GetString(340)).value_or(0));
  if (!scale.valid() || scale.type() != "SCALE") return {};
  return std::string(Scale(scale).name());
}

std::vector<Tag> ViewportViewTags(Document& doc,
                                  const ViewportSettings& entry) {
  double view_height = entry.view_height > 0 ? entry.view_height : entry.height;
  std::string_view v = doc.version();
  std::vector<Tag> t;
  auto add = [&](int code, std::string_view value) {
    t.push_back(doc.MakeTag(code, value));
  };
  auto num = [&](int code, double value) { add(code, FormatDouble(value)); };
  auto integer = [&](int code, int64_t value) { add(code, FormatInt(value)); };
  int flags = (entry.id == 1 ? kMainViewportFlags : kModelViewportFlags) |
              entry.extra_flags;
  if (entry.locked) flags |= Viewport::kFlagLocked;
  if (!entry.on) flags |= Viewport::kFlagOff;
  num(12, entry.view_center_x);
  num(22, entry.view_center_y);
  for (int code : {13, 23}) num(code, 0);
  for (int code : {14, 24, 15, 25}) num(code, 10);
  num(16, entry.direction.x);
  num(26, entry.direction.y);
  num(36, entry.direction.z);
  num(17, entry.target.x);
  num(27, entry.target.y);
  num(37, entry.target.z);
  num(42, 50);
  num(43, 0);
  num(44, 0);
  num(45, view_height);
  num(50, 0);
  // CAD programs store twists in [0, 360).
  double twist = std::fmod(entry.twist, 360.0);
  if (twist < 0) twist += 360;
  if (std::abs(twist - 360) < 1e-12) twist = 0;
  num(51, twist);
  integer(72, 1000);
  integer(90, flags);
  add(1, "");
  integer(281, 0);
  integer(71, 1);
  integer(74, 0);
  for (int code : {110, 120, 130}) num(code, 0);
  num(111, 1);
  num(121, 0);
  num(131, 0);
  num(112, 0);
  num(122, 1);
  num(132, 0);
  integer(79, 0);
  num(146, 0);
  if (v >= "AC1018") integer(170, 0);
  if (v >= "AC1021") {
    integer(61, 5);
    Entity styles = RootEntry(doc, "ACAD_VISUALSTYLE", false);
    if (uint64_t h =
            styles.valid() ? doc.DictionaryLookup(styles, "2dWireframe") : 0) {
      add(348, FormatHandle(h));
    }
    integer(292, 1);
    integer(282, 1);
    num(141, 0);
    num(142, 0);
    integer(63, 250);
    integer(421, 3355443);
  }
  return t;
}

Viewport AddViewport(Document& doc, Block* block,
                     const ViewportSettings& entry) {
  double view_height = entry.view_height > 0 ? entry.view_height : entry.height;
  if (doc.IsR12() || block == nullptr || !(entry.width > 0) ||
      !(entry.height > 0) || !(view_height > 0)) {
    return Viewport(Entity());
  }
  std::vector<Tag> t;
  auto add = [&](int code, std::string_view value) {
    t.push_back(doc.MakeTag(code, value));
  };
  auto num = [&](int code, double value) { add(code, FormatDouble(value)); };
  auto integer = [&](int code, int64_t value) { add(code, FormatInt(value)); };
  add(0, "VIEWPORT");
  add(100, "AcDbEntity");
  add(8, entry.layer.empty() ? "0" : entry.layer);
  add(100, "AcDbViewport");
  num(10, entry.center.x);
  num(20, entry.center.y);
  num(30, entry.center.z);
  num(40, entry.width);
  num(41, entry.height);
  integer(68, entry.on ? (entry.status > 0 ? entry.status : entry.id) : 0);
  integer(69, entry.id);
  std::vector<Tag> view = ViewportViewTags(doc, entry);
  t.insert(t.end(), view.begin(), view.end());
  Viewport vp(doc.AddEntity(block, std::move(t)));
  std::string scale = entry.annotation_scale.empty()
                          ? ScaleName(entry.height / view_height)
                          : entry.annotation_scale;
  if (entry.id == 1) scale = "1:1";
  SetViewportAnnotationScale(doc, vp, scale);
  return vp;
}

}  // namespace lmt::dxf

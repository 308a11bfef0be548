#include "dxf/upgrade.h"

#include <string>
#include <vector>

#include "dxf/layout_edit.h"
#include "dxf/r12_upgrade.h"
#include "dxf/version.h"
#include "dxf/viewport.h"
#include "dxf/viewport_edit.h"

namespace lmt::dxf {
namespace {

// The tags [begin, end) of the MVIEW group in the ACAD extended data, with
// its nested groups; begin == end when there is none. Indices are into
// e.tags().
std::pair<int, int> MViewRange(const Entity& e) {
  auto t = e.tags();
  const int n = static_cast<int>(t.size());
  int app = -1;
  for (int i = e.XDataBegin(); i >= 0 && i < n; ++i) {
    if (t[i].code == 1001) app = t[i].value() == "ACAD" ? i : -1;
    if (app < 0 || t[i].code != 1000 || t[i].value() != "MVIEW") continue;
    int depth = 0;
    for (int j = i + 1; j < n && t[j].code != 1001; ++j) {
      if (t[j].code != 1002) continue;
      depth += t[j].value() == "{" ? 1 : -1;
      if (depth == 0) return {i, j + 1};
    }
    return {i, i};
  }
  return {0, 0};
}

// Moves the view of an R13/R14 viewport from its extended data into its
// own codes, as DXF 2000 keeps it; frozen layers become layer handles.
void UpgradeViewport(Document& doc, Viewport vp) {
  if (!vp.is_legacy()) return;
  ViewportSettings view;
  view.view_center_x = vp.view_center().x;
  view.view_center_y = vp.view_center().y;
  view.target = vp.view_target();
  view.direction = vp.view_direction();
  view.view_height = vp.view_height();
  view.height = vp.height();
  view.twist = vp.twist();
  view.id = vp.id();
  view.on = vp.status() != 0;
  std::vector<Tag> tags = ViewportViewTags(doc, view);
  std::vector<Tag> frozen;
  for (std::string_view name : vp.frozen_layers()) {
    Entity layer = doc.FindTableEntry("LAYER", name);
    if (layer.valid()) {
      frozen.push_back(doc.MakeTag(331, FormatHandle(layer.handle())));
    }
  }
  for (size_t i = 0; i < tags.size(); ++i) {
    if (tags[i].code == 90) {
      tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(i), frozen.begin(),
                  frozen.end());
      break;
    }
  }
  auto [begin, end] = MViewRange(vp);
  if (end > begin) {
    vp.EraseTags(begin, end);
    // An ACAD group left empty goes too.
    auto t = vp.tags();
    if (begin - 1 >= 0 && t[begin - 1].Is(1001, "ACAD") &&
        (begin == static_cast<int>(t.size()) || t[begin].code == 1001)) {
      vp.EraseTags(begin - 1, begin);
    }
  }
  int after = vp.Find(69);
  vp.InsertTags(after >= 0 ? after + 1 : static_cast<int>(vp.tags().size()),
                tags);
}

}  // namespace

Status UpgradeForLayouts(Document& doc) {
  const std::string from(doc.version());
  if (from >= "AC1015") return Status::Ok();
  // R12 first takes the object model R13 introduced; the rest is R14's.
  GiveR12TheR14Model(doc);
  if (!doc.root_dictionary().valid()) {
    return Status::InvalidArgument("the " + std::string(ReleaseName(from)) +
                                   " drawing has no root dictionary");
  }
  doc.SetHeader("$ACADVER", 1, "AC1015");
  doc.EnsureClass("LAYOUT", "AcDbLayout", 0, false);
  for (auto& block : doc.blocks()) {
    for (RecordId id : block->entities) {
      Entity e = doc.entity(id);
      if (!e.erased() && e.type() == "VIEWPORT")
        UpgradeViewport(doc, Viewport(e));
    }
  }
  return AddLayoutsOfSpaces(doc);
}

}  // namespace lmt::dxf

#include "dxfhost/layout_edit.h"

#include <algorithm>
#include <string>
#include <vector>

#include "dxf/builders.h"
#include "dxf/objects.h"
#include "dxf/viewport.h"
#include "dxfhost/session.h"

namespace lmt::dxfhost {
namespace {

constexpr int kMainViewportFlags = 819232;
constexpr int kModelViewportFlags = 819808;
constexpr int kViewportOff = 131072;

std::string Num(double v) { return dxf::FormatDouble(v); }

dxf::Entity LayoutDictionary(Drawing& d) {
  dxf::Entity root = d.doc->root_dictionary();
  if (!root.valid()) return dxf::Entity();
  uint64_t h = d.doc->DictionaryLookup(root, "ACAD_LAYOUT");
  return h ? d.doc->FindByHandle(h) : dxf::Entity();
}

std::vector<dxf::Tag> ViewportTags(Drawing& d, const host::Point& c, double w,
                                   double h, int status, int id, int flags,
                                   std::string_view layer,
                                   const host::Point& view_center) {
  auto t = [&](int code, std::string_view v) {
    return d.doc->MakeTag(code, v);
  };
  return {t(0, "VIEWPORT"),
          t(100, "AcDbEntity"),
          t(8, layer),
          t(100, "AcDbViewport"),
          t(10, Num(c.x)),
          t(20, Num(c.y)),
          t(30, "0.0"),
          t(40, Num(w)),
          t(41, Num(h)),
          t(68, std::to_string(status)),
          t(69, std::to_string(id)),
          t(12, Num(view_center.x)),
          t(22, Num(view_center.y)),
          t(13, "0.0"),
          t(23, "0.0"),
          t(14, "10.0"),
          t(24, "10.0"),
          t(15, "10.0"),
          t(25, "10.0"),
          t(16, "0.0"),
          t(26, "0.0"),
          t(36, "1.0"),
          t(17, "0.0"),
          t(27, "0.0"),
          t(37, "0.0"),
          t(42, "50.0"),
          t(43, "0.0"),
          t(44, "0.0"),
          t(45, Num(h)),
          t(50, "0.0"),
          t(51, "0.0"),
          t(72, "1000"),
          t(90, std::to_string(flags)),
          t(1, ""),
          t(281, "0"),
          t(71, "1"),
          t(74, "0"),
          t(110, "0.0"),
          t(120, "0.0"),
          t(130, "0.0"),
          t(111, "1.0"),
          t(121, "0.0"),
          t(131, "0.0"),
          t(112, "0.0"),
          t(122, "1.0"),
          t(132, "0.0"),
          t(79, "0"),
          t(146, "0.0")};
}

// Paper size and limits from the plot settings (dxf-notes 3.4).
void ResetLimits(dxf::Entity layout) {
  double u = layout.GetInt(72, 1) == 0 ? 25.4 : 1.0;
  double pw = layout.GetDouble(44, 420) / u, ph = layout.GetDouble(45, 297) / u;
  int64_t rotation = layout.GetInt(73, 0);
  if (rotation == 1 || rotation == 3) std::swap(pw, ph);
  double x0 = -(layout.GetDouble(40, 0) + layout.GetDouble(46, 0)) / u;
  double y0 = -(layout.GetDouble(41, 0) + layout.GetDouble(47, 0)) / u;
  const std::pair<int, double> limits[] = {
      {10, x0}, {20, y0}, {11, pw + x0}, {21, ph + y0}};
  for (auto [code, value] : limits) {
    int at = layout.FindIn("AcDbLayout", code);
    if (at >= 0) layout.SetValueAt(at, Num(value));
  }
}

// The tags of `e` without handle, first owner, reactors and dictionaries.
std::vector<dxf::Tag> CopyTags(Drawing& d, dxf::Entity e) {
  std::vector<dxf::Tag> tags;
  std::span<const dxf::Tag> src = e.tags();
  bool owner_seen = false;
  for (size_t i = 0; i < src.size(); ++i) {
    const dxf::Tag& t = src[i];
    if (t.code == 5) continue;
    if (t.code == 102 && !t.value().empty() && t.value()[0] == '{') {
      while (i < src.size() && !(src[i].code == 102 && src[i].value() == "}")) {
        ++i;
      }
      continue;
    }
    if (t.code == 330 && !owner_seen) {
      owner_seen = true;
      continue;
    }
    tags.push_back(d.doc->MakeTag(t.code, t.value()));
  }
  return tags;
}

}  // namespace

Result<dxf::RecordId> CopyEntityInto(Drawing& d, dxf::RecordId source,
                                     dxf::Block* target) {
  dxf::Entity e = d.entity(source);
  if (!e.valid() || e.erased() || target == nullptr) {
    return Status::NotFound("nothing to copy");
  }
  dxf::Entity copy = d.doc->AddEntity(target, CopyTags(d, e));
  if (!copy.valid()) return Status::Refused("the copy could not be added");
  dxf::EntityDb& db = d.doc->db();
  const bool paper = copy.GetInt(67, 0) == 1;
  for (dxf::RecordId child : std::vector<dxf::RecordId>(db.children(source))) {
    dxf::RecordId id = db.Create(CopyTags(d, d.entity(child)));
    db.SetHandle(id, d.doc->AllocateHandle());
    dxf::Entity c = d.entity(id);
    c.SetOwner(copy.handle());
    c.SetPaperSpace(paper);
    db.mutable_children(copy.id()).push_back(id);
    db.SetParent(id, copy.id());
  }
  return copy.id();
}

Result<LayoutInfo> AddLayout(Drawing& d, std::string_view name) {
  dxf::Entity dict = LayoutDictionary(d);
  if (d.doc->IsR12() || !dict.valid()) {
    return Status::NotSupported("R12 drawings have one paper space only");
  }
  if (!dxf::IsValidName(*d.doc, name)) {
    return Status::InvalidArgument("\"" + std::string(name) +
                                   "\" is not a valid layout name");
  }
  int tab = 0;
  const std::string decoded = d.Decode(name);
  for (const LayoutInfo& info : d.Layouts()) {
    if (dxf::EqualsNoCase(info.name, decoded) ||
        dxf::EqualsNoCase(info.name, name)) {
      return Status::Refused("layout \"" + std::string(name) +
                             "\" already exists");
    }
    tab = std::max(tab, info.tab_order);
  }
  // Start the search for a free *Paper_SpaceN where it usually succeeds at
  // once: each try looks through every block.
  std::string block_name;
  for (size_t n = d.doc->blocks().size(); block_name.empty(); ++n) {
    std::string candidate = "*Paper_Space" + std::to_string(n);
    if (d.doc->FindBlock(candidate) == nullptr) block_name = candidate;
  }
  dxf::Block* block = d.doc->AddBlock(block_name);
  const double pw = 420, ph = 297;
  // The layout's own view of the paper: centre of the sheet, 1.1 times it.
  dxf::Entity main = d.doc->AddEntity(
      block, ViewportTags(d, {pw / 2, ph / 2, 0}, pw * 1.1, ph * 1.1, 0, 1,
                          kMainViewportFlags, "0", {pw / 2, ph / 2, 0}));
  const std::string record = dxf::FormatHandle(block->record_handle);
  const std::string viewport = dxf::FormatHandle(main.handle());
  const std::string owner = dxf::FormatHandle(dict.handle());
  auto t = [&](int code, std::string_view v) {
    return d.doc->MakeTag(code, v);
  };
  std::vector<dxf::Tag> tags = {t(0, "LAYOUT"),
                                t(102, "{ACAD_REACTORS"),
                                t(330, owner),
                                t(102, "}"),
                                t(100, "AcDbPlotSettings"),
                                t(1, ""),
                                t(2, "none_device"),
                                t(4, "ISO_A3_(420.00_x_297.00_MM)"),
                                t(6, ""),
                                t(40, "0.0"),
                                t(41, "0.0"),
                                t(42, "0.0"),
                                t(43, "0.0"),
                                t(44, Num(pw)),
                                t(45, Num(ph)),
                                t(46, "0.0"),
                                t(47, "0.0"),
                                t(48, "0.0"),
                                t(49, "0.0"),
                                t(140, "0.0"),
                                t(141, "0.0"),
                                t(142, "1.0"),
                                t(143, "1.0"),
                                t(70, "688"),
                                t(72, "1"),
                                t(73, "0"),
                                t(74, "5"),
                                t(7, ""),
                                t(75, "16"),
                                t(147, "1.0"),
                                t(76, "0"),
                                t(77, "2"),
                                t(78, "300"),
                                t(148, "0.0"),
                                t(149, "0.0"),
                                t(100, "AcDbLayout"),
                                t(1, d.Encode(name)),
                                t(70, "1"),
                                t(71, std::to_string(tab + 1)),
                                t(10, "0.0"),
                                t(20, "0.0"),
                                t(11, Num(pw)),
                                t(21, Num(ph)),
                                t(12, "0.0"),
                                t(22, "0.0"),
                                t(32, "0.0"),
                                t(14, "1e+20"),
                                t(24, "1e+20"),
                                t(34, "1e+20"),
                                t(15, "-1e+20"),
                                t(25, "-1e+20"),
                                t(35, "-1e+20"),
                                t(146, "0.0"),
                                t(13, "0.0"),
                                t(23, "0.0"),
                                t(33, "0.0"),
                                t(16, "1.0"),
                                t(26, "0.0"),
                                t(36, "0.0"),
                                t(17, "0.0"),
                                t(27, "1.0"),
                                t(37, "0.0"),
                                t(76, "0"),
                                t(330, record),
                                t(331, viewport)};
  dxf::Entity layout = d.doc->AddObject(std::move(tags), dict.handle());
  d.doc->AddToDictionary(dict, d.Encode(name), layout.handle());
  dxf::Entity rec = d.doc->FindByHandle(block->record_handle);
  if (rec.valid()) {
    int at = rec.FindIn("AcDbBlockTableRecord", 340);
    if (at >= 0) rec.SetValueAt(at, dxf::FormatHandle(layout.handle()));
  }
  LayoutInfo info{layout.handle(), decoded, block, tab + 1};
  // The new tab sorts last: the known list grows by it instead of being
  // read again from the dictionary (quadratic over a thousand layouts).
  d.layouts_cache_.push_back(info);
  return info;
}

Status CopyPageSetup(Drawing& d, uint64_t target, uint64_t source) {
  dxf::Entity to = d.doc->FindByHandle(target);
  dxf::Entity from = d.doc->FindByHandle(source);
  if (!to.valid() || !from.valid() || target == source) {
    return target == source ? Status()
                            : Status::NotFound("the layout has no settings");
  }
  auto part = [](dxf::Entity e, int* begin, int* end) {
    *begin = *end = -1;
    auto tags = e.tags();
    for (int i = 0; i < static_cast<int>(tags.size()); ++i) {
      if (tags[i].code != 100) continue;
      if (tags[i].value() == "AcDbPlotSettings") *begin = i + 1;
      if (tags[i].value() == "AcDbLayout" && *begin >= 0) *end = i;
    }
    return *begin >= 0 && *end >= *begin;
  };
  int fb, fe, tb, te;
  if (!part(from, &fb, &fe) || !part(to, &tb, &te)) {
    return Status::NotSupported("the layout has no plot settings");
  }
  const int64_t model_bit = to.GetInt(70, 0) & 1024;
  std::vector<dxf::Tag> copied;
  for (int i = fb; i < fe; ++i) {
    const dxf::Tag& tag = from.tags()[i];
    if (tag.code == 70) {
      int64_t flags =
          (dxf::ParseInt(tag.value()).value_or(0) & ~1024) | model_bit;
      copied.push_back(d.doc->MakeTag(70, std::to_string(flags)));
    } else {
      copied.push_back(d.doc->MakeTag(tag.code, tag.value()));
    }
  }
  to.EraseTags(tb, te);
  to.InsertTags(tb, copied);
  ResetLimits(to);
  return Status();
}

Status DeleteLayout(Drawing& d, const LayoutInfo& layout) {
  if (layout.block == nullptr || d.IsModel(layout.block)) {
    return Status::Refused("the Model tab cannot be deleted");
  }
  std::vector<LayoutInfo> all = d.Layouts();
  const LayoutInfo* other = nullptr;
  bool present = false;
  for (const LayoutInfo& info : all) {
    if (info.block == layout.block) {
      present = true;
    } else if (!d.IsModel(info.block) && other == nullptr) {
      other = &info;
    }
  }
  if (!present) return Status::NotFound("the layout was deleted");
  if (other == nullptr) {
    return Status::Refused("the last paper layout cannot be deleted");
  }
  if (d.doc->paper_space() == layout.block || d.active_block == layout.block) {
    bool model_active = d.IsModel(d.active_block);
    if (Status s = ActivateBlock(d, other->block); !s.ok()) return s;
    if (model_active) (void)ActivateBlock(d, d.doc->model_space());
  }
  if (d.last_paper_block == layout.block) d.last_paper_block = other->block;
  dxf::Block* block = layout.block;
  std::vector<dxf::RecordId> entities = block->entities;
  for (dxf::RecordId id : entities) d.doc->Erase(d.entity(id));
  dxf::Entity dict = LayoutDictionary(d);
  if (dict.valid()) {
    for (const auto& [key, handle] : dxf::DictionaryEntries(dict)) {
      if (handle == layout.handle) {
        dxf::RemoveFromDictionary(dict, std::string(key));
        break;
      }
    }
  }
  if (dxf::Entity obj = d.doc->FindByHandle(layout.handle); obj.valid()) {
    d.doc->Erase(obj);
  }
  d.ForgetLayouts();
  if (dxf::Entity rec = d.doc->FindByHandle(block->record_handle);
      rec.valid()) {
    d.doc->db().MarkErased(rec.id());
    if (dxf::Table* table = d.doc->table("BLOCK_RECORD")) {
      auto& v = table->entries;
      v.erase(std::remove(v.begin(), v.end(), rec.id()), v.end());
    }
  }
  for (dxf::RecordId id : {block->begin, block->end}) {
    if (id != dxf::kNoRecord) d.doc->db().MarkErased(id);
  }
  // A block without its BLOCK record is not written; the name is freed.
  block->begin = block->end = dxf::kNoRecord;
  block->entities.clear();
  d.doc->RenameBlock(block, "*Deleted" + dxf::FormatHandle(layout.handle));
  return Status();
}

Result<dxf::RecordId> AddPaperViewport(Drawing& d, dxf::Block* block,
                                       const host::Point& center, double width,
                                       double height) {
  if (block == nullptr || d.IsModel(block) || d.SpaceName(block).empty()) {
    return Status::NotSupported("viewports go into paper space only");
  }
  if (!(width > 0) || !(height > 0)) {
    return Status::InvalidArgument("a viewport needs a positive size");
  }
  int id = 1;
  for (dxf::RecordId r : block->entities) {
    dxf::Entity e = d.entity(r);
    if (!e.erased() && e.type() == "VIEWPORT") {
      id = std::max<int>(id, static_cast<int>(e.GetInt(69, 0)));
    }
  }
  std::string layer(d.doc->HeaderValue("$CLAYER").value_or("0"));
  dxf::Entity e =
      d.doc->AddEntity(block, ViewportTags(d, center, width, height, 0, id + 1,
                                           kModelViewportFlags | kViewportOff,
                                           layer, {0, 0, 0}));
  return e.id();
}

}  // namespace lmt::dxfhost

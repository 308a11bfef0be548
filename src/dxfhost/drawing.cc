#include "dxfhost/drawing.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numbers>

#include "dxf/encoding.h"
#include "dxf/geometry.h"
#include "dxf/objects.h"
#include "dxf/viewport.h"

namespace lmt::dxfhost {

bool NoCaseLess::operator()(std::string_view a, std::string_view b) const {
  return std::lexicographical_compare(
      a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) <
               std::tolower(static_cast<unsigned char>(y));
      });
}

Status Drawing::Live() const {
  if (closed || doc == nullptr) {
    return Status::NotFound("the drawing was closed");
  }
  return Status();
}

std::string Drawing::Decode(std::string_view raw) const {
  return dxf::DecodeText(raw, dxf::CodePageOf(*doc));
}

std::string Drawing::Encode(std::string_view utf8) const {
  return dxf::EncodeText(utf8, dxf::CodePageOf(*doc));
}

const std::vector<LayoutInfo>& Drawing::Layouts() {
  if (layouts_known_) return layouts_cache_;
  std::vector<LayoutInfo>& out = layouts_cache_;
  out.clear();
  layout_by_name_.clear();
  layout_by_block_.clear();
  tab_orders_stale_ = false;
  last_tab_order_.reset();
  layouts_known_ = true;  // R12's implied tabs never change either
  out.push_back(LayoutInfo{0, "Model", doc->model_space(), 0});
  dxf::Entity root = doc->root_dictionary();
  uint64_t dict_handle =
      root.valid() ? doc->DictionaryLookup(root, "ACAD_LAYOUT") : 0;
  dxf::Entity dict =
      dict_handle ? doc->FindByHandle(dict_handle) : dxf::Entity();
  if (!dict.valid()) {
    // R12 keeps one paper space and no LAYOUT objects; show it as the
    // default tab name a CAD program gives it.
    if (doc->paper_space() != nullptr) {
      out.push_back(LayoutInfo{0, "Layout1", doc->paper_space(), 1});
    }
    for (size_t i = 0; i < out.size(); ++i) IndexLayout(i);
    return out;
  }
  for (std::string_view value : dict.GetAll(350)) {
    std::optional<uint64_t> h = dxf::ParseHandle(value);
    if (!h) continue;
    dxf::Entity layout = doc->FindByHandle(*h);
    if (!layout.valid() || layout.type() != "LAYOUT") continue;
    int name_at = layout.FindIn("AcDbLayout", 1);
    int record_at = layout.FindIn("AcDbLayout", 330);
    int tab_at = layout.FindIn("AcDbLayout", 71);
    if (name_at < 0 || record_at < 0) continue;
    std::string name = Decode(layout.tags()[name_at].value());
    std::optional<uint64_t> record =
        dxf::ParseHandle(layout.tags()[record_at].value());
    dxf::Block* block = record ? doc->BlockByRecord(*record) : nullptr;
    if (block == nullptr) continue;
    if (block == doc->model_space()) {
      out[0].handle = *h;
      out[0].name = name;
      continue;
    }
    int tab =
        tab_at >= 0
            ? static_cast<int>(
                  dxf::ParseInt(layout.tags()[tab_at].value()).value_or(0))
            : 0;
    out.push_back(LayoutInfo{*h, name, block, tab});
  }
  std::stable_sort(out.begin() + 1, out.end(),
                   [](const LayoutInfo& a, const LayoutInfo& b) {
                     return a.tab_order < b.tab_order;
                   });
  for (size_t i = 0; i < out.size(); ++i) IndexLayout(i);
  return out;
}

namespace {

// The key of a layout name: ASCII letters in upper case, as
// dxf::EqualsNoCase compares them.
std::string NameKey(std::string_view name) {
  std::string key(name);
  for (char& c : key) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return key;
}

}  // namespace

void Drawing::IndexLayout(size_t at) {
  const LayoutInfo& info = layouts_cache_[at];
  layout_by_name_.try_emplace(NameKey(info.name), at);
  layout_by_block_.try_emplace(info.block, at);
}

void Drawing::DropKnownLayout(uint64_t handle) {
  if (!layouts_known_) return;
  auto it = std::find_if(
      layouts_cache_.begin() + 1, layouts_cache_.end(),
      [&](const LayoutInfo& info) { return info.handle == handle; });
  if (handle == 0 || it == layouts_cache_.end()) {
    ForgetLayouts();
    return;
  }
  const size_t at = static_cast<size_t>(it - layouts_cache_.begin());
  const LayoutInfo gone = std::move(*it);
  layouts_cache_.erase(it);
  for (auto& [key, i] : layout_by_name_) i -= i > at ? 1 : 0;
  for (auto& [block, i] : layout_by_block_) i -= i > at ? 1 : 0;
  // Its name and block lead to the next tab that has them, if any.
  const std::string key = NameKey(gone.name);
  if (auto n = layout_by_name_.find(key);
      n != layout_by_name_.end() && n->second == at) {
    layout_by_name_.erase(n);
    for (size_t i = at; i < layouts_cache_.size(); ++i) {
      if (dxf::EqualsNoCase(layouts_cache_[i].name, gone.name)) {
        layout_by_name_.emplace(key, i);
        break;
      }
    }
  }
  if (auto b = layout_by_block_.find(gone.block);
      b != layout_by_block_.end() && b->second == at) {
    layout_by_block_.erase(b);
    for (size_t i = at; i < layouts_cache_.size(); ++i) {
      if (layouts_cache_[i].block == gone.block) {
        layout_by_block_.emplace(gone.block, i);
        break;
      }
    }
  }
  tab_orders_stale_ = true;
}

int Drawing::LastTabOrder() {
  Layouts();
  if (tab_orders_stale_) {
    // Model keeps 0, as when the list is read.
    for (size_t i = 1; i < layouts_cache_.size(); ++i) {
      dxf::Entity layout = doc->FindByHandle(layouts_cache_[i].handle);
      if (layout.valid()) {
        layouts_cache_[i].tab_order = dxf::Layout(layout).tab_order();
      }
    }
    tab_orders_stale_ = false;
    last_tab_order_.reset();
  }
  if (!last_tab_order_) {
    int last = 0;
    for (const LayoutInfo& info : layouts_cache_) {
      last = std::max(last, info.tab_order);
    }
    last_tab_order_ = last;
  }
  return *last_tab_order_;
}

void Drawing::AddKnownLayout(LayoutInfo info) {
  if (!layouts_known_) return;
  // Asked before every new layout: kept up to date, not searched for.
  if (last_tab_order_) {
    last_tab_order_ = std::max(*last_tab_order_, info.tab_order);
  }
  layouts_cache_.push_back(std::move(info));
  IndexLayout(layouts_cache_.size() - 1);
}

const LayoutInfo* Drawing::FindLayout(std::string_view name) {
  const std::vector<LayoutInfo>& all = Layouts();
  auto it = layout_by_name_.find(NameKey(name));
  return it == layout_by_name_.end() ? nullptr : &all[it->second];
}

LayoutInfo Drawing::LayoutOfBlock(const dxf::Block* block) {
  const std::vector<LayoutInfo>& all = Layouts();
  auto it = layout_by_block_.find(block);
  return it == layout_by_block_.end() ? LayoutInfo{} : all[it->second];
}

std::shared_ptr<Drawing> Drawing::Xref(dxf::Document& owner,
                                       const dxf::Block& block) {
  std::string owner_path = path;
  for (const auto& [file, x] : xrefs) {
    if (x != nullptr && x->doc.get() == &owner) owner_path = x->path;
  }
  std::string key = dxf::XrefPath(owner, block, owner_path);
  if (key.empty()) return nullptr;
  auto it = xrefs.find(key);
  if (it != xrefs.end()) return it->second;
  std::unique_ptr<dxf::Document> loaded;
  std::shared_ptr<Drawing> x;
  if (dxf::LoadXref(owner, block, owner_path, &loaded).ok()) {
    x = std::make_shared<Drawing>();
    x->doc = std::move(loaded);
    x->path = key;
    x->gate = gate;
    x->kind = kind;
    x->active_block = x->doc->model_space();
  }
  // An unreadable file is remembered too, so it is tried once only.
  xrefs[key] = x;
  return x;
}

dxf::Block* Drawing::BlockOfEntity(dxf::RecordId id) {
  dxf::Entity e = doc->entity(id);
  if (dxf::Block* b = doc->BlockOf(e)) return b;
  return e.paper_space() ? doc->paper_space() : doc->model_space();
}

std::string Drawing::SpaceName(const dxf::Block* block) {
  if (IsModel(block)) return "Model";
  return LayoutOfBlock(block).name;
}

Status FromDxf(const dxf::Status& s) {
  if (s.ok()) return Status();
  if (s.IsIOError()) return Status::IOError(s.message());
  if (s.IsCorruption()) return Status::Corruption(s.message());
  return Status::InvalidArgument(s.message());
}

host::Point Rotate(const host::Point& p, double angle) {
  double c = std::cos(angle), s = std::sin(angle);
  return host::Point{p.x * c - p.y * s, p.x * s + p.y * c, p.z};
}

ViewFrame TiledView(Drawing& d) {
  ViewFrame v;
  dxf::Entity vport = d.doc->FindTableEntry("VPORT", "*Active");
  if (!vport.valid()) return v;
  dxf::Vec3 t = vport.GetPoint(17);
  dxf::Vec3 c = vport.GetPoint(12);
  dxf::Vec3 dir = vport.GetPoint(16, dxf::Vec3{0, 0, 1});
  v.target = host::Point{t.x, t.y, t.z};
  v.view_center = host::Point{c.x, c.y, 0};
  v.twist = vport.GetDouble(51, 0) * std::numbers::pi / 180.0;
  v.direction = host::Point{dir.x, dir.y, dir.z};
  return v;
}

ViewFrame ViewportView(Drawing& d, dxf::RecordId viewport) {
  dxf::Viewport vp(d.entity(viewport));
  ViewFrame v;
  dxf::Vec3 t = vp.view_target();
  dxf::Vec3 c = vp.view_center();
  dxf::Vec3 dir = vp.view_direction();
  v.target = host::Point{t.x, t.y, t.z};
  v.view_center = host::Point{c.x, c.y, 0};
  v.twist = vp.twist() * std::numbers::pi / 180.0;
  v.direction = host::Point{dir.x, dir.y, dir.z};
  return v;
}

}  // namespace lmt::dxfhost

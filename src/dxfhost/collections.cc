#include "dxfhost/collections.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dxf/builders.h"
#include "dxf/layout_edit.h"
#include "dxf/viewport_edit.h"
#include "dxfhost/entities.h"
#include "dxfhost/session.h"

namespace lmt::dxfhost {
namespace {

template <typename T>
Status Index(int32_t index, const std::vector<T>& items) {
  if (index < 0 || static_cast<size_t>(index) >= items.size()) {
    return Status::NotFound("index " + std::to_string(index) +
                            " is out of range");
  }
  return Status();
}

class Holder {
 public:
  virtual ~Holder() = default;
  virtual const Drawing* drawing() const = 0;
};

// ---------------------------------------------------------------- blocks

class DxfBlock : public host::Block, public Holder {
 public:
  DxfBlock(std::shared_ptr<Drawing> d, dxf::Block* block)
      : host::Block(d->gate),
        d_(std::move(d)),
        block_(block),
        record_(block->record_handle) {}
  const Drawing* drawing() const override { return d_.get(); }
  // Null once the block is gone (its layout deleted).
  dxf::Block* block() const { return Present().ok() ? block_ : nullptr; }

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Present(); !s.ok()) return s;
    return d_->Decode(block_->name);
  }
  Result<bool> DoIsXRef() const override {
    if (Status s = Present(); !s.ok()) return s;
    return (Flags() & 4) != 0;
  }
  Result<host::Point> DoOrigin() const override {
    if (Status s = Present(); !s.ok()) return s;
    if (block_->begin == dxf::kNoRecord) return host::Point{0, 0, 0};
    // For a reference this is the base point the file keeps, which the CAD
    // program takes from the referenced drawing's $INSBASE when it loads
    // it; the placement of the references agrees with it either way.
    dxf::Vec3 p = d_->entity(block_->begin).GetPoint(10);
    return host::Point{p.x, p.y, p.z};
  }
  Result<bool> DoIsLayout() const override {
    if (Status s = Present(); !s.ok()) return s;
    return !d_->SpaceName(block_).empty();
  }
  Result<host::LayoutPtr> DoLayout() const override {
    if (Status s = Present(); !s.ok()) return s;
    for (const LayoutInfo& info : d_->Layouts()) {
      if (info.block == block_) return MakeLayout(d_, info);
    }
    return Status::NotFound("block \"" + block_->name + "\" is no layout");
  }
  Result<int32_t> DoCount() const override {
    if (Status s = Present(); !s.ok()) return s;
    return static_cast<int32_t>(Members().second.size());
  }
  Result<host::EntityPtr> DoItemAt(int32_t index) const override {
    if (Status s = Present(); !s.ok()) return s;
    auto [owner, ids] = Members();
    if (Status s = Index(index, ids); !s.ok()) return s;
    return MakeEntity(owner, ids[index]);
  }
  Result<std::vector<host::EntityPtr>> DoItems() const override {
    if (Status s = Present(); !s.ok()) return s;
    auto [owner, ids] = Members();
    std::vector<host::EntityPtr> out;
    for (dxf::RecordId id : ids) out.push_back(MakeEntity(owner, id));
    return out;
  }
  Result<host::PViewportPtr> DoAddPViewport(const host::Point& center,
                                            double width,
                                            double height) override {
    if (Status s = Present(); !s.ok()) return s;
    if (d_->IsModel(block_) || d_->SpaceName(block_).empty()) {
      return Status::NotSupported(
          "viewports can only be added to a paper-space layout");
    }
    if (!(width > 0) || !(height > 0)) {
      return Status::InvalidArgument(
          "viewport width and height must be positive");
    }
    // The next free number of its layout; made switched off, as the CAD
    // program leaves it until Display, and showing model space 1:1 around
    // the origin until the caller sets its view.
    int id = 1;
    for (dxf::RecordId rid : block_->entities) {
      dxf::Entity e = d_->entity(rid);
      if (e.erased() || e.type() != "VIEWPORT") continue;
      id = std::max(id, dxf::Viewport(e).id());
    }
    dxf::ViewportSettings settings;
    settings.center = dxf::Vec3{center.x, center.y, center.z};
    settings.width = width;
    settings.height = height;
    settings.view_height = height;
    settings.id = id + 1;
    settings.on = false;
    settings.layer = std::string(d_->doc->HeaderValue("$CLAYER").value_or("0"));
    dxf::Viewport vp = dxf::AddViewport(*d_->doc, block_, settings);
    if (!vp.valid()) {
      return Status::NotSupported(
          "this drawing's release has no viewports of layouts");
    }
    // Viewport::id() is the viewport number (69); the record is Entity's.
    return host::As<host::PViewport>(MakeEntity(d_, vp.Entity::id()));
  }
  Result<host::MTextPtr> DoAddMText(const host::Point& p, double width,
                                    std::string_view text) override {
    if (Status s = Present(); !s.ok()) return s;
    std::string layer(d_->doc->HeaderValue("$CLAYER").value_or("0"));
    std::string style(d_->doc->HeaderValue("$TEXTSTYLE").value_or("Standard"));
    double height =
        dxf::ParseDouble(d_->doc->HeaderValue("$TEXTSIZE").value_or("2.5"))
            .value_or(2.5);
    dxf::Entity e = dxf::AddMText(
        *d_->doc, block_, dxf::Vec3{p.x, p.y, p.z}, height, d_->Encode(text),
        dxf::EntityStyle{layer, 256}, width, 1, style);
    if (!e.valid()) {
      return Status::NotSupported("this drawing's release has no MTEXT");
    }
    return host::As<host::MText>(MakeEntity(d_, e.id()));
  }
  Result<host::PolylinePtr> DoAddLightWeightPolyline(
      const std::vector<double>& coordinates) override {
    if (Status s = Present(); !s.ok()) return s;
    if (coordinates.size() < 4 || coordinates.size() % 2 != 0) {
      return Status::InvalidArgument(
          "a polyline needs an even number of coordinates, two points at "
          "least");
    }
    std::vector<dxf::LwVertex> v;
    for (size_t i = 0; i + 1 < coordinates.size(); i += 2) {
      v.push_back(dxf::LwVertex{coordinates[i], coordinates[i + 1]});
    }
    std::string layer(d_->doc->HeaderValue("$CLAYER").value_or("0"));
    dxf::Entity e = dxf::AddLwPolyline(*d_->doc, block_, v, false,
                                       dxf::EntityStyle{layer, 256});
    if (!e.valid()) {
      return Status::NotSupported("this drawing's release has no LWPOLYLINE");
    }
    return host::As<host::Polyline>(MakeEntity(d_, e.id()));
  }
  Result<host::TextPtr> DoAddText(std::string_view text, const host::Point& p,
                                  double height) override {
    if (Status s = Present(); !s.ok()) return s;
    if (!(height > 0)) {
      return Status::InvalidArgument("text height must be positive");
    }
    dxf::Document& doc = *d_->doc;
    std::string layer(doc.HeaderValue("$CLAYER").value_or("0"));
    std::string style(doc.HeaderValue("$TEXTSTYLE").value_or("Standard"));
    bool r12 = doc.IsR12();
    std::vector<dxf::Tag> tags;
    auto add = [&](int code, std::string_view value) {
      tags.push_back(doc.MakeTag(code, value));
    };
    add(0, "TEXT");
    if (!r12) add(100, "AcDbEntity");
    add(8, layer);
    if (!r12) add(100, "AcDbText");
    add(10, dxf::FormatDouble(p.x));
    add(20, dxf::FormatDouble(p.y));
    add(30, dxf::FormatDouble(p.z));
    add(40, dxf::FormatDouble(height));
    add(1, d_->Encode(text));
    add(7, style);
    if (!r12) add(100, "AcDbText");
    dxf::Entity e = doc.AddEntity(block_, std::move(tags));
    if (!e.valid()) return Status::Refused("the text could not be added");
    return host::As<host::Text>(MakeEntity(d_, e.id()));
  }

 private:
  int Flags() const {
    if (block_->begin == dxf::kNoRecord) return 0;
    return static_cast<int>(d_->entity(block_->begin).GetInt(70, 0));
  }
  // The drawing that holds the block's entities (the referenced one for an
  // external reference) and their live records in order.
  std::pair<std::shared_ptr<Drawing>, std::vector<dxf::RecordId>> Members()
      const {
    std::shared_ptr<Drawing> owner = d_;
    const dxf::Block* block = block_;
    if (Flags() & 4) {
      owner = d_->Xref(*d_->doc, *block_);
      if (owner == nullptr) return {d_, {}};
      block = owner->doc->model_space();
    }
    std::vector<dxf::RecordId> ids;
    for (dxf::RecordId id : block->entities) {
      if (!owner->entity(id).erased()) ids.push_back(id);
    }
    return {owner, ids};
  }

  // Deleting a layout frees its block: the record handle, never reused,
  // tells whether `block_` still stands (R12 blocks have none and are
  // never deleted).
  Status Present() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (record_ != 0 && d_->doc->BlockByRecord(record_) != block_) {
      return Status::NotFound("the block was deleted");
    }
    return Status();
  }

  std::shared_ptr<Drawing> d_;
  dxf::Block* block_;
  uint64_t record_;
};

class DxfBlocks : public host::Blocks {
 public:
  explicit DxfBlocks(std::shared_ptr<Drawing> d)
      : host::Blocks(d->gate), d_(std::move(d)) {}

 protected:
  Result<int32_t> DoCount() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return static_cast<int32_t>(d_->doc->blocks().size());
  }
  Result<host::BlockPtr> DoItemAt(int32_t index) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    auto& blocks = d_->doc->blocks();
    if (Status s = Index(index, blocks); !s.ok()) return s;
    return MakeBlock(d_, blocks[index].get());
  }
  Result<host::BlockPtr> DoItemNamed(std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Block* b = d_->doc->FindBlock(d_->Encode(name));
    if (b == nullptr) {
      return Status::NotFound("block \"" + std::string(name) +
                              "\" does not exist");
    }
    return MakeBlock(d_, b);
  }
  Result<std::vector<host::BlockPtr>> DoItems() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<host::BlockPtr> out;
    for (auto& b : d_->doc->blocks()) out.push_back(MakeBlock(d_, b.get()));
    return out;
  }

 private:
  std::shared_ptr<Drawing> d_;
};

// ---------------------------------------------------------------- layouts

class DxfLayout : public host::Layout, public Holder {
 public:
  DxfLayout(std::shared_ptr<Drawing> d, LayoutInfo info)
      : host::Layout(d->gate), d_(std::move(d)), info_(std::move(info)) {}
  const Drawing* drawing() const override { return d_.get(); }
  // Null once the layout is deleted.
  dxf::Block* block() const { return Present().ok() ? info_.block : nullptr; }

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Present(); !s.ok()) return s;
    return d_->SpaceName(info_.block);
  }
  Status DoSetName(std::string_view name) override {
    if (Status s = Present(); !s.ok()) return s;
    dxf::Entity layout = Object();
    if (!layout.valid()) {
      return Status::NotSupported("this drawing's release has one layout only");
    }
    std::string raw = d_->Encode(name);
    if (dxf::IsValidName(*d_->doc, raw) &&
        !dxf::IsFreeLayoutName(*d_->doc, raw) &&
        !dxf::EqualsNoCase(d_->SpaceName(info_.block), name)) {
      return Status::Refused("layout \"" + std::string(name) +
                             "\" already exists");
    }
    dxf::Status s = dxf::RenameLayout(*d_->doc, dxf::Layout(layout), raw);
    d_->ForgetLayouts();
    if (!s.ok()) return Status::InvalidArgument(s.message());
    return Status();
  }
  Result<host::BlockPtr> DoBlock() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return MakeBlock(d_, info_.block);
  }
  // The source may be a layout of another drawing open in this host.
  Status DoCopyFrom(const host::LayoutPtr& source) override {
    if (Status s = Present(); !s.ok()) return s;
    const auto* from = dynamic_cast<const DxfLayout*>(source.get());
    if (from == nullptr) {
      return Status::InvalidArgument("the layout is not from this host");
    }
    if (Status s = from->Present(); !s.ok()) return s;
    dxf::Entity settings = from->Object();
    dxf::Entity layout = Object();
    if (!settings.valid() || !layout.valid()) {
      return Status::NotSupported("R12 layouts have no page setup");
    }
    if (settings == layout) return Status();
    dxf::CopyPageSetup(*d_->doc, settings, dxf::Layout(layout));
    return Status();
  }
  Result<int32_t> DoPlotType() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity layout = Object();
    if (!layout.valid()) return Status::NotFound("the layout has no settings");
    int at = layout.FindIn("AcDbPlotSettings", 74);
    if (at < 0) return 0;
    return static_cast<int32_t>(
        dxf::ParseInt(layout.tags()[at].value()).value_or(0));
  }
  Result<int32_t> DoTabOrder() const override {
    if (Status s = Present(); !s.ok()) return s;
    dxf::Entity layout = Object();
    if (!layout.valid()) return d_->IsModel(info_.block) ? 0 : 1;
    return static_cast<int32_t>(dxf::Layout(layout).tab_order());
  }
  Status DoSetTabOrder(int32_t order) override {
    if (Status s = Present(); !s.ok()) return s;
    dxf::Entity layout = Object();
    if (!layout.valid()) {
      return Status::NotSupported("this drawing's release has one layout only");
    }
    if (d_->IsModel(info_.block) != (order == 0) || order < 0) {
      return Status::InvalidArgument(
          "tab order 0 is the model tab's and only its");
    }
    int at = layout.FindIn("AcDbLayout", 71);
    if (at < 0) {
      return Status::NotSupported("the layout has no tab order to change");
    }
    layout.SetValueAt(at, dxf::FormatInt(order));
    d_->ForgetLayouts();
    return Status();
  }
  Status DoSetPlotType(int32_t plot_type) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (plot_type < 0 || plot_type > 5) {
      return Status::InvalidArgument("plot type out of 0..5");
    }
    dxf::Entity layout = Object();
    int at = layout.valid() ? layout.FindIn("AcDbPlotSettings", 74) : -1;
    if (at < 0) {
      return Status::NotSupported(
          "Layout.SetPlotType: the layout has no plot settings to change");
    }
    layout.SetValueAt(at, dxf::FormatInt(plot_type));
    return Status();
  }
  Status DoDelete() override {
    if (Status s = Present(); !s.ok()) return s;
    if (d_->IsModel(info_.block)) {
      return Status::Refused("the Model tab cannot be deleted");
    }
    dxf::Entity layout = Object();
    if (!layout.valid()) {
      return Status::NotSupported("this drawing's release has one layout only");
    }
    // The session leaves the layout first, as a CAD program does: the next
    // one in tab order (else the one before) takes its place.
    dxf::Block* block = info_.block;
    if (d_->active_block == block || d_->last_paper_block == block) {
      std::vector<LayoutInfo> all = d_->Layouts();  // Model first
      size_t at = 0;
      while (at < all.size() && all[at].block != block) ++at;
      dxf::Block* next = nullptr;
      if (at + 1 < all.size()) {
        next = all[at + 1].block;
      } else if (at >= 2 && at < all.size()) {
        next = all[at - 1].block;
      }
      if (next == nullptr) {
        return Status::Refused("the last paper layout cannot be deleted");
      }
      if (d_->active_block == block) {
        if (Status s = ActivateBlock(*d_, next); !s.ok()) return s;
      }
      if (d_->last_paper_block == block) d_->last_paper_block = next;
    }
    dxf::Status s = dxf::DeleteLayout(*d_->doc, dxf::Layout(layout));
    d_->ForgetLayouts();
    if (!s.ok()) return Status::Refused(s.message());
    return Status();
  }

 private:
  // The layout's LAYOUT object; invalid for R12's implied layouts.
  dxf::Entity Object() const {
    return info_.handle ? d_->doc->FindByHandle(info_.handle) : dxf::Entity();
  }
  // kNotFound once the layout was deleted (by this or another wrapper).
  Status Present() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (info_.handle != 0) {
      dxf::Entity layout = Object();
      if (!layout.valid() || layout.erased()) {
        return Status::NotFound("the layout was deleted");
      }
    }
    return Status();
  }

  std::shared_ptr<Drawing> d_;
  LayoutInfo info_;
};

class DxfLayouts : public host::Layouts {
 public:
  explicit DxfLayouts(std::shared_ptr<Drawing> d)
      : host::Layouts(d->gate), d_(std::move(d)) {}

 protected:
  Result<int32_t> DoCount() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return static_cast<int32_t>(d_->Layouts().size());
  }
  Result<host::LayoutPtr> DoItemAt(int32_t index) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<LayoutInfo> all = d_->Layouts();
    if (Status s = Index(index, all); !s.ok()) return s;
    return MakeLayout(d_, all[index]);
  }
  Result<host::LayoutPtr> DoItemNamed(std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    for (const LayoutInfo& info : d_->Layouts()) {
      if (dxf::EqualsNoCase(info.name, name)) return MakeLayout(d_, info);
    }
    return Status::NotFound("layout \"" + std::string(name) +
                            "\" does not exist");
  }
  Result<std::vector<host::LayoutPtr>> DoItems() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<host::LayoutPtr> out;
    for (const LayoutInfo& info : d_->Layouts()) {
      out.push_back(MakeLayout(d_, info));
    }
    return out;
  }
  Result<host::LayoutPtr> DoAdd(std::string_view name) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (d_->doc->IsR12()) {
      return Status::NotSupported("R12 drawings have one paper space only");
    }
    std::string raw = d_->Encode(name);
    if (!dxf::IsValidName(*d_->doc, raw)) {
      return Status::InvalidArgument("\"" + std::string(name) +
                                     "\" is not a valid layout name");
    }
    // The host's own list answers what the engine would otherwise look up
    // in the layout dictionary for every new layout.
    const std::vector<LayoutInfo>& tabs = d_->Layouts();
    dxf::KnownLayouts known;
    known.name_is_free = true;
    for (const LayoutInfo& tab : tabs) {
      if (dxf::EqualsNoCase(tab.name, name)) {
        return Status::Refused("layout \"" + std::string(name) +
                               "\" already exists");
      }
      known.last_tab_order = std::max(known.last_tab_order, tab.tab_order);
    }
    if (tabs.size() > 1 && tabs[1].handle != 0) {
      known.first_paper = dxf::Layout(d_->doc->FindByHandle(tabs[1].handle));
    }
    dxf::Layout layout{dxf::Entity()};
    dxf::Status s = dxf::AddLayout(*d_->doc, raw, &layout, &known);
    if (!s.ok()) {
      d_->ForgetLayouts();
      return Status::InvalidArgument(s.message());
    }
    LayoutInfo info{layout.handle(), d_->Decode(raw),
                    dxf::LayoutBlock(*d_->doc, layout), layout.tab_order()};
    d_->AddKnownLayout(info);
    return MakeLayout(d_, std::move(info));
  }

 private:
  std::shared_ptr<Drawing> d_;
};

// ---------------------------------------------------------------- tables

// A table record wrapper's shared part.
class RecordBase : public Holder {
 public:
  RecordBase(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : d_(std::move(d)), id_(id) {}
  const Drawing* drawing() const override { return d_.get(); }
  dxf::RecordId id() const { return id_; }

 protected:
  Status Live() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (d_->entity(id_).erased()) return Status::NotFound("record deleted");
    return Status();
  }
  dxf::Entity E() const { return d_->entity(id_); }
  std::string RecordName() const { return d_->Decode(E().GetString(2)); }

  std::shared_ptr<Drawing> d_;
  dxf::RecordId id_;
};

class DxfLayer : public host::Layer, public RecordBase {
 public:
  DxfLayer(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : host::Layer(d->gate), RecordBase(d, id) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return RecordName();
  }
  Result<bool> DoFreeze() const override {
    if (Status s = Live(); !s.ok()) return s;
    return (E().GetInt(70, 0) & 1) != 0;
  }
  Status DoSetFreeze(bool frozen) override {
    if (Status s = Live(); !s.ok()) return s;
    if (frozen && IsActive()) {
      return Status::Refused("the current layer cannot be frozen");
    }
    SetFlag(1, frozen);
    return Status();
  }
  Result<bool> DoLock() const override {
    if (Status s = Live(); !s.ok()) return s;
    return (E().GetInt(70, 0) & 4) != 0;
  }
  Status DoSetLock(bool locked) override {
    if (Status s = Live(); !s.ok()) return s;
    SetFlag(4, locked);
    return Status();
  }
  Status DoDelete() override {
    if (Status s = Live(); !s.ok()) return s;
    std::string name = RecordName();
    if (dxf::EqualsNoCase(name, "0") || dxf::EqualsNoCase(name, "Defpoints")) {
      return Status::Refused("layer \"" + name + "\" cannot be deleted");
    }
    if (IsActive()) {
      return Status::Refused("the current layer cannot be deleted");
    }
    for (auto& block : d_->doc->blocks()) {
      for (dxf::RecordId id : block->entities) {
        dxf::Entity e = d_->entity(id);
        if (!e.erased() && dxf::EqualsNoCase(e.layer(), E().GetString(2))) {
          return Status::Refused("layer \"" + name + "\" is in use");
        }
      }
    }
    dxf::Table* table = d_->doc->table("LAYER");
    if (table == nullptr) return Status::NotFound("no layer table");
    std::erase(table->entries, id_);
    d_->doc->db().MarkErased(id_);
    return Status();
  }

 private:
  bool IsActive() const {
    return dxf::EqualsNoCase(d_->doc->HeaderValue("$CLAYER").value_or("0"),
                             E().GetString(2));
  }
  void SetFlag(int bit, bool on) {
    int64_t flags = E().GetInt(70, 0);
    flags = on ? (flags | bit) : (flags & ~static_cast<int64_t>(bit));
    E().SetInt(70, flags);
  }
};

class DxfLinetype : public host::Linetype, public RecordBase {
 public:
  DxfLinetype(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : host::Linetype(d->gate), RecordBase(d, id) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return RecordName();
  }
};

// TrueType fonts of a style are XDATA "ACAD" 1000 family, 1071 flags
// (italic 0x1000000, bold 0x2000000, charset << 8, pitch and family).
class DxfTextStyle : public host::TextStyle, public RecordBase {
 public:
  DxfTextStyle(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : host::TextStyle(d->gate), RecordBase(d, id) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return RecordName();
  }
  Result<host::Font> DoGetFont() const override {
    if (Status s = Live(); !s.ok()) return s;
    host::Font font;
    std::span<const dxf::Tag> xdata = E().XData("ACAD");
    for (const dxf::Tag& t : xdata) {
      if (t.code == 1000 && font.typeface.empty()) {
        font.typeface = d_->Decode(t.value());
      } else if (t.code == 1071) {
        int64_t f = dxf::ParseInt(t.value()).value_or(0);
        font.italic = (f & 0x1000000) != 0;
        font.bold = (f & 0x2000000) != 0;
        font.charset = static_cast<int32_t>((f >> 8) & 0xFF);
        font.pitch_and_family = static_cast<int32_t>(f & 0xFF);
      }
    }
    return font;
  }
  Status DoSetFont(const host::Font& font) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Entity e = E();
    // Drop the old ACAD group, append the new one.
    int begin = -1, end = static_cast<int>(e.tags().size());
    for (int i = e.XDataBegin(); i < static_cast<int>(e.tags().size()); ++i) {
      if (e.tags()[i].code != 1001) continue;
      if (begin >= 0) {
        end = i;
        break;
      }
      if (e.tags()[i].value() == "ACAD") begin = i;
    }
    if (begin >= 0) e.EraseTags(begin, end);
    int64_t flags = (font.italic ? 0x1000000 : 0) |
                    (font.bold ? 0x2000000 : 0) | ((font.charset & 0xFF) << 8) |
                    (font.pitch_and_family & 0xFF);
    std::vector<dxf::Tag> tags = {
        d_->doc->MakeTag(1001, "ACAD"),
        d_->doc->MakeTag(1000, d_->Encode(font.typeface)),
        d_->doc->MakeTag(1071, dxf::FormatInt(flags))};
    e.InsertTags(static_cast<int>(e.tags().size()), tags);
    if (!font.typeface.empty()) e.Set(3, d_->Encode(font.typeface) + ".ttf");
    return Status();
  }
  Result<std::string> DoFontFile() const override {
    if (Status s = Live(); !s.ok()) return s;
    return d_->Decode(E().GetString(3));
  }
  Status DoSetFontFile(std::string_view file) override {
    if (Status s = Live(); !s.ok()) return s;
    E().Set(3, d_->Encode(file));
    return Status();
  }
};

// Items of table `name` in file order, erased ones left out.
std::vector<dxf::RecordId> Entries(Drawing& d, std::string_view name) {
  std::vector<dxf::RecordId> out;
  if (dxf::Table* t = d.doc->table(name)) {
    for (dxf::RecordId id : t->entries) {
      if (!d.entity(id).erased()) out.push_back(id);
    }
  }
  return out;
}

// A symbol table collection: Count, Item, Items, and Add where `Add` is
// given.
template <typename Base, typename ItemPtr>
class TableCollection : public Base {
 public:
  using Maker = ItemPtr (*)(const std::shared_ptr<Drawing>&, dxf::RecordId);
  TableCollection(std::shared_ptr<Drawing> d, std::string table, Maker make)
      : Base(d->gate),
        d_(std::move(d)),
        table_(std::move(table)),
        make_(make) {}

 protected:
  Result<int32_t> DoCount() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return static_cast<int32_t>(Entries(*d_, table_).size());
  }
  Result<ItemPtr> DoItemAt(int32_t index) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<dxf::RecordId> ids = Entries(*d_, table_);
    if (Status s = Index(index, ids); !s.ok()) return s;
    return make_(d_, ids[index]);
  }
  Result<ItemPtr> DoItemNamed(std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity e = d_->doc->FindTableEntry(table_, d_->Encode(name));
    if (!e.valid() || e.erased()) {
      return Status::NotFound("\"" + std::string(name) + "\" is not in the " +
                              table_ + " table");
    }
    return make_(d_, e.id());
  }
  Result<std::vector<ItemPtr>> DoItems() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<ItemPtr> out;
    for (dxf::RecordId id : Entries(*d_, table_)) out.push_back(make_(d_, id));
    return out;
  }

  std::shared_ptr<Drawing> d_;
  std::string table_;
  Maker make_;
};

host::LinetypePtr MakeLinetype(const std::shared_ptr<Drawing>& d,
                               dxf::RecordId id) {
  return std::make_shared<DxfLinetype>(d, id);
}

class DxfLayers : public TableCollection<host::Layers, host::LayerPtr> {
 public:
  explicit DxfLayers(std::shared_ptr<Drawing> d)
      : TableCollection(std::move(d), "LAYER", &MakeLayer) {}

 protected:
  Result<host::LayerPtr> DoAdd(std::string_view name) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity e = dxf::AddLayer(*d_->doc, d_->Encode(name));
    if (!e.valid()) {
      return Status::InvalidArgument("\"" + std::string(name) +
                                     "\" is not a valid layer name");
    }
    return MakeLayer(d_, e.id());
  }
};

class DxfLinetypes
    : public TableCollection<host::Linetypes, host::LinetypePtr> {
 public:
  explicit DxfLinetypes(std::shared_ptr<Drawing> d)
      : TableCollection(std::move(d), "LTYPE", &MakeLinetype) {}
};

class DxfTextStyles
    : public TableCollection<host::TextStyles, host::TextStylePtr> {
 public:
  explicit DxfTextStyles(std::shared_ptr<Drawing> d)
      : TableCollection(std::move(d), "STYLE", &MakeTextStyle) {}

 protected:
  Result<host::TextStylePtr> DoAdd(std::string_view name) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity e = dxf::AddTextStyle(*d_->doc, d_->Encode(name));
    if (!e.valid()) {
      return Status::InvalidArgument("\"" + std::string(name) +
                                     "\" is not a valid text style name");
    }
    return MakeTextStyle(d_, e.id());
  }
};

}  // namespace

host::BlockPtr MakeBlock(const std::shared_ptr<Drawing>& d, dxf::Block* block) {
  return std::make_shared<DxfBlock>(d, block);
}
host::BlocksPtr MakeBlocks(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfBlocks>(d);
}
host::LayoutPtr MakeLayout(const std::shared_ptr<Drawing>& d,
                           const LayoutInfo& info) {
  return std::make_shared<DxfLayout>(d, info);
}
host::LayoutsPtr MakeLayouts(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfLayouts>(d);
}
host::LayerPtr MakeLayer(const std::shared_ptr<Drawing>& d, dxf::RecordId id) {
  return std::make_shared<DxfLayer>(d, id);
}
host::LayersPtr MakeLayers(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfLayers>(d);
}
host::LinetypesPtr MakeLinetypes(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfLinetypes>(d);
}
host::TextStylePtr MakeTextStyle(const std::shared_ptr<Drawing>& d,
                                 dxf::RecordId id) {
  return std::make_shared<DxfTextStyle>(d, id);
}
host::TextStylesPtr MakeTextStyles(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfTextStyles>(d);
}

dxf::Block* BlockOf(const host::Block& block, const Drawing* d) {
  const auto* b = dynamic_cast<const DxfBlock*>(&block);
  return b != nullptr && b->drawing() == d ? b->block() : nullptr;
}
dxf::Block* BlockOf(const host::Layout& layout, const Drawing* d) {
  const auto* l = dynamic_cast<const DxfLayout*>(&layout);
  return l != nullptr && l->drawing() == d ? l->block() : nullptr;
}
dxf::RecordId RecordOf(const host::Layer& layer, const Drawing* d) {
  const auto* l = dynamic_cast<const DxfLayer*>(&layer);
  return l != nullptr && l->drawing() == d ? l->id() : dxf::kNoRecord;
}
dxf::RecordId RecordOf(const host::TextStyle& style, const Drawing* d) {
  const auto* t = dynamic_cast<const DxfTextStyle*>(&style);
  return t != nullptr && t->drawing() == d ? t->id() : dxf::kNoRecord;
}

}  // namespace lmt::dxfhost

#include "dxfhost/layouts.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dxf/builders.h"
#include "dxf/layout_edit.h"
#include "dxfhost/blocks.h"
#include "dxfhost/item_index.h"
#include "dxfhost/session.h"

namespace lmt::dxfhost {
namespace {

class DxfLayout : public host::Layout {
 public:
  DxfLayout(std::shared_ptr<Drawing> d, LayoutInfo info)
      : host::Layout(d->gate), d_(std::move(d)), info_(std::move(info)) {}
  const Drawing* drawing() const { return d_.get(); }
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
    if (Status s = CheckItemIndex(index, all.size()); !s.ok()) return s;
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

}  // namespace

host::LayoutPtr MakeLayout(const std::shared_ptr<Drawing>& d,
                           const LayoutInfo& info) {
  return std::make_shared<DxfLayout>(d, info);
}
host::LayoutsPtr MakeLayouts(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfLayouts>(d);
}

dxf::Block* BlockOf(const host::Layout& layout, const Drawing* d) {
  const auto* l = dynamic_cast<const DxfLayout*>(&layout);
  return l != nullptr && l->drawing() == d ? l->block() : nullptr;
}

}  // namespace lmt::dxfhost

#include "dxfhost/layouts.h"

#include <algorithm>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "dxf/builders.h"
#include "dxf/layout_edit.h"
#include "dxfhost/blocks.h"
#include "dxfhost/item_index.h"
#include "dxfhost/session.h"
#include "host/paper_media.h"

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
  // Page setup: the AcDbPlotSettings codes as CAD programs write them
  // (2 device, 4 paper, 7 style table, 44/45 paper in mm, 70 flags, 73
  // rotation, 75 standard scale). There is no device database here: a
  // paper's size comes from its name.
  Result<std::string> DoConfigName() const override { return Text(2); }
  Status DoSetConfigName(std::string_view name) override {
    return SetText(2, name);
  }
  Result<std::string> DoCanonicalMediaName() const override { return Text(4); }
  Status DoSetCanonicalMediaName(std::string_view name) override {
    std::optional<host::MediaSize> size = host::MediaSizeFromName(name);
    if (!size) {
      return Status::InvalidArgument("the paper \"" + std::string(name) +
                                     "\" names no size such as (420.00_x_"
                                     "297.00_MM)");
    }
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    dxf::SetPlotSetting(*layout, 4, d_->Encode(name));
    // The device's unprintable margins are not known here; a full-bleed
    // sheet has next to none, and the program refreshes them from the
    // device when it plots.
    for (int code : {40, 41, 42, 43}) dxf::SetPlotSetting(*layout, code, "0.0");
    dxf::SetPlotSetting(*layout, 44, dxf::FormatDouble(size->width));
    dxf::SetPlotSetting(*layout, 45, dxf::FormatDouble(size->height));
    dxf::SetPlotSetting(*layout, 72, size->inches ? "0" : "1");
    dxf::DropDeviceDescription(*layout);
    dxf::FitLayoutToPaper(*d_->doc, *layout);
    return Status();
  }
  Result<std::string> DoStyleSheet() const override { return Text(7); }
  Status DoSetStyleSheet(std::string_view name) override {
    return SetText(7, name);
  }
  Result<int32_t> DoStandardScale() const override { return Int(75); }
  Status DoSetStandardScale(int32_t scale) override {
    if (scale < 0 || scale > 32) {
      return Status::InvalidArgument("standard scale out of 0..32");
    }
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    dxf::SetPlotSetting(*layout, 75, dxf::FormatInt(scale));
    if (scale == host::kScale1To1) {
      // The custom scale and its quotient follow, as the programs write a
      // 1:1 layout.
      dxf::SetPlotSetting(*layout, 142, "1.0");
      dxf::SetPlotSetting(*layout, 143, "1.0");
      dxf::SetPlotSetting(*layout, 147, "1.0");
    }
    return Status();
  }
  Result<bool> DoUseStandardScale() const override { return Flag(16); }
  Status DoSetUseStandardScale(bool use) override { return SetFlag(16, use); }
  Result<bool> DoCenterPlot() const override { return Flag(4); }
  Status DoSetCenterPlot(bool center) override { return SetFlag(4, center); }
  Result<int32_t> DoPlotRotation() const override { return Int(73); }
  Status DoSetPlotRotation(int32_t rotation) override {
    if (rotation < 0 || rotation > 3) {
      return Status::InvalidArgument("plot rotation out of 0..3");
    }
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    dxf::SetPlotSetting(*layout, 73, dxf::FormatInt(rotation));
    dxf::FitLayoutToPaper(*d_->doc, *layout);
    return Status();
  }
  Result<host::PaperSize> DoGetPaperSize() const override {
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    return host::PaperSize{Number(*layout, 44), Number(*layout, 45)};
  }
  // Nothing to refresh: the paper's size came with its name.
  Status DoRefreshPlotDeviceInfo() override { return Settings().status(); }
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
    if (!s.ok()) {
      d_->ForgetLayouts();
      return Status::Refused(s.message());
    }
    d_->DropKnownLayout(info_.handle);
    return Status();
  }

 private:
  // The layout's LAYOUT object; invalid for R12's implied layouts.
  dxf::Entity Object() const {
    return info_.handle ? d_->doc->FindByHandle(info_.handle) : dxf::Entity();
  }
  // The LAYOUT object with its plot settings, for the page-setup members.
  Result<dxf::Layout> Settings() const {
    if (Status s = Present(); !s.ok()) return s;
    dxf::Entity layout = Object();
    if (!layout.valid() || layout.FindSubclass("AcDbPlotSettings") < 0) {
      return Status::NotSupported("R12 layouts have no page setup");
    }
    return dxf::Layout(layout);
  }
  static double Number(const dxf::Layout& layout, int code) {
    const int at = layout.FindIn("AcDbPlotSettings", code);
    if (at < 0) return 0;
    return dxf::ParseDouble(layout.tags()[at].value()).value_or(0);
  }
  Result<std::string> Text(int code) const {
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    const int at = layout->FindIn("AcDbPlotSettings", code);
    if (at < 0) return std::string();
    return d_->Decode(layout->tags()[at].value());
  }
  Status SetText(int code, std::string_view value) {
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    dxf::SetPlotSetting(*layout, code, d_->Encode(value));
    if (code == 2) dxf::DropDeviceDescription(*layout);
    return Status();
  }
  Result<int32_t> Int(int code) const {
    Result<dxf::Layout> layout = Settings();
    if (!layout.ok()) return layout.status();
    return static_cast<int32_t>(Number(*layout, code));
  }
  Result<bool> Flag(int bit) const {
    Result<int32_t> flags = Int(70);
    if (!flags.ok()) return flags.status();
    return (*flags & bit) != 0;
  }
  Status SetFlag(int bit, bool on) {
    Result<int32_t> flags = Int(70);
    if (!flags.ok()) return flags.status();
    Result<dxf::Layout> layout = Settings();
    dxf::SetPlotSetting(*layout, 70,
                        dxf::FormatInt(on ? (*flags | bit) : (*flags & ~bit)));
    return Status();
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
    const std::vector<LayoutInfo>& all = d_->Layouts();
    if (Status s = CheckItemIndex(index, all.size()); !s.ok()) return s;
    return MakeLayout(d_, all[index]);
  }
  Result<host::LayoutPtr> DoItemNamed(std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (const LayoutInfo* info = d_->FindLayout(name)) {
      return MakeLayout(d_, *info);
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
    if (d_->FindLayout(name) != nullptr) {
      return Status::Refused("layout \"" + std::string(name) +
                             "\" already exists");
    }
    dxf::KnownLayouts known;
    known.name_is_free = true;
    known.last_tab_order = d_->LastTabOrder();
    const std::vector<LayoutInfo>& tabs = d_->Layouts();
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

std::optional<Status> DeleteLayoutsAtOnce(
    Drawing& d, const std::vector<std::string>& names) {
  if (!d.Live().ok() || d.doc->IsR12()) return std::nullopt;
  // The tabs as Layout.Delete would find them; each deletion would drop its
  // tab from this list and keep the order of the others.
  const std::vector<LayoutInfo> tabs = d.Layouts();
  if (names.size() + 1 >= tabs.size()) return std::nullopt;
  std::unordered_set<const dxf::Block*> blocks;
  for (const LayoutInfo& tab : tabs) {
    if (!blocks.insert(tab.block).second) return std::nullopt;
  }
  std::vector<size_t> at;
  std::vector<dxf::Layout> doomed;
  std::unordered_set<size_t> seen;
  for (const std::string& name : names) {
    const LayoutInfo* info = d.FindLayout(name);
    if (info == nullptr) return std::nullopt;
    const size_t i = static_cast<size_t>(info - d.Layouts().data());
    dxf::Entity object = d.doc->FindByHandle(info->handle);
    if (i == 0 || info->handle == 0 || !object.valid() || object.erased() ||
        !seen.insert(i).second) {
      return std::nullopt;
    }
    at.push_back(i);
    doomed.emplace_back(object);
  }

  constexpr size_t kNone = std::numeric_limits<size_t>::max();
  std::vector<size_t> next(tabs.size()), prev(tabs.size());
  for (size_t i = 0; i < tabs.size(); ++i) {
    next[i] = i + 1 < tabs.size() ? i + 1 : kNone;
    prev[i] = i > 0 ? i - 1 : kNone;
  }
  Status refused;
  // What DxfLayout::DoDelete does before the engine deletes the layout.
  auto leave = [&](size_t k) -> dxf::Status {
    const size_t i = at[k];
    dxf::Block* block = tabs[i].block;
    if (d.active_block == block || d.last_paper_block == block) {
      // Model (0) never goes, so the tab before is a paper one unless 0.
      const size_t to = next[i] != kNone ? next[i]
                        : prev[i] != 0   ? prev[i]
                                         : kNone;
      if (to == kNone) {
        refused = Status::Refused("the last paper layout cannot be deleted");
        return dxf::Status::InvalidArgument(refused.message());
      }
      if (d.active_block == block) {
        refused = ActivateBlock(d, tabs[to].block);
        if (!refused.ok()) return dxf::Status::InvalidArgument("");
      }
      if (d.last_paper_block == block) d.last_paper_block = tabs[to].block;
    }
    next[prev[i]] = next[i];
    if (next[i] != kNone) prev[next[i]] = prev[i];
    return dxf::Status::Ok();
  };
  dxf::Status s = dxf::DeleteLayouts(*d.doc, doomed, leave);
  d.ForgetLayouts();
  if (!refused.ok()) return refused;
  if (!s.ok()) return Status::Refused(s.message());
  return Status();
}

dxf::Block* BlockOf(const host::Layout& layout, const Drawing* d) {
  const auto* l = dynamic_cast<const DxfLayout*>(&layout);
  return l != nullptr && l->drawing() == d ? l->block() : nullptr;
}

}  // namespace lmt::dxfhost

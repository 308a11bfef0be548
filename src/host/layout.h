// Layouts of the CAD object model: the model tab ("Model") and the paper-space
// layouts, and the document's collection of them. Gate names and failure rules
// as in entity.h.
#ifndef LMT_HOST_LAYOUT_H_
#define LMT_HOST_LAYOUT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"

namespace lmt::host {

// PlotType value that plots the whole layout.
inline constexpr int32_t kPlotLayout = 5;
// StandardScale value for 1:1 (the automation interface's ac1_1).
inline constexpr int32_t kScale1To1 = 16;

// The paper as the device feeds it, unrotated, in millimetres.
struct PaperSize {
  double width = 0;
  double height = 0;
};

// One tab of the drawing.
class Layout : public Object {
 public:
  ~Layout() override = default;

  Result<std::string> Name() const {
    return Gated("Layout.Name", [&] { return DoName(); });
  }
  Status SetName(std::string_view name) {
    return Gated("Layout.SetName", [&] { return DoSetName(name); });
  }
  // The block holding the layout's entities.
  Result<BlockPtr> Block() const {
    return Gated("Layout.Block", [&] { return DoBlock(); });
  }
  // Copies page set-up, plotter and paper from `source`.
  Status CopyFrom(const LayoutPtr& source) {
    return Gated("Layout.CopyFrom", [&] { return DoCopyFrom(source); });
  }
  // 5 = plot the layout (kPlotLayout).
  Result<int32_t> PlotType() const {
    return Gated("Layout.PlotType", [&] { return DoPlotType(); });
  }
  Status SetPlotType(int32_t plot_type) {
    return Gated("Layout.SetPlotType",
                 [&] { return DoSetPlotType(plot_type); });
  }
  Status Delete() {
    return Gated("Layout.Delete", [&] { return DoDelete(); });
  }
  // The tab's place: 0 for "Model", 1.. for the paper layouts left to right.
  Result<int32_t> TabOrder() const {
    return Gated("Layout.TabOrder", [&] { return DoTabOrder(); });
  }
  Status SetTabOrder(int32_t order) {
    return Gated("Layout.SetTabOrder", [&] { return DoSetTabOrder(order); });
  }

  // Page setup. The plot device ("DWG To PDF.pc3", a printer's name).
  Result<std::string> ConfigName() const {
    return Gated("Layout.ConfigName", [&] { return DoConfigName(); });
  }
  Status SetConfigName(std::string_view name) {
    return Gated("Layout.SetConfigName", [&] { return DoSetConfigName(name); });
  }
  // The paper by the device's own name for it (host/paper_media.h).
  Result<std::string> CanonicalMediaName() const {
    return Gated("Layout.CanonicalMediaName",
                 [&] { return DoCanonicalMediaName(); });
  }
  Status SetCanonicalMediaName(std::string_view name) {
    return Gated("Layout.SetCanonicalMediaName",
                 [&] { return DoSetCanonicalMediaName(name); });
  }
  // The plot style table ("monochrome.ctb"); empty for none.
  Result<std::string> StyleSheet() const {
    return Gated("Layout.StyleSheet", [&] { return DoStyleSheet(); });
  }
  Status SetStyleSheet(std::string_view name) {
    return Gated("Layout.SetStyleSheet", [&] { return DoSetStyleSheet(name); });
  }
  // 0 = fit, kScale1To1 = 1:1 (the automation interface's numbering).
  Result<int32_t> StandardScale() const {
    return Gated("Layout.StandardScale", [&] { return DoStandardScale(); });
  }
  Status SetStandardScale(int32_t scale) {
    return Gated("Layout.SetStandardScale",
                 [&] { return DoSetStandardScale(scale); });
  }
  Result<bool> UseStandardScale() const {
    return Gated("Layout.UseStandardScale",
                 [&] { return DoUseStandardScale(); });
  }
  Status SetUseStandardScale(bool use) {
    return Gated("Layout.SetUseStandardScale",
                 [&] { return DoSetUseStandardScale(use); });
  }
  Result<bool> CenterPlot() const {
    return Gated("Layout.CenterPlot", [&] { return DoCenterPlot(); });
  }
  Status SetCenterPlot(bool center) {
    return Gated("Layout.SetCenterPlot",
                 [&] { return DoSetCenterPlot(center); });
  }
  // 0, 1 = 90 degrees, 2 = 180, 3 = 270 (counter-clockwise).
  Result<int32_t> PlotRotation() const {
    return Gated("Layout.PlotRotation", [&] { return DoPlotRotation(); });
  }
  Status SetPlotRotation(int32_t rotation) {
    return Gated("Layout.SetPlotRotation",
                 [&] { return DoSetPlotRotation(rotation); });
  }
  Result<PaperSize> GetPaperSize() const {
    return Gated("Layout.GetPaperSize", [&] { return DoGetPaperSize(); });
  }
  // Makes the host read the device's papers again after ConfigName changed.
  Status RefreshPlotDeviceInfo() {
    return Gated("Layout.RefreshPlotDeviceInfo",
                 [&] { return DoRefreshPlotDeviceInfo(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("Layout.Name");
  }
  virtual Status DoSetName(std::string_view /*name*/) {
    return Unsupported("Layout.SetName");
  }
  virtual Result<BlockPtr> DoBlock() const {
    return Unsupported("Layout.Block");
  }
  virtual Status DoCopyFrom(const LayoutPtr& /*source*/) {
    return Unsupported("Layout.CopyFrom");
  }
  virtual Result<int32_t> DoPlotType() const {
    return Unsupported("Layout.PlotType");
  }
  virtual Status DoSetPlotType(int32_t /*plot_type*/) {
    return Unsupported("Layout.SetPlotType");
  }
  virtual Status DoDelete() { return Unsupported("Layout.Delete"); }
  virtual Result<int32_t> DoTabOrder() const {
    return Unsupported("Layout.TabOrder");
  }
  virtual Status DoSetTabOrder(int32_t /*order*/) {
    return Unsupported("Layout.SetTabOrder");
  }
  virtual Result<std::string> DoConfigName() const {
    return Unsupported("Layout.ConfigName");
  }
  virtual Status DoSetConfigName(std::string_view /*name*/) {
    return Unsupported("Layout.SetConfigName");
  }
  virtual Result<std::string> DoCanonicalMediaName() const {
    return Unsupported("Layout.CanonicalMediaName");
  }
  virtual Status DoSetCanonicalMediaName(std::string_view /*name*/) {
    return Unsupported("Layout.SetCanonicalMediaName");
  }
  virtual Result<std::string> DoStyleSheet() const {
    return Unsupported("Layout.StyleSheet");
  }
  virtual Status DoSetStyleSheet(std::string_view /*name*/) {
    return Unsupported("Layout.SetStyleSheet");
  }
  virtual Result<int32_t> DoStandardScale() const {
    return Unsupported("Layout.StandardScale");
  }
  virtual Status DoSetStandardScale(int32_t /*scale*/) {
    return Unsupported("Layout.SetStandardScale");
  }
  virtual Result<bool> DoUseStandardScale() const {
    return Unsupported("Layout.UseStandardScale");
  }
  virtual Status DoSetUseStandardScale(bool /*use*/) {
    return Unsupported("Layout.SetUseStandardScale");
  }
  virtual Result<bool> DoCenterPlot() const {
    return Unsupported("Layout.CenterPlot");
  }
  virtual Status DoSetCenterPlot(bool /*center*/) {
    return Unsupported("Layout.SetCenterPlot");
  }
  virtual Result<int32_t> DoPlotRotation() const {
    return Unsupported("Layout.PlotRotation");
  }
  virtual Status DoSetPlotRotation(int32_t /*rotation*/) {
    return Unsupported("Layout.SetPlotRotation");
  }
  virtual Result<PaperSize> DoGetPaperSize() const {
    return Unsupported("Layout.GetPaperSize");
  }
  virtual Status DoRefreshPlotDeviceInfo() {
    return Unsupported("Layout.RefreshPlotDeviceInfo");
  }
};

// Item by index (collection order, "Model" included) or by name.
class Layouts : public Object {
 public:
  ~Layouts() override = default;

  Result<int32_t> Count() const {
    return Gated("Layouts.Count", [&] { return DoCount(); });
  }
  // Zero-based; kNotFound out of range.
  Result<LayoutPtr> Item(int32_t index) const {
    return Gated("Layouts.Item", [&] { return DoItemAt(index); });
  }
  // By name, without regard to case; kNotFound when absent.
  Result<LayoutPtr> Item(std::string_view name) const {
    return Gated("Layouts.Item", [&] { return DoItemNamed(name); });
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<LayoutPtr>> Items() const {
    return Gated("Layouts.Items", [&] { return DoItems(); });
  }
  // A new layout of that name; kRefused when the name is taken.
  Result<LayoutPtr> Add(std::string_view name) {
    return Gated("Layouts.Add", [&] { return DoAdd(name); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("Layouts.Count");
  }
  virtual Result<LayoutPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("Layouts.Item");
  }
  virtual Result<LayoutPtr> DoItemNamed(std::string_view /*name*/) const {
    return Unsupported("Layouts.Item");
  }
  virtual Result<std::vector<LayoutPtr>> DoItems() const {
    return Unsupported("Layouts.Items");
  }
  virtual Result<LayoutPtr> DoAdd(std::string_view /*name*/) {
    return Unsupported("Layouts.Add");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_LAYOUT_H_

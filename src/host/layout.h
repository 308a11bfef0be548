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

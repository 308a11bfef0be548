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
    if (Status s = Enter("Layout.Name"); !s.ok()) return s;
    return DoName();
  }
  Status SetName(std::string_view name) {
    if (Status s = Enter("Layout.SetName"); !s.ok()) return s;
    return DoSetName(name);
  }
  // The block holding the layout's entities.
  Result<BlockPtr> Block() const {
    if (Status s = Enter("Layout.Block"); !s.ok()) return s;
    return DoBlock();
  }
  // Copies page set-up, plotter and paper from `source`.
  Status CopyFrom(const LayoutPtr& source) {
    if (Status s = Enter("Layout.CopyFrom"); !s.ok()) return s;
    return DoCopyFrom(source);
  }
  // 5 = plot the layout (kPlotLayout).
  Result<int32_t> PlotType() const {
    if (Status s = Enter("Layout.PlotType"); !s.ok()) return s;
    return DoPlotType();
  }
  Status SetPlotType(int32_t plot_type) {
    if (Status s = Enter("Layout.SetPlotType"); !s.ok()) return s;
    return DoSetPlotType(plot_type);
  }
  Status Delete() {
    if (Status s = Enter("Layout.Delete"); !s.ok()) return s;
    return DoDelete();
  }
  // The tab's place: 0 for "Model", 1.. for the paper layouts left to right.
  Result<int32_t> TabOrder() const {
    if (Status s = Enter("Layout.TabOrder"); !s.ok()) return s;
    return DoTabOrder();
  }
  Status SetTabOrder(int32_t order) {
    if (Status s = Enter("Layout.SetTabOrder"); !s.ok()) return s;
    return DoSetTabOrder(order);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Status DoSetName(std::string_view name);
  virtual Result<BlockPtr> DoBlock() const;
  virtual Status DoCopyFrom(const LayoutPtr& source);
  virtual Result<int32_t> DoPlotType() const;
  virtual Status DoSetPlotType(int32_t plot_type);
  virtual Status DoDelete();
  virtual Result<int32_t> DoTabOrder() const;
  virtual Status DoSetTabOrder(int32_t order);
};

// Item by index (collection order, "Model" included) or by name.
class Layouts : public Object {
 public:
  ~Layouts() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("Layouts.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Zero-based; kNotFound out of range.
  Result<LayoutPtr> Item(int32_t index) const {
    if (Status s = Enter("Layouts.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // By name, without regard to case; kNotFound when absent.
  Result<LayoutPtr> Item(std::string_view name) const {
    if (Status s = Enter("Layouts.Item"); !s.ok()) return s;
    return DoItemNamed(name);
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<LayoutPtr>> Items() const {
    if (Status s = Enter("Layouts.Items"); !s.ok()) return s;
    return DoItems();
  }
  // A new layout of that name; kRefused when the name is taken.
  Result<LayoutPtr> Add(std::string_view name) {
    if (Status s = Enter("Layouts.Add"); !s.ok()) return s;
    return DoAdd(name);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<LayoutPtr> DoItemAt(int32_t index) const;
  virtual Result<LayoutPtr> DoItemNamed(std::string_view name) const;
  virtual Result<std::vector<LayoutPtr>> DoItems() const;
  virtual Result<LayoutPtr> DoAdd(std::string_view name);
};

}  // namespace lmt::host

#endif  // LMT_HOST_LAYOUT_H_

#include "host/layout.h"

namespace lmt::host {

Result<std::string> Layout::DoName() const {
  return Unsupported("Layout.Name");
}

Status Layout::DoSetName(std::string_view /*name*/) {
  return Unsupported("Layout.SetName");
}

Result<BlockPtr> Layout::DoBlock() const { return Unsupported("Layout.Block"); }

Status Layout::DoCopyFrom(const LayoutPtr& /*source*/) {
  return Unsupported("Layout.CopyFrom");
}

Result<int32_t> Layout::DoPlotType() const {
  return Unsupported("Layout.PlotType");
}

Status Layout::DoSetPlotType(int32_t /*plot_type*/) {
  return Unsupported("Layout.SetPlotType");
}

Result<int32_t> Layout::DoTabOrder() const {
  return Unsupported("Layout.TabOrder");
}

Status Layout::DoSetTabOrder(int32_t /*order*/) {
  return Unsupported("Layout.SetTabOrder");
}

Status Layout::DoDelete() { return Unsupported("Layout.Delete"); }

Result<int32_t> Layouts::DoCount() const {
  return Unsupported("Layouts.Count");
}

Result<LayoutPtr> Layouts::DoItemAt(int32_t /*index*/) const {
  return Unsupported("Layouts.Item");
}

Result<LayoutPtr> Layouts::DoItemNamed(std::string_view /*name*/) const {
  return Unsupported("Layouts.Item");
}

Result<std::vector<LayoutPtr>> Layouts::DoItems() const {
  return Unsupported("Layouts.Items");
}

Result<LayoutPtr> Layouts::DoAdd(std::string_view /*name*/) {
  return Unsupported("Layouts.Add");
}

}  // namespace lmt::host

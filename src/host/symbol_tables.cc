#include "host/symbol_tables.h"

namespace lmt::host {

Result<std::string> Layer::DoName() const { return Unsupported("Layer.Name"); }

Result<bool> Layer::DoFreeze() const { return Unsupported("Layer.Freeze"); }

Status Layer::DoSetFreeze(bool /*frozen*/) {
  return Unsupported("Layer.SetFreeze");
}

Result<bool> Layer::DoLock() const { return Unsupported("Layer.Lock"); }

Status Layer::DoSetLock(bool /*locked*/) {
  return Unsupported("Layer.SetLock");
}

Status Layer::DoDelete() { return Unsupported("Layer.Delete"); }

Result<int32_t> Layers::DoCount() const { return Unsupported("Layers.Count"); }

Result<LayerPtr> Layers::DoItemAt(int32_t /*index*/) const {
  return Unsupported("Layers.Item");
}

Result<LayerPtr> Layers::DoItemNamed(std::string_view /*name*/) const {
  return Unsupported("Layers.Item");
}

Result<std::vector<LayerPtr>> Layers::DoItems() const {
  return Unsupported("Layers.Items");
}

Result<LayerPtr> Layers::DoAdd(std::string_view /*name*/) {
  return Unsupported("Layers.Add");
}

Result<std::string> Linetype::DoName() const {
  return Unsupported("Linetype.Name");
}

Result<int32_t> Linetypes::DoCount() const {
  return Unsupported("Linetypes.Count");
}

Result<LinetypePtr> Linetypes::DoItemAt(int32_t /*index*/) const {
  return Unsupported("Linetypes.Item");
}

Result<LinetypePtr> Linetypes::DoItemNamed(std::string_view /*name*/) const {
  return Unsupported("Linetypes.Item");
}

Result<std::vector<LinetypePtr>> Linetypes::DoItems() const {
  return Unsupported("Linetypes.Items");
}

Result<std::string> TextStyle::DoName() const {
  return Unsupported("TextStyle.Name");
}

Result<Font> TextStyle::DoGetFont() const {
  return Unsupported("TextStyle.GetFont");
}

Status TextStyle::DoSetFont(const Font& /*font*/) {
  return Unsupported("TextStyle.SetFont");
}

Result<std::string> TextStyle::DoFontFile() const {
  return Unsupported("TextStyle.FontFile");
}

Status TextStyle::DoSetFontFile(std::string_view /*font_file*/) {
  return Unsupported("TextStyle.SetFontFile");
}

Result<int32_t> TextStyles::DoCount() const {
  return Unsupported("TextStyles.Count");
}

Result<TextStylePtr> TextStyles::DoItemAt(int32_t /*index*/) const {
  return Unsupported("TextStyles.Item");
}

Result<TextStylePtr> TextStyles::DoItemNamed(std::string_view /*name*/) const {
  return Unsupported("TextStyles.Item");
}

Result<std::vector<TextStylePtr>> TextStyles::DoItems() const {
  return Unsupported("TextStyles.Items");
}

Result<TextStylePtr> TextStyles::DoAdd(std::string_view /*name*/) {
  return Unsupported("TextStyles.Add");
}

}  // namespace lmt::host

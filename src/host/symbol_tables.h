// Symbol tables of the CAD object model that the add-in uses: layers,
// linetypes and text styles, each with its collection. Add returns the existing
// record when the name is already there (as the object model does). Gate names
// and failure rules as in entity.h.
#ifndef LMT_HOST_SYMBOL_TABLES_H_
#define LMT_HOST_SYMBOL_TABLES_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"

namespace lmt::host {

// What a text style's GetFont returns and SetFont takes.
struct Font {
  std::string typeface;
  bool bold = false;
  bool italic = false;
  int32_t charset = 0;
  int32_t pitch_and_family = 0;
  bool operator==(const Font&) const = default;
};

// A layer.
class Layer : public Object {
 public:
  ~Layer() override = default;

  Result<std::string> Name() const {
    return Gated("Layer.Name", [&] { return DoName(); });
  }
  Result<bool> Freeze() const {
    return Gated("Layer.Freeze", [&] { return DoFreeze(); });
  }
  // The active layer refuses to freeze (kRefused).
  Status SetFreeze(bool frozen) {
    return Gated("Layer.SetFreeze", [&] { return DoSetFreeze(frozen); });
  }
  Result<bool> Lock() const {
    return Gated("Layer.Lock", [&] { return DoLock(); });
  }
  Status SetLock(bool locked) {
    return Gated("Layer.SetLock", [&] { return DoSetLock(locked); });
  }
  // Refused for layer "0", the active layer and layers in use.
  Status Delete() {
    return Gated("Layer.Delete", [&] { return DoDelete(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("Layer.Name");
  }
  virtual Result<bool> DoFreeze() const { return Unsupported("Layer.Freeze"); }
  virtual Status DoSetFreeze(bool /*frozen*/) {
    return Unsupported("Layer.SetFreeze");
  }
  virtual Result<bool> DoLock() const { return Unsupported("Layer.Lock"); }
  virtual Status DoSetLock(bool /*locked*/) {
    return Unsupported("Layer.SetLock");
  }
  virtual Status DoDelete() { return Unsupported("Layer.Delete"); }
};

// The layer table.
class Layers : public Object {
 public:
  ~Layers() override = default;

  Result<int32_t> Count() const {
    return Gated("Layers.Count", [&] { return DoCount(); });
  }
  // Zero-based; kNotFound out of range.
  Result<LayerPtr> Item(int32_t index) const {
    return Gated("Layers.Item", [&] { return DoItemAt(index); });
  }
  // By name, without regard to case; kNotFound when absent.
  Result<LayerPtr> Item(std::string_view name) const {
    return Gated("Layers.Item", [&] { return DoItemNamed(name); });
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<LayerPtr>> Items() const {
    return Gated("Layers.Items", [&] { return DoItems(); });
  }
  // The layer of that name, created when missing.
  Result<LayerPtr> Add(std::string_view name) {
    return Gated("Layers.Add", [&] { return DoAdd(name); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("Layers.Count");
  }
  virtual Result<LayerPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("Layers.Item");
  }
  virtual Result<LayerPtr> DoItemNamed(std::string_view /*name*/) const {
    return Unsupported("Layers.Item");
  }
  virtual Result<std::vector<LayerPtr>> DoItems() const {
    return Unsupported("Layers.Items");
  }
  virtual Result<LayerPtr> DoAdd(std::string_view /*name*/) {
    return Unsupported("Layers.Add");
  }
};

// A linetype.
class Linetype : public Object {
 public:
  ~Linetype() override = default;

  Result<std::string> Name() const {
    return Gated("Linetype.Name", [&] { return DoName(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("Linetype.Name");
  }
};

// The linetype table.
class Linetypes : public Object {
 public:
  ~Linetypes() override = default;

  Result<int32_t> Count() const {
    return Gated("Linetypes.Count", [&] { return DoCount(); });
  }
  // Zero-based; kNotFound out of range.
  Result<LinetypePtr> Item(int32_t index) const {
    return Gated("Linetypes.Item", [&] { return DoItemAt(index); });
  }
  // By name, without regard to case; kNotFound when absent.
  Result<LinetypePtr> Item(std::string_view name) const {
    return Gated("Linetypes.Item", [&] { return DoItemNamed(name); });
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<LinetypePtr>> Items() const {
    return Gated("Linetypes.Items", [&] { return DoItems(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("Linetypes.Count");
  }
  virtual Result<LinetypePtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("Linetypes.Item");
  }
  virtual Result<LinetypePtr> DoItemNamed(std::string_view /*name*/) const {
    return Unsupported("Linetypes.Item");
  }
  virtual Result<std::vector<LinetypePtr>> DoItems() const {
    return Unsupported("Linetypes.Items");
  }
};

// A text style.
class TextStyle : public Object {
 public:
  ~TextStyle() override = default;

  Result<std::string> Name() const {
    return Gated("TextStyle.Name", [&] { return DoName(); });
  }
  // The TrueType font of the style (empty typeface for SHX styles).
  Result<Font> GetFont() const {
    return Gated("TextStyle.GetFont", [&] { return DoGetFont(); });
  }
  Status SetFont(const Font& font) {
    return Gated("TextStyle.SetFont", [&] { return DoSetFont(font); });
  }
  Result<std::string> FontFile() const {
    return Gated("TextStyle.FontFile", [&] { return DoFontFile(); });
  }
  Status SetFontFile(std::string_view font_file) {
    return Gated("TextStyle.SetFontFile",
                 [&] { return DoSetFontFile(font_file); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("TextStyle.Name");
  }
  virtual Result<Font> DoGetFont() const {
    return Unsupported("TextStyle.GetFont");
  }
  virtual Status DoSetFont(const Font& /*font*/) {
    return Unsupported("TextStyle.SetFont");
  }
  virtual Result<std::string> DoFontFile() const {
    return Unsupported("TextStyle.FontFile");
  }
  virtual Status DoSetFontFile(std::string_view /*font_file*/) {
    return Unsupported("TextStyle.SetFontFile");
  }
};

// The text style table.
class TextStyles : public Object {
 public:
  ~TextStyles() override = default;

  Result<int32_t> Count() const {
    return Gated("TextStyles.Count", [&] { return DoCount(); });
  }
  // Zero-based; kNotFound out of range.
  Result<TextStylePtr> Item(int32_t index) const {
    return Gated("TextStyles.Item", [&] { return DoItemAt(index); });
  }
  // By name, without regard to case; kNotFound when absent.
  Result<TextStylePtr> Item(std::string_view name) const {
    return Gated("TextStyles.Item", [&] { return DoItemNamed(name); });
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<TextStylePtr>> Items() const {
    return Gated("TextStyles.Items", [&] { return DoItems(); });
  }
  // The style of that name, created when missing.
  Result<TextStylePtr> Add(std::string_view name) {
    return Gated("TextStyles.Add", [&] { return DoAdd(name); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("TextStyles.Count");
  }
  virtual Result<TextStylePtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("TextStyles.Item");
  }
  virtual Result<TextStylePtr> DoItemNamed(std::string_view /*name*/) const {
    return Unsupported("TextStyles.Item");
  }
  virtual Result<std::vector<TextStylePtr>> DoItems() const {
    return Unsupported("TextStyles.Items");
  }
  virtual Result<TextStylePtr> DoAdd(std::string_view /*name*/) {
    return Unsupported("TextStyles.Add");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_SYMBOL_TABLES_H_

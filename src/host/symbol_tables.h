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
    if (Status s = Enter("Layer.Name"); !s.ok()) return s;
    return DoName();
  }
  Result<bool> Freeze() const {
    if (Status s = Enter("Layer.Freeze"); !s.ok()) return s;
    return DoFreeze();
  }
  // The active layer refuses to freeze (kRefused).
  Status SetFreeze(bool frozen) {
    if (Status s = Enter("Layer.SetFreeze"); !s.ok()) return s;
    return DoSetFreeze(frozen);
  }
  Result<bool> Lock() const {
    if (Status s = Enter("Layer.Lock"); !s.ok()) return s;
    return DoLock();
  }
  Status SetLock(bool locked) {
    if (Status s = Enter("Layer.SetLock"); !s.ok()) return s;
    return DoSetLock(locked);
  }
  // Refused for layer "0", the active layer and layers in use.
  Status Delete() {
    if (Status s = Enter("Layer.Delete"); !s.ok()) return s;
    return DoDelete();
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Result<bool> DoFreeze() const;
  virtual Status DoSetFreeze(bool frozen);
  virtual Result<bool> DoLock() const;
  virtual Status DoSetLock(bool locked);
  virtual Status DoDelete();
};

// The layer table.
class Layers : public Object {
 public:
  ~Layers() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("Layers.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Zero-based; kNotFound out of range.
  Result<LayerPtr> Item(int32_t index) const {
    if (Status s = Enter("Layers.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // By name, without regard to case; kNotFound when absent.
  Result<LayerPtr> Item(std::string_view name) const {
    if (Status s = Enter("Layers.Item"); !s.ok()) return s;
    return DoItemNamed(name);
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<LayerPtr>> Items() const {
    if (Status s = Enter("Layers.Items"); !s.ok()) return s;
    return DoItems();
  }
  // The layer of that name, created when missing.
  Result<LayerPtr> Add(std::string_view name) {
    if (Status s = Enter("Layers.Add"); !s.ok()) return s;
    return DoAdd(name);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<LayerPtr> DoItemAt(int32_t index) const;
  virtual Result<LayerPtr> DoItemNamed(std::string_view name) const;
  virtual Result<std::vector<LayerPtr>> DoItems() const;
  virtual Result<LayerPtr> DoAdd(std::string_view name);
};

// A linetype.
class Linetype : public Object {
 public:
  ~Linetype() override = default;

  Result<std::string> Name() const {
    if (Status s = Enter("Linetype.Name"); !s.ok()) return s;
    return DoName();
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
};

// The linetype table.
class Linetypes : public Object {
 public:
  ~Linetypes() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("Linetypes.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Zero-based; kNotFound out of range.
  Result<LinetypePtr> Item(int32_t index) const {
    if (Status s = Enter("Linetypes.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // By name, without regard to case; kNotFound when absent.
  Result<LinetypePtr> Item(std::string_view name) const {
    if (Status s = Enter("Linetypes.Item"); !s.ok()) return s;
    return DoItemNamed(name);
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<LinetypePtr>> Items() const {
    if (Status s = Enter("Linetypes.Items"); !s.ok()) return s;
    return DoItems();
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<LinetypePtr> DoItemAt(int32_t index) const;
  virtual Result<LinetypePtr> DoItemNamed(std::string_view name) const;
  virtual Result<std::vector<LinetypePtr>> DoItems() const;
};

// A text style.
class TextStyle : public Object {
 public:
  ~TextStyle() override = default;

  Result<std::string> Name() const {
    if (Status s = Enter("TextStyle.Name"); !s.ok()) return s;
    return DoName();
  }
  // The TrueType font of the style (empty typeface for SHX styles).
  Result<Font> GetFont() const {
    if (Status s = Enter("TextStyle.GetFont"); !s.ok()) return s;
    return DoGetFont();
  }
  Status SetFont(const Font& font) {
    if (Status s = Enter("TextStyle.SetFont"); !s.ok()) return s;
    return DoSetFont(font);
  }
  Result<std::string> FontFile() const {
    if (Status s = Enter("TextStyle.FontFile"); !s.ok()) return s;
    return DoFontFile();
  }
  Status SetFontFile(std::string_view font_file) {
    if (Status s = Enter("TextStyle.SetFontFile"); !s.ok()) return s;
    return DoSetFontFile(font_file);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Result<Font> DoGetFont() const;
  virtual Status DoSetFont(const Font& font);
  virtual Result<std::string> DoFontFile() const;
  virtual Status DoSetFontFile(std::string_view font_file);
};

// The text style table.
class TextStyles : public Object {
 public:
  ~TextStyles() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("TextStyles.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Zero-based; kNotFound out of range.
  Result<TextStylePtr> Item(int32_t index) const {
    if (Status s = Enter("TextStyles.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // By name, without regard to case; kNotFound when absent.
  Result<TextStylePtr> Item(std::string_view name) const {
    if (Status s = Enter("TextStyles.Item"); !s.ok()) return s;
    return DoItemNamed(name);
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<TextStylePtr>> Items() const {
    if (Status s = Enter("TextStyles.Items"); !s.ok()) return s;
    return DoItems();
  }
  // The style of that name, created when missing.
  Result<TextStylePtr> Add(std::string_view name) {
    if (Status s = Enter("TextStyles.Add"); !s.ok()) return s;
    return DoAdd(name);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<TextStylePtr> DoItemAt(int32_t index) const;
  virtual Result<TextStylePtr> DoItemNamed(std::string_view name) const;
  virtual Result<std::vector<TextStylePtr>> DoItems() const;
  virtual Result<TextStylePtr> DoAdd(std::string_view name);
};

}  // namespace lmt::host

#endif  // LMT_HOST_SYMBOL_TABLES_H_

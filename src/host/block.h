// Blocks of the CAD object model: a Block is a block definition, model space or
// a layout's paper space (the object model's ModelSpace and PaperSpace are
// Blocks too); Blocks is the document's collection of definitions. Gate names
// and failure rules as in entity.h.
#ifndef LMT_HOST_BLOCK_H_
#define LMT_HOST_BLOCK_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"

namespace lmt::host {

// A container of entities.
class Block : public Object {
 public:
  ~Block() override = default;

  // "*Model_Space", "*Paper_Space..." or the definition's name.
  Result<std::string> Name() const {
    if (Status s = Enter("Block.Name"); !s.ok()) return s;
    return DoName();
  }
  Result<bool> IsXRef() const {
    if (Status s = Enter("Block.IsXRef"); !s.ok()) return s;
    return DoIsXRef();
  }
  // The base point of the definition, in its own coordinates: a reference
  // places this point at its insertion point. (0, 0, 0) for model space
  // and the layouts' blocks.
  Result<Point> Origin() const {
    if (Status s = Enter("Block.Origin"); !s.ok()) return s;
    return DoOrigin();
  }
  // True for model space and the layouts' blocks.
  Result<bool> IsLayout() const {
    if (Status s = Enter("Block.IsLayout"); !s.ok()) return s;
    return DoIsLayout();
  }
  // The layout that owns a layout block; kNotFound for a definition.
  Result<LayoutPtr> Layout() const {
    if (Status s = Enter("Block.Layout"); !s.ok()) return s;
    return DoLayout();
  }
  // Count, Item and Items of an external reference's block answer the
  // entities of the referenced drawing's model space, as the CAD program
  // binds them (none while that drawing cannot be read).
  Result<int32_t> Count() const {
    if (Status s = Enter("Block.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Entity `index` (zero-based) in the block's order. Item(0) of a layout
  // block is the layout's own paper-space viewport.
  Result<EntityPtr> Item(int32_t index) const {
    if (Status s = Enter("Block.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // Every entity in the block's order (the For Each walk).
  Result<std::vector<EntityPtr>> Items() const {
    if (Status s = Enter("Block.Items"); !s.ok()) return s;
    return DoItems();
  }
  // Paper space only; kNotSupported in other blocks.
  Result<PViewportPtr> AddPViewport(const Point& center, double width,
                                    double height) {
    if (Status s = Enter("Block.AddPViewport"); !s.ok()) return s;
    return DoAddPViewport(center, width, height);
  }
  Result<MTextPtr> AddMText(const Point& insertion_point, double width,
                            std::string_view text) {
    if (Status s = Enter("Block.AddMText"); !s.ok()) return s;
    return DoAddMText(insertion_point, width, text);
  }
  // `coordinates` as Polyline::Coordinates gives them (x1, y1, x2, ...).
  Result<PolylinePtr> AddLightWeightPolyline(
      const std::vector<double>& coordinates) {
    if (Status s = Enter("Block.AddLightWeightPolyline"); !s.ok()) return s;
    return DoAddLightWeightPolyline(coordinates);
  }
  Result<TextPtr> AddText(std::string_view text, const Point& insertion_point,
                          double height) {
    if (Status s = Enter("Block.AddText"); !s.ok()) return s;
    return DoAddText(text, insertion_point, height);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Result<bool> DoIsXRef() const;
  virtual Result<Point> DoOrigin() const;
  virtual Result<bool> DoIsLayout() const;
  virtual Result<LayoutPtr> DoLayout() const;
  virtual Result<int32_t> DoCount() const;
  virtual Result<EntityPtr> DoItemAt(int32_t index) const;
  virtual Result<std::vector<EntityPtr>> DoItems() const;
  virtual Result<PViewportPtr> DoAddPViewport(const Point& center, double width,
                                              double height);
  virtual Result<MTextPtr> DoAddMText(const Point& insertion_point,
                                      double width, std::string_view text);
  virtual Result<PolylinePtr> DoAddLightWeightPolyline(
      const std::vector<double>& coordinates);
  virtual Result<TextPtr> DoAddText(std::string_view text,
                                    const Point& insertion_point,
                                    double height);
};

// The block table: Item by index or by name (kNotFound when absent).
class Blocks : public Object {
 public:
  ~Blocks() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("Blocks.Count"); !s.ok()) return s;
    return DoCount();
  }
  // Zero-based; kNotFound out of range.
  Result<BlockPtr> Item(int32_t index) const {
    if (Status s = Enter("Blocks.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // By name, without regard to case; kNotFound when absent.
  Result<BlockPtr> Item(std::string_view name) const {
    if (Status s = Enter("Blocks.Item"); !s.ok()) return s;
    return DoItemNamed(name);
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<BlockPtr>> Items() const {
    if (Status s = Enter("Blocks.Items"); !s.ok()) return s;
    return DoItems();
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<BlockPtr> DoItemAt(int32_t index) const;
  virtual Result<BlockPtr> DoItemNamed(std::string_view name) const;
  virtual Result<std::vector<BlockPtr>> DoItems() const;
};

}  // namespace lmt::host

#endif  // LMT_HOST_BLOCK_H_

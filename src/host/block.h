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
    return Gated("Block.Name", [&] { return DoName(); });
  }
  Result<bool> IsXRef() const {
    return Gated("Block.IsXRef", [&] { return DoIsXRef(); });
  }
  // The base point of the definition, in its own coordinates: a reference
  // places this point at its insertion point. (0, 0, 0) for model space
  // and the layouts' blocks.
  Result<Point> Origin() const {
    return Gated("Block.Origin", [&] { return DoOrigin(); });
  }
  // True for model space and the layouts' blocks.
  Result<bool> IsLayout() const {
    return Gated("Block.IsLayout", [&] { return DoIsLayout(); });
  }
  // The layout that owns a layout block; kNotFound for a definition.
  Result<LayoutPtr> Layout() const {
    return Gated("Block.Layout", [&] { return DoLayout(); });
  }
  // Count, Item and Items of an external reference's block answer the
  // entities of the referenced drawing's model space, as the CAD program
  // binds them (none while that drawing cannot be read).
  Result<int32_t> Count() const {
    return Gated("Block.Count", [&] { return DoCount(); });
  }
  // Entity `index` (zero-based) in the block's order. Item(0) of a layout
  // block is the layout's own paper-space viewport.
  Result<EntityPtr> Item(int32_t index) const {
    return Gated("Block.Item", [&] { return DoItemAt(index); });
  }
  // Every entity in the block's order (the For Each walk).
  Result<std::vector<EntityPtr>> Items() const {
    return Gated("Block.Items", [&] { return DoItems(); });
  }
  // Paper space only; kNotSupported in other blocks.
  Result<PViewportPtr> AddPViewport(const Point& center, double width,
                                    double height) {
    return Gated("Block.AddPViewport",
                 [&] { return DoAddPViewport(center, width, height); });
  }
  Result<MTextPtr> AddMText(const Point& insertion_point, double width,
                            std::string_view text) {
    return Gated("Block.AddMText",
                 [&] { return DoAddMText(insertion_point, width, text); });
  }
  // `coordinates` as Polyline::Coordinates gives them (x1, y1, x2, ...).
  Result<PolylinePtr> AddLightWeightPolyline(
      const std::vector<double>& coordinates) {
    return Gated("Block.AddLightWeightPolyline",
                 [&] { return DoAddLightWeightPolyline(coordinates); });
  }
  Result<TextPtr> AddText(std::string_view text, const Point& insertion_point,
                          double height) {
    return Gated("Block.AddText",
                 [&] { return DoAddText(text, insertion_point, height); });
  }
  // A reference of the definition `name` at `insertion_point`. When `name`
  // is a drawing file's path, the definition is made from that drawing's
  // model space under the file's stem (a definition already of that name is
  // used as it is). The reference gets an attribute for each non-constant
  // attribute definition, holding its default value. Rotation in radians.
  Result<BlockReferencePtr> InsertBlock(const Point& insertion_point,
                                        std::string_view name, double x_scale,
                                        double y_scale, double z_scale,
                                        double rotation) {
    return Gated("Block.InsertBlock", [&] {
      return DoInsertBlock(insertion_point, name, x_scale, y_scale, z_scale,
                           rotation);
    });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("Block.Name");
  }
  virtual Result<bool> DoIsXRef() const { return Unsupported("Block.IsXRef"); }
  virtual Result<Point> DoOrigin() const { return Unsupported("Block.Origin"); }
  virtual Result<bool> DoIsLayout() const {
    return Unsupported("Block.IsLayout");
  }
  virtual Result<LayoutPtr> DoLayout() const {
    return Unsupported("Block.Layout");
  }
  virtual Result<int32_t> DoCount() const { return Unsupported("Block.Count"); }
  virtual Result<EntityPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("Block.Item");
  }
  virtual Result<std::vector<EntityPtr>> DoItems() const {
    return Unsupported("Block.Items");
  }
  virtual Result<PViewportPtr> DoAddPViewport(const Point& /*center*/,
                                              double /*width*/,
                                              double /*height*/) {
    return Unsupported("Block.AddPViewport");
  }
  virtual Result<MTextPtr> DoAddMText(const Point& /*insertion_point*/,
                                      double /*width*/,
                                      std::string_view /*text*/) {
    return Unsupported("Block.AddMText");
  }
  virtual Result<PolylinePtr> DoAddLightWeightPolyline(
      const std::vector<double>& /*coordinates*/) {
    return Unsupported("Block.AddLightWeightPolyline");
  }
  virtual Result<TextPtr> DoAddText(std::string_view /*text*/,
                                    const Point& /*insertion_point*/,
                                    double /*height*/) {
    return Unsupported("Block.AddText");
  }
  virtual Result<BlockReferencePtr> DoInsertBlock(
      const Point& /*insertion_point*/, std::string_view /*name*/,
      double /*x_scale*/, double /*y_scale*/, double /*z_scale*/,
      double /*rotation*/) {
    return Unsupported("Block.InsertBlock");
  }
};

// The block table: Item by index or by name (kNotFound when absent).
class Blocks : public Object {
 public:
  ~Blocks() override = default;

  Result<int32_t> Count() const {
    return Gated("Blocks.Count", [&] { return DoCount(); });
  }
  // Zero-based; kNotFound out of range.
  Result<BlockPtr> Item(int32_t index) const {
    return Gated("Blocks.Item", [&] { return DoItemAt(index); });
  }
  // By name, without regard to case; kNotFound when absent.
  Result<BlockPtr> Item(std::string_view name) const {
    return Gated("Blocks.Item", [&] { return DoItemNamed(name); });
  }
  // Every member in collection order (the For Each walk).
  Result<std::vector<BlockPtr>> Items() const {
    return Gated("Blocks.Items", [&] { return DoItems(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("Blocks.Count");
  }
  virtual Result<BlockPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("Blocks.Item");
  }
  virtual Result<BlockPtr> DoItemNamed(std::string_view /*name*/) const {
    return Unsupported("Blocks.Item");
  }
  virtual Result<std::vector<BlockPtr>> DoItems() const {
    return Unsupported("Blocks.Items");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_BLOCK_H_

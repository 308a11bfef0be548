#include "host/block.h"

namespace lmt::host {

Result<std::string> Block::DoName() const { return Unsupported("Block.Name"); }

Result<bool> Block::DoIsXRef() const { return Unsupported("Block.IsXRef"); }

Result<Point> Block::DoOrigin() const { return Unsupported("Block.Origin"); }

Result<bool> Block::DoIsLayout() const { return Unsupported("Block.IsLayout"); }

Result<LayoutPtr> Block::DoLayout() const {
  return Unsupported("Block.Layout");
}

Result<int32_t> Block::DoCount() const { return Unsupported("Block.Count"); }

Result<EntityPtr> Block::DoItemAt(int32_t /*index*/) const {
  return Unsupported("Block.Item");
}

Result<std::vector<EntityPtr>> Block::DoItems() const {
  return Unsupported("Block.Items");
}

Result<PViewportPtr> Block::DoAddPViewport(const Point& /*center*/,
                                           double /*width*/,
                                           double /*height*/) {
  return Unsupported("Block.AddPViewport");
}

Result<MTextPtr> Block::DoAddMText(const Point& /*insertion_point*/,
                                   double /*width*/,
                                   std::string_view /*text*/) {
  return Unsupported("Block.AddMText");
}

Result<PolylinePtr> Block::DoAddLightWeightPolyline(
    const std::vector<double>& /*coordinates*/) {
  return Unsupported("Block.AddLightWeightPolyline");
}

Result<TextPtr> Block::DoAddText(std::string_view /*text*/,
                                 const Point& /*insertion_point*/,
                                 double /*height*/) {
  return Unsupported("Block.AddText");
}

Result<int32_t> Blocks::DoCount() const { return Unsupported("Blocks.Count"); }

Result<BlockPtr> Blocks::DoItemAt(int32_t /*index*/) const {
  return Unsupported("Blocks.Item");
}

Result<BlockPtr> Blocks::DoItemNamed(std::string_view /*name*/) const {
  return Unsupported("Blocks.Item");
}

Result<std::vector<BlockPtr>> Blocks::DoItems() const {
  return Unsupported("Blocks.Items");
}

}  // namespace lmt::host

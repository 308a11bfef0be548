// Blocks, layouts and symbol tables of the object model over dxf::Document.
//
// Blocks are the document's BLOCK definitions in file order (model space and
// every layout's block included); Layouts are the tabs in tab order, "Model"
// first; Layers, Linetypes and TextStyles are the table entries in file
// order. Lookups by name ignore case.
//
// Layouts are added, renamed, deleted and given page setups through the
// engine's layout editing: a taken name (case ignored, "Model" included) is
// refused, deleting the active layout first moves the session to the next
// one, and the last paper layout stays. A new paper viewport starts switched
// off, as a CAD program leaves it until Display. An external reference's
// block answers the entities of the drawing it names (Drawing::Xref). A
// wrapper of a deleted layout or of its block answers kNotFound. R12
// drawings have one implied layout and answer kNotSupported to all of it.
#ifndef LMT_DXFHOST_COLLECTIONS_H_
#define LMT_DXFHOST_COLLECTIONS_H_

#include <memory>

#include "dxfhost/drawing.h"
#include "host/block.h"
#include "host/layout.h"
#include "host/symbol_tables.h"

namespace lmt::dxfhost {

host::BlockPtr MakeBlock(const std::shared_ptr<Drawing>& d, dxf::Block* block);
host::BlocksPtr MakeBlocks(const std::shared_ptr<Drawing>& d);
host::LayoutPtr MakeLayout(const std::shared_ptr<Drawing>& d,
                           const LayoutInfo& info);
host::LayoutsPtr MakeLayouts(const std::shared_ptr<Drawing>& d);
host::LayerPtr MakeLayer(const std::shared_ptr<Drawing>& d, dxf::RecordId id);
host::LayersPtr MakeLayers(const std::shared_ptr<Drawing>& d);
host::LinetypesPtr MakeLinetypes(const std::shared_ptr<Drawing>& d);
host::TextStylePtr MakeTextStyle(const std::shared_ptr<Drawing>& d,
                                 dxf::RecordId id);
host::TextStylesPtr MakeTextStyles(const std::shared_ptr<Drawing>& d);

// The engine block behind a Block or Layout of drawing `d`; nullptr for an
// object of another drawing or host.
dxf::Block* BlockOf(const host::Block& block, const Drawing* d);
dxf::Block* BlockOf(const host::Layout& layout, const Drawing* d);
// The table record behind a Layer or TextStyle of `d`, or kNoRecord.
dxf::RecordId RecordOf(const host::Layer& layer, const Drawing* d);
dxf::RecordId RecordOf(const host::TextStyle& style, const Drawing* d);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_COLLECTIONS_H_

// Blocks of the object model over dxf::Document: the document's BLOCK
// definitions in file order, model space and every layout's block included.
// Lookups by name ignore case. A new paper viewport starts switched off, as a
// CAD program leaves it until Display. An external reference's block answers
// the entities of the drawing it names (Drawing::Xref). A wrapper of a block
// whose layout was deleted answers kNotFound.
#ifndef LMT_DXFHOST_BLOCKS_H_
#define LMT_DXFHOST_BLOCKS_H_

#include <memory>

#include "dxfhost/drawing.h"
#include "host/block.h"

namespace lmt::dxfhost {

host::BlockPtr MakeBlock(const std::shared_ptr<Drawing>& d, dxf::Block* block);
host::BlocksPtr MakeBlocks(const std::shared_ptr<Drawing>& d);

// The engine block behind a Block of drawing `d`; nullptr for an object of
// another drawing or host.
dxf::Block* BlockOf(const host::Block& block, const Drawing* d);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_BLOCKS_H_

// Deep copies of entities into a block, within one drawing or between two.
//
// A copy takes what the entity owns: an INSERT's ATTRIBs and SEQEND, a
// POLYLINE's VERTEXes, and the extension dictionary tree (a viewport's
// annotation-scale XRECORD, ...). Every copied record gets a new handle;
// owners point at the target block record or the new parent, and pointers
// between copied records are translated. The copies' ACAD_REACTORS are
// dropped (the objects they named do not know the copies), except inside
// the copied dictionary trees.
//
// Between drawings, what the copies name and the target lacks comes along:
// layers, linetypes, text styles, APPIDs of their XDATA, and the block
// definitions INSERTs and DIMENSIONs use (anonymous ones under a fresh *U
// name when taken). Other pointers out of the copied set (visual styles,
// materials, MLINE and dimension styles, ...) are dropped; a viewport keeps its
// annotation scale by SCALE name. A layout's main (id 1) viewport is never
// copied into a paper layout, which has its own.
#ifndef LMT_DXF_ENTITY_COPY_H_
#define LMT_DXF_ENTITY_COPY_H_

#include <span>
#include <vector>

#include "dxf/document.h"

namespace lmt::dxf {

// Copies the top-level entities `ids` of `from` to the end of `target` (a
// block of `to`; `from` may be `to`). Returns the copies in order; entities
// left out (erased, main viewports) have no entry. R12 on either side:
// nothing copied.
std::vector<Entity> CopyEntities(Document& from, std::span<const RecordId> ids,
                                 Document& to, Block* target);

}  // namespace lmt::dxf

#endif  // LMT_DXF_ENTITY_COPY_H_

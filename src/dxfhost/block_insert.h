// Block references the embedded host inserts (Block.InsertBlock): the
// definition a name stands for, made from a drawing file when the name is
// one, and the INSERT with an ATTRIB for each attribute definition, as a
// CAD program fills a reference it inserts without prompting.
#ifndef LMT_DXFHOST_BLOCK_INSERT_H_
#define LMT_DXFHOST_BLOCK_INSERT_H_

#include <string_view>

#include "core/status.h"
#include "dxfhost/drawing.h"

namespace lmt::dxfhost {

// True when `name` names a drawing file rather than a block: it ends in
// ".dxf" or ".dwg" (ASCII case ignored) or holds a path separator, which no
// block name may.
bool NamesDrawingFile(std::string_view name);

// The definition `name` stands for in `d`: a block of the drawing (case
// ignored; kNotFound when absent), or for a drawing file the block named
// after its stem. That block is made from the file's model space on first
// use, with the layers, styles and blocks its entities need, and its base
// point at the file's $INSBASE; later calls find it and read nothing. A
// relative path is looked up beside the drawing first, then from the
// working folder. Only DXF files can be read (kNotSupported for others).
Result<dxf::Block*> DefinitionFor(Drawing& d, std::string_view name);

struct Placement {
  dxf::Vec3 point;
  dxf::Vec3 scale{1, 1, 1};
  double rotation = 0;  // degrees
};

// Appends a reference of `definition` to `target` on the active layer, with
// an ATTRIB for every non-constant ATTDEF of the definition: the ATTDEF's
// tag, default value, layer and text properties, placed and sized as the
// reference places its definition. Returns the INSERT's record.
dxf::RecordId AddReference(Drawing& d, dxf::Block* target,
                           const dxf::Block& definition, const Placement& at);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_BLOCK_INSERT_H_

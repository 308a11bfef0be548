// Layers, linetypes and text styles of the object model over dxf::Document:
// the table entries in file order, erased ones left out. Lookups by name
// ignore case.
#ifndef LMT_DXFHOST_SYMBOL_TABLES_H_
#define LMT_DXFHOST_SYMBOL_TABLES_H_

#include <memory>

#include "dxfhost/drawing.h"
#include "host/symbol_tables.h"

namespace lmt::dxfhost {

host::LayerPtr MakeLayer(const std::shared_ptr<Drawing>& d, dxf::RecordId id);
host::LayersPtr MakeLayers(const std::shared_ptr<Drawing>& d);
host::LinetypesPtr MakeLinetypes(const std::shared_ptr<Drawing>& d);
host::TextStylePtr MakeTextStyle(const std::shared_ptr<Drawing>& d,
                                 dxf::RecordId id);
host::TextStylesPtr MakeTextStyles(const std::shared_ptr<Drawing>& d);

// The table record behind a Layer or TextStyle of `d`, or kNoRecord; for an
// object of another drawing or host too.
dxf::RecordId RecordOf(const host::Layer& layer, const Drawing* d);
dxf::RecordId RecordOf(const host::TextStyle& style, const Drawing* d);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_SYMBOL_TABLES_H_

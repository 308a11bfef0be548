// Colours of drawing entities: the 256 standard AutoCAD Color Index (ACI)
// entries and true colours (group 420, 0x00RRGGBB).
//
// Index 7 is listed as white, as CAD programs store it; a plot on white
// paper shows it black, which is the renderer's choice, not this table's.
#ifndef LMT_DXF_ACI_COLORS_H_
#define LMT_DXF_ACI_COLORS_H_

#include <cstdint>

namespace lmt::dxf {

struct Rgb {
  uint8_t r = 0, g = 0, b = 0;
  bool operator==(const Rgb&) const = default;
};

// The standard colour of index 1..255; black for anything else (0 ByBlock
// and 256 ByLayer are not colours).
Rgb AciColor(int index);

// A 420 value (0x00RRGGBB; the top byte is a flag some writers set).
Rgb TrueColor(int64_t value);

}  // namespace lmt::dxf

#endif  // LMT_DXF_ACI_COLORS_H_

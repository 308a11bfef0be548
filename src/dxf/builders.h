// Builders for new records: layers, text styles, LWPOLYLINE and MTEXT.
//
// Each builder writes the tag sequence a CAD program writes for that type
// (R2000+ subclass markers; R12 forms for table entries), then hands it to
// the Document, which assigns the handle and owner. Names are checked
// against the characters CAD programs refuse; a bad name gives an invalid
// Entity. LWPOLYLINE and MTEXT do not exist in R12 files, so there the
// builders return an invalid Entity too.
#ifndef LMT_DXF_BUILDERS_H_
#define LMT_DXF_BUILDERS_H_

#include <span>
#include <string_view>

#include "dxf/document.h"
#include "dxf/lwpolyline.h"

namespace lmt::dxf {

// True when `name` is usable as a table entry name in this drawing's
// version (not empty, none of < > / \ " : ; ? * | , = `).
bool IsValidName(const Document& doc, std::string_view name);

// Returns the existing layer of that name (case-insensitive) or a new one.
Entity AddLayer(Document& doc, std::string_view name, int color = 7,
                std::string_view linetype = "Continuous");
// Returns the existing text style or a new one using `font` (e.g. "txt",
// "arial.ttf").
Entity AddTextStyle(Document& doc, std::string_view name,
                    std::string_view font = "txt");

struct EntityStyle {
  std::string_view layer = "0";
  int color = 256;  // ByLayer: not written
};

Entity AddLwPolyline(Document& doc, Block* block,
                     std::span<const LwVertex> vertices, bool closed,
                     EntityStyle style = {});
// A block reference (scale 1 unless given; rotation in degrees).
Entity AddInsert(Document& doc, Block* block, std::string_view block_name,
                 Vec3 point, double scale = 1, double rotation = 0,
                 EntityStyle style = {});
// `attachment` 1..9 (1 top left). width 0 = no wrapping.
Entity AddMText(Document& doc, Block* block, Vec3 insert, double height,
                std::string_view text, EntityStyle style = {}, double width = 0,
                int attachment = 1, std::string_view text_style = "Standard");

}  // namespace lmt::dxf

#endif  // LMT_DXF_BUILDERS_H_

#include "frames/frame_record.h"

#include "core/check.h"
#include "frames/frame_template.h"

namespace lmt::frames {

FrameKind KindOfTyp(std::string_view typ) {
  if (EqualsNoCase(typ, kTypPolyline)) return FrameKind::kPolyline;
  if (EqualsNoCase(typ, kTypBlock)) return FrameKind::kBlock;
  if (EqualsNoCase(typ, kTypXRef)) return FrameKind::kXRef;
  return FrameKind::kNone;
}

std::string_view KindWord(FrameKind kind) {
  switch (kind) {
    case FrameKind::kPolyline:
      return "polyline";
    case FrameKind::kBlock:
      return "block";
    case FrameKind::kXRef:
      return "xref";
    case FrameKind::kNone:
      break;
  }
  return "";
}

FrameRecord ReadRecord(const FrameTable& table, int row) {
  LMT_CHECK(row > 0 && row < table.row_count());
  FrameRecord r;
  r.number = table.Cell(row, Column::kNumber);
  r.layout_name = table.Cell(row, Column::kLayoutName);
  r.attribute = table.Cell(row, Column::kAttribute);
  r.block_name = table.Cell(row, Column::kBlockName);
  r.id = table.Cell(row, Column::kId);
  r.typ = table.Cell(row, Column::kTyp);
  r.kind = KindOfTyp(r.typ);
  r.corners = table.Corners(row);
  r.angle = table.Number(row, Column::kAngle).value_or(0);
  return r;
}

}  // namespace lmt::frames

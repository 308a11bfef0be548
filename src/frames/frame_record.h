// One frame row of the frame table, typed: what the code that reads the
// table needs (names, ID, kind, corners, rotation), parsed in one place. The
// grid stays the store and keeps its texts exactly as the window shows them;
// a record is a read-only snapshot of a row.
#ifndef LMT_FRAMES_FRAME_RECORD_H_
#define LMT_FRAMES_FRAME_RECORD_H_

#include <optional>
#include <string>
#include <string_view>

#include "frames/frame_table.h"

namespace lmt::frames {

// What the "Typ" cell names. kNone for a blank row or a text the search
// never writes.
enum class FrameKind { kNone, kPolyline, kBlock, kXRef };

// The kind a "Typ" text names, in any letter case (the cell can be edited).
FrameKind KindOfTyp(std::string_view typ);

// "polyline", "block", "xref"; "" for kNone. The reports' word for a kind.
std::string_view KindWord(FrameKind kind);

struct FrameRecord {
  std::string number;       // "№"
  std::string layout_name;  // "Layout Name"
  std::string attribute;    // "Attribute"
  std::string block_name;   // "Block Name"
  std::string id;           // "ID": the frame object's id, "" when unknown
  std::string typ;          // "Typ" as shown
  FrameKind kind = FrameKind::kNone;
  // Nullopt when any corner cell is not a number.
  std::optional<Quad> corners;
  // The reference's rotation in radians; an empty or unreadable cell is 0.
  double angle = 0;

  // A block or an external reference: a frame with attributes and a
  // rotation of its own.
  bool is_reference() const {
    return kind == FrameKind::kBlock || kind == FrameKind::kXRef;
  }
};

// The record of data row `row`. REQUIRES: 0 < row < table.row_count().
FrameRecord ReadRecord(const FrameTable& table, int row);

}  // namespace lmt::frames

#endif  // LMT_FRAMES_FRAME_RECORD_H_

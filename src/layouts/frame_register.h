// The sheet register: the CSV that `frames --csv` writes, edited by the
// user (often in a spreadsheet program) and read back by
// `create-layouts --register FILE` or the main window's import. Its row order
// is the order of the sheets, its "Layout Name" column their names and every
// column that is not one of the 27 frame-table columns an attribute tag whose
// values go into the title blocks.
//
// Reading accepts what spreadsheet programs save: with or without a byte
// order mark, "," or ";" between fields (whichever the header line uses
// more), CRLF or LF, quoted fields with doubled quotes and line breaks,
// decimal commas in the corner columns. Blank rows are ignored.
//
// Matching: a row takes the frame whose ID it names when the row's corners
// (if it has them) agree with that frame's; otherwise the frame whose four
// corners agree with the row's, starting from any corner and in either
// direction, within kCornerTolerance of the coordinates' size. So a drawing
// saved by another program (new handles) still matches, and an old ID that
// now belongs to another frame is not taken for it. A row that matches no
// frame, or a frame already taken, is reported and left out, never
// guessed; frames the register does not list are left out of the run (the
// register is the list of sheets), with one warning naming them.
#ifndef LMT_LAYOUTS_FRAME_REGISTER_H_
#define LMT_LAYOUTS_FRAME_REGISTER_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "frames/frame_table.h"
#include "layouts/frame_csv.h"

namespace lmt::layouts {

// Corners agree when every coordinate differs by at most this times the
// larger of 1 and the coordinate's magnitude (spreadsheets keep 15
// significant digits; other programs round differently).
inline constexpr double kCornerTolerance = 1e-6;

// One CSV record and the line of the file it starts on (1 for the first).
struct CsvRecord {
  int line = 0;
  std::vector<std::string> fields;
};

// The records of a CSV text. InvalidArgument "line N: ..." for a quoted
// field that never ends.
Result<std::vector<CsvRecord>> ParseCsv(std::string_view text);

struct RegisterRow {
  int line = 0;    // line of the file
  std::string id;  // "" when the column is absent or blank
  std::optional<frames::Quad> corners;
  std::string layout_name;  // trimmed; "" keeps the frame's own
  FrameAttributes values;   // (tag, value) per tag column
};

struct Register {
  std::vector<std::string> tags;  // the tag columns, in file order
  std::vector<RegisterRow> rows;  // in file order, blank rows left out
};

// The register in `text`. InvalidArgument naming `path` and the line when
// the header lacks "Layout Name", or lacks both "ID" and the corner
// columns PointX1..PointY4, or a field is malformed.
Result<Register> ParseRegister(std::string_view text, std::string_view path);

// A frame that the register lists, in register order.
struct RegisteredFrame {
  int table_row = 0;   // its row in RegisterOutcome::table
  std::string layout;  // its layout name there
  std::string id;      // the frame's ID in the drawing
  FrameAttributes values;
};

struct RegisterOutcome {
  frames::FrameTable table;  // the listed frames in register order
  std::vector<RegisteredFrame> frames;
  std::vector<std::string> warnings;  // one sentence each
};

// Matches the register's rows to the rows of `found` (a searched and named
// frame table) and builds the table the run makes its layouts from.
RegisterOutcome ApplyRegister(const Register& reg,
                              const frames::FrameTable& found);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_FRAME_REGISTER_H_

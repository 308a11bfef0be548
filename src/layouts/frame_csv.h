// The frame table as a spreadsheet file, the sheet register that
// `layomat frames --csv FILE` and the main window's export write. UTF-8
// with a byte order mark (so that spreadsheet programs take Cyrillic as
// such), comma separated, CRLF line ends, fields quoted where they need it;
// the 27 columns under their fixed names, then one column per attribute
// tag found on the title blocks of the frames (in the order first met,
// tags compared ignoring case), empty where a frame has no such attribute.
#ifndef LMT_LAYOUTS_FRAME_CSV_H_
#define LMT_LAYOUTS_FRAME_CSV_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/status.h"
#include "frames/frame_table.h"
#include "host/document.h"

namespace lmt::layouts {

// Tag and value of each attribute of one frame's block reference, in the
// reference's order.
using FrameAttributes = std::vector<std::pair<std::string, std::string>>;

// Per data row (index 0 is row 1): the attributes of the block reference
// or external reference its "ID" names; empty for polylines and for a
// reference the host cannot give (the row stays, without values).
std::vector<FrameAttributes> ReadFrameAttributes(
    host::Document& document, const frames::FrameTable& table);

// One CSV field: quoted when it holds a comma, quote, CR or LF, inner
// quotes doubled.
std::string CsvField(std::string_view text);

// The whole file's text, byte order mark included.
// REQUIRES: attributes.size() == table.row_count() - 1.
std::string FramesCsv(const frames::FrameTable& table,
                      const std::vector<FrameAttributes>& attributes);

// Reads the attributes and writes FramesCsv to `path` through a temporary
// file renamed into place. IOError naming `path` when it cannot be written.
Status WriteFramesCsv(host::Document& document, const frames::FrameTable& table,
                      const std::string& path);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_FRAME_CSV_H_

// How `layomat frames` shows the frame table: as JSON with the 27 column
// names as keys and the cell texts as string values (the same whatever the
// interface language), or as a readable text table of the columns a user
// looks at first. And the naming of the table's rows from the main window,
// which the frame commands are given as their RowNamer.
#ifndef LMT_CLI_FRAME_OUTPUT_H_
#define LMT_CLI_FRAME_OUTPUT_H_

#include <ostream>
#include <string>
#include <string_view>

#include "core/windows.h"
#include "frames/frame_commands.h"
#include "frames/frame_table.h"

namespace lmt::cli {

// {"frames": [ROW, ...]} and a line break; ROW has every column, named by
// its fixed name ("№", "Layout Name", ..., "Height").
void WriteFramesJson(const frames::FrameTable& table, std::ostream& out);

// A JSON string literal of UTF-8 `text`, quotes included.
std::string JsonString(std::string_view text);

// One line per frame with number, layout name, kind, block name,
// attribute, extents and size, under a header line; then the count.
void WriteFramesText(const frames::FrameTable& table, std::ostream& out);

// Names every row from the main window's naming template and free texts,
// read when it runs.
frames::RowNamer MainWindowNamer(core::Windows& windows);

}  // namespace lmt::cli

#endif  // LMT_CLI_FRAME_OUTPUT_H_

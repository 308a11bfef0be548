// The temporary highlighting of found frames: an outline through each
// frame's four corners and its row number, drawn in model space on layer
// "AViewport", and its removal.
//
// Every object drawn carries extended data of the application "LAYOMAT_MARK",
// and removal erases exactly the model-space objects that carry it. So the
// highlighting can be removed after the table was reordered or emptied, or
// the drawing saved and opened again, and never takes a user's object on
// that layer with it.
//
// Failures: a host call refused for one frame or object skips it and the walk
// goes on; the skips come back in the report.
#ifndef LMT_UTILITIES_FRAME_MARKS_H_
#define LMT_UTILITIES_FRAME_MARKS_H_

#include <cstdint>
#include <string_view>

#include "frames/frame_table.h"
#include "frames/highlight_mark.h"
#include "host/document.h"
#include "host/skip_log.h"

namespace lmt::utilities {

inline constexpr std::string_view kMarkLayer = "AViewport";
using frames::kMarkApplication;
// The extended data each drawn object carries: this word and the row's
// number text.
inline constexpr std::string_view kMarkOutline = "outline";
inline constexpr std::string_view kMarkNumber = "number";
// The red of the colour index, so the marks stand out from the frames.
inline constexpr int32_t kMarkColor = 1;

struct MarkReport {
  int32_t frames = 0;  // rows outlined
  int32_t drawn = 0;   // objects drawn (outlines and numbers)
  int32_t erased = 0;  // marked objects erased
  host::SkipLog skips;
};

// Removes any earlier highlighting, then outlines every data row of `table`
// that has four numeric corners and writes its "№" text at the frame's
// centre, a tenth of the frame's shorter side high. Rows without corners
// (the blank rows of a reset table) are passed over.
MarkReport HighlightFrames(host::Document& document,
                           const frames::FrameTable& table);

// Erases every model-space object that carries the mark and nothing else.
MarkReport RemoveHighlighting(host::Document& document);

}  // namespace lmt::utilities

#endif  // LMT_UTILITIES_FRAME_MARKS_H_

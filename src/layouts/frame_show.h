// Showing one frame of the table: the model view of the drawing zoomed onto
// the frame of a row, the frame upright and whole with a margin around it.
//
// The view's twist follows the frame: a block or external reference is
// turned back by its own rotation (a portrait sheet stays portrait), any
// other frame gets its longer side laid horizontal, as the named views do.
// The view's height fits the turned frame in both directions at the
// screen's aspect ratio.
//
// Host use: the tiled model viewport (Document::ActiveViewport), its
// centre, height and twist, assigned back with SetActiveViewport; model
// space is made current first. A host that cannot twist its view shows the
// whole frame in the view's present twist and the refusal is recorded.
#ifndef LMT_LAYOUTS_FRAME_SHOW_H_
#define LMT_LAYOUTS_FRAME_SHOW_H_

#include <optional>

#include "core/status.h"
#include "frames/frame_table.h"
#include "host/document.h"
#include "host/skip_log.h"

namespace lmt::layouts {

// The part of model space to show: `center` at the middle, `width` by
// `height` model units across the screen's axes, turned by `twist`
// radians in [0, 2 pi).
struct FrameShot {
  host::Point center;
  double width = 0;
  double height = 0;
  double twist = 0;
};

// The margin on every side, as a share of the frame's larger side.
inline constexpr double kShowMargin = 0.05;

// The shot of data row `row` with its margin, the frame upright; nullopt
// when a corner is not a number. REQUIRES: 0 < row < table.row_count().
std::optional<FrameShot> FrameShotOf(const frames::FrameTable& table, int row);
// The same for a view that keeps `twist`: the frame as it lies in it.
std::optional<FrameShot> FrameShotAt(const frames::FrameTable& table, int row,
                                     double twist);

// Zooms the model view of `document` onto the frame of `row` (1..).
// InvalidArgument for a row that is not in the table or has no corners;
// a host failure to reach the viewport comes back as is; refusals that
// still leave the frame shown (model space, twist) go to `skips`.
Status ShowFrame(host::Document& document, const frames::FrameTable& table,
                 int row, host::SkipLog& skips);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_FRAME_SHOW_H_

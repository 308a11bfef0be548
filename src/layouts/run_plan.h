// The numbers of a whole creation run, worked out before the host is
// touched: for each frame row from the top, the layout name, the viewport
// plan and the values of the sheet placeholders. The host loop walks this
// list and makes layouts, viewports and texts from it.
//
// Pure: nothing here reads a window or calls a host.
#ifndef LMT_LAYOUTS_RUN_PLAN_H_
#define LMT_LAYOUTS_RUN_PLAN_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/frame_table.h"
#include "layouts/creation_parameters.h"
#include "layouts/sheet_texts.h"
#include "layouts/viewport_geometry.h"

namespace lmt::layouts {

struct FramePlan {
  int row = 0;
  std::string layout_name;
  // Nullopt when the row's corners cannot be read or no viewport can be
  // made for it (see PlanViewport): the layout is still made, without a
  // viewport, as a host that refuses the viewport would leave it.
  std::optional<ViewportPlan> viewport;
  // "##1" .. "##4" and "##N" for this layout. The scale is the run's
  // current one: this frame's, or the one before when this frame has none;
  // the sheet count is the number of entries of the plan.
  SheetValues sheet;
};

// One entry per data row from row 1 down, ending before the first row
// whose "Layout Name" is empty (the rows after it are not made). The scale
// taken from a frame's width is carried from frame to frame, starting from
// the fixed scale, so a frame whose width gives no scale keeps the one
// before it.
std::vector<FramePlan> PlanRun(const frames::FrameTable& table,
                               const CreationParameters& params,
                               std::string_view drawing_name);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_RUN_PLAN_H_

// Erasing from model space everything a chosen paper-space viewport does not
// show (window OknoFunctionDelVneViewport, button Command_SelViewpost). The
// user picks viewports on a layout; the first picked viewport is entered,
// the user coordinate system is aligned with its view, and its outline,
// carried into model space around the view centre, becomes a crossing
// window. What the window touches is kept whole; every other model-space
// object is erased. Paper-space objects are never touched.
//
// Only one viewport is ever processed, however many were picked. The
// viewport is left display-unlocked and the UCS aligned with its view,
// whatever they were before. The command sets no undo mark: on a CAD program
// each change is undone on its own; the embedded DXF host has no undo at all
// (the command line writes to a new file instead).
//
// Failures: a picked object the host cannot read is passed over. When the
// host refuses a step that decides what to keep (entering the viewport, the
// view centre, the window selection, adding to or removing from the sets),
// that viewport is given up and nothing is erased for it, rather than erasing
// objects that should have been kept. Every such refusal is recorded.
#ifndef LMT_UTILITIES_DELETE_OUTSIDE_VIEWPORT_H_
#define LMT_UTILITIES_DELETE_OUTSIDE_VIEWPORT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "core/status.h"
#include "host/outcome.h"
#include "host/point.h"
#include "host/session.h"
#include "host/skip_log.h"

namespace lmt::utilities {

// The command text that aligns the UCS with the current view.
inline constexpr std::string_view kViewUcsCommand = "_UCS\r_view\r";

// A viewport's window in model space, in the coordinates of the view-aligned
// UCS: corner1 holds the smaller x and y.
struct ModelWindow {
  host::Point corner1;
  host::Point corner2;

  bool operator==(const ModelWindow&) const = default;
};

// The viewport's paper outline `width` x `height` carried into model space
// at `custom_scale` paper units per model unit, centred on `view_center`
// (VIEWCTR inside the viewport). The corners take z from `z1` and `z2`.
// kInvalidArgument when the scale is not positive.
Result<ModelWindow> ViewportModelWindow(const host::Point& view_center,
                                        double width, double height,
                                        double custom_scale, double z1,
                                        double z2);

struct DeleteOutsideReport {
  // Handle of the viewport whose window decided; empty when none did.
  std::string viewport;
  ModelWindow window;
  int32_t kept = 0;    // objects the window selection found
  int32_t erased = 0;  // model-space objects erased
  host::SkipLog skips;
};

// Command_SelViewpost. Connects (kNotConnected when that fails) and brings
// the CAD program forward; refuses in the model tab (TILEMODE 1) with
// MSG0018 and without a picked viewport with MSG0009 (both critical,
// kRefused). Otherwise erases outside the first picked viewport that could
// be processed and ends with "Ok" (information, titled with the add-in
// window's title), also when no picked object was a usable viewport.
// `report`, when given, receives what was done.
host::Outcome DeleteOutsideViewport(host::Session& session,
                                    DeleteOutsideReport* report = nullptr);

}  // namespace lmt::utilities

#endif  // LMT_UTILITIES_DELETE_OUTSIDE_VIEWPORT_H_

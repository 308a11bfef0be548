// Where the viewport of one frame goes and what it shows: the frame's
// centre and view angle, the scale, the viewport's place and size on the
// sheet, the view it holds (target, view centre, view height, twist), and
// the same for the optional copy viewport. A host stores these numbers; the
// per-frame loop over the host sits on top of this.
//
// Conventions. Model points are world coordinates of model space (plan
// view, z = 0 left out); paper points are paper-space coordinates; angles
// are radians, counter-clockwise. A viewport with twist t shows a model
// direction at angle a on the sheet at a + t, so the view angle phi of the
// frame (the direction laid horizontal on the sheet) gives t = -phi.
//
// Limits: no host calls, no rounding for display; the frame is expected to
// be a rectangle (any four points work, but only a rectangle fills its
// viewport exactly).
#ifndef LMT_LAYOUTS_VIEWPORT_GEOMETRY_H_
#define LMT_LAYOUTS_VIEWPORT_GEOMETRY_H_

#include <optional>
#include <string>

#include "frames/frame_record.h"
#include "frames/frame_table.h"
#include "layouts/creation_parameters.h"

namespace lmt::layouts {

// The values of one frame row the viewport needs.
struct FrameRow {
  frames::Quad corners;  // model space, in the order read
  frames::FrameKind kind = frames::FrameKind::kNone;
  double angle = 0;  // the reference's rotation, radians
};

// The corners, kind and angle of a data row's record; nullopt when a corner
// cell is not a number. REQUIRES: 0 < row < table.row_count().
std::optional<FrameRow> ReadFrameRow(const frames::FrameTable& table, int row);

// The midpoint of the diagonal from corner 1 to corner 3.
frames::Point FrameCentre(const frames::Quad& corners);

// The standard builder's angle for the side chosen by `orientation`
// (corner 1 to 2 for kHorizontal, corner 2 to 3 for kVertical), with dx, dy
// its differences and a = atan(|dy| / |dx|):
//   dx >= 0, dy >= 0: a;   dx < 0, dy > 0: 2 pi - a;
//   dx >= 0, dy < 0: 2 pi - a;   dx < 0, dy < 0: a;
//   dx = 0, or dx < 0 with dy = 0: 0.
// The side's direction counts modulo a half turn, so a frame turned by 180
// degrees gets the same view as an upright one. Note that a vertical side
// (dx = 0) gives 0, not a quarter turn.
double StandardViewAngle(const frames::Quad& corners,
                         FrameOrientation orientation);

// The extended builder's angle. It looks at the lengths of the frame's
// sides, not at the order of its corners: with kHorizontal the frame's
// longer side is laid horizontal on the sheet (a landscape viewport), with
// kVertical its shorter side (a portrait viewport); either way the
// viewport's longer side is the frame's longer side. The side's direction
// counts modulo a half turn like the standard rule and is taken in
// (-pi/2, pi/2], returned in [0, 2 pi): a side pointing straight up or down
// gives pi/2, so a landscape frame turned by exactly 90 degrees still makes
// a landscape viewport (the standard rule gives 0 there). With sides of
// equal length the side from corner 1 to 2 counts as the longer one.
double ExtendedViewAngle(const frames::Quad& corners,
                         FrameOrientation orientation);

// The view angle of the chosen rule.
double ViewAngle(const frames::Quad& corners, FrameOrientation orientation,
                 RotationRule rule);

// The block angle beta: the row's "Angle" when `rotate_by_block` is set and
// "Typ" is "Block" or "XRef" (any case), else 0.
double BlockAngle(const FrameRow& row, bool rotate_by_block);

// The frame's extents along the axes of a view turned by `view_angle`:
// width along the direction view_angle, height across it. For a rectangle
// whose side runs along view_angle these are its side lengths.
struct FrameExtent {
  double width = 0;
  double height = 0;
};
FrameExtent ExtentAlong(const frames::Quad& corners, double view_angle);

// A paper-space viewport and the view it holds, as a host stores it (the
// DXF group codes in brackets).
struct ViewportView {
  frames::Point centre;       // paper (10, 20)
  double width = 0;           // paper (40)
  double height = 0;          // paper (41)
  frames::Point target;       // model; the origin of the view's axes (17, 27)
  frames::Point view_centre;  // in the view's own rotated axes (12, 22)
  double view_height = 0;     // model units shown over `height` (45)
  double twist = 0;           // radians in [0, 2 pi) (51, in degrees)

  // Paper units per model unit: height / view_height (the host's
  // CustomScale).
  double scale() const { return height / view_height; }
};

// Maps a model point onto the sheet through the viewport, and back.
// REQUIRES: view.height and view.view_height are not 0.
frames::Point ModelToPaper(const ViewportView& view, frames::Point model);
frames::Point PaperToModel(const ViewportView& view, frames::Point paper);

// The model point shown at the viewport's centre:
// target + R(-twist) view_centre.
frames::Point ShownAtCentre(const ViewportView& view);

// The same view expressed with another target (a host that sets the
// target and not the view centre): the view centre moves so that every
// model point keeps its place on the sheet.
ViewportView WithTarget(const ViewportView& view, frames::Point target);

// The scale s of one frame: the fixed scale, or L / W with W the frame's
// extent along its view angle; a frame of zero width keeps `previous`.
double FrameScale(const FrameRow& row, const CreationParameters& params,
                  double previous);

// Everything one frame's viewports need.
struct ViewportPlan {
  frames::Point frame_centre;  // C, model
  double view_angle = 0;       // theta; the twist is -theta
  double block_angle = 0;      // beta, see below
  double scale = 0;            // s, paper units per model unit
  FrameExtent frame;           // W and H, model units
  // The viewport: centre c = corner + (W s / 2, H s / 2), taken before the
  // increment, then W s + i by H s + i, so the increment widens it by i / 2
  // on every side around the same centre. Its view shows C at c at scale
  // s: target at the model origin, view centre R(-theta) C, view height
  // (H s + i) / s. With i = 0 the frame's corners lie on its border.
  ViewportView viewport;
  // The copy viewport, when asked for and possible (see PlanViewport).
  std::optional<ViewportView> copy;
  // How a host that copies the viewport, resizes the copy about its centre
  // and then moves it, moves it: from c - (copy w / 2, copy h / 2) to the
  // copy corner.
  frames::Point copy_move_from;
  frames::Point copy_move_to;
};

// Plans the viewports of one frame. `previous_scale` is the scale of the
// frame before (the fixed scale for the first frame): with the scale taken
// from the width, a frame of zero width keeps it.
//
// The view angle theta comes from the chosen rule; the twist is -theta
// whatever the block angle. The block angle beta is reported for a host
// that rotates its current view centre by it; the view computed here
// already shows the frame centre at the viewport centre, with or without
// it. W and H are measured along the view's own axes, so that the frame
// fills its viewport whatever angle the rule gives (for a rectangle laid
// along theta they are its sides).
//
// Nullopt when no viewport can be made: a scale that is not positive, or a
// width or height (after the increment) that is not positive. The copy is
// left out when the copy check is clear, its scale is not positive or its
// size is not positive; it shows the frame centre at its own centre at
// scale s2 with the same twist.
std::optional<ViewportPlan> PlanViewport(const FrameRow& row,
                                         const CreationParameters& params,
                                         double previous_scale);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_VIEWPORT_GEOMETRY_H_

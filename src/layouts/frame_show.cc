#include "layouts/frame_show.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "frames/frame_record.h"
#include "layouts/viewport_geometry.h"

namespace lmt::layouts {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

double Normalized(double angle) {
  const double a = std::fmod(std::fmod(angle, kTurn) + kTurn, kTurn);
  // A float just below a full turn is no turn at all.
  return kTurn - a < 1e-12 ? 0 : a;
}

FrameShot ShotAlong(const frames::FrameRecord& frame, double view_angle) {
  const frames::Quad& corners = *frame.corners;
  const FrameExtent extent = ExtentAlong(corners, view_angle);
  const double margin =
      kShowMargin * std::max(std::abs(extent.width), std::abs(extent.height));
  const frames::Point centre = FrameCentre(corners);
  FrameShot shot;
  shot.center = host::Point{centre.x, centre.y, 0};
  shot.width = std::abs(extent.width) + 2 * margin;
  shot.height = std::abs(extent.height) + 2 * margin;
  shot.twist = Normalized(-view_angle);
  return shot;
}

}  // namespace

std::optional<FrameShot> FrameShotOf(const frames::FrameTable& table, int row) {
  const frames::FrameRecord frame = frames::ReadRecord(table, row);
  if (!frame.corners) return std::nullopt;
  return ShotAlong(
      frame,
      frame.is_reference()
          ? Normalized(frame.angle)
          : ExtendedViewAngle(*frame.corners, FrameOrientation::kHorizontal));
}

std::optional<FrameShot> FrameShotAt(const frames::FrameTable& table, int row,
                                     double twist) {
  const frames::FrameRecord frame = frames::ReadRecord(table, row);
  if (!frame.corners) return std::nullopt;
  return ShotAlong(frame, Normalized(-twist));
}

Status ShowFrame(host::Document& document, const frames::FrameTable& table,
                 int row, host::SkipLog& skips) {
  if (row < 1 || row > table.last_row()) {
    return Status::InvalidArgument("row " + std::to_string(row) +
                                   " is not in the frame table (1.." +
                                   std::to_string(table.last_row()) + ")");
  }
  const std::string number = table.Cell(row, frames::Column::kNumber);
  const std::string object = number.empty() ? std::to_string(row) : number;
  std::optional<FrameShot> shot = FrameShotOf(table, row);
  if (!shot) {
    return Status::InvalidArgument("row " + std::to_string(row) +
                                   " has no frame corners");
  }
  // The tiled view is seen only while model space is current.
  skips.Record(object, "model space",
               document.SetActiveSpace(host::Space::kModelSpace));
  Result<host::ViewportPtr> viewport = document.ActiveViewport();
  if (!viewport.ok()) return viewport.status();
  host::Viewport& view = **viewport;
  if (!skips.Record(object, "view twist", view.SetTwist(shot->twist))) {
    shot = FrameShotAt(table, row, view.Twist().value_or(0));
  }
  // Fit the width too: the screen shows Width / Height times the height.
  double aspect = 1;
  Result<double> width = view.Width();
  Result<double> height = view.Height();
  if (width.ok() && height.ok() && *width > 0 && *height > 0) {
    aspect = *width / *height;
  }
  if (Status s = view.SetCenter(shot->center); !s.ok()) return s;
  if (Status s = view.SetHeight(std::max(shot->height, shot->width / aspect));
      !s.ok()) {
    return s;
  }
  return document.SetActiveViewport(*viewport);
}

}  // namespace lmt::layouts

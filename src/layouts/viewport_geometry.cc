#include "layouts/viewport_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lmt::layouts {
namespace {

using frames::Point;
using frames::Quad;

constexpr double kPi = std::numbers::pi;

Point Rotate(Point p, double angle) {
  double c = std::cos(angle);
  double s = std::sin(angle);
  return {p.x * c - p.y * s, p.x * s + p.y * c};
}

double NormalizeAngle(double angle) {
  double a = std::fmod(angle, 2 * kPi);
  if (a < 0) a += 2 * kPi;
  // fmod of a value just below 0 can come back as exactly 2 pi.
  if (a >= 2 * kPi) a = 0;
  return a;
}

// The side the orientation picks: corner 1 to 2, or corner 2 to 3.
Point Side(const Quad& q, FrameOrientation orientation) {
  int from = orientation == FrameOrientation::kHorizontal ? 0 : 1;
  return {q[from + 1].x - q[from].x, q[from + 1].y - q[from].y};
}

// A side's direction modulo a half turn, in (-pi/2, pi/2], as [0, 2 pi).
double LineAngle(Point d) {
  if (d.x == 0 && d.y == 0) return 0;
  double a = std::atan2(d.y, d.x);
  if (a <= -kPi / 2) a += kPi;
  if (a > kPi / 2) a -= kPi;
  return NormalizeAngle(a);
}

ViewportView CopyOf(const ViewportView& main, const CreationParameters& p) {
  ViewportView copy = main;
  copy.width = p.copy_width;
  copy.height = p.copy_height;
  copy.centre = {p.copy_corner.x + p.copy_width / 2,
                 p.copy_corner.y + p.copy_height / 2};
  copy.view_height = p.copy_height / p.copy_scale;
  return copy;
}

}  // namespace

std::optional<FrameRow> ReadFrameRow(const frames::FrameTable& table, int row) {
  frames::FrameRecord record = frames::ReadRecord(table, row);
  if (!record.corners) return std::nullopt;
  return FrameRow{*record.corners, record.kind, record.angle};
}

Point FrameCentre(const Quad& q) {
  return {q[0].x + (q[2].x - q[0].x) / 2, q[0].y + (q[2].y - q[0].y) / 2};
}

double StandardViewAngle(const Quad& corners, FrameOrientation orientation) {
  Point d = Side(corners, orientation);
  // The arctangent of |dy| / |dx| fails for a vertical side; the angle then
  // stays 0, as it does for a side pointing straight left.
  if (d.x == 0) return 0;
  double a = std::atan(std::abs(d.y) / std::abs(d.x));
  if (d.x >= 0 && d.y >= 0) return a;
  if (d.x < 0 && d.y > 0) return 2 * kPi - a;
  if (d.x >= 0 && d.y < 0) return 2 * kPi - a;
  if (d.x < 0 && d.y < 0) return a;
  return 0;
}

double ExtendedViewAngle(const Quad& corners, FrameOrientation orientation) {
  Point a = Side(corners, FrameOrientation::kHorizontal);
  Point b = Side(corners, FrameOrientation::kVertical);
  bool a_longer = std::hypot(a.x, a.y) >= std::hypot(b.x, b.y);
  Point longer = a_longer ? a : b;
  Point shorter = a_longer ? b : a;
  return LineAngle(orientation == FrameOrientation::kHorizontal ? longer
                                                                : shorter);
}

double ViewAngle(const Quad& corners, FrameOrientation orientation,
                 RotationRule rule) {
  return rule == RotationRule::kExtended
             ? ExtendedViewAngle(corners, orientation)
             : StandardViewAngle(corners, orientation);
}

double BlockAngle(const FrameRow& row, bool rotate_by_block) {
  if (!rotate_by_block) return 0;
  const bool reference = row.kind == frames::FrameKind::kBlock ||
                         row.kind == frames::FrameKind::kXRef;
  return reference ? row.angle : 0;
}

FrameExtent ExtentAlong(const Quad& corners, double view_angle) {
  double lo_u = 0, hi_u = 0, lo_v = 0, hi_v = 0;
  for (size_t i = 0; i < corners.size(); ++i) {
    // The frame in the view's axes: turned back by the view angle.
    Point p = Rotate(corners[i], -view_angle);
    if (i == 0) {
      lo_u = hi_u = p.x;
      lo_v = hi_v = p.y;
      continue;
    }
    lo_u = std::min(lo_u, p.x);
    hi_u = std::max(hi_u, p.x);
    lo_v = std::min(lo_v, p.y);
    hi_v = std::max(hi_v, p.y);
  }
  return {hi_u - lo_u, hi_v - lo_v};
}

Point ModelToPaper(const ViewportView& v, Point model) {
  Point d = Rotate({model.x - v.target.x, model.y - v.target.y}, v.twist);
  double s = v.height / v.view_height;
  return {v.centre.x + s * (d.x - v.view_centre.x),
          v.centre.y + s * (d.y - v.view_centre.y)};
}

Point PaperToModel(const ViewportView& v, Point paper) {
  double per_paper = v.view_height / v.height;
  Point d{v.view_centre.x + (paper.x - v.centre.x) * per_paper,
          v.view_centre.y + (paper.y - v.centre.y) * per_paper};
  Point m = Rotate(d, -v.twist);
  return {v.target.x + m.x, v.target.y + m.y};
}

Point ShownAtCentre(const ViewportView& v) {
  Point m = Rotate(v.view_centre, -v.twist);
  return {v.target.x + m.x, v.target.y + m.y};
}

ViewportView WithTarget(const ViewportView& view, Point target) {
  ViewportView moved = view;
  Point shift =
      Rotate({view.target.x - target.x, view.target.y - target.y}, view.twist);
  moved.target = target;
  moved.view_centre = {view.view_centre.x + shift.x,
                       view.view_centre.y + shift.y};
  return moved;
}

double FrameScale(const FrameRow& row, const CreationParameters& p,
                  double previous) {
  if (p.scale_mode == ScaleMode::kFixed) return p.scale;
  double angle = ViewAngle(row.corners, p.orientation, p.rotation_rule);
  return DivideOrKeep(p.frame_paper_length,
                      ExtentAlong(row.corners, angle).width, previous);
}

std::optional<ViewportPlan> PlanViewport(const FrameRow& row,
                                         const CreationParameters& p,
                                         double previous_scale) {
  ViewportPlan plan;
  plan.frame_centre = FrameCentre(row.corners);
  plan.view_angle = ViewAngle(row.corners, p.orientation, p.rotation_rule);
  plan.block_angle = BlockAngle(row, p.rotate_by_block);
  plan.frame = ExtentAlong(row.corners, plan.view_angle);
  plan.scale = FrameScale(row, p, previous_scale);
  if (!(plan.scale > 0) || !std::isfinite(plan.scale)) return std::nullopt;

  double w = plan.frame.width * plan.scale;
  double h = plan.frame.height * plan.scale;
  ViewportView& vp = plan.viewport;
  vp.centre = {p.corner.x + w / 2, p.corner.y + h / 2};
  vp.width = w + p.increment;
  vp.height = h + p.increment;
  if (!(vp.width > 0) || !(vp.height > 0)) return std::nullopt;
  vp.twist = NormalizeAngle(-plan.view_angle);
  vp.target = {0, 0};
  vp.view_centre = Rotate(plan.frame_centre, vp.twist);
  vp.view_height = vp.height / plan.scale;

  plan.copy_move_from = {vp.centre.x - p.copy_width / 2,
                         vp.centre.y - p.copy_height / 2};
  plan.copy_move_to = p.copy_corner;
  if (p.copy_viewport && p.copy_scale > 0 && p.copy_width > 0 &&
      p.copy_height > 0) {
    plan.copy = CopyOf(vp, p);
  }
  return plan;
}

}  // namespace lmt::layouts

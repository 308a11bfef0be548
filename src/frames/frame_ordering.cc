#include "frames/frame_ordering.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "core/check.h"

namespace lmt::frames {
namespace {

double Length(double dx, double dy) { return std::sqrt(dx * dx + dy * dy); }

// How closely a side runs along the unit direction (ux, uy): |cos| of the
// angle between them, 0 for a side of no length.
double Alignment(Point from, Point to, double ux, double uy) {
  double dx = to.x - from.x;
  double dy = to.y - from.y;
  double len = Length(dx, dy);
  return len == 0 ? 0 : std::fabs(dx * ux + dy * uy) / len;
}

// Minus the number in a cell, as text; a cell that is not a number gives an
// empty key (it sorts after every number).
std::string NegatedKey(const std::string& cell) {
  std::optional<double> n = ParseNumber(cell);
  return n ? FormatNumber(-*n) : std::string();
}

}  // namespace

double FormatRound(double value) {
  if (!std::isfinite(value)) return value;
  char buf[64];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value,
                                 std::chars_format::scientific, 14);
  LMT_CHECK(ec == std::errc());
  double at15 = 0;
  auto [pend, pec] = std::from_chars(buf, end, at15);
  LMT_CHECK(pec == std::errc() && pend == end);
  return std::round(at15);  // half away from zero
}

double RoundSortCoordinate(double value, Rounding rounding) {
  switch (rounding) {
    case Rounding::kWhole:
      return FormatRound(value);
    case Rounding::kOne:
      return FormatRound(value / 1) * 1;
    case Rounding::kTen:
      return FormatRound(value / 10) * 10;
    case Rounding::kHundred:
      return FormatRound(value / 100) * 100;
  }
  LMT_CHECK(false);
}

Extents ExtentsOf(const Quad& corners) {
  Extents e{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
  for (const Point& p : corners) {
    e.min_x = std::min(e.min_x, p.x);
    e.min_y = std::min(e.min_y, p.y);
    e.max_x = std::max(e.max_x, p.x);
    e.max_y = std::max(e.max_y, p.y);
  }
  return e;
}

Point SortPointOf(const Quad& corners, SortPoint sort_point) {
  Extents e = ExtentsOf(corners);
  switch (sort_point) {
    case SortPoint::kCentre:
      return {(e.min_x + e.max_x) / 2, (e.min_y + e.max_y) / 2};
    case SortPoint::kLowerLeft:
      return {e.min_x, e.min_y};
    case SortPoint::kUpperLeft:
      return {e.min_x, e.max_y};
    case SortPoint::kUpperRight:
      return {e.max_x, e.max_y};
    case SortPoint::kLowerRight:
      return {e.max_x, e.min_y};
  }
  LMT_CHECK(false);
}

FrameSize SizeOf(const Quad& corners, double angle) {
  double ux = std::cos(angle);
  double uy = std::sin(angle);
  double side_a =
      Length(corners[1].x - corners[0].x, corners[1].y - corners[0].y);
  double side_b =
      Length(corners[2].x - corners[1].x, corners[2].y - corners[1].y);
  // At exactly 45 degrees the first side is the width.
  if (Alignment(corners[0], corners[1], ux, uy) >=
      Alignment(corners[1], corners[2], ux, uy)) {
    return {side_a, side_b};
  }
  return {side_b, side_a};
}

std::optional<PolylinePosition> ProjectOntoPolyline(
    const std::vector<Point>& polyline, Point p) {
  if (polyline.empty()) return std::nullopt;
  PolylinePosition best{0, polyline[0]};
  double best_d2 = (p.x - polyline[0].x) * (p.x - polyline[0].x) +
                   (p.y - polyline[0].y) * (p.y - polyline[0].y);
  double along = 0;
  for (size_t i = 0; i + 1 < polyline.size(); ++i) {
    Point a = polyline[i];
    Point b = polyline[i + 1];
    double dx = b.x - a.x;
    double dy = b.y - a.y;
    double len2 = dx * dx + dy * dy;
    double t = 0;
    if (len2 > 0) {
      t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / len2, 0.0, 1.0);
    }
    Point q{a.x + t * dx, a.y + t * dy};
    double d2 = (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y);
    double len = std::sqrt(len2);
    if (d2 < best_d2) {
      best_d2 = d2;
      best = {along + t * len, q};
    }
    along += len;
  }
  return best;
}

FrameMeasures MeasureFrame(const Quad& corners, double angle,
                           const MeasureOptions& options) {
  FrameMeasures m;
  Point raw = SortPointOf(corners, options.sort_point);
  m.sort = {RoundSortCoordinate(raw.x, options.rounding),
            RoundSortCoordinate(raw.y, options.rounding)};
  m.dist = Length(m.sort.x - options.start.x, m.sort.y - options.start.y);
  m.poly = ProjectOntoPolyline(options.direction, raw);
  m.extents = ExtentsOf(corners);
  m.size = SizeOf(corners, angle);
  return m;
}

void WriteMeasures(FrameTable& table, int row, const FrameMeasures& m) {
  LMT_CHECK(row > 0 && row < table.row_count());
  table.SetNumber(row, Column::kSortX, m.sort.x);
  table.SetNumber(row, Column::kSortY, m.sort.y);
  table.SetNumber(row, Column::kDist, m.dist);
  if (m.poly) {
    table.SetNumber(row, Column::kPoly, m.poly->distance);
    table.SetNumber(row, Column::kPolyX, m.poly->point.x);
    table.SetNumber(row, Column::kPolyY, m.poly->point.y);
  } else {
    table.SetCell(row, Column::kPoly, "");
    table.SetCell(row, Column::kPolyX, "");
    table.SetCell(row, Column::kPolyY, "");
  }
  table.SetNumber(row, Column::kMaxX, m.extents.max_x);
  table.SetNumber(row, Column::kMaxY, m.extents.max_y);
  table.SetNumber(row, Column::kMinX, m.extents.min_x);
  table.SetNumber(row, Column::kMinY, m.extents.min_y);
  table.SetNumber(row, Column::kWidth, m.size.width);
  table.SetNumber(row, Column::kHeight, m.size.height);
}

void OrderTable(FrameTable& table, SortOrder order) {
  if (table.row_count() < 2 || table.Cell(1, Column::kId).empty()) return;
  table.SortRows([order](const FrameTable& t, int r) -> FrameTable::SortKeys {
    const std::string& x = t.Cell(r, Column::kSortX);
    const std::string& y = t.Cell(r, Column::kSortY);
    switch (order) {
      case SortOrder::kColumnsTopDown:
        return {x, NegatedKey(y)};
      case SortOrder::kColumnsBottomUp:
        return {x, y};
      case SortOrder::kRowsTopDown:
        return {NegatedKey(y), x};
      case SortOrder::kRowsBottomUp:
        return {y, x};
      case SortOrder::kStartPoint:
        return {t.Cell(r, Column::kDist)};
      case SortOrder::kAttribute:
        return {t.Cell(r, Column::kAttribute), t.Cell(r, Column::kAttribute)};
      case SortOrder::kPolyline:
        return {t.Cell(r, Column::kPoly)};
    }
    LMT_CHECK(false);
  });
  table.Renumber();
}

}  // namespace lmt::frames

// Ordering of the frame table: the measures each frame row carries for it
// (sort point, rounded sort coordinates, distance from the start point,
// position along a direction polyline, extents, true width and height) and
// the seven sort options that rearrange the rows by them.
//
// Pure geometry on values passed in: reading the options from the windows
// and picking the start point and the direction polyline belong to the
// search. Coordinates are model-space world coordinates.
#ifndef LMT_FRAMES_FRAME_ORDERING_H_
#define LMT_FRAMES_FRAME_ORDERING_H_

#include <optional>
#include <vector>

#include "frames/frame_table.h"

namespace lmt::frames {

// `Option_SortirovkaSpisok`, by index.
enum class SortOrder : int {
  kColumnsTopDown = 0,   // SortX, then -SortY
  kColumnsBottomUp = 1,  // SortX, then SortY
  kRowsTopDown = 2,      // -SortY, then SortX
  kRowsBottomUp = 3,     // SortY, then SortX
  kStartPoint = 4,       // "By Start point": Dist
  kAttribute = 5,        // "By Attribute Value"
  kPolyline = 6,         // "By Polyline": Poly
};

// `OptionOkruglenie0`..3: the step SortX and SortY are rounded to.
// kWhole and kOne give the same result; both choices exist on purpose.
enum class Rounding : int { kWhole = 0, kOne = 1, kTen = 2, kHundred = 3 };

// `Option_SortPoint`: which point of the frame gives SortX/SortY. The
// corners are those of the frame's extents, so that the choice means the
// same on a rotated frame whatever corner its outline starts from; they go
// clockwise from the lower left as a user reads a sheet: lower left (the
// "Angle" option), upper left, upper right, lower right.
enum class SortPoint : int {
  kCentre = 0,
  kLowerLeft = 1,  // "Angle"
  kUpperLeft = 2,
  kUpperRight = 3,
  kLowerRight = 4,
};

struct Extents {
  double min_x = 0;
  double min_y = 0;
  double max_x = 0;
  double max_y = 0;
};

struct FrameSize {
  double width = 0;
  double height = 0;
};

// Where a point falls on a direction polyline.
struct PolylinePosition {
  double distance = 0;  // along the polyline from its first vertex
  Point point;          // the polyline's point nearest to the frame
};

// The format pattern "0": rounds half away from zero (2.5 -> 3,
// -2.5 -> -3). Like the format routine it imitates, it first takes the
// value at 15 significant digits, so binary noise such as 41.49999999999999
// (the computed centre of a frame from 0 to 83) counts as 41.5 and rounds up.
double FormatRound(double value);

// SortX/SortY rounding: (v / step) formatted with "0", times step.
// 419.6 -> 420 and 414.9 -> 410 with kTen.
double RoundSortCoordinate(double value, Rounding rounding);

Extents ExtentsOf(const Quad& corners);
Point SortPointOf(const Quad& corners, SortPoint sort_point);

// The frame's own side lengths, so a rotated frame keeps its true size:
// the width is the side of the outline (corner 1 to 2, or 2 to 3) that runs
// closer to the direction `angle` (radians; 0 for a polyline, the
// reference's rotation for a block), the height the other side. Corners
// taken from a bounding box are axis-aligned already: pass 0 for them.
FrameSize SizeOf(const Quad& corners, double angle);

// The point of `polyline` nearest to `p` and its distance along the
// polyline; of equally near points the first along the polyline wins.
// Nullopt for an empty polyline.
std::optional<PolylinePosition> ProjectOntoPolyline(
    const std::vector<Point>& polyline, Point p);

struct MeasureOptions {
  Rounding rounding = Rounding::kWhole;
  SortPoint sort_point = SortPoint::kCentre;
  Point start;                   // the sort start point; (0, 0) if cancelled
  std::vector<Point> direction;  // the direction polyline; empty if none
};

// Everything the frame row holds besides corners, identity and names.
struct FrameMeasures {
  Point sort;  // rounded SortX, SortY
  // From the start point to the rounded sort point: the column is computed
  // after SortX/SortY and so agrees with what the table shows.
  double dist = 0;
  // The unrounded sort point projected onto the direction polyline, so the
  // sort point option acts on this ordering too. Nullopt without one.
  std::optional<PolylinePosition> poly;
  Extents extents;  // of the four corners: the frame, not its attributes
  FrameSize size;
};

FrameMeasures MeasureFrame(const Quad& corners, double angle,
                           const MeasureOptions& options);

// Writes SortX, SortY, Dist, Poly, PolyX, PolyY (empty without a direction
// polyline), MaxX, MaxY, MinX, MinY, Width and Height of `row`.
// REQUIRES: 0 < row < table.row_count().
void WriteMeasures(FrameTable& table, int row, const FrameMeasures& measures);

// Orders the data rows by `order` (stable, the grid's generic comparison)
// and renumbers them. Does nothing when the "ID" cell of row 1 is empty,
// that is when no search has filled the table.
void OrderTable(FrameTable& table, SortOrder order);

}  // namespace lmt::frames

#endif  // LMT_FRAMES_FRAME_ORDERING_H_

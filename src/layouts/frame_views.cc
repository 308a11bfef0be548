#include "layouts/frame_views.h"

#include <numbers>

#include "frames/frame_record.h"
#include "layouts/creation_parameters.h"
#include "layouts/viewport_geometry.h"

namespace lmt::layouts {

std::optional<host::NamedView> FrameView(const frames::FrameTable& table,
                                         int row) {
  const frames::FrameRecord frame = frames::ReadRecord(table, row);
  if (frame.layout_name.empty() || !frame.corners) return std::nullopt;
  const frames::Quad& corners = *frame.corners;
  const double angle =
      ExtendedViewAngle(corners, FrameOrientation::kHorizontal);
  const FrameExtent extent = ExtentAlong(corners, angle);
  const frames::Point centre = FrameCentre(corners);
  host::NamedView view;
  view.name = frame.layout_name;
  view.center = host::Point{centre.x, centre.y, 0};
  view.width = extent.width * kViewMargin;
  view.height = extent.height * kViewMargin;
  view.twist = angle == 0 ? 0 : 2 * std::numbers::pi - angle;
  return view;
}

ViewsReport CreateFrameViews(host::Database& database,
                             const frames::FrameTable& table,
                             const ReplaceQuestion& replace) {
  ViewsReport report;
  for (int row = 1; row <= table.last_row(); ++row) {
    std::optional<host::NamedView> view = FrameView(table, row);
    if (!view) {
      // The blank rows of a reset table are no frames; a frame row without
      // a name or corners is worth telling.
      if (!table.Cell(row, frames::Column::kNumber).empty()) {
        report.skips.Add(table.Cell(row, frames::Column::kNumber), "view",
                         Status::InvalidArgument("no layout name or corners"));
      }
      continue;
    }
    Result<bool> exists = database.HasView(view->name);
    if (!exists.ok()) {
      report.skips.Add(view->name, "find view", exists.status());
      continue;
    }
    if (*exists && !replace(view->name)) {
      ++report.kept;
      continue;
    }
    if (Status s = database.SetView(*view); !s.ok()) {
      report.skips.Add(view->name, "view", s);
      continue;
    }
    ++(*exists ? report.replaced : report.made);
    report.names.push_back(view->name);
  }
  return report;
}

}  // namespace lmt::layouts

// Named views per frame: for every row of the frame table a model-space view
// named like the row's layout, that shows the frame whole and level on the
// screen, so the user can go back to any sheet's area by name.
//
// The view's centre is the frame's centre, its size the frame's extent along
// the frame's own sides with a small margin, and its twist lays the frame's
// longer side horizontal (the extended rule of layout creation, so a view
// looks like the sheet's viewport).
//
// Failures: a row without corners or layout name, or a view the host
// refuses, is skipped and the walk goes on; the skips come back in the
// report.
#ifndef LMT_LAYOUTS_FRAME_VIEWS_H_
#define LMT_LAYOUTS_FRAME_VIEWS_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/frame_table.h"
#include "host/document.h"
#include "host/skip_log.h"

namespace lmt::layouts {

// The view shows this much more than the frame, so its border stays visible.
inline constexpr double kViewMargin = 1.05;

// The view of data row `row`; nullopt when its corners are not numbers or
// its layout name is empty.
std::optional<host::NamedView> FrameView(const frames::FrameTable& table,
                                         int row);

struct ViewsReport {
  int32_t made = 0;      // new views
  int32_t replaced = 0;  // views of the same name replaced
  int32_t kept = 0;      // existing views left alone (the answer was no)
  std::vector<std::string> names;  // views made or replaced, in row order
  host::SkipLog skips;
};

// Asked once for each view name that exists already: true replaces it.
using ReplaceQuestion = std::function<bool(std::string_view name)>;

// Makes the views of every data row of `table` in `database`.
ViewsReport CreateFrameViews(host::Database& database,
                             const frames::FrameTable& table,
                             const ReplaceQuestion& replace);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_FRAME_VIEWS_H_

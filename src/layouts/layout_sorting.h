// Sorting the layout tabs: a new left-to-right order of the paper layouts,
// given to them as tab orders 1..n, without touching what they hold.
//
// Orders: by name in natural order ("Sheet-2" before "Sheet-10", letters
// without regard to case), the current order reversed, the frame table's
// order (its "Layout Name" column, top to bottom), or the value of one
// attribute of the title block on each layout. Layouts that the table does
// not name or that have no such attribute keep their current order after
// the others.
//
// Failures: a layout the host refuses to read or renumber is recorded and
// the others go on.
#ifndef LMT_LAYOUTS_LAYOUT_SORTING_H_
#define LMT_LAYOUTS_LAYOUT_SORTING_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/sort_layouts_window.h"
#include "core/status.h"
#include "frames/frame_table.h"
#include "host/document.h"
#include "host/skip_log.h"

namespace lmt::layouts {

enum class LayoutOrder { kName, kReverse, kTable, kAttribute };

struct LayoutSort {
  LayoutOrder order = LayoutOrder::kName;
  std::string tag;  // kAttribute: the attribute's tag
};

// "name", "reverse", "table" or "attribute:TAG"; InvalidArgument otherwise.
Result<LayoutSort> ParseLayoutSort(std::string_view text);

// The order chosen in the sort window; InvalidArgument for the attribute
// order without a tag.
Result<LayoutSort> LayoutSortOf(const core::OknoSortLayouts& window);

// <0, 0, >0: runs of digits compare as numbers, the rest without regard to
// ASCII case.
int CompareNatural(std::string_view a, std::string_view b);

struct SortReport {
  std::vector<std::string> before;  // paper layouts in tab order
  std::vector<std::string> after;
  int32_t moved = 0;  // layouts whose tab order changed
  host::SkipLog skips;
};

// Gives the paper layouts of `database` the tab orders of `sort`; `table`
// is read for LayoutOrder::kTable only.
SortReport SortLayouts(host::Database& database, const LayoutSort& sort,
                       const frames::FrameTable& table);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_LAYOUT_SORTING_H_

// Which layouts `Check_UdalitListi` ("delete the layouts that existed
// before the run") removes: the layouts of the drawing as they were before
// the run's first layout was made, apart from the model tab and the pattern
// layout the run copies from.
//
// The run decides when: after its last layout was made, so that a drawing
// never drops to no paper layout at all, and only when at least one layout
// was made, so that a run that made nothing takes nothing away. Names only;
// the deleting is the host's.
#ifndef LMT_LAYOUTS_LAYOUT_CLEANUP_H_
#define LMT_LAYOUTS_LAYOUT_CLEANUP_H_

#include <string>
#include <string_view>
#include <vector>

namespace lmt::layouts {

// The model tab's layout name.
inline constexpr std::string_view kModelLayout = "Model";

// The names in `before` (the drawing's layouts when the run started, in
// their order) that are to be deleted: each one that is neither "Model" nor
// `pattern` nor one of `created` (all compared ignoring case, so that a
// layout a run made again under an old name is kept). An empty `pattern`
// (mode 0) protects nothing. Nothing when `created` is empty. Duplicates
// in `before` are listed once.
std::vector<std::string> LayoutsToDelete(
    const std::vector<std::string>& before, std::string_view pattern,
    const std::vector<std::string>& created);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_LAYOUT_CLEANUP_H_

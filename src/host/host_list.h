// The main window's host list (Combo_VersiaCAD) as logic: what a click on it
// changes. The release list (Combo_NomerAutoCAD) is usable only for AutoCAD;
// choosing nanoCAD after start-up opens the nanoCAD registration window,
// which the user interface supplies as a callback (its registry and
// process work is Windows-only and lives there).
#ifndef LMT_HOST_HOST_LIST_H_
#define LMT_HOST_HOST_LIST_H_

#include <functional>

namespace lmt::host {

// Handles a click on host-list entry `kind_index`. Returns whether the
// release list is to be enabled (only for index 0). When `started` (start-up
// is complete) and the index is 1, calls `open_nanocad_registration`
// (may be empty: then nothing opens). During start-up the click only decides
// the enabling, so loading a saved choice opens no window.
bool OnHostKindClick(int kind_index, bool started,
                     const std::function<void()>& open_nanocad_registration);

}  // namespace lmt::host

#endif  // LMT_HOST_HOST_LIST_H_

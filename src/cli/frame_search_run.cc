#include "cli/frame_search_run.h"

#include "cli/template_choice.h"
#include "frames/frame_ordering.h"

namespace lmt::cli {

frames::Outcome CaptureAndSearch(CommandContext& context,
                                 EmbeddedSession& embedded,
                                 frames::FrameCommands& commands) {
  const CliOptions& options = context.options;
  if (options.template_handle) {
    Result<std::string> handle = ResolveTemplateHandle(context, embedded);
    if (!handle.ok()) return frames::Outcome::kRefused;
    embedded.user().QueuePick({*handle});
    frames::Outcome captured = commands.GetObrazec();
    if (captured != frames::Outcome::kDone) return frames::Outcome::kRefused;
    context.ReapplyFilterSets();
  }
  // The picks come in this order: the objects on screen, then the
  // direction polyline.
  const int mode =
      options.pick_given ? frames::kSearchOnScreen : frames::kSearchAll;
  if (options.pick_given) embedded.user().QueueWindowPick();
  if (context.addin.windows().okno_lmt.option_sortirovka_spisok.selected() ==
      static_cast<int>(frames::SortOrder::kPolyline)) {
    embedded.user().QueueSortPolylinePick();
  }
  return commands.Search(mode);
}

}  // namespace lmt::cli

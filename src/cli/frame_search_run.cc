#include "cli/frame_search_run.h"

#include "cli/frame_output.h"
#include "cli/template_choice.h"
#include "frames/frame_ordering.h"

namespace lmt::cli {
namespace {

// kRefused when the capture was refused; otherwise the search's outcome.
host::Outcome CaptureAndSearch(CommandContext& context,
                               EmbeddedSession& embedded,
                               frames::FrameState& state) {
  const CliOptions& options = context.options;
  frames::FrameCommands commands(embedded.session(), state,
                                 MainWindowNamer(context.addin.windows()));
  if (options.template_handle) {
    Result<std::string> handle = ResolveTemplateHandle(context, embedded);
    if (!handle.ok()) return host::Outcome::kRefused;
    embedded.user().QueuePick({*handle});
    host::Outcome captured = commands.CaptureTemplate();
    if (captured != host::Outcome::kDone) return host::Outcome::kRefused;
    context.ReapplyFilterSets();
  }
  // The picks come in this order: the objects on screen, then the
  // direction polyline.
  const frames::SearchMode mode = options.pick_given
                                      ? frames::SearchMode::kOnScreen
                                      : frames::SearchMode::kAll;
  if (options.pick_given) embedded.user().QueueWindowPick();
  if (context.addin.windows().okno_lmt.option_sortirovka_spisok.selected() ==
      static_cast<int>(frames::SortOrder::kPolyline)) {
    embedded.user().QueueSortPolylinePick();
  }
  return commands.Search(mode);
}

}  // namespace

AfterOpen PrepareForLayouts(CommandContext& context) {
  return [&context](EmbeddedSession& embedded) {
    return embedded.PrepareForLayouts(context.err, context.options.quiet);
  };
}

OpenedDrawing OpenDrawing(CommandContext& context, const std::string& drawing,
                          const std::string* out, FrameSearch search,
                          const AfterOpen& after_open) {
  OpenedDrawing opened;
  Result<std::unique_ptr<EmbeddedSession>> run =
      out != nullptr ? EmbeddedSession::OpenToSave(context, drawing, *out)
                     : EmbeddedSession::Open(context, drawing);
  if (!run.ok()) {
    opened.exit = ReportFileError(context, run.status());
    return opened;
  }
  opened.embedded = std::move(*run);
  if (after_open) {
    const Status prepared = after_open(*opened.embedded);
    if (!prepared.ok()) {
      opened.exit = ReportFileError(context, prepared);
      return opened;
    }
  }
  if (search == FrameSearch::kNone) return opened;
  opened.outcome = CaptureAndSearch(context, *opened.embedded, opened.state);
  const bool kept = search == FrameSearch::kKeepInterrupted &&
                    opened.outcome == host::Outcome::kInterrupted;
  if (!kept) opened.exit = ExitStatusOf(opened.outcome);
  return opened;
}

}  // namespace lmt::cli

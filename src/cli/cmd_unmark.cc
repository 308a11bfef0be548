// layomat unmark DRAWING -o OUT: removes the highlighting that
// `frames --mark` (or the add-in's highlight button) drew, and only that;
// saves OUT. With nothing to remove, says so, exits 1 and writes nothing.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/frame_search_run.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "utilities/frame_marks.h"

namespace lmt::cli {
namespace {

int RunUnmark(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: unmark expects one DRAWING\n"
                   "Try 'layomat unmark --help'.\n";
    return kExitUsage;
  }
  OpenedDrawing opened = OpenDrawing(context, options.args[0], &*options.output,
                                     FrameSearch::kNone);
  if (opened.exit != kExitOk) return opened.exit;
  const utilities::MarkReport removed =
      utilities::RemoveHighlighting(*opened.embedded->document());
  WriteSkips(removed.skips, context.err);
  if (removed.erased == 0) {
    context.err << "layomat: " << options.args[0]
                << " has no frame highlighting to remove\n";
    return kExitRefused;
  }
  Status saved = opened.embedded->SaveOutput();
  if (!saved.ok()) return ReportFileError(context, saved);
  if (!options.quiet) {
    context.err << "layomat: " << removed.erased
                << " highlighting objects removed\n";
  }
  return kExitOk;
}

const CommandRegistration kUnmark({
    "unmark",
    "layomat unmark DRAWING -o OUT [options]",
    "remove the frame highlighting drawn by frames --mark",
    &RunUnmark,
    kRequiresOutput,
});

}  // namespace
}  // namespace lmt::cli

// layomat show DRAWING --row N -o OUT [frame options]: the frame search as
// `frames` runs it, then the model view zoomed onto the frame of row N
// (layouts/frame_show.h); saves OUT, which opens on that frame.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/frame_search_run.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "layouts/frame_show.h"

namespace lmt::cli {
namespace {

int RunShow(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1 || !options.row) {
    context.err << "layomat: show expects one DRAWING and --row N\n"
                   "Try 'layomat show --help'.\n";
    return kExitUsage;
  }
  OpenedDrawing opened = OpenDrawing(context, options.args[0], &*options.output,
                                     FrameSearch::kRequired);
  if (opened.exit != kExitOk) return opened.exit;
  EmbeddedSession& embedded = *opened.embedded;
  const frames::FrameTable& table = opened.state.table;
  host::SkipLog skips;
  Status shown =
      layouts::ShowFrame(*embedded.document(), table, *options.row, skips);
  WriteSkips(skips, context.err);
  if (!shown.ok()) {
    context.err << "layomat: " << options.args[0] << ": " << shown.message()
                << "\n";
    return shown.code() == StatusCode::kInvalidArgument ? kExitUsage
                                                        : kExitRefused;
  }
  Status saved = embedded.SaveOutput();
  if (!saved.ok()) return ReportFileError(context, saved);
  if (!options.quiet) {
    context.out << "row " << *options.row << " ("
                << table.Cell(*options.row, frames::Column::kNumber)
                << ") shown -> " << *options.output << "\n";
  }
  return kExitOk;
}

const CommandRegistration kShow({
    "show",
    "layomat show DRAWING --row N -o OUT [options]",
    "zoom the model view onto the frame of one row of the frame table",
    &RunShow,
    kRequiresOutput,
});

}  // namespace
}  // namespace lmt::cli

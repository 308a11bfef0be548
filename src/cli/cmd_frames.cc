// layomat frames DRAWING [options] [--json] [--preview FILE.svg]: template
// capture (with --template), the frame search (the whole model, or the
// objects of --pick), ordering and naming on DRAWING in the embedded host;
// prints the frame table. The drawing is only read; --mark OUT writes a copy
// with the frames highlighted (utilities/frame_marks.h).
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/frame_output.h"
#include "cli/frame_preview.h"
#include "cli/frame_search_run.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "frames/frame_commands.h"
#include "layouts/frame_csv.h"
#include "utilities/frame_marks.h"

namespace lmt::cli {
namespace {

int RunFrames(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: frames expects one DRAWING\n"
                   "Try 'layomat frames --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  // An interrupted search still prints the rows found so far.
  OpenedDrawing opened =
      OpenDrawing(context, drawing, options.mark ? &*options.mark : nullptr,
                  FrameSearch::kKeepInterrupted);
  if (opened.exit != kExitOk) return opened.exit;
  EmbeddedSession& embedded = *opened.embedded;
  const frames::FrameState& state = opened.state;

  if (options.json) {
    WriteFramesJson(state.table, context.out);
  } else {
    WriteFramesText(state.table, context.out);
  }
  if (options.csv) {
    Status written = layouts::WriteFramesCsv(*embedded.document(), state.table,
                                             *options.csv);
    if (!written.ok()) return ReportFileError(context, written);
  }
  if (options.preview) {
    Status written = WriteFramePreview(drawing, state.table, *options.preview,
                                       options.recover);
    if (!written.ok()) {
      context.err << "layomat: " << *options.preview << ": "
                  << written.message() << "\n";
      return kExitFileError;
    }
  }
  if (options.mark) {
    const utilities::MarkReport marked =
        utilities::HighlightFrames(*embedded.document(), state.table);
    Status saved = embedded.SaveOutput();
    if (!saved.ok()) return ReportFileError(context, saved);
    if (!options.quiet) {
      context.err << "layomat: " << marked.frames << " of "
                  << state.table.last_row() << " frames highlighted on layer "
                  << utilities::kMarkLayer << " in " << *options.mark << "\n";
    }
    WriteSkips(marked.skips, context.err);
  }
  return ExitStatusOf(opened.outcome);
}

const CommandRegistration kFrames({
    "frames",
    "layomat frames DRAWING [options] [--json] [--preview FILE.svg] "
    "[--mark OUT]",
    "find the frames of DRAWING and print the frame table",
    &RunFrames,
});

}  // namespace
}  // namespace lmt::cli

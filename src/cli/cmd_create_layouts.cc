// layomat create-layouts DRAWING -o OUT [options]: the frame search,
// ordering and naming of `frames`, then layout creation with its actions
// after creation, in the embedded host; saves the result as OUT in
// DRAWING's release (through a temporary file renamed into place; OUT may
// be DRAWING itself). Prints one line per layout made.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/frame_output.h"
#include "cli/frame_search_run.h"
#include "cli/plot_run.h"
#include "cli/registry.h"
#include "frames/frame_commands.h"
#include "layouts/layout_creation.h"

namespace lmt::cli {
namespace {

// Any DXF save type: the embedded engine writes a drawing in the release
// it was read in.
constexpr int32_t kDxfSaveType = 65;

int RunCreateLayouts(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1 || !options.output) {
    context.err << "layomat: create-layouts expects one DRAWING and -o OUT\n"
                   "Try 'layomat create-layouts --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::Open(context, drawing);
  if (!run.ok()) return ReportFileError(context, run.status());
  EmbeddedSession& embedded = **run;
  core::Windows& windows = context.addin.windows();

  frames::FrameState state;
  frames::FrameCommands commands(embedded.session(), state,
                                 MainWindowNamer(windows));
  if (CaptureAndSearch(context, embedded, commands) != frames::Outcome::kDone) {
    return kExitRefused;
  }

  const layouts::CreationReport report =
      layouts::CreateLayouts(embedded.session(), state.table);
  if (report.outcome == layouts::CreationOutcome::kRefused ||
      report.outcome == layouts::CreationOutcome::kNotConnected) {
    return kExitRefused;
  }
  Status saved = embedded.document()->SaveAs(*options.output, kDxfSaveType);
  if (!saved.ok()) {
    context.err << "layomat: " << *options.output << ": " << saved.message()
                << "\n";
    return kExitFileError;
  }
  for (const std::string& name : report.created) {
    context.out << "layout\t" << name << "\n";
  }
  for (const std::string& name : report.deleted) {
    context.out << "deleted\t" << name << "\n";
  }
  context.out << report.created.size() << " layouts, " << report.viewports
              << " viewports -> " << *options.output << "\n";
  if (const int plotted = PlotNewLayouts(context, report.created)) {
    return plotted;
  }
  return report.outcome == layouts::CreationOutcome::kDone ? kExitOk
                                                           : kExitRefused;
}

const CommandRegistration kCreateLayouts({
    "create-layouts",
    "layomat create-layouts DRAWING -o OUT [options]",
    "find the frames of DRAWING, make one layout per frame, save OUT",
    &RunCreateLayouts,
});

}  // namespace
}  // namespace lmt::cli

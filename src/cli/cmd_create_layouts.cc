// layomat create-layouts DRAWING -o OUT [options]: the frame search,
// ordering and naming of `frames`, then layout creation with its actions
// after creation, in the embedded host; saves the result as OUT through the
// command line's one save path (EmbeddedSession::SaveOutput: DRAWING's
// release and format, a temporary file renamed into place; OUT may be
// DRAWING itself), or as several files with --sheets-per-file and
// --file-per-sheet (cli/split_output.h). Prints the plan's warnings first,
// then one line per layout made and per row skipped, the files written when
// split, and how many of the rows got their layout; with --json the run's
// report (cli/creation_report.h) instead. --dry-run only plans
// (cli/create_layouts_plan.h).
#include <ostream>

#include "cli/create_layouts_plan.h"
#include "cli/creation_report.h"
#include "cli/embedded_session.h"
#include "cli/frame_output.h"
#include "cli/frame_search_run.h"
#include "cli/plot_run.h"
#include "cli/registry.h"
#include "cli/split_output.h"
#include "frames/frame_commands.h"
#include "layouts/layout_creation.h"

namespace lmt::cli {
namespace {

int RunCreateLayouts(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: create-layouts expects one DRAWING\n"
                   "Try 'layomat create-layouts --help'.\n";
    return kExitUsage;
  }
  if (options.dry_run) return RunCreateLayoutsDryRun(context);
  const Result<int> per_file = SheetsPerFile(options);
  if (!per_file.ok()) {
    context.err << "layomat: " << per_file.status().message()
                << "\nTry 'layomat create-layouts --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::OpenToSave(context, drawing, *options.output);
  const RunReport nothing_done("create-layouts");
  if (!run.ok()) {
    return FinishReport(context, nothing_done,
                        ReportFileError(context, run.status()));
  }
  EmbeddedSession& embedded = **run;
  core::Windows& windows = context.addin.windows();

  frames::FrameState state;
  frames::FrameCommands commands(embedded.session(), state,
                                 MainWindowNamer(windows));
  if (CaptureAndSearch(context, embedded, commands) != frames::Outcome::kDone) {
    return FinishReport(context, nothing_done, kExitRefused);
  }
  WarnAboutPlan(context, embedded, state.table, *per_file);

  const layouts::CreationReport report =
      layouts::CreateLayouts(embedded.session(), state.table);
  if (report.outcome == layouts::CreationOutcome::kRefused ||
      report.outcome == layouts::CreationOutcome::kNotConnected) {
    return FinishReport(context, nothing_done, kExitRefused);
  }
  std::vector<std::string> outputs = {*options.output};
  std::vector<SplitFile> files;
  if (*per_file > 0) {
    Result<std::vector<SplitFile>> split =
        SaveSplitOutput(embedded, *options.output, report.created, *per_file);
    if (!split.ok()) {
      return FinishReport(context, nothing_done,
                          ReportFileError(context, split.status()));
    }
    files = std::move(*split);
    outputs.clear();
    for (const SplitFile& file : files) outputs.push_back(file.path);
  } else if (Status saved = embedded.SaveOutput(); !saved.ok()) {
    return FinishReport(context, nothing_done, ReportFileError(context, saved));
  }
  RunReport run_report =
      CreationRunReport(report, state.table, *embedded.document(), outputs);
  for (const SplitFile& file : files) {
    const std::string count = std::to_string(file.layouts.size());
    run_report.Add({"file",
                    file.path,
                    std::string(kMade),
                    "",
                    {{"layouts", count}},
                    count + " layouts"});
  }
  if (!options.json) WriteCreationText(run_report, options, context.out);
  if (const int plotted = PlotNewLayouts(context, report.created)) {
    return FinishReport(context, run_report, plotted);
  }
  return FinishReport(context, run_report,
                      report.outcome == layouts::CreationOutcome::kDone
                          ? kExitOk
                          : kExitRefused);
}

const CommandRegistration kCreateLayouts({
    "create-layouts",
    "layomat create-layouts DRAWING -o OUT [options]",
    "find the frames of DRAWING, make one layout per frame, save OUT",
    &RunCreateLayouts,
    kRequiresOutput | kTakesDryRun,
});

}  // namespace
}  // namespace lmt::cli

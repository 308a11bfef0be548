// layomat create-layouts DRAWING -o OUT [options]: the frame search,
// ordering and naming of `frames`, then layout creation with its actions
// after creation, in the embedded host; saves the result as OUT through the
// command line's one save path (EmbeddedSession::SaveOutput: DRAWING's
// release and format, a temporary file renamed into place; OUT may be
// DRAWING itself), or as several files with --sheets-per-file and
// --file-per-sheet (cli/split_output.h). Prints the plan's warnings first,
// then one line per layout made and per row skipped, the files written when
// split, and how many of the rows got their layout; with --json the run's
// report (cli/creation_report.h) instead. Each other host refusal passed
// over is a line on standard error. --dry-run only plans
// (cli/create_layouts_plan.h). --register FILE takes the sheets, their
// order, names and title-block values from an edited `frames --csv` file
// (layouts/frame_register.h); --index-layout and --index-at draw a table of the
// sheets made (cli/sheet_index.h).
#include <map>
#include <ostream>

#include "cli/create_layouts_plan.h"
#include "cli/creation_report.h"
#include "cli/embedded_session.h"
#include "cli/frame_search_run.h"
#include "cli/plot_run.h"
#include "cli/register_run.h"
#include "cli/registry.h"
#include "cli/sheet_index.h"
#include "cli/split_output.h"
#include "frames/frame_commands.h"
#include "layouts/layout_creation.h"
#include "layouts/sheet_texts.h"

namespace lmt::cli {
namespace {

// The index's rows: one per layout made, in order, with the attribute
// values its frame's title block holds now (the register's, once written).
IndexCells IndexRows(host::Document& document, const frames::FrameTable& table,
                     const layouts::CreationPlan& plan,
                     const std::vector<std::string>& created,
                     const std::vector<std::string>& tags) {
  IndexCells cells;
  cells.push_back({"No.", "Layout"});
  for (const std::string& tag : tags) cells.front().push_back(tag);
  cells.front().push_back("Scale");
  const std::vector<layouts::FrameAttributes> attributes =
      layouts::ReadFrameAttributes(document, table);
  std::map<std::string, const layouts::FramePlan*> by_name;
  for (const layouts::FramePlan& frame : plan.frames) {
    by_name.emplace(frame.layout_name, &frame);  // the first wins, as made
  }
  for (const std::string& name : created) {
    std::vector<std::string> row = {std::to_string(cells.size()), name};
    const auto it = by_name.find(name);
    const layouts::FramePlan* frame =
        it == by_name.end() ? nullptr : it->second;
    for (const std::string& tag : tags) {
      std::string value;
      if (frame != nullptr && frame->row >= 1 &&
          frame->row <= static_cast<int>(attributes.size())) {
        for (const auto& [have, text] :
             attributes[static_cast<size_t>(frame->row - 1)]) {
          if (layouts::NamesEqualNoCase(have, tag)) {
            value = text;
            break;
          }
        }
      }
      row.push_back(value);
    }
    row.push_back(frame == nullptr ? ""
                                   : layouts::ScaleLabel(frame->sheet.scale));
    cells.push_back(std::move(row));
  }
  return cells;
}

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
  if (options.index_layout.has_value() != options.index_at.has_value()) {
    context.err << "layomat: --index-layout and --index-at go together\n"
                   "Try 'layomat create-layouts --help'.\n";
    return kExitUsage;
  }
  // Warnings found before a refusal still reach the JSON document.
  RunReport nothing_done("create-layouts");
  std::optional<layouts::Register> sheet_register;
  if (options.register_file) {
    Result<layouts::Register> read =
        layouts::ReadRegister(*options.register_file);
    if (!read.ok()) {
      return FinishReport(context, nothing_done,
                          ReportRegisterError(context, read.status()));
    }
    sheet_register = std::move(*read);
  }
  const std::string& drawing = options.args[0];
  OpenedDrawing opened =
      OpenDrawing(context, drawing, &*options.output, FrameSearch::kRequired,
                  PrepareForLayouts(context));
  if (opened.exit != kExitOk) {
    return FinishReport(context, nothing_done, opened.exit);
  }
  EmbeddedSession& embedded = *opened.embedded;
  frames::FrameState& state = opened.state;
  std::vector<layouts::RegisteredFrame> registered;
  std::vector<std::string> warnings;
  if (sheet_register) {
    MatchedRegister matched =
        MatchRegister(context, *sheet_register, state.table);
    registered = std::move(matched.frames);
    warnings = std::move(matched.warnings);
    for (const layouts::RegisteredFrame& frame : registered) {
      layouts::WriteFrameValues(*embedded.document(), frame);
    }
  }
  for (std::string& warning :
       WarnAboutPlan(context, embedded, state.table, *per_file)) {
    warnings.push_back(std::move(warning));
  }
  for (const std::string& warning : warnings) nothing_done.AddWarning(warning);
  std::optional<layouts::CreationPlan> index_plan;
  if (options.index_layout) {
    index_plan = layouts::PlanLayouts(embedded.session(), state.table);
  }

  const layouts::CreationReport report =
      layouts::CreateLayouts(embedded.session(), state.table);
  // An interrupted run keeps and saves what it made.
  if (report.outcome == host::Outcome::kRefused ||
      report.outcome == host::Outcome::kNotConnected) {
    return FinishReport(context, nothing_done, ExitStatusOf(report.outcome));
  }
  for (const layouts::RegisteredFrame& frame : registered) {
    layouts::WriteLayoutValues(*embedded.document(), frame);
  }
  if (index_plan) {
    const IndexCells cells =
        IndexRows(*embedded.document(), state.table, *index_plan,
                  report.created, options.index_columns);
    const Status drawn =
        DrawIndex(*embedded.document(), *options.index_layout,
                  LayOutIndex(cells, options.index_at->x, options.index_at->y));
    if (!drawn.ok()) {
      context.err << "layomat: " << drawn.message() << "\n";
      return FinishReport(context, nothing_done, kExitRefused);
    }
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
      CreationRunReport(report, state.table, *embedded.document(), outputs,
                        options.json || options.verbose);
  for (const std::string& warning : warnings) run_report.AddWarning(warning);
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
  // The rows skipped have their lines above; the other refusals go where
  // every command writes them.
  for (const host::Skip& skip : report.skips.skips()) {
    if (skip.step != layouts::kSkipLayout) WriteSkip(skip, context.err);
  }
  if (const int plotted = PlotNewLayouts(context, report.created)) {
    return FinishReport(context, run_report, plotted);
  }
  return FinishReport(context, run_report, ExitStatusOf(report.outcome));
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

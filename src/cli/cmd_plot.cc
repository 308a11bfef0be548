// layomat plot DRAWING -o OUT.pdf [--layouts PATTERN] [--one-file |
// --file-per-sheet] [--monochrome]: plots the drawing's paper-space
// layouts in tab order, one page per layout at its paper size (see
// plot_run.h). OUT may also be .svg or .png, one file per sheet.
#include <ostream>

#include "cli/plot_run.h"
#include "cli/registry.h"

namespace lmt::cli {
namespace {

int RunPlotCommand(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1 || !options.output) {
    context.err << "layomat: plot expects one DRAWING and -o OUT.pdf\n"
                   "Try 'layomat --help'.\n";
    return kExitUsage;
  }
  if (options.one_file && options.file_per_sheet) {
    context.err << "layomat: --one-file and --file-per-sheet exclude each "
                   "other\n";
    return kExitUsage;
  }
  PlotRequest request;
  request.drawing = options.args[0];
  request.output = *options.output;
  if (options.layouts) request.pattern = *options.layouts;
  request.file_per_sheet = options.file_per_sheet;
  request.monochrome = options.monochrome;
  return RunPlot(context, request);
}

const CommandRegistration kPlot({
    "plot",
    "layomat plot DRAWING -o OUT.pdf [--layouts PATTERN] [--one-file | "
    "--file-per-sheet] [--monochrome]",
    "plot the paper-space layouts to PDF (or SVG/PNG, one file per sheet)",
    &RunPlotCommand,
});

}  // namespace
}  // namespace lmt::cli

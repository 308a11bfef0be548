// layomat sort-layouts DRAWING -o OUT --by name|reverse|table|attribute:TAG:
// gives the layout tabs a new order (layouts/layout_sorting.h) and saves
// OUT; --by table runs the frame search as `frames` does for the table's
// order. Already in that order: says so, exits 1 and writes nothing.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/frame_search_run.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "layouts/layout_sorting.h"

namespace lmt::cli {
namespace {

int RunSortLayouts(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: sort-layouts expects one DRAWING\n"
                   "Try 'layomat sort-layouts --help'.\n";
    return kExitUsage;
  }
  // Without --by the sort window's choice counts, as stored or --set.
  Result<layouts::LayoutSort> sort =
      options.by
          ? layouts::ParseLayoutSort(*options.by)
          : layouts::LayoutSortOf(context.addin.windows().okno_sort_layouts);
  if (!sort.ok()) {
    context.err << "layomat: " << sort.status().message() << "\n";
    return kExitUsage;
  }
  // Only the table's order needs the frames.
  OpenedDrawing opened = OpenDrawing(context, options.args[0], &*options.output,
                                     sort->order == layouts::LayoutOrder::kTable
                                         ? FrameSearch::kRequired
                                         : FrameSearch::kNone);
  if (opened.exit != kExitOk) return opened.exit;
  EmbeddedSession& embedded = *opened.embedded;
  const layouts::SortReport sorted =
      layouts::SortLayouts(*embedded.document(), *sort, opened.state.table);
  WriteSkips(sorted.skips, context.err);
  if (sorted.moved == 0) {
    context.err << "layomat: the layouts of " << options.args[0]
                << (sorted.after.empty() ? " are none"
                                         : " are in that order already")
                << "; nothing to sort\n";
    return kExitRefused;
  }
  Status saved = embedded.SaveOutput();
  if (!saved.ok()) return ReportFileError(context, saved);
  if (!options.quiet) {
    for (size_t i = 0; i < sorted.after.size(); ++i) {
      context.out << (i + 1) << " " << sorted.after[i] << "\n";
    }
    context.out << sorted.moved << " of " << sorted.after.size()
                << " layouts moved -> " << *options.output << "\n";
  }
  return kExitOk;
}

const CommandRegistration kSortLayouts({
    "sort-layouts",
    "layomat sort-layouts DRAWING -o OUT --by name|reverse|table|"
    "attribute:TAG [options]",
    "put the layout tabs in a new order without touching their content",
    &RunSortLayouts,
    kRequiresOutput,
});

}  // namespace
}  // namespace lmt::cli

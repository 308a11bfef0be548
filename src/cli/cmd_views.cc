// layomat views DRAWING [frame options] -o OUT: the frame search as
// `frames` runs it, then one named view per row, named like its layout
// (layouts/frame_views.h); saves OUT. A view of the same name is replaced
// only with --yes.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/frame_search_run.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "layouts/frame_views.h"

namespace lmt::cli {
namespace {

int RunViews(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: views expects one DRAWING\n"
                   "Try 'layomat views --help'.\n";
    return kExitUsage;
  }
  OpenedDrawing opened = OpenDrawing(context, options.args[0], &*options.output,
                                     FrameSearch::kRequired);
  if (opened.exit != kExitOk) return opened.exit;
  EmbeddedSession& embedded = *opened.embedded;
  const bool yes = options.yes;
  const layouts::ViewsReport views = layouts::CreateFrameViews(
      *embedded.document(), opened.state.table, [&](std::string_view name) {
        if (!yes) {
          context.err << "layomat: view " << name
                      << " exists; kept (--yes replaces it)\n";
        }
        return yes;
      });
  WriteSkips(views.skips, context.err);
  if (views.made + views.replaced == 0) {
    context.err << "layomat: no view to make in " << options.args[0] << "\n";
    return kExitRefused;
  }
  Status saved = embedded.SaveOutput();
  if (!saved.ok()) return ReportFileError(context, saved);
  if (!options.quiet) {
    for (const std::string& name : views.names) {
      context.out << "view " << name << "\n";
    }
    context.out << views.made << " views made, " << views.replaced
                << " replaced, " << views.kept << " kept -> " << *options.output
                << "\n";
  }
  return kExitOk;
}

const CommandRegistration kViews({
    "views",
    "layomat views DRAWING -o OUT [options] [--yes]",
    "make a named view of each frame, named like its layout",
    &RunViews,
    kRequiresOutput,
});

}  // namespace
}  // namespace lmt::cli

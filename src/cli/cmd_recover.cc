// layomat recover DRAWING -o OUT: reads DRAWING as a CAD program's recover
// command does (what a strict read refuses is repaired where it has one
// sensible reading), lists each repair, and saves the result as OUT through
// the command line's one save path. A drawing that needs no repair is
// written unchanged; one that cannot be repaired is refused (exit 3).
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "dxfhost/document.h"
#include "dxfhost/drawing.h"

namespace lmt::cli {
namespace {

int RunRecover(CommandContext& context) {
  if (context.options.args.size() != 1) {
    context.err << "layomat: recover expects one DRAWING\n"
                   "Try 'layomat recover --help'.\n";
    return kExitUsage;
  }
  // The session reads the way the options say: recovering, whether or not
  // --recover was given.
  CliOptions recovering = context.options;
  recovering.recover = true;
  CommandContext recover_context{recovering, context.addin, context.out,
                                 context.err};
  const std::string& drawing = recovering.args[0];
  RunReport report("recover");
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::OpenToSave(recover_context, drawing, *recovering.output);
  if (!run.ok()) {
    return FinishReport(context, report,
                        ReportFileError(context, run.status()));
  }
  Status saved = (*run)->SaveOutput();
  if (!saved.ok()) {
    return FinishReport(context, report, ReportFileError(context, saved));
  }
  const dxfhost::Drawing* read = dxfhost::DrawingOf(*(*run)->document());
  const size_t repairs = read != nullptr ? read->doc->repairs().size() : 0;
  if (read != nullptr) {
    for (const std::string& repair : read->doc->repairs()) {
      report.Add({"repair", drawing, "repaired", "", {}, repair});
    }
  }
  report.SetTotal("repairs", static_cast<int64_t>(repairs));
  report.AddOutput(*recovering.output);
  if (!recovering.json && !recovering.quiet) {
    context.out << repairs << (repairs == 1 ? " repair" : " repairs") << " -> "
                << *recovering.output << "\n";
  }
  return FinishReport(context, report, kExitOk);
}

const CommandRegistration kRecover({
    "recover",
    "layomat recover DRAWING -o OUT [options]",
    "read a damaged DRAWING, repairing what can be repaired, and save OUT",
    &RunRecover,
    kRequiresOutput,
});

}  // namespace
}  // namespace lmt::cli

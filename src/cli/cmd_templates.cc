// layomat templates DRAWING [--json]: the frame candidates of DRAWING's
// model space, grouped by kind, with a handle and a --template argument for
// each group and a suggested command line. The drawing is only read.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "cli/template_choice.h"
#include "frames/template_candidates.h"

namespace lmt::cli {
namespace {

int RunTemplates(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: templates expects one DRAWING\n"
                   "Try 'layomat templates --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::Open(context, drawing);
  if (!run.ok()) return ReportFileError(context, run.status());
  Result<std::vector<frames::CandidateGroup>> groups =
      frames::FindTemplateCandidates(*(*run)->document());
  if (!groups.ok()) {
    context.err << "layomat: " << drawing << ": " << groups.status().message()
                << "\n";
    return kExitRefused;
  }
  if (options.json) {
    WriteCandidatesJson(*groups, drawing, context.out);
  } else {
    WriteCandidatesText(*groups, drawing, context.out);
  }
  return groups->empty() ? kExitRefused : kExitOk;
}

const CommandRegistration kTemplates({
    "templates",
    "layomat templates DRAWING [--json]",
    "list the frame candidates of DRAWING to choose a template from",
    &RunTemplates,
});

}  // namespace
}  // namespace lmt::cli

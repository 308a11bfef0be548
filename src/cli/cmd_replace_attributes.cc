// layomat replace-attributes FILE... : the batch attribute replacement of
// the Replace attributes window over the files, with its settings, on the
// embedded host (DXF files).
#include "batch/replace_run.h"
#include "cli/batch_cli.h"
#include "cli/registry.h"
#include "host/connection.h"

namespace lmt::cli {
namespace {

int RunReplaceAttributes(CommandContext& context) {
  if (context.options.args.empty()) {
    context.err << "layomat: replace-attributes needs at least one FILE\n";
    return kExitUsage;
  }
  core::Windows& windows = context.addin.windows();
  core::OknoFunctionReplaceAtribut& w = windows.okno_function_replace_atribut;
  w.files = FileRows(context.options.args);
  BatchCliUser user(context.options, context.err,
                    context.addin.globals().product_name, StderrIsTerminal());
  std::shared_ptr<host::Application> app = EmbeddedHost(windows, user);
  Result<host::DbxDocumentPtr> dbx = host::CreateDbxDocument(*app);
  if (!dbx.ok()) {
    context.err << "layomat: " << dbx.status().message() << "\n";
    return kExitRefused;
  }
  batch::BatchUi ui(user, context.addin.globals().messages,
                    context.addin.globals().product_name,
                    w.caption("OknoFunctionReplaceAtribut"));
  ui.running = true;
  batch::BatchReport report = batch::ReplaceAttributesFiles(
      **dbx, ui, batch::ReplaceSettingsOf(w), batch::AttributeRunOf(w));
  return ReportBatch(report, context.out, context.err);
}

const CommandRegistration kReplaceAttributes({
    "replace-attributes",
    "layomat replace-attributes FILE... [--settings FILE] [--set ...]",
    "replace block attribute values in many drawings, as the Replace "
    "attributes window says",
    &RunReplaceAttributes,
});

}  // namespace
}  // namespace lmt::cli

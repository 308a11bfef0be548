// layomat replace-text FILE... : the batch text replacement of the Replace
// text window over the files, with its settings, on the embedded host.
#include "batch/replace_run.h"
#include "cli/batch_cli.h"
#include "cli/registry.h"
#include "host/connection.h"

namespace lmt::cli {
namespace {

int RunReplaceText(CommandContext& context) {
  if (context.options.args.empty()) {
    context.err << "layomat: replace-text needs at least one FILE\n";
    return kExitUsage;
  }
  core::Windows& windows = context.addin.windows();
  core::OknoFunctionReplaceText& w = windows.okno_function_replace_text;
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
                    w.caption("OknoFunctionReplaceText"));
  ui.running = true;
  batch::BatchReport report = batch::ReplaceTextFiles(
      **dbx, ui, batch::ReplaceSettingsOf(w), batch::TextRunOf(w));
  return ReportBatch(report, context.out, context.err);
}

const CommandRegistration kReplaceText({
    "replace-text",
    "layomat replace-text FILE... [--settings FILE] [--set ...]",
    "replace texts in many drawings, as the Replace text window says",
    &RunReplaceText,
});

}  // namespace
}  // namespace lmt::cli

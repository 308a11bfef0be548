// layomat replace-text FILE... : the batch text replacement of the Replace
// text window over the files, with its settings, on the embedded host.
#include "batch/replace_run.h"
#include "cli/batch_cli.h"
#include "cli/registry.h"

namespace lmt::cli {
namespace {

int RunReplaceText(CommandContext& context) {
  core::OknoFunctionReplaceText& w =
      context.addin.windows().okno_function_replace_text;
  return RunReplaceCommand(
      context, "replace-text", w.files, w.caption("OknoFunctionReplaceText"),
      [&w](host::DbxDocument& dbx, batch::BatchUi& ui) {
        return batch::ReplaceTextFiles(dbx, ui, batch::ReplaceSettingsOf(w),
                                       batch::TextRunOf(w));
      });
}

const CommandRegistration kReplaceText({
    "replace-text",
    "layomat replace-text FILE... [--settings FILE] [--set ...]",
    "replace texts in many drawings, as the Replace text window says",
    &RunReplaceText,
});

}  // namespace
}  // namespace lmt::cli

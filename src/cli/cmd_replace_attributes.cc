// layomat replace-attributes FILE... : the batch attribute replacement of
// the Replace attributes window over the files, with its settings, on the
// embedded host (DXF files).
#include "batch/replace_run.h"
#include "cli/batch_cli.h"
#include "cli/registry.h"

namespace lmt::cli {
namespace {

int RunReplaceAttributes(CommandContext& context) {
  core::OknoFunctionReplaceAtribut& w =
      context.addin.windows().okno_function_replace_atribut;
  return RunReplaceCommand(context, "replace-attributes", w.files,
                           w.caption("OknoFunctionReplaceAtribut"),
                           [&w](host::DbxDocument& dbx, batch::BatchUi& ui) {
                             return batch::ReplaceAttributesFiles(
                                 dbx, ui, batch::ReplaceSettingsOf(w),
                                 batch::AttributeRunOf(w));
                           });
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

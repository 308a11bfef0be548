// layomat delete-outside DRAWING --viewport HANDLE -o OUT: "Delete around
// Viewport" on DRAWING in the embedded host, with the viewport HANDLE as the
// user's pick; saves OUT through the command line's one save path
// (EmbeddedSession::SaveOutput). Picking a viewport means going to its
// layout first, so that layout is made current before the command runs;
// when the handle names no entity on a layout the drawing's own current tab
// stays (in the model tab the command refuses).
#include <cctype>
#include <cstdint>
#include <ostream>
#include <string>

#include "cli/cli_options.h"
#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "host/object_model.h"
#include "utilities/delete_outside_viewport.h"

namespace lmt::cli {
namespace {

// Makes the layout holding the entity `handle` current; leaves the current
// tab when the handle names nothing on a layout.
void GoToLayoutOf(host::Document& document, const std::string& handle) {
  // Handles use all 64 bits: a drawing may number them above 2^63.
  std::optional<uint64_t> id = ParseObjectId(handle);
  if (!id) return;
  Result<host::ObjectPtr> object = document.ObjectIdToObject(*id);
  host::EntityPtr entity =
      object.ok() ? host::As<host::Entity>(*object) : nullptr;
  if (entity == nullptr) return;
  Result<uint64_t> owner_id = entity->OwnerID();
  if (!owner_id.ok()) return;
  Result<host::ObjectPtr> owner = document.ObjectIdToObject(*owner_id);
  host::BlockPtr block = owner.ok() ? host::As<host::Block>(*owner) : nullptr;
  if (block == nullptr) return;
  Result<host::LayoutPtr> layout = block->Layout();
  Result<std::string> name =
      layout.ok() ? (*layout)->Name() : Result<std::string>(layout.status());
  if (!name.ok() || *name == "Model") return;
  document.SetActiveLayout(*layout).IgnoreError();  // the pick then refuses
}

int RunDeleteOutside(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: delete-outside expects one DRAWING\n"
                   "Try 'layomat delete-outside --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::OpenToSave(context, drawing, *options.output);
  if (!run.ok()) return ReportFileError(context, run.status());
  EmbeddedSession& embedded = **run;

  GoToLayoutOf(*embedded.document(), *options.viewport);
  embedded.user().QueueViewportPick();
  if (utilities::DeleteOutsideViewport(embedded.session()) !=
      utilities::Outcome::kDone) {
    return kExitRefused;
  }
  Status saved = embedded.SaveOutput();
  if (!saved.ok()) return ReportFileError(context, saved);
  return kExitOk;
}

const CommandRegistration kDeleteOutside({
    "delete-outside",
    "layomat delete-outside DRAWING --viewport HANDLE -o OUT [options]",
    "erase the model-space objects outside that viewport's window",
    &RunDeleteOutside,
    kRequiresOutput | kRequiresViewport,
});

}  // namespace
}  // namespace lmt::cli

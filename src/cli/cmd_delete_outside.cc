// layomat delete-outside DRAWING --viewport HANDLE -o OUT: "Delete around
// Viewport" on DRAWING in the embedded host, with the viewport HANDLE as the
// user's pick; saves OUT through the command line's one save path
// (EmbeddedSession::SaveOutput). Picking a viewport means going to its
// layout first, so that layout is made current before the command runs;
// when the handle names no entity on a layout the drawing's own current tab
// stays (in the model tab the command refuses). --json reports the
// viewport used and each object erased.
#include <cctype>
#include <cstdint>
#include <ostream>
#include <set>
#include <string>

#include "cli/cli_options.h"
#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "host/block.h"
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

// The handles of model space's entities; empty when the host cannot list
// them (the report then names no erased object).
std::vector<std::string> ModelHandles(const host::Document& document) {
  std::vector<std::string> handles;
  Result<host::BlockPtr> model = document.ModelSpace();
  if (!model.ok()) return handles;
  Result<std::vector<host::EntityPtr>> entities = (*model)->Items();
  if (!entities.ok()) return handles;
  for (const host::EntityPtr& entity : *entities) {
    if (Result<std::string> handle = entity->Handle(); handle.ok()) {
      handles.push_back(*handle);
    }
  }
  return handles;
}

// The report of a finished run: the viewport that decided, each object
// erased (the model-space handles gone since `before`), each refusal.
RunReport DeletionReport(const utilities::DeleteOutsideReport& done,
                         const std::vector<std::string>& before,
                         const host::Document& document,
                         const std::string& out) {
  RunReport report("delete-outside");
  if (!done.viewport.empty()) {
    report.Add({"viewport", done.viewport, "used", "", {}, ""});
  }
  const std::vector<std::string> after = ModelHandles(document);
  const std::set<std::string> left(after.begin(), after.end());
  for (const std::string& handle : before) {
    if (!left.contains(handle)) {
      report.Add({"object", handle, "erased", "", {}, ""});
    }
  }
  AddSkips(report, "step", done.skips);
  report.SetTotal("kept", done.kept);
  report.SetTotal("erased", done.erased);
  report.SetTotal("skipped", static_cast<int64_t>(done.skips.skips().size()));
  report.AddOutput(out);
  return report;
}

int RunDeleteOutside(CommandContext& context) {
  const CliOptions& options = context.options;
  if (options.args.size() != 1) {
    context.err << "layomat: delete-outside expects one DRAWING\n"
                   "Try 'layomat delete-outside --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  const RunReport nothing_done("delete-outside");
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::OpenToSave(context, drawing, *options.output);
  if (!run.ok()) {
    return FinishReport(context, nothing_done,
                        ReportFileError(context, run.status()));
  }
  EmbeddedSession& embedded = **run;

  GoToLayoutOf(*embedded.document(), *options.viewport);
  embedded.user().QueueViewportPick();
  const std::vector<std::string> before = ModelHandles(*embedded.document());
  utilities::DeleteOutsideReport done;
  if (const int status = ExitStatusOf(
          utilities::DeleteOutsideViewport(embedded.session(), &done));
      status != kExitOk) {
    return FinishReport(context, nothing_done, status);
  }
  Status saved = embedded.SaveOutput();
  if (!saved.ok()) {
    return FinishReport(context, nothing_done, ReportFileError(context, saved));
  }
  const RunReport report =
      DeletionReport(done, before, *embedded.document(), *options.output);
  if (options.verbose && !options.json) WriteItemsText(report, context.out);
  return FinishReport(context, report, kExitOk);
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

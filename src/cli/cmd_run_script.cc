// layomat run-script FILE... : Run Script over the files on the embedded
// host, which runs the commands it knows and refuses the others (that file
// is then not saved and counts as failed). The script is the window's
// script text; a script file named by
// --set OknoFunctionRunScript.UniTextNameScriptFile=PATH is loaded into it
// first, as choosing the file in the window does.
#include "batch/paths.h"
#include "batch/run_script.h"
#include "batch/script.h"
#include "cli/batch_cli.h"
#include "cli/registry.h"

namespace lmt::cli {
namespace {

int RunRunScript(CommandContext& context) {
  if (context.options.args.empty()) {
    context.err << "layomat: run-script needs at least one FILE\n";
    return kExitUsage;
  }
  core::Windows& windows = context.addin.windows();
  core::OknoFunctionRunScript& w = windows.okno_function_run_script;
  if (const std::string& file = w.uni_text_name_script_file.text();
      !file.empty()) {
    Result<std::string> script =
        batch::LoadScriptFile(batch::PathFromUtf8(file));
    if (!script.ok()) {
      context.err << "layomat: " << file << ": " << script.status().message()
                  << "\n";
      return kExitFileError;
    }
    w.uni_text_text_skript.set_text(*script);
  }
  w.files = FileRows(context.options.args);
  BatchCliUser user(context.options, context.err,
                    context.addin.globals().product_name, StderrIsTerminal());
  std::shared_ptr<host::Application> app = EmbeddedHost(windows, user);
  batch::BatchUi ui(user, context.addin.globals().messages,
                    context.addin.globals().product_name,
                    w.caption("OknoFunctionRunScript"));
  ui.running = true;
  batch::BatchReport report =
      batch::RunScriptFiles(*app, ui, batch::RunScriptSettingsOf(w));
  return ReportBatch(context, "run-script", w.files, report);
}

const CommandRegistration kRunScript({
    "run-script",
    "layomat run-script FILE... [--set "
    "OknoFunctionRunScript.UniTextNameScriptFile=SCRIPT] [--set ...]",
    "run a script in many drawings, as the Run Script window says",
    &RunRunScript,
});

}  // namespace
}  // namespace lmt::cli

#include "batch/run_script.h"

#include "batch/script.h"

namespace lmt::batch {

RunScriptSettings RunScriptSettingsOf(const core::OknoFunctionRunScript& w) {
  RunScriptSettings settings;
  settings.files = FilesOf(w.files);
  settings.script_text = w.uni_text_text_skript.text();
  settings.save = w.check_save_file.checked();
  settings.save_version = w.combo_save_versia.selected();
  settings.target = SaveTargetOf(w.option_save_kuda, w.uni_text_put_save_kuda,
                                 w.uni_text_name_papka_save);
  return settings;
}

BatchReport RunScriptFiles(host::Application& application, BatchUi& ui,
                           const RunScriptSettings& settings) {
  HostBatchOptions options;
  options.save = settings.save;
  options.format = SaveFormatOf(application, settings.save_version);
  options.target = settings.target;
  const std::string expression = ScriptExpression(settings.script_text);
  const bool send = ScriptSendsCommand(ScriptArguments(settings.script_text));
  host::User& user = ui.user;

  auto run = [&](host::Document& document, const FileEntry& file) {
    OperationResult result;
    if (!send) return result;
    // PEDITACCEPT stays 1 afterwards: scripts that join lines expect it.
    SetVariableOrSkip(document, "PEDITACCEPT", host::Variant(int16_t{1}), file,
                      result.skips);
    Result<host::Variant> draw_order = document.GetVariable("DRAWORDERCTL");
    SetVariableOrSkip(document, "DRAWORDERCTL", host::Variant(int16_t{0}), file,
                      result.skips);
    result.status = document.SendCommand(expression);
    if (draw_order.ok()) {
      SetVariableOrSkip(document, "DRAWORDERCTL", *draw_order, file,
                        result.skips);
    }
    user.Wait(kHostWait);
    return result;
  };
  return RunHostBatch(application, ui, settings.files, options, run);
}

BatchReport RunScript(host::Session& session, BatchUi& ui) {
  ui.user.ClearInterrupt();
  ui.running = true;
  if (!session.Connect()) {
    ui.running = false;
    return BatchReport{};
  }
  return RunScriptFiles(
      *session.connection().application, ui,
      RunScriptSettingsOf(session.windows().okno_function_run_script));
}

}  // namespace lmt::batch

#include "batch/run_lisp.h"

#include <system_error>

#include "batch/batch_messages.h"
#include "batch/lisp_commands.h"
#include "batch/paths.h"
#include "core/messages.h"

namespace lmt::batch {

RunLispSettings RunLispSettingsOf(const core::OknoFunctionRunLisp& w) {
  RunLispSettings settings;
  settings.files = FilesOf(w.files);
  settings.lisp_file = w.uni_text_name_lisp_file.text();
  settings.start_command = w.uni_text_command_lisp_start.text();
  settings.stop_before_close = w.check_stop_close_file.checked();
  settings.save = w.check_save_file.checked();
  settings.save_version = w.combo_save_versia.selected();
  settings.target = SaveTargetOf(w.option_save_kuda, w.uni_text_put_save_kuda,
                                 w.uni_text_name_papka_save);
  return settings;
}

std::string LispUnavailableMessage(const Status& refusal) {
  return "Run Lisp needs a CAD program that runs Lisp; this host refused "
         "to load the file: " +
         refusal.message();
}

BatchReport RunLispFiles(host::Application& application, BatchUi& ui,
                         const RunLispSettings& settings) {
  std::error_code ec;
  const bool exists =
      !settings.lisp_file.empty() &&
      std::filesystem::is_regular_file(PathFromUtf8(settings.lisp_file), ec);
  if (Status s = CheckLispRun(exists, settings.start_command); !s.ok()) {
    ui.running = false;
    ui.user.ShowMessage(s.message(), host::MessageIcon::kCritical,
                        host::MessageButtons::kOk, ui.product_name);
    return BatchReport{};
  }
  HostBatchOptions options;
  options.save = settings.save;
  options.format = SaveFormatOf(application, settings.save_version);
  options.target = settings.target;
  options.status_captions = true;
  const std::string load = LispLoadCommand(settings.lisp_file);
  const std::string start = LispStartCommand(settings.start_command);

  auto run = [&](host::Document& document, const FileEntry& file) {
    OperationResult result;
    ui.user.SetStatusText(kCaptionRunLisp);
    // Lisp files from outside the trusted folders load only with
    // SECURELOAD 0; the user's value is put back before the close.
    Result<host::Variant> secure = document.GetVariable("SECURELOAD");
    SetVariableOrSkip(document, "SECURELOAD", host::Variant(int16_t{0}), file,
                      result.skips);
    if (Status s = document.SendCommand(load); !s.ok()) {
      result.status = s;
      result.stop_run = true;
      ui.user.ShowMessage(LispUnavailableMessage(s),
                          host::MessageIcon::kCritical,
                          host::MessageButtons::kOk, ui.product_name);
    } else {
      result.status = document.SendCommand(start);
      ui.user.Wait(kHostWait);
      if (settings.stop_before_close) {
        ShowNumbered(ui, core::kMsgStopBeforeClosing,
                     host::MessageIcon::kInformation);
      }
    }
    if (secure.ok()) {
      SetVariableOrSkip(document, "SECURELOAD", *secure, file, result.skips);
    }
    return result;
  };
  return RunHostBatch(application, ui, settings.files, options, run);
}

BatchReport RunLisp(host::Session& session, BatchUi& ui) {
  ui.user.ClearInterrupt();
  ui.running = true;
  if (!session.Connect()) {
    ui.running = false;
    return BatchReport{};
  }
  return RunLispFiles(
      *session.connection().application, ui,
      RunLispSettingsOf(session.windows().okno_function_run_lisp));
}

}  // namespace lmt::batch

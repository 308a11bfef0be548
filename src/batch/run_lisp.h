// Run Lisp (`OknoFunctionRunLisp`): loads a Lisp file into every drawing of
// the file table and starts its command, optionally stopping before each
// close so the user can look at the result (MSG0019).
//
// Needs a CAD program that runs Lisp. A host that refuses the load (the
// embedded host has no Lisp) ends the run after telling the user so; that
// file is recorded as failed and not saved.
#ifndef LMT_BATCH_RUN_LISP_H_
#define LMT_BATCH_RUN_LISP_H_

#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "batch/host_batch.h"
#include "core/batch_windows.h"
#include "host/object_model.h"
#include "host/session.h"

namespace lmt::batch {

struct RunLispSettings {
  std::vector<FileEntry> files;
  std::string lisp_file;           // `UniText_NameLispFile`
  std::string start_command;       // `UniText_CommandLispStart`
  bool stop_before_close = false;  // `Check_StopCloseFile`
  bool save = true;
  int save_version = 0;
  SaveTargetOptions target;
};

RunLispSettings RunLispSettingsOf(const core::OknoFunctionRunLisp& w);

// "Run Lisp needs a CAD program that runs Lisp; " + the host's reason.
std::string LispUnavailableMessage(const Status& refusal);

// Checks the Lisp file and the start command (refusing with "Lisp file not
// found." or "Enter lisp start command", started false), then runs the
// files on a connected host.
BatchReport RunLispFiles(host::Application& application, BatchUi& ui,
                         const RunLispSettings& settings);

// `Command_Start` of the window.
BatchReport RunLisp(host::Session& session, BatchUi& ui);

}  // namespace lmt::batch

#endif  // LMT_BATCH_RUN_LISP_H_

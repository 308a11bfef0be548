// Run Script (`OknoFunctionRunScript`): the script text becomes one Lisp
// call, (command "tok1""tok2"...), sent to every drawing of the file table,
// which is then saved as the options say and closed.
//
// A host that refuses the call (the embedded host knows only a few
// commands) leaves that drawing unsaved and the file is recorded as failed;
// the run goes on with the next file.
#ifndef LMT_BATCH_RUN_SCRIPT_H_
#define LMT_BATCH_RUN_SCRIPT_H_

#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "batch/host_batch.h"
#include "core/batch_windows.h"
#include "host/object_model.h"
#include "host/session.h"

namespace lmt::batch {

// What Start reads from the window.
struct RunScriptSettings {
  std::vector<FileEntry> files;
  std::string script_text;  // `UniText_TextSkript`, one token a line
  bool save = true;         // `Check_SaveFile`
  int save_version = 0;     // `Combo_SaveVersia` index
  SaveTargetOptions target;
};

RunScriptSettings RunScriptSettingsOf(const core::OknoFunctionRunScript& w);

// The per-file part of Run Script on a connected host: closes the open
// drawings, then opens, runs, saves and closes each file.
BatchReport RunScriptFiles(host::Application& application, BatchUi& ui,
                           const RunScriptSettings& settings);

// `Command_Start`: clears the interrupt flag, sets the running flag,
// connects (returns a report with started false, silently, when that
// fails) and runs the window's files.
BatchReport RunScript(host::Session& session, BatchUi& ui);

}  // namespace lmt::batch

#endif  // LMT_BATCH_RUN_SCRIPT_H_

// The loop of the batch runs that work in the CAD program itself (Run
// Script, Run Lisp, Import): close every open drawing without saving, then
// for each file open it, run the member's operation on it, save it where
// the options say and close it, retrying the save and close while the host
// is still busy with an asynchronous command. Between files the stop button
// is polled; the processed count ends the run.
//
// The close-retry budget is one for the whole run (close_retry.h). The
// waits are the user's Wait, so a test's user makes them free.
#ifndef LMT_BATCH_HOST_BATCH_H_
#define LMT_BATCH_HOST_BATCH_H_

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "batch/file_table.h"
#include "batch/save_target.h"
#include "batch/save_version.h"
#include "core/status.h"
#include "host/object_model.h"

namespace lmt::batch {

// The pause after asynchronous host commands and after each close.
inline constexpr std::chrono::milliseconds kHostWait{1000};

struct HostBatchOptions {
  bool save = false;  // `Check_SaveFile`
  // The save type and family; nullopt (an empty code text) saves nothing.
  std::optional<SaveFormat> format;
  SaveTargetOptions target;
  // Run Lisp and Import show "Open File ...", "Save File ...",
  // "Close File ..." as they go; Run Script shows only the row.
  bool status_captions = false;
  // Import opens its template drawing (the one active at Start) for every
  // listed file instead of the file itself, and keeps the drawings that
  // are open; a close then counts as done when the host is back to the
  // drawings it held before the open.
  std::string open_instead;
};

// What a member's operation reports for one file.
struct OperationResult {
  // Not ok: the host refused the operation; the file is then neither saved
  // nor counted as done right, and the status is recorded as its failure.
  Status status;
  // The host cannot do this at all (the operation has told the user why):
  // the run ends after this file.
  bool stop_run = false;
  // Refusals the operation went on after; they go into the run's report.
  host::SkipLog skips;
};

// Sets system variable `name` for an operation on `file`; a refusal is
// recorded in `skips` and the operation goes on with the host's value.
void SetVariableOrSkip(host::Document& document, std::string_view name,
                       const host::Variant& value, const FileEntry& file,
                       host::SkipLog& skips);

// The operation on the opened drawing; `file` is its table row.
using FileOperation = std::function<OperationResult(host::Document& document,
                                                    const FileEntry& file)>;

// Runs the loop from step "close every open drawing" on: `ui.running` is
// set and the interrupt flag cleared by the caller's start. Fills and
// returns the report; ends with FinishRun.
BatchReport RunHostBatch(host::Application& application, BatchUi& ui,
                         const std::vector<FileEntry>& files,
                         const HostBatchOptions& options,
                         const FileOperation& operation);

// The save format of `Combo_SaveVersia` index `index`, asking the host for
// its default save type only for index 0. nullopt for an index outside
// the table or a default the host does not give.
std::optional<SaveFormat> SaveFormatOf(host::Application& application,
                                       int index);

}  // namespace lmt::batch

#endif  // LMT_BATCH_HOST_BATCH_H_

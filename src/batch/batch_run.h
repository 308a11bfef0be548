// What the five batch runs share: the user-facing side of a run (message
// boxes, the interrupt polls between files, the final count box), its
// outcome, and the window options every run reads the same way (the file
// list and the save target).
//
// The runs talk to the host with errors ignored, as the user expects of a
// batch: one file failing never stops the others. What failed is still
// recorded in BatchReport::failures, so that the command line can name the
// file and end with its file-error status.
#ifndef LMT_BATCH_BATCH_RUN_H_
#define LMT_BATCH_BATCH_RUN_H_

#include <string>
#include <string_view>
#include <vector>

#include "batch/file_table.h"
#include "batch/save_target.h"
#include "core/batch_windows.h"
#include "core/messages.h"
#include "core/status.h"
#include "host/skip_log.h"
#include "host/user.h"

namespace lmt::batch {

// Events pumped at the poll points between files.
inline constexpr int kPumpsBeforePoll = 12;
inline constexpr int kPumpsAfterPoll = 4;

// The user side of a run. References must outlive the run.
struct BatchUi {
  BatchUi(host::User& user, const core::MessageTable& messages,
          std::string product_name, std::string window_title)
      : user(user),
        messages(messages),
        product_name(std::move(product_name)),
        window_title(std::move(window_title)) {}

  host::User& user;
  const core::MessageTable& messages;
  std::string product_name;  // title of every message box
  std::string window_title;  // title of the final count box
  // The running flag: true from the start of a run to its end or its
  // interruption, for the window to show.
  bool running = false;
  // Show the final count box (the command line prints its own summary).
  bool show_count = true;
};

// One file that could not be processed as asked.
struct FileFailure {
  std::string path;
  Status status;
};

struct BatchReport {
  // False when the run did not begin (no host, a refusal before work).
  bool started = false;
  // Files counted as processed; a file whose open failed counts too.
  int processed = 0;
  bool interrupted = false;
  std::vector<FileFailure> failures;
  // The files written, in order.
  std::vector<std::string> written;
  // Host calls refused along the way that did not fail their file (a
  // system variable the host would not set), under the file's path.
  host::SkipLog skips;
};

// The files of a window's table: rows up to the first empty name.
std::vector<FileEntry> FilesOf(const std::vector<core::BatchFile>& rows);

// `Option_SaveKuda` with its two texts.
SaveTargetOptions SaveTargetOf(const core::OptionGroup& where,
                               const core::TextField& folder,
                               const core::TextField& subfolder);

// Pumps `count` events.
void Pump(host::User& user, int count);

// A poll point: pumps 12 events; when the interrupt flag is set, clears the
// running flag, shows MSG0005 (information) and returns true; else pumps 4
// more and returns false.
bool PollInterrupt(BatchUi& ui);

// The end of every run: clears the interrupt and running flags and shows
// the processed count in an information box titled with the window title.
void FinishRun(BatchUi& ui, const BatchReport& report);

// Message `number` titled with the product name.
void ShowNumbered(BatchUi& ui, int number, host::MessageIcon icon);

}  // namespace lmt::batch

#endif  // LMT_BATCH_BATCH_RUN_H_

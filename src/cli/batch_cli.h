// What the batch commands of `layomat` share: a host::User that answers as a
// command line does (message boxes as lines on standard error, a progress
// line on standard error when it is a terminal, no pauses, Ctrl-C as the
// stop button), the embedded host of the chosen kind, the file list from
// the arguments, and the report printed at the end.
#ifndef LMT_CLI_BATCH_CLI_H_
#define LMT_CLI_BATCH_CLI_H_

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "core/batch_windows.h"
#include "core/windows.h"
#include "host/application.h"
#include "host/user.h"

namespace lmt::cli {

class BatchCliUser : public host::User {
 public:
  // `progress`: draw the progress line (standard error is a terminal).
  BatchCliUser(std::ostream& err, bool progress);
  ~BatchCliUser() override;

  void ActivateCadWindow(std::string_view) override {}
  void BringToFront() override {}
  // Takes a pending Ctrl-C as the stop button.
  void PumpEvents() override;
  // The embedded host finishes every command before it returns.
  void Wait(std::chrono::milliseconds) override {}
  void SetProgressRange(int32_t maximum) override;
  void SetProgressValue(int32_t value) override;
  void SetStatusText(std::string_view) override {}
  void ShowProgress(bool visible) override;

 protected:
  host::Answer DoShowMessage(const host::Message& message) override;
  std::optional<std::string> DoInputBox(std::string_view, std::string_view,
                                        std::string_view) override {
    return std::nullopt;
  }
  Result<std::vector<std::string>> DoPickEntities(
      const host::SelectionFilter&) override {
    return Status::Cancelled("no picks in a batch run");
  }
  Result<host::Point> DoPickPoint(std::string_view,
                                  const std::optional<host::Point>&) override {
    return Status::Cancelled("no picks in a batch run");
  }
  Result<double> DoPickDistance(std::string_view,
                                const std::optional<host::Point>&) override {
    return Status::Cancelled("no picks in a batch run");
  }

 private:
  void EndProgressLine();

  std::ostream& err_;
  bool progress_;
  bool line_open_ = false;
  int32_t maximum_ = 0;
};

// Whether standard error is a terminal.
bool StderrIsTerminal();

// The command's file arguments as table rows (name and absolute path).
std::vector<core::BatchFile> FileRows(const std::vector<std::string>& args);

// The embedded host playing the kind chosen in the main window.
std::shared_ptr<host::Application> EmbeddedHost(core::Windows& windows,
                                                host::User& user);

// Prints the written files on `out` and each failure on `err`; returns
// kExitFileError when any file failed, else kExitOk.
int ReportBatch(const batch::BatchReport& report, std::ostream& out,
                std::ostream& err);

}  // namespace lmt::cli

#endif  // LMT_CLI_BATCH_CLI_H_

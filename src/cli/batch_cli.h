// What the batch commands of `layomat` share: the command line's user with
// Ctrl-C as the stop button, the embedded host of the chosen kind, the file
// list from the arguments, and the report printed at the end.
#ifndef LMT_CLI_BATCH_CLI_H_
#define LMT_CLI_BATCH_CLI_H_

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "cli/cli_options.h"
#include "cli/cli_user.h"
#include "core/batch_windows.h"
#include "core/windows.h"
#include "host/application.h"
#include "host/user.h"

namespace lmt::cli {

// The command line's user (cli_user.h) with Ctrl-C as the stop button:
// the run notices it at its next poll between files, shows the
// interruption message and ends with the count, as the window's stop
// button does.
class BatchCliUser : public CliUser {
 public:
  BatchCliUser(const CliOptions& options, std::ostream& err, std::string title,
               bool progress);
  ~BatchCliUser() override;

  void PumpEvents() override;
};

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

// What the batch commands of `layomat` share: the command line's user with
// Ctrl-C as the stop button, the embedded host of the chosen kind, the file
// list from the arguments, and the report printed at the end.
#ifndef LMT_CLI_BATCH_CLI_H_
#define LMT_CLI_BATCH_CLI_H_

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "cli/cli_options.h"
#include "cli/cli_user.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "core/batch_windows.h"
#include "core/windows.h"
#include "host/application.h"
#include "host/document.h"
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

// One "file" item per row of `files`, in order: "written" with its
// "output", kFailed with the reason, "done" when the run saved nothing for
// it, kSkipped ("not reached") after an interruption; totals "files",
// "processed", "written", "failed"; the written files as the outputs.
RunReport BatchRunReport(std::string_view command,
                         const std::vector<core::BatchFile>& files,
                         const batch::BatchReport& report);

// Prints the written files on standard output (with --verbose a line per
// file instead, and the totals; with --quiet nothing; with --json the
// report) and each failure on standard error. Returns kExitFileError when
// any file failed, else kExitOk.
int ReportBatch(CommandContext& context, std::string_view command,
                const std::vector<core::BatchFile>& files,
                const batch::BatchReport& report);

// What a replace command runs on the database document, with the batch
// window's messages and caption.
using ReplaceFiles =
    std::function<batch::BatchReport(host::DbxDocument&, batch::BatchUi&)>;

// The body of the replace commands: at least one FILE (else kExitUsage with
// "layomat: COMMAND needs at least one FILE"), the arguments into the
// window's file table `files`, `run` on a database document of the embedded
// host (kExitRefused when none can be made), the report printed.
int RunReplaceCommand(CommandContext& context, std::string_view command,
                      std::vector<core::BatchFile>& files,
                      const std::string& caption, const ReplaceFiles& run);

}  // namespace lmt::cli

#endif  // LMT_CLI_BATCH_CLI_H_

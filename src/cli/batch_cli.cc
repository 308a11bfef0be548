#include "cli/batch_cli.h"

#include <csignal>
#include <filesystem>

#include "batch/paths.h"
#include "cli/cli_options.h"
#include "cli/frame_output.h"
#include "dxfhost/application.h"
#include "host/connection.h"
#include "host/host_kind.h"

namespace lmt::cli {
namespace {

volatile std::sig_atomic_t g_stop_requested = 0;

extern "C" void OnInterruptSignal(int) { g_stop_requested = 1; }

}  // namespace

BatchCliUser::BatchCliUser(const CliOptions& options, std::ostream& err,
                           std::string title, bool progress)
    : CliUser(options, err, std::move(title), progress) {
  g_stop_requested = 0;
  std::signal(SIGINT, OnInterruptSignal);
}

BatchCliUser::~BatchCliUser() { std::signal(SIGINT, SIG_DFL); }

void BatchCliUser::PumpEvents() {
  if (g_stop_requested != 0) {
    g_stop_requested = 0;
    RequestInterrupt();
  }
}

std::vector<core::BatchFile> FileRows(const std::vector<std::string>& args) {
  std::vector<core::BatchFile> rows;
  for (const std::string& arg : args) {
    std::error_code ec;
    std::filesystem::path path =
        std::filesystem::absolute(batch::PathFromUtf8(arg), ec);
    if (ec) path = batch::PathFromUtf8(arg);
    path = path.lexically_normal();
    // "dir/" names dir; an empty name would end the file list there.
    if (!path.has_filename()) path = path.parent_path();
    rows.push_back(
        {batch::PathToUtf8(path.filename()), batch::PathToUtf8(path)});
  }
  return rows;
}

std::shared_ptr<host::Application> EmbeddedHost(core::Windows& windows,
                                                host::User& user) {
  host::HostKind kind =
      host::HostKindFromIndex(windows.okno_lmt.combo_versia_cad.selected())
          .value_or(host::HostKind::kAutoCad);
  return dxfhost::DxfApplication::Create(kind, &user);
}

RunReport BatchRunReport(std::string_view command,
                         const std::vector<core::BatchFile>& files,
                         const batch::BatchReport& report) {
  RunReport run(command);
  // The run goes over the files in order, and each one ends written,
  // failed or (without saving) just done; the lists keep that order.
  size_t failure = 0;
  size_t written = 0;
  const std::vector<batch::FileEntry> entries = batch::FilesOf(files);
  for (size_t i = 0; i < entries.size(); ++i) {
    const std::string& path = entries[i].path;
    ReportItem item{"file", path, "done", "", {}, ""};
    if (failure < report.failures.size() &&
        report.failures[failure].path == path) {
      item.result = kFailed;
      item.reason = report.failures[failure++].status.message();
    } else if (i >= static_cast<size_t>(report.processed)) {
      item.result = kSkipped;
      item.reason = "not reached";
    } else if (written < report.written.size()) {
      item.result = "written";
      item.fields.emplace_back("output", JsonString(report.written[written]));
      item.detail = "-> " + report.written[written++];
    }
    run.Add(std::move(item));
  }
  run.SetTotal("files", static_cast<int64_t>(entries.size()));
  run.SetTotal("processed", report.processed);
  run.SetTotal("written", static_cast<int64_t>(report.written.size()));
  run.SetTotal("failed", static_cast<int64_t>(report.failures.size()));
  AddSkips(run, "step", report.skips);
  run.SetTotal("refused", static_cast<int64_t>(report.skips.skips().size()));
  for (const std::string& path : report.written) run.AddOutput(path);
  return run;
}

int ReportBatch(CommandContext& context, std::string_view command,
                const std::vector<core::BatchFile>& files,
                const batch::BatchReport& report) {
  const CliOptions& options = context.options;
  const RunReport run = BatchRunReport(command, files, report);
  if (options.verbose && !options.json) {
    WriteItemsText(run, context.out);
    context.out << run.Total("files") << " files: " << run.Total("written")
                << " written, " << run.Total("failed") << " failed\n";
  } else if (!options.quiet && !options.json) {
    for (const std::string& path : report.written) context.out << path << "\n";
  }
  for (const batch::FileFailure& failure : report.failures) {
    // Engine messages often begin with the path already.
    const std::string& message = failure.status.message();
    context.err << "layomat: ";
    if (!message.starts_with(failure.path)) context.err << failure.path << ": ";
    context.err << message << "\n";
  }
  WriteSkips(report.skips, context.err);
  return FinishReport(context, run,
                      report.failures.empty() ? kExitOk : kExitFileError);
}

int RunReplaceCommand(CommandContext& context, std::string_view command,
                      std::vector<core::BatchFile>& files,
                      const std::string& caption, const ReplaceFiles& run) {
  if (context.options.args.empty()) {
    context.err << "layomat: " << command << " needs at least one FILE\n";
    return kExitUsage;
  }
  core::Windows& windows = context.addin.windows();
  files = FileRows(context.options.args);
  BatchCliUser user(context.options, context.err,
                    context.addin.globals().product_name, StderrIsTerminal());
  std::shared_ptr<host::Application> app = EmbeddedHost(windows, user);
  Result<host::DbxDocumentPtr> dbx = host::CreateDbxDocument(*app);
  if (!dbx.ok()) {
    context.err << "layomat: " << dbx.status().message() << "\n";
    return FinishReport(context, RunReport(command), kExitRefused);
  }
  batch::BatchUi ui(user, context.addin.globals().messages,
                    context.addin.globals().product_name, caption);
  ui.running = true;
  return ReportBatch(context, command, files, run(**dbx, ui));
}

}  // namespace lmt::cli

#include "cli/batch_cli.h"

#include <csignal>
#include <filesystem>

#include "batch/paths.h"
#include "cli/cli_options.h"
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

int ReportBatch(const batch::BatchReport& report, std::ostream& out,
                std::ostream& err) {
  for (const std::string& path : report.written) out << path << "\n";
  for (const batch::FileFailure& failure : report.failures) {
    // Engine messages often begin with the path already.
    const std::string& message = failure.status.message();
    err << "layomat: ";
    if (!message.starts_with(failure.path)) err << failure.path << ": ";
    err << message << "\n";
  }
  return report.failures.empty() ? kExitOk : kExitFileError;
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
    return kExitRefused;
  }
  batch::BatchUi ui(user, context.addin.globals().messages,
                    context.addin.globals().product_name, caption);
  ui.running = true;
  return ReportBatch(run(**dbx, ui), context.out, context.err);
}

}  // namespace lmt::cli

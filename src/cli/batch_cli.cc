#include "cli/batch_cli.h"

#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "batch/paths.h"
#include "cli/cli_options.h"
#include "dxfhost/application.h"
#include "host/host_kind.h"

namespace lmt::cli {
namespace {

volatile std::sig_atomic_t g_stop_requested = 0;

extern "C" void OnInterruptSignal(int) { g_stop_requested = 1; }

}  // namespace

BatchCliUser::BatchCliUser(std::ostream& err, bool progress)
    : err_(err), progress_(progress) {
  g_stop_requested = 0;
  std::signal(SIGINT, OnInterruptSignal);
}

BatchCliUser::~BatchCliUser() {
  std::signal(SIGINT, SIG_DFL);
  EndProgressLine();
}

void BatchCliUser::PumpEvents() {
  if (g_stop_requested != 0) {
    g_stop_requested = 0;
    RequestInterrupt();
  }
}

void BatchCliUser::SetProgressRange(int32_t maximum) { maximum_ = maximum; }

void BatchCliUser::SetProgressValue(int32_t value) {
  if (!progress_) return;
  err_ << "\r" << value << "/" << maximum_ << std::flush;
  line_open_ = true;
}

void BatchCliUser::ShowProgress(bool visible) {
  if (!visible) EndProgressLine();
}

void BatchCliUser::EndProgressLine() {
  if (!line_open_) return;
  err_ << "\r\x1b[K" << std::flush;
  line_open_ = false;
}

host::Answer BatchCliUser::DoShowMessage(const host::Message& message) {
  EndProgressLine();
  std::string text = message.text;
  for (char& c : text) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  err_ << message.title << ": " << text << "\n";
  return message.buttons == host::MessageButtons::kYesNo ? host::Answer::kNo
                                                         : host::Answer::kOk;
}

bool StderrIsTerminal() { return isatty(STDERR_FILENO) == 1; }

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

}  // namespace lmt::cli

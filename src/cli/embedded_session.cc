#include "cli/embedded_session.h"

#include <optional>
#include <utility>

#include "cli/drawing_output.h"
#include "core/check.h"
#include "dxfhost/application.h"

namespace lmt::cli {
namespace {

host::HostKind ChosenKind(core::Windows& windows) {
  std::optional<host::HostKind> kind =
      host::HostKindFromIndex(windows.okno_lmt.combo_versia_cad.selected());
  return kind.value_or(host::HostKind::kAutoCad);
}

}  // namespace

EmbeddedSession::EmbeddedSession(CommandContext& context, host::HostKind kind)
    : kind_(kind),
      user_(context.options, context.err, context.addin.globals().product_name,
            StderrIsTerminal()),
      application_(dxfhost::DxfApplication::Create(kind, &user_)),
      runtime_(application_),
      session_(context.addin.globals(), context.addin.windows(), user_,
               runtime_) {}

Result<std::unique_ptr<EmbeddedSession>> EmbeddedSession::Open(
    CommandContext& context, const std::string& drawing) {
  std::unique_ptr<EmbeddedSession> run(
      new EmbeddedSession(context, ChosenKind(context.addin.windows())));
  Result<host::DocumentsPtr> documents = run->application_->Documents();
  if (!documents.ok()) return documents.status();
  Result<host::DocumentPtr> opened = (*documents)->Open(drawing);
  if (!opened.ok()) {
    const Status failure = opened.status();
    const std::string& why = failure.message();
    // The engine names the file in its messages; say it when it does not.
    std::string message =
        why.find(drawing) != std::string::npos ? why : drawing + ": " + why;
    return Status(failure.code(), std::move(message));
  }
  run->document_ = *opened;
  run->drawing_ = drawing;
  return run;
}

Result<std::unique_ptr<EmbeddedSession>> EmbeddedSession::OpenToSave(
    CommandContext& context, const std::string& drawing,
    const std::string& out) {
  Result<std::unique_ptr<EmbeddedSession>> run = Open(context, drawing);
  if (!run.ok()) return run;
  if (Status usable = CheckOutput(out); !usable.ok()) return usable;
  (*run)->out_ = out;
  (*run)->user_.HoldSuccessMessages();
  return run;
}

EmbeddedSession::~EmbeddedSession() { user_.ReleaseHeldMessages(); }

Status EmbeddedSession::SaveOutput() {
  LMT_CHECK(!out_.empty());
  Status saved = SaveDrawing(*document_, drawing_, out_);
  if (saved.ok()) {
    user_.ReleaseHeldMessages();
  } else {
    user_.DropHeldMessages();
  }
  return saved;
}

int ReportFileError(CommandContext& context, const Status& status) {
  context.err << "layomat: " << status.message() << "\n";
  return kExitFileError;
}

}  // namespace lmt::cli

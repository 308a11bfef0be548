#include "cli/embedded_session.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/drawing_output.h"
#include "cli/split_output.h"
#include "core/check.h"
#include "core/file_util.h"
#include "dxfhost/application.h"
#include "dxfhost/document.h"
#include "dxfhost/drawing.h"

namespace lmt::cli {
namespace {

// The first release with layouts.
constexpr char kLayoutRelease[] = "AC1015";

std::shared_ptr<dxfhost::DxfApplication> MakeApplication(host::HostKind kind,
                                                         host::User* user,
                                                         bool recover) {
  std::shared_ptr<dxfhost::DxfApplication> app =
      dxfhost::DxfApplication::Create(kind, user);
  app->set_recover(recover);
  return app;
}

host::HostKind ChosenKind(core::Windows& windows) {
  std::optional<host::HostKind> kind =
      host::HostKindFromIndex(windows.okno_lmt.combo_versia_cad.selected());
  return kind.value_or(host::HostKind::kAutoCad);
}

Status DeleteLayouts(host::Document& document,
                     const std::vector<std::string>& names) {
  // The engine deletes hundreds of layouts in one pass; other hosts one by
  // one.
  if (std::optional<Status> deleted =
          dxfhost::DeleteLayoutsAtOnce(document, names)) {
    return *deleted;
  }
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return layouts.status();
  for (const std::string& name : names) {
    Result<host::LayoutPtr> layout = (*layouts)->Item(name);
    Status deleted = layout.ok() ? (*layout)->Delete() : layout.status();
    if (!deleted.ok()) return deleted;
  }
  return Status::Ok();
}

// The process ends right after the command, and the system takes a
// drawing's memory back at once: destroying a large drawing record by
// record costs more (7 ms for a 25 MB one). Held from a global, so leak
// checkers count it as reachable; nothing uses it again.
void KeepUntilExit(host::ApplicationPtr application,
                   host::DocumentPtr document) {
  static auto* const kept = new std::vector<std::shared_ptr<const void>>();
  kept->push_back(std::move(application));
  kept->push_back(std::move(document));
}

}  // namespace

EmbeddedSession::EmbeddedSession(CommandContext& context, host::HostKind kind)
    : kind_(kind),
      exits_after_run_(context.exits_after_run),
      user_(context.options, context.err, context.addin.globals().product_name,
            StderrIsTerminal()),
      application_(MakeApplication(kind, &user_, context.options.recover)),
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
  if (const dxfhost::Drawing* read = dxfhost::DrawingOf(**opened)) {
    for (const std::string& repair : read->doc->repairs()) {
      context.err << "layomat: repaired: " << repair << "\n";
    }
  }
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

EmbeddedSession::~EmbeddedSession() {
  user_.ReleaseHeldMessages();
  if (exits_after_run_) KeepUntilExit(application_, document_);
}

Status EmbeddedSession::PrepareForLayouts(std::ostream& err, bool quiet) {
  Result<std::string> converted = dxfhost::UpgradeForLayouts(*document_);
  if (!converted.ok()) {
    return Status::NotSupported(drawing_ + ": " + converted.status().message());
  }
  if (converted->empty()) return Status::Ok();
  release_at_least_ = kLayoutRelease;
  if (quiet) return Status::Ok();
  err << "layomat: " << drawing_ << " is " << *converted
      << ", which has no layouts: "
      << (out_.empty() ? std::string("the result would be") : out_ + " is")
      << " written as DXF 2000\n";
  return Status::Ok();
}

Status EmbeddedSession::SaveOutput() {
  LMT_CHECK(!out_.empty());
  Status saved = SaveDrawing(*document_, drawing_, out_, release_at_least_);
  if (saved.ok()) {
    user_.ReleaseHeldMessages();
  } else {
    user_.DropHeldMessages();
  }
  return saved;
}

Status EmbeddedSession::SaveOutputSet(
    const std::vector<std::string>& targets,
    const std::vector<std::vector<std::string>>& without) {
  LMT_CHECK(!out_.empty() && targets.size() == without.size());
  // Every file but the last starts from the whole result, saved once and
  // read again; the last one is the drawing in memory itself.
  const std::filesystem::path out = core::PathFromUtf8(out_);
  const std::string whole =
      core::PathToUtf8(std::filesystem::path(out).replace_filename(
          "." + core::PathToUtf8(out.filename()) + ".layomat-whole.dxf"));
  Status saved = targets.size() > 1 ? SaveDrawing(*document_, drawing_, whole,
                                                  release_at_least_)
                                    : Status::Ok();
  Result<host::DocumentsPtr> documents = application_->Documents();
  if (saved.ok() && !documents.ok()) saved = documents.status();
  if (saved.ok()) {
    saved = WriteFileSet(targets, [&](size_t i, const std::string& temporary) {
      host::DocumentPtr copy = document_;
      if (i + 1 < targets.size()) {
        Result<host::DocumentPtr> opened = (*documents)->Open(whole);
        if (!opened.ok()) return opened.status();
        copy = *opened;
      }
      Status written = DeleteLayouts(*copy, without[i]);
      if (written.ok()) {
        written = SaveDrawing(*copy, drawing_, temporary, release_at_least_);
      }
      if (copy != document_) (void)copy->Close(false);
      if (!written.ok()) {
        return Status::IOError(targets[i] + ": " + written.message());
      }
      return written;
    });
  }
  std::error_code ignored;
  std::filesystem::remove(core::PathFromUtf8(whole), ignored);
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

#include "batch/replace_run.h"

#include "batch/batch_messages.h"
#include "batch/paths.h"
#include "batch/save_version.h"
#include "host/connection.h"

namespace lmt::batch {
namespace {

template <typename Window>
ReplaceSettings SettingsOf(const Window& w) {
  ReplaceSettings settings;
  settings.files = FilesOf(w.files);
  settings.save = w.check_save_file.checked();
  settings.target = SaveTargetOf(w.option_save_kuda, w.uni_text_put_save_kuda,
                                 w.uni_text_name_papka_save);
  settings.save_as = w.combo_save_as_dwg_or_dxf.selected();
  return settings;
}

Status Read(host::DbxDocument& dbx, const std::string& path) {
  return IsDxfPath(path) ? dbx.DxfIn(path) : dbx.Open(path);
}

// Writes the drawing; returns the path written.
Result<std::string> Write(host::DbxDocument& dbx,
                          const ReplaceSettings& settings,
                          const FileEntry& file) {
  std::string extension = SaveAsExtension(settings.save_as, file.name);
  if (extension.empty()) extension = "dwg";  // a source without extension
  Result<std::filesystem::path> target = ResolveSaveTarget(
      settings.target, file.name, PathFromUtf8(file.path), extension);
  if (!target.ok()) return target.status();
  std::string path = PathToUtf8(*target);
  if (settings.target.where != SaveWhere::kReplaceSource) {
    path += "." + extension;
  }
  Status s = IsDxfPath(path) ? dbx.DxfOut(path) : dbx.SaveAs(path);
  if (!s.ok()) return s;
  return path;
}

BatchReport Start(host::Session& session, BatchUi& ui,
                  const std::function<BatchReport(host::DbxDocument&)>& run) {
  ui.user.ClearInterrupt();
  ui.running = true;
  if (!session.Connect()) {
    ui.running = false;
    return BatchReport{};
  }
  host::DbxDocumentPtr dbx = DbxDocumentFor(session, ui);
  if (dbx == nullptr) {
    ui.running = false;
    return BatchReport{};
  }
  return run(*dbx);
}

}  // namespace

ReplaceSettings ReplaceSettingsOf(const core::OknoFunctionReplaceAtribut& w) {
  return SettingsOf(w);
}

ReplaceSettings ReplaceSettingsOf(const core::OknoFunctionReplaceText& w) {
  return SettingsOf(w);
}

BatchReport RunDbxBatch(host::DbxDocument& dbx, BatchUi& ui,
                        const ReplaceSettings& settings,
                        const DrawingOperation& operation) {
  BatchReport report;
  report.started = true;
  host::User& user = ui.user;
  const int count = static_cast<int>(settings.files.size());
  user.SetProgressRange(count);
  user.ShowProgress(true);
  for (int i = 0; i < count; ++i) {
    if (PollInterrupt(ui)) {
      report.interrupted = true;
      break;
    }
    const FileEntry& file = settings.files[i];
    user.SetProgressValue(i + 1);
    user.SetStatusText(kCaptionOpenFile);
    if (Status s = Read(dbx, file.path); !s.ok()) {
      report.failures.push_back({file.path, s});
    } else {
      operation(dbx);
      if (settings.save && !user.interrupted()) {
        user.SetStatusText(kCaptionSaveFile);
        Result<std::string> written = Write(dbx, settings, file);
        if (written.ok()) {
          report.written.push_back(*written);
        } else {
          report.failures.push_back({file.path, written.status()});
        }
      }
      // The document holds the drawing until the next read replaces it.
      user.SetStatusText(kCaptionCloseFile);
    }
    if (PollInterrupt(ui)) {
      report.interrupted = true;
      break;
    }
    ++report.processed;
  }
  FinishRun(ui, report);
  return report;
}

BatchReport ReplaceAttributesFiles(host::DbxDocument& dbx, BatchUi& ui,
                                   const ReplaceSettings& settings,
                                   const AttributeRun& run) {
  return RunDbxBatch(dbx, ui, settings, [&](host::DbxDocument& drawing) {
    return ReplaceAttributesIn(drawing, run, ui.user);
  });
}

BatchReport ReplaceTextFiles(host::DbxDocument& dbx, BatchUi& ui,
                             const ReplaceSettings& settings,
                             const TextRun& run) {
  return RunDbxBatch(dbx, ui, settings, [&](host::DbxDocument& drawing) {
    return ReplaceTextIn(drawing, run, ui.user);
  });
}

host::DbxDocumentPtr DbxDocumentFor(host::Session& session, BatchUi& ui) {
  host::ConnectionState& connection = session.connection();
  if (connection.dbx_document != nullptr) return connection.dbx_document;
  Result<host::DbxDocumentPtr> made =
      host::CreateDbxDocument(*connection.application);
  if (made.ok()) return *made;
  ui.user.ShowMessage(
      "Replacing in many files needs the CAD program's ObjectDBX document, "
      "which " +
          connection.host_name + " does not give: " + made.status().message(),
      host::MessageIcon::kCritical, host::MessageButtons::kOk, ui.product_name);
  return nullptr;
}

BatchReport ReplaceAttributes(host::Session& session, BatchUi& ui) {
  const core::OknoFunctionReplaceAtribut& w =
      session.windows().okno_function_replace_atribut;
  return Start(session, ui, [&](host::DbxDocument& dbx) {
    return ReplaceAttributesFiles(dbx, ui, ReplaceSettingsOf(w),
                                  AttributeRunOf(w));
  });
}

BatchReport ReplaceText(host::Session& session, BatchUi& ui) {
  const core::OknoFunctionReplaceText& w =
      session.windows().okno_function_replace_text;
  return Start(session, ui, [&](host::DbxDocument& dbx) {
    return ReplaceTextFiles(dbx, ui, ReplaceSettingsOf(w), TextRunOf(w));
  });
}

}  // namespace lmt::batch

#include "batch/host_batch.h"

#include "batch/batch_messages.h"
#include "batch/close_retry.h"
#include "batch/paths.h"

namespace lmt::batch {
namespace {

// The settle routine after Open: lets the host's window finish opening.
void Settle(host::User& user) {
  Pump(user, 2);
  user.PumpEvents();
  Pump(user, 2);
}

void CloseAll(host::Documents& documents) {
  Result<std::vector<host::DocumentPtr>> open = documents.Items();
  if (!open.ok()) return;  // nothing to close that we can see
  for (const host::DocumentPtr& document : *open) {
    document->Close(false).IgnoreError();  // unsaved changes are dropped
  }
}

void Caption(BatchUi& ui, const HostBatchOptions& options,
             std::string_view caption) {
  if (options.status_captions) ui.user.SetStatusText(caption);
}

}  // namespace

void SetVariableOrSkip(host::Document& document, std::string_view name,
                       const host::Variant& value, const FileEntry& file,
                       host::SkipLog& skips) {
  skips.Record(file.path, "set " + std::string(name),
               document.SetVariable(name, value));
}

std::optional<SaveFormat> SaveFormatOf(host::Application& application,
                                       int index) {
  int host_type = 0;
  if (index == 0) {
    Result<host::PreferencesPtr> preferences = application.Preferences();
    if (!preferences.ok()) return std::nullopt;
    Result<int32_t> type = (*preferences)->SaveAsType();
    if (!type.ok()) return std::nullopt;
    host_type = *type;
  }
  return SplitSaveCode(SaveVersionCode(index, host_type));
}

BatchReport RunHostBatch(host::Application& application, BatchUi& ui,
                         const std::vector<FileEntry>& files,
                         const HostBatchOptions& options,
                         const FileOperation& operation) {
  BatchReport report;
  report.started = true;
  host::User& user = ui.user;
  Result<host::DocumentsPtr> documents = application.Documents();
  const bool keep_open = !options.open_instead.empty();
  if (documents.ok() && !keep_open) CloseAll(**documents);

  const int count = static_cast<int>(files.size());
  CloseRetryBudget budget;
  user.SetProgressRange(count);
  user.ShowProgress(true);
  for (int i = 0; i < count; ++i) {
    if (PollInterrupt(ui)) {
      report.interrupted = true;
      break;
    }
    const FileEntry& file = files[i];
    user.SetProgressValue(i + 1);
    Caption(ui, options, kCaptionOpenFile);

    // A file that does not open leaves the host as it was; only the close
    // of whatever is current is tried, so nothing is sent to or saved from
    // another drawing.
    Status failure;
    bool opened = false;
    int32_t baseline = 0;
    if (keep_open && documents.ok()) {
      baseline = (*documents)->Count().value_or(0);
    }
    const std::string& open_path = keep_open ? options.open_instead : file.path;
    if (!documents.ok()) {
      failure = documents.status();
    } else if (Result<host::DocumentPtr> open = (*documents)->Open(open_path);
               !open.ok()) {
      failure = open.status();
    } else {
      opened = true;
    }
    // Import keeps the template drawing open: after a failed open the
    // current drawing is the template, which must not be closed.
    host::DocumentPtr current;
    if (Result<host::DocumentPtr> active = application.ActiveDocument();
        active.ok() && (opened || !keep_open)) {
      current = *active;
    }
    Settle(user);

    bool stop_run = false;
    bool save = options.save && options.format.has_value() && opened &&
                current != nullptr;
    if (opened && current != nullptr) {
      OperationResult done = operation(*current, file);
      stop_run = done.stop_run;
      report.skips.Append(done.skips);
      if (!done.status.ok()) {
        failure = done.status;
        save = false;  // never write a drawing the operation did not finish
      }
    }

    bool saved = false;
    if (current != nullptr) {
      for (;;) {
        if (save && !saved) {
          Caption(ui, options, kCaptionSaveFile);
          Result<std::filesystem::path> target = ResolveSaveTarget(
              options.target, file.name, PathFromUtf8(file.path),
              options.format->extension);
          if (!target.ok()) {
            failure = target.status();
          } else if (Status s = current->SaveAs(PathToUtf8(*target),
                                                options.format->save_type);
                     !s.ok()) {
            failure = s;
          } else {
            // Saved once is enough: a retry only waits for the close, and
            // saving again would leave a numbered duplicate.
            saved = true;
            failure = Status();
            std::filesystem::path written = *target;
            if (options.target.where != SaveWhere::kReplaceSource) {
              written += "." + options.format->extension;
            }
            report.written.push_back(PathToUtf8(written));
          }
        }
        Caption(ui, options, kCaptionCloseFile);
        current->Close(false).IgnoreError();
        user.Wait(kHostWait);
        Result<int32_t> left =
            documents.ok() ? (*documents)->Count() : Result<int32_t>(baseline);
        if (left.ok() && *left <= baseline) break;
        if (!budget.RetryAfterFailedClose()) break;
      }
    }
    if (!failure.ok()) report.failures.push_back({file.path, failure});

    if (PollInterrupt(ui)) {
      report.interrupted = true;
      break;
    }
    ++report.processed;
    if (stop_run) break;
  }
  FinishRun(ui, report);
  return report;
}

}  // namespace lmt::batch

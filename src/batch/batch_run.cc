#include "batch/batch_run.h"

#include "batch/batch_messages.h"
#include "core/messages.h"

namespace lmt::batch {

std::vector<FileEntry> FilesOf(const std::vector<core::BatchFile>& rows) {
  std::vector<FileEntry> files;
  for (const core::BatchFile& row : rows) {
    if (row.name.empty()) break;
    files.push_back({row.name, row.path});
  }
  return files;
}

SaveTargetOptions SaveTargetOf(const core::OptionGroup& where,
                               const core::TextField& folder,
                               const core::TextField& subfolder) {
  SaveTargetOptions options;
  int index = where.selected();
  options.where = index >= 0 && index <= 3 ? static_cast<SaveWhere>(index)
                                           : SaveWhere::kBesideSource;
  options.folder = folder.text();
  options.subfolder = subfolder.text();
  return options;
}

void Pump(host::User& user, int count) {
  for (int i = 0; i < count; ++i) user.PumpEvents();
}

bool PollInterrupt(BatchUi& ui) {
  Pump(ui.user, kPumpsBeforePoll);
  if (ui.user.interrupted()) {
    ui.running = false;
    ShowNumbered(ui, core::kMsgInterrupted, host::MessageIcon::kInformation);
    return true;
  }
  Pump(ui.user, kPumpsAfterPoll);
  return false;
}

void FinishRun(BatchUi& ui, const BatchReport& report) {
  ui.user.ClearInterrupt();
  ui.running = false;
  ui.user.ShowProgress(false);
  if (ui.show_count) {
    ui.user.ShowMessage(ProcessedCountMessage(report.processed),
                        host::MessageIcon::kInformation,
                        host::MessageButtons::kOk, ui.window_title);
  }
}

void ShowNumbered(BatchUi& ui, int number, host::MessageIcon icon) {
  ui.user.ShowMessage(ui.messages.Get(number), icon, host::MessageButtons::kOk,
                      ui.product_name);
}

}  // namespace lmt::batch

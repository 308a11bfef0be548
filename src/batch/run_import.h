// Import (`OknoFunctionImport`): every listed file (a PDF or another format
// the host imports) is imported into a fresh copy of the drawing active at
// Start, the template, in model space or in its active layout; the result
// is saved under the imported file's name where the options say, and
// closed. PDF pages are imported one by one and laid side by side, each
// the interval to the right of what is already there.
//
// Needs a CAD program: a host that refuses the import command (the
// embedded host imports nothing) ends the run after telling the user so.
#ifndef LMT_BATCH_RUN_IMPORT_H_
#define LMT_BATCH_RUN_IMPORT_H_

#include <string>
#include <string_view>
#include <vector>

#include "batch/batch_run.h"
#include "batch/host_batch.h"
#include "batch/import_commands.h"
#include "core/batch_windows.h"
#include "host/object_model.h"
#include "host/session.h"

namespace lmt::batch {

struct ImportSettings {
  std::vector<FileEntry> files;
  bool into_layout = false;  // `Option_ImportKuda(1)`
  std::string format;        // `Combo_FormatImport` text, ".PDF"
  bool all_pages = true;     // `Option_PagePDF(0)`
  std::string scale = "1";   // `Text_ScalePDF`
  std::string rotation = "0";
  double interval = 10;  // `Text_IntervalPDF`
  PdfImportOptions pdf;
  bool save = true;
  int save_version = 0;
  SaveTargetOptions target;
};

ImportSettings ImportSettingsOf(const core::OknoFunctionImport& w);

// The pages of a PDF file: its "/Type /Page" objects (not "/Pages"); at
// least 1, since a PDF the count misses still has a first page.
int CountPdfPages(std::string_view pdf_bytes);

// "Import needs a CAD program that imports FORMAT files; " + the reason.
std::string ImportUnavailableMessage(std::string_view format,
                                     const Status& refusal);

// Runs the files with `template_path` as the drawing each goes into.
BatchReport RunImportFiles(host::Application& application, BatchUi& ui,
                           const ImportSettings& settings,
                           const std::string& template_path);

// `Command_Start`: connects and imports into copies of the active drawing.
BatchReport RunImport(host::Session& session, BatchUi& ui);

}  // namespace lmt::batch

#endif  // LMT_BATCH_RUN_IMPORT_H_

#include "batch/run_import.h"

#include <fstream>
#include <iterator>

#include "batch/batch_messages.h"
#include "batch/paths.h"
#include "core/numbers.h"
#include "core/text_case.h"

namespace lmt::batch {
namespace {

bool IsPdf(std::string_view format) {
  return core::EqualsIgnoreCase(format, ".pdf");
}

int PagesOf(const std::string& path) {
  std::ifstream in(PathFromUtf8(path), std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)),
                    std::istreambuf_iterator<char>());
  return CountPdfPages(bytes);
}

OperationResult Refused(BatchUi& ui, std::string_view format, Status s) {
  ui.user.ShowMessage(ImportUnavailableMessage(format, s),
                      host::MessageIcon::kCritical, host::MessageButtons::kOk,
                      ui.product_name);
  OperationResult result;
  result.status = std::move(s);
  result.stop_run = true;
  return result;
}

}  // namespace

ImportSettings ImportSettingsOf(const core::OknoFunctionImport& w) {
  ImportSettings s;
  s.files = FilesOf(w.files);
  s.into_layout = w.option_import_kuda.selected() == 1;
  s.format = w.combo_format_import.text();
  s.all_pages = w.option_page_pdf.selected() != 1;
  s.scale = w.text_scale_pdf.text();
  s.rotation = w.combo_rotate_pdf.text();
  s.interval = core::TextToNumber(w.text_interval_pdf.text(), false);
  s.pdf.import_kinds = {
      w.check_pdfimportfilter1.checked(), w.check_pdfimportfilter2.checked(),
      w.check_pdfimportfilter3.checked(), w.check_pdfimportfilter4.checked()};
  s.pdf.layers = std::max(0, w.option_pdfimportlayers.selected());
  s.pdf.modes = {
      w.check_pdfimportmode1.checked(), w.check_pdfimportmode2.checked(),
      w.check_pdfimportmode3.checked(), w.check_pdfimportmode4.checked(),
      w.check_pdfimportmode5.checked()};
  s.save = true;
  s.save_version = w.combo_save_versia.selected();
  s.target = SaveTargetOf(w.option_save_kuda, w.uni_text_put_save_kuda,
                          w.uni_text_name_papka_save);
  return s;
}

int CountPdfPages(std::string_view bytes) {
  int pages = 0;
  constexpr std::string_view kType = "/Type";
  for (std::size_t at = bytes.find(kType); at != std::string_view::npos;
       at = bytes.find(kType, at + 1)) {
    std::size_t i = at + kType.size();
    while (i < bytes.size() && (bytes[i] == ' ' || bytes[i] == '\r' ||
                                bytes[i] == '\n' || bytes[i] == '\t')) {
      ++i;
    }
    if (bytes.substr(i, 5) != "/Page") continue;
    char next = i + 5 < bytes.size() ? bytes[i + 5] : ' ';
    if (std::isalnum(static_cast<unsigned char>(next))) continue;  // /Pages
    ++pages;
  }
  return pages > 0 ? pages : 1;
}

std::string ImportUnavailableMessage(std::string_view format,
                                     const Status& refusal) {
  return "Import needs a CAD program that imports " + std::string(format) +
         " files; this host refused the import command: " + refusal.message();
}

BatchReport RunImportFiles(host::Application& application, BatchUi& ui,
                           const ImportSettings& settings,
                           const std::string& template_path) {
  HostBatchOptions options;
  options.save = settings.save;
  options.format = SaveFormatOf(application, settings.save_version);
  options.target = settings.target;
  options.status_captions = true;
  options.open_instead = template_path;
  host::User& user = ui.user;

  auto run = [&](host::Document& document, const FileEntry& file) {
    user.SetStatusText(kCaptionImportFile);
    OperationResult result;
    auto refused = [&](Status s) {
      OperationResult r = Refused(ui, settings.format, std::move(s));
      r.skips = result.skips;
      return r;
    };
    SetVariableOrSkip(
        document, "TILEMODE",
        host::Variant(static_cast<int16_t>(settings.into_layout ? 0 : 1)), file,
        result.skips);
    if (!IsPdf(settings.format)) {
      Result<host::Variant> filedia = document.GetVariable("FILEDIA");
      SetVariableOrSkip(document, "FILEDIA", host::Variant(int16_t{0}), file,
                        result.skips);
      Status s = document.SendCommand(ImportCommand(file.path));
      if (s.ok()) user.Wait(kHostWait);
      if (filedia.ok()) {
        SetVariableOrSkip(document, "FILEDIA", *filedia, file, result.skips);
      }
      if (!s.ok()) return refused(s);
      // Read for hosts that report the translation; a failed import shows
      // as a drawing without the content, as in the CAD program itself.
      (void)document.GetVariable("IMPORTTRANSLATIONRESULT");
      return result;
    }
    for (const SystemVariable& v : PdfImportVariables(settings.pdf)) {
      SetVariableOrSkip(document, v.name, host::Variant(v.value), file,
                        result.skips);
    }
    SetVariableOrSkip(
        document, "PDFIMPORTIMAGEPATH",
        host::Variant(PathToUtf8(PdfImageFolder(PathFromUtf8(file.path)))),
        file, result.skips);
    const int pages = settings.all_pages ? PagesOf(file.path) : 1;
    double x = 0;
    for (int page = 1; page <= pages; ++page) {
      if (pages > 1) user.SetStatusText(ImportPageCaption(page, pages));
      Status s = document.SendCommand(PdfImportCommand(
          file.path, page, x, 0, settings.scale, settings.rotation));
      if (!s.ok()) return refused(s);
      user.Wait(kHostWait);
      // The next page goes the interval right of the drawing's extents.
      if (Result<host::Variant> max = document.GetVariable("VSMAX"); max.ok()) {
        if (Result<host::Point> p = host::ToPoint(*max); p.ok()) {
          x = p->x + settings.interval;
        }
      }
    }
    return result;
  };
  return RunHostBatch(application, ui, settings.files, options, run);
}

BatchReport RunImport(host::Session& session, BatchUi& ui) {
  ui.user.ClearInterrupt();
  ui.running = true;
  if (!session.Connect()) {
    ui.running = false;
    return BatchReport{};
  }
  std::string template_path =
      session.document().FullName().value_or(std::string());
  return RunImportFiles(
      *session.connection().application, ui,
      ImportSettingsOf(session.windows().okno_function_import), template_path);
}

}  // namespace lmt::batch

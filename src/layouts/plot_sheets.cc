#include "layouts/plot_sheets.h"

#include <system_error>

#include "core/file_util.h"

namespace lmt::layouts {
namespace {

std::string FileSafe(std::string_view name) {
  std::string out;
  for (char c : name) {
    const bool bad =
        std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos ||
        static_cast<unsigned char>(c) < 0x20;
    out += bad ? '_' : c;
  }
  return out.empty() ? std::string("_") : out;
}

}  // namespace

std::string_view PdfDeviceOf(host::HostKind kind) {
  return kind == host::HostKind::kBricsCad ? "Print As PDF.pc3"
                                           : "DWG To PDF.pc3";
}

std::filesystem::path PlotFileFor(const std::filesystem::path& folder,
                                  std::string_view layout) {
  const std::string stem = FileSafe(layout);
  std::filesystem::path file = folder / core::PathFromUtf8(stem + ".pdf");
  std::error_code error;
  for (int k = 2; std::filesystem::exists(file, error); ++k) {
    file =
        folder / core::PathFromUtf8(stem + " (" + std::to_string(k) + ").pdf");
  }
  return file;
}

PlotSheetsReport PlotSheets(host::Document& document,
                            const std::vector<std::string>& layouts,
                            const std::filesystem::path& folder,
                            std::string_view device) {
  PlotSheetsReport report;
  Result<host::PlotPtr> plot = document.Plot();
  Result<host::LayoutsPtr> all = document.Layouts();
  if (!plot.ok() || !all.ok()) {
    report.skips.Record("", "plot", plot.ok() ? all.status() : plot.status());
    report.outcome = host::Outcome::kRefused;
    return report;
  }
  Result<host::Variant> background = document.GetVariable("BACKGROUNDPLOT");
  report.skips.Record("", "get BACKGROUNDPLOT", background);
  if (background.ok()) {
    report.skips.Record(
        "", "set BACKGROUNDPLOT",
        document.SetVariable("BACKGROUNDPLOT", host::Variant(int16_t{0})));
  }
  Result<host::LayoutPtr> was_active = document.ActiveLayout();
  for (const std::string& name : layouts) {
    Result<host::LayoutPtr> layout = (*all)->Item(name);
    if (!report.skips.Record(name, "layout", layout)) continue;
    if (!report.skips.Record(name, "activate",
                             document.SetActiveLayout(*layout))) {
      continue;
    }
    const std::filesystem::path file = PlotFileFor(folder, name);
    Result<bool> done = (*plot)->PlotToFile(core::PathToUtf8(file), device);
    if (!report.skips.Record(name, "plot", done)) continue;
    if (!*done) {
      report.skips.Add(name, "plot",
                       Status::Refused("the program plotted nothing"));
      continue;
    }
    report.files.push_back(core::PathToUtf8(file));
  }
  if (was_active.ok()) {
    report.skips.Record("", "activate", document.SetActiveLayout(*was_active));
  }
  if (background.ok()) {
    report.skips.Record("", "set BACKGROUNDPLOT",
                        document.SetVariable("BACKGROUNDPLOT", *background));
  }
  return report;
}

}  // namespace lmt::layouts

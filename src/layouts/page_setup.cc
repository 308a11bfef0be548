#include "layouts/page_setup.h"

#include "layouts/creation_parameters.h"

namespace lmt::layouts {

PageSetupSettings ReadPageSetupSettings(const core::Windows& windows,
                                        bool decimal_comma) {
  const core::OknoIzmenitPrinter& w = windows.okno_izmenit_printer;
  PageSetupSettings s;
  s.apply = windows.okno_lmt.check_izmenit_printer.checked();
  s.device = w.text_name_printer.text();
  s.paper_from_frame = w.option_vid_bumaga.selected() != 1;
  s.paper = w.text_name_bumaga.text();
  s.tolerance = FieldToNumber(w.text_dopusk_bumaga.text(), decimal_comma);
  s.style_sheet = w.text_stil_pechati.text();
  s.center = w.check_centr_pechati.checked();
  s.one_to_one = w.check_mashtab_odin.checked();
  return s;
}

SheetPaper PaperForSheet(const PageSetupSettings& settings,
                         const std::optional<ViewportPlan>& viewport) {
  SheetPaper paper;
  if (!settings.paper_from_frame) {
    paper.media = settings.paper;
    return paper;
  }
  if (!viewport) return paper;
  paper.choice =
      ChoosePaper(viewport->frame.width * viewport->scale,
                  viewport->frame.height * viewport->scale, settings.tolerance);
  if (paper.choice) paper.media = MediaNameOf(*paper.choice);
  return paper;
}

void ApplyPageSetup(host::Layout& layout, std::string_view name,
                    const PageSetupSettings& settings, const SheetPaper& paper,
                    host::SkipLog& skips) {
  if (!settings.device.empty()) {
    skips.Record(name, "plot device", layout.SetConfigName(settings.device));
    // Some programs read the new device's papers only when told to; the
    // others do not know the call, which changes nothing for them.
    Status refreshed = layout.RefreshPlotDeviceInfo();
    if (refreshed.code() != StatusCode::kNotSupported) {
      skips.Record(name, "plot device info", refreshed);
    }
  }
  if (!paper.media.empty()) {
    skips.Record(name, "paper", layout.SetCanonicalMediaName(paper.media));
  } else if (settings.paper_from_frame) {
    skips.Record(name, "paper",
                 Status::NotFound("no ISO sheet holds the frame"));
  }
  if (!settings.style_sheet.empty()) {
    skips.Record(name, "plot style table",
                 layout.SetStyleSheet(settings.style_sheet));
  }
  // The paper is named the way the sheet lies, so it is plotted unturned.
  skips.Record(name, "plot rotation", layout.SetPlotRotation(0));
  skips.Record(name, "centre plot", layout.SetCenterPlot(settings.center));
  if (settings.one_to_one) {
    skips.Record(name, "standard scale", layout.SetUseStandardScale(true));
    skips.Record(name, "standard scale",
                 layout.SetStandardScale(host::kScale1To1));
  }
}

}  // namespace lmt::layouts

// The page set-up each new layout gets when the main window's
// Check_IzmenitPrinter is set: the settings of OknoIzmenitPrinter taken
// once per run, the paper of each sheet, and the host calls that apply
// them to a layout (after its pattern is copied and its plot type set).
#ifndef LMT_LAYOUTS_PAGE_SETUP_H_
#define LMT_LAYOUTS_PAGE_SETUP_H_

#include <optional>
#include <string>

#include "core/windows.h"
#include "host/layout.h"
#include "host/skip_log.h"
#include "layouts/paper_choice.h"
#include "layouts/viewport_geometry.h"

namespace lmt::layouts {

struct PageSetupSettings {
  bool apply = false;            // OknoLmt's Check_IzmenitPrinter
  std::string device;            // Text_NamePrinter; empty keeps the device
  bool paper_from_frame = true;  // Option_VidBumaga 0
  std::string paper;             // Text_NameBumaga, the fixed paper
  double tolerance = 1;          // Text_DopuskBumaga, millimetres
  std::string style_sheet;       // Text_StilPechati; empty keeps the table
  bool center = true;            // Check_CentrPechati
  bool one_to_one = true;        // Check_MashtabOdin
};

// The settings as typed; a tolerance that is not a number counts as 0.
PageSetupSettings ReadPageSetupSettings(const core::Windows& windows,
                                        bool decimal_comma);

// The paper of one sheet.
struct SheetPaper {
  std::string media;                  // the device's name; empty: none fits
  std::optional<PaperChoice> choice;  // when picked from the frame
};

// The fixed paper, or the one the frame's size on paper (its extent times
// the viewport scale) asks for. A frame without a viewport plan gets no
// paper from its size.
SheetPaper PaperForSheet(const PageSetupSettings& settings,
                         const std::optional<ViewportPlan>& viewport);

// Device, paper, style table, rotation 0, centring and the 1:1 scale on
// `layout`, each refusal recorded under `name` and passed over. A sheet
// without a paper keeps the layout's.
void ApplyPageSetup(host::Layout& layout, std::string_view name,
                    const PageSetupSettings& settings, const SheetPaper& paper,
                    host::SkipLog& skips);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_PAGE_SETUP_H_

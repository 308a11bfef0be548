// Plotting sheets to PDF through the CAD program's own plot interface
// (Document.Plot): one file per layout, in a folder, named like the layout.
// Plotting in the background is switched off for the run (BACKGROUNDPLOT 0),
// so that each plot is done before the next layout is made current, and
// restored after. A refused plot skips that sheet and is recorded; the run
// goes on with the next.
#ifndef LMT_LAYOUTS_PLOT_SHEETS_H_
#define LMT_LAYOUTS_PLOT_SHEETS_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/host_kind.h"
#include "host/object_model.h"
#include "host/outcome.h"
#include "host/skip_log.h"

namespace lmt::layouts {

// The PDF plot device a program family ships: "DWG To PDF.pc3" for the
// families that follow AutoCAD, "Print As PDF.pc3" for BricsCAD.
std::string_view PdfDeviceOf(host::HostKind kind);

// "<folder>/<layout>.pdf", or with " (2)", " (3)"... when that file exists:
// the programs refuse to plot over a file, and an earlier plot is kept.
// Characters that file names cannot hold become "_".
std::filesystem::path PlotFileFor(const std::filesystem::path& folder,
                                  std::string_view layout);

struct PlotSheetsReport {
  host::Outcome outcome = host::Outcome::kDone;
  std::vector<std::string> files;  // plotted, in the order of the layouts
  host::SkipLog skips;             // refused steps, under the layout's name
};

// Plots each of `layouts` (names; missing ones are skipped and recorded)
// through `device` into `folder`. kRefused with nothing done when the
// program has no plot interface.
PlotSheetsReport PlotSheets(host::Document& document,
                            const std::vector<std::string>& layouts,
                            const std::filesystem::path& folder,
                            std::string_view device);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_PLOT_SHEETS_H_

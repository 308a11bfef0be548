// Plotting a drawing's paper-space layouts for `layomat plot` and for
// `create-layouts --pdf`: which layouts (a wildcard pattern, or a list of
// names), into which files (one PDF, or one file per sheet named after the
// layout), with a progress line on a terminal and a report of what could not
// be drawn.
//
// Plotting needs the cairo renderer (render/), which only Linux builds with
// cairo have; elsewhere these functions say plotting is unavailable.
#ifndef LMT_CLI_PLOT_RUN_H_
#define LMT_CLI_PLOT_RUN_H_

#include <string>
#include <string_view>
#include <vector>

#include "cli/registry.h"

namespace lmt::cli {

struct PlotRequest {
  std::string drawing;             // the DXF file to read
  std::string output;              // OUT.pdf, OUT.svg or OUT.png
  std::string pattern = "*";       // layout names to plot (* and ?)
  std::vector<std::string> names;  // when not empty: only these layouts
  bool file_per_sheet = false;     // always so for SVG and PNG
  bool monochrome = false;
};

// Plots as requested; returns the exit status (2 for an output type other
// than .pdf/.svg/.png, 1 when no layout matches or plotting is unavailable,
// 3 when the drawing cannot be read or a file cannot be written).
int RunPlot(CommandContext& context, const PlotRequest& request);

// create-layouts --pdf FILE: plots the layouts just made (`created`) from
// the saved -o drawing into FILE as RunPlot does. Returns 0 at once without
// --pdf, else RunPlot's status.
int PlotNewLayouts(CommandContext& context,
                   const std::vector<std::string>& created);

// False when this build has no renderer.
bool PlottingAvailable();

// Case-insensitive match with * (any run) and ? (one character).
bool MatchesWildcard(std::string_view name, std::string_view pattern);

// OUT-stem + "-" + layout + OUT's extension, beside OUT; characters that
// some file systems refuse (/ \ : * ? " < > | and controls) become '_'.
std::string SheetFileName(const std::string& out, std::string_view layout);

}  // namespace lmt::cli

#endif  // LMT_CLI_PLOT_RUN_H_

// Plotting layouts into a file: vector PDF (one page per layout, with an
// outline entry named after each layout), SVG or PNG (one layout per file).
//
// Each page has its layout's paper size (sheet_geometry.h). The file is
// written under a temporary name beside `path` and renamed into place only
// when complete, so a failed plot never leaves a half-written file and an
// existing one survives it.
#ifndef LMT_RENDER_PLOT_FILE_H_
#define LMT_RENDER_PLOT_FILE_H_

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "dxf/document.h"
#include "dxf/objects.h"
#include "dxf/status.h"
#include "render/sheet_renderer.h"

namespace lmt::render {

enum class PlotFormat { kPdf, kSvg, kPng };

// From the file name's extension (any case); nullopt for anything else.
std::optional<PlotFormat> PlotFormatFor(const std::string& path);

struct PlotOptions {
  RenderOptions render;
  double png_dpi = 150;
  // The model's index, for a caller that plots sheets of one drawing in
  // several calls; without it a call of several sheets builds its own.
  const ModelIndex* model_index = nullptr;
};

struct SheetResult {
  std::string layout;
  double width_mm = 0;
  double height_mm = 0;
  std::map<std::string, int> not_drawn;
};

// Called before each sheet with its index and layout name.
using PlotProgress = std::function<void(size_t index, const std::string&)>;

// Plots `layouts` into `path`. REQUIRES: at least one layout, and exactly
// one unless `format` is PDF. IOError naming the file when it cannot be
// written (nothing is left behind then). `results` (optional) receives one
// entry per sheet.
dxf::Status PlotLayouts(dxf::Document& doc,
                        std::span<const dxf::Layout> layouts,
                        const std::string& path, PlotFormat format,
                        const PlotOptions& options,
                        std::vector<SheetResult>* results,
                        const PlotProgress& progress = {});

}  // namespace lmt::render

#endif  // LMT_RENDER_PLOT_FILE_H_

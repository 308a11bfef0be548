#include "render/plot_file.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <optional>
#include <system_error>

#include "dxf/check.h"
#include "dxf/encoding.h"

namespace lmt::render {
namespace {

constexpr double kPointsPerMm = 72 / 25.4;
// Keeps a PNG of a huge sheet within memory.
constexpr double kMaxPixels = 16000;

std::string Lower(std::string s) {
  for (char& c : s)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

dxf::Status CairoError(const std::string& path, cairo_status_t status) {
  return dxf::Status::IOError(
      path + ": cannot write: " + cairo_status_to_string(status));
}

// User space: page millimetres, y up.
void SetPageSpace(cairo_t* cr, double height_mm, double units_per_mm) {
  cairo_identity_matrix(cr);
  cairo_translate(cr, 0, height_mm * units_per_mm);
  cairo_scale(cr, units_per_mm, -units_per_mm);
}

void Discard(const std::string& temp) {
  std::error_code ec;
  std::filesystem::remove(temp, ec);  // best effort: nothing to report
}

}  // namespace

std::optional<PlotFormat> PlotFormatFor(const std::string& path) {
  const std::string ext =
      Lower(std::filesystem::path(path).extension().string());
  if (ext == ".pdf") return PlotFormat::kPdf;
  if (ext == ".svg") return PlotFormat::kSvg;
  if (ext == ".png") return PlotFormat::kPng;
  return std::nullopt;
}

dxf::Status PlotLayouts(dxf::Document& doc,
                        std::span<const dxf::Layout> layouts,
                        const std::string& path, PlotFormat format,
                        const PlotOptions& options,
                        std::vector<SheetResult>* results,
                        const PlotProgress& progress) {
  DXF_CHECK(!layouts.empty());
  DXF_CHECK(layouts.size() == 1 || format == PlotFormat::kPdf);
  const std::string temp = path + ".partial-" + std::to_string(getpid());
  std::vector<SheetGeometry> sheets;
  for (const dxf::Layout& layout : layouts) {
    sheets.push_back(SheetGeometryOf(doc, layout));
  }

  cairo_surface_t* surface = nullptr;
  double units_per_mm = kPointsPerMm;
  const double w0 = sheets[0].width_mm, h0 = sheets[0].height_mm;
  switch (format) {
    case PlotFormat::kPdf:
      surface = cairo_pdf_surface_create(temp.c_str(), w0 * kPointsPerMm,
                                         h0 * kPointsPerMm);
      break;
    case PlotFormat::kSvg:
      surface = cairo_svg_surface_create(temp.c_str(), w0 * kPointsPerMm,
                                         h0 * kPointsPerMm);
      break;
    case PlotFormat::kPng: {
      units_per_mm = options.png_dpi / 25.4;
      const double largest = std::max(w0, h0) * units_per_mm;
      if (largest > kMaxPixels) units_per_mm *= kMaxPixels / largest;
      surface = cairo_image_surface_create(
          CAIRO_FORMAT_RGB24,
          std::max(1, static_cast<int>(std::lround(w0 * units_per_mm))),
          std::max(1, static_cast<int>(std::lround(h0 * units_per_mm))));
      break;
    }
  }
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
    const cairo_status_t status = cairo_surface_status(surface);
    cairo_surface_destroy(surface);
    Discard(temp);
    return CairoError(path, status);
  }
  cairo_t* cr = cairo_create(surface);
  std::optional<ModelIndex> own_index;
  const ModelIndex* index = options.model_index;
  if (index == nullptr && layouts.size() > 1) index = &own_index.emplace(doc);
  for (size_t i = 0; i < layouts.size(); ++i) {
    // Names are stored in the drawing's code page; outlines want UTF-8.
    const std::string name =
        dxf::DecodeText(layouts[i].name(), dxf::CodePageOf(doc));
    if (progress) progress(i, name);
    const SheetGeometry& g = sheets[i];
    if (format == PlotFormat::kPdf) {
      if (i > 0) {
        cairo_pdf_surface_set_size(surface, g.width_mm * kPointsPerMm,
                                   g.height_mm * kPointsPerMm);
      }
      const std::string target = "page=" + std::to_string(i + 1);
      cairo_pdf_surface_add_outline(surface, CAIRO_PDF_OUTLINE_ROOT,
                                    name.c_str(), target.c_str(),
                                    CAIRO_PDF_OUTLINE_FLAG_OPEN);
    }
    if (format == PlotFormat::kPng) {
      cairo_set_source_rgb(cr, 1, 1, 1);
      cairo_paint(cr);
    }
    SetPageSpace(cr, g.height_mm, units_per_mm);
    SheetResult result;
    result.layout = name;
    result.width_mm = g.width_mm;
    result.height_mm = g.height_mm;
    result.not_drawn =
        RenderSheet(doc, layouts[i], g, options.render, cr, index);
    if (results != nullptr) results->push_back(std::move(result));
    if (format != PlotFormat::kPng) cairo_show_page(cr);
  }
  cairo_status_t status = cairo_status(cr);
  cairo_destroy(cr);
  if (status == CAIRO_STATUS_SUCCESS && format == PlotFormat::kPng) {
    status = cairo_surface_write_to_png(surface, temp.c_str());
  }
  cairo_surface_finish(surface);
  if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface);
  cairo_surface_destroy(surface);
  if (status != CAIRO_STATUS_SUCCESS) {
    Discard(temp);
    return CairoError(path, status);
  }
  std::error_code ec;
  std::filesystem::rename(temp, path, ec);
  if (ec) {
    Discard(temp);
    return dxf::Status::IOError(path + ": cannot write: " + ec.message());
  }
  return dxf::Status::Ok();
}

}  // namespace lmt::render

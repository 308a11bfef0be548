#include "cli/plot_run.h"

#include <cctype>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

#include "cli/cli_options.h"
#include "cli/cli_user.h"
#include "dxf/document.h"
#include "dxf/encoding.h"
#include "dxf/objects.h"

#ifdef LMT_HAVE_RENDER
#include "render/plot_file.h"
#endif

namespace lmt::cli {

bool MatchesWildcard(std::string_view name, std::string_view pattern) {
  auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  };
  // Greedy matching with one backtrack point, enough for * and ?.
  size_t n = 0, p = 0, star = std::string_view::npos, mark = 0;
  while (n < name.size()) {
    if (p < pattern.size() &&
        (pattern[p] == '?' ||
         (pattern[p] != '*' && same(pattern[p], name[n])))) {
      ++n, ++p;
    } else if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      mark = n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::string SheetFileName(const std::string& out, std::string_view layout) {
  const std::filesystem::path path(out);
  std::string safe;
  for (char c : layout) {
    const bool unsafe =
        static_cast<unsigned char>(c) < 32 ||
        std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
    safe += unsafe ? '_' : c;
  }
  std::filesystem::path sheet = path;
  sheet.replace_filename(path.stem().string() + "-" + safe +
                         path.extension().string());
  return sheet.string();
}

int PlotNewLayouts(CommandContext& context,
                   const std::vector<std::string>& created) {
  const CliOptions& options = context.options;
  if (!options.pdf || !options.output) return kExitOk;
  if (created.empty()) return kExitOk;  // nothing new to plot
  PlotRequest request;
  request.drawing = *options.output;
  request.output = *options.pdf;
  request.names = created;
  if (options.layouts) request.pattern = *options.layouts;
  request.file_per_sheet = options.file_per_sheet;
  request.monochrome = options.monochrome;
  return RunPlot(context, request);
}

#ifdef LMT_HAVE_RENDER

bool PlottingAvailable() { return true; }

namespace {

void ReportNotDrawn(CommandContext& context,
                    const std::vector<render::SheetResult>& sheets) {
  for (const render::SheetResult& sheet : sheets) {
    if (sheet.not_drawn.empty()) continue;
    context.err << "layomat: " << sheet.layout << ": not drawn:";
    const char* separator = " ";
    for (const auto& [type, count] : sheet.not_drawn) {
      context.err << separator << count << " " << type;
      separator = ", ";
    }
    context.err << "\n";
  }
}

}  // namespace

int RunPlot(CommandContext& context, const PlotRequest& request) {
  const std::optional<render::PlotFormat> format =
      render::PlotFormatFor(request.output);
  if (!format) {
    context.err << "layomat: " << request.output
                << ": the plot file must end in .pdf, .svg or .png\n";
    return kExitUsage;
  }
  std::unique_ptr<dxf::Document> doc;
  dxf::Status loaded =
      dxf::Document::Load(request.drawing, &doc, {context.options.recover});
  if (!loaded.ok()) {
    context.err << "layomat: " << loaded.message() << "\n";
    return kExitFileError;
  }
  for (const std::string& repair : doc->repairs()) {
    context.err << "layomat: repaired: " << repair << "\n";
  }
  std::vector<dxf::Layout> chosen;
  for (const dxf::Layout& layout : dxf::Layouts(*doc)) {
    if (layout.is_model() || dxf::LayoutBlock(*doc, layout) == nullptr) {
      continue;
    }
    const std::string name =
        dxf::DecodeText(layout.name(), dxf::CodePageOf(*doc));
    bool wanted = MatchesWildcard(name, request.pattern);
    if (wanted && !request.names.empty()) {
      wanted = false;
      for (const std::string& n : request.names) wanted |= n == name;
    }
    if (wanted) chosen.push_back(layout);
  }
  if (chosen.empty()) {
    context.err << "layomat: " << request.drawing
                << ": no paper-space layout matches '" << request.pattern
                << "'\n";
    return kExitRefused;
  }
  render::PlotOptions options;
  options.render.monochrome = request.monochrome;
  const bool terminal = StderrIsTerminal();
  const size_t total = chosen.size();
  size_t done = 0;
  render::PlotProgress progress;
  if (terminal) {
    progress = [&](size_t, const std::string& name) {
      context.err << "\rplotting " << ++done << "/" << total << " " << name
                  << "\x1b[K" << std::flush;
    };
  }
  std::vector<render::SheetResult> sheets;
  dxf::Status written;
  const bool per_sheet =
      request.file_per_sheet || *format != render::PlotFormat::kPdf;
  std::vector<std::pair<std::string, std::string>> files;  // layout, file
  if (per_sheet) {
    // One index of the model for all the files, not one per file.
    std::optional<render::ModelIndex> index;
    if (chosen.size() > 1) options.model_index = &index.emplace(*doc);
    for (const dxf::Layout& layout : chosen) {
      const std::string name =
          dxf::DecodeText(layout.name(), dxf::CodePageOf(*doc));
      const std::string file = SheetFileName(request.output, name);
      written = render::PlotLayouts(*doc, std::span(&layout, 1), file, *format,
                                    options, &sheets, progress);
      if (!written.ok()) break;
      files.emplace_back(name, file);
    }
  } else {
    written = render::PlotLayouts(*doc, chosen, request.output, *format,
                                  options, &sheets, progress);
    if (written.ok()) {
      for (const dxf::Layout& layout : chosen) {
        files.emplace_back(
            dxf::DecodeText(layout.name(), dxf::CodePageOf(*doc)),
            request.output);
      }
    }
  }
  if (terminal) context.err << "\r\x1b[K" << std::flush;
  ReportNotDrawn(context, sheets);
  // Per-sheet lines; with --json standard output holds the report alone.
  if (!context.options.json && !context.options.quiet) {
    for (const auto& [layout, file] : files) {
      context.out << "sheet\t" << layout << "\t" << file << "\n";
    }
  }
  if (!written.ok()) {
    context.err << "layomat: " << written.message() << "\n";
    return kExitFileError;
  }
  return kExitOk;
}

#else  // no renderer in this build

bool PlottingAvailable() { return false; }

int RunPlot(CommandContext& context, const PlotRequest&) {
  context.err << "layomat: plotting is unavailable in this build (it needs "
                 "the cairo library)\n";
  return kExitRefused;
}

#endif

}  // namespace lmt::cli

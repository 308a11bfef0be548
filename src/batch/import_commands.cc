#include "batch/import_commands.h"

#include <cstdio>

#include "batch/script.h"

namespace lmt::batch {
namespace {

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

std::string WithDecimalPoint(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c == ',') c = '.';
  }
  return out;
}

std::string Coordinate(double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.10g", value);
  return buffer;
}

}  // namespace

std::vector<SystemVariable> PdfImportVariables(
    const PdfImportOptions& options) {
  int16_t filter = 0;
  for (std::size_t k = 0; k < options.import_kinds.size(); ++k) {
    if (!options.import_kinds[k]) filter |= static_cast<int16_t>(1 << k);
  }
  int16_t mode = 0;
  for (std::size_t k = 0; k < options.modes.size(); ++k) {
    if (options.modes[k]) mode |= static_cast<int16_t>(1 << k);
  }
  return {{"PDFIMPORTFILTER", filter},
          {"PDFIMPORTLAYERS", static_cast<int16_t>(options.layers)},
          {"PDFIMPORTMODE", mode}};
}

std::filesystem::path PdfImageFolder(const std::filesystem::path& drawing) {
  return drawing.parent_path() / "PDF Images";
}

std::string PdfImportCommand(std::string_view pdf_path, int page,
                             double insert_x, double insert_y,
                             std::string_view scale,
                             std::string_view rotation) {
  std::string args = Quoted("_.-PDFIMPORT") + " " + Quoted("_F") + " " +
                     Quoted(DoubleBackslashes(pdf_path)) + " " +
                     Quoted(std::to_string(page)) + " " +
                     Quoted(Coordinate(insert_x) + "," + Coordinate(insert_y)) +
                     " " + Quoted(WithDecimalPoint(scale)) + " " +
                     Quoted(WithDecimalPoint(rotation));
  return "(command " + args + ")\r";
}

std::string ImportCommand(std::string_view path) {
  return "(command " + Quoted("_Import") + " " +
         Quoted(DoubleBackslashes(path)) + ")\r";
}

std::string ImportFileFilter(std::string_view format, std::string_view ext) {
  return std::string(format) + " Files (*" + std::string(ext) + ")|*" +
         std::string(ext);
}

}  // namespace lmt::batch

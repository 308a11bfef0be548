// Import's texts: the system variables set before a PDF import, the
// "_.-PDFIMPORT" and "_Import" calls, the file-dialog filter of the chosen
// format. The page loop, the view variables that place the pages and the
// FILEDIA switch around "_Import" stay with the run over the host.
#ifndef LMT_BATCH_IMPORT_COMMANDS_H_
#define LMT_BATCH_IMPORT_COMMANDS_H_

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lmt::batch {

// The PDF options of the Import window.
struct PdfImportOptions {
  // `Check_PDFIMPORTFILTER1..4`: import geometry, TrueType text, solid
  // fills, raster images. A ticked box imports that kind; the host's
  // PDFIMPORTFILTER bits exclude kinds (1, 2, 4, 8), so a clear box sets
  // its bit.
  std::array<bool, 4> import_kinds = {true, true, true, true};
  // `Option_PDFIMPORTLAYERS(0..2)`: PDF layers, layers by object type,
  // the current layer; the index is the variable's value.
  int layers = 0;
  // `Check_PDFIMPORTMODE1..5`: into a block, apply lineweights, join
  // segments into polylines, fills as hatches, merge collinear segments;
  // box k sets bit 2^(k-1) of PDFIMPORTMODE.
  std::array<bool, 5> modes = {false, true, true, false, false};
};

// The programs hold these as 16-bit integers and refuse a 32-bit value.
struct SystemVariable {
  std::string name;
  int16_t value = 0;
};

// PDFIMPORTFILTER, PDFIMPORTLAYERS and PDFIMPORTMODE with their values.
std::vector<SystemVariable> PdfImportVariables(const PdfImportOptions& options);

// PDFIMPORTIMAGEPATH: the folder "PDF Images" beside the drawing.
std::filesystem::path PdfImageFolder(const std::filesystem::path& drawing);

// One page: (command "_.-PDFIMPORT" "_F" "path" "page" "x,y" "scale"
// "rotation") + CR, the path's backslashes doubled. `scale` and `rotation`
// are the window's texts; a decimal comma becomes a point, since the host
// would read "0,5" as a point.
std::string PdfImportCommand(std::string_view pdf_path, int page,
                             double insert_x, double insert_y,
                             std::string_view scale, std::string_view rotation);

// Every other format: (command "_Import" "path") + CR, backslashes doubled.
std::string ImportCommand(std::string_view path);

// format + " Files (*" + ext + ")|*" + ext, e.g. "PDF Files (*.pdf)|*.pdf".
std::string ImportFileFilter(std::string_view format, std::string_view ext);

}  // namespace lmt::batch

#endif  // LMT_BATCH_IMPORT_COMMANDS_H_

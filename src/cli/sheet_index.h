// The sheet index of `create-layouts --index-layout NAME --index-at X,Y`:
// a table of the sheets made (number, layout name, chosen title-block
// attributes, scale) drawn on a layout as lines and single-line texts, so
// that every program shows it the same, table objects understood or not.
// The table hangs down and to the right from its top left corner at X,Y;
// its columns are as wide as their longest text.
#ifndef LMT_CLI_SHEET_INDEX_H_
#define LMT_CLI_SHEET_INDEX_H_

#include <string>
#include <vector>

#include "core/status.h"
#include "host/document.h"

namespace lmt::cli {

// Paper units (millimetres on a sheet).
inline constexpr double kIndexTextHeight = 3.5;
inline constexpr double kIndexRowHeight = 8;
inline constexpr double kIndexCellMargin = 2;

// Rows of cell texts; row 0 is the header. Every row as long as the header.
using IndexCells = std::vector<std::vector<std::string>>;

struct IndexLine {
  double x1, y1, x2, y2;
};
struct IndexText {
  std::string text;
  double x, y;  // left end of the base line
};
struct IndexDrawing {
  std::vector<IndexLine> lines;
  std::vector<IndexText> texts;  // row by row, left to right
  double width = 0;
  double height = 0;
};

// The lines and texts of `cells` with the top left corner at (x, y).
// REQUIRES: cells is not empty and its rows are as long as row 0.
IndexDrawing LayOutIndex(const IndexCells& cells, double x, double y);

// Draws `drawing` on layout `layout` of `document`. NotFound naming the
// layout when the drawing has none of that name; a host refusal otherwise.
Status DrawIndex(host::Document& document, const std::string& layout,
                 const IndexDrawing& drawing);

}  // namespace lmt::cli

#endif  // LMT_CLI_SHEET_INDEX_H_

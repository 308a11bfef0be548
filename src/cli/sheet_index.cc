#include "cli/sheet_index.h"

#include <algorithm>

#include "core/check.h"
#include "host/block.h"
#include "host/layout.h"

namespace lmt::cli {
namespace {

// Characters, not bytes: a Cyrillic letter is as wide as a Latin one.
int CharacterCount(const std::string& text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

IndexDrawing LayOutIndex(const IndexCells& cells, double x, double y) {
  LMT_CHECK(!cells.empty());
  const size_t columns = cells.front().size();
  // An average glyph of the standard fonts is under 0.8 of the height.
  std::vector<double> widths(columns, 0);
  for (const std::vector<std::string>& row : cells) {
    LMT_CHECK(row.size() == columns);
    for (size_t c = 0; c < columns; ++c) {
      widths[c] =
          std::max(widths[c], CharacterCount(row[c]) * 0.8 * kIndexTextHeight +
                                  2 * kIndexCellMargin);
    }
  }
  IndexDrawing drawing;
  for (double w : widths) drawing.width += w;
  drawing.height = kIndexRowHeight * static_cast<double>(cells.size());
  for (size_t r = 0; r <= cells.size(); ++r) {
    const double line_y = y - kIndexRowHeight * static_cast<double>(r);
    drawing.lines.push_back({x, line_y, x + drawing.width, line_y});
  }
  double column_x = x;
  for (size_t c = 0; c <= columns; ++c) {
    drawing.lines.push_back({column_x, y, column_x, y - drawing.height});
    if (c == columns) break;
    for (size_t r = 0; r < cells.size(); ++r) {
      const double base = y - kIndexRowHeight * static_cast<double>(r + 1) +
                          (kIndexRowHeight - kIndexTextHeight) / 2;
      if (!cells[r][c].empty()) {
        drawing.texts.push_back(
            {cells[r][c], column_x + kIndexCellMargin, base});
      }
    }
    column_x += widths[c];
  }
  std::stable_sort(drawing.texts.begin(), drawing.texts.end(),
                   [](const IndexText& a, const IndexText& b) {
                     return a.y > b.y;  // row by row, top down
                   });
  return drawing;
}

Status DrawIndex(host::Document& document, const std::string& layout,
                 const IndexDrawing& drawing) {
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return layouts.status();
  Result<host::LayoutPtr> found = (*layouts)->Item(layout);
  if (!found.ok()) {
    return Status::NotFound("--index-layout: the drawing has no layout \"" +
                            layout + "\"");
  }
  Result<host::BlockPtr> block = (*found)->Block();
  if (!block.ok()) return block.status();
  for (const IndexLine& line : drawing.lines) {
    Result<host::PolylinePtr> added =
        (*block)->AddLightWeightPolyline({line.x1, line.y1, line.x2, line.y2});
    if (!added.ok()) return added.status();
  }
  for (const IndexText& text : drawing.texts) {
    Result<host::TextPtr> added = (*block)->AddText(
        text.text, host::Point{text.x, text.y, 0}, kIndexTextHeight);
    if (!added.ok()) return added.status();
  }
  return Status::Ok();
}

}  // namespace lmt::cli

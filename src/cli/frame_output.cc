#include "cli/frame_output.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "layouts/layout_naming.h"

namespace lmt::cli {
namespace {

using frames::Column;

// Display width of UTF-8 text: one per code point.
size_t Width(std::string_view text) {
  return static_cast<size_t>(std::count_if(
      text.begin(), text.end(),
      [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace

std::string JsonString(std::string_view text) {
  std::string out = "\"";
  for (char c : text) {
    const auto u = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\t') {
      out += "\\t";
    } else if (u < 0x20) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", u);
      out += buf;
    } else {
      out += c;  // UTF-8 passes as it is
    }
  }
  out += '"';
  return out;
}

void WriteFramesJson(const frames::FrameTable& table, std::ostream& out) {
  out << "{\"frames\": [";
  for (int r = 1; r < table.row_count(); ++r) {
    out << (r == 1 ? "\n  {" : ",\n  {");
    for (int c = 0; c < frames::kColumnCount; ++c) {
      const auto column = static_cast<Column>(c);
      if (c > 0) out << ", ";
      out << JsonString(frames::ColumnName(column)) << ": "
          << JsonString(table.Cell(r, column));
    }
    out << "}";
  }
  out << (table.row_count() > 1 ? "\n]}\n" : "]}\n");
}

void WriteFramesText(const frames::FrameTable& table, std::ostream& out) {
  const Column shown[] = {
      Column::kNumber,    Column::kLayoutName, Column::kTyp,
      Column::kBlockName, Column::kAttribute,  Column::kMinX,
      Column::kMinY,      Column::kMaxX,       Column::kMaxY,
      Column::kWidth,     Column::kHeight,     Column::kAngle,
      Column::kId};
  std::vector<size_t> widths;
  for (Column column : shown) {
    size_t w = Width(frames::ColumnName(column));
    for (int r = 1; r < table.row_count(); ++r) {
      w = std::max(w, Width(table.Cell(r, column)));
    }
    widths.push_back(w);
  }
  auto line = [&](auto cell_of) {
    std::string text;
    for (size_t i = 0; i < std::size(shown); ++i) {
      std::string_view cell = cell_of(shown[i]);
      text += cell;
      if (i + 1 < std::size(shown)) {
        text.append(widths[i] - Width(cell) + 2, ' ');
      }
    }
    while (!text.empty() && text.back() == ' ') text.pop_back();
    out << text << "\n";
  };
  line([](Column c) { return frames::ColumnName(c); });
  for (int r = 1; r < table.row_count(); ++r) {
    line([&](Column c) -> std::string_view { return table.Cell(r, c); });
  }
  out << table.last_row() << (table.last_row() == 1 ? " frame" : " frames")
      << "\n";
}

frames::RowNamer MainWindowNamer(core::Windows& windows) {
  return [&windows](frames::FrameTable& table) {
    const core::OknoLmt& main = windows.okno_lmt;
    layouts::NamingTexts texts{main.uni_text_leyout_name0.text(),
                               main.uni_text_leyout_name1.text(),
                               main.uni_text_leyout_name2.text()};
    layouts::NameAllRows(table, main.text_stroka_name_file.text(), texts);
  };
}

}  // namespace lmt::cli

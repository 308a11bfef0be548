#include "frames/frame_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <utility>

#include "core/check.h"

namespace lmt::frames {
namespace {

constexpr std::array<std::string_view, kColumnCount> kColumnNames = {
    "№",       "Layout Name", "Attribute", "Block Name", "PointX1", "PointY1",
    "PointX2", "PointY2",     "PointX3",   "PointY3",    "PointX4", "PointY4",
    "SortX",   "SortY",       "Dist",      "Poly",       "PolyX",   "PolyY",
    "ID",      "MaxX",        "MaxY",      "MinX",       "MinY",    "Typ",
    "Angle",   "Width",       "Height"};

// Which column each language caption TablTekstiLang0..6 labels.
constexpr std::array<Column, 7> kCaptionColumns = {
    Column::kNumber,    Column::kLayoutName, Column::kId,   Column::kBlockName,
    Column::kAttribute, Column::kSortX,      Column::kSortY};

int Index(Column column) { return static_cast<int>(column); }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
    text.remove_prefix(1);
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace

std::string_view ColumnName(Column column) {
  return kColumnNames[Index(column)];
}

TableCaptions DefaultTableCaptions() {
  return {"№",         "Layout Name", "ID",   "Block Name",
          "Attribute", "SortX",       "SortY"};
}

std::optional<Quad> FirstFourVertices(const std::vector<double>& coordinates) {
  if (coordinates.size() < 8) return std::nullopt;
  Quad corners;
  for (int i = 0; i < 4; ++i) {
    corners[i] = {coordinates[2 * i], coordinates[2 * i + 1]};
  }
  return corners;
}

std::string FormatNumber(double value) {
  if (!std::isfinite(value)) return "";
  if (value == 0) value = 0;  // "-0" would read back as a different text
  // Fixed notation up to 308 integral digits, or a denormal's 324 fraction
  // digits behind "0.".
  char buf[400];
  auto [end, ec] =
      std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
  LMT_CHECK(ec == std::errc());
  return std::string(buf, end);
}

std::optional<double> ParseNumber(std::string_view text) {
  text = Trim(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  // from_chars alone would also take "inf", "nan" and a second sign.
  if (text.empty() ||
      !(text.front() == '.' || (text.front() >= '0' && text.front() <= '9'))) {
    return std::nullopt;
  }
  double value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(),
                                   value, std::chars_format::general);
  if (ec != std::errc() || end != text.data() + text.size() ||
      !std::isfinite(value)) {
    return std::nullopt;
  }
  return negative ? -value : value;
}

FrameTable::FrameTable(TableCaptions captions)
    : captions_(std::move(captions)) {
  Reset();
}

void FrameTable::Reset() {
  rows_.assign(kResetRowCount, Row{});
  WriteHeader();
}

void FrameTable::SetCaptions(TableCaptions captions) {
  captions_ = std::move(captions);
  WriteHeader();
}

void FrameTable::WriteHeader() {
  Row& header = rows_[0];
  for (int c = 0; c < kColumnCount; ++c) header[c] = kColumnNames[c];
  for (size_t i = 0; i < kCaptionColumns.size(); ++i) {
    header[Index(kCaptionColumns[i])] = captions_[i];
  }
}

void FrameTable::SetRowCount(int count) {
  LMT_CHECK(count >= 1);
  rows_.resize(count);
}

int FrameTable::AddRow() {
  rows_.emplace_back();
  return last_row();
}

const std::string& FrameTable::Cell(int row, Column column) const {
  LMT_CHECK(row >= 0 && row < row_count());
  return rows_[row][Index(column)];
}

void FrameTable::SetCell(int row, Column column, std::string text) {
  LMT_CHECK(row >= 0 && row < row_count());
  rows_[row][Index(column)] = std::move(text);
}

void FrameTable::SetNumber(int row, Column column, double value) {
  SetCell(row, column, FormatNumber(value));
}

std::optional<double> FrameTable::Number(int row, Column column) const {
  return ParseNumber(Cell(row, column));
}

void FrameTable::SetCorners(int row, const Quad& corners) {
  for (int i = 0; i < 4; ++i) {
    SetNumber(row, static_cast<Column>(Index(Column::kPointX1) + 2 * i),
              corners[i].x);
    SetNumber(row, static_cast<Column>(Index(Column::kPointY1) + 2 * i),
              corners[i].y);
  }
}

std::optional<Quad> FrameTable::Corners(int row) const {
  Quad corners;
  for (int i = 0; i < 4; ++i) {
    auto x = Number(row, static_cast<Column>(Index(Column::kPointX1) + 2 * i));
    auto y = Number(row, static_cast<Column>(Index(Column::kPointY1) + 2 * i));
    if (!x || !y) return std::nullopt;
    corners[i] = {*x, *y};
  }
  return corners;
}

void FrameTable::Renumber() {
  for (int r = 1; r < row_count(); ++r) {
    rows_[r][Index(Column::kNumber)] = std::to_string(r);
  }
}

void FrameTable::CheckDataRow(int row) const {
  LMT_CHECK(row >= 1 && row <= last_row());
}

void FrameTable::MoveRowToFirst(int row) {
  CheckDataRow(row);
  std::rotate(rows_.begin() + 1, rows_.begin() + row, rows_.begin() + row + 1);
  Renumber();
}

void FrameTable::MoveRowUp(int row) {
  CheckDataRow(row);
  if (row > 1) std::swap(rows_[row], rows_[row - 1]);
  Renumber();
}

void FrameTable::MoveRowDown(int row) {
  CheckDataRow(row);
  if (row < last_row()) std::swap(rows_[row], rows_[row + 1]);
  Renumber();
}

void FrameTable::DeleteRow(int row) {
  CheckDataRow(row);
  rows_.erase(rows_.begin() + row);
  Renumber();
}

int FrameTable::CompareCells(std::string_view a, std::string_view b) {
  std::optional<double> na = ParseNumber(a);
  std::optional<double> nb = ParseNumber(b);
  if (na && nb) return *na < *nb ? -1 : (*nb < *na ? 1 : 0);
  if (na) return -1;
  if (nb) return 1;
  return a.compare(b) < 0 ? -1 : (a == b ? 0 : 1);
}

void FrameTable::SortByKeys(std::vector<SortKeys> keys) {
  LMT_CHECK(keys.size() == rows_.size());
  std::vector<int> order(rows_.size() - 1);
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(), [&keys](int a, int b) {
    const SortKeys& ka = keys[a];
    const SortKeys& kb = keys[b];
    for (size_t i = 0; i < std::min(ka.size(), kb.size()); ++i) {
      int c = CompareCells(ka[i], kb[i]);
      if (c != 0) return c < 0;
    }
    return false;
  });
  std::vector<Row> sorted;
  sorted.reserve(rows_.size());
  sorted.push_back(std::move(rows_[0]));
  for (int r : order) sorted.push_back(std::move(rows_[r]));
  rows_ = std::move(sorted);
}

}  // namespace lmt::frames

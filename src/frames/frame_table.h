// The frame table `TablicaLayout`: the add-in's one list of found frames,
// kept as a grid of text cells exactly as the main window shows it. Row 0 is
// the header, rows 1..row_count()-1 are frame records of 27 columns. Every
// value is cell text; numbers are written with "." as decimal separator
// whatever the locale and read back as numbers. The grid is the store: the
// search fills it, the ordering and the row commands rearrange it, naming
// and layout creation read it top to bottom.
//
// Limits: no widths, alignment or current cell (the window keeps those); the
// table knows nothing of the drawing.
#ifndef LMT_FRAMES_FRAME_TABLE_H_
#define LMT_FRAMES_FRAME_TABLE_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lmt::frames {

// Column positions, fixed once; code addresses cells only through these.
enum class Column : int {
  kNumber = 0,  // "№"
  kLayoutName = 1,
  kAttribute = 2,
  kBlockName = 3,
  kPointX1 = 4,
  kPointY1 = 5,
  kPointX2 = 6,
  kPointY2 = 7,
  kPointX3 = 8,
  kPointY3 = 9,
  kPointX4 = 10,
  kPointY4 = 11,
  kSortX = 12,
  kSortY = 13,
  kDist = 14,
  kPoly = 15,
  kPolyX = 16,
  kPolyY = 17,
  kId = 18,
  kMaxX = 19,
  kMaxY = 20,
  kMinX = 21,
  kMinY = 22,
  kTyp = 23,
  kAngle = 24,
  kWidth = 25,
  kHeight = 26,
};

inline constexpr int kColumnCount = 27;
// Rows after a reset, the header row included.
inline constexpr int kResetRowCount = 50;

// The fixed column name ("№", "Layout Name", ..., "Height").
std::string_view ColumnName(Column column);

// The language captions TablTekstiLang0..6 of the header: 0 "№",
// 1 "Layout Name", 2 "ID", 3 "Block Name", 4 "Attribute", 5 "SortX",
// 6 "SortY". They label columns 0, 1, 18, 3, 2, 12, 13 in that order.
using TableCaptions = std::array<std::string, 7>;
TableCaptions DefaultTableCaptions();

// "Typ" texts.
inline constexpr std::string_view kTypPolyline = "Polyline";
inline constexpr std::string_view kTypBlock = "Block";
inline constexpr std::string_view kTypXRef = "XRef";

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

// The four corners of a frame, in the order they were read.
using Quad = std::array<Point, 4>;

// The first four vertices of a polyline's flat `Coordinates` array
// (X1, Y1, X2, Y2, ...). Nullopt when it holds fewer than eight values.
std::optional<Quad> FirstFourVertices(const std::vector<double>& coordinates);

// Number text as the table stores it: the shortest fixed-point text that
// reads back to exactly `value` ("12.5", "-3.25", "420",
// "0.5235987755982988"), so that layout creation, which reads the table
// back, gets the very numbers the search found. "." is the decimal
// separator whatever the locale; -0 gives "0" and non-finite values "".
std::string FormatNumber(double value);

// Reads a cell as a number: optional blanks, an optional sign, digits with
// "." as decimal separator and an optional exponent, nothing else. Returns
// nullopt for anything else ("", "abc", "1,5", "inf"). Locale-free.
std::optional<double> ParseNumber(std::string_view text);

class FrameTable {
 public:
  // A table in the reset state, with the given header captions.
  explicit FrameTable(TableCaptions captions = DefaultTableCaptions());

  // Clears every cell: kResetRowCount rows of which row 0 is the header.
  void Reset();

  // Changes the header captions (language switch); the data rows stay.
  void SetCaptions(TableCaptions captions);

  // Rows including the header row 0; always at least 1.
  int row_count() const { return static_cast<int>(rows_.size()); }
  // The last data row, 0 when there is none.
  int last_row() const { return row_count() - 1; }

  // Sets the row count (header included): cuts rows off the end or appends
  // blank rows. REQUIRES: count >= 1.
  void SetRowCount(int count);

  // Appends one blank row at the end and returns its index.
  int AddRow();

  // REQUIRES: 0 <= row < row_count().
  const std::string& Cell(int row, Column column) const;
  void SetCell(int row, Column column, std::string text);

  // Writes FormatNumber(value). REQUIRES: a valid row.
  void SetNumber(int row, Column column, double value);
  // ParseNumber of the cell. REQUIRES: a valid row.
  std::optional<double> Number(int row, Column column) const;

  // The four corner columns PointX1..PointY4 of a row.
  void SetCorners(int row, const Quad& corners);
  // Nullopt when any of the eight cells is not a number.
  std::optional<Quad> Corners(int row) const;

  // The "№" cell of each data row r becomes the text of r.
  void Renumber();

  // The manual row commands of the main window. Each renumbers afterwards.
  // REQUIRES: 1 <= row <= last_row().
  void MoveRowToFirst(int row);
  void MoveRowUp(int row);    // row 1 stays where it is
  void MoveRowDown(int row);  // the last row stays where it is
  void DeleteRow(int row);

  // Stable ascending sort of the data rows by the key extracted from each
  // row; keys compare with CompareCells, the first key is the primary one.
  // Used by the ordering; the key texts are the grid's temporary columns.
  using SortKeys = std::vector<std::string>;
  template <typename KeyOf>
  void SortRows(KeyOf key_of);

  // The grid's generic comparison: two cells that read as numbers compare
  // as numbers; two other cells compare as text (byte order); a number sorts
  // before a text, so blank and text cells come after all numbers.
  // Returns <0, 0 or >0.
  static int CompareCells(std::string_view a, std::string_view b);

 private:
  using Row = std::array<std::string, kColumnCount>;
  void CheckDataRow(int row) const;
  void WriteHeader();
  void SortByKeys(std::vector<SortKeys> keys);

  TableCaptions captions_;
  std::vector<Row> rows_;
};

template <typename KeyOf>
void FrameTable::SortRows(KeyOf key_of) {
  std::vector<SortKeys> keys;
  keys.reserve(rows_.size());
  keys.emplace_back();  // header, never moved
  for (int r = 1; r < row_count(); ++r) keys.push_back(key_of(*this, r));
  SortByKeys(std::move(keys));
}

}  // namespace lmt::frames

#endif  // LMT_FRAMES_FRAME_TABLE_H_

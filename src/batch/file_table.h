// The file table of a batch window (`TablicaRunScript`, `TablicaRunLisp`,
// `TablicaImport`, ...): header row 0 and rows of three text columns, the
// row number, the file name with extension and the full path. The list of
// files a run processes is rows 1, 2, ... up to the first row whose name is
// empty. The table is the store the window shows; widths, alignment and the
// current cell stay with the window.
//
// Folders are listed in name order (case-insensitive, then by bytes), each
// folder's own files before its subfolders, subfolders depth first in name
// order: the order a user sees in a file manager, and stable between runs,
// which the enumeration order of a file system is not.
#ifndef LMT_BATCH_FILE_TABLE_H_
#define LMT_BATCH_FILE_TABLE_H_

#include <array>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lmt::batch {

enum class FileColumn : int {
  kNumber = 0,  // the row number; the run only makes it the current cell
  kName = 1,    // caption key TXTTablName, "File Name"
  kPath = 2,    // caption key TXTTablPut, "File Path"
};

inline constexpr int kFileColumnCount = 3;

// The filters of the two open dialogs and the extensions a folder adds.
inline constexpr std::string_view kScriptFileFilter =
    "Script Files(*.scr)|*.scr*|All Files(*.*)|*.*";
inline constexpr std::string_view kDrawingFileFilter =
    "DWG & DXF Files (*.dwg;*.dxf)|*.dwg*;*.dxf*|DWG Files (*.dwg)|*.dwg*|"
    "DXF Files (*.dxf)|*.dxf*|All Files(*.*)|*.*";
inline constexpr std::array<std::string_view, 2> kDrawingExtensions = {".dwg",
                                                                       ".dxf"};

struct FileEntry {
  std::string name;  // file name with extension, e.g. plan.dwg
  std::string path;  // full path
};

class FileTable {
 public:
  FileTable() { Reset(); }

  // Start-up and "Clear": the header row only, next row 1.
  void Reset();

  // Rows including the header row.
  int row_count() const { return static_cast<int>(rows_.size()); }
  // The row the next appended file fills.
  int next_row() const { return next_row_; }

  // REQUIRES: 0 <= row < row_count().
  const std::string& Cell(int row, FileColumn column) const;
  void SetCell(int row, FileColumn column, std::string text);

  // Appends one row: the path's file name and the path as given.
  void Append(const std::filesystem::path& path);
  void Append(const std::vector<std::filesystem::path>& paths);

  // Appends every file of `folder` whose name ends in one of `extensions`
  // (".dwg"; compared without regard to case), with its subfolders when
  // `recursive`; symbolic links to folders are not followed. A missing
  // folder or an empty path adds nothing, as does a folder the process may
  // not read. Returns the number of rows added.
  int AddFolder(const std::filesystem::path& folder,
                std::span<const std::string_view> extensions, bool recursive);

  // Removes a data row and numbers the rows after it anew.
  // REQUIRES: 1 <= row < row_count().
  void RemoveRow(int row);

  // The rows a run processes: 1.. up to the first row with an empty name.
  std::vector<FileEntry> Files() const;

 private:
  using Row = std::vector<std::string>;
  std::vector<Row> rows_;
  int next_row_ = 1;
};

}  // namespace lmt::batch

#endif  // LMT_BATCH_FILE_TABLE_H_

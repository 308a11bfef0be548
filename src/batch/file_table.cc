#include "batch/file_table.h"

#include <algorithm>
#include <system_error>

#include "batch/paths.h"
#include "core/check.h"
#include "core/text_case.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

bool HasExtension(const std::string& name,
                  std::span<const std::string_view> extensions) {
  std::string folded = core::FoldText(name);
  for (std::string_view ext : extensions) {
    std::string want = core::FoldText(ext);
    if (folded.size() >= want.size() &&
        folded.compare(folded.size() - want.size(), want.size(), want) == 0) {
      return true;
    }
  }
  return false;
}

struct Listed {
  std::string name;
  fs::path path;
};

bool NameOrder(const Listed& a, const Listed& b) {
  std::string fa = core::FoldText(a.name);
  std::string fb = core::FoldText(b.name);
  if (fa != fb) return fa < fb;
  return a.name < b.name;
}

// Lists one folder without throwing: an unreadable folder or entry is
// skipped, as the listing of a network share may fail midway.
void ListFolder(const fs::path& folder, std::vector<Listed>& files,
                std::vector<Listed>& folders) {
  std::error_code ec;
  fs::directory_iterator it(folder, ec);
  for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
    const fs::directory_entry& entry = *it;
    std::error_code kind_ec;
    Listed listed{PathToUtf8(entry.path().filename()), entry.path()};
    if (entry.is_symlink(kind_ec)) {
      if (entry.is_regular_file(kind_ec)) files.push_back(std::move(listed));
      continue;
    }
    if (entry.is_directory(kind_ec)) {
      folders.push_back(std::move(listed));
    } else if (entry.is_regular_file(kind_ec)) {
      files.push_back(std::move(listed));
    }
  }
  std::sort(files.begin(), files.end(), NameOrder);
  std::sort(folders.begin(), folders.end(), NameOrder);
}

}  // namespace

void FileTable::Reset() {
  rows_.assign(1, Row(kFileColumnCount));
  rows_[0][static_cast<int>(FileColumn::kName)] = "File Name";
  rows_[0][static_cast<int>(FileColumn::kPath)] = "File Path";
  next_row_ = 1;
}

const std::string& FileTable::Cell(int row, FileColumn column) const {
  LMT_CHECK(row >= 0 && row < row_count());
  return rows_[row][static_cast<int>(column)];
}

void FileTable::SetCell(int row, FileColumn column, std::string text) {
  LMT_CHECK(row >= 0 && row < row_count());
  rows_[row][static_cast<int>(column)] = std::move(text);
}

void FileTable::Append(const fs::path& path) {
  Row row(kFileColumnCount);
  row[static_cast<int>(FileColumn::kNumber)] = std::to_string(next_row_);
  row[static_cast<int>(FileColumn::kName)] = PathToUtf8(path.filename());
  row[static_cast<int>(FileColumn::kPath)] = PathToUtf8(path);
  if (next_row_ < row_count()) {
    rows_[next_row_] = std::move(row);
  } else {
    rows_.push_back(std::move(row));
  }
  ++next_row_;
}

void FileTable::Append(const std::vector<fs::path>& paths) {
  for (const fs::path& path : paths) Append(path);
}

int FileTable::AddFolder(const fs::path& folder,
                         std::span<const std::string_view> extensions,
                         bool recursive) {
  std::error_code ec;
  if (folder.empty() || !fs::is_directory(folder, ec)) return 0;
  int added = 0;
  std::vector<Listed> files;
  std::vector<Listed> folders;
  ListFolder(folder, files, folders);
  for (const Listed& file : files) {
    if (!HasExtension(file.name, extensions)) continue;
    Append(file.path);
    ++added;
  }
  if (recursive) {
    for (const Listed& sub : folders) {
      added += AddFolder(sub.path, extensions, true);
    }
  }
  return added;
}

void FileTable::RemoveRow(int row) {
  LMT_CHECK(row >= 1 && row < row_count());
  rows_.erase(rows_.begin() + row);
  if (next_row_ > row) --next_row_;
  for (int r = row; r < row_count(); ++r) {
    if (!rows_[r][static_cast<int>(FileColumn::kName)].empty()) {
      rows_[r][static_cast<int>(FileColumn::kNumber)] = std::to_string(r);
    }
  }
}

std::vector<FileEntry> FileTable::Files() const {
  std::vector<FileEntry> files;
  for (int r = 1; r < row_count(); ++r) {
    const Row& row = rows_[r];
    if (row[static_cast<int>(FileColumn::kName)].empty()) break;
    files.push_back({row[static_cast<int>(FileColumn::kName)],
                     row[static_cast<int>(FileColumn::kPath)]});
  }
  return files;
}

}  // namespace lmt::batch

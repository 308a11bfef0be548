#include "cli/split_output.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/file_util.h"

namespace lmt::cli {
namespace {

std::filesystem::path SetTemporary(const std::filesystem::path& target) {
  // Hidden and ending in ".dxf", like the save path's own temporary.
  return target.parent_path() /
         core::PathFromUtf8("." + core::PathToUtf8(target.filename()) +
                            ".layomat-set.dxf");
}

}  // namespace

Result<int> SheetsPerFile(const CliOptions& options) {
  if (options.sheets_per_file) {
    if (options.file_per_sheet) {
      return Status::InvalidArgument(
          "--sheets-per-file and --file-per-sheet exclude each other");
    }
    if (options.pdf) {
      return Status::InvalidArgument(
          "--sheets-per-file cannot be used with --pdf: the new layouts are "
          "plotted from one drawing");
    }
    return *options.sheets_per_file;
  }
  return options.file_per_sheet && !options.pdf ? 1 : 0;
}

std::vector<std::vector<std::string>> SplitIntoFiles(
    const std::vector<std::string>& names, int per_file) {
  std::vector<std::vector<std::string>> files;
  const size_t size = per_file > 0 ? static_cast<size_t>(per_file)
                                   : std::max<size_t>(names.size(), 1);
  for (size_t i = 0; i < names.size(); i += size) {
    files.emplace_back(names.begin() + static_cast<std::ptrdiff_t>(i),
                       names.begin() + static_cast<std::ptrdiff_t>(
                                           std::min(i + size, names.size())));
  }
  if (files.empty()) files.emplace_back();
  return files;
}

std::vector<std::string> SplitFileNames(const std::string& out, size_t count) {
  const std::filesystem::path path = core::PathFromUtf8(out);
  const std::string stem = core::PathToUtf8(path.stem());
  const std::string extension = core::PathToUtf8(path.extension());
  const size_t width = std::to_string(count).size();
  std::vector<std::string> names;
  for (size_t i = 1; i <= count; ++i) {
    std::string number = std::to_string(i);
    number.insert(0, width - number.size(), '0');
    std::filesystem::path part = path;
    part.replace_filename(core::PathFromUtf8(stem + "-" + number + extension));
    names.push_back(core::PathToUtf8(part));
  }
  return names;
}

std::string TooManyLayoutsWarning(
    const std::vector<std::vector<std::string>>& files) {
  size_t total = 0;
  size_t largest = 0;
  for (const std::vector<std::string>& file : files) {
    total += file.size();
    largest = std::max(largest, file.size());
  }
  if (largest <= static_cast<size_t>(kMaxLayoutsPerDrawing)) return "";
  const size_t parts = (total + kMaxLayoutsPerDrawing - 1) /
                       static_cast<size_t>(kMaxLayoutsPerDrawing);
  return std::to_string(largest) + " layouts in one drawing: more than " +
         std::to_string(kMaxLayoutsPerDrawing) +
         " are not shown by every CAD program; split the output with "
         "--sheets-per-file " +
         std::to_string(kMaxLayoutsPerDrawing) + " (" + std::to_string(parts) +
         " drawings) or --file-per-sheet";
}

Status WriteFileSet(
    const std::vector<std::string>& targets,
    const std::function<Status(size_t index, const std::string& temporary)>&
        write) {
  std::vector<std::filesystem::path> temporaries;
  std::vector<std::filesystem::path> placed;
  auto clean_up = [&] {
    std::error_code ignored;
    for (const std::filesystem::path& path : temporaries) {
      std::filesystem::remove(path, ignored);
    }
    for (const std::filesystem::path& path : placed) {
      std::filesystem::remove(path, ignored);
    }
  };
  for (size_t i = 0; i < targets.size(); ++i) {
    const std::filesystem::path temporary =
        SetTemporary(core::PathFromUtf8(targets[i]));
    temporaries.push_back(temporary);
    Status written = write(i, core::PathToUtf8(temporary));
    if (!written.ok()) {
      clean_up();
      return written;
    }
  }
  for (size_t i = 0; i < targets.size(); ++i) {
    const std::filesystem::path target = core::PathFromUtf8(targets[i]);
    std::error_code renamed;
    std::filesystem::rename(temporaries[i], target, renamed);
    if (renamed) {
      clean_up();
      return Status::IOError(targets[i] +
                             ": cannot write: " + renamed.message());
    }
    placed.push_back(target);
  }
  return Status::Ok();
}

Result<std::vector<SplitFile>> SaveSplitOutput(
    EmbeddedSession& embedded, const std::string& out,
    const std::vector<std::string>& created, int per_file) {
  const std::vector<std::vector<std::string>> groups =
      SplitIntoFiles(created, per_file);
  const std::vector<std::string> targets = SplitFileNames(out, groups.size());
  std::vector<std::vector<std::string>> without(groups.size());
  std::vector<SplitFile> files;
  for (size_t i = 0; i < groups.size(); ++i) {
    for (size_t j = 0; j < groups.size(); ++j) {
      if (j != i) {
        without[i].insert(without[i].end(), groups[j].begin(), groups[j].end());
      }
    }
    files.push_back({targets[i], groups[i]});
  }
  if (Status saved = embedded.SaveOutputSet(targets, without); !saved.ok()) {
    return saved;
  }
  return files;
}

}  // namespace lmt::cli

#include "cli/drawing_output.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "core/file_util.h"
#include "dxf/version.h"
#include "host/releases.h"

namespace lmt::cli {
namespace {

// The header variable sits near the start of every DXF file; reading this
// much finds it without loading a large drawing twice.
constexpr size_t kHeadBytes = 64 * 1024;

constexpr std::string_view kR12 = "AC1009";

// A name for the temporary file beside `target` that no file has yet.
// Hidden, and ending in ".dxf" so that the host adds no extension.
std::filesystem::path TemporaryBeside(const std::filesystem::path& target) {
  std::filesystem::path folder = target.parent_path();
  const std::string stem = "." + core::PathToUtf8(target.filename());
  for (int n = 0;; ++n) {
    std::filesystem::path candidate =
        folder /
        core::PathFromUtf8(stem + ".layomat-" + std::to_string(n) + ".dxf");
    std::error_code ec;
    if (!std::filesystem::exists(candidate, ec) && !ec) return candidate;
    if (ec || n > 1000) return candidate;  // the save then says why
  }
}

}  // namespace

Result<std::string> DxfRelease(const std::string& path) {
  std::ifstream in(core::PathFromUtf8(path), std::ios::binary);
  if (!in) return Status::IOError(path + ": cannot open for reading");
  std::string head(kHeadBytes, '\0');
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<size_t>(in.gcount()));
  size_t name = head.find("$ACADVER");
  // In ASCII the value follows on the next line but one, in binary after a
  // group code; either way it is the next "AC" word.
  size_t value = name == std::string::npos ? name : head.find("AC", name + 8);
  // Files without it, and releases before R12, are read as R12, as CAD
  // programs read them; they are written as R12 too.
  if (value == std::string::npos || value > name + 40 ||
      value + 6 > head.size()) {
    return std::string(kR12);
  }
  return std::string(dxf::ReleaseAsRead(head.substr(value, 6)));
}

Result<int> DxfSaveType(const std::string& release) {
  const host::Release* known = host::FindReleaseByAcadver(release);
  if (known == nullptr) {
    return Status::NotSupported("release " + release +
                                " is not one the engine writes");
  }
  return known->dxf_save_type;
}

Status CheckOutput(const std::string& out) {
  const std::filesystem::path target = core::PathFromUtf8(out);
  std::error_code ec;
  if (std::filesystem::is_directory(target, ec)) {
    return Status::IOError(out +
                           ": is a folder; -o names the drawing file to write");
  }
  std::filesystem::path folder = target.parent_path();
  if (folder.empty()) folder = ".";
  if (!std::filesystem::is_directory(folder, ec)) {
    return Status::IOError(out + ": cannot write: the folder " +
                           core::PathToUtf8(folder) + " does not exist");
  }
  if (std::filesystem::exists(target, ec)) {
    // Opening for appending tells whether the file may be replaced
    // without changing a byte of it.
    std::ofstream probe(target, std::ios::binary | std::ios::app);
    if (!probe) {
      return Status::IOError(out + ": cannot write: permission denied");
    }
  }
  return Status::Ok();
}

Status SaveDrawing(host::Document& document, const std::string& source,
                   const std::string& out, std::string_view at_least) {
  if (Status usable = CheckOutput(out); !usable.ok()) return usable;
  Result<std::string> release = DxfRelease(source);
  if (!release.ok()) return release.status();
  if (*release < at_least) release = std::string(at_least);
  Result<int> save_type = DxfSaveType(*release);
  if (!save_type.ok()) {
    return Status(save_type.status().code(),
                  out + ": " + save_type.status().message());
  }
  const std::filesystem::path target = core::PathFromUtf8(out);
  const std::filesystem::path temporary = TemporaryBeside(target);
  Status saved = document.SaveAs(core::PathToUtf8(temporary), *save_type);
  std::error_code ignored;
  if (!saved.ok()) {
    std::filesystem::remove(temporary, ignored);
    return Status::IOError(out + ": cannot write the drawing (" +
                           saved.message() + ")");
  }
  std::error_code renamed;
  std::filesystem::rename(temporary, target, renamed);
  if (renamed) {
    std::filesystem::remove(temporary, ignored);
    return Status::IOError(out + ": cannot write: " + renamed.message());
  }
  return Status();
}

}  // namespace lmt::cli

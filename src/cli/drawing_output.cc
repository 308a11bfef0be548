#include "cli/drawing_output.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace lmt::cli {
namespace {

// The header variable sits near the start of every DXF file; reading this
// much finds it without loading a large drawing twice.
constexpr size_t kHeadBytes = 64 * 1024;

struct ReleaseType {
  std::string_view release;
  int save_type;
};
constexpr std::array<ReleaseType, 6> kReleaseTypes = {{
    {"AC1015", 13},
    {"AC1018", 25},
    {"AC1021", 37},
    {"AC1024", 49},
    {"AC1027", 61},
    {"AC1032", 65},
}};

}  // namespace

Result<std::string> DxfRelease(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return Status::IOError(path + ": cannot open for reading");
  std::string head(kHeadBytes, '\0');
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<size_t>(in.gcount()));
  size_t name = head.find("$ACADVER");
  // In ASCII the value follows on the next line but one, in binary after a
  // group code; either way it is the next "AC" word.
  size_t value = name == std::string::npos ? name : head.find("AC", name + 8);
  if (value == std::string::npos || value > name + 40 ||
      value + 6 > head.size()) {
    return Status::Corruption(path + ": no $ACADVER in the header");
  }
  return head.substr(value, 6);
}

Result<int> DxfSaveType(const std::string& release) {
  for (const ReleaseType& entry : kReleaseTypes) {
    if (entry.release == release) return entry.save_type;
  }
  return Status::NotSupported("release " + release +
                              " cannot be written (DXF 2000 and later only)");
}

Status SaveDrawing(host::Document& document, const std::string& source,
                   const std::string& out) {
  Result<std::string> release = DxfRelease(source);
  if (!release.ok()) return release.status();
  Result<int> save_type = DxfSaveType(*release);
  if (!save_type.ok()) {
    return Status(save_type.status().code(),
                  out + ": " + save_type.status().message());
  }
  std::filesystem::path target(out);
  std::filesystem::path temporary = target;
  temporary += ".layomat-tmp.dxf";
  Status saved = document.SaveAs(temporary.string(), *save_type);
  std::error_code ignored;
  if (!saved.ok()) {
    std::filesystem::remove(temporary, ignored);
    return Status::IOError(out + ": " + saved.message());
  }
  std::error_code renamed;
  std::filesystem::rename(temporary, target, renamed);
  if (renamed) {
    std::filesystem::remove(temporary, ignored);
    return Status::IOError(out + ": " + renamed.message());
  }
  return Status();
}

}  // namespace lmt::cli

#include "batch/paths.h"

namespace lmt::batch {

std::filesystem::path PathFromUtf8(std::string_view text) {
  std::u8string u8(text.begin(), text.end());
  return std::filesystem::path(u8);
}

std::string PathToUtf8(const std::filesystem::path& path) {
  std::u8string u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

}  // namespace lmt::batch

// A fresh folder under the system's temporary folder, removed with all its
// content when the object goes. For tests and for tools that need scratch
// space; never used for user data.
#ifndef LMT_CORE_SCOPED_TEMP_DIR_H_
#define LMT_CORE_SCOPED_TEMP_DIR_H_

#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

#include "core/check.h"

namespace lmt::core {

class ScopedTempDir {
 public:
  ScopedTempDir() {
    static std::atomic<int> counter{0};
    std::error_code ec;
    const auto stamp =
        std::chrono::steady_clock::now().time_since_epoch().count();
    path_ = std::filesystem::temp_directory_path(ec) /
            ("lmt-" + std::to_string(stamp) + "-" + std::to_string(counter++));
    LMT_CHECK(!ec);
    std::filesystem::create_directories(path_, ec);
    LMT_CHECK(!ec);
  }
  ~ScopedTempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScopedTempDir(const ScopedTempDir&) = delete;
  ScopedTempDir& operator=(const ScopedTempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const {
    return path_ / name;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace lmt::core

#endif  // LMT_CORE_SCOPED_TEMP_DIR_H_

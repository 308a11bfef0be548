// TempDir: a fresh folder for one test, removed when the test ends.
//
// ctest runs test cases in parallel processes, so a fixed name under the
// system's temporary folder would be shared by two running tests. The name
// holds the test's own name and the process id to keep them apart.
#ifndef LMT_TESTING_TEMP_DIR_H_
#define LMT_TESTING_TEMP_DIR_H_

#include <filesystem>
#include <string>

namespace lmt::testing {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // path() / name.
  std::filesystem::path operator/(const std::filesystem::path& name) const {
    return path_ / name;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_TEMP_DIR_H_

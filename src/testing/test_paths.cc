#include "testing/test_paths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "testing/shell.h"

namespace lmt::testing {

namespace fs = std::filesystem;

const char kSharedMissing[] =
    "the shared folder is missing (../shared beside the source tree, or "
    "LMT_SHARED_DIR)";

std::string SharedDir() {
  const char* env = std::getenv("LMT_SHARED_DIR");
  // A set but wrong LMT_SHARED_DIR counts as missing: falling back would
  // hide the mistake.
  fs::path dir = env != nullptr && *env != '\0'
                     ? fs::path(env)
                     : fs::path(LMT_SOURCE_DIR).parent_path() / "shared";
  std::error_code ec;
  if (!fs::is_directory(dir, ec)) return "";
  return dir.lexically_normal().string();
}

std::string SamplePath(const std::string& name) {
  return SharedDir() + "/dxf-samples/" + name;
}

std::string CorpusPath(const std::string& name) {
  return SharedDir() + "/dxf-corpus/files/" + name;
}

std::string TestdataPath(const std::string& name) {
  return std::string(LMT_SOURCE_DIR) + "/testdata/" + name;
}

std::string ScratchDir(const std::string& area) {
  const ::testing::TestInfo* info =
      ::testing::UnitTest::GetInstance()->current_test_info();
  fs::path dir = fs::path(LMT_BINARY_DIR) / area;
  if (info != nullptr) {
    std::string name = info->name();
    for (char& c : name) {
      if (c == '/') c = '_';  // parameterised tests
    }
    dir = dir / info->test_suite_name() / name;
  }
  // Copies of read-only samples keep their read-only bit, which Windows
  // will not delete: make everything writable first.
  std::error_code ec;
  for (fs::recursive_directory_iterator it(dir, ec), end; !ec && it != end;
       it.increment(ec)) {
    std::error_code ignored;
    fs::permissions(it->path(), fs::perms::owner_write, fs::perm_options::add,
                    ignored);
  }
  fs::remove_all(dir, ec);
  fs::create_directories(dir, ec);
  EXPECT_FALSE(ec) << "cannot create " << dir.string() << ": " << ec.message();
  return dir.string();
}

std::string TempPath(const std::string& name) {
  const fs::path dir = fs::path(LMT_BINARY_DIR) / "test_tmp";
  std::error_code ec;
  fs::create_directories(dir, ec);
  return (dir / name).string();
}

std::string PythonCommand() { return ShellQuote(LMT_PYTHON) + " "; }

}  // namespace lmt::testing

#include "testing/temp_dir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#define LMT_GETPID _getpid
#else
#include <unistd.h>
#define LMT_GETPID getpid
#endif

namespace lmt::testing {
namespace {

std::string CurrentTestName() {
  const ::testing::TestInfo* info =
      ::testing::UnitTest::GetInstance()->current_test_info();
  if (info == nullptr) return "outside-test";
  std::string name = std::string(info->test_suite_name()) + "." + info->name();
  for (char& c : name) {
    if (c == '/' || c == '\\' || c == ':') c = '_';
  }
  return name;
}

}  // namespace

TempDir::TempDir() {
  static std::atomic<int> counter{0};
  path_ = std::filesystem::temp_directory_path() /
          ("lmt-" + CurrentTestName() + "-" + std::to_string(LMT_GETPID()) +
           "-" + std::to_string(counter++));
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
  std::filesystem::create_directories(path_, ec);
  EXPECT_FALSE(ec) << "cannot create " << path_.string() << ": "
                   << ec.message();
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);  // a leftover folder is harmless
}

}  // namespace lmt::testing

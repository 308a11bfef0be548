// Where the tests find their files at run time: the shared reference folder
// (optional), the project's own test drawings, a scratch folder per test and
// the Python interpreter that runs the ezdxf read-backs.
//
// The shared folder is found when the tests run, never when they are built:
// $LMT_SHARED_DIR when set, else ../shared beside the source tree. A clone
// without it still passes: every test that needs it skips with one line
// saying so (LMT_SKIP_WITHOUT_SHARED).
#ifndef LMT_TESTING_TEST_PATHS_H_
#define LMT_TESTING_TEST_PATHS_H_

#include <gtest/gtest.h>

#include <string>

namespace lmt::testing {

// The shared reference folder, or "" when it is not there.
std::string SharedDir();

// <shared>/dxf-samples/<name>; only meaningful when SharedDir() is not "".
std::string SamplePath(const std::string& name);

// <shared>/dxf-corpus/files/<name>; the same condition.
std::string CorpusPath(const std::string& name);

// <source>/testdata/<name>.
std::string TestdataPath(const std::string& name);

// An empty folder under the build folder for the running test's output:
// <build>/<area>/<suite>/<test>, emptied first.
std::string ScratchDir(const std::string& area);

// <build>/test_tmp/<name>: a path for a file the test writes (the folder is
// made; the name is the test's to keep apart from others).
std::string TempPath(const std::string& name);

// The interpreter with ezdxf (Debian's, found by CMake), quoted for /bin/sh
// and followed by a space, ready to prefix a script.
std::string PythonCommand();

// The one line a test prints when it skips for want of the shared folder.
extern const char kSharedMissing[];

// Skips the current test (from its body or a fixture's SetUp) when the
// shared folder is missing.
#define LMT_SKIP_WITHOUT_SHARED()          \
  if (::lmt::testing::SharedDir().empty()) \
  GTEST_SKIP() << ::lmt::testing::kSharedMissing

// For table-driven tests whose rows mix our drawings and shared samples:
// skips the row when `path` (made by SamplePath or CorpusPath) needs the
// missing folder: without it those paths start at the root.
#define LMT_SKIP_WITHOUT_SHARED_FOR(path)       \
  if (::lmt::testing::SharedDir().empty() &&    \
      std::string(path).rfind("/dxf-", 0) == 0) \
  GTEST_SKIP() << ::lmt::testing::kSharedMissing

// A fixture for suites whose every test reads a shared sample.
class SharedSampleTest : public ::testing::Test {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_SHARED(); }
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_TEST_PATHS_H_

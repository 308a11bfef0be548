// Test helpers of the embedded host's tests: paths of the drawings, a
// scratch folder, and an opened drawing with its scripted user.
#ifndef LMT_DXFHOST_TEST_SUPPORT_H_
#define LMT_DXFHOST_TEST_SUPPORT_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "dxfhost/application.h"
#include "host/object_model.h"
#include "testing/dxf_check.h"
#include "testing/scripted_user.h"
#include "testing/test_paths.h"

namespace lmt::dxfhost::test {

using ::lmt::testing::SamplePath;
using ::lmt::testing::TestdataPath;

// An empty folder for this test's output.
inline std::string ScratchDir() {
  return ::lmt::testing::ScratchDir("dxfhost_scratch");
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

// The shared checker's verdict (testing::DxfProblems): "" when ezdxf loads
// and audits the drawing clean and at most `allowed_structural` structural
// problems are found (a drawing's own, kept by a round trip); else the
// report.
inline std::string CheckDxf(const std::string& path,
                            int allowed_structural = 0) {
  return lmt::testing::DxfProblems(path, allowed_structural);
}

// example.dxf's layouts were never displayed, so they lack their main
// viewport (a CAD program recreates it): the checker's findings that are
// the drawing's own and that its round trips keep.
inline constexpr int kExampleProblems = 2;

// One application of `kind` with one drawing open.
struct Session {
  explicit Session(const std::string& path,
                   host::HostKind kind = host::HostKind::kAutoCad)
      : app(DxfApplication::Create(kind, &user)) {
    Result<host::DocumentsPtr> docs = app->Documents();
    EXPECT_TRUE(docs.ok());
    Result<host::DocumentPtr> opened = (*docs)->Open(path);
    EXPECT_TRUE(opened.ok()) << opened.status().ToString();
    if (opened.ok()) doc = *opened;
  }

  // The model-space entity with handle `handle`.
  host::EntityPtr ByHandle(const std::string& handle) {
    Result<host::ObjectPtr> o =
        doc->ObjectIdToObject(std::stoull(handle, nullptr, 16));
    EXPECT_TRUE(o.ok()) << handle;
    return o.ok() ? host::As<host::Entity>(*o) : nullptr;
  }

  testing::ScriptedUser user;
  std::shared_ptr<DxfApplication> app;
  host::DocumentPtr doc;
};

}  // namespace lmt::dxfhost::test

#endif  // LMT_DXFHOST_TEST_SUPPORT_H_

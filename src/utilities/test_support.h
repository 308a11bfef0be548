// Helpers of the layout utilities' tests: a connected session on the
// embedded DXF host with one drawing open, and the independent read-back of
// a saved drawing through ezdxf (testdata/utilities/describe.py) after the
// shared checker passed it.
#ifndef LMT_UTILITIES_TEST_SUPPORT_H_
#define LMT_UTILITIES_TEST_SUPPORT_H_

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "core/globals.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "host/host_kind.h"
#include "host/object_model.h"
#include "host/session.h"
#include "testing/dxf_check.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"

namespace lmt::utilities::test {

inline std::string SharedDir() { return testing::SharedDir(); }
inline std::string Sample(const std::string& name) {
  return SharedDir() + "/dxf-samples/" + name;
}
inline std::string Testdata(const std::string& name) {
  return std::string(LMT_TESTDATA_DIR) + "/" + name;
}

// The standard output of `command`, and its exit status in `status`.
inline std::string Run(const std::string& command, int* status) {
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    *status = -1;
    return out;
  }
  char buffer[4096];
  size_t n;
  while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, n);
  *status = pclose(pipe);
  return out;
}

// The shared checker's report on `path` when it found anything new; empty
// when the drawing is clean. `source` is the drawing it was saved from: its
// own structural count (CAD- and ezdxf-made drawings carry some) is allowed,
// measured here so that new problems still show.
inline std::string CheckDxf(const std::string& path,
                            const std::string& source) {
  if (!testing::HaveEzdxf()) return "";
  return testing::DxfProblems(path, testing::RunDxfCheck(source).structural);
}

struct ViewportState {
  std::string layout;
  int id = 0;
  bool on = false;
  bool locked = false;
};

// A drawing as ezdxf reads it.
struct Described {
  std::vector<std::string> layouts;
  std::map<std::string, ViewportState> viewports;  // by handle
  std::vector<std::string> model;                  // handles in order
  std::vector<std::string> paper;                  // "LAYOUT HANDLE"
  bool ok = false;
};

inline Described Describe(const std::string& path) {
  Described d;
  int status = 0;
  std::string out =
      Run("/usr/bin/python3 " + Testdata("utilities/describe.py") + " '" +
              path + "' 2>&1",
          &status);
  EXPECT_EQ(status, 0) << out;
  d.ok = status == 0;
  std::istringstream lines(out);
  std::string kind;
  while (lines >> kind) {
    if (kind == "layout") {
      std::string name;
      lines >> name;
      d.layouts.push_back(name);
    } else if (kind == "vp") {
      std::string handle, on, locked;
      ViewportState state;
      lines >> handle >> state.layout >> state.id >> on >> locked;
      state.on = on == "on";
      state.locked = locked == "locked";
      d.viewports[handle] = state;
    } else if (kind == "msp") {
      std::string handle, type;
      lines >> handle >> type;
      d.model.push_back(handle);
    } else if (kind == "psp") {
      std::string layout, handle, type;
      lines >> layout >> handle >> type;
      d.paper.push_back(layout + " " + handle);
    }
  }
  return d;
}

// A session of the add-in connected to the embedded host playing `kind`,
// with `path` open as the active drawing.
class EmbeddedSession {
 public:
  explicit EmbeddedSession(const std::string& path,
                           host::HostKind kind = host::HostKind::kAutoCad)
      : app_(dxfhost::DxfApplication::Create(kind, &user)),
        session(globals, windows, user, runtime) {
    windows.okno_lmt.combo_versia_cad.Select(static_cast<int>(kind));
    runtime.SetRunning(std::string(host::HostProgramId(kind)), app_);
    Result<host::DocumentsPtr> documents = app_->Documents();
    EXPECT_TRUE(documents.ok());
    if (!documents.ok()) return;
    Result<host::DocumentPtr> opened = (*documents)->Open(path);
    EXPECT_TRUE(opened.ok()) << opened.status().ToString();
    if (opened.ok()) document = *opened;
  }

  host::Application& application() { return *app_; }

  // Saves the drawing as `path` in its own release.
  void SaveAs(const std::string& path) {
    Status saved = document->SaveAs(path, 65);
    ASSERT_TRUE(saved.ok()) << saved.ToString();
  }

  core::Globals globals;
  core::Windows windows;
  testing::ScriptedUser user;
  testing::FakeRuntime runtime;

 private:
  std::shared_ptr<dxfhost::DxfApplication> app_;

 public:
  host::Session session;
  host::DocumentPtr document;
};

}  // namespace lmt::utilities::test

#endif  // LMT_UTILITIES_TEST_SUPPORT_H_

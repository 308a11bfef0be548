// Helpers of the layout utilities' tests: a connected session on the
// embedded DXF host with one drawing open, and the independent read-back of
// a saved drawing through ezdxf (testdata/utilities/describe.py) after the
// shared checker passed it.
#ifndef LMT_UTILITIES_TEST_SUPPORT_H_
#define LMT_UTILITIES_TEST_SUPPORT_H_

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/object_model.h"
#include "testing/dxf_check.h"
#include "testing/embedded_run.h"
#include "testing/shell.h"
#include "testing/test_paths.h"

namespace lmt::utilities::test {

using ::lmt::testing::SamplePath;
using ::lmt::testing::TestdataPath;

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
  const testing::ShellRun run = testing::RunShell(
      testing::PythonCommand() +
      testing::ShellQuote(TestdataPath("utilities/describe.py")) + " " +
      testing::ShellQuote(path) + " 2>&1");
  EXPECT_EQ(run.status, 0) << run.out;
  d.ok = run.status == 0;
  std::istringstream lines(run.out);
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

using EmbeddedSession = testing::EmbeddedRun;

}  // namespace lmt::utilities::test

#endif  // LMT_UTILITIES_TEST_SUPPORT_H_

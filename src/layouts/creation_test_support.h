// Helpers of the layout-creation tests: a session connected to the
// embedded DXF host playing one host kind with a drawing open, the frame
// table of testdata/layouts/frames.dxf, and the independent read-back of a
// saved drawing through ezdxf (testdata/layouts/describe.py).
#ifndef LMT_LAYOUTS_CREATION_TEST_SUPPORT_H_
#define LMT_LAYOUTS_CREATION_TEST_SUPPORT_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "frames/frame_table.h"
#include "host/object_model.h"
#include "testing/dxf_check.h"
#include "testing/embedded_run.h"
#include "testing/shell.h"
#include "testing/test_paths.h"

namespace lmt::layouts::test {

using ::lmt::testing::SamplePath;
using ::lmt::testing::TestdataPath;

// The shared checker's verdict (testing::DxfProblems, which reads its
// report, never its exit status): "" when ezdxf loads and audits the
// drawing clean and at most `allowed_structural` structural problems are
// found; else the report.
inline std::string CheckDxf(const std::string& path,
                            int allowed_structural = 0) {
  return lmt::testing::DxfProblems(path, allowed_structural);
}

// The structural problems a source drawing already has (a CAD program's
// layouts never displayed lack their main viewport), which a run keeps.
inline int StructuralProblems(const std::string& path) {
  return std::max(0, lmt::testing::RunDxfCheck(path).structural);
}

struct VpRecord {
  std::string layout, handle, layer;
  int id = 0;
  int status = -1;  // 68: its place in the order of viewports switched on
  bool on = false, locked = false;
  double cx = 0, cy = 0, w = 0, h = 0, vcx = 0, vcy = 0, tx = 0, ty = 0, vh = 0,
         twist_deg = 0;
};
struct MTextRecord {
  std::string layout, layer, style, text;
  int attachment = 0;
  double x = 0, y = 0, height = 0;
};
struct LayoutRecord {
  std::string name, plot_config;
  int plot_type = 0;
  double paper_w = 0, paper_h = 0;
  std::vector<std::string> types;  // entity types in order
};

// A drawing as ezdxf reads it.
struct Described {
  bool ok = false;
  std::vector<LayoutRecord> layouts;  // paper layouts in tab order
  std::vector<VpRecord> viewports;
  std::vector<MTextRecord> mtexts;
  // "LAYOUT BLOCK TAG" -> value
  std::map<std::string, std::string> attributes;
  std::map<std::string, bool> layers_frozen;
  std::map<std::string, std::string> viewport_scales;  // handle -> name

  const LayoutRecord* layout(const std::string& name) const {
    for (const LayoutRecord& l : layouts) {
      if (l.name == name) return &l;
    }
    return nullptr;
  }
  // The viewports of `layout` other than its own (id 1).
  std::vector<VpRecord> model_viewports(const std::string& layout) const {
    std::vector<VpRecord> out;
    for (const VpRecord& v : viewports) {
      if (v.layout == layout && v.id != 1) out.push_back(v);
    }
    return out;
  }
};

inline std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> fields;
  std::string field;
  std::istringstream in(line);
  while (std::getline(in, field, '\t')) fields.push_back(field);
  return fields;
}

inline Described Describe(const std::string& path) {
  Described d;
  const testing::ShellRun run = testing::RunShell(
      testing::PythonCommand() +
      testing::ShellQuote(TestdataPath("layouts/describe.py")) + " " +
      testing::ShellQuote(path) + " 2>&1");
  EXPECT_EQ(run.status, 0) << run.out;
  d.ok = run.status == 0;
  std::istringstream lines(run.out);
  std::string line;
  while (std::getline(lines, line)) {
    std::vector<std::string> f = SplitTabs(line);
    if (f.empty()) continue;
    if (f[0] == "layout" && f.size() >= 6) {
      d.layouts.push_back(
          {f[1], f[5], std::stoi(f[2]), std::stod(f[3]), std::stod(f[4]), {}});
    } else if (f[0] == "ent" && f.size() >= 4) {
      for (LayoutRecord& l : d.layouts) {
        if (l.name == f[1]) l.types.push_back(f[2]);
      }
    } else if (f[0] == "vp" && f.size() >= 17) {
      VpRecord v;
      v.layout = f[1];
      v.handle = f[2];
      v.id = std::stoi(f[3]);
      v.on = f[4] == "1";
      v.locked = f[5] == "1";
      v.layer = f[6];
      double* nums[] = {&v.cx,  &v.cy, &v.w,  &v.h,  &v.vcx,
                        &v.vcy, &v.tx, &v.ty, &v.vh, &v.twist_deg};
      for (int i = 0; i < 10; ++i) *nums[i] = std::stod(f[7 + i]);
      if (f.size() >= 18) v.status = std::stoi(f[17]);
      d.viewports.push_back(v);
    } else if (f[0] == "mtext" && f.size() >= 9) {
      d.mtexts.push_back({f[1], f[2], f[3], f[8], std::stoi(f[4]),
                          std::stod(f[5]), std::stod(f[6]), std::stod(f[7])});
    } else if (f[0] == "attrib" && f.size() >= 5) {
      d.attributes[f[1] + " " + f[2] + " " + f[3]] = f[4];
    } else if (f[0] == "layer" && f.size() >= 3) {
      d.layers_frozen[f[1]] = f[2] == "1";
    } else if (f[0] == "vpscale" && f.size() >= 3) {
      d.viewport_scales[f[1]] = f[2];
    }
  }
  return d;
}

// Model point shown at paper point (px, py) of viewport `v`, by the
// viewport geometry of the DXF format (target + R(-twist) display).
inline frames::Point ModelAt(const VpRecord& v, double px, double py) {
  const double s = v.h / v.vh;
  const double dx = v.vcx + (px - v.cx) / s, dy = v.vcy + (py - v.cy) / s;
  const double t = -v.twist_deg * std::numbers::pi / 180.0;
  return {v.tx + dx * std::cos(t) - dy * std::sin(t),
          v.ty + dx * std::sin(t) + dy * std::cos(t)};
}
inline frames::Point PaperOf(const VpRecord& v, frames::Point p) {
  const double s = v.h / v.vh;
  const double t = v.twist_deg * std::numbers::pi / 180.0;
  const double qx = p.x - v.tx, qy = p.y - v.ty;
  const double dx = qx * std::cos(t) - qy * std::sin(t);
  const double dy = qx * std::sin(t) + qy * std::cos(t);
  return {v.cx + s * (dx - v.vcx), v.cy + s * (dy - v.vcy)};
}

using HostRun = testing::EmbeddedRun;

}  // namespace lmt::layouts::test

#endif  // LMT_LAYOUTS_CREATION_TEST_SUPPORT_H_

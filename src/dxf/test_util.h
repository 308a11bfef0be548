// Helpers shared by the engine's tests: sample paths and the independent
// check of written files.
#ifndef LMT_DXF_TEST_UTIL_H_
#define LMT_DXF_TEST_UTIL_H_

#include <cstdint>
#include <string>
#include <vector>

namespace lmt::dxf::testing {

// The shared folder beside the checkout.
std::string SharedDir();
// <shared>/dxf-samples/<name>.
std::string SamplePath(const std::string& name);
// The ASCII and binary drawings written by a CAD program.
std::vector<std::string> SampleNames();
// A fresh path under the build directory.
std::string TempPath(const std::string& name);
// Python with ezdxf runs beside the Linux build only: a Windows test binary
// runs under Wine, which cannot start the Linux interpreter.
bool HaveEzdxf();
// Runs check_dxf.py (structure checks plus ezdxf's load and audit) on a file
// we wrote. Returns "" when it passes, else the checker's output. Without
// ezdxf (HaveEzdxf) it returns "": the Linux run of the same test checks.
std::string CheckWithEzdxf(const std::string& path);

// CheckWithEzdxf that also fails on structural problems, ezdxf audit
// errors or fixes, or a failed load (check_dxf.py itself always exits 0).
// Returns "" when clean, else the checker's report.
std::string CheckStrict(const std::string& path);

// What ezdxf reads of the drawing's layouts, viewports and attributes, as
// printed by testdata/dxf/ezdxf_layouts.py; "" when ezdxf fails.
std::string EzdxfLayouts(const std::string& path);

// The text of entity `handle` in `path` as ezdxf reads it (UTF-8, \U+XXXX
// resolved); "" when ezdxf fails.
std::string EzdxfText(const std::string& path, uint64_t handle);

}  // namespace lmt::dxf::testing

#endif  // LMT_DXF_TEST_UTIL_H_

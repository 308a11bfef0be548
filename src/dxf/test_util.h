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
// The structural problems check_dxf.py finds in an untouched sample (a
// layout never displayed has no main viewport, ...): what a copy of it may
// carry without being our fault.
int KnownProblems(const std::string& sample);

// The independent verdict on a file we wrote: "" when ezdxf loads it, its
// auditor reports no error and fixes nothing, and check_dxf.py finds at
// most `allowed_structural` structural problems (testing::DxfProblems);
// else the report. R12 files, which check_dxf.py cannot read, get ezdxf's
// load and audit alone, as strictly. "" where Python cannot run (Windows).
std::string Problems(const std::string& path, int allowed_structural = 0);

// What ezdxf reads of the drawing's layouts, viewports and attributes, as
// printed by testdata/dxf/ezdxf_layouts.py; "" when ezdxf fails.
std::string EzdxfLayouts(const std::string& path);

// The text of entity `handle` in `path` as ezdxf reads it (UTF-8, \U+XXXX
// resolved); "" when ezdxf fails.
std::string EzdxfText(const std::string& path, uint64_t handle);

}  // namespace lmt::dxf::testing

#endif  // LMT_DXF_TEST_UTIL_H_

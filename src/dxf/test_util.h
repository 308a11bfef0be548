// Helpers shared by the engine's tests: the sample drawings and the
// independent check of written files. Paths come from testing/test_paths.h.
#ifndef LMT_DXF_TEST_UTIL_H_
#define LMT_DXF_TEST_UTIL_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "testing/test_paths.h"

namespace lmt::dxf::testing {

using ::lmt::testing::CorpusPath;
using ::lmt::testing::SamplePath;
using ::lmt::testing::SharedDir;
using ::lmt::testing::TempPath;

// The ASCII and binary drawings written by a CAD program.
std::vector<std::string> SampleNames();
// The structural problems the checker finds in an untouched drawing (an
// owner that does not exist, ...): what a copy of it may carry without
// being our fault. Measured, so a stricter checker changes no test.
int KnownProblems(const std::string& path);

// The independent verdict on a file we wrote: "" when ezdxf loads it, its
// auditor reports no error and fixes nothing, and the checker finds at
// most `allowed_structural` structural problems (testing::DxfProblems);
// else the report. "" where Python cannot run (Windows).
std::string Problems(const std::string& path, int allowed_structural = 0);

// What ezdxf reads of the drawing's layouts, viewports and attributes, as
// printed by testdata/dxf/ezdxf_layouts.py; "" when ezdxf fails.
std::string EzdxfLayouts(const std::string& path);

// The text of entity `handle` in `path` as ezdxf reads it (UTF-8, \U+XXXX
// resolved); "" when ezdxf fails.
std::string EzdxfText(const std::string& path, uint64_t handle);

// The bytes of the file at `path`; "" when it cannot be read.
std::string ReadAll(const std::string& path);

// A drawing's text from its tags written "code value" and joined by '|':
// "0 SECTION|2 HEADER" -> "  0\nSECTION\n  2\nHEADER\n", codes aligned as
// the writer aligns them.
std::string Dxf(std::string_view entry);

}  // namespace lmt::dxf::testing

#endif  // LMT_DXF_TEST_UTIL_H_

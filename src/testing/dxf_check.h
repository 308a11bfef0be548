// The independent check of a DXF file we wrote: the shared checker
// (check_dxf.py: handles, owners, layouts, viewports; then ezdxf's load and
// audit) run with Debian's /usr/bin/python3.
//
// The checker always exits 0, so its verdict is read from its report: the
// "N structural problem(s)" line and the "audit errors E, fixes F" line.
// Drawings written by a CAD program may already carry structural problems
// (a layout never displayed has no id-1 viewport); tests of such round trips
// pass the source's own count as the allowance.
#ifndef LMT_TESTING_DXF_CHECK_H_
#define LMT_TESTING_DXF_CHECK_H_

#include <gtest/gtest.h>

#include <string>

namespace lmt::testing {

// Python runs beside the Linux build only: a Windows test binary runs under
// Wine, which cannot start the Linux interpreter.
bool HaveEzdxf();

// Skips the current test (from its body or a fixture's SetUp) where Python
// cannot run: for tests that read their results back through ezdxf.
#define LMT_SKIP_WITHOUT_EZDXF()    \
  if (!::lmt::testing::HaveEzdxf()) \
  GTEST_SKIP() << "ezdxf runs beside the Linux build only"

// The shared folder beside the checkout (a worktree one level deeper falls
// back to the folder above).
std::string SharedDir();

struct DxfCheckReport {
  bool ran = false;       // the checker produced a verdict
  int structural = -1;    // structural problems found
  int audit_errors = -1;  // errors ezdxf's auditor reported
  int audit_fixes = -1;   // fixes ezdxf's auditor made
  std::string text;       // the whole report
};

DxfCheckReport RunDxfCheck(const std::string& path);

// "" when ezdxf loads the file, its auditor reports no error and fixes
// nothing, and the checker finds at most `allowed_structural` structural
// problems; else the report. "" without ezdxf (see HaveEzdxf).
std::string DxfProblems(const std::string& path, int allowed_structural = 0);

}  // namespace lmt::testing

#endif  // LMT_TESTING_DXF_CHECK_H_

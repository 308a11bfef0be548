// The independent check of a DXF file we wrote: check_dxf_structure.py
// beside this file (handles, owners, dictionaries, layouts and their block
// records, viewports; then ezdxf's load and audit), run with Debian's
// Python.
//
// The checker exits 0 whenever it reports, so its verdict is read from the
// report: the "structural problems: N" and "audit errors: E, fixes: F"
// lines. Drawings written by a CAD program may already carry structural
// problems; tests of such round trips pass the source's own count as the
// allowance.
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

#include "testing/dxf_check.h"

#include <regex>

#include "testing/shell.h"
#include "testing/test_paths.h"

namespace lmt::testing {

bool HaveEzdxf() {
#ifdef _WIN32
  return false;
#else
  return true;
#endif
}

DxfCheckReport RunDxfCheck(const std::string& path) {
  DxfCheckReport report;
#ifdef _WIN32
  (void)path;
#else
  report.text = RunShell(PythonCommand() +
                         ShellQuote(std::string(LMT_SOURCE_DIR) +
                                    "/src/testing/check_dxf_structure.py") +
                         " " + ShellQuote(path) + " 2>&1")
                    .out;
  std::smatch m;
  if (std::regex_search(report.text, m,
                        std::regex(R"(structural problems: (\d+))"))) {
    report.structural = std::stoi(m[1]);
  }
  if (std::regex_search(report.text, m,
                        std::regex(R"(audit errors: (\d+), fixes: (\d+))"))) {
    report.audit_errors = std::stoi(m[1]);
    report.audit_fixes = std::stoi(m[2]);
  }
  report.ran = report.structural >= 0 && report.audit_errors >= 0;
#endif
  return report;
}

std::string DxfProblems(const std::string& path, int allowed_structural) {
  if (!HaveEzdxf()) return "";
  DxfCheckReport r = RunDxfCheck(path);
  if (!r.ran) return "no verdict from check_dxf_structure.py:\n" + r.text;
  if (r.audit_errors != 0 || r.audit_fixes != 0 ||
      r.structural > allowed_structural) {
    return r.text;
  }
  return "";
}

}  // namespace lmt::testing

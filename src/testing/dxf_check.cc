#include "testing/dxf_check.h"

#include <filesystem>
#include <regex>

#include "testing/shell.h"

namespace lmt::testing {

bool HaveEzdxf() {
#ifdef _WIN32
  return false;
#else
  return true;
#endif
}

std::string SharedDir() {
  std::string dir = LMT_SHARED_DIR;
  if (!std::filesystem::exists(dir + "/tools/check_dxf.py")) {
    std::filesystem::path p(dir);
    dir = (p.parent_path().parent_path() / "shared").string();
  }
  return dir;
}

DxfCheckReport RunDxfCheck(const std::string& path) {
  DxfCheckReport report;
#ifdef _WIN32
  (void)path;
#else
  report.text = RunShell("/usr/bin/python3 " +
                         ShellQuote(SharedDir() + "/tools/check_dxf.py") + " " +
                         ShellQuote(path) + " 2>&1")
                    .out;
  std::smatch m;
  if (std::regex_search(report.text, m,
                        std::regex(R"((\d+) structural problem)"))) {
    report.structural = std::stoi(m[1]);
  }
  if (std::regex_search(report.text, m,
                        std::regex(R"(audit errors (\d+), fixes (\d+))"))) {
    report.audit_errors = std::stoi(m[1]);
    report.audit_fixes = std::stoi(m[2]);
  }
  // Binary files get no structural pass, only ezdxf's load and audit.
  bool binary = report.text.find("binary DXF") != std::string::npos;
  if (binary && report.structural < 0) report.structural = 0;
  report.ran = report.structural >= 0 && report.audit_errors >= 0;
#endif
  return report;
}

std::string DxfProblems(const std::string& path, int allowed_structural) {
  if (!HaveEzdxf()) return "";
  DxfCheckReport r = RunDxfCheck(path);
  if (!r.ran) return "no verdict from check_dxf.py:\n" + r.text;
  if (r.audit_errors != 0 || r.audit_fixes != 0 ||
      r.structural > allowed_structural) {
    return r.text;
  }
  return "";
}

}  // namespace lmt::testing

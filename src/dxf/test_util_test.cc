// Not a test of its own: the helpers of test_util.h (built into the test
// binary only, as the library compiles no *_test.cc file).
#include "dxf/test_util.h"

#include <algorithm>
#include <cstdio>

#include "core/file_util.h"
#include "testing/dxf_check.h"
#include "testing/shell.h"
#include "testing/test_paths.h"

namespace lmt::dxf::testing {

std::vector<std::string> SampleNames() {
  return {"Minimal_DXF_AC1021.dxf",
          "dynvis.dxf",
          "s_AC1009.dxf",
          "s_AC1015.dxf",
          "s_AC1032.dxf",
          "s_AC1032_bin.dxf",
          "text_negative_extrusion.dxf"};
}

namespace {
std::string Run(const std::string& cmd, int* rc) {
  std::FILE* p = popen(cmd.c_str(), "r");
  if (!p) return "";
  std::string out;
  char buf[4096];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
  *rc = pclose(p);
  return out;
}
}  // namespace

std::string EzdxfText(const std::string& path, uint64_t handle) {
  char hex[20];
  std::snprintf(hex, sizeof hex, "%llX",
                static_cast<unsigned long long>(handle));
  int rc = 0;
  std::string out = Run(lmt::testing::PythonCommand() +
                            lmt::testing::ShellQuote(lmt::testing::TestdataPath(
                                "dxf/ezdxf_text.py")) +
                            " " + lmt::testing::ShellQuote(path) + " " + hex,
                        &rc);
  return rc == 0 ? out : std::string();
}

std::string ReadAll(const std::string& path) {
  return core::ReadFileBytes(path).value_or("");
}

std::string Dxf(std::string_view entry) {
  std::string out;
  while (!entry.empty()) {
    size_t bar = entry.find('|');
    std::string_view item = entry.substr(0, bar);
    size_t sp = item.find(' ');
    std::string code(item.substr(0, sp));
    out +=
        std::string(code.size() < 3 ? 3 - code.size() : 0, ' ') + code + "\n" +
        std::string(sp == std::string_view::npos ? "" : item.substr(sp + 1)) +
        "\n";
    entry = bar == std::string_view::npos ? "" : entry.substr(bar + 1);
  }
  return out;
}

int KnownProblems(const std::string& path) {
  return std::max(0, lmt::testing::RunDxfCheck(path).structural);
}

std::string Problems(const std::string& path, int allowed_structural) {
  return lmt::testing::DxfProblems(path, allowed_structural);
}

std::string EzdxfLayouts(const std::string& path) {
  int rc = 0;
  std::string out = Run(lmt::testing::PythonCommand() +
                            lmt::testing::ShellQuote(lmt::testing::TestdataPath(
                                "dxf/ezdxf_layouts.py")) +
                            " " + lmt::testing::ShellQuote(path) + " 2>&1",
                        &rc);
  return rc == 0 ? out : std::string();
}

}  // namespace lmt::dxf::testing

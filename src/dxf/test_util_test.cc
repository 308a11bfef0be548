// Not a test of its own: the helpers of test_util.h (built into the test
// binary only, as the library compiles no *_test.cc file).
#include "dxf/test_util.h"

#include <cstdio>
#include <filesystem>

#include "testing/dxf_check.h"

namespace lmt::dxf::testing {

std::string SharedDir() {
  // A git worktree sits one level deeper than the main checkout, so the
  // configured ../shared may miss; try the level above as well.
  std::string dir = LMT_SHARED_DIR;
  if (!std::filesystem::exists(dir + "/dxf-samples")) {
    std::filesystem::path p(dir);
    dir = (p.parent_path().parent_path() / "shared").string();
  }
  return dir;
}

std::string SamplePath(const std::string& name) {
  return SharedDir() + "/dxf-samples/" + name;
}

std::vector<std::string> SampleNames() {
  return {"Minimal_DXF_AC1021.dxf",
          "dynvis.dxf",
          "s_AC1009.dxf",
          "s_AC1015.dxf",
          "s_AC1032.dxf",
          "s_AC1032_bin.dxf",
          "text_negative_extrusion.dxf"};
}

std::string TempPath(const std::string& name) {
  std::string dir = std::string(LMT_BINARY_DIR) + "/dxf_test_tmp";
  std::filesystem::create_directories(dir);
  return dir + "/" + name;
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
  std::string out = Run("/usr/bin/python3 '" + std::string(LMT_TESTDATA_DIR) +
                            "/dxf/ezdxf_text.py' '" + path + "' " + hex,
                        &rc);
  return rc == 0 ? out : std::string();
}

int KnownProblems(const std::string& sample) {
  if (sample == "Minimal_DXF_AC1021.dxf") return 5;
  if (sample == "dynvis.dxf") return 2;
  return 0;
}

std::string Problems(const std::string& path, int allowed_structural) {
  if (!lmt::testing::HaveEzdxf()) return "";
  std::string head;
  if (std::FILE* f = std::fopen(path.c_str(), "rb")) {
    char buf[512];
    head.assign(buf, std::fread(buf, 1, sizeof buf, f));
    std::fclose(f);
  }
  bool r12 = head.find("AC1009") != std::string::npos ||
             head.find("$ACADVER") == std::string::npos;
  if (!r12) return lmt::testing::DxfProblems(path, allowed_structural);
  int rc = 0;
  std::string out = Run("/usr/bin/python3 '" + std::string(LMT_TESTDATA_DIR) +
                            "/dxf/ezdxf_audit.py' '" + path + "' 2>&1",
                        &rc);
  bool clean =
      rc == 0 && out.find("audit errors 0, fixes 0") != std::string::npos;
  return clean ? std::string() : out;
}

std::string EzdxfLayouts(const std::string& path) {
  int rc = 0;
  std::string out = Run("/usr/bin/python3 '" + std::string(LMT_TESTDATA_DIR) +
                            "/dxf/ezdxf_layouts.py' '" + path + "' 2>&1",
                        &rc);
  return rc == 0 ? out : std::string();
}

}  // namespace lmt::dxf::testing

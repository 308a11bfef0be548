// The structural checker finds what it is there to find: each case breaks
// one thing CAD programs rely on in a clean drawing of ours and expects the
// checker to name it, while the untouched drawings (every release and the
// binary encoding) pass.
#include "testing/dxf_check.h"

#include <gtest/gtest.h>

#include <string>

#include "core/file_util.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::testing {
namespace {

// testdata/releases/make_releases.py: handles of sheets_2018.dxf.
constexpr char kSheets[] = "releases/sheets_2018.dxf";

class DxfCheckTest : public ::testing::Test {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_EZDXF(); }
};

class CleanDrawingTest : public DxfCheckTest,
                         public ::testing::WithParamInterface<const char*> {};

TEST_P(CleanDrawingTest, PassesWithoutAllowance) {
  const std::string path = TestdataPath(GetParam());
  DxfCheckReport r = RunDxfCheck(path);
  ASSERT_TRUE(r.ran) << r.text;
  EXPECT_EQ(r.structural, 0) << r.text;
  EXPECT_EQ(r.audit_errors, 0) << r.text;
  EXPECT_EQ(r.audit_fixes, 0) << r.text;
  EXPECT_EQ(DxfProblems(path), "");
}

INSTANTIATE_TEST_SUITE_P(Releases, CleanDrawingTest,
                         ::testing::Values("releases/sheets_r12.dxf",
                                           "releases/sheets_2000.dxf",
                                           "releases/sheets_2018.dxf",
                                           "releases/sheets_2018_bin.dxf"));

// `text` with the first value of group `code` in the object with handle
// `handle` (only one equal to `old` when given) set to `value`; "" when
// there is no such tag. The header counts as the object of "$HANDSEED".
std::string Mutate(const std::string& text, const std::string& handle, int code,
                   const std::string& old, const std::string& value) {
  const std::string start =
      handle == "$HANDSEED" ? "\n$HANDSEED\n" : "\n  5\n" + handle + "\n";
  size_t at = text.find(start);
  if (at == std::string::npos) return "";
  const size_t end = text.find("\n  0\n", at + 1);
  std::string code_line = std::to_string(code);
  code_line.insert(0, code_line.size() < 3 ? 3 - code_line.size() : 0, ' ');
  const std::string tag = "\n" + code_line + "\n" + old;
  for (size_t p = text.find(tag, at); p != std::string::npos && p < end;
       p = text.find(tag, p + 1)) {
    const size_t value_at = p + code_line.size() + 2;
    const size_t value_end = text.find('\n', value_at);
    if (!old.empty() && value_end - value_at != old.size()) continue;
    std::string out = text;
    out.replace(value_at, value_end - value_at, value);
    return out;
  }
  return "";
}

struct Breakage {
  const char* name;
  const char* handle;
  int code;
  const char* old;
  const char* value;
  const char* expected;  // in the report
};

class BrokenDrawingTest : public DxfCheckTest,
                          public ::testing::WithParamInterface<Breakage> {};

TEST_P(BrokenDrawingTest, IsReported) {
  const Breakage& b = GetParam();
  Result<std::string> clean = core::ReadFileBytes(TestdataPath(kSheets));
  ASSERT_TRUE(clean.ok()) << clean.status().ToString();
  const std::string broken = Mutate(*clean, b.handle, b.code, b.old, b.value);
  ASSERT_FALSE(broken.empty()) << "no group " << b.code << " in " << b.handle;
  TempDir dir;
  const std::string path = (dir / "broken.dxf").string();
  ASSERT_TRUE(core::WriteFileAtomically(path, broken).ok());

  DxfCheckReport r = RunDxfCheck(path);
  ASSERT_TRUE(r.ran) << r.text;
  EXPECT_GE(r.structural, 1) << r.text;
  EXPECT_NE(r.text.find(b.expected), std::string::npos) << r.text;
  EXPECT_NE(DxfProblems(path), "");
}

INSTANTIATE_TEST_SUITE_P(
    Sheets2018, BrokenDrawingTest,
    ::testing::Values(
        Breakage{"DuplicateHandle", "53", 5, "53", "52", "handle 52 used by"},
        Breakage{"ZeroHandle", "53", 5, "53", "0", "has handle '0'"},
        Breakage{"OwnerMissing", "53", 330, "", "FFF0",
                 "owner FFF0 does not exist"},
        Breakage{"HandseedNotAbove", "$HANDSEED", 5, "64", "60",
                 "$HANDSEED 60 not above"},
        Breakage{"BlockRecordNamesAnotherLayout", "54", 340, "57", "50",
                 "layout 'Pattern': block record 54 names layout 50"},
        Breakage{"LayoutNamesAMissingBlockRecord", "57", 330, "54", "FFF3",
                 "layout 'Pattern': block record FFF3 missing"},
        Breakage{"NoViewportWithIdOne", "58", 69, "1", "9", "none with id 1"},
        Breakage{"LayoutViewportMissing", "57", 331, "58", "FFF2",
                 "viewport FFF2 missing"},
        Breakage{"DictionaryEntryMissing", "D", 350, "57", "FFF1",
                 "names missing FFF1"},
        Breakage{"LayoutNameTwice", "D", 3, "Pattern", "Sheets",
                 "'Sheets' appears 2 times"}),
    [](const ::testing::TestParamInfo<Breakage>& info) {
      return std::string(info.param.name);
    });

}  // namespace
}  // namespace lmt::testing

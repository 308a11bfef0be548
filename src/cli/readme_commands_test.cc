// The command lines README.md shows between its readme-test fences run as
// written (from the checkout, with build/ the build folder), each with exit
// status 0, and the layouts they make read back with ezdxf.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

namespace fs = std::filesystem;

// The commands fenced by "<!-- MARKER -->" and "<!-- /readme-test -->",
// continuation lines joined, without the indent.
std::vector<std::string> FencedCommands(const std::string& readme,
                                        const std::string& marker) {
  std::vector<std::string> commands;
  std::istringstream lines(readme);
  bool inside = false;
  std::string pending;
  for (std::string line; std::getline(lines, line);) {
    if (line == "<!-- " + marker + " -->") {
      inside = true;
    } else if (line == "<!-- /readme-test -->") {
      inside = false;
    } else if (inside) {
      const size_t text = line.find_first_not_of(' ');
      if (text == std::string::npos) continue;
      pending += line.substr(text);
      if (pending.ends_with("\\")) {
        pending.back() = ' ';
      } else {
        commands.push_back(pending);
        pending.clear();
      }
    }
  }
  return commands;
}

TEST(ReadmeCommandsTest, ThreeCommandsFromDrawingToLayouts) {
  const fs::path source = fs::path(LMT_TESTDATA_DIR).parent_path();
  Result<std::string> readme = core::ReadFileBytes(source / "README.md");
  ASSERT_TRUE(readme.ok());
  const std::vector<std::string> commands =
      FencedCommands(*readme, "readme-test");
  ASSERT_EQ(commands.size(), 3u);
  EXPECT_TRUE(commands[0].starts_with("build/layomat templates "));
  EXPECT_TRUE(commands[2].starts_with("build/layomat create-layouts "));

  // A working folder of its own, with build/ and testdata/ as in the
  // checkout, and an empty settings folder.
  testing::TempDir dir;
  fs::create_directory_symlink(LMT_BINARY_DIR, dir / "build");
  fs::create_directory_symlink(LMT_TESTDATA_DIR, dir / "testdata");
  std::string suggested;
  for (const std::string& command : commands) {
    testing::ShellRun run =
        testing::RunShell("cd " + testing::ShellQuote(dir.path().string()) +
                          " && XDG_CONFIG_HOME=. " + command + " 2>&1");
    ASSERT_EQ(run.status, 0) << command << "\n" << run.out;
    if (suggested.empty()) suggested = run.out;
  }
  // What the README passes to --template is what templates offered.
  EXPECT_NE(suggested.find("--template block:FRAME_A3"), std::string::npos)
      << suggested;
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
      " names=[l.name for l in d.layouts if l.name.startswith('Sheet-')];"
      " assert names == ['Sheet-%d' % i for i in range(1, 7)], names;"
      " vps=[[v for v in d.layouts.get(n).query('VIEWPORT') if v.dxf.id != 1]"
      " for n in names];"
      " assert all(len(v) == 1 and"
      " abs(v[0].dxf.view_height / v[0].dxf.height - 100) < 1e-6"
      " for v in vps), 'viewports'\" " +
      testing::ShellQuote((dir / "sheets.dxf").string()) + " 2>&1");
  EXPECT_EQ(check.status, 0) << check.out;
}

// frames -> CSV -> edit -> create-layouts with the register -> split
// drawings, as the README shows it.
TEST(ReadmeCommandsTest, RegisterExampleRuns) {
  const fs::path source = fs::path(LMT_TESTDATA_DIR).parent_path();
  Result<std::string> readme = core::ReadFileBytes(source / "README.md");
  ASSERT_TRUE(readme.ok());
  const std::vector<std::string> commands =
      FencedCommands(*readme, "readme-register-test");
  ASSERT_EQ(commands.size(), 3u);
  testing::TempDir dir;
  fs::create_directory_symlink(LMT_BINARY_DIR, dir / "build");
  fs::create_directory_symlink(LMT_TESTDATA_DIR, dir / "testdata");
  for (const std::string& command : commands) {
    testing::ShellRun run =
        testing::RunShell("cd " + testing::ShellQuote(dir.path().string()) +
                          " && XDG_CONFIG_HOME=. " + command + " 2>&1");
    ASSERT_EQ(run.status, 0) << command << "\n" << run.out;
  }
  constexpr char kCheck[] = R"(
import ezdxf, sys
for path in sys.argv[1:]:
    d = ezdxf.readfile(path)
    names = [l.name for l in d.layouts if l.name not in ('Model', 'Layout1',
                                                         'Pattern')]
    titles = sorted(a.dxf.text for i in d.modelspace().query('INSERT')
                    for a in i.attribs if a.dxf.tag == 'TITLE')
    index = [t.dxf.text for n in names
             for t in d.layouts.get(n).query('TEXT') if t.dxf.insert.y > 200]
    print(names, titles[-1], len(index), len(d.audit().errors))
)";
  ASSERT_TRUE(core::WriteFileAtomically(dir / "check.py", kCheck).ok());
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      testing::ShellQuote((dir / "check.py").string()) + " " +
      testing::ShellQuote((dir / "set-1.dxf").string()) + " " +
      testing::ShellQuote((dir / "set-2.dxf").string()) + " 2>&1");
  // Header and five rows of five cells on Sheet-1.
  EXPECT_EQ(check.out,
            "['Sheet-1', 'Sheet-3', 'Sheet-4'] План участка 30 0\n"
            "['Sheet-5', 'Section B-B'] План участка 0 0\n");
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

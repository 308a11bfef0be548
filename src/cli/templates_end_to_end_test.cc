// Choosing a template without handles, as a user does: `layomat templates`
// on drawings with several kinds of frame, then `--template block:NAME`,
// `layer:NAME` and `auto` in the frame search.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <string>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

class TemplatesCommandTest : public ::testing::Test {
 protected:
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  static std::string Frames(const std::string& name) {
    return "'" LMT_TESTDATA_DIR "/frames/" + name + "'";
  }
  static int Rows(const std::string& text, const std::string& part) {
    int n = 0;
    for (size_t at = text.find(part); at != std::string::npos;
         at = text.find(part, at + 1)) {
      ++n;
    }
    return n;
  }

  testing::TempDir dir_;
};

TEST_F(TemplatesCommandTest, ListsTheGroupsWithASuggestedCommand) {
  test::LayomatRun run = Layomat("templates " + Frames("mixed.dxf"));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("BLOCK\tFRAME\t\t420\t297\t3\t"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("POLYLINE\t\tFRAMES\t420\t297\t2\t"),
            std::string::npos);
  EXPECT_NE(run.out.find("POLYLINE\t\tFRAMES\t594\t420\t1\t"),
            std::string::npos);
  EXPECT_NE(run.out.find("\tlayer:SHEETS\n"), std::string::npos);
  EXPECT_NE(run.out.find("suggested: layomat create-layouts "),
            std::string::npos);
  EXPECT_NE(run.out.find("--template block:FRAME -o OUT.dxf"),
            std::string::npos);
}

TEST_F(TemplatesCommandTest, JsonParsesAndMatchesTheText) {
  test::LayomatRun run =
      Layomat("templates " + Frames("mixed.dxf") + " --json");
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string file = (dir_.path() / "templates.json").string();
  ASSERT_TRUE(core::WriteFileAtomically(file, run.out).ok());
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import json,sys; d=json.load(open(sys.argv[1]));"
      " c=d['candidates']; print(len(c), c[0]['kind'], c[0]['count'],"
      " c[0]['width'], c[0]['template'], c[3]['layer'])\" '" +
      file + "'");
  EXPECT_EQ(check.out, "4 BLOCK 3 420 block:FRAME SHEETS\n") << run.out;
}

TEST_F(TemplatesCommandTest, TemplateByNameFindsOnlyThatGroup) {
  struct Case {
    const char* drawing;
    const char* template_arg;
    int frames;
  };
  for (const Case& c : {
           Case{"mixed.dxf", "block:frame", 3},
           // Both sizes on the layer; the layer criterion leaves SHEETS out.
           Case{"mixed.dxf", "layer:FRAMES", 3},
           Case{"mixed.dxf", "layer:SHEETS", 1},
           Case{"mixed.dxf", "auto", 3},
           Case{"blocks.dxf", "block:CONST", 1},
       }) {
    test::LayomatRun run = Layomat("frames " + Frames(c.drawing) +
                                   " --json --template " + c.template_arg);
    ASSERT_EQ(run.status, 0) << c.template_arg << "\n" << run.err;
    EXPECT_EQ(Rows(run.out, "\"№\": "), c.frames) << c.template_arg;
  }
  test::LayomatRun example = Layomat("frames '" LMT_TESTDATA_DIR
                                     "/example.dxf' --json --template auto");
  ASSERT_EQ(example.status, 0) << example.err;
  EXPECT_EQ(Rows(example.out, "\"Typ\": \"Block\""), 6);
}

TEST_F(TemplatesCommandTest, UnknownNamesAndTiesAreRefusedWithTheList) {
  for (const char* arg : {"block:LOGO", "layer:NOPE"}) {
    test::LayomatRun run =
        Layomat("frames " + Frames("mixed.dxf") + " --template " + arg);
    EXPECT_EQ(run.status, 1) << arg;
    EXPECT_NE(run.err.find(std::string("--template ") + arg), std::string::npos)
        << run.err;
    EXPECT_NE(run.err.find("suggested: "), std::string::npos) << run.err;
  }
  test::LayomatRun tie =
      Layomat("frames " + Frames("tie.dxf") + " --template auto");
  EXPECT_EQ(tie.status, 1);
  EXPECT_NE(tie.err.find("equally common"), std::string::npos) << tie.err;
  EXPECT_NE(tie.err.find("block:FRAME"), std::string::npos) << tie.err;
  EXPECT_NE(tie.err.find("layer:FRAMES"), std::string::npos) << tie.err;
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

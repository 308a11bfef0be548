// Damaged drawings as a user meets them: refused with their place by
// default, read with --recover or `layomat recover` with each repair
// listed, written so that a strict read (ours and ezdxf's) takes them, and
// never changed in place.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <string>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

class RecoverCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // The example with its header left open and its end cut off, as a
    // small writer or an interrupted copy leaves a file.
    std::string text =
        core::ReadFileBytes(LMT_TESTDATA_DIR "/example.dxf").value_or("");
    const size_t header_end = text.find("ENDSEC");
    ASSERT_NE(header_end, std::string::npos);
    const size_t line = text.rfind('\n', text.rfind('\n', header_end) - 1);
    text.erase(line + 1, text.find('\n', header_end) - line);
    const size_t eof = text.rfind("EOF");
    text.erase(text.rfind('\n', text.rfind('\n', eof) - 1) + 1);
    damaged_ = Out("damaged.dxf");
    ASSERT_TRUE(core::WriteFileAtomically(damaged_, text).ok());
    original_ = text;
  }
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }

  testing::TempDir dir_;
  std::string damaged_, original_;
};

TEST_F(RecoverCommandTest, RefusedStrictlyReadWhenRecovering) {
  test::LayomatRun strict =
      Layomat("viewports off '" + damaged_ + "' -o '" + Out("off.dxf") + "'");
  EXPECT_EQ(strict.status, 3);
  EXPECT_NE(strict.err.find("damaged.dxf:"), std::string::npos) << strict.err;
  EXPECT_NE(strict.err.find("expected 0 EOF, got end of file"),
            std::string::npos)
      << strict.err;
  EXPECT_FALSE(std::filesystem::exists(Out("off.dxf")));

  test::LayomatRun recovered = Layomat("viewports off '" + damaged_ + "' -o '" +
                                       Out("off.dxf") + "' --recover");
  ASSERT_EQ(recovered.status, 0) << recovered.err;
  EXPECT_NE(recovered.err.find("repaired: " + damaged_ + ":"),
            std::string::npos)
      << recovered.err;
  EXPECT_NE(recovered.err.find("section HEADER has no ENDSEC; added"),
            std::string::npos);
  EXPECT_NE(recovered.err.find("no EOF at the end; added"), std::string::npos);
  EXPECT_EQ(core::ReadFileBytes(damaged_).value_or(""), original_);
}

TEST_F(RecoverCommandTest, RecoverWritesADrawingThatReadsStrictly) {
  test::LayomatRun run =
      Layomat("recover '" + damaged_ + "' -o '" + Out("fixed.dxf") + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "2 repairs -> " + Out("fixed.dxf") + "\n");
  EXPECT_EQ(core::ReadFileBytes(damaged_).value_or(""), original_);
  // Our strict read takes it, and ezdxf finds what the example holds.
  EXPECT_EQ(Layomat("templates '" + Out("fixed.dxf") + "'").status, 0);
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys;"
      "a=ezdxf.readfile(sys.argv[1]);b=ezdxf.readfile(sys.argv[2]);"
      "print(len(a.audit().errors), len(a.modelspace()) == "
      "len(b.modelspace()), [l.name for l in a.layouts] == "
      "[l.name for l in b.layouts])\" '" +
      Out("fixed.dxf") + "' '" LMT_TESTDATA_DIR "/example.dxf'");
  EXPECT_EQ(check.out, "0 True True\n") << check.out;

  // A drawing with no damage is written as it is.
  run = Layomat("recover '" LMT_TESTDATA_DIR "/example.dxf' -o '" +
                Out("same.dxf") + "' --json");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("\"repairs\": 0"), std::string::npos) << run.out;
}

TEST_F(RecoverCommandTest, WhatCannotBeRepairedIsStillRefused) {
  ASSERT_TRUE(
      core::WriteFileAtomically(Out("junk.dxf"), "EXTENTS,1\n0.0,8.0,0.0,8.0\n")
          .ok());
  test::LayomatRun run =
      Layomat("recover '" + Out("junk.dxf") + "' -o '" + Out("out.dxf") + "'");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("junk.dxf:1: expected a group code"),
            std::string::npos)
      << run.err;
  EXPECT_FALSE(std::filesystem::exists(Out("out.dxf")));
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

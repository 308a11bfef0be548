// Every command that writes a drawing, run as a user runs it over a DXF
// 2000, a DXF 2018 and a binary DXF input: it writes exactly OUT, in the
// input's release and format, leaves nothing else behind, refuses an OUT it
// cannot write before claiming any success, and reports the rows it skips.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/drawing_output.h"
#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

namespace fs = std::filesystem;

const std::string kInputs = std::string(LMT_TESTDATA_DIR) + "/cli/";

// The binary DXF sentinel.
constexpr std::string_view kBinarySentinel = "AutoCAD Binary DXF\r\n\x1a";

struct Input {
  const char* file;
  const char* release;
  bool binary;
  const char* viewport;  // the handle of the viewport on layout "Sheet"
};

constexpr Input kInputFiles[] = {
    {"frames_2000.dxf", "AC1015", false, "A0"},
    {"frames_2018.dxf", "AC1032", false, "A0"},
    {"frames_2018_bin.dxf", "AC1032", true, "A0"},
};

struct SavingCommand {
  const char* name;
  // The command line before "-o OUT", with IN for the drawing and VP for
  // its viewport.
  const char* line;
};

// Frames found as blocks, one layout per frame from the "Pattern" layout.
constexpr const char* kCreateOptions =
    " --set OknoLmt.OptionBlockPoisk1=True"
    " --set OknoLmt.OptionVidSozdatLayout1=True"
    " --set OknoLmt.UniTextNameObrazecLayout=Pattern";

constexpr SavingCommand kSavingCommands[] = {
    {"create_layouts", "create-layouts IN"},
    {"viewports", "viewports off IN"},
    {"delete_outside", "delete-outside IN --viewport VP"},
};

bool IsBinary(const fs::path& path) {
  return core::ReadFileBytes(path).value_or("").starts_with(kBinarySentinel);
}

class OutputFileTest : public ::testing::Test {
 protected:
  // Copies `input` into the scratch folder and runs `command` on it with
  // the given -o value and `extra` options.
  test::LayomatRun Run(const SavingCommand& command, const Input& input,
                       const std::string& out, const std::string& extra = "") {
    fs::copy_file(kInputs + input.file, dir_ / input.file,
                  fs::copy_options::overwrite_existing);
    return RunOn(command, input, out, extra);
  }
  // The same on input.file as it already is in the scratch folder.
  test::LayomatRun RunOn(const SavingCommand& command, const Input& input,
                         const std::string& out,
                         const std::string& extra = "") {
    std::string line = command.line;
    line.replace(line.find("IN"), 2, testing::ShellQuote(input.file));
    if (size_t vp = line.find("VP"); vp != std::string::npos) {
      line.replace(vp, 2, input.viewport);
    }
    if (std::string_view(command.name) == "create_layouts") {
      line += kCreateOptions;
    }
    return test::RunLayomat(line + extra + " -o " + testing::ShellQuote(out),
                            dir_.path());
  }

  // The names in the scratch folder, sorted (folders end in "/").
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& e : fs::directory_iterator(dir_.path())) {
      names.push_back(e.path().filename().string() +
                      (e.is_directory() ? "/" : ""));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  lmt::testing::TempDir dir_;
};

class EveryInputTest
    : public OutputFileTest,
      public ::testing::WithParamInterface<std::tuple<SavingCommand, Input>> {
 protected:
  const SavingCommand& command() const { return std::get<0>(GetParam()); }
  const Input& input() const { return std::get<1>(GetParam()); }
};

TEST_P(EveryInputTest, WritesExactlyOutInTheInputsReleaseAndFormat) {
  const std::string before =
      core::ReadFileBytes(kInputs + input().file).value_or("");
  test::LayomatRun run = Run(command(), input(), "result");
  ASSERT_EQ(run.status, 0) << run.all();
  // No extension added, no temporary file left, the input untouched.
  EXPECT_EQ(Names(), (std::vector<std::string>{input().file, "result"}));
  EXPECT_EQ(core::ReadFileBytes(dir_ / input().file).value_or(""), before);
  Result<std::string> release = DxfRelease((dir_ / "result").string());
  ASSERT_TRUE(release.ok()) << release.status().ToString();
  EXPECT_EQ(*release, input().release);
  EXPECT_EQ(IsBinary(dir_ / "result"), input().binary)
      << "binary input must give binary output";
  testing::ShellRun read = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys; ezdxf.readfile(sys.argv[1])\" " +
      testing::ShellQuote((dir_ / "result").string()) + " 2>&1");
  EXPECT_EQ(read.status, 0) << read.out;
}

TEST_P(EveryInputTest, OutputEqualToTheDrawingReplacesIt) {
  test::LayomatRun run = Run(command(), input(), input().file);
  ASSERT_EQ(run.status, 0) << run.all();
  EXPECT_EQ(Names(), std::vector<std::string>{input().file});
  EXPECT_EQ(*DxfRelease((dir_ / input().file).string()), input().release);
  EXPECT_EQ(IsBinary(dir_ / input().file), input().binary);
}

INSTANTIATE_TEST_SUITE_P(
    SavingCommands, EveryInputTest,
    ::testing::Combine(::testing::ValuesIn(kSavingCommands),
                       ::testing::ValuesIn(kInputFiles)),
    [](const auto& info) {
      std::string input = std::get<1>(info.param).file;
      input = input.substr(0, input.find('.'));
      return std::string(std::get<0>(info.param).name) + "_" + input;
    });

class BatchSaveTest : public OutputFileTest,
                      public ::testing::WithParamInterface<Input> {};

TEST_P(BatchSaveTest, SavingOverTheSourceKeepsItsReleaseAndFormat) {
  const Input& input = GetParam();
  fs::copy_file(kInputs + input.file, dir_ / input.file);
  for (const char* command : {"replace-text", "replace-attributes"}) {
    SCOPED_TRACE(command);
    const std::string window = std::string_view(command) == "replace-text"
                                   ? "OknoFunctionReplaceText"
                                   : "OknoFunctionReplaceAtribut";
    test::LayomatRun run = test::RunLayomat(
        std::string(command) + " " + testing::ShellQuote(input.file) +
            " --set " + window + ".OptionSaveKuda3=True",
        dir_.path());
    ASSERT_EQ(run.status, 0) << run.all();
    EXPECT_EQ(Names(), std::vector<std::string>{input.file});
    EXPECT_EQ(*DxfRelease((dir_ / input.file).string()), input.release);
    EXPECT_EQ(IsBinary(dir_ / input.file), input.binary)
        << "binary input must give binary output";
  }
}

INSTANTIATE_TEST_SUITE_P(Inputs, BatchSaveTest,
                         ::testing::ValuesIn(kInputFiles),
                         [](const auto& info) {
                           std::string file = info.param.file;
                           return file.substr(0, file.find('.'));
                         });

class EveryCommandTest : public OutputFileTest,
                         public ::testing::WithParamInterface<SavingCommand> {};

TEST_P(EveryCommandTest, UnwritableOutputIsAFileErrorLeavingNothing) {
  const Input& input = kInputFiles[1];
  fs::create_directory(dir_ / "folder");
  struct Case {
    const char* out;
    const char* said;  // in the message
  };
  for (Case c : {Case{"folder", "is a folder"},
                 Case{"missing/out.dxf", "does not exist"},
                 Case{"frames_2018.dxf/out.dxf", "does not exist"}}) {
    SCOPED_TRACE(c.out);
    test::LayomatRun run = Run(GetParam(), input, c.out);
    EXPECT_EQ(run.status, 3) << run.all();
    EXPECT_NE(run.err.find(c.out), std::string::npos) << run.err;
    EXPECT_NE(run.err.find(c.said), std::string::npos) << run.err;
    // Nothing claimed, nothing written, no temporary file.
    EXPECT_EQ(run.all().find(": Ok"), std::string::npos) << run.all();
    EXPECT_EQ(Names(), (std::vector<std::string>{"folder/", input.file}));
    EXPECT_TRUE(fs::is_empty(dir_ / "folder"));
  }
}

TEST_P(EveryCommandTest, NoSuccessMessageWhenTheSaveIsRefused) {
  // A release newer than any the engine writes: the command reads and runs,
  // then its save is refused.
  std::string future =
      core::ReadFileBytes(kInputs + "frames_2018.dxf").value_or("");
  const size_t at = future.find("AC1032");
  ASSERT_NE(at, std::string::npos);
  future.replace(at, 6, "AC1099");
  ASSERT_TRUE(core::WriteFileAtomically(dir_ / "future.dxf", future).ok());
  test::LayomatRun run =
      RunOn(GetParam(), Input{"future.dxf", "AC1099", false, "A0"}, "out.dxf");
  ASSERT_EQ(run.status, 3) << run.all();
  EXPECT_NE(run.err.find("out.dxf"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("AC1099"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find(": Ok"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find("Создание вкладок закончено"), std::string::npos)
      << run.err;
  EXPECT_EQ(Names(), std::vector<std::string>{"future.dxf"});
}

INSTANTIATE_TEST_SUITE_P(SavingCommands, EveryCommandTest,
                         ::testing::ValuesIn(kSavingCommands),
                         [](const auto& info) {
                           return std::string(info.param.name);
                         });

TEST_F(OutputFileTest, MissingRequiredOptionsAreUsageErrors) {
  struct Case {
    const char* line;
    const char* named;
  };
  for (Case c :
       {Case{"delete-outside frames_2018.dxf -o out.dxf", "--viewport"},
        Case{"delete-outside frames_2018.dxf --viewport A0", "-o OUT"},
        Case{"viewports on frames_2018.dxf", "-o OUT"},
        Case{"create-layouts frames_2018.dxf", "-o OUT"}}) {
    SCOPED_TRACE(c.line);
    fs::copy_file(kInputs + "frames_2018.dxf", dir_ / "frames_2018.dxf",
                  fs::copy_options::overwrite_existing);
    test::LayomatRun run = test::RunLayomat(c.line, dir_.path());
    EXPECT_EQ(run.status, 2) << run.all();
    EXPECT_NE(run.err.find(c.named), std::string::npos) << run.err;
    EXPECT_EQ(Names(), std::vector<std::string>{"frames_2018.dxf"});
  }
}

TEST_F(OutputFileTest, SkippedRowsAreReportedWithTheHostsReason) {
  // Both frames are named after their block: the second name is taken.
  fs::copy_file(kInputs + "frames_2018.dxf", dir_ / "frames_2018.dxf");
  test::LayomatRun run = test::RunLayomat(
      std::string("create-layouts frames_2018.dxf") + kCreateOptions +
          " --set OknoLmt.TextStrokaNameFile=30 -o out.dxf",
      dir_.path());
  ASSERT_EQ(run.status, 0) << run.all();
  EXPECT_NE(run.out.find("layout\tFRAME\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("skipped\tFRAME\tlayout \"FRAME\" already exists\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("1 of 2 layouts made; 1 skipped;"), std::string::npos)
      << run.out;
}

TEST_F(OutputFileTest, LayoutOfATurnedBlockFrameGetsExactlyItsAngle) {
  fs::copy_file(kInputs + "frames_2018.dxf", dir_ / "frames_2018.dxf");
  test::LayomatRun run = test::RunLayomat(
      std::string("create-layouts frames_2018.dxf") + kCreateOptions +
          " --set OknoLmt.OptionBlockPoisk0=True"  // the frame, not its box
          " --set OknoLmt.UniTextLeyoutName0=S --set "
          "OknoLmt.TextStrokaNameFile=10/20 -o out.dxf",
      dir_.path());
  ASSERT_EQ(run.status, 0) << run.all();
  // The block is turned by 30 degrees; its viewport's twist must be that
  // angle to the last bit the degree conversion keeps (the old 8-decimal
  // table text was 2.5e-7 degrees off).
  testing::ShellRun twist = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
      " print(sorted(round(v.dxf.view_twist_angle, 12) % 360"
      " for n in ('S1', 'S2') for v in d.layouts.get(n).query('VIEWPORT')"
      " if v.dxf.id != 1))\" " +
      testing::ShellQuote((dir_ / "out.dxf").string()) + " 2>&1");
  ASSERT_EQ(twist.status, 0) << twist.out;
  EXPECT_TRUE(twist.out == "[0.0, 30.0]\n" || twist.out == "[0.0, 330.0]\n")
      << twist.out;
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

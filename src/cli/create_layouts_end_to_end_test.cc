// `layomat create-layouts` as a user runs it: the example drawing in, one
// layout per frame out (read back with ezdxf), the exit statuses of its
// refusals and file errors, and an input that is never touched.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include "core/file_util.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

class CreateLayoutsCommandTest : public ::testing::Test {
 protected:
  Outcome Run(const std::string& command) {
    const std::string err_file = (dir_ / "stderr.txt").string();
    Outcome run;
    FILE* pipe = popen((command + " 2>'" + err_file + "'").c_str(), "r");
    if (pipe == nullptr) return run;
    std::array<char, 512> buffer;
    while (fgets(buffer.data(), buffer.size(), pipe) != nullptr)
      run.out += buffer.data();
    const int raw = pclose(pipe);
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.err = core::ReadFileBytes(err_file).value_or("");
    return run;
  }
  Outcome Layomat(const std::string& args) {
    return Run("XDG_CONFIG_HOME='" + dir_.path().string() +
               "' '" LMT_BINARY_DIR "/layomat' " + args);
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  lmt::testing::TempDir dir_;
};

TEST_F(CreateLayoutsCommandTest, OneLayoutPerFrameOfTheExample) {
  const std::string before = core::ReadFileBytes(example_).value_or("");
  Outcome run =
      Layomat("create-layouts '" + example_ + "' -o '" + Out("sheets.dxf") +
              "' --set OknoLmt.OptionBlockPoisk1=True"
              " --set OknoLmt.TextStrokaNameFile=10/20"
              " --set OknoLmt.UniTextLeyoutName0=Sheet-"
              " --set OknoLmt.OptionVidSozdatLayout1=True"
              " --set OknoLmt.UniTextNameObrazecLayout=Pattern");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(core::ReadFileBytes(example_).value_or(""), before);
  // Nine layouts named in order, each with one viewport beside its own and
  // the pattern's text; the drawing keeps its release.
  Outcome check = Run(
      "/usr/bin/python3 -c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
      " assert d.dxfversion == 'AC1032';"
      " names=[l.name for l in d.layouts if l.name.startswith('Sheet-')];"
      " assert names == ['Sheet-%d' % i for i in range(1, 10)], names;"
      " assert all(len([v for v in d.layouts.get(n).query('VIEWPORT')"
      " if v.dxf.id != 1]) == 1 for n in names);"
      " assert all(len(d.layouts.get(n).query('TEXT')) == 1 for n in names);"
      " assert len(d.audit().errors) == 0\" '" +
      Out("sheets.dxf") + "'");
  EXPECT_EQ(check.status, 0) << check.err;
}

TEST_F(CreateLayoutsCommandTest, ExitStatuses) {
  // A pattern layout the drawing lacks: the refusal, no output.
  Outcome missing =
      Layomat("create-layouts '" + example_ + "' -o '" + Out("a.dxf") +
              "' --set OknoLmt.OptionVidSozdatLayout1=True"
              " --set OknoLmt.UniTextNameObrazecLayout=Nope");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("Nope"), std::string::npos) << missing.err;
  EXPECT_FALSE(std::filesystem::exists(Out("a.dxf")));
  // No -o: a bad command line.
  EXPECT_EQ(Layomat("create-layouts '" + example_ + "'").status, 2);
  // An unreadable drawing: a file error naming it.
  Outcome unreadable = Layomat("create-layouts '" + Out("none.dxf") + "' -o '" +
                               Out("b.dxf") + "'");
  EXPECT_EQ(unreadable.status, 3);
  EXPECT_NE(unreadable.err.find("none.dxf"), std::string::npos);
}

TEST_F(CreateLayoutsCommandTest, OutputEqualToDrawingReplacesIt) {
  const std::string copy = Out("copy.dxf");
  std::filesystem::copy_file(example_, copy);
  Outcome run = Layomat("create-layouts '" + copy + "' -o '" + copy + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(core::ReadFileBytes(copy).value_or(""),
            core::ReadFileBytes(example_).value_or(""));
  EXPECT_FALSE(std::filesystem::exists(copy + ".lmt-tmp"));
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

// `layomat create-layouts` as a user runs it: the example drawing in, one
// layout per frame out (read back with ezdxf), the exit statuses of its
// refusals and file errors, and an input that is never touched.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <algorithm>
#include <filesystem>
#include <fstream>
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

class CreateLayoutsCommandTest : public ::testing::Test {
 protected:
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  lmt::testing::TempDir dir_;
};

TEST_F(CreateLayoutsCommandTest, OneLayoutPerFrameOfTheExample) {
  const std::string before = core::ReadFileBytes(example_).value_or("");
  test::LayomatRun run =
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
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
      " assert d.dxfversion == 'AC1032';"
      " names=[l.name for l in d.layouts if l.name.startswith('Sheet-')];"
      " assert names == ['Sheet-%d' % i for i in range(1, 10)], names;"
      " assert all(len([v for v in d.layouts.get(n).query('VIEWPORT')"
      " if v.dxf.id != 1]) == 1 for n in names);"
      " assert all(len(d.layouts.get(n).query('TEXT')) == 1 for n in names);"
      " assert len(d.audit().errors) == 0\" '" +
      Out("sheets.dxf") + "' 2>&1");
  EXPECT_EQ(check.status, 0) << check.out;
}

// The demo's command in plain options gives the drawing its --set form
// gives, byte for byte: nine sheets from the pattern, each with a 1:100
// viewport on layer Viewports and its numbered label.
TEST_F(CreateLayoutsCommandTest, PlainOptionsMakeTheDemoSheets) {
  const std::string settings = Out("empty.ini");
  ASSERT_TRUE(core::WriteFileAtomically(settings, "").ok());
  const std::string common =
      "create-layouts '" + example_ + "' --settings '" + settings + "' -o '";
  test::LayomatRun plain = Layomat(
      common + Out("plain.dxf") +
      "' --by-size --numbering 10/20 --names Sheet- --pattern-layout Pattern"
      " --scale 1:100 --layer Viewports"
      " --text 'Sheet ##1 scale ##4' --text-at 300,20 --text-height 5");
  ASSERT_EQ(plain.status, 0) << plain.err;
  test::LayomatRun sets =
      Layomat(common + Out("sets.dxf") +
              "' --set OknoLmt.OptionBlockPoisk1=True"
              " --set OknoLmt.TextStrokaNameFile=10/20"
              " --set OknoLmt.UniTextLeyoutName0=Sheet-"
              " --set OknoLmt.OptionVidSozdatLayout1=True"
              " --set OknoLmt.UniTextNameObrazecLayout=Pattern"
              " --set OknoSozdatLayout.OptionSelectMashtab0=True"
              " --set OknoSozdatLayout.TextMashtabBumaga=1"
              " --set OknoSozdatLayout.TextMashtabModel=100"
              " --set OknoSozdatLayout.TextNameSloiViewport=Viewports"
              " --set OknoDeistvie.CheckSozdatText=1"
              " --set 'OknoDeistvie.TextTextStroka=Sheet ##1 scale ##4'"
              " --set OknoDeistvie.TextTextCoordX=300"
              " --set OknoDeistvie.TextTextCoordY=20"
              " --set OknoDeistvie.TextTextVisota=5");
  ASSERT_EQ(sets.status, 0) << sets.err;
  EXPECT_EQ(core::ReadFileBytes(Out("plain.dxf")).value_or("a"),
            core::ReadFileBytes(Out("sets.dxf")).value_or("b"));
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
      " names=[l.name for l in d.layouts if l.name.startswith('Sheet-')];"
      " assert names == ['Sheet-%d' % i for i in range(1, 10)], names;"
      " vps=[[v for v in d.layouts.get(n).query('VIEWPORT') if v.dxf.id != 1]"
      " for n in names];"
      " assert all(len(v) == 1 and v[0].dxf.layer == 'Viewports' and"
      " abs(v[0].dxf.view_height / v[0].dxf.height - 100) < 1e-6"
      " for v in vps), 'viewports';"
      " texts=[[t.text for t in d.layouts.get(n).query('MTEXT')]"
      " for n in names];"
      " assert texts == [['Sheet %d scale 1:100' % i] for i in range(1, 10)],"
      " texts\" '" +
      Out("plain.dxf") + "' 2>&1");
  EXPECT_EQ(check.status, 0) << check.out;
}

TEST_F(CreateLayoutsCommandTest, ExitStatuses) {
  // A pattern layout the drawing lacks: the refusal, no output.
  test::LayomatRun missing =
      Layomat("create-layouts '" + example_ + "' -o '" + Out("a.dxf") +
              "' --set OknoLmt.OptionVidSozdatLayout1=True"
              " --set OknoLmt.UniTextNameObrazecLayout=Nope");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("Nope"), std::string::npos) << missing.err;
  EXPECT_FALSE(std::filesystem::exists(Out("a.dxf")));
  // No -o: a bad command line.
  EXPECT_EQ(Layomat("create-layouts '" + example_ + "'").status, 2);
  // An unreadable drawing: a file error naming it.
  test::LayomatRun unreadable = Layomat("create-layouts '" + Out("none.dxf") +
                                        "' -o '" + Out("b.dxf") + "'");
  EXPECT_EQ(unreadable.status, 3);
  EXPECT_NE(unreadable.err.find("none.dxf"), std::string::npos);
}

TEST_F(CreateLayoutsCommandTest, OutputEqualToDrawingReplacesIt) {
  const std::string copy = Out("copy.dxf");
  std::filesystem::copy_file(example_, copy);
  test::LayomatRun run =
      Layomat("create-layouts '" + copy + "' -o '" + copy + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(core::ReadFileBytes(copy).value_or(""),
            core::ReadFileBytes(example_).value_or(""));
  EXPECT_FALSE(std::filesystem::exists(copy + ".lmt-tmp"));
}

// Layouts need DXF 2000: R14 and R12 drawings become one, and the run says
// so in one line.
TEST_F(CreateLayoutsCommandTest, OlderReleasesBecomeDxf2000) {
  LMT_SKIP_WITHOUT_SHARED();
  const std::string r14 = lmt::testing::CorpusPath("394_Test2.dxf");
  test::LayomatRun run =
      Layomat("create-layouts '" + r14 +
              "' --template layer:ENTREE__SORTIE -o '" + Out("r14.dxf") + "'");
  ASSERT_EQ(run.status, 0) << run.all();
  EXPECT_NE(run.err.find("is R14, which has no layouts: " + Out("r14.dxf") +
                         " is written as DXF 2000"),
            std::string::npos)
      << run.err;
  lmt::testing::ShellRun read = lmt::testing::RunShell(
      lmt::testing::PythonCommand() +
      "-c \"import ezdxf,sys; d = ezdxf.readfile(sys.argv[1]);"
      " a = d.audit(); print(d.dxfversion, len(d.layouts), len(a.errors))\" " +
      lmt::testing::ShellQuote(Out("r14.dxf")) + " 2>&1");
  EXPECT_EQ(read.out, "AC1015 11 0\n");  // Model, Layout1 and 9 sheets

  test::LayomatRun r12 =
      Layomat("create-layouts '" + std::string(LMT_TESTDATA_DIR) +
              "/cli/frames_r12.dxf' -o '" + Out("r12.dxf") + "'");
  ASSERT_EQ(r12.status, 0) << r12.all();
  EXPECT_NE(r12.err.find("is R12, which has no layouts: " + Out("r12.dxf") +
                         " is written as DXF 2000\n"),
            std::string::npos)
      << r12.err;
  read = lmt::testing::RunShell(
      lmt::testing::PythonCommand() +
      "-c \"import ezdxf,sys; d = ezdxf.readfile(sys.argv[1]);"
      " a = d.audit(); print(d.dxfversion, [l.name for l in d.layouts],"
      " [e.dxftype() for e in d.modelspace()],"
      " [((v.dxf.view_target_point.x, v.dxf.view_target_point.y),"
      " v.dxf.view_height) for v in d.layouts.get('1').query('VIEWPORT')"
      " if v.dxf.id != 1], len(a.errors))\" " +
      lmt::testing::ShellQuote(Out("r12.dxf")) + " 2>&1");
  // Its frame, an old-style polyline, opens lightweight as in CAD programs
  // and gets its layout and viewport.
  EXPECT_EQ(read.out,
            "AC1015 ['Model', 'Layout1', '1'] ['LWPOLYLINE', 'CIRCLE', "
            "'CIRCLE'] [((21000.0, 14850.0), 29700.0)] 0\n");
}

// The corpus drawings whose manifest row says AC1009.
std::vector<std::string> R12CorpusNames() {
  std::ifstream in(lmt::testing::SharedDir() + "/dxf-corpus/manifest.tsv");
  std::vector<std::string> names;
  std::string line;
  int column = -1;
  while (std::getline(in, line)) {
    std::vector<std::string> cells;
    std::stringstream row(line);
    for (std::string cell; std::getline(row, cell, '\t');) {
      cells.push_back(cell);
    }
    if (column < 0) {
      auto it = std::find(cells.begin(), cells.end(), "acadver");
      if (it == cells.end()) return {};
      column = static_cast<int>(it - cells.begin());
    } else if (static_cast<int>(cells.size()) > column &&
               cells[static_cast<size_t>(column)] == "AC1009") {
      names.push_back(cells[0]);
    }
  }
  return names;
}

// Every R12 drawing of the corpus, ASCII and binary: the output is DXF 2000,
// loads in ezdxf, audits with no more errors than the input and keeps every
// model-space entity (a simple 2D POLYLINE comes out lightweight). Inputs ezdxf
// itself cannot load are left out of the comparison (two of them, for their own
// damage).
TEST_F(CreateLayoutsCommandTest, R12CorpusDrawingsBecomeDxf2000) {
  LMT_SKIP_WITHOUT_SHARED();
  const std::vector<std::string> names = R12CorpusNames();
  ASSERT_GE(names.size(), 10u);
  std::string pairs;
  for (const std::string& name : names) {
    const std::string in = lmt::testing::CorpusPath(name);
    test::LayomatRun run =
        Layomat("create-layouts " + lmt::testing::ShellQuote(in) + " -o " +
                lmt::testing::ShellQuote(Out(name)));
    ASSERT_EQ(run.status, 0) << name << "\n" << run.all();
    EXPECT_NE(run.err.find("is R12, which has no layouts"), std::string::npos)
        << name << "\n"
        << run.err;
    pairs += " " + lmt::testing::ShellQuote(in) + " " +
             lmt::testing::ShellQuote(Out(name));
  }
  lmt::testing::ShellRun check = lmt::testing::RunShell(
      lmt::testing::PythonCommand() + "-" + pairs +
      " 2>&1 <<'EOF'\n"
      "import collections, os, sys, ezdxf\n"
      "args = sys.argv[1:]\n"
      "def kinds(doc):\n"
      "    return collections.Counter(\n"
      "        'POLYLINE' if e.dxftype() == 'LWPOLYLINE' else e.dxftype()\n"
      "        for e in doc.modelspace())\n"
      "for src, out in zip(args[::2], args[1::2]):\n"
      "    name = os.path.basename(src)\n"
      "    try:\n"
      "        before = ezdxf.readfile(src)\n"
      "    except Exception:\n"
      "        print('unreadable', name)\n"
      "        continue\n"
      "    after = ezdxf.readfile(out)\n"
      "    a, b = kinds(before), kinds(after)\n"
      "    ea, eb = len(before.audit().errors), len(after.audit().errors)\n"
      "    good = after.dxfversion == 'AC1015' and eb <= ea and a == b\n"
      "    print('ok' if good else 'BAD', name, after.dxfversion, ea, eb,\n"
      "          dict(a - b), dict(b - a))\n"
      "EOF\n");
  ASSERT_EQ(check.status, 0) << check.out;
  EXPECT_EQ(check.out.find("BAD"), std::string::npos) << check.out;
  int ok = 0;
  std::stringstream lines(check.out);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("ok ", 0) == 0) ++ok;
  }
  EXPECT_GE(ok, static_cast<int>(names.size()) - 2) << check.out;
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

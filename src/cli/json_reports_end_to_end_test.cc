// The --json reports of the commands that write drawings, and --quiet and
// --verbose, run as a user runs the built `layomat`: the report must parse
// as one JSON document and agree with the drawing ezdxf reads back.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <filesystem>
#include <fstream>
#include <string>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

namespace fs = std::filesystem;

class JsonReportTest : public ::testing::Test {
 protected:
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }

  // Runs the Python `check` with `report` parsed as `r` (it fails on a
  // second document or any text around it) and, when given, `drawing` read
  // by ezdxf as `d`; returns what failed, empty when all held.
  std::string Check(const std::string& report, const std::string& check,
                    const std::string& drawing = "") {
    const fs::path json = dir_ / "report.json";
    std::ofstream(json) << report;
    std::string script = "import json,sys\nr=json.load(open(sys.argv[1]))\n";
    if (!drawing.empty())
      script += "import ezdxf\nd=ezdxf.readfile(sys.argv[2])\n";
    std::ofstream(dir_ / "check.py") << script << check << "\n";
    testing::ShellRun run = testing::RunShell(
        testing::PythonCommand() + testing::ShellQuote(Out("check.py")) + " " +
        testing::ShellQuote(json.string()) + " " +
        (drawing.empty() ? "" : testing::ShellQuote(drawing)) + " 2>&1");
    return run.status == 0 ? "" : run.out;
  }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  testing::TempDir dir_;
};

TEST_F(JsonReportTest, CreateLayoutsReportMatchesTheDrawing) {
  test::LayomatRun run = Layomat(
      "create-layouts '" + example_ + "' -o " + Out("s.dxf") +
      " --by-size --numbering 10/20 --names Sheet- --pattern-layout Pattern"
      " --scale 1:100 --json");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(
      Check(run.out,
            "names=[l.name for l in d.layouts"
            " if l.name.startswith('Sheet-')]\n"
            "made=[i for i in r['items'] if i['result']=='made']\n"
            "assert r['command']=='create-layouts' and r['status']==0\n"
            "assert [i['name'] for i in made]==names, (made, names)\n"
            "assert r['totals']['made']==len(names)==9, r['totals']\n"
            "assert r['totals']['rows']==9 and r['totals']['skipped']==0\n"
            "assert r['outputs']==[sys.argv[2]], r['outputs']\n"
            "import math\n"
            "for i in made:\n"
            "  f=i['frame']; v=[v for v in d.layouts.get(i['name'])"
            ".query('VIEWPORT') if v.dxf.id!=1][0].dxf\n"
            "  assert abs(f['scale']-v.height/v.view_height)<1e-9, f\n"
            "  assert abs((f['twist']-v.view_twist_angle+1)%360-1)<1e-6,"
            " (f, v.view_twist_angle)\n"
            "  t=-math.radians(v.view_twist_angle)\n"
            "  dx,dy=v.view_center_point[0],v.view_center_point[1]\n"
            "  cx=v.view_target_point[0]+dx*math.cos(t)-dy*math.sin(t)\n"
            "  cy=v.view_target_point[1]+dx*math.sin(t)+dy*math.cos(t)\n"
            "  assert abs(f['centre'][0]-cx)<1e-6 and"
            " abs(f['centre'][1]-cy)<1e-6, (f, cx, cy)\n"
            "  assert f['kind'] in ('block', 'polyline'), f\n"
            "assert sum(1 for i in made if i['frame']['twist'])==1\n",
            Out("s.dxf")),
      "");
}

TEST_F(JsonReportTest, SkippedRowsCarryTheirReason) {
  // Every row gets the same name: the first takes it, the host refuses the
  // rest.
  test::LayomatRun run =
      Layomat("create-layouts '" + example_ + "' -o " + Out("s.dxf") +
              " --by-size --numbering 10 --names Same --json");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Check(run.out,
                  "sk=[i for i in r['items'] if i['result']=='skipped']\n"
                  "assert len(sk)==8==r['totals']['skipped'], r\n"
                  "assert all(i['name']=='Same' and i['reason'] for i in sk)\n"
                  "assert 'reason' not in [i for i in r['items']"
                  " if i['result']=='made'][0]\n"
                  "assert [l.name for l in d.layouts].count('Same')==1\n",
                  Out("s.dxf")),
            "");
}

TEST_F(JsonReportTest, RefusedStepIsNamedAndTheRunGoesOn) {
  // The template drawing cannot be read, so its import is refused; the
  // drawing's own "Pattern" is then copied as if it had been imported.
  const std::string args = "create-layouts '" + example_ + "' -o " +
                           Out("s.dxf") +
                           " --by-size --template-file /nowhere/t.dwt Pattern";
  test::LayomatRun json = Layomat(args + " --json");
  ASSERT_EQ(json.status, 0) << json.err;
  EXPECT_EQ(
      Check(json.out,
            "st=[i for i in r['items'] if i['kind']=='step']\n"
            "assert [(i['name'], i['result']) for i in st]=="
            "[('Pattern', 'skipped')], st\n"
            "assert st[0]['reason'].startswith('import pattern: '), st\n"
            "t=r['totals']\n"
            "assert (t['refused'], t['skipped'], t['made'])==(1, 0, 9)\n"),
      "");
  test::LayomatRun text = Layomat(args);
  ASSERT_EQ(text.status, 0) << text.err;
  EXPECT_NE(text.err.find("layomat: Pattern: import pattern: "),
            std::string::npos)
      << text.err;
  EXPECT_NE(text.out.find("9 of 9 layouts made; 1 host call refused;"),
            std::string::npos)
      << text.out;
}

TEST_F(JsonReportTest, RefusalStillPrintsOneDocument) {
  test::LayomatRun run =
      Layomat("create-layouts '" + example_ + "' -o " + Out("s.dxf") +
              " --pattern-layout Nope --json");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(Check(run.out,
                  "assert r['status']==1 and r['items']==[] and "
                  "r['outputs']==[]\n"),
            "");
  EXPECT_FALSE(fs::exists(Out("s.dxf")));
}

TEST_F(JsonReportTest, ViewportsAndDeleteOutsideListTheirObjects) {
  const std::string sheets = LMT_TESTDATA_DIR "/utilities/sheets.dxf";
  test::LayomatRun off = Layomat("viewports off '" + sheets + "' -o " +
                                 Out("off.dxf") + " --json");
  ASSERT_EQ(off.status, 0) << off.err;
  EXPECT_EQ(Check(off.out,
                  "vs=[i['name'] for i in r['items'] if i['result']=='off']\n"
                  "assert len(vs)==r['totals']['switched']>0, r\n"
                  "for h in vs:\n"
                  "  assert d.entitydb[h].dxf.status<=0, h\n",
                  Out("off.dxf")),
            "");
  test::LayomatRun cut =
      Layomat("delete-outside '" + sheets + "' --viewport 9C -o " +
              Out("cut.dxf") + " --json");
  ASSERT_EQ(cut.status, 0) << cut.err;
  // The objects reported erased are exactly the model-space objects of the
  // drawing that the output lacks.
  EXPECT_EQ(
      Check(cut.out,
            "s=ezdxf.readfile('" + sheets +
                "')\n"
                "gone={e.dxf.handle for e in s.modelspace()}"
                "-{e.dxf.handle for e in d.modelspace()}\n"
                "er={i['name'] for i in r['items'] if i['result']=='erased'}\n"
                "assert gone and er==gone, (er, gone)\n"
                "assert r['totals']['erased']==len(gone)\n"
                "assert [i['name'] for i in r['items']"
                " if i['kind']=='viewport']==['9C']\n",
            Out("cut.dxf")),
      "");
}

TEST_F(JsonReportTest, FailedBatchFileIsListedWithExitThree) {
  fs::copy_file(LMT_TESTDATA_DIR "/batch/texts.dxf", dir_ / "t.dxf");
  std::ofstream(dir_ / "bad.dxf") << "junk";
  test::LayomatRun run = Layomat(
      "replace-text t.dxf bad.dxf --json"
      " --set OknoFunctionReplaceText.UniTextNameTEXT1=plan"
      " --set OknoFunctionReplaceText.OptionValueTEXT11=True"
      " --set OknoFunctionReplaceText.UniTextZamNaTEXT1=Sheet"
      " --set OknoFunctionReplaceText.OptionSaveKuda2=True"
      " --set OknoFunctionReplaceText.UniTextNamePapkaSave=done");
  EXPECT_EQ(run.status, 3) << run.all();
  EXPECT_NE(run.err.find("bad.dxf"), std::string::npos) << run.err;
  EXPECT_EQ(Check(run.out,
                  "it={i['name'].split('/')[-1]:i for i in r['items']}\n"
                  "assert r['status']==3 and r['command']=='replace-text'\n"
                  "assert it['bad.dxf']['result']=='failed'"
                  " and it['bad.dxf']['reason'], it\n"
                  "assert it['t.dxf']['result']=='written', it\n"
                  "assert it['t.dxf']['output']==r['outputs'][0]\n"
                  "assert r['outputs'][0].endswith('done/t.dxf'), r\n"
                  "assert r['totals']=={'files':2,'processed':2,'written':1,"
                  "'failed':1,'refused':0}, r['totals']\n"),
            "");
}

TEST_F(JsonReportTest, QuietAndVerbose) {
  const std::string make = "create-layouts '" + example_ + "' -o " +
                           Out("s.dxf") +
                           " --by-size --numbering 10/20 --names Sheet-"
                           " --scale 1:100";
  test::LayomatRun quiet = Layomat(make + " --quiet");
  ASSERT_EQ(quiet.status, 0) << quiet.err;
  EXPECT_EQ(quiet.err, "");  // not even the final message box
  EXPECT_EQ(quiet.out,
            "9 of 9 layouts made; 9 viewports -> " + Out("s.dxf") + "\n");
  test::LayomatRun verbose = Layomat(make + " --verbose");
  ASSERT_EQ(verbose.status, 0) << verbose.err;
  EXPECT_NE(verbose.out.find("layout\tSheet-1\n\tframe "), std::string::npos)
      << verbose.out;
  EXPECT_NE(verbose.out.find(", scale 1:100, twist 0\n"), std::string::npos)
      << verbose.out;
  EXPECT_NE(verbose.err.find(": "), std::string::npos);  // the message box
  // Errors still reach a quiet run.
  test::LayomatRun refused = Layomat(make + " --pattern-layout Nope -q");
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.err.find("Nope"), std::string::npos) << refused.err;

  test::LayomatRun both = Layomat(make + " --quiet --verbose");
  EXPECT_EQ(both.status, 2);
  EXPECT_NE(both.err.find("--quiet contradicts --verbose"), std::string::npos);
}

TEST_F(JsonReportTest, VerboseBatchNamesEveryFile) {
  fs::copy_file(LMT_TESTDATA_DIR "/batch/texts.dxf", dir_ / "t.dxf");
  test::LayomatRun run = Layomat(
      "replace-text t.dxf gone.dxf --verbose"
      " --set OknoFunctionReplaceText.OptionSaveKuda2=True"
      " --set OknoFunctionReplaceText.UniTextNamePapkaSave=done");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.out.find("written\tfile\t" + Out("t.dxf") + "\t-> "),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("failed\tfile\t" + Out("gone.dxf") + "\t"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("2 files: 1 written, 1 failed\n"), std::string::npos);
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

// The page set-up of `layomat create-layouts` as a user runs it on the
// example drawing (a real program's file, whose pattern layout plots to
// "Adobe PDF" on A3): each new layout's plot settings read back with ezdxf,
// the sheets of --pdf on the chosen paper, the dry run naming each paper,
// and the pattern's set-up kept when the option is off.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <string>

#include "cli/layomat_run_test_support.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

class PageSetupCommandTest : public ::testing::Test {
 protected:
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat("create-layouts '" + example_ +
                                "' --by-size --names Sheet- --numbering 10/20"
                                " --pattern-layout Pattern " +
                                args,
                            dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }
  // Runs `python` (statements over d, the drawing `file`, and sheets, its
  // new layouts' plot settings) under ezdxf.
  testing::ShellRun Check(const std::string& file, const std::string& python) {
    return testing::RunShell(
        testing::PythonCommand() +
        "-c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
        " names=[l.name for l in d.layouts if l.name.startswith('Sheet-')];"
        " assert len(names) == 9, names;"
        " sheets=[d.layouts.get(n).dxf_layout.dxf for n in names];"
        " pattern=d.layouts.get('Pattern').dxf_layout.dxf; " +
        python + "\" " + testing::ShellQuote(Out(file)) + " 2>&1");
  }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  lmt::testing::TempDir dir_;
};

// At 1:50 the A3 frames are A1 sheets: device, paper and its size, layout
// plot, no rotation, 1:1, centred; the pattern keeps its own set-up, and
// the plotted pages are A1.
TEST_F(PageSetupCommandTest, EachSheetGetsThePaperOfItsFrame) {
  test::LayomatRun run = Layomat(
      "--scale 1:50 --plotter 'DWG To PDF.pc3' --plot-style acad.ctb"
      " -o '" +
      Out("a1.dxf") + "' --pdf '" + Out("a1.pdf") + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  testing::ShellRun check = Check(
      "a1.dxf",
      "want=('DWG To PDF.pc3', 'ISO_full_bleed_A1_(841.00_x_594.00_MM)', 841,"
      " 594, 1, 5, 0, 16, 20, 1, 1, 'acad.ctb');"
      " got=[(p.plot_configuration_file, p.paper_size, p.paper_width,"
      " p.paper_height, p.plot_paper_units, p.plot_type, p.plot_rotation,"
      " p.standard_scale_type, p.plot_layout_flags & 20, p.scale_numerator,"
      " p.scale_denominator, p.current_style_sheet) for p in sheets];"
      " assert got == [want] * 9, got;"
      " assert (pattern.plot_configuration_file, pattern.paper_size,"
      " pattern.plot_rotation) == ('Adobe PDF', 'A3', 0);"
      " assert len(d.audit().errors) == 0");
  EXPECT_EQ(check.status, 0) << check.out;
  // 841 x 594 mm in points, one page per sheet.
  testing::ShellRun pages = testing::RunShell(
      "grep -a -o '/MediaBox *\\[[^]]*\\]' " +
      testing::ShellQuote(Out("a1.pdf")) + " | sort | uniq -c");
  EXPECT_EQ(pages.out, "      9 /MediaBox [ 0 0 2383.937008 1683.779528 ]\n");
}

// The plain switch off: the new layouts copy the pattern's set-up untouched.
// With a fixed paper through --set, the dry run names it for every sheet;
// a paper whose name carries no size is refused per sheet and the sheet
// keeps the pattern's.
TEST_F(PageSetupCommandTest, PatternSetUpKeptUnlessAsked) {
  test::LayomatRun off = Layomat("-o '" + Out("off.dxf") + "'");
  ASSERT_EQ(off.status, 0) << off.err;
  testing::ShellRun same =
      Check("off.dxf",
            "keys=list(pattern.all_existing_dxf_attribs());"
            " keys=[k for k in keys[:keys.index('name')]"
            " if k not in ('handle', 'owner')];"
            " assert len(keys) > 20, keys;"
            " assert all(all(p.get(k) == pattern.get(k) for k in keys)"
            " for p in sheets), keys;"
            " assert pattern.plot_configuration_file == 'Adobe PDF'");
  EXPECT_EQ(same.status, 0) << same.out;

  test::LayomatRun dry = Layomat(
      "-o '" + Out("x.dxf") +
      "' --dry-run --set OknoLmt.CheckIzmenitPrinter=1"
      " --set OknoIzmenitPrinter.OptionVidBumaga1=True"
      " --set 'OknoIzmenitPrinter.TextNameBumaga=ISO_A4_(210.00_x_297.00_MM)'");
  ASSERT_EQ(dry.status, 0) << dry.err;
  size_t named = 0;
  for (size_t at = 0; (at = dry.out.find("\tISO_A4_(210.00_x_297.00_MM)\n",
                                         at)) != std::string::npos;
       ++at) {
    ++named;
  }
  EXPECT_EQ(named, 9u) << dry.out;

  test::LayomatRun refused =
      Layomat("--paper A4 -o '" + Out("refused.dxf") + "'");
  ASSERT_EQ(refused.status, 0) << refused.err;
  EXPECT_NE(refused.err.find("Sheet-9: paper: the paper \"A4\""),
            std::string::npos)
      << refused.err;
  testing::ShellRun kept =
      Check("refused.dxf",
            "assert all((p.plot_configuration_file, p.paper_size) =="
            " ('DWG To PDF.pc3', 'A3') for p in sheets)");
  EXPECT_EQ(kept.status, 0) << kept.out;
}

}  // namespace
}  // namespace lmt::cli
#endif  // _WIN32

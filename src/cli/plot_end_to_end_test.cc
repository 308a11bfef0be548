// `layomat plot` as a user runs it on the layouts create-layouts made of
// the example drawing: page sizes and outline read back with poppler's
// tools, ink where the frames lie, the file names of --file-per-sheet and
// the exit statuses. Plus the naming helpers.
#include <gtest/gtest.h>

#include "cli/plot_run.h"

#ifndef _WIN32
#include <filesystem>
#include <sstream>
#include <string>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#endif

namespace lmt::cli {
namespace {

TEST(PlotNamesTest, WildcardsMatchWholeNamesIgnoringCase) {
  struct Case {
    const char* name;
    const char* pattern;
    bool match;
  };
  const Case cases[] = {
      {"Sheet-1", "sheet-*", true},
      {"Sheet-10", "Sheet-?", false},
      {"Sheet-1", "Sheet-?", true},
      {"Pattern", "*t*n", true},
      {"Pattern", "*", true},
      {"Pattern", "Patter", false},
      {"", "*", true},
      {"abcbc", "a*bc", true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(MatchesWildcard(c.name, c.pattern), c.match)
        << c.name << " ~ " << c.pattern;
  }
}

TEST(PlotNamesTest, SheetFilesSitBesideTheOutputWithSafeNames) {
  EXPECT_EQ(SheetFileName("out/plan.pdf", "Sheet-1"), "out/plan-Sheet-1.pdf");
  EXPECT_EQ(SheetFileName("plan.svg", "A/B:C*?"), "plan-A_B_C__.svg");
}

#ifndef _WIN32

class PlotCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!PlottingAvailable()) GTEST_SKIP() << "no renderer in this build";
  }
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }
  static bool HavePoppler() {
    return testing::RunShell(
               "command -v pdftoppm >/dev/null && command -v "
               "pdfinfo >/dev/null")
               .status == 0;
  }
  // The example's nine frames as layouts Sheet-1..9 at 1:100.
  std::string Sheets(const std::string& extra = "") {
    const std::string out = Out("sheets.dxf");
    test::LayomatRun run =
        Layomat("create-layouts '" LMT_TESTDATA_DIR "/example.dxf' -o '" + out +
                "' --by-size --numbering 10/20 --names Sheet-"
                " --pattern-layout Pattern --scale 1:100 --layer Viewports " +
                extra);
    EXPECT_EQ(run.status, 0) << run.err;
    return out;
  }

  lmt::testing::TempDir dir_;
};

// A grey map of one page at 20 pixels per inch, row 0 at the top, drawn
// without anti-aliasing so that thin lines stay black.
struct Raster {
  int width = 0, height = 0;
  std::string pixels;
  bool Ink(double x_mm, double y_mm, double page_h_mm) const {
    const int x = static_cast<int>(x_mm / 25.4 * 20);
    const int y = static_cast<int>((page_h_mm - y_mm) / 25.4 * 20);
    for (int v = y - 1; v <= y + 1; ++v) {
      for (int u = x - 1; u <= x + 1; ++u) {
        if (u < 0 || v < 0 || u >= width || v >= height) continue;
        if (static_cast<unsigned char>(pixels[v * width + u]) < 128) {
          return true;
        }
      }
    }
    return false;
  }
};

Raster ReadPgm(const std::string& path) {
  Raster r;
  std::string data = core::ReadFileBytes(path).value_or("");
  std::istringstream in(data);
  std::string magic;
  int max = 0;
  in >> magic >> r.width >> r.height >> max;
  in.get();
  if (magic != "P5") return Raster{};
  r.pixels = data.substr(static_cast<size_t>(in.tellg()));
  return r;
}

TEST_F(PlotCommandTest, ExampleSheetsPlotOnePagePerLayout) {
  if (!HavePoppler()) GTEST_SKIP() << "poppler-utils (pdfinfo) missing";
  const std::string sheets = Sheets();
  const std::string pdf = Out("sheets.pdf");
  test::LayomatRun run =
      Layomat("plot '" + sheets + "' -o '" + pdf + "' --layouts 'sheet-*'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("sheet\tSheet-9\t"), std::string::npos) << run.out;
  // Nine A3 pages, portrait as the page setup turns them (420 x 297 mm
  // paper, rotation 1).
  testing::ShellRun info =
      testing::RunShell("pdfinfo -f 1 -l 20 '" + pdf + "'");
  ASSERT_EQ(info.status, 0);
  EXPECT_NE(info.out.find("Pages:           9\n"), std::string::npos)
      << info.out;
  for (int page = 1; page <= 9; ++page) {
    std::string line =
        "Page    " + std::to_string(page) + " size:  841.89 x 1190.55 pts";
    EXPECT_NE(info.out.find(line), std::string::npos) << info.out;
  }
  // The outline names each page after its layout.
  EXPECT_NE(core::ReadFileBytes(pdf).value_or("").find("Sheet-7"),
            std::string::npos);

  // Sheet-1: the viewport (paper 0..420 x 0..297, 1:100) starts at the
  // printable corner (20, 7.5); the frame fills it, so its outline runs
  // along the viewport's left edge and title block content lies inside,
  // while above the viewport nothing is drawn.
  ASSERT_EQ(
      testing::RunShell("pdftoppm -f 1 -l 1 -r 20 -aa no -aaVector no -gray '" +
                        pdf + "' '" + Out("page") + "'")
          .status,
      0);
  Raster page = ReadPgm(Out("page-1.pgm"));
  ASSERT_EQ(page.width, 234);
  ASSERT_EQ(page.height, 331);
  int left_edge = 0, inside = 0, above = 0;
  for (double y = 20; y < 300; y += 2.54) left_edge += page.Ink(20, y, 420);
  for (double x = 25; x < 290; x += 2.54) {
    for (double y = 12; y < 300; y += 2.54) inside += page.Ink(x, y, 420);
    for (double y = 312; y < 420; y += 2.54) above += page.Ink(x, y, 420);
  }
  EXPECT_GT(left_edge, 100);
  EXPECT_GT(inside, 50);
  EXPECT_EQ(above, 0);
}

TEST_F(PlotCommandTest, CreateLayoutsPlotsOnlyTheSheetsItMade) {
  if (!HavePoppler()) GTEST_SKIP() << "poppler-utils (pdfinfo) missing";
  Sheets("--pdf '" + Out("new.pdf") + "'");
  testing::ShellRun info =
      testing::RunShell("pdfinfo '" + Out("new.pdf") + "'");
  ASSERT_EQ(info.status, 0) << info.out;
  // Not the drawing's Layout1 and Pattern: nine pages.
  EXPECT_NE(info.out.find("Pages:           9\n"), std::string::npos)
      << info.out;
}

TEST_F(PlotCommandTest, FilePerSheetNamesEachFileAfterItsLayout) {
  const std::string sheets = Sheets();
  test::LayomatRun run =
      Layomat("plot '" + sheets + "' -o '" + Out("plan.svg") +
              "' --layouts 'Sheet-1?' --monochrome");
  EXPECT_EQ(run.status, 1) << "no Sheet-1x exists: " << run.err;
  run = Layomat("plot '" + sheets + "' -o '" + Out("plan.png") +
                "' --layouts 'Sheet-2'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(std::filesystem::exists(Out("plan-Sheet-2.png")));
  EXPECT_FALSE(std::filesystem::exists(Out("plan.png")));
  run = Layomat("plot '" + sheets + "' -o '" + Out("plan.pdf") +
                "' --file-per-sheet --layouts 'Sheet-?'");
  ASSERT_EQ(run.status, 0) << run.err;
  for (int i = 1; i <= 9; ++i) {
    EXPECT_TRUE(std::filesystem::exists(
        Out("plan-Sheet-" + std::to_string(i) + ".pdf")));
  }
}

TEST_F(PlotCommandTest, ExitStatuses) {
  const std::string example = LMT_TESTDATA_DIR "/example.dxf";
  EXPECT_EQ(Layomat("plot '" + example + "'").status, 2);
  EXPECT_EQ(Layomat("plot '" + example + "' -o '" + Out("a.txt") + "'").status,
            2);
  EXPECT_EQ(Layomat("plot '" + example +
                    "' -o x.pdf --one-file "
                    "--file-per-sheet")
                .status,
            2);
  EXPECT_EQ(Layomat("plot '" + Out("none.dxf") + "' -o '" + Out("a.pdf") + "'")
                .status,
            3);
  test::LayomatRun unwritable =
      Layomat("plot '" + example + "' -o '" + Out("no-folder/a.pdf") + "'");
  EXPECT_EQ(unwritable.status, 3);
  EXPECT_NE(unwritable.err.find("a.pdf"), std::string::npos);
  EXPECT_TRUE(std::filesystem::is_empty(dir_.path()) ||
              !std::filesystem::exists(Out("no-folder")));
}

#endif  // _WIN32

}  // namespace
}  // namespace lmt::cli

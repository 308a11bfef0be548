// `layomat plot` and `create-layouts --pdf` as a user runs them on the
// example drawing: page sizes, outline and texts read back with poppler's
// tools, each page's ink against what its frame holds, the file names of
// --file-per-sheet and the exit statuses. Plus the naming helpers.
#include <gtest/gtest.h>

#include "cli/plot_run.h"

#ifndef _WIN32
#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

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
// without anti-aliasing so that thin lines stay whole. Ink is anything
// clearly darker than the paper: green lines turn mid-grey.
struct Raster {
  int width = 0, height = 0;
  std::string pixels;
  bool Ink(double x_mm, double y_mm, double page_h_mm) const {
    const int x = static_cast<int>(x_mm / 25.4 * 20);
    const int y = static_cast<int>((page_h_mm - y_mm) / 25.4 * 20);
    for (int v = y - 1; v <= y + 1; ++v) {
      for (int u = x - 1; u <= x + 1; ++u) {
        if (u < 0 || v < 0 || u >= width || v >= height) continue;
        if (static_cast<unsigned char>(pixels[v * width + u]) < 220) {
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

// The share of `points` (page millimetres) that have ink.
double InkShare(const Raster& page,
                const std::vector<std::pair<double, double>>& points) {
  int inked = 0;
  for (const auto& [x, y] : points) inked += page.Ink(x, y, 297);
  return points.empty() ? 0 : static_cast<double>(inked) / points.size();
}

std::vector<std::pair<double, double>> Circle(double cx, double cy, double r) {
  std::vector<std::pair<double, double>> points;
  for (int i = 0; i < 72; ++i) {
    const double a = i * 5 * 3.14159265358979 / 180;
    points.emplace_back(cx + r * std::cos(a), cy + r * std::sin(a));
  }
  return points;
}

std::vector<std::pair<double, double>> Segment(double x0, double y0, double x1,
                                               double y1) {
  std::vector<std::pair<double, double>> points;
  for (int i = 0; i <= 40; ++i) {
    points.emplace_back(x0 + (x1 - x0) * i / 40, y0 + (y1 - y0) * i / 40);
  }
  return points;
}

// The README's main job with --pdf: nine landscape A3 pages, each showing
// its frame at 1:100 exactly on the sheet. What every page must show is
// worked out from the example's model (frames 42000 x 29700): a block
// frame's circle of radius 6000 at (14000, 14850) and line from (2000, 2000)
// to (22000, 27700) land on paper at radius 60 around (140, 148.5) and from
// (20, 20) to (220, 277), its title block's edges at x 240 and y 55; a
// polyline frame's circle of radius 4000 at its centre lands at radius 40
// around (210, 148.5), turned frame included. Inside the circles nothing
// else is drawn.
TEST_F(PlotCommandTest, ExampleSheetsShowTheirFramesAtScaleOnTheirPaper) {
  if (!HavePoppler()) GTEST_SKIP() << "poppler-utils (pdfinfo) missing";
  const std::string pdf = Out("example.pdf");
  Sheets(
      "--text 'Sheet ##1 scale ##4' --text-at 300,20 --text-height 5 "
      "--pdf '" +
      pdf + "'");
  testing::ShellRun info =
      testing::RunShell("pdfinfo -f 1 -l 20 '" + pdf + "'");
  ASSERT_EQ(info.status, 0);
  EXPECT_NE(info.out.find("Pages:           9\n"), std::string::npos)
      << info.out;
  // The outline names each page after its layout.
  EXPECT_NE(core::ReadFileBytes(pdf).value_or("").find("Sheet-7"),
            std::string::npos);
  ASSERT_EQ(testing::RunShell("pdftoppm -r 20 -aa no -aaVector no -gray '" +
                              pdf + "' '" + Out("page") + "'")
                .status,
            0);
  int block_sheets = 0, polyline_sheets = 0;
  for (int n = 1; n <= 9; ++n) {
    SCOPED_TRACE("page " + std::to_string(n));
    const std::string number = std::to_string(n);
    EXPECT_NE(
        info.out.find("Page    " + number + " size:  1190.55 x 841.89 pts"),
        std::string::npos)
        << info.out;
    testing::ShellRun text = testing::RunShell(
        "pdftotext -f " + number + " -l " + number + " '" + pdf + "' -");
    EXPECT_NE(text.out.find("Sheet " + number + " scale 1:100"),
              std::string::npos)
        << text.out;
    Raster page = ReadPgm(Out("page-" + number + ".pgm"));
    ASSERT_EQ(page.width, 331);
    ASSERT_EQ(page.height, 234);
    if (text.out.find("A-0") != std::string::npos) {  // a block frame
      ++block_sheets;
      EXPECT_GT(InkShare(page, Circle(140, 148.5, 60)), 0.9);
      EXPECT_GT(InkShare(page, Segment(20, 20, 220, 277)), 0.9);
      EXPECT_GT(InkShare(page, Segment(240, 3, 240, 52)), 0.9);
      EXPECT_GT(InkShare(page, Segment(243, 55, 417, 55)), 0.9);
      // Inside the circle, away from the line: empty.
      std::vector<std::pair<double, double>> inside;
      for (const auto& p : Circle(140, 148.5, 50)) {
        const double across = (p.first - 20) * 257 - (p.second - 20) * 200;
        if (std::abs(across) / 325.6 > 8) inside.push_back(p);
      }
      EXPECT_EQ(InkShare(page, inside), 0);
    } else {
      ++polyline_sheets;
      EXPECT_GT(InkShare(page, Circle(210, 148.5, 40)), 0.9);
      EXPECT_EQ(InkShare(page, Circle(210, 148.5, 32)), 0);
      EXPECT_EQ(InkShare(page, Circle(210, 148.5, 48)), 0);
    }
  }
  EXPECT_EQ(block_sheets, 6);
  EXPECT_EQ(polyline_sheets, 3);
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
  EXPECT_NE(run.out.find("sheet\tSheet-2\t"), std::string::npos) << run.out;
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

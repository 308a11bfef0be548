// Plotting sheets through the program's plot interface, on the embedded host
// with a plotter that records what it is asked and writes the file, as a
// program's PDF device would.
#include "layouts/plot_sheets.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "core/file_util.h"
#include "dxfhost/application.h"
#include "layouts/creation_test_support.h"
#include "testing/temp_dir.h"

namespace lmt::layouts {
namespace {

struct Plotted {
  std::string layout;
  std::string file;
  std::string device;
  int background = -1;  // BACKGROUNDPLOT while plotting
};

class PlotSheetsTest : public ::testing::Test {
 protected:
  PlotSheetsTest() : run_(test::TestdataPath("example.dxf")) {}

  void InstallPlotter() {
    auto& app = dynamic_cast<dxfhost::DxfApplication&>(run_.application());
    app.set_plotter([this](dxf::Document&, std::string_view layout,
                           const std::string& path, std::string_view device) {
      Result<host::Variant> bg = run_.document->GetVariable("BACKGROUNDPLOT");
      plotted_.push_back({std::string(layout), path, std::string(device),
                          bg.ok() ? host::ToInt(*bg).value_or(-1) : -1});
      std::ofstream(core::PathFromUtf8(path)) << "%PDF-1.4\n";
      return Status();
    });
  }

  PlotSheetsReport Plot(const std::vector<std::string>& layouts) {
    return PlotSheets(*run_.document, layouts, dir_.path(), "DWG To PDF.pc3");
  }

  test::HostRun run_;
  lmt::testing::TempDir dir_;
  std::vector<Plotted> plotted_;
};

TEST_F(PlotSheetsTest, EachLayoutInTheForegroundThenAsBefore) {
  InstallPlotter();
  const PlotSheetsReport report = Plot({"Pattern", "Missing"});
  EXPECT_EQ(report.outcome, host::Outcome::kDone);
  const std::string file = core::PathToUtf8(dir_.path() / "Pattern.pdf");
  EXPECT_EQ(report.files, std::vector<std::string>{file});
  ASSERT_EQ(plotted_.size(), 1u);
  EXPECT_EQ(plotted_[0].layout, "Pattern");
  EXPECT_EQ(plotted_[0].file, file);
  EXPECT_EQ(plotted_[0].device, "DWG To PDF.pc3");
  EXPECT_EQ(plotted_[0].background, 0);
  // The missing layout is passed over and named; the rest is as before.
  ASSERT_EQ(report.skips.skips().size(), 1u);
  EXPECT_EQ(report.skips.skips()[0].object, "Missing");
  EXPECT_EQ(*host::ToInt(*run_.document->GetVariable("BACKGROUNDPLOT")), 2);
  EXPECT_EQ(*(*run_.document->ActiveLayout())->Name(), "Model");

  // A second plot keeps the first file and writes beside it.
  const PlotSheetsReport again = Plot({"Pattern"});
  EXPECT_EQ(again.files, std::vector<std::string>{core::PathToUtf8(
                             dir_.path() / "Pattern (2).pdf")});
}

TEST_F(PlotSheetsTest, ProgramWithoutPlottingRefusesBeforeAnything) {
  const PlotSheetsReport report = Plot({"Pattern"});
  EXPECT_EQ(report.outcome, host::Outcome::kRefused);
  EXPECT_TRUE(report.files.empty());
  EXPECT_EQ(report.skips.Count("plot"), 1);
}

TEST(PlotFileForTest, NamesThatFilesCannotHoldAreMadeSafe) {
  EXPECT_EQ(PlotFileFor("out", "A1: plan/roof?").filename().string(),
            "A1_ plan_roof_.pdf");
  EXPECT_EQ(PdfDeviceOf(host::HostKind::kBricsCad), "Print As PDF.pc3");
  EXPECT_EQ(PdfDeviceOf(host::HostKind::kZwCad), "DWG To PDF.pc3");
}

}  // namespace
}  // namespace lmt::layouts

// Layout creation from a pattern layout (mode 1, a layout of the drawing;
// mode 2, a layout imported from a template drawing first) on drawings a
// CAD program or the example generator wrote, for each host family, read
// back through ezdxf: every new layout carries the pattern's page setup
// and objects, nothing temporary is left, the layouts' own viewports stay
// as they are, every layer is thawed again and each frame viewport has its
// annotation scale.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "layouts/creation_test_support.h"
#include "layouts/layout_creation.h"
#include "testing/temp_dir.h"

namespace lmt::layouts {
namespace {

using test::Described;
using test::VpRecord;

constexpr double kW = 42000, kH = 29700;

// The first row of FRAME_A3 references in example.dxf (make_example.py);
// any three rectangles serve for the samples.
frames::FrameTable FrameRow() {
  frames::FrameTable table;
  table.SetRowCount(4);
  for (int r = 1; r <= 3; ++r) {
    const double x = (r - 1) * (kW + 5000);
    table.SetCorners(r,
                     {frames::Point{x, 0}, {x + kW, 0}, {x + kW, kH}, {x, kH}});
    table.SetCell(r, frames::Column::kTyp, "Block");
    table.SetNumber(r, frames::Column::kAngle, 0);
    table.SetCell(r, frames::Column::kLayoutName, "Sheet-" + std::to_string(r));
  }
  return table;
}

// A pattern layout: its name, what it holds besides its own viewport, and
// its paper.
struct Pattern {
  std::string name;
  std::vector<std::string> types;
  std::string plot_config;
  double paper_w, paper_h;
};
const Pattern kExamplePattern{"Pattern", {"TEXT"}, "Adobe PDF", 420, 297};
const Pattern kSheetsPattern{"Pattern", {"TEXT"}, "DWG to PDF.pc3", 420, 297};
const Pattern kSampleLayout2{"Layout2",
                             {"VIEWPORT"},
                             "none_device",
                             215.8999938964844,
                             279.3999938964844};

struct PatternCase {
  const char* name;
  host::HostKind kind;
  std::string drawing;
  int save_type;  // the drawing's own release
  int mode;
  std::string template_file;  // mode 2
  Pattern pattern;
};

class PatternCreationTest : public ::testing::TestWithParam<PatternCase> {
 protected:
  // Every case reads its result back through ezdxf.
  void SetUp() override {
    LMT_SKIP_WITHOUT_EZDXF();
    LMT_SKIP_WITHOUT_SHARED_FOR(GetParam().drawing);
    LMT_SKIP_WITHOUT_SHARED_FOR(GetParam().template_file);
  }

  Described Create(CreationReport* report) {
    const PatternCase& c = GetParam();
    run_ = std::make_unique<test::HostRun>(c.drawing, c.kind);
    EXPECT_TRUE(run_->document) << c.drawing;
    if (!run_->document) return {};
    run_->user.AllowUnusedAnswers();
    core::Windows& w = run_->windows;
    w.okno_lmt.option_vid_sozdat_layout.SetButton(c.mode, true);
    w.okno_lmt.uni_text_name_obrazec_layout.set_text(c.pattern.name);
    w.okno_lmt.uni_text_name_obrazec_put_file_layout.set_text(c.template_file);
    auto& p = w.okno_sozdat_layout;
    p.text_mashtab_bumaga.set_text("1");
    p.text_mashtab_model.set_text("100");
    p.check_mashtab_annotation.set_checked(true);
    p.check_mashtab_annotation_po.set_checked(true);
    *report = CreateLayouts(run_->session, FrameRow());
    const std::string out = (dir_.path() / "out.dxf").string();
    Status saved = run_->document->SaveAs(out, c.save_type);
    EXPECT_TRUE(saved.ok()) << saved.ToString();
    // The source's own problems (layouts never displayed lack their main
    // viewport) stay; nothing may be added to them.
    EXPECT_EQ(test::CheckDxf(out, test::StructuralProblems(c.drawing)), "");
    return test::Describe(out);
  }

  lmt::testing::TempDir dir_;
  std::unique_ptr<test::HostRun> run_;
};

TEST_P(PatternCreationTest, CopiesPatternAndLeavesNothingTemporary) {
  const PatternCase& c = GetParam();
  CreationReport report;
  Described d = Create(&report);
  ASSERT_TRUE(d.ok);
  EXPECT_EQ(report.outcome, host::Outcome::kDone);
  EXPECT_EQ(report.created,
            (std::vector<std::string>{"Sheet-1", "Sheet-2", "Sheet-3"}));

  for (const char* gone : {"TempNewNano", "TempNewZW", "ViewportOffOn"}) {
    EXPECT_EQ(d.layout(gone), nullptr) << gone;
  }
  EXPECT_EQ(d.layers_frozen.count("TEMPAddLayerLayomat"), 0u);
  for (const auto& [layer, frozen] : d.layers_frozen) {
    EXPECT_FALSE(frozen) << layer;
  }
  ASSERT_NE(d.layout(c.pattern.name), nullptr) << "the pattern stays";

  for (int r = 1; r <= 3; ++r) {
    const std::string name = "Sheet-" + std::to_string(r);
    SCOPED_TRACE(name);
    const test::LayoutRecord* layout = d.layout(name);
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->plot_config, c.pattern.plot_config);
    EXPECT_NEAR(layout->paper_w, c.pattern.paper_w, 1e-6);
    EXPECT_NEAR(layout->paper_h, c.pattern.paper_h, 1e-6);
    // Its own viewport first, the pattern's objects in their order, then
    // the frame's viewport.
    std::vector<std::string> expected = {"VIEWPORT"};
    expected.insert(expected.end(), c.pattern.types.begin(),
                    c.pattern.types.end());
    expected.push_back("VIEWPORT");
    EXPECT_EQ(layout->types, expected);

    int own = 0;
    const VpRecord* frame = nullptr;
    for (const VpRecord& v : d.viewports) {
      if (v.layout != name) continue;
      EXPECT_TRUE(v.on) << v.handle;
      if (v.id == 1) ++own;
      if (v.id != 1 && std::abs(v.h / v.vh - 0.01) < 1e-12) frame = &v;
    }
    EXPECT_EQ(own, 1) << "exactly one viewport of its own";
    ASSERT_NE(frame, nullptr) << "no viewport at 1:100";
    frames::Point shown = test::ModelAt(*frame, frame->cx, frame->cy);
    EXPECT_NEAR(shown.x, (r - 1) * (kW + 5000) + kW / 2, 1e-6);
    EXPECT_NEAR(shown.y, kH / 2, 1e-6);
    EXPECT_EQ(d.viewport_scales[frame->handle], "1:100");
  }
  // Own viewports are never switched: switching one off and on again
  // would move it behind the others in the order of 68. Those of the
  // drawing's layouts keep the place they came with (0 in a layout never
  // displayed); new sheets have theirs first.
  const Described source = test::Describe(c.drawing);
  for (const VpRecord& v : d.viewports) {
    if (v.id != 1) continue;
    int was = 1;
    for (const VpRecord& s : source.viewports) {
      if (s.id == 1 && s.layout == v.layout) was = s.status;
    }
    EXPECT_TRUE(v.on) << v.layout;
    EXPECT_EQ(v.status, was) << v.layout;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, PatternCreationTest,
    // clang-format off
    ::testing::Values(
        PatternCase{"ExampleCopyAutoCAD", host::HostKind::kAutoCad,
                    test::TestdataPath("example.dxf"), 65, 1, "",
                    kExamplePattern},
        PatternCase{"ExampleCopyNanoCAD", host::HostKind::kNanoCad,
                    test::TestdataPath("example.dxf"), 65, 1, "",
                    kExamplePattern},
        PatternCase{"ExampleTemplateAutoCAD", host::HostKind::kAutoCad,
                    test::TestdataPath("example.dxf"), 65, 2,
                    test::SamplePath("s_AC1032.dxf"), kSampleLayout2},
        PatternCase{"ExampleTemplateZWCAD", host::HostKind::kZwCad,
                    test::TestdataPath("example.dxf"), 65, 2,
                    test::SamplePath("s_AC1032.dxf"), kSampleLayout2},
        PatternCase{"Release2000TemplateNanoCAD", host::HostKind::kNanoCad,
                    test::SamplePath("s_AC1015.dxf"), 13, 2,
                    test::TestdataPath("example.dxf"), kExamplePattern},
        // The same over our own sheet set (testdata/releases).
        PatternCase{"Release2000CopyAutoCAD", host::HostKind::kAutoCad,
                    test::TestdataPath("releases/sheets_2000.dxf"), 13, 1, "",
                    kSheetsPattern},
        // The drawing has no "Pattern" of its own, which would keep the
        // template's layout out.
        PatternCase{"ExampleTemplateBinaryZWCAD", host::HostKind::kZwCad,
                    test::TestdataPath("frames/mixed.dxf"), 65, 2,
                    test::TestdataPath("releases/sheets_2018_bin.dxf"),
                    kSheetsPattern}),
    // clang-format on
    [](const auto& info) { return std::string(info.param.name); });

// A row named like an existing layout is skipped: the host refuses the
// name, and the rows after it are still made.
TEST(TakenNameTest, RowWithATakenNameIsSkipped) {
  test::HostRun run(test::TestdataPath("example.dxf"),
                    host::HostKind::kAutoCad);
  run.user.AllowUnusedAnswers();
  frames::FrameTable table = FrameRow();
  table.SetCell(2, frames::Column::kLayoutName, "pattern");
  CreationReport report = CreateLayouts(run.session, table);
  EXPECT_EQ(report.outcome, host::Outcome::kDone);
  EXPECT_EQ(report.created, (std::vector<std::string>{"Sheet-1", "Sheet-3"}));
  Result<host::LayoutPtr> pattern = (*run.document->Layouts())->Item("Pattern");
  ASSERT_TRUE(pattern.ok());
  // The pattern got no viewport of the skipped row.
  EXPECT_EQ(*(*(*pattern)->Block())->Count(), 1);
}

}  // namespace
}  // namespace lmt::layouts

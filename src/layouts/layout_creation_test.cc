// Layout creation on the embedded DXF host, read back through ezdxf: the
// viewports show exactly their frames, the families leave no temporary
// layout or layer behind, the pattern's objects and page setup are copied,
// and the actions after creation fill in the sheets.
#include "layouts/layout_creation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <numbers>

#include "layouts/creation_test_support.h"
#include "testing/failing_host.h"
#include "testing/temp_dir.h"

namespace lmt::layouts {
namespace {

using test::Described;
using test::VpRecord;

constexpr double kW = 42000, kH = 29700;

struct FrameCase {
  frames::Quad corners;
  const char* typ;
  double angle_deg;
};

frames::Quad Turned(double x0, double y0, double deg) {
  const double a = deg * std::numbers::pi / 180, c = std::cos(a),
               s = std::sin(a);
  frames::Quad q;
  const double local[4][2] = {{0, 0}, {kW, 0}, {kW, kH}, {0, kH}};
  for (int i = 0; i < 4; ++i) {
    q[i] = {x0 + local[i][0] * c - local[i][1] * s,
            y0 + local[i][0] * s + local[i][1] * c};
  }
  return q;
}

// The four frames of testdata/layouts/frames.dxf, as the search reads them.
std::vector<FrameCase> Frames() {
  // The block turned by a quarter turn gets exact corners, as a search
  // of a drawing made at right angles reads them.
  frames::Quad quarter = {
      {{0, -60000}, {0, -60000 + kW}, {-kH, -60000 + kW}, {-kH, -60000}}};
  return {{Turned(0, 0, 0), "Polyline", 0},
          {Turned(60000, 0, 30), "Polyline", 0},
          {quarter, "Block", 90},
          {Turned(60000, -60000, 200), "Block", 200}};
}

frames::FrameTable TableOf(const std::vector<FrameCase>& rows) {
  frames::FrameTable table;
  table.SetRowCount(static_cast<int>(rows.size()) + 1);
  for (size_t i = 0; i < rows.size(); ++i) {
    const int r = static_cast<int>(i) + 1;
    table.SetCorners(r, rows[i].corners);
    table.SetCell(r, frames::Column::kTyp, rows[i].typ);
    table.SetNumber(r, frames::Column::kAngle,
                    rows[i].angle_deg * std::numbers::pi / 180);
    table.SetCell(r, frames::Column::kLayoutName,
                  "Sheet-" + std::to_string(i + 1));
  }
  return table;
}

frames::Point Centre(const frames::Quad& q) {
  return {(q[0].x + q[2].x) / 2, (q[0].y + q[2].y) / 2};
}

class CreationTest : public ::testing::Test {
 protected:
  // Every test here reads its result back through ezdxf.
  void SetUp() override { LMT_SKIP_WITHOUT_EZDXF(); }

  // Runs layout creation on frames.dxf in the host `kind`, saves and reads
  // the result back.
  Described Create(host::HostKind kind,
                   const std::function<void(core::Windows&)>& setup,
                   CreationReport* report = nullptr,
                   test::HostRun** run_out = nullptr) {
    run_ = std::make_unique<test::HostRun>(
        test::TestdataPath("layouts/frames.dxf"), kind);
    run_->user.AllowUnusedAnswers();
    setup(run_->windows);
    CreationReport r = CreateLayouts(run_->session, TableOf(Frames()));
    if (report) *report = r;
    if (run_out) *run_out = run_.get();
    out_ = (dir_.path() / "out.dxf").string();
    run_->SaveAs(out_);
    if (const char* keep = std::getenv("LMT_KEEP_OUTPUT")) {
      std::filesystem::copy_file(
          out_, keep, std::filesystem::copy_options::overwrite_existing);
    }
    EXPECT_EQ(test::CheckDxf(out_), "");
    return test::Describe(out_);
  }

  lmt::testing::TempDir dir_;
  std::unique_ptr<test::HostRun> run_;
  std::string out_;
};

// The viewport of `layout` that shows `centre` at its middle, or nullptr.
const VpRecord* ShowingCentre(const Described& d, const std::string& layout,
                              frames::Point centre) {
  for (const VpRecord& v : d.viewports) {
    if (v.layout != layout || v.id == 1) continue;
    frames::Point m = test::ModelAt(v, v.cx, v.cy);
    if (std::hypot(m.x - centre.x, m.y - centre.y) < 1e-6) return &v;
  }
  return nullptr;
}

struct GeometryCase {
  const char* name;
  int rotate_start;  // 0 extended, 1 standard
  bool rotate_by_block;
  int scale_option;          // 0 fixed 1:100, 1 from width
  const char* frame_length;  // Text_AutoMashtabRamka
  double increment;
  double scale;                     // expected
  std::array<double, 4> twist_deg;  // expected, per frame
};

class GeometryTest : public CreationTest,
                     public ::testing::WithParamInterface<GeometryCase> {};

TEST_P(GeometryTest, EachViewportShowsItsFrame) {
  const GeometryCase& c = GetParam();
  Described d = Create(host::HostKind::kAutoCad, [&](core::Windows& w) {
    auto& p = w.okno_sozdat_layout;
    p.option_viewport_rotate_start.SetButton(c.rotate_start, true);
    p.check_viewport_rotate_block.set_checked(c.rotate_by_block);
    p.option_select_mashtab.SetButton(c.scale_option, true);
    p.text_mashtab_bumaga.set_text("1");
    p.text_mashtab_model.set_text("100");
    p.text_auto_mashtab_ramka.set_text(c.frame_length);
    p.text_ramka_prirachenie.set_text(std::to_string(c.increment));
    p.text_coord_x.set_text("10");
    p.text_coord_y.set_text("20");
  });
  const std::vector<FrameCase> frames = Frames();
  for (size_t i = 0; i < frames.size(); ++i) {
    const std::string layout = "Sheet-" + std::to_string(i + 1);
    SCOPED_TRACE(layout);
    ASSERT_EQ(d.model_viewports(layout).size(), 1u);
    const VpRecord* v = ShowingCentre(d, layout, Centre(frames[i].corners));
    ASSERT_NE(v, nullptr) << "no viewport shows the frame centre";
    EXPECT_NEAR(v->h / v->vh, c.scale, 1e-12);
    EXPECT_NEAR(std::fmod(v->twist_deg + 360, 360), c.twist_deg[i], 1e-9);
    EXPECT_EQ(v->layer, "Viewport");
    EXPECT_TRUE(v->on);
    // The frame's corners sit on the corners of the viewport shrunk by the
    // increment, whose lower-left corner is the paper corner (10, 20).
    const double half_w = (v->w - c.increment) / 2;
    const double half_h = (v->h - c.increment) / 2;
    EXPECT_NEAR(v->cx - half_w, 10, 1e-9);
    EXPECT_NEAR(v->cy - half_h, 20, 1e-9);
    for (const frames::Point& corner : frames[i].corners) {
      frames::Point q = test::PaperOf(*v, corner);
      EXPECT_NEAR(std::abs(q.x - v->cx), half_w, 1e-6);
      EXPECT_NEAR(std::abs(q.y - v->cy), half_h, 1e-6);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rules, GeometryTest,
    ::testing::Values(
        GeometryCase{"Extended", 0, false, 0, "", 0, 0.01, {0, 330, 270, 340}},
        GeometryCase{
            "ExtendedByBlock", 0, true, 0, "", 0, 0.01, {0, 330, 270, 340}},
        GeometryCase{"Standard", 1, false, 0, "", 0, 0.01, {0, 330, 0, 340}},
        GeometryCase{
            "StandardByBlock", 1, true, 0, "", 0, 0.01, {0, 330, 0, 340}},
        GeometryCase{
            "FromWidth", 0, false, 1, "210", 0, 0.005, {0, 330, 270, 340}},
        GeometryCase{
            "Increment", 0, false, 0, "", 10, 0.01, {0, 330, 270, 340}}),
    [](const auto& info) { return std::string(info.param.name); });

struct FamilyCase {
  const char* name;
  host::HostKind kind;
};

class FamilyTest : public CreationTest,
                   public ::testing::WithParamInterface<FamilyCase> {};

// Mode 1 with everything that touches temporary state switched on: the
// annotation scale (temporary layer, all layers frozen), a copy viewport,
// and the nanoCAD and ZWCAD temporary copy layouts.
TEST_P(FamilyTest, PatternCopiedAndNothingTemporaryLeft) {
  CreationReport report;
  Described d = Create(
      GetParam().kind,
      [](core::Windows& w) {
        w.okno_lmt.option_vid_sozdat_layout.SetButton(1, true);
        w.okno_lmt.uni_text_name_obrazec_layout.set_text("pattern");
        auto& p = w.okno_sozdat_layout;
        p.check_mashtab_annotation.set_checked(true);
        p.check_mashtab_annotation_po.set_checked(true);
        p.check_copy_viewport.set_checked(true);
        p.text_copy_mashtab_bumaga.set_text("1");
        p.text_copy_mashtab_model.set_text("200");
        p.text_copy_coord_x.set_text("450");
        p.text_copy_coord_y.set_text("300");
        p.text_copy_shirina.set_text("100");
        p.text_copy_visota.set_text("80");
      },
      &report);
  EXPECT_EQ(report.outcome, host::Outcome::kDone);
  ASSERT_EQ(report.created.size(), 4u);
  EXPECT_EQ(run_->user.message_texts().back(), run_->globals.messages.Get(15));

  for (const char* gone : {"TempNewNano", "TempNewZW", "ViewportOffOn"}) {
    EXPECT_EQ(d.layout(gone), nullptr) << gone;
  }
  EXPECT_EQ(d.layers_frozen.count("TEMPAddLayerLayomat"), 0u);
  for (const auto& [layer, frozen] : d.layers_frozen) {
    EXPECT_FALSE(frozen) << layer;
  }
  for (const VpRecord& v : d.viewports) EXPECT_TRUE(v.on) << v.handle;

  const std::vector<FrameCase> frames = Frames();
  for (size_t i = 0; i < frames.size(); ++i) {
    const std::string name = "Sheet-" + std::to_string(i + 1);
    SCOPED_TRACE(name);
    const test::LayoutRecord* layout = d.layout(name);
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->plot_config, "Pattern.pc3");
    EXPECT_EQ(layout->paper_w, 594);
    EXPECT_EQ(layout->paper_h, 420);
    EXPECT_EQ(std::count(layout->types.begin(), layout->types.end(), "TEXT"),
              1);
    EXPECT_EQ(std::count(layout->types.begin(), layout->types.end(), "INSERT"),
              1);
    // Its own viewport, the frame's and the copy; the pattern's own
    // viewport is not copied in.
    EXPECT_EQ(
        std::count(layout->types.begin(), layout->types.end(), "VIEWPORT"), 3);
    const std::vector<VpRecord> viewports = d.model_viewports(name);
    ASSERT_EQ(viewports.size(), 2u);
    const VpRecord* copy = nullptr;
    for (const VpRecord& v : viewports) {
      if (std::abs(v.w - 100) < 1e-9) copy = &v;
    }
    ASSERT_NE(copy, nullptr);
    EXPECT_NEAR(copy->h, 80, 1e-9);
    EXPECT_NEAR(copy->cx - 50, 450, 1e-9);
    EXPECT_NEAR(copy->cy - 40, 300, 1e-9);
    EXPECT_NEAR(copy->h / copy->vh, 0.005, 1e-12);
    frames::Point shown = test::ModelAt(*copy, copy->cx, copy->cy);
    frames::Point centre = Centre(frames[i].corners);
    EXPECT_NEAR(shown.x, centre.x, 1e-6);
    EXPECT_NEAR(shown.y, centre.y, 1e-6);
  }
  // The earlier layouts stay, with their viewport as it was.
  ASSERT_NE(d.layout("Pattern"), nullptr);
  ASSERT_NE(d.layout("Old"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, FamilyTest,
    ::testing::Values(FamilyCase{"AutoCAD", host::HostKind::kAutoCad},
                      FamilyCase{"NanoCAD", host::HostKind::kNanoCad},
                      FamilyCase{"ZWCAD", host::HostKind::kZwCad},
                      FamilyCase{"BricsCAD", host::HostKind::kBricsCad}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CreationTest, MissingPatternIsRefusedWithItsMessage) {
  struct Case {
    int mode;
    int first, second;
  };
  for (Case c : {Case{1, 11, 12}, Case{2, 13, 14}}) {
    SCOPED_TRACE(c.mode);
    CreationReport report;
    Described d = Create(
        host::HostKind::kAutoCad,
        [&](core::Windows& w) {
          w.okno_lmt.option_vid_sozdat_layout.SetButton(c.mode, true);
          w.okno_lmt.uni_text_name_obrazec_layout.set_text("Nope");
          w.okno_lmt.uni_text_name_obrazec_put_file_layout.set_text(
              "/nowhere/template.dwt");
        },
        &report);
    EXPECT_EQ(report.outcome, host::Outcome::kRefused);
    EXPECT_TRUE(report.created.empty());
    // The refusal, then the end of the run as after any run.
    const auto& messages = run_->user.messages();
    ASSERT_GE(messages.size(), 2u);
    const host::Message& refusal = messages[messages.size() - 2];
    EXPECT_EQ(refusal.text, run_->globals.messages.Get(c.first) + "Nope\n" +
                                run_->globals.messages.Get(c.second));
    EXPECT_EQ(refusal.icon, host::MessageIcon::kCritical);
    EXPECT_EQ(messages.back().text, run_->globals.messages.Get(15));
    EXPECT_EQ(d.layouts.size(), 2u);
    for (const VpRecord& v : d.viewports) EXPECT_TRUE(v.on) << v.handle;
  }
}

TEST_F(CreationTest, SheetTextAndAttributesOnEachNewLayout) {
  Described d = Create(host::HostKind::kAutoCad, [](core::Windows& w) {
    w.okno_lmt.option_vid_sozdat_layout.SetButton(1, true);
    w.okno_lmt.uni_text_name_obrazec_layout.set_text("Pattern");
    auto& a = w.okno_deistvie;
    a.check_sozdat_text.set_checked(true);
    a.text_text_stroka.set_text("Sheet ##1 scale ##4 of ##3");
    a.text_text_sloi.set_text("SHEET-TEXT");
    a.text_stil_imia.set_text("Labels");
    a.text_stil_srift.set_text("romans.shx");
    a.text_text_visota.set_text("3.5");
    a.text_text_coord_x.set_text("20");
    a.text_text_coord_y.set_text("15");
    a.option_viravnivanie_text.SetButton(1, true);
    a.check_izmenit_atribut.set_checked(true);
    a.text_name_block.set_text("tb_paper");
    a.text_imia_atribut1.set_text("SHEET");
    a.text_value_atribut1.set_text("##1");
    a.text_imia_atribut2.set_text("scale");
    a.text_value_atribut2.set_text("##4");
  });
  ASSERT_EQ(d.mtexts.size(), 4u);
  for (int i = 1; i <= 4; ++i) {
    const std::string name = "Sheet-" + std::to_string(i);
    SCOPED_TRACE(name);
    auto text = std::find_if(d.mtexts.begin(), d.mtexts.end(),
                             [&](const auto& m) { return m.layout == name; });
    ASSERT_NE(text, d.mtexts.end());
    EXPECT_EQ(text->text,
              "Sheet " + std::to_string(i) + " scale 1:100 of " + name);
    EXPECT_EQ(text->layer, "SHEET-TEXT");
    EXPECT_EQ(text->style, "Labels");
    EXPECT_EQ(text->attachment, 5);
    EXPECT_NEAR(text->x, 20, 1e-9);
    EXPECT_NEAR(text->y, 15, 1e-9);
    EXPECT_NEAR(text->height, 3.5, 1e-9);
    EXPECT_EQ(d.attributes[name + " TB_PAPER SHEET"], std::to_string(i));
    EXPECT_EQ(d.attributes[name + " TB_PAPER SCALE"], "1:100");
  }
  // Only the new layouts' references change.
  EXPECT_EQ(d.attributes["Pattern TB_PAPER SHEET"], "0");
  EXPECT_EQ(d.attributes["Pattern TB_PAPER SCALE"], "?");
}

TEST_F(CreationTest, InterruptedRunCleansUpWithoutFinalMessage) {
  std::unique_ptr<lmt::testing::FailingHost> stop;
  CreationReport report;
  Described d = Create(
      host::HostKind::kNanoCad,
      [&](core::Windows& w) {
        w.okno_lmt.option_vid_sozdat_layout.SetButton(1, true);
        w.okno_lmt.uni_text_name_obrazec_layout.set_text("Pattern");
        w.okno_sozdat_layout.check_mashtab_annotation.set_checked(true);
        // Stop pressed while the second row's viewport is built: that row
        // is finished, the next is not begun.
        stop = std::make_unique<lmt::testing::FailingHost>(run_->application());
        stop->InterruptAt("PViewport.SetTwistAngle", 2, run_->user);
      },
      &report);
  EXPECT_EQ(report.outcome, host::Outcome::kInterrupted);
  EXPECT_EQ(report.created, (std::vector<std::string>{"Sheet-1", "Sheet-2"}));
  for (const std::string& text : run_->user.message_texts()) {
    EXPECT_NE(text, run_->globals.messages.Get(15));
  }
  EXPECT_EQ(d.layout("TempNewNano"), nullptr);
  EXPECT_EQ(d.layers_frozen.count("TEMPAddLayerLayomat"), 0u);
  for (const auto& [layer, frozen] : d.layers_frozen) {
    EXPECT_FALSE(frozen) << layer;
  }
  for (const VpRecord& v : d.viewports) EXPECT_TRUE(v.on) << v.handle;
}

TEST_F(CreationTest, EarlierLayoutsDeletedButNotThePattern) {
  CreationReport report;
  Described d = Create(
      host::HostKind::kAutoCad,
      [](core::Windows& w) {
        w.okno_lmt.option_vid_sozdat_layout.SetButton(1, true);
        w.okno_lmt.uni_text_name_obrazec_layout.set_text("Pattern");
        w.okno_sozdat_layout.check_udalit_listi.set_checked(true);
      },
      &report);
  EXPECT_EQ(report.deleted, std::vector<std::string>{"Old"});
  EXPECT_EQ(d.layout("Old"), nullptr);
  EXPECT_NE(d.layout("Pattern"), nullptr);
  EXPECT_EQ(d.layouts.size(), 5u);
}

TEST_F(CreationTest, RefusedCallsAreSkippedAndNamedInTheReport) {
  std::unique_ptr<lmt::testing::FailingHost> failing;
  CreationReport report;
  Described d = Create(
      host::HostKind::kAutoCad,
      [&](core::Windows& w) {
        w.okno_lmt.option_vid_sozdat_layout.SetButton(1, true);
        w.okno_lmt.uni_text_name_obrazec_layout.set_text("Pattern");
        failing =
            std::make_unique<lmt::testing::FailingHost>(run_->application());
        // The second row's layout, the scale of the next viewport made (the
        // third row's) and every layer lock.
        failing->Refuse("Layouts.Add", /*allow_first=*/1, /*times=*/1)
            .Refuse("PViewport.SetCustomScale", 1, 1)
            .Refuse("Layer.SetLock");
      },
      &report);
  EXPECT_EQ(report.outcome, host::Outcome::kDone);
  EXPECT_EQ(report.rows, 4);
  EXPECT_EQ(report.created,
            (std::vector<std::string>{"Sheet-1", "Sheet-3", "Sheet-4"}));
  std::vector<std::string> skips;
  for (const host::Skip& skip : report.skips.skips()) {
    EXPECT_EQ(skip.status.code(), StatusCode::kRefused) << skip.step;
    skips.push_back(skip.object + " " + skip.step + ": " +
                    skip.status.message());
  }
  EXPECT_EQ(skips, (std::vector<std::string>{
                       "Viewport lock: Layer.SetLock refused",
                       "Sheet-2 layout: Layouts.Add refused",
                       "Sheet-3 custom scale: PViewport.SetCustomScale refused",
                   }));
  EXPECT_EQ(report.skips.Count(kSkipLayout), 1);
  // The row whose scale was refused still has its viewport, and the run
  // went on to the next row as if nothing had happened.
  EXPECT_EQ(d.layout("Sheet-2"), nullptr);
  EXPECT_EQ(report.viewports, 3);
  std::map<std::string, double> scales;
  for (const VpRecord& v : d.viewports) {
    if (v.id != 1 && v.layout.starts_with("Sheet-")) {
      scales[v.layout] = v.h / v.vh;
    }
  }
  ASSERT_EQ(scales.size(), 3u);
  EXPECT_NE(scales["Sheet-3"], scales["Sheet-1"]);
  EXPECT_EQ(scales["Sheet-4"], scales["Sheet-1"]);
}

TEST_F(CreationTest, TurnedBlockFrameGivesItsViewportExactlyItsAngle) {
  // The table is the store layout creation reads the angle back from, so
  // what the search wrote must come back bit for bit.
  const double angle = 200 * std::numbers::pi / 180;
  frames::FrameTable table = TableOf(Frames());
  ASSERT_EQ(table.Number(4, frames::Column::kAngle), angle);
  run_ = std::make_unique<test::HostRun>(
      test::TestdataPath("layouts/frames.dxf"), host::HostKind::kAutoCad);
  run_->user.AllowUnusedAnswers();
  CreationReport report = CreateLayouts(run_->session, table);
  ASSERT_EQ(report.created.size(), 4u);
  Result<host::LayoutsPtr> layouts = run_->document->Layouts();
  ASSERT_TRUE(layouts.ok());
  Result<host::LayoutPtr> sheet = (*layouts)->Item("Sheet-4");
  ASSERT_TRUE(sheet.ok());
  Result<host::BlockPtr> block = (*sheet)->Block();
  ASSERT_TRUE(block.ok());
  Result<std::vector<host::EntityPtr>> items = (*block)->Items();
  ASSERT_TRUE(items.ok());
  std::vector<double> twists;
  for (const host::EntityPtr& e : *items) {
    auto viewport = host::As<host::PViewport>(e);
    if (viewport == nullptr) continue;
    Result<double> twist = viewport->TwistAngle();
    if (twist.ok() && *twist != 0) twists.push_back(*twist);
  }
  ASSERT_EQ(twists.size(), 1u);
  // A frame upside down is shown the right way up: turned back by its
  // angle less a half turn (340 degrees for 200).
  const double full = 2 * std::numbers::pi;
  EXPECT_DOUBLE_EQ(std::fmod(twists[0] + full, full),
                   full - (angle - std::numbers::pi));
}

TEST(FamilyOfHostTest, HostNamesPickTheirFamily) {
  EXPECT_EQ(FamilyOfHost("autocad"), HostFamily::kAutoCad);
  EXPECT_EQ(FamilyOfHost("ZWCAD+"), HostFamily::kAutoCad);
  EXPECT_EQ(FamilyOfHost("IntelliCAD"), HostFamily::kAutoCad);
  EXPECT_EQ(FamilyOfHost("NanoCAD"), HostFamily::kNanoCad);
  EXPECT_EQ(FamilyOfHost("zwcad"), HostFamily::kZwCad);
  EXPECT_EQ(FamilyOfHost("QCAD"), HostFamily::kNone);
  EXPECT_EQ(FamilyOfHost(""), HostFamily::kNone);
}

}  // namespace
}  // namespace lmt::layouts

// The insertion options on layout creation, on the embedded DXF host, read
// back through ezdxf: one reference per new sheet at the sheet's point,
// scale, rotation and layer, its attributes filled for the sheet; a drawing
// file defined once as a block with its entities and what they need; an
// unusable source told once; a refusing host skipped sheet by sheet.
#include "layouts/sheet_insert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <memory>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "layouts/creation_test_support.h"
#include "layouts/layout_creation.h"
#include "testing/failing_host.h"
#include "testing/temp_dir.h"

namespace lmt::layouts {
namespace {

struct InsertRecord {
  std::string layout, block, layer;
  double x = 0, y = 0, x_scale = 0, y_scale = 0, rotation = 0;
};
struct AttribRecord {
  std::string value;
  double x = 0, y = 0, height = 0;
};
struct BlockRecord {
  int entities = 0;
  double base_x = 0, base_y = 0, min_x = 0, min_y = 0, max_x = 0, max_y = 0;
};
struct Inserts {
  std::vector<InsertRecord> inserts;
  std::map<std::string, AttribRecord> attribs;  // "LAYOUT BLOCK TAG"
  std::map<std::string, BlockRecord> blocks;
  std::vector<std::string> layers, styles;

  std::vector<InsertRecord> On(const std::string& layout) const {
    std::vector<InsertRecord> out;
    for (const InsertRecord& r : inserts) {
      if (r.layout == layout) out.push_back(r);
    }
    return out;
  }
};

Inserts DescribeInserts(const std::string& path) {
  const lmt::testing::ShellRun run =
      lmt::testing::RunShell(lmt::testing::PythonCommand() +
                             lmt::testing::ShellQuote(test::TestdataPath(
                                 "layouts/describe_inserts.py")) +
                             " " + lmt::testing::ShellQuote(path) + " 2>&1");
  EXPECT_EQ(run.status, 0) << run.out;
  Inserts d;
  std::istringstream lines(run.out);
  std::string line;
  while (std::getline(lines, line)) {
    std::vector<std::string> f = test::SplitTabs(line);
    if (f.empty()) continue;
    if (f[0] == "insert" && f.size() >= 9) {
      d.inserts.push_back({f[1], f[2], f[8], std::stod(f[3]), std::stod(f[4]),
                           std::stod(f[5]), std::stod(f[6]), std::stod(f[7])});
    } else if (f[0] == "attrib" && f.size() >= 8) {
      d.attribs[f[1] + " " + f[2] + " " + f[3]] = {
          f[4], std::stod(f[5]), std::stod(f[6]), std::stod(f[7])};
    } else if (f[0] == "block" && f.size() >= 9) {
      d.blocks[f[1]] = {std::stoi(f[4]), std::stod(f[2]), std::stod(f[3]),
                        std::stod(f[5]), std::stod(f[6]), std::stod(f[7]),
                        std::stod(f[8])};
    } else if (f[0] == "layer" && f.size() >= 2) {
      d.layers.push_back(f[1]);
    } else if (f[0] == "style" && f.size() >= 2) {
      d.styles.push_back(f[1]);
    }
  }
  return d;
}

// Three frames side by side, one layout each.
frames::FrameTable ThreeFrames() {
  frames::FrameTable table;
  table.SetRowCount(4);
  for (int r = 1; r <= 3; ++r) {
    const double x0 = (r - 1) * 60000.0;
    table.SetCorners(
        r, {{{x0, 0}, {x0 + 42000, 0}, {x0 + 42000, 29700}, {x0, 29700}}});
    table.SetCell(r, frames::Column::kTyp, "Polyline");
    table.SetNumber(r, frames::Column::kAngle, 0);
    table.SetCell(r, frames::Column::kLayoutName, "Sheet-" + std::to_string(r));
  }
  return table;
}

class SheetInsertTest : public ::testing::Test {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_EZDXF(); }

  std::string Stamp() {
    const std::string path = (dir_.path() / "stamp.dxf").string();
    const lmt::testing::ShellRun run = lmt::testing::RunShell(
        lmt::testing::PythonCommand() +
        lmt::testing::ShellQuote(test::TestdataPath("layouts/make_stamp.py")) +
        " " + lmt::testing::ShellQuote(path) + " 2>&1");
    EXPECT_EQ(run.status, 0) << run.out;
    return path;
  }

  // Layout creation on frames.dxf with the insertion options `source`
  // (a file when `from_file`), then `setup`; saves and reads back.
  Inserts Create(const std::string& source, bool from_file,
                 const std::function<void(core::Windows&)>& setup = {}) {
    run_ = std::make_unique<test::HostRun>(
        test::TestdataPath("layouts/frames.dxf"), host::HostKind::kAutoCad);
    run_->user.AllowUnusedAnswers();
    core::Windows& w = run_->windows;
    w.okno_lmt.check_vstavit_object.set_checked(true);
    core::OknoVstavitObject& v = w.okno_vstavit_object;
    v.option_istochnik_vstavki.Select(from_file ? 1 : 0);
    (from_file ? v.uni_text_put_file_vstavki : v.uni_text_name_block_vstavki)
        .set_text(source);
    if (setup) setup(w);
    report_ = CreateLayouts(run_->session, ThreeFrames());
    const std::string out = (dir_.path() / "out.dxf").string();
    run_->SaveAs(out);
    EXPECT_EQ(test::CheckDxf(out, test::StructuralProblems(test::TestdataPath(
                                      "layouts/frames.dxf"))),
              "");
    return DescribeInserts(out);
  }

  // The messages of the run other than the final one.
  std::vector<std::string> Problems() {
    std::vector<std::string> texts = run_->user.message_texts();
    std::erase(texts, run_->globals.messages.Get(core::kMsgLayoutsComplete));
    return texts;
  }

  lmt::testing::TempDir dir_;
  std::unique_ptr<test::HostRun> run_;
  CreationReport report_;
};

TEST_F(SheetInsertTest, DrawingFileDefinedOnceAndPlacedOnEverySheet) {
  const std::string stamp = Stamp();
  Inserts d = Create(stamp, true, [](core::Windows& w) {
    core::OknoVstavitObject& v = w.okno_vstavit_object;
    v.text_vstavka_coord_x.set_text("400");
    v.text_vstavka_coord_y.set_text("20");
    v.text_vstavka_mashtab.set_text("2");
    v.text_vstavka_povorot.set_text("90");
    v.text_vstavka_sloi.set_text("STAMP");
  });
  EXPECT_TRUE(Problems().empty());
  EXPECT_EQ(report_.inserted, 3);
  EXPECT_EQ(report_.created.size(), 3u);
  for (int i = 1; i <= 3; ++i) {
    const std::string name = "Sheet-" + std::to_string(i);
    SCOPED_TRACE(name);
    std::vector<InsertRecord> on = d.On(name);
    ASSERT_EQ(on.size(), 1u);
    EXPECT_EQ(on[0].block, "stamp");
    EXPECT_NEAR(on[0].x, 400, 1e-9);
    EXPECT_NEAR(on[0].y, 20, 1e-9);
    EXPECT_NEAR(on[0].x_scale, 2, 1e-9);
    EXPECT_NEAR(on[0].y_scale, 2, 1e-9);
    EXPECT_NEAR(on[0].rotation, 90, 1e-9);
    EXPECT_EQ(on[0].layer, "STAMP");
    EXPECT_EQ(d.attribs[name + " stamp LAYOUT"].value, name);
    EXPECT_EQ(d.attribs[name + " stamp SHEET"].value,
              "Sheet " + std::to_string(i) + " of 3");
    EXPECT_EQ(d.attribs[name + " stamp FIXED"].value, "Layomat");
    // (10, 5) of the stamp, 2x from its base (180, 0), a quarter turn
    // about (400, 20): (400 - 10, 20 - 340).
    const AttribRecord& sheet = d.attribs[name + " stamp SHEET"];
    EXPECT_NEAR(sheet.x, 390, 1e-6);
    EXPECT_NEAR(sheet.y, -320, 1e-6);
    EXPECT_NEAR(sheet.height, 5, 1e-9);
  }
  // The model space never gets one.
  for (const InsertRecord& r : d.On("Model")) EXPECT_NE(r.block, "stamp");

  // One definition, with the file's entities and base point, and what they
  // need came along.
  Inserts source = DescribeInserts(stamp);
  ASSERT_EQ(d.blocks.count("stamp"), 1u);
  const BlockRecord& block = d.blocks["stamp"];
  EXPECT_EQ(block.entities, 7);  // frame, line, text, logo, three ATTDEFs
  EXPECT_NEAR(block.base_x, 180, 1e-9);
  EXPECT_NEAR(block.min_x, 0, 1e-9);
  EXPECT_NEAR(block.min_y, 0, 1e-9);
  EXPECT_NEAR(block.max_x, 180, 1e-9);
  EXPECT_NEAR(block.max_y, 40, 1e-9);
  EXPECT_EQ(d.blocks.count("LOGO"), 1u);
  EXPECT_EQ(source.blocks.count("LOGO"), 1u);
  for (const char* layer : {"STAMP-LINES", "STAMP"}) {
    EXPECT_NE(std::find(d.layers.begin(), d.layers.end(), layer),
              d.layers.end())
        << layer;
  }
  EXPECT_NE(std::find(d.styles.begin(), d.styles.end(), "StampFont"),
            d.styles.end());
}

// Its two attributes come with empty defaults; the constant one stays
// with the definition.
TEST_F(SheetInsertTest, BlockOfTheDrawingGetsItsVariableAttributes) {
  Inserts d = Create("tb_paper", false);
  EXPECT_TRUE(Problems().empty());
  for (int i = 1; i <= 3; ++i) {
    const std::string name = "Sheet-" + std::to_string(i);
    std::vector<InsertRecord> on = d.On(name);
    ASSERT_EQ(on.size(), 1u) << name;
    EXPECT_EQ(on[0].block, "TB_PAPER");
    EXPECT_NEAR(on[0].x, 0, 1e-9);
    EXPECT_NEAR(on[0].x_scale, 1, 1e-9);
    EXPECT_NEAR(on[0].rotation, 0, 1e-9);
    EXPECT_EQ(d.attribs.count(name + " TB_PAPER SHEET"), 1u) << name;
    EXPECT_EQ(d.attribs.count(name + " TB_PAPER SCALE"), 1u) << name;
    EXPECT_EQ(d.attribs.count(name + " TB_PAPER ORG"), 0u) << name;
  }
}

// A source that cannot be used: told once, the layouts made without it.
TEST_F(SheetInsertTest, UnusableSourceIsToldOnceAndLayoutsAreStillMade) {
  const std::string garbage = (dir_.path() / "broken.dxf").string();
  std::ofstream(garbage) << "0\nSECTION\n2\nENTITIES\n0\nLINE\n";
  struct Case {
    const char* name;
    std::string source;
    bool from_file;
  } cases[] = {
      {"missing block", "NoSuchBlock", false},
      {"missing file", (dir_.path() / "absent.dxf").string(), true},
      {"unreadable file", garbage, true},
      {"empty name", "", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Inserts d = Create(c.source, c.from_file);
    EXPECT_EQ(report_.created.size(), 3u);
    EXPECT_EQ(report_.inserted, 0);
    for (const std::string& sheet : report_.created) {
      EXPECT_TRUE(d.On(sheet).empty()) << sheet;
    }
    std::vector<std::string> problems = Problems();
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0], report_.insert_problem);
    EXPECT_NE(problems[0].find(c.source), std::string::npos);
  }
}

TEST_F(SheetInsertTest, RefusedInsertionIsSkippedOnEverySheet) {
  std::unique_ptr<lmt::testing::FailingHost> failing;
  Inserts d = Create("tb_paper", false, [&](core::Windows&) {
    failing = std::make_unique<lmt::testing::FailingHost>(run_->application());
    failing->Refuse("Block.InsertBlock");
  });
  EXPECT_TRUE(Problems().empty());
  EXPECT_EQ(report_.created.size(), 3u);
  EXPECT_EQ(report_.inserted, 0);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_TRUE(d.On("Sheet-" + std::to_string(i)).empty()) << i;
  }
  EXPECT_EQ(report_.skips.Count(kSkipInsert), 3);
}

}  // namespace
}  // namespace lmt::layouts

// The frame commands on real drawings through the embedded host:
// testdata/frames (see make_frames.py there), the repository's example and
// the shared dynamic-block sample.
#include "frames/frame_commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "core/globals.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "dxfhost/test_support.h"
#include "frames/frame_ordering.h"
#include "host/host_kind.h"
#include "host/session.h"
#include "layouts/layout_naming.h"
#include "testing/failing_host.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"
#include "testing/test_paths.h"

namespace lmt::frames {
namespace {

using ::lmt::testing::SamplePath;
using ::lmt::testing::TestdataPath;

std::string Frames(const std::string& name) {
  return TestdataPath("frames/" + name);
}

class FrameCommandsTest : public ::testing::Test {
 protected:
  void Open(const std::string& path,
            host::HostKind kind = host::HostKind::kAutoCad) {
    app_ = dxfhost::DxfApplication::Create(kind, &user_);
    Result<host::DocumentsPtr> documents = app_->Documents();
    ASSERT_TRUE(documents.ok());
    Result<host::DocumentPtr> opened = (*documents)->Open(path);
    ASSERT_TRUE(opened.ok()) << opened.status().ToString();
    runtime_.SetRunning(std::string(host::HostProgramId(kind)), app_);
    windows_.okno_lmt.combo_versia_cad.Select(static_cast<int>(kind));
    session_ =
        std::make_unique<host::Session>(globals_, windows_, user_, runtime_);
    commands_ = std::make_unique<FrameCommands>(
        *session_, state_, [this](FrameTable& table) {
          const core::OknoLmt& main = windows_.okno_lmt;
          layouts::NameAllRows(table, main.text_stroka_name_file.text(),
                               {main.uni_text_leyout_name0.text(),
                                main.uni_text_leyout_name1.text(),
                                main.uni_text_leyout_name2.text()});
        });
  }

  host::Outcome Capture(const std::string& handle) {
    user_.QueuePick({handle});
    return commands_->CaptureTemplate();
  }

  // "Select All" with the start point cancelled unless given.
  host::Outcome SearchAll(std::optional<host::Point> start = std::nullopt) {
    if (start) {
      user_.QueuePoint(*start);
    } else {
      user_.QueuePointCancel();
    }
    return commands_->Search(SearchMode::kAll);
  }

  const std::string& Cell(int row, Column column) {
    return state_.table.Cell(row, column);
  }
  double Number(int row, Column column) {
    return state_.table.Number(row, column).value_or(NAN);
  }
  // The "ID" cells of the data rows, as handles.
  std::vector<std::string> Handles() {
    std::vector<std::string> out;
    for (int r = 1; r < state_.table.row_count(); ++r) {
      char buf[32];
      std::snprintf(buf, sizeof buf, "%llX", std::stoull(Cell(r, Column::kId)));
      out.push_back(buf);
    }
    return out;
  }
  int RowOf(const std::string& handle) {
    std::vector<std::string> h = Handles();
    for (size_t i = 0; i < h.size(); ++i) {
      if (h[i] == handle) return static_cast<int>(i) + 1;
    }
    ADD_FAILURE() << "no row for " << handle;
    return 1;
  }
  void ExpectCorners(int row, const Quad& expected) {
    std::optional<Quad> corners = state_.table.Corners(row);
    ASSERT_TRUE(corners.has_value()) << "row " << row;
    for (int i = 0; i < 4; ++i) {
      EXPECT_NEAR((*corners)[i].x, expected[i].x, 1e-6) << "corner " << i;
      EXPECT_NEAR((*corners)[i].y, expected[i].y, 1e-6) << "corner " << i;
    }
  }

  testing::ScriptedUser user_;
  core::Globals globals_;
  core::Windows windows_;
  testing::FakeRuntime runtime_;
  std::shared_ptr<dxfhost::DxfApplication> app_;
  std::unique_ptr<host::Session> session_;
  FrameState state_;
  std::unique_ptr<FrameCommands> commands_;
};

TEST_F(FrameCommandsTest, PolylineFramesOfFourAndFiveVerticesInModelOnly) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  EXPECT_EQ(state_.frame_template.kind, "POLYLINE");
  EXPECT_EQ(state_.frame_template.layer, "FRAMES");
  EXPECT_EQ(windows_.okno_filter.combo_sloy_linii.text(), "FRAMES");
  EXPECT_EQ(windows_.okno_lmt.active_template, "POLYLINE");
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);

  // 3 and 6 vertices and the paper-space look-alike are not frames.
  EXPECT_EQ(Handles(), (std::vector<std::string>{"30", "31", "32"}));
  EXPECT_EQ(windows_.okno_lmt.found_count, "3");
  for (int r = 1; r <= 3; ++r) {
    EXPECT_EQ(Cell(r, Column::kTyp), "Polyline");
    EXPECT_EQ(Cell(r, Column::kBlockName), "");
    EXPECT_NEAR(Number(r, Column::kWidth), 420, 1e-6);
    EXPECT_NEAR(Number(r, Column::kHeight), 297, 1e-6);
  }
  ExpectCorners(2, {Point{1000, 0}, {1420, 0}, {1420, 297}, {1000, 297}});
  const double c = std::cos(std::numbers::pi / 6),
               s = std::sin(std::numbers::pi / 6);
  ExpectCorners(3, {Point{2000, 0},
                    {2000 + 420 * c, 420 * s},
                    {2000 + 420 * c - 297 * s, 420 * s + 297 * c},
                    {2000 - 297 * s, 297 * c}});
  EXPECT_EQ(Cell(1, Column::kLayoutName), "1");  // the designed template 20
}

TEST_F(FrameCommandsTest, MessagesOfCaptureAndSearchInOrder) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  const core::MessageTable& m = globals_.messages;
  EXPECT_EQ(
      user_.message_texts(),
      (std::vector<std::string>{m.Get(core::kMsgSelectTemplate),
                                m.Get(core::kMsgTemplateReceived) + "POLYLINE",
                                m.Get(core::kMsgSpecifyStartPoint),
                                m.Get(core::kMsgSelectionComplete)}));
  for (const host::Message& message : user_.messages()) {
    EXPECT_EQ(message.title, globals_.product_name);
  }
}

TEST_F(FrameCommandsTest, EmptyOrSeveralPicksAndAnEmptySearch) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  const FrameTemplate before = state_.frame_template;
  user_.QueuePick({});  // Enter: the template stays
  EXPECT_EQ(commands_->CaptureTemplate(), host::Outcome::kRefused);
  EXPECT_EQ(state_.frame_template.kind, before.kind);
  EXPECT_EQ(user_.message_texts().back(),
            globals_.messages.Get(core::kMsgTemplateEmpty));

  user_.QueuePick({"36", "31"});  // the circle is not offered
  EXPECT_EQ(commands_->CaptureTemplate(), host::Outcome::kDone);
  user_.QueuePick({"31", "30"});
  EXPECT_EQ(commands_->CaptureTemplate(), host::Outcome::kDone);
  EXPECT_EQ(user_.message_texts()[user_.message_texts().size() - 2],
            globals_.messages.Get(core::kMsgSeveralSelected));

  windows_.okno_filter.check_tolko_v_sloe.set_checked(true);
  windows_.okno_filter.combo_sloy_linii.set_text("NO SUCH LAYER");
  EXPECT_EQ(commands_->Search(SearchMode::kAll), host::Outcome::kRefused);
  EXPECT_EQ(user_.message_texts().back(),
            globals_.messages.Get(core::kMsgNoObjects));
  EXPECT_EQ(state_.table.row_count(), kResetRowCount);
  EXPECT_EQ(windows_.okno_lmt.found_count, "0");
}

TEST_F(FrameCommandsTest, VertexByVertexReadingOfIntelliCadGivesSameTable) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  FrameTable autocad = state_.table;

  Open(Frames("polylines.dxf"), host::HostKind::kIntelliCad);
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  testing::FailingHost counting(*app_);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  EXPECT_EQ(counting.CallCount("Polyline.Coordinates"), 0);
  EXPECT_EQ(counting.CallCount("Polyline.Coordinate"), 12);
  for (int r = 0; r < autocad.row_count(); ++r) {
    for (int c = 0; c < kColumnCount; ++c) {
      EXPECT_EQ(state_.table.Cell(r, Column(c)), autocad.Cell(r, Column(c)));
    }
  }
}

TEST_F(FrameCommandsTest, BlockFramesPlacedWithScaleRotationAndAttributes) {
  Open(Frames("blocks.dxf"));
  windows_.okno_lmt.uni_text_name_atribute.set_text("sheet");
  ASSERT_EQ(Capture("45"), host::Outcome::kDone);
  EXPECT_EQ(state_.frame_template.kind, "BLOCK");
  EXPECT_EQ(windows_.okno_filter.uni_text_name_block.text(), "FRAME");
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);

  // "Block Name:" is on by design: only FRAME, and not the paper one.
  EXPECT_EQ(Handles(), (std::vector<std::string>{"45", "49"}));
  EXPECT_EQ(Cell(1, Column::kAttribute), "A/1");
  EXPECT_EQ(Cell(2, Column::kAttribute), "A:2");
  EXPECT_EQ(Cell(2, Column::kBlockName), "FRAME");
  EXPECT_EQ(Cell(2, Column::kTyp), "Block");
  EXPECT_NEAR(Number(2, Column::kAngle), std::numbers::pi / 2,
              1e-8);  // 8 decimals
  ExpectCorners(2, {Point{1000, 0}, {1000, 840}, {406, 840}, {406, 0}});
  EXPECT_NEAR(Number(2, Column::kWidth), 840, 1e-6);
  EXPECT_NEAR(Number(2, Column::kHeight), 594, 1e-6);
  EXPECT_NEAR(Number(2, Column::kMinX), 406, 1e-6);
  EXPECT_NEAR(Number(2, Column::kMaxY), 840, 1e-6);
}

TEST_F(FrameCommandsTest, InnerPolylineRulesAndConstantAttributes) {
  Open(Frames("blocks.dxf"));
  windows_.okno_lmt.uni_text_name_atribute.set_text("SHEET");
  ASSERT_EQ(Capture("45"), host::Outcome::kDone);
  windows_.okno_filter.check_tolko_name_block.set_checked(false);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ASSERT_EQ(state_.table.last_row(), 5);
  // TWO: of two qualifying polylines the second is the frame.
  ExpectCorners(RowOf("4D"),
                {Point{320, 1000}, {420, 1000}, {420, 1050}, {320, 1050}});
  // BAD: 3 and 6 vertices only, so no corners and no measures.
  const int bad = RowOf("4F");
  EXPECT_EQ(Cell(bad, Column::kTyp), "Block");
  EXPECT_EQ(Cell(bad, Column::kPointX1), "");
  EXPECT_EQ(Cell(bad, Column::kWidth), "");
  // CONST: the attribute exists only in the definition.
  EXPECT_EQ(Cell(RowOf("51"), Column::kAttribute), "C-1");
}

TEST_F(FrameCommandsTest, BoundingBoxModes) {
  Open(Frames("blocks.dxf"));
  ASSERT_EQ(Capture("45"), host::Outcome::kDone);
  windows_.okno_lmt.option_block_poisk.Select(1);  // "By size"
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ExpectCorners(2, {Point{406, 0}, {1000, 0}, {1000, 840}, {406, 840}});
  EXPECT_NEAR(Number(2, Column::kWidth), 594, 1e-6);  // the box, unturned

  windows_.okno_lmt.option_block_poisk.Select(2);  // box only if unrotated
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ExpectCorners(1, {Point{0, 0}, {420, 0}, {420, 297}, {0, 297}});
  ExpectCorners(2, {Point{1000, 0}, {1000, 840}, {406, 840}, {406, 0}});
}

TEST_F(FrameCommandsTest, ExternalReferenceByItsBox) {
  Open(Frames("xref.dxf"));
  ASSERT_EQ(Capture("33"), host::Outcome::kDone);
  EXPECT_EQ(state_.frame_template.kind, "XRef");
  windows_.okno_lmt.option_block_poisk.Select(1);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ASSERT_EQ(Handles(), std::vector<std::string>{"33"});
  EXPECT_EQ(Cell(1, Column::kTyp), "XRef");
  EXPECT_EQ(Cell(1, Column::kBlockName), "XPART");
  ExpectCorners(1, {Point{1000, 0}, {1420, 0}, {1420, 297}, {1000, 297}});
}

// The reference's block answers the referenced drawing's model space.
TEST_F(FrameCommandsTest, ExternalReferenceByItsInnerPolyline) {
  Open(Frames("xref.dxf"));
  ASSERT_EQ(Capture("33"), host::Outcome::kDone);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ExpectCorners(1, {Point{1000, 0}, {1420, 0}, {1420, 297}, {1000, 297}});
}

// BASED is drawn around the base point (210, 0): its references put that
// point, not the block's (0, 0), on their insertion point.
TEST_F(FrameCommandsTest, BlockBasePointLandsOnTheInsertionPoint) {
  Open(Frames("based.dxf"));
  ASSERT_EQ(Capture("34"), host::Outcome::kDone);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  const double c = std::cos(std::numbers::pi / 6),
               s = std::sin(std::numbers::pi / 6);
  auto turned = [&](double x, double y) {
    return Point{5000 + x * c - y * s, x * s + y * c};
  };
  const Quad turned_corners = {turned(-210, 0), turned(210, 0),
                               turned(210, 297), turned(-210, 297)};
  const Quad mirrored_corners = {
      Point{6210, 0}, {5790, 0}, {5790, 297}, {6210, 297}};
  ExpectCorners(RowOf("34"), turned_corners);
  ExpectCorners(RowOf("36"), mirrored_corners);
  EXPECT_NEAR(Number(RowOf("34"), Column::kWidth), 420, 1e-6);

  // The box the host draws around the references agrees with them.
  windows_.okno_lmt.option_block_poisk.Select(1);  // "By size"
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ExpectCorners(RowOf("36"),
                {Point{5790, 0}, {6210, 0}, {6210, 297}, {5790, 297}});
  std::optional<Quad> box = state_.table.Corners(RowOf("34"));
  ASSERT_TRUE(box.has_value());
  double min_x = turned_corners[0].x, max_y = turned_corners[0].y;
  for (const Point& p : turned_corners) {
    min_x = std::min(min_x, p.x);
    max_y = std::max(max_y, p.y);
  }
  EXPECT_NEAR((*box)[0].x, min_x, 1e-6);
  EXPECT_NEAR((*box)[2].y, max_y, 1e-6);
}

TEST_F(FrameCommandsTest, DynamicBlocksFoundByEffectiveName) {
  LMT_SKIP_WITHOUT_SHARED();
  ASSERT_NO_FATAL_FAILURE(Open(SamplePath("dynvis.dxf")));
  ASSERT_EQ(Capture("252"), host::Outcome::kDone);
  EXPECT_EQ(state_.frame_template.block_name, "block_visibility_parameter");
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  EXPECT_EQ(state_.table.last_row(), 4);
  for (int r = 1; r <= 4; ++r) {
    EXPECT_EQ(Cell(r, Column::kBlockName), "block_visibility_parameter");
  }
}

TEST_F(FrameCommandsTest, RefusedPropertySkipsOnlyThatStatement) {
  Open(Frames("blocks.dxf"));
  windows_.okno_lmt.uni_text_name_atribute.set_text("SHEET");
  ASSERT_EQ(Capture("45"), host::Outcome::kDone);
  testing::FailingHost failing(*app_);
  failing.Refuse("BlockReference.EffectiveName", 1, 1);  // the second frame
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  ASSERT_EQ(Handles(), (std::vector<std::string>{"45", "49"}));
  EXPECT_EQ(Cell(1, Column::kBlockName), "FRAME");
  EXPECT_EQ(Cell(2, Column::kBlockName), "");
  EXPECT_EQ(Cell(2, Column::kAttribute), "A:2");
  ExpectCorners(2, {Point{1000, 0}, {1000, 840}, {406, 840}, {406, 0}});
}

TEST_F(FrameCommandsTest, InterruptKeepsTheRowsMadeSoFar) {
  Open(Frames("blocks.dxf"));
  ASSERT_EQ(Capture("45"), host::Outcome::kDone);
  windows_.okno_filter.check_tolko_name_block.set_checked(false);
  user_.QueuePointCancel();
  // Stop pressed while the second frame is read: it is kept, no more are.
  testing::FailingHost stop(*app_);
  stop.InterruptAt("Entity.ObjectID", 2, user_);
  EXPECT_EQ(commands_->Search(SearchMode::kAll), host::Outcome::kInterrupted);
  EXPECT_EQ(Handles(), (std::vector<std::string>{"45", "49"}));
  EXPECT_NE(user_.message_texts().back(),
            globals_.messages.Get(core::kMsgSelectionComplete));
}

TEST_F(FrameCommandsTest, SelectWindowTakesOnlyPickedFramesThatPassTheFilter) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  user_.QueuePick({"32", "33", "35"});  // a frame, 3 vertices, a line
  user_.QueuePointCancel();
  ASSERT_EQ(commands_->Search(SearchMode::kOnScreen), host::Outcome::kDone);
  EXPECT_EQ(Handles(), std::vector<std::string>{"32"});
}

TEST_F(FrameCommandsTest, SearchFlagsAreClearedAfterEachCommand) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  for (bool flag : session_->search_flags()) EXPECT_FALSE(flag);
}

TEST_F(FrameCommandsTest, RowCommandsUpdateAndStop) {
  Open(Frames("polylines.dxf"));
  ASSERT_EQ(Capture("30"), host::Outcome::kDone);
  ASSERT_EQ(SearchAll(), host::Outcome::kDone);
  commands_->MoveRowToFirst(3);
  EXPECT_EQ(Handles(), (std::vector<std::string>{"32", "30", "31"}));
  commands_->MoveRowDown(1);
  commands_->MoveRowUp(3);
  EXPECT_EQ(Handles(), (std::vector<std::string>{"30", "31", "32"}));
  commands_->DeleteRow(2);
  commands_->DeleteRow(0);  // no selection: nothing
  commands_->MoveRowUp(9);  // likewise
  EXPECT_EQ(Handles(), (std::vector<std::string>{"30", "32"}));
  EXPECT_EQ(Cell(2, Column::kNumber), "2");
  EXPECT_EQ(Cell(2, Column::kLayoutName), "3");  // named before the delete
  commands_->Update();
  EXPECT_EQ(Cell(2, Column::kLayoutName), "2");

  commands_->Interrupt();
  EXPECT_TRUE(user_.interrupted());
  EXPECT_EQ(user_.message_texts().back(),
            globals_.messages.Get(core::kMsgInterrupted));
}

}  // namespace
}  // namespace lmt::frames

namespace lmt::frames {
namespace {

// Orderings, rounding and naming end to end on the repository's example:
// six FRAME_A3 references in two rows of three and three polyline frames
// below them (the third turned by 30 degrees), all on layer FRAMES.
class ExampleOrderingTest : public FrameCommandsTest {
 protected:
  void SetUp() override {
    Open(TestdataPath("example.dxf"));
    windows_.okno_filter.check_tolko_v_sloe.set_checked(true);
    windows_.okno_filter.combo_sloy_linii.set_text("FRAMES");
    windows_.okno_lmt.option_block_poisk.Select(1);  // the whole sheet
  }

  void Search(SortOrder order, Rounding rounding = Rounding::kWhole) {
    windows_.okno_lmt.option_sortirovka_spisok.Select(static_cast<int>(order));
    windows_.okno_option.option_okruglenie.Select(static_cast<int>(rounding));
    if (order == SortOrder::kPolyline) user_.QueuePick({"C2"});
    ASSERT_EQ(SearchAll(host::Point{200000, 30000}), host::Outcome::kDone);
    ASSERT_EQ(state_.table.last_row(), 9);
  }
};

double num(const FrameTable& t, int r, Column c) {
  return t.Number(r, c).value_or(NAN);
}

TEST_F(ExampleOrderingTest, EveryOrderSortsByItsKeys) {
  struct Case {
    SortOrder order;
    // Whether row b may follow row a.
    bool (*in_order)(const FrameTable& t, int a, int b);
  };
  const Case cases[] = {
      {SortOrder::kColumnsTopDown,
       [](const FrameTable& t, int a, int b) {
         double xa = num(t, a, Column::kSortX), xb = num(t, b, Column::kSortX);
         return xa < xb || (xa == xb && num(t, a, Column::kSortY) >=
                                            num(t, b, Column::kSortY));
       }},
      {SortOrder::kColumnsBottomUp,
       [](const FrameTable& t, int a, int b) {
         double xa = num(t, a, Column::kSortX), xb = num(t, b, Column::kSortX);
         return xa < xb || (xa == xb && num(t, a, Column::kSortY) <=
                                            num(t, b, Column::kSortY));
       }},
      {SortOrder::kRowsTopDown,
       [](const FrameTable& t, int a, int b) {
         double ya = num(t, a, Column::kSortY), yb = num(t, b, Column::kSortY);
         return ya > yb || (ya == yb && num(t, a, Column::kSortX) <=
                                            num(t, b, Column::kSortX));
       }},
      {SortOrder::kRowsBottomUp,
       [](const FrameTable& t, int a, int b) {
         double ya = num(t, a, Column::kSortY), yb = num(t, b, Column::kSortY);
         return ya < yb || (ya == yb && num(t, a, Column::kSortX) <=
                                            num(t, b, Column::kSortX));
       }},
      {SortOrder::kStartPoint,
       [](const FrameTable& t, int a, int b) {
         return num(t, a, Column::kDist) <= num(t, b, Column::kDist);
       }},
      {SortOrder::kAttribute,
       [](const FrameTable& t, int a, int b) {
         return FrameTable::CompareCells(t.Cell(a, Column::kAttribute),
                                         t.Cell(b, Column::kAttribute)) <= 0;
       }},
      {SortOrder::kPolyline,
       [](const FrameTable& t, int a, int b) {
         return num(t, a, Column::kPoly) <= num(t, b, Column::kPoly);
       }},
  };
  windows_.okno_lmt.uni_text_name_atribute.set_text("SHEET");
  for (const Case& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.order));
    Search(c.order);
    for (int r = 1; r < 9; ++r) {
      EXPECT_TRUE(c.in_order(state_.table, r, r + 1)) << "rows " << r;
    }
    EXPECT_EQ(Cell(9, Column::kNumber), "9");
  }
  EXPECT_EQ(state_.direction.size(), 4u);
  EXPECT_FALSE(Cell(1, Column::kPolyX).empty());
}

TEST_F(ExampleOrderingTest, RowsTopDownReadsTheSheetSet) {
  Search(SortOrder::kRowsTopDown);
  // The turned polyline frame's centre lies higher than its neighbours'.
  EXPECT_EQ(Handles(), (std::vector<std::string>{"94", "9B", "A2", "A9", "B0",
                                                 "B7", "C2", "BE", "C0"}));
  EXPECT_EQ(state_.start, (Point{200000, 30000}));
  EXPECT_NEAR(Number(1, Column::kDist),
              std::hypot(200000 - 21000, 30000 - 14850), 1);
}

TEST_F(ExampleOrderingTest, RoundingStepsOfSortCoordinates) {
  const std::pair<Rounding, double> steps[] = {{Rounding::kWhole, 1},
                                               {Rounding::kOne, 1},
                                               {Rounding::kTen, 10},
                                               {Rounding::kHundred, 100}};
  for (auto [rounding, step] : steps) {
    Search(SortOrder::kColumnsTopDown, rounding);
    const int turned = RowOf("C2");
    const double raw_x =
        (Number(turned, Column::kMinX) + Number(turned, Column::kMaxX)) / 2;
    EXPECT_EQ(Number(turned, Column::kSortX), std::round(raw_x / step) * step);
  }
}

TEST_F(ExampleOrderingTest, NamingWithEveryCodeCleansForbiddenCharacters) {
  windows_.okno_lmt.uni_text_name_atribute.set_text("TITLE");
  windows_.okno_lmt.text_stroka_name_file.set_text("10/11/12/20/30/31/99");
  windows_.okno_lmt.uni_text_leyout_name0.set_text("P<");
  windows_.okno_lmt.uni_text_leyout_name1.set_text("a:b");
  windows_.okno_lmt.uni_text_leyout_name2.set_text("-");
  Search(SortOrder::kRowsTopDown);
  EXPECT_EQ(Cell(1, Column::kLayoutName), "P.a.b-1FRAME_A3Site plan");
  EXPECT_EQ(Cell(7, Column::kLayoutName), "P.a.b-7");  // a polyline frame
  windows_.okno_lmt.text_stroka_name_file.set_text("");
  commands_->Update();
  EXPECT_EQ(Cell(7, Column::kLayoutName), "7");
}

}  // namespace
}  // namespace lmt::frames

// Deletion outside a viewport on real drawings through the embedded host;
// what is left is read back by ezdxf after saving.
#include "utilities/delete_outside_viewport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "testing/failing_host.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"
#include "utilities/test_support.h"

namespace lmt::utilities {
namespace {

using test::Described;
using test::EmbeddedSession;

const std::string kSheets = test::TestdataPath("utilities/sheets.dxf");
// sheets.dxf: model space, and what the 1:100 viewport 9C on "A3" touches.
const std::vector<std::string> kAllModel = {"8A", "8B", "8C", "8D",
                                            "8E", "8F", "90"};
const std::vector<std::string> kInsideA3 = {"8A", "8B", "8E", "8F"};

TEST(ViewportModelWindowTest, OutlineCarriedIntoModelAroundTheViewCentre) {
  Result<ModelWindow> window =
      ViewportModelWindow({5000, 3000, 0}, 420, 297, 0.01, -1, 2);
  ASSERT_TRUE(window.ok());
  EXPECT_DOUBLE_EQ(window->corner1.x, -16000);
  EXPECT_DOUBLE_EQ(window->corner1.y, -11850);
  EXPECT_DOUBLE_EQ(window->corner2.x, 26000);
  EXPECT_DOUBLE_EQ(window->corner2.y, 17850);
  EXPECT_EQ(window->corner1.z, -1);
  EXPECT_EQ(window->corner2.z, 2);
  EXPECT_EQ(ViewportModelWindow({}, 420, 297, 0, 0, 0).status().code(),
            StatusCode::kInvalidArgument);
}

class DeleteOutsideTest : public ::testing::Test {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_EZDXF(); }

  // Opens `path` with `layout` current (the user picks on a layout).
  void Open(const std::string& path, const std::string& layout) {
    source_ = path;
    s_ = std::make_unique<EmbeddedSession>(path);
    ASSERT_TRUE(s_->document);
    if (layout.empty()) return;
    Result<host::LayoutsPtr> layouts = s_->document->Layouts();
    ASSERT_TRUE(layouts.ok());
    Result<host::LayoutPtr> item = (*layouts)->Item(layout);
    ASSERT_TRUE(item.ok());
    ASSERT_TRUE(s_->document->SetActiveLayout(*item).ok());
  }

  host::Outcome Run(std::vector<std::string> pick) {
    s_->user.QueuePick(std::move(pick));
    return DeleteOutsideViewport(s_->session, &report_);
  }

  // Saves, checks with the shared checker and reads back with ezdxf.
  Described Saved() {
    std::string out = (dir_ / "out.dxf").string();
    s_->SaveAs(out);
    EXPECT_EQ(test::CheckDxf(out, source_), "");
    return test::Describe(out);
  }

  std::vector<std::string> Messages() const { return s_->user.message_texts(); }

  testing::TempDir dir_;
  std::string source_;
  std::unique_ptr<EmbeddedSession> s_;
  DeleteOutsideReport report_;
};

TEST_F(DeleteOutsideTest, KeepsWhatCrossesTheWindowAtOneToHundred) {
  Open(kSheets, "A3");
  EXPECT_EQ(Run({"9C"}), host::Outcome::kDone);
  EXPECT_EQ(report_.viewport, "9C");
  EXPECT_NEAR(report_.window.corner1.x, -16000, 1e-6);
  EXPECT_NEAR(report_.window.corner1.y, -11850, 1e-6);
  EXPECT_NEAR(report_.window.corner2.x, 26000, 1e-6);
  EXPECT_NEAR(report_.window.corner2.y, 17850, 1e-6);
  EXPECT_EQ(report_.kept, 4);
  EXPECT_EQ(report_.erased, 3);
  EXPECT_TRUE(report_.skips.empty());

  Described saved = Saved();
  // 8B runs from inside across the right edge and is kept whole; the circle
  // 8C just beyond that edge goes.
  EXPECT_EQ(saved.model, kInsideA3);
  EXPECT_EQ(saved.paper, test::Describe(kSheets).paper);
  EXPECT_FALSE(saved.viewports.at("9C").locked);

  EXPECT_EQ(s_->user.activated_captions().size(), 1u);
  ASSERT_EQ(s_->user.pick_filters().size(), 1u);
  host::SelectionFilter viewports;
  viewports.Add(0, std::string("VIEWPORT"));
  EXPECT_EQ(s_->user.pick_filters()[0], viewports);
  ASSERT_EQ(s_->user.messages().size(), 1u);
  EXPECT_EQ(s_->user.messages()[0],
            (host::Message{"Ok", host::MessageIcon::kInformation,
                           host::MessageButtons::kOk, "Лайомат"}));
}

TEST_F(DeleteOutsideTest, TwoPickedProcessesTheFirstAndUnlocksIt) {
  Open(kSheets, "Pair");
  // A3 is locked and shows only the far circle; A4 (second) shows the rest.
  EXPECT_EQ(Run({"A3", "A4"}), host::Outcome::kDone);
  EXPECT_EQ(report_.viewport, "A3");
  Described saved = Saved();
  EXPECT_EQ(saved.model, std::vector<std::string>{"90"});
  EXPECT_FALSE(saved.viewports.at("A3").locked);
  EXPECT_FALSE(saved.viewports.at("A4").on);
}

TEST_F(DeleteOutsideTest, TwistedViewportWindowFollowsTheView) {
  // twisted.dxf: the 1:100 viewport 94 is twisted by 30 degrees around
  // (5000, 3000). 8D lies inside the turned window but outside its
  // axis-aligned box, 8E the other way round.
  Open(test::TestdataPath("utilities/twisted.dxf"), "Turned");
  EXPECT_EQ(Run({"94"}), host::Outcome::kDone);
  EXPECT_TRUE(report_.skips.empty());
  // Circle at the centre, line from it far out, the turned-only square.
  EXPECT_EQ(Saved().model, (std::vector<std::string>{"8A", "8C", "8D"}));
}

// A drawing written by a CAD program, with tables, hatches, images, solids
// and groups outside the window: what the erased entities own (nested
// dictionaries, the tables' XRECORD contents, an image's reactor, a solid's
// history) goes with them, and the groups they empty are removed, so the
// saved file is as clean as the source.
TEST_F(DeleteOutsideTest, ErasedEntitiesOfACadDrawingLeaveNoOrphans) {
  LMT_SKIP_WITHOUT_SHARED();
  Open(test::SamplePath("s_AC1032.dxf"), "Layout1");
  EXPECT_EQ(Run({"245"}), host::Outcome::kDone);
  EXPECT_GT(report_.erased, 0);
  std::string out = (dir_ / "out.dxf").string();
  s_->SaveAs(out);
  EXPECT_EQ(testing::DxfProblems(out), "");
}

TEST_F(DeleteOutsideTest, ModelTabRefusesBeforeAnyPick) {
  Open(kSheets, "");
  EXPECT_EQ(DeleteOutsideViewport(s_->session, &report_),
            host::Outcome::kRefused);
  EXPECT_EQ(Messages(), std::vector<std::string>{"Невозможно в Модель !"});
  EXPECT_EQ(s_->user.messages()[0].icon, host::MessageIcon::kCritical);
  EXPECT_TRUE(s_->user.pick_filters().empty());
  EXPECT_EQ(Saved().model, kAllModel);
}

TEST_F(DeleteOutsideTest, NothingPickedRefusesWithNoObjects) {
  for (std::vector<std::string> pick :
       {std::vector<std::string>{}, std::vector<std::string>{"8A"}}) {
    Open(kSheets, "A3");
    EXPECT_EQ(Run(pick), host::Outcome::kRefused);
    EXPECT_EQ(Messages(),
              std::vector<std::string>{"Нет объектов для обработки !"});
    EXPECT_EQ(s_->user.messages()[0].icon, host::MessageIcon::kCritical);
    EXPECT_EQ(Saved().model, kAllModel);
  }
}

// A refusal that leaves the keep set uncertain erases nothing.
struct RefusalCase {
  const char* name;
  const char* member;
  int allow_first;
  const char* step;
};

class DeleteOutsideRefusalTest
    : public DeleteOutsideTest,
      public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(DeleteOutsideRefusalTest, ErasesNothingAndStillSaysOk) {
  const RefusalCase& c = GetParam();
  Open(kSheets, "A3");
  testing::FailingHost failing(s_->application());
  failing.Refuse(c.member, c.allow_first, 1);
  EXPECT_EQ(Run({"9C"}), host::Outcome::kDone);
  EXPECT_GE(report_.skips.Count(c.step), 1) << c.step;
  EXPECT_EQ(report_.erased, 0);
  EXPECT_EQ(Messages(), std::vector<std::string>{"Ok"});
  Described saved = Saved();
  EXPECT_EQ(saved.model, kAllModel);
  EXPECT_FALSE(saved.viewports.at("9C").locked);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, DeleteOutsideRefusalTest,
    ::testing::Values(
        RefusalCase{"WindowSelection", "SelectionSet.Select", 0, "select"},
        RefusalCase{"ViewCentre", "Document.GetVariable", 1, "view centre"},
        RefusalCase{"Scale", "PViewport.CustomScale", 0, "scale"},
        RefusalCase{"EnterViewport", "Document.SetMSpace", 1, "model space"},
        RefusalCase{"KeepSet", "SelectionSet.AddItems", 0, "add"},
        RefusalCase{"TakeOutOfErase", "SelectionSet.RemoveItems", 1, "remove"}),
    [](const ::testing::TestParamInfo<RefusalCase>& info) {
      return std::string(info.param.name);
    });

}  // namespace
}  // namespace lmt::utilities

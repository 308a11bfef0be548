// Switching viewports on real drawings through the embedded host, read back
// by ezdxf after saving.
#include "utilities/viewports_on_off.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "testing/failing_host.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"
#include "utilities/named_sets.h"
#include "utilities/test_support.h"

namespace lmt::utilities {
namespace {

using test::Described;
using test::EmbeddedSession;

// Runs the window's Start with the given choice and returns the saved
// drawing as ezdxf reads it (checked by the shared checker first).
struct StartRun {
  host::Outcome outcome;
  SwitchReport report;
  Described saved;
  std::vector<host::Message> messages;
};

StartRun RunStart(EmbeddedSession& s, bool checked, int option,
                  const testing::TempDir& dir) {
  s.windows.okno_function_on_off_viewport.check_viewport_on_off.set_checked(
      checked);
  s.windows.okno_function_on_off_viewport.option_viewport_on_off.Select(option);
  StartRun run;
  run.outcome = StartViewportsOnOff(s.session, &run.report);
  std::string out = (dir / "out.dxf").string();
  s.SaveAs(out);
  run.saved = test::Describe(out);
  run.messages = s.user.messages();
  return run;
}

std::map<std::string, bool> OnStates(const Described& d) {
  std::map<std::string, bool> states;
  for (const auto& [handle, state] : d.viewports) states[handle] = state.on;
  return states;
}

struct SwitchCase {
  const char* name;
  std::string path;
  int option;  // 0 on, 1 off
  // Every viewport afterwards; the layouts' own (id 1) keep their state.
  std::map<std::string, bool> expected_on;
  int switched;
};

class SwitchTableTest : public ::testing::TestWithParam<SwitchCase> {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_EZDXF(); }
};

TEST_P(SwitchTableTest, SwitchesAllButTheLayoutsOwnViewports) {
  const SwitchCase& c = GetParam();
  LMT_SKIP_WITHOUT_SHARED_FOR(c.path);
  testing::TempDir dir;
  EmbeddedSession s(c.path);
  ASSERT_TRUE(s.document);
  StartRun run = RunStart(s, true, c.option, dir);
  EXPECT_EQ(run.outcome, host::Outcome::kDone);
  EXPECT_TRUE(run.report.skips.empty());
  EXPECT_EQ(run.report.switched, c.switched);
  EXPECT_EQ(OnStates(run.saved), c.expected_on);
  EXPECT_EQ(test::CheckDxf((dir / "out.dxf").string(), c.path), "");
  ASSERT_EQ(run.messages.size(), 1u);
  EXPECT_EQ(run.messages[0],
            (host::Message{"Ok", host::MessageIcon::kInformation,
                           host::MessageButtons::kOk, "Лайомат"}));
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, SwitchTableTest,
    ::testing::Values(
        SwitchCase{"ThreeLayoutsOff",
                   test::SamplePath("s_AC1032.dxf"),
                   1,
                   {{"240", true},
                    {"245", false},
                    {"252", true},
                    {"256", false},
                    {"267", true},
                    {"26B", false}},
                   3},
        // 68 = 0 on viewports that are on: the state lives in group 90.
        SwitchCase{
            "StatusZeroOff",
            test::SamplePath("text_negative_extrusion.dxf"),
            1,
            {{"466", true}, {"46A", false}, {"477", true}, {"47B", false}},
            2},
        SwitchCase{"StatusZeroOn",
                   test::SamplePath("text_negative_extrusion.dxf"),
                   0,
                   {{"466", true}, {"46A", true}, {"477", true}, {"47B", true}},
                   2},
        // "Own" holds only its own viewport; "Pair" has one off, one locked.
        SwitchCase{"SheetsOn",
                   test::TestdataPath("utilities/sheets.dxf"),
                   0,
                   {{"95", true},
                    {"9B", true},
                    {"9C", true},
                    {"A2", true},
                    {"A3", true},
                    {"A4", true}},
                   3},
        SwitchCase{"SheetsOff",
                   test::TestdataPath("utilities/sheets.dxf"),
                   1,
                   {{"95", true},
                    {"9B", true},
                    {"9C", false},
                    {"A2", true},
                    {"A3", false},
                    {"A4", false}},
                   3},
        // Our own sheet set (testdata/releases): "Sheets" has one viewport
        // on and one off, "Status" the same with 68 = 0 on both; the
        // layouts' own viewports are 51, 58 and 5E.
        SwitchCase{"Release2000Off",
                   test::TestdataPath("releases/sheets_2000.dxf"),
                   1,
                   {{"51", true},
                    {"52", false},
                    {"53", false},
                    {"58", true},
                    {"5E", true},
                    {"5F", false},
                    {"60", false}},
                   4},
        SwitchCase{"Release2018On",
                   test::TestdataPath("releases/sheets_2018.dxf"),
                   0,
                   {{"51", true},
                    {"52", true},
                    {"53", true},
                    {"58", true},
                    {"5E", true},
                    {"5F", true},
                    {"60", true}},
                   4},
        SwitchCase{"BinaryOff",
                   test::TestdataPath("releases/sheets_2018_bin.dxf"),
                   1,
                   {{"51", true},
                    {"52", false},
                    {"53", false},
                    {"58", true},
                    {"5E", true},
                    {"5F", false},
                    {"60", false}},
                   4}),
    [](const ::testing::TestParamInfo<SwitchCase>& info) {
      return std::string(info.param.name);
    });

TEST(ViewportsOnOffTest, LayoutsOwnViewportIsNeverSwitchedOn) {
  LMT_SKIP_WITHOUT_EZDXF();
  testing::TempDir dir;
  EmbeddedSession s(test::TestdataPath("utilities/sheets.dxf"));
  // "Own" holds nothing but its own viewport; switch it off by hand first.
  Result<host::ObjectPtr> own = s.document->ObjectIdToObject(0x95);
  ASSERT_TRUE(own.ok());
  ASSERT_TRUE(host::As<host::PViewport>(*own)->SetViewportOn(false).ok());
  StartRun run = RunStart(s, true, 0, dir);
  EXPECT_EQ(run.report.own_viewports, 3);
  EXPECT_FALSE(run.saved.viewports.at("95").on);
  EXPECT_TRUE(run.saved.viewports.at("A4").on);
}

TEST(ViewportsOnOffTest, DrawingWithoutViewportsIsLeftAloneButSaysOk) {
  LMT_SKIP_WITHOUT_EZDXF();
  testing::TempDir dir;
  std::string source = test::TestdataPath("utilities/no_viewports.dxf");
  EmbeddedSession s(source);
  StartRun run = RunStart(s, true, 1, dir);
  EXPECT_EQ(run.outcome, host::Outcome::kDone);
  EXPECT_EQ(run.report.selected, 0);
  EXPECT_EQ(s.user.pump_count(), 0);
  Described before = test::Describe(source);
  EXPECT_EQ(run.saved.model, before.model);
  EXPECT_TRUE(run.saved.viewports.empty());
  EXPECT_EQ(s.user.message_texts(), std::vector<std::string>{"Ok"});
}

TEST(ViewportsOnOffTest, ClearCheckBoxDoesNothingButSaysOk) {
  LMT_SKIP_WITHOUT_EZDXF();
  testing::TempDir dir;
  EmbeddedSession s(test::TestdataPath("utilities/sheets.dxf"));
  StartRun run = RunStart(s, false, 1, dir);
  EXPECT_EQ(run.report.selected, 0);
  EXPECT_TRUE(run.saved.viewports.at("9C").on);
  EXPECT_EQ(s.user.message_texts(), std::vector<std::string>{"Ok"});
}

TEST(ViewportsOnOffTest, ProgressCountsEveryEntityAndPumpsBeforeEach) {
  LMT_SKIP_WITHOUT_SHARED();
  EmbeddedSession s(test::SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(s.document);
  ASSERT_TRUE(s.session.Connect());
  SwitchReport report = SwitchViewports(*s.document, s.user, false);
  EXPECT_EQ(report.selected, 6);
  EXPECT_EQ(report.own_viewports, 3);
  EXPECT_EQ(s.user.progress_maximum(), 6);
  EXPECT_EQ(s.user.progress_value(), 6);
  EXPECT_EQ(s.user.pump_count(), 6);
}

TEST(ViewportsOnOffTest, StaleSetIsReplacedNotAddedTo) {
  EmbeddedSession s(test::TestdataPath("utilities/sheets.dxf"));
  ASSERT_TRUE(s.session.Connect());
  Result<host::SelectionSetsPtr> sets = s.document->SelectionSets();
  ASSERT_TRUE(sets.ok());
  Result<host::SelectionSetPtr> stale = (*sets)->Add(kSetAllViewports);
  ASSERT_TRUE(stale.ok());
  ASSERT_TRUE((*stale)->Select(host::SelectMode::kAll, {}).ok());
  ASSERT_GT(*(*stale)->Count(), 6);

  SwitchReport report = SwitchViewports(*s.document, s.user, false);
  EXPECT_EQ(report.selected, 6);
  Result<host::SelectionSetPtr> now = (*sets)->Item(kSetAllViewports);
  ASSERT_TRUE(now.ok());
  EXPECT_EQ(*(*now)->Count(), 6);
  EXPECT_EQ(*(*sets)->Count(), 1);
}

TEST(ViewportsOnOffTest, RefusedViewportIsSkippedAndTheRestSwitched) {
  LMT_SKIP_WITHOUT_SHARED();
  LMT_SKIP_WITHOUT_EZDXF();
  testing::TempDir dir;
  EmbeddedSession s(test::SamplePath("s_AC1032.dxf"));
  ASSERT_TRUE(s.document);
  testing::FailingHost failing(s.application());
  failing.Refuse("PViewport.SetViewportOn", 0, 1);
  StartRun run = RunStart(s, true, 1, dir);
  EXPECT_EQ(run.outcome, host::Outcome::kDone);
  EXPECT_EQ(run.report.switched, 2);
  ASSERT_EQ(run.report.skips.skips().size(), 1u);
  const host::Skip& skip = run.report.skips.skips()[0];
  EXPECT_EQ(skip.step, "switch");
  EXPECT_EQ(skip.status.code(), StatusCode::kRefused);
  EXPECT_TRUE(run.saved.viewports.at(skip.object).on) << skip.object;
  int off = 0;
  for (const auto& [handle, state] : run.saved.viewports) off += !state.on;
  EXPECT_EQ(off, 2);
  EXPECT_EQ(s.user.message_texts(), std::vector<std::string>{"Ok"});
}

TEST(ViewportOffOnTest, NanoCadReachesTheTemporaryLayoutByDefaultMember) {
  EXPECT_EQ(TemporaryLayoutLookup("NanoCAD"), LayoutLookup::kDefaultMember);
  EXPECT_EQ(TemporaryLayoutLookup("nanocad"), LayoutLookup::kDefaultMember);
  for (std::string_view other : {"AutoCAD", "ZWCAD", "ZWCAD+", "BricsCAD",
                                 "GstarCAD", "ProgeCAD", "IntelliCAD"}) {
    EXPECT_EQ(TemporaryLayoutLookup(other), LayoutLookup::kItem) << other;
  }
}

TEST(ViewportOffOnTest, SwitchingOffShowsItsStatusAndNoTemporaryLayout) {
  EmbeddedSession s(test::TestdataPath("utilities/sheets.dxf"));
  ASSERT_TRUE(s.session.Connect());
  testing::FailingHost failing(s.application());
  SwitchReport report = ViewportOffOn(s.session, false);
  EXPECT_EQ(report.switched, 3);
  EXPECT_EQ(s.user.status_texts(),
            std::vector<std::string>{std::string(kStatusViewportsOff)});
  EXPECT_EQ(failing.CallCount("Layouts.Add"), 0);
  EXPECT_EQ(failing.CallCount("Document.SetActiveLayout"), 0);
}

class LeftoverLayoutTest : public ::testing::TestWithParam<host::HostKind> {};

TEST_P(LeftoverLayoutTest, ExistingTemporaryLayoutIsReusedThenDeleted) {
  EmbeddedSession s(test::TestdataPath("utilities/leftover.dxf"), GetParam());
  ASSERT_TRUE(s.session.Connect());
  testing::FailingHost failing(s.application());
  SwitchReport report = ViewportOffOn(s.session, true);
  EXPECT_EQ(report.switched, 3);
  EXPECT_EQ(s.user.status_texts(),
            std::vector<std::string>{std::string(kStatusViewportsOn)});
  EXPECT_EQ(failing.CallCount("Layouts.Add"), 0);
  EXPECT_EQ(failing.CallCount("Document.SetActiveLayout"), 1);
  EXPECT_EQ(failing.CallCount("Layout.Delete"), 1);
  Result<host::LayoutsPtr> layouts = s.document->Layouts();
  ASSERT_TRUE(layouts.ok());
  Result<host::LayoutPtr> left = (*layouts)->Item(kTemporaryLayoutName);
  if (report.skips.Count("delete layout") == 0) {
    EXPECT_EQ(left.status().code(), StatusCode::kNotFound);
  } else {
    // The embedded engine cannot delete layouts yet; the refusal is the
    // only reason the layout may stay.
    ASSERT_EQ(report.skips.skips().size(), 1u);
    EXPECT_EQ(report.skips.skips()[0].status.code(), StatusCode::kNotSupported);
  }
}

INSTANTIATE_TEST_SUITE_P(Hosts, LeftoverLayoutTest,
                         ::testing::Values(host::HostKind::kAutoCad,
                                           host::HostKind::kNanoCad));

TEST(ViewportOffOnTest, MissingTemporaryLayoutIsAddedAndNotLeftBehind) {
  EmbeddedSession s(test::TestdataPath("utilities/sheets.dxf"));
  ASSERT_TRUE(s.session.Connect());
  SwitchReport report = ViewportOffOn(s.session, true);
  EXPECT_EQ(report.switched, 3);
  Result<host::LayoutsPtr> layouts = s.document->Layouts();
  ASSERT_TRUE(layouts.ok());
  Result<host::LayoutPtr> left = (*layouts)->Item(kTemporaryLayoutName);
  if (report.skips.empty()) {
    EXPECT_EQ(left.status().code(), StatusCode::kNotFound);
  } else {
    // Without Layouts.Add in the embedded engine nothing was made, so
    // nothing can be left behind either.
    EXPECT_EQ(report.skips.skips()[0].step, "temporary layout");
    EXPECT_EQ(left.status().code(), StatusCode::kNotFound);
  }
}

}  // namespace
}  // namespace lmt::utilities

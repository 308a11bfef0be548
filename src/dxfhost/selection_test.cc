// Selection sets and the filter language on the example drawing: six
// FRAME_A3 references and three polyline frames on FRAMES, with circles,
// lines and texts on CONTENT, and a layout "Pattern" holding one text.
#include "dxfhost/selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dxfhost/test_support.h"

namespace lmt::dxfhost {
namespace {

using host::SelectionFilter;
using host::SelectMode;

class SelectionTest : public ::testing::Test {
 protected:
  SelectionTest() : s_(test::TestdataPath("example.dxf")) {}

  host::SelectionSetPtr NewSet(const std::string& name) {
    Result<host::SelectionSetsPtr> sets = s_.doc->SelectionSets();
    EXPECT_TRUE(sets.ok());
    Result<host::SelectionSetPtr> set = (*sets)->Add(name);
    EXPECT_TRUE(set.ok()) << set.status().ToString();
    return *set;
  }

  // Handles of what Select kAll with `filter` finds.
  std::vector<std::string> SelectAll(const SelectionFilter& filter) {
    host::SelectionSetPtr set = NewSet("S" + std::to_string(++counter_));
    Status st = set->Select(SelectMode::kAll, filter);
    EXPECT_TRUE(st.ok()) << st.ToString();
    return Handles(*set);
  }

  static std::vector<std::string> Handles(const host::SelectionSet& set) {
    std::vector<std::string> out;
    Result<std::vector<host::EntityPtr>> items = set.Items();
    EXPECT_TRUE(items.ok());
    for (const host::EntityPtr& e : *items) out.push_back(*e->Handle());
    return out;
  }

  test::Session s_;
  int counter_ = 0;
};

const std::vector<std::string> kFrameInserts = {"94", "9B", "A2",
                                                "A9", "B0", "B7"};
const std::vector<std::string> kFramePolylines = {"BE", "C0", "C2"};

TEST_F(SelectionTest, PickFilterAdmitsFourCornerPolylinesAndInserts) {
  // The template pick filter: polylines of 4 or 5 vertices, or any INSERT.
  SelectionFilter f;
  f.Add(-4, std::string("<OR"));
  f.Add(-4, std::string("<AND"));
  f.Add(0, std::string("LWPOLYLINE"));
  f.Add(-4, std::string(">="));
  f.Add(90, int32_t{4});
  f.Add(-4, std::string("<="));
  f.Add(90, int32_t{5});
  f.Add(-4, std::string("AND>"));
  f.Add(-4, std::string("<AND"));
  f.Add(0, std::string("INSERT"));
  f.Add(-4, std::string("AND>"));
  f.Add(-4, std::string("OR>"));
  std::vector<std::string> want = kFrameInserts;
  want.insert(want.end(), kFramePolylines.begin(), kFramePolylines.end());
  EXPECT_EQ(SelectAll(f), want);

  // The user picks a circle and a frame; only the frame passes.
  s_.user.QueuePick({"98", "94"});
  host::SelectionSetPtr picked = NewSet("VremeniyNaborPrint");
  ASSERT_TRUE(picked->SelectOnScreen(f).ok());
  EXPECT_EQ(Handles(*picked), std::vector<std::string>{"94"});
  ASSERT_EQ(s_.user.pick_filters().size(), 1u);
  EXPECT_EQ(s_.user.pick_filters()[0], f);
}

TEST_F(SelectionTest, VertexCountComparisonsExcludeOtherCounts) {
  SelectionFilter more;
  more.Add(0, std::string("LWPOLYLINE"));
  more.Add(-4, std::string(">="));
  more.Add(90, int16_t{5});
  EXPECT_TRUE(SelectAll(more).empty());
  SelectionFilter exact;
  exact.Add(0, std::string("LWPOLYLINE"));
  exact.Add(90, 4.0);
  EXPECT_EQ(SelectAll(exact), kFramePolylines);
}

TEST_F(SelectionTest, SearchFilterOfBlockFramesFindsTheModelReferences) {
  SelectionFilter f;
  f.Add(0, std::string("INSERT"));
  f.Add(8, std::string("FRAMES"));
  f.Add(2, std::string("FRAME_A3,`*U*"));
  f.Add(410, std::string("Model"));
  EXPECT_EQ(SelectAll(f), kFrameInserts);

  SelectionFilter other = f;
  other.values[2] = std::string("FRAME_A4,`*U*");
  EXPECT_TRUE(SelectAll(other).empty());
}

TEST_F(SelectionTest, EachPropertyCodeFilters) {
  struct Row {
    int16_t code;
    host::FilterValue value;
    size_t count;
  };
  const Row kRows[] = {
      {0, std::string("CIRCLE"), 9},
      {0, std::string("circle"), 9},  // names without wildcards ignore case
      {0, std::string("CIRCL"), 0},
      {0, std::string("CIRCLE,LINE"), 15},
      {0, std::string("*LINE"), 9},  // LINE and LWPOLYLINE
      {8, std::string("CONTENT"), 21},
      {8, std::string("Content"), 21},
      {8, std::string("~CONTENT"), 10},  // the frames and Pattern's text
      {6, std::string("BYLAYER"), 31},
      {62, int16_t{256}, 31},
      {62, std::string("BYLAYER"), 31},
      {62, int32_t{1}, 0},
      {370, int32_t{-1}, 31},
      {410, std::string("Model"), 30},
      {410, std::string("Pattern"), 1},
      {410, std::string("Layout1"), 0},
  };
  for (const Row& row : kRows) {
    SelectionFilter f;
    f.Add(row.code, row.value);
    EXPECT_EQ(SelectAll(f).size(), row.count) << "code " << row.code;
  }
}

TEST_F(SelectionTest, NotAndXorGroups) {
  SelectionFilter f;
  f.Add(410, std::string("Model"));
  f.Add(-4, std::string("<NOT"));
  f.Add(8, std::string("CONTENT"));
  f.Add(-4, std::string("NOT>"));
  EXPECT_EQ(SelectAll(f).size(), 9u);
  SelectionFilter ne;
  ne.Add(-4, std::string("!="));
  ne.Add(8, std::string("content"));
  EXPECT_EQ(SelectAll(ne).size(), 10u);
  SelectionFilter x;
  x.Add(-4, std::string("<XOR"));
  x.Add(0, std::string("INSERT"));
  x.Add(8, std::string("FRAMES"));
  x.Add(-4, std::string("XOR>"));
  EXPECT_EQ(SelectAll(x), kFramePolylines);
}

TEST_F(SelectionTest, MalformedFiltersAreRefusedAndSelectNothing) {
  const std::vector<std::vector<std::string>> kBad = {
      {"<OR"}, {"AND>"}, {"<AND", "OR>"}, {">="}, {"<NOT", "NOT>"}, {"~~"}};
  for (const auto& ops : kBad) {
    SelectionFilter f;
    for (const std::string& op : ops) f.Add(-4, op);
    host::SelectionSetPtr set = NewSet("bad" + std::to_string(++counter_));
    Status st = set->Select(SelectMode::kAll, f);
    EXPECT_EQ(st.code(), StatusCode::kInvalidArgument) << ops[0];
    EXPECT_EQ(*set->Count(), 0);
  }
}

TEST_F(SelectionTest, CrossingWindowUsesExtents) {
  // The first row's first frame spans (0,0)-(42000,29700); its circle
  // (r 6000 at (14000, 14850)) and line lie inside. A window around the
  // circle's right edge catches the circle and the frame outline crossing
  // nothing else.
  host::SelectionSetPtr set = NewSet("win");
  ASSERT_TRUE(set->Select(SelectMode::kCrossing, host::Point{19900, 14800, 0},
                          host::Point{20100, 14900, 0}, SelectionFilter{})
                  .ok());
  std::vector<std::string> got = Handles(*set);
  std::sort(got.begin(), got.end());
  EXPECT_EQ(got, (std::vector<std::string>{"94", "98", "99"}));

  host::SelectionSetPtr window = NewSet("inside");
  ASSERT_TRUE(window
                  ->Select(SelectMode::kWindow, host::Point{7000, 7000, 0},
                           host::Point{21000, 22000, 0}, SelectionFilter{})
                  .ok());
  EXPECT_EQ(Handles(*window), std::vector<std::string>{"98"});
}

TEST_F(SelectionTest, AddRemoveEraseAndDelete) {
  SelectionFilter circles;
  circles.Add(0, std::string("CIRCLE"));
  host::SelectionSetPtr all = NewSet("NaborModel");
  ASSERT_TRUE(all->Select(SelectMode::kAll, circles).ok());
  ASSERT_EQ(*all->Count(), 9);
  host::SelectionSetPtr keep = NewSet("ViewpObiektiNabor");
  ASSERT_TRUE(keep->AddItems({*all->Item(0), *all->Item(1)}).ok());
  ASSERT_TRUE(keep->AddItems({*all->Item(0)}).ok());  // no duplicates
  EXPECT_EQ(*keep->Count(), 2);
  ASSERT_TRUE(all->RemoveItems(*keep->Items()).ok());
  EXPECT_EQ(*all->Count(), 7);
  ASSERT_TRUE(all->Erase().ok());
  EXPECT_EQ(*all->Count(), 0);
  EXPECT_EQ(SelectAll(circles).size(), 2u);

  Result<host::SelectionSetsPtr> sets = s_.doc->SelectionSets();
  EXPECT_EQ((*sets)->Add("naboRMODEL").status().code(), StatusCode::kRefused);
  ASSERT_TRUE(all->Delete().ok());
  EXPECT_EQ((*sets)->Item("NaborModel").status().code(), StatusCode::kNotFound);
  EXPECT_EQ(all->Count().status().code(), StatusCode::kNotFound);
  EXPECT_TRUE((*sets)->Add("NaborModel").ok());
}

TEST_F(SelectionTest, WalkOneAtATimeFollowsItemsAndStopsWhenAsked) {
  SelectionFilter circles;
  circles.Add(0, std::string("CIRCLE"));
  host::SelectionSetPtr set = NewSet("walk");
  ASSERT_TRUE(set->Select(SelectMode::kAll, circles).ok());
  ASSERT_TRUE(set->RemoveItems({*set->Item(0)}).ok());
  std::vector<std::string> walked;
  ASSERT_TRUE(set->ForEachItem([&](const host::EntityPtr& e) {
                   walked.push_back(*e->Handle());
                   return true;
                 })
                  .ok());
  EXPECT_EQ(walked, Handles(*set));
  int visits = 0;
  ASSERT_TRUE(
      set->ForEachItem([&](const host::EntityPtr&) { return ++visits < 3; })
          .ok());
  EXPECT_EQ(visits, 3);
  ASSERT_TRUE(set->Delete().ok());
  EXPECT_EQ(
      set->ForEachItem([](const host::EntityPtr&) { return true; }).code(),
      StatusCode::kNotFound);
}

TEST_F(SelectionTest, NamedWalkMakesOnlyTheNamedMembers) {
  // Everything of model space: frames among lines, circles and texts.
  SelectionFilter model;
  model.Add(410, std::string("Model"));
  host::SelectionSetPtr set = NewSet("named");
  ASSERT_TRUE(set->Select(SelectMode::kAll, model).ok());
  Result<std::vector<host::EntityPtr>> items = set->Items();
  ASSERT_TRUE(items.ok());
  const std::string_view names[] = {"acdbpolyline", "AcDbBlockReference"};
  std::vector<std::pair<int32_t, std::string>> expected;
  for (size_t i = 0; i < items->size(); ++i) {
    std::string name = *(*items)[i]->ObjectName();
    if (name == "AcDbPolyline" || name == "AcDbBlockReference") {
      expected.emplace_back(static_cast<int32_t>(i), *(*items)[i]->Handle());
    }
  }
  ASSERT_LT(expected.size(), items->size());  // some are passed over
  std::vector<std::pair<int32_t, std::string>> walked;
  ASSERT_TRUE(set->ForEachItemNamed(names,
                                    [&](const host::EntityPtr& e, int32_t at) {
                                      walked.emplace_back(at, *e->Handle());
                                      return true;
                                    })
                  .ok());
  EXPECT_EQ(walked, expected);
  std::vector<std::string> frames = kFrameInserts;
  frames.insert(frames.end(), kFramePolylines.begin(), kFramePolylines.end());
  std::vector<std::string> handles;
  for (const auto& w : walked) handles.push_back(w.second);
  std::sort(frames.begin(), frames.end());
  std::sort(handles.begin(), handles.end());
  EXPECT_TRUE(std::includes(handles.begin(), handles.end(), frames.begin(),
                            frames.end()));

  int visits = 0;
  ASSERT_TRUE(
      set->ForEachItemNamed(names, [&](const host::EntityPtr&,
                                       int32_t) { return ++visits < 2; })
          .ok());
  EXPECT_EQ(visits, 2);
}

TEST_F(SelectionTest, OneTypeSelectionKeepsUpWithTheDrawing) {
  // The same question without naming one type (a group of one) takes the
  // walk over every entity: both must agree after each change.
  SelectionFilter texts;
  texts.Add(0, std::string("text"));
  SelectionFilter walked;
  walked.Add(-4, std::string("<OR"));
  walked.Add(0, std::string("TEXT"));
  walked.Add(-4, std::string("OR>"));
  const std::vector<std::string> before = SelectAll(texts);
  ASSERT_FALSE(before.empty());
  EXPECT_EQ(before, SelectAll(walked));

  host::SelectionSetPtr first = NewSet("first");
  ASSERT_TRUE(first->Select(SelectMode::kAll, texts).ok());
  ASSERT_TRUE(first->RemoveItems({*first->Item(1)}).ok());
  ASSERT_TRUE(first->Erase().ok());  // all but the second

  host::BlockPtr model = *s_.doc->ModelSpace();
  ASSERT_TRUE(model->AddText("new", host::Point{1, 2, 0}, 2.5).ok());
  host::LayoutPtr pattern = *(*s_.doc->Layouts())->Item("Pattern");
  ASSERT_TRUE(
      (*pattern->Block())->AddText("paper", host::Point{3, 4, 0}, 2.5).ok());

  const std::vector<std::string> after = SelectAll(texts);
  EXPECT_EQ(after.size(), 3u);  // the second, and the two new ones
  EXPECT_EQ(after[0], before[1]);
  EXPECT_EQ(after, SelectAll(walked));
}

TEST_F(SelectionTest, CancelledPickSelectsNothing) {
  s_.user.QueuePickCancel();
  host::SelectionSetPtr set = NewSet("pick");
  EXPECT_EQ(set->SelectOnScreen(SelectionFilter{}).code(),
            StatusCode::kCancelled);
  EXPECT_EQ(*set->Count(), 0);
  s_.user.QueuePick({});
  EXPECT_TRUE(set->SelectOnScreen(SelectionFilter{}).ok());
  EXPECT_EQ(*set->Count(), 0);
}

}  // namespace
}  // namespace lmt::dxfhost

// The frame tools as a user runs them on the example drawing: the frames
// highlighted (frames --mark) and the highlighting removed (unmark), read
// back with ezdxf (testdata/cli/read_back.py).
#include <gtest/gtest.h>

#ifndef _WIN32
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/layomat_run_test_support.h"
#include "testing/dxf_check.h"
#include "testing/shell.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

class FrameToolsTest : public ::testing::Test {
 protected:
  void SetUp() override { LMT_SKIP_WITHOUT_EZDXF(); }

  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }
  std::string Out(const std::string& name) { return (dir_ / name).string(); }
  static std::string Q(const std::string& path) {
    return testing::ShellQuote(path);
  }

  // read_back.py's lines for `word` on `path`.
  std::vector<std::string> ReadBack(const std::string& word,
                                    const std::string& path,
                                    const std::string& out = "") {
    std::vector<std::string> args = {word, path};
    if (!out.empty()) args.push_back(out);
    testing::ShellRun run = test::RunTestScript("read_back.py", args);
    EXPECT_EQ(run.status, 0) << run.out;
    std::vector<std::string> lines;
    std::istringstream in(run.out);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

  // "№" -> "X1,Y1 X2,Y2 X3,Y3 X4,Y4" of each row of `frames --json`, the
  // numbers as read_back.py prints them.
  static std::map<std::string, std::string> CornersOf(const std::string& json) {
    auto value = [&](size_t& at, const std::string& key) {
      const std::string open = "\"" + key + "\": \"";
      at = json.find(open, at) + open.size();
      return json.substr(at, json.find('"', at) - at);
    };
    std::map<std::string, std::string> corners;
    for (size_t at = json.find("{\"№\""); at != std::string::npos;
         at = json.find("{\"№\"", at)) {
      const std::string number = value(at, "№");
      std::string text;
      for (int i = 1; i <= 4; ++i) {
        char x[32], y[32];
        std::snprintf(x, sizeof x, "%.6f",
                      std::stod(value(at, "PointX" + std::to_string(i))));
        std::snprintf(y, sizeof y, "%.6f",
                      std::stod(value(at, "PointY" + std::to_string(i))));
        text += (i > 1 ? " " : "") + std::string(x) + "," + y;
      }
      corners[number] = text;
    }
    return corners;
  }

  const std::string example_ = LMT_TESTDATA_DIR "/example.dxf";
  testing::TempDir dir_;
};

TEST_F(FrameToolsTest, MarksOutlineEveryFrameAndUnmarkLeavesNoTrace) {
  test::LayomatRun table = Layomat("frames " + Q(example_) + " --json");
  ASSERT_EQ(table.status, 0) << table.err;
  const std::map<std::string, std::string> corners = CornersOf(table.out);
  ASSERT_EQ(corners.size(), 9u);

  const std::string marked = Out("marked.dxf");
  test::LayomatRun mark =
      Layomat("frames " + Q(example_) + " --mark " + Q(marked));
  ASSERT_EQ(mark.status, 0) << mark.err;
  EXPECT_NE(mark.err.find("9 of 9 frames highlighted"), std::string::npos);
  EXPECT_EQ(
      testing::DxfProblems(marked, testing::RunDxfCheck(example_).structural),
      "");

  int outlines = 0;
  std::map<std::string, int> numbers;
  for (const std::string& line : ReadBack("marks", marked)) {
    std::istringstream in(line);
    std::string word, kind, layer, number, shape;
    in >> word >> kind >> layer >> number >> shape;
    if (word != "mark") continue;
    EXPECT_EQ(layer, "AViewport") << line;
    std::string rest;
    std::getline(in, rest);
    if (kind == "outline") {
      ++outlines;
      EXPECT_EQ(shape, "closed") << line;
      EXPECT_EQ(rest.substr(1), corners.at(number)) << "row " << number;
    } else {
      EXPECT_EQ(kind, "number") << line;
      ++numbers[number];
    }
  }
  EXPECT_EQ(outlines, 9);
  EXPECT_EQ(numbers.size(), 9u);

  // Highlighting a highlighted drawing again replaces the marks.
  const std::string twice = Out("twice.dxf");
  ASSERT_EQ(Layomat("frames " + Q(marked) + " --mark " + Q(twice)).status, 0);
  EXPECT_EQ(ReadBack("marks", twice), ReadBack("marks", marked));

  const std::string clean = Out("clean.dxf");
  test::LayomatRun unmark = Layomat("unmark " + Q(twice) + " -o " + Q(clean));
  ASSERT_EQ(unmark.status, 0) << unmark.err;
  EXPECT_NE(unmark.err.find("18 highlighting objects removed"),
            std::string::npos);
  EXPECT_EQ(ReadBack("marks", clean), ReadBack("marks", example_));
  EXPECT_EQ(ReadBack("listing", clean), ReadBack("listing", example_));

  // Nothing left to remove: a refusal that writes nothing.
  const std::string again = Out("again.dxf");
  test::LayomatRun none = Layomat("unmark " + Q(clean) + " -o " + Q(again));
  EXPECT_EQ(none.status, 1);
  EXPECT_NE(none.err.find("no frame highlighting"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(again));
}

TEST_F(FrameToolsTest, UnmarkKeepsTheUsersObjectsOnTheMarkLayer) {
  const std::string with_line = Out("with_line.dxf");
  ReadBack("add-line", example_, with_line);
  const std::string marked = Out("marked.dxf");
  ASSERT_EQ(Layomat("frames " + Q(with_line) + " --mark " + Q(marked)).status,
            0);
  const std::string clean = Out("clean.dxf");
  ASSERT_EQ(Layomat("unmark " + Q(marked) + " -o " + Q(clean)).status, 0);
  const std::vector<std::string> listing = ReadBack("listing", clean);
  EXPECT_EQ(listing, ReadBack("listing", with_line));
  int lines_on_layer = 0;
  for (const std::string& line : listing) {
    if (line.rfind("LINE ", 0) == 0 &&
        line.find("'AViewport'") != std::string::npos) {
      ++lines_on_layer;
    }
  }
  EXPECT_EQ(lines_on_layer, 1);
}

TEST_F(FrameToolsTest, ViewPerFrameShowsItWholeAndLevel) {
  const std::string names =
      " --set OknoLmt.TextStrokaNameFile=10/20"
      " --set OknoLmt.UniTextLeyoutName0=Sheet-";
  const std::string views = Out("views.dxf");
  test::LayomatRun run =
      Layomat("views " + Q(example_) + names + " -o " + Q(views));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("9 views made, 0 replaced"), std::string::npos);
  const std::vector<std::string> read = ReadBack("views", views);
  ASSERT_EQ(read.size(), 9u);
  // Centre, width and height with the 5 % margin, twist in degrees: an
  // upright A3 sheet, a title strip, and the sheet turned by 30 degrees,
  // which the view turns back.
  for (const char* expected :
       {"view Sheet-1 21000.000000 -64550.000000 44100.000000 31185.000000 "
        "0.000000",
        "view Sheet-2 33000.000000 2750.000000 18900.000000 5775.000000 "
        "0.000000",
        "view Sheet-7 104761.533479 -56039.522754 44100.000000 31185.000000 "
        "330.000000"}) {
    EXPECT_NE(std::find(read.begin(), read.end(), expected), read.end())
        << expected;
  }
  EXPECT_EQ(
      testing::DxfProblems(views, testing::RunDxfCheck(example_).structural),
      "");

  // Views of the same names are kept unless the user says yes.
  test::LayomatRun kept =
      Layomat("views " + Q(views) + names + " -o " + Q(Out("kept.dxf")));
  EXPECT_EQ(kept.status, 1);
  EXPECT_NE(kept.err.find("view Sheet-7 exists; kept"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(Out("kept.dxf")));
  const std::string again = Out("again.dxf");
  test::LayomatRun replaced =
      Layomat("views " + Q(views) + names + " --yes -o " + Q(again));
  ASSERT_EQ(replaced.status, 0) << replaced.err;
  EXPECT_NE(replaced.out.find("0 views made, 9 replaced"), std::string::npos);
  EXPECT_EQ(ReadBack("views", again), read);
}

// The model view zoomed onto one frame: centred on it, the height fitting
// the frame and its 5 % margin (42000 x 29700 plus 2100 on every side, the
// width over the drawing's aspect ratio of 1.34), the turned sheet turned
// back, and model space made current.
TEST_F(FrameToolsTest, ShowZoomsTheModelViewOntoOneFrame) {
  const struct {
    int row;
    const char* active;
  } cases[] = {
      {1, "active 21000.000000 -64550.000000 34477.611940 0.000000 1"},
      {7, "active 104761.533479 -56039.522754 34477.611940 330.000000 1"},
  };
  for (const auto& c : cases) {
    const std::string out = Out("show-" + std::to_string(c.row) + ".dxf");
    test::LayomatRun run = Layomat("show " + Q(example_) + " --row " +
                                   std::to_string(c.row) + " -o " + Q(out));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(ReadBack("active", out), std::vector<std::string>{c.active});
    EXPECT_EQ(
        testing::DxfProblems(out, testing::RunDxfCheck(example_).structural),
        "");
  }
  test::LayomatRun beyond =
      Layomat("show " + Q(example_) + " --row 10 -o " + Q(Out("beyond.dxf")));
  EXPECT_EQ(beyond.status, 2);
  EXPECT_NE(beyond.err.find("row 10 is not in the frame table (1..9)"),
            std::string::npos)
      << beyond.err;
  EXPECT_FALSE(std::filesystem::exists(Out("beyond.dxf")));
  EXPECT_EQ(Layomat("show " + Q(example_) + " --row 0 -o " + Q(Out("zero.dxf")))
                .status,
            2);
}

// "tab ORDER NAME CONTENT" lines as "NAME CONTENT", in tab order, and
// whether the orders run 1..n.
std::vector<std::string> TabNames(const std::vector<std::string>& tabs,
                                  bool* consecutive) {
  std::vector<std::string> names;
  *consecutive = true;
  for (const std::string& line : tabs) {
    std::istringstream in(line);
    std::string word, rest;
    int order = 0;
    in >> word >> order;
    std::getline(in, rest);
    *consecutive = *consecutive && order == static_cast<int>(names.size()) + 1;
    names.push_back(rest.substr(1));
  }
  return names;
}

TEST_F(FrameToolsTest, SortLayoutsReordersTabsOnly) {
  const std::string tabs = Out("tabs.dxf");
  ReadBack("make-tabs", tabs);
  bool consecutive = false;
  const std::vector<std::string> before =
      TabNames(ReadBack("tabs", tabs), &consecutive);
  ASSERT_EQ(before.size(), 5u);
  std::map<std::string, std::string> content;  // name -> its objects
  for (const std::string& tab : before) {
    content[tab.substr(0, tab.find(' '))] = tab;
  }
  const struct {
    const char* by;
    std::vector<std::string> order;
  } cases[] = {
      {"name", {"Notes", "sheet-1", "Sheet-2", "Sheet-9", "Sheet-10"}},
      {"reverse", {"Notes", "Sheet-9", "sheet-1", "Sheet-2", "Sheet-10"}},
      // Notes has no title block: last.
      {"attribute:NO", {"Sheet-9", "Sheet-2", "sheet-1", "Sheet-10", "Notes"}},
  };
  for (const auto& c : cases) {
    const std::string out = Out(std::string("sorted-") + c.by + ".dxf");
    test::LayomatRun run =
        Layomat("sort-layouts " + Q(tabs) + " --by " + c.by + " -o " + Q(out));
    ASSERT_EQ(run.status, 0) << c.by << run.err;
    std::vector<std::string> expected;
    for (const std::string& name : c.order) expected.push_back(content[name]);
    EXPECT_EQ(TabNames(ReadBack("tabs", out), &consecutive), expected) << c.by;
    EXPECT_TRUE(consecutive) << c.by;
  }
  // The sort window's keys give the same orders as --by.
  const struct {
    const char* set;
    const char* by;
  } window_cases[] = {
      {"", "name"},
      {" --set OknoSortLayouts.OptionSortLayouts2=True", "reverse"},
      {" --set OknoSortLayouts.OptionSortLayouts3=True"
       " --set OknoSortLayouts.TextTagAtribut=NO",
       "attribute:NO"},
  };
  for (const auto& c : window_cases) {
    const std::string out = Out(std::string("window-") + c.by + ".dxf");
    test::LayomatRun run =
        Layomat("sort-layouts " + Q(tabs) + c.set + " -o " + Q(out));
    ASSERT_EQ(run.status, 0) << c.by << run.err;
    EXPECT_EQ(ReadBack("tabs", out),
              ReadBack("tabs", Out(std::string("sorted-") + c.by + ".dxf")))
        << c.by;
  }
  EXPECT_EQ(Layomat("sort-layouts " + Q(tabs) +
                    " --set OknoSortLayouts.OptionSortLayouts3=True -o " +
                    Q(Out("no-tag.dxf")))
                .status,
            2);
  test::LayomatRun same = Layomat("sort-layouts " + Q(Out("sorted-name.dxf")) +
                                  " --by name -o " + Q(Out("same.dxf")));
  EXPECT_EQ(same.status, 1);
  EXPECT_NE(same.err.find("in that order already"), std::string::npos);
  EXPECT_EQ(
      Layomat("sort-layouts " + Q(tabs) + " --by size -o " + Q(Out("bad.dxf")))
          .status,
      2);
}

TEST_F(FrameToolsTest, SortLayoutsByTableRestoresTheFrameOrder) {
  const std::string names =
      " --set OknoLmt.TextStrokaNameFile=10/20"
      " --set OknoLmt.UniTextLeyoutName0=Sheet-";
  const std::string made = Out("made.dxf");
  ASSERT_EQ(Layomat("create-layouts " + Q(example_) + names + " -o " + Q(made))
                .status,
            0);
  const std::string reversed = Out("reversed.dxf");
  ASSERT_EQ(
      Layomat("sort-layouts " + Q(made) + " --by reverse -o " + Q(reversed))
          .status,
      0);
  const std::string back = Out("back.dxf");
  test::LayomatRun run = Layomat("sort-layouts " + Q(reversed) + names +
                                 " --by table -o " + Q(back));
  ASSERT_EQ(run.status, 0) << run.err;
  // The table's layouts first, in its order; the others (Layout1, Pattern)
  // after them in their order before.
  bool consecutive = false;
  std::vector<std::string> expected;
  std::vector<std::string> rest;
  for (const std::string& tab :
       TabNames(ReadBack("tabs", made), &consecutive)) {
    (tab.rfind("Sheet-", 0) == 0 ? expected : rest).push_back(tab);
  }
  ASSERT_EQ(expected.size(), 9u);
  expected.insert(expected.end(), rest.rbegin(), rest.rend());
  EXPECT_EQ(TabNames(ReadBack("tabs", back), &consecutive), expected);
  EXPECT_TRUE(consecutive);
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32

// DeleteLayouts against DeleteLayout called once per layout: the two must
// write the same drawing byte for byte, whichever layouts go and in
// whichever order, the active one included.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "dxf/layout_edit.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

using Edit = std::function<void(Document&)>;

std::unique_ptr<Document> Load(const std::string& path, const Edit& edit) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(path, &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  if (doc && edit) edit(*doc);
  return doc;
}

std::string Written(Document& doc) {
  std::string out;
  Status s = doc.ToString(doc.format(), &out);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return out;
}

std::vector<Layout> Find(Document& doc, const std::vector<std::string>& names) {
  std::vector<Layout> out;
  for (const std::string& name : names) {
    out.push_back(FindLayout(doc, name));
    EXPECT_TRUE(out.back().valid()) << name;
  }
  return out;
}

void AddSheets(Document& doc, int count) {
  for (int i = 1; i <= count; ++i) {
    ASSERT_TRUE(AddLayout(doc, "S" + std::to_string(i), nullptr).ok());
  }
}

struct Outcome {
  std::string status;
  std::string written;
  // Paper layouts still listed when the last layout was about to go: all
  // of them when the deletion ran in one pass.
  size_t listed_at_last = 0;
};

// Deletes `names` from the drawing at `path` (after `edit`); `stop_at`
// fails the deletion of that layout, from the hook.
Outcome Delete(const std::string& path, const Edit& edit,
               const std::vector<std::string>& names, bool at_once,
               size_t stop_at) {
  auto doc = Load(path, edit);
  if (!doc) return {};
  std::vector<Layout> doomed = Find(*doc, names);
  Outcome out;
  auto hook = [&](size_t k) {
    out.listed_at_last = Layouts(*doc).size() - 1;
    return k == stop_at ? Status::InvalidArgument("stopped") : Status::Ok();
  };
  Status s = Status::Ok();
  if (at_once) {
    s = DeleteLayouts(*doc, doomed, hook);
  } else {
    for (size_t k = 0; k < doomed.size() && s.ok(); ++k) {
      s = hook(k);
      if (s.ok()) s = DeleteLayout(*doc, doomed[k]);
    }
  }
  out.status = s.ToString();
  out.written = Written(*doc);
  return out;
}

// True when both ways wrote the same; `one_pass`: the batch also listed
// every layout to the end (no fallback to one by one).
void ExpectSame(const std::string& path, const Edit& edit,
                const std::vector<std::string>& names, bool one_pass = true,
                size_t stop_at = static_cast<size_t>(-1)) {
  Outcome single = Delete(path, edit, names, false, stop_at);
  Outcome batch = Delete(path, edit, names, true, stop_at);
  EXPECT_EQ(batch.status, single.status);
  EXPECT_TRUE(batch.written == single.written)
      << path << ": the batch wrote another drawing";
  EXPECT_FALSE(single.written.empty());
  if (one_pass) {
    auto doc = Load(path, edit);
    EXPECT_EQ(batch.listed_at_last, Layouts(*doc).size() - 1) << path;
  }
}

std::string Sample() { return testing::SamplePath("s_AC1032.dxf"); }

// s_AC1032.dxf: MyLayout (active), Layout1, Layout2; then S1..S8.
const Edit kEight = [](Document& doc) { AddSheets(doc, 8); };

TEST(LayoutBatchDeleteTest, SameDrawingAsOneByOne) {
  LMT_SKIP_WITHOUT_SHARED();
  // Out of tab order, the active layout among them.
  ExpectSame(Sample(), kEight, {"S3", "MyLayout", "S1", "S8", "Layout2"});
  // All but one, in tab order and backwards.
  ExpectSame(Sample(), kEight,
             {"MyLayout", "Layout1", "Layout2", "S1", "S2", "S3", "S4", "S6",
              "S7", "S8"});
  ExpectSame(
      Sample(), kEight,
      {"S8", "S7", "S6", "S5", "S4", "S3", "S2", "S1", "Layout2", "Layout1"});
  // The active layout last in tab order: it hands *Paper_Space back to the
  // first tab, which goes next, and so on.
  ExpectSame(Sample(),
             [](Document& doc) {
               AddSheets(doc, 8);
               ASSERT_TRUE(MakeLayoutActive(doc, FindLayout(doc, "S8")).ok());
             },
             {"S8", "MyLayout", "Layout1", "S2", "Layout2", "S1"});
  // A binary drawing.
  ExpectSame(testing::SamplePath("s_AC1032_bin.dxf"), kEight,
             {"S5", "MyLayout", "S6", "Layout1"});
  // Nothing, and one layout.
  ExpectSame(Sample(), kEight, {}, /*one_pass=*/false);
  ExpectSame(Sample(), kEight, {"S4"});
}

TEST(LayoutBatchDeleteTest, TabNumbersAsUsersLeaveThem) {
  LMT_SKIP_WITHOUT_SHARED();
  // Gaps, repeats and padding: one-by-one deletion renumbers them step by
  // step, and a tab may go back to the number it had.
  auto numbers = [](std::vector<std::pair<std::string, std::string>> tabs) {
    return [tabs](Document& doc) {
      AddSheets(doc, 8);
      for (const auto& [name, number] : tabs) {
        Layout l = FindLayout(doc, name);
        l.SetValueAt(l.FindIn("AcDbLayout", 71), number);
      }
    };
  };
  const Edit repeats = numbers({{"MyLayout", "1"},
                                {"Layout1", "1"},
                                {"Layout2", "1"},
                                {"S1", "7"},
                                {"S2", "30"},
                                {"S3", "30"},
                                {"S4", "04"}});
  ExpectSame(Sample(), repeats, {"S8", "MyLayout", "S5"});
  ExpectSame(Sample(), repeats, {"S2", "Layout1", "S7", "S6"});
  ExpectSame(Sample(), numbers({{"S5", "0"}, {"S6", "-3"}}),
             {"S1", "S6", "Layout2"});
}

TEST(LayoutBatchDeleteTest, DrawingsOnePassCannotTakeAreDoneOneByOne) {
  LMT_SKIP_WITHOUT_SHARED();
  // A tab without a number.
  ExpectSame(
      Sample(),
      [](Document& doc) {
        AddSheets(doc, 4);
        Layout l = FindLayout(doc, "S2");
        const int at = l.FindIn("AcDbLayout", 71);
        l.EraseTags(at, at + 1);
      },
      {"S1", "MyLayout", "S3"}, /*one_pass=*/false);
  // A layout listed twice, and the last paper layout, which stays.
  ExpectSame(Sample(), kEight, {"S1", "S2", "S1"}, false);
  ExpectSame(Sample(), nullptr, {"Layout1", "MyLayout", "Layout2"}, false);
}

TEST(LayoutBatchDeleteTest, FailureStopsWhereOneByOneStops) {
  LMT_SKIP_WITHOUT_SHARED();
  for (size_t stop : {0, 1, 3}) {
    ExpectSame(Sample(), kEight, {"S2", "MyLayout", "S7", "Layout1", "S3"},
               /*one_pass=*/stop > 0, stop);
  }
}

TEST(LayoutBatchDeleteTest, CorpusDrawings) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* name :
       {"070_PolyLine2D.dxf", "009_ex1.dxf", "036_sample_AC1032_ascii.dxf",
        "098_gh109_1.dxf", "420_Ceco.NET-Architecture-Tm-53.dxf"}) {
    const std::string path = testing::CorpusPath(name);
    auto doc = Load(path, kEight);
    ASSERT_TRUE(doc) << name;
    // Every other tab from the end, then the active one when still there.
    std::vector<std::string> names;
    const std::vector<Layout> all = Layouts(*doc);
    for (size_t i = all.size() - 1; i >= 1; i -= 2) {
      names.emplace_back(all[i].name());
      if (i < 2) break;
    }
    for (const Layout& l : all) {
      if (LayoutBlock(*doc, l) == doc->paper_space() &&
          std::find(names.begin(), names.end(), l.name()) == names.end()) {
        names.emplace_back(l.name());
      }
    }
    SCOPED_TRACE(name);
    ExpectSame(path, kEight, names);
  }
}

}  // namespace
}  // namespace lmt::dxf

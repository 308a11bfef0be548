// DeleteLayoutsAtOnce against Layout.Delete on each layout in turn: the
// same drawing to the byte and the same session (which tab is active, which
// paper layout TILEMODE 0 returns to).
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dxfhost/document.h"
#include "dxfhost/test_support.h"
#include "testing/test_paths.h"

namespace lmt::dxfhost {
namespace {

using Edit = std::function<void(test::Session&)>;

struct Outcome {
  std::string status;
  std::string active;  // the active tab after the deletions
  std::string paper;   // the tab TILEMODE 0 then goes to
  std::string written;
};

Outcome Delete(const std::string& path, const Edit& edit,
               const std::vector<std::string>& names, bool at_once) {
  test::Session s(path);
  Outcome out;
  if (!s.doc) return out;
  if (edit) edit(s);
  Status status;
  if (at_once) {
    std::optional<Status> done = DeleteLayoutsAtOnce(*s.doc, names);
    EXPECT_TRUE(done.has_value()) << "not deleted in one pass";
    if (done) status = *done;
  } else {
    host::LayoutsPtr layouts = *s.doc->Layouts();
    for (const std::string& name : names) {
      Result<host::LayoutPtr> layout = layouts->Item(name);
      status = layout.ok() ? (*layout)->Delete() : layout.status();
      if (!status.ok()) break;
    }
  }
  out.status = status.ToString();
  out.active = *(*s.doc->ActiveLayout())->Name();
  EXPECT_TRUE(s.doc->SetVariable("TILEMODE", host::Variant(int16_t{0})).ok());
  out.paper = *(*s.doc->ActiveLayout())->Name();
  out.written = DrawingOf(*s.doc)->doc->ToString();
  return out;
}

void ExpectSame(const std::string& path, const Edit& edit,
                const std::vector<std::string>& names) {
  Outcome single = Delete(path, edit, names, false);
  Outcome batch = Delete(path, edit, names, true);
  EXPECT_EQ(batch.status, single.status);
  EXPECT_EQ(batch.active, single.active);
  EXPECT_EQ(batch.paper, single.paper);
  EXPECT_TRUE(batch.written == single.written)
      << path << ": the batch wrote another drawing";
}

// example.dxf (Layout1, Pattern) with S1..S6 after them, `active` the
// active tab.
Edit Sheets(const std::string& active) {
  return [active](test::Session& s) {
    host::LayoutsPtr layouts = *s.doc->Layouts();
    for (int i = 1; i <= 6; ++i) {
      ASSERT_TRUE(layouts->Add("S" + std::to_string(i)).ok());
    }
    ASSERT_TRUE(s.doc->SetActiveLayout(*layouts->Item("S6")).ok());
    ASSERT_TRUE(s.doc->SetActiveLayout(*layouts->Item(active)).ok());
  };
}

TEST(LayoutsBatchDeleteTest, SameDrawingAndSessionAsOneByOne) {
  const std::string example = test::TestdataPath("example.dxf");
  // The active layout among others, out of tab order.
  ExpectSame(example, Sheets("S2"), {"S4", "S2", "Layout1", "S3", "S6"});
  // The last tab active: the session goes back a tab each time.
  ExpectSame(example, Sheets("S6"), {"S6", "S5", "Pattern", "S4"});
  // Model active: the paper layout to return to (S6) goes, and the
  // engine's *Paper_Space passes on by its own rule.
  ExpectSame(example, Sheets("Model"), {"S6", "S1", "Layout1", "S5"});
  // All but one.
  ExpectSame(example, Sheets("S3"),
             {"Layout1", "Pattern", "S1", "S2", "S3", "S5", "S6"});
}

TEST(LayoutsBatchDeleteTest, LeftToOneByOneWhenTheNamesDoNotAllFit) {
  test::Session s(test::TestdataPath("example.dxf"));
  ASSERT_TRUE(s.doc);
  const std::string before = DrawingOf(*s.doc)->doc->ToString();
  for (const std::vector<std::string>& names :
       std::vector<std::vector<std::string>>{{"Layout1", "Nope"},
                                             {"Model"},
                                             {"Layout1", "LAYOUT1"},
                                             {"Layout1", "Pattern"}}) {
    EXPECT_FALSE(DeleteLayoutsAtOnce(*s.doc, names).has_value())
        << names.back();
  }
  EXPECT_TRUE(DrawingOf(*s.doc)->doc->ToString() == before);
  EXPECT_TRUE(DeleteLayoutsAtOnce(*s.doc, {})->ok());
}

TEST(LayoutsBatchDeleteTest, CorpusDrawing) {
  LMT_SKIP_WITHOUT_SHARED();
  // Eight paper layouts of their own.
  const std::string path = testing::CorpusPath("070_PolyLine2D.dxf");
  std::vector<std::string> names;
  {
    test::Session s(path);
    ASSERT_TRUE(s.doc);
    std::vector<host::LayoutPtr> all = *(*s.doc->Layouts())->Items();
    ASSERT_GE(all.size(), 6u);
    for (size_t i = all.size() - 1; i >= 2; i -= 2) {
      names.push_back(*all[i]->Name());
    }
    // The active tab too, or the first when Model is.
    std::string active = *(*s.doc->ActiveLayout())->Name();
    if (active == "Model") active = *all[1]->Name();
    if (std::find(names.begin(), names.end(), active) == names.end()) {
      names.push_back(active);
    }
  }
  ExpectSame(path, nullptr, names);
}

}  // namespace
}  // namespace lmt::dxfhost

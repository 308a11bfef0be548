// Template candidates on the drawings of testdata/frames (make_frames.py)
// and the example, through the embedded host.
#include "frames/template_candidates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frames/frame_template.h"
#include "testing/embedded_run.h"
#include "testing/failing_host.h"

namespace lmt::frames {
namespace {

std::string Frames(const std::string& name) {
  return std::string(LMT_TESTDATA_DIR) + "/frames/" + name;
}

std::vector<CandidateGroup> Candidates(testing::EmbeddedRun& run) {
  Result<std::vector<CandidateGroup>> groups =
      FindTemplateCandidates(*run.document);
  EXPECT_TRUE(groups.ok()) << groups.status().ToString();
  return groups.ok() ? *groups : std::vector<CandidateGroup>{};
}

std::string Describe(const CandidateGroup& g) {
  return g.kind + " " + (g.block_name.empty() ? g.layer : g.block_name) + " " +
         std::to_string(g.width) + "x" + std::to_string(g.height) + " x" +
         std::to_string(g.count);
}

TEST(TemplateCandidatesTest, GroupsEachKindLargestFirst) {
  testing::EmbeddedRun run(Frames("mixed.dxf"));
  ASSERT_TRUE(run.document);
  std::vector<std::string> seen;
  for (const CandidateGroup& g : Candidates(run)) seen.push_back(Describe(g));
  // The 3-vertex polyline and the block without a frame are not offered;
  // the 594 x 420 polyline is its own group beside the 420 x 297 ones, and
  // the same size on another layer is another group.
  EXPECT_EQ(seen, (std::vector<std::string>{
                      "BLOCK FRAME 420.000000x297.000000 x3",
                      "POLYLINE FRAMES 420.000000x297.000000 x2",
                      "POLYLINE FRAMES 594.000000x420.000000 x1",
                      "POLYLINE SHEETS 420.000000x297.000000 x1",
                  }));
}

TEST(TemplateCandidatesTest, HandleOfAGroupCapturesThatKind) {
  testing::EmbeddedRun run(Frames("mixed.dxf"));
  ASSERT_TRUE(run.document);
  for (const CandidateGroup& g : Candidates(run)) {
    Result<host::ObjectPtr> object =
        run.document->ObjectIdToObject(std::stoull(g.handle, nullptr, 16));
    ASSERT_TRUE(object.ok()) << g.handle;
    host::EntityPtr picked = host::As<host::Entity>(*object);
    ASSERT_TRUE(picked) << g.handle;
    EXPECT_EQ(picked->Layer().value_or(""),
              g.kind == kKindPolyline ? g.layer : "FRAMES");
  }
}

TEST(TemplateCandidatesTest, ReferencesAreScaledAndExternalOnesOffered) {
  testing::EmbeddedRun blocks(Frames("blocks.dxf"));
  ASSERT_TRUE(blocks.document);
  std::vector<std::string> seen;
  for (const CandidateGroup& g : Candidates(blocks)) {
    seen.push_back(Describe(g));
  }
  // F2 is FRAME at scale 2, but a group's size is its first member's; TWO
  // offers its last qualifying polyline; BAD holds no frame.
  EXPECT_EQ(seen, (std::vector<std::string>{
                      "BLOCK FRAME 420.000000x297.000000 x2",
                      "BLOCK TWO 100.000000x50.000000 x1",
                      "BLOCK CONST 420.000000x297.000000 x1",
                  }));

  testing::EmbeddedRun xref(Frames("xref.dxf"));
  ASSERT_TRUE(xref.document);
  std::vector<CandidateGroup> groups = Candidates(xref);
  ASSERT_EQ(groups.size(), 1u);
  EXPECT_EQ(groups[0].kind, kKindXRef);
  EXPECT_EQ(groups[0].block_name, "XPART");
  EXPECT_DOUBLE_EQ(groups[0].width, 420);
}

TEST(TemplateCandidatesTest, QueriesChooseTheirGroupAndAutoRefusesTies) {
  testing::EmbeddedRun run(Frames("mixed.dxf"));
  ASSERT_TRUE(run.document);
  const std::vector<CandidateGroup> groups = Candidates(run);
  struct Case {
    const char* text;
    const char* kind;  // "" when refused
    const char* name;
  };
  for (const Case& c : std::vector<Case>{
           {"auto", "BLOCK", "FRAME"},
           {"block:frame", "BLOCK", "FRAME"},
           {"LAYER:frames", "POLYLINE", "FRAMES"},
           {"layer:Sheets", "POLYLINE", "SHEETS"},
           {"block:LOGO", "", ""},
           {"layer:0", "", ""},
       }) {
    TemplateQuery query = ParseTemplateQuery(c.text);
    ASSERT_NE(query.kind, TemplateQuery::Kind::kHandle) << c.text;
    Result<CandidateGroup> chosen = ChooseCandidate(groups, query);
    if (*c.kind == '\0') {
      EXPECT_EQ(chosen.status().code(), StatusCode::kNotFound) << c.text;
      continue;
    }
    ASSERT_TRUE(chosen.ok()) << c.text;
    EXPECT_EQ(chosen->kind, c.kind) << c.text;
    EXPECT_EQ(chosen->kind == "BLOCK" ? chosen->block_name : chosen->layer,
              c.name)
        << c.text;
  }
  EXPECT_EQ(ParseTemplateQuery("2F").kind, TemplateQuery::Kind::kHandle);

  testing::EmbeddedRun tie(Frames("tie.dxf"));
  ASSERT_TRUE(tie.document);
  Result<CandidateGroup> tied =
      ChooseCandidate(Candidates(tie), ParseTemplateQuery("auto"));
  EXPECT_EQ(tied.status().code(), StatusCode::kInvalidArgument);
}

TEST(TemplateCandidatesTest, RefusedCallsSkipOnlyTheirObject) {
  testing::EmbeddedRun run(Frames("mixed.dxf"));
  ASSERT_TRUE(run.document);
  // Without the block collection no reference can be judged a frame; the
  // polylines are still offered.
  testing::FailingHost failing(run.application());
  failing.Refuse("Database.Blocks");
  std::vector<CandidateGroup> groups = Candidates(run);
  ASSERT_EQ(groups.size(), 3u);
  for (const CandidateGroup& g : groups) EXPECT_EQ(g.kind, kKindPolyline);

  failing.Refuse("Database.ModelSpace");
  EXPECT_FALSE(FindTemplateCandidates(*run.document).ok());
}

}  // namespace
}  // namespace lmt::frames

#include "dxf/recovery.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "dxf/document.h"
#include "dxf/test_util.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

// An ASCII drawing from code/value pairs.
std::string Dxf(const std::vector<std::pair<int, std::string>>& tags) {
  std::string text;
  for (const auto& [code, value] : tags) {
    text += std::to_string(code) + "\n" + value + "\n";
  }
  return text;
}

struct Read {
  Status status;
  std::unique_ptr<Document> doc;
};

Read ParseAs(const std::string& text, bool recover) {
  Read r;
  r.status = Document::Parse(text, "d.dxf", &r.doc, ReadOptions{recover});
  return r;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string all;
  for (const std::string& l : lines) all += l + "\n";
  return all;
}

const std::vector<std::pair<int, std::string>> kLine = {
    {0, "LINE"}, {5, "2A"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbLine"},
    {10, "0"},   {20, "0"}, {11, "1"},           {21, "1"}};

std::vector<std::pair<int, std::string>> With(
    std::vector<std::pair<int, std::string>> a,
    const std::vector<std::pair<int, std::string>>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// Each damaged file is refused with its place and reason, and read with
// the repair named at the same place when recovering; what it holds
// survives a write and a strict read.
TEST(RecoveryTest, DamagedSectionsAreRefusedOrRepairedWithTheirPlace) {
  struct Case {
    const char* what;
    std::string text;
    std::string refusal;  // without recovering
    std::string repair;
  };
  const auto header = std::vector<std::pair<int, std::string>>{
      {0, "SECTION"}, {2, "HEADER"},    {9, "$ACADVER"},
      {1, "AC1015"},  {9, "$HANDSEED"}, {5, "FFFF"}};
  const auto entities =
      With({{0, "SECTION"}, {2, "ENTITIES"}}, With(kLine, {{0, "ENDSEC"}}));
  const Case cases[] = {
      {"header variables after ENDSEC, as dxflib 2 writes them",
       Dxf(With(With(header, {{0, "ENDSEC"},
                              {9, "$DIMASZ"},
                              {40, "3.0"},
                              {9, "$LUNITS"},
                              {70, "2"},
                              {0, "ENDSEC"}}),
                With(entities, {{0, "EOF"}}))),
       "d.dxf:15: expected 0 SECTION, got 9 $DIMASZ",
       "d.dxf:13: 2 header variables after ENDSEC moved into the header"},
      {"a header without ENDSEC",
       Dxf(With(header, With(entities, {{0, "EOF"}}))),
       "d.dxf:13: expected 0 ENDSEC for section HEADER, got 0 SECTION",
       "d.dxf:13: section HEADER has no ENDSEC; added"},
      {"a file cut after its last entity",
       Dxf(With(With(header, {{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}}),
                kLine)),
       "d.dxf:37: expected 0 EOF, got end of file",
       "d.dxf:35: section ENTITIES has no ENDSEC; added"},
      {"an ENDSEC too many",
       Dxf(With(With(header, {{0, "ENDSEC"}, {0, "ENDSEC"}}),
                With(entities, {{0, "EOF"}}))),
       "d.dxf:15: expected 0 SECTION, got 0 ENDSEC",
       "d.dxf:15: ENDSEC outside any section dropped"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Read strict = ParseAs(c.text, false);
    EXPECT_EQ(strict.status.message(), c.refusal);
    Read recovered = ParseAs(c.text, true);
    ASSERT_TRUE(recovered.status.ok()) << recovered.status.message();
    EXPECT_NE(Joined(recovered.doc->repairs()).find(c.repair),
              std::string::npos)
        << Joined(recovered.doc->repairs());
    ASSERT_EQ(recovered.doc->model_space()->entities.size(), 1u);
    Read again = ParseAs(recovered.doc->ToString(), false);
    ASSERT_TRUE(again.status.ok()) << again.status.message();
    EXPECT_TRUE(again.doc->FindByHandle(0x2A).valid());
    EXPECT_EQ(again.doc->version(), "AC1015");
  }
  // The moved variables are the header's now.
  Read dxflib = ParseAs(cases[0].text, true);
  EXPECT_DOUBLE_EQ(dxflib.doc->HeaderDouble("$DIMASZ"), 3.0);
  EXPECT_EQ(dxflib.doc->HeaderInt("$LUNITS"), 2);
}

TEST(RecoveryTest, WhatHasNoSensibleReadingIsStillRefused) {
  // An entity between sections, and a section without a name.
  for (const std::string& text :
       {Dxf(With(kLine, {{0, "EOF"}})),
        Dxf({{0, "SECTION"}, {9, "$ACADVER"}, {1, "AC1015"}, {0, "EOF"}})}) {
    Read recovered = ParseAs(text, true);
    EXPECT_FALSE(recovered.status.ok());
    EXPECT_EQ(recovered.status.message(),
              ParseAs(text, false).status.message());
  }
}

TEST(RecoveryTest, MissingAndRepeatedHandlesGetFreshOnes) {
  // Two lines share 2A, a third has none, and $HANDSEED is missing.
  std::vector<std::pair<int, std::string>> unhandled = kLine;
  unhandled.erase(unhandled.begin() + 1);
  const std::string text = Dxf(With(With({{0, "SECTION"},
                                          {2, "HEADER"},
                                          {9, "$ACADVER"},
                                          {1, "AC1015"},
                                          {0, "ENDSEC"},
                                          {0, "SECTION"},
                                          {2, "ENTITIES"}},
                                         With(kLine, With(kLine, unhandled))),
                                    {{0, "ENDSEC"}, {0, "EOF"}}));
  Read strict = ParseAs(text, false);
  ASSERT_TRUE(strict.status.ok());
  EXPECT_TRUE(strict.doc->repairs().empty());

  Read recovered = ParseAs(text, true);
  ASSERT_TRUE(recovered.status.ok()) << recovered.status.message();
  std::set<uint64_t> handles;
  for (RecordId id : recovered.doc->model_space()->entities) {
    const uint64_t h = recovered.doc->entity(id).handle();
    EXPECT_NE(h, 0u);
    handles.insert(h);
    EXPECT_EQ(recovered.doc->FindByHandle(h).id(), id);
  }
  EXPECT_EQ(handles.size(), 3u);
  const std::string repairs = Joined(recovered.doc->repairs());
  EXPECT_NE(repairs.find("LINE repeats handle 2A; given"), std::string::npos)
      << repairs;
  EXPECT_NE(repairs.find("LINE without a handle; given"), std::string::npos);
  EXPECT_NE(repairs.find("no $HANDSEED"), std::string::npos);
  // The seed lies above every handle, so later additions stay unique.
  const std::optional<uint64_t> seed =
      ParseHandle(recovered.doc->HeaderValue("$HANDSEED").value_or(""));
  ASSERT_TRUE(seed.has_value());
  EXPECT_GT(*seed, *handles.rbegin());
}

TEST(RecoveryTest, CorpusFilesOfSmallWritersOpenWhenRecovered) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* name : {"041_empty.dxf", "057_tux.dxf", "059_misc01.dxf",
                           "380_M4_c.dxf", "386_spline007.dxf"}) {
    SCOPED_TRACE(name);
    const std::string path = testing::CorpusPath(name);
    std::unique_ptr<Document> doc;
    EXPECT_FALSE(Document::Load(path, &doc).ok());
    Status s = Document::Load(path, &doc, ReadOptions{true});
    ASSERT_TRUE(s.ok()) << s.message();
    EXPECT_FALSE(doc->repairs().empty());
    EXPECT_EQ(doc->version(), "AC1015");
  }
}

}  // namespace
}  // namespace lmt::dxf

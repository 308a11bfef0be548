#include "dxf/version.h"

#include <gtest/gtest.h>

#include "dxf/builders.h"
#include "dxf/test_util.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

std::unique_ptr<Document> Open(const std::string& name) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(testing::SamplePath(name), &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

constexpr uint64_t kMultiLineAttrib = 0x79D;

TEST(VersionTest, EveryReleaseFrom2000OpensCleanly) {
  LMT_SKIP_WITHOUT_SHARED();
  for (int year : {2000, 2004, 2007, 2010, 2013, 2018}) {
    SCOPED_TRACE(year);
    auto doc = Open("s_AC1032.dxf");
    ASSERT_TRUE(doc);
    Entity text =
        AddMText(*doc, doc->model_space(), Vec3{0, 0, 0}, 2.5, "Лист №1 Ø");
    std::string_view v = AcadVerOfYear(year);
    ASSERT_TRUE(ConvertVersion(*doc, v).ok());
    EXPECT_EQ(doc->version(), v);
    std::string path =
        testing::TempPath("version_" + std::to_string(year) + ".dxf");
    ASSERT_TRUE(doc->Save(path).ok());
#ifndef _WIN32
    EXPECT_EQ(testing::Problems(path), "");
    std::string read = testing::EzdxfLayouts(path);
    EXPECT_NE(read.find("version " + std::string(v)), std::string::npos)
        << read;
    EXPECT_EQ(testing::EzdxfText(path, text.handle()), "Лист №1 Ø");
    // The 2018 multi-line attribute keeps its text in older releases.
    EXPECT_EQ(testing::EzdxfText(path, kMultiLineAttrib),
              year == 2018 ? "" : "my multi line text for the attrrib");
#endif
    std::unique_ptr<Document> back;
    ASSERT_TRUE(Document::Load(path, &back).ok());
    EXPECT_EQ(back->version(), v);
    EXPECT_TRUE(back->FindByHandle(text.handle()).valid());
  }
}

TEST(VersionTest, OlderDrawingsMoveUp) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1015.dxf");
  ASSERT_TRUE(doc);
  ASSERT_TRUE(ConvertVersion(*doc, "AC1032").ok());
  std::string path = testing::TempPath("version_up.dxf");
  ASSERT_TRUE(doc->Save(path).ok());
#ifndef _WIN32
  EXPECT_EQ(testing::Problems(path), "");
#endif
}

TEST(VersionTest, ReleasesWithoutLayoutsAreRefusedWithTheReason) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Status r12 = ConvertVersion(*doc, "AC1009");
  EXPECT_FALSE(r12.ok());
  EXPECT_NE(r12.message().find("R12"), std::string::npos);
  EXPECT_NE(r12.message().find("layouts"), std::string::npos);
  for (const char* v : {"AC1012", "AC1014"}) {
    Status s = CheckTargetVersion(v);
    EXPECT_NE(s.message().find(ReleaseName(v)), std::string::npos) << v;
    EXPECT_NE(s.message().find("layouts"), std::string::npos) << v;
  }
  EXPECT_FALSE(CheckTargetVersion("AC1099").ok());
  EXPECT_EQ(doc->version(), "AC1032");  // refusals change nothing
  auto old = Open("s_AC1009.dxf");
  ASSERT_TRUE(old);
  EXPECT_FALSE(ConvertVersion(*old, "AC1032").ok());
}

}  // namespace
}  // namespace lmt::dxf

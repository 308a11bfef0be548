#include "batch/save_target.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "batch/paths.h"
#include "batch/save_version.h"
#include "testing/temp_dir.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

class SaveTargetTest : public ::testing::Test {
 protected:
  void SetUp() override { dir_ = temp_.path(); }
  lmt::testing::TempDir temp_;

  void Touch(const fs::path& p) {
    fs::create_directories(p.parent_path());
    std::ofstream(p) << "x";
  }

  fs::path dir_;
};

TEST_F(SaveTargetTest, NumbersPastExistingResultsOfTheTargetExtension) {
  struct Case {
    std::vector<std::string> existing;
    const char* extension;
    const char* expected;
  };
  const Case cases[] = {
      {{}, "dwg", "plan"},
      {{"plan.dxf"}, "dwg", "plan"},  // another family does not take it
      {{"plan.dxf"}, "dxf", "plan(1)"},
      {{"plan.dxf", "plan(1).dxf"}, "dxf", "plan(2)"},
      {{"plan.dxf", "plan(2).dxf"}, "dxf", "plan(1)"},  // first free
  };
  for (const Case& c : cases) {
    fs::remove_all(dir_);
    fs::create_directories(dir_);
    Touch(dir_ / "src" / "plan.dxf");
    fs::create_directories(dir_ / "out");
    for (const std::string& name : c.existing) Touch(dir_ / "out" / name);
    SaveTargetOptions options{SaveWhere::kToFolder, (dir_ / "out").string(),
                              ""};
    Result<fs::path> target = ResolveSaveTarget(
        options, "plan.dxf", dir_ / "src" / "plan.dxf", c.extension);
    ASSERT_TRUE(target.ok()) << target.status().ToString();
    EXPECT_EQ(*target, dir_ / "out" / c.expected) << c.expected;
  }
}

TEST_F(SaveTargetTest, BesideSourceCountsTheSourceItself) {
  Touch(dir_ / "plan.dwg");
  Touch(dir_ / "plan(1).dwg");
  Result<fs::path> target = ResolveSaveTarget(
      {SaveWhere::kBesideSource, "", ""}, "plan.dwg", dir_ / "plan.dwg", "dwg");
  ASSERT_TRUE(target.ok());
  EXPECT_EQ(*target, dir_ / "plan(2)");
}

TEST_F(SaveTargetTest, ReplaceSourceReturnsTheSourceUnnumbered) {
  Touch(dir_ / "plan.dwg");
  Touch(dir_ / "plan(1).dwg");
  Result<fs::path> target =
      ResolveSaveTarget({SaveWhere::kReplaceSource, "", ""}, "plan.dwg",
                        dir_ / "plan.dwg", "dxf");
  ASSERT_TRUE(target.ok());
  EXPECT_EQ(*target, dir_ / "plan.dwg");
}

TEST_F(SaveTargetTest, NewSubfolderIsCreatedOnlyWhenMissing) {
  Touch(dir_ / "plan.dwg");
  SaveTargetOptions options{SaveWhere::kNewSubfolder, "", "Результат"};
  Result<fs::path> first =
      ResolveSaveTarget(options, "plan.dwg", dir_ / "plan.dwg", "dwg");
  ASSERT_TRUE(first.ok());
  EXPECT_TRUE(fs::is_directory(dir_ / u8"Результат"));
  EXPECT_EQ(*first, dir_ / u8"Результат" / "plan");

  Touch(dir_ / u8"Результат" / "plan.dwg");
  Result<fs::path> second =
      ResolveSaveTarget(options, "plan.dwg", dir_ / "plan.dwg", "dwg");
  ASSERT_TRUE(second.ok());
  EXPECT_EQ(*second, dir_ / u8"Результат" / "plan(1)");
}

TEST_F(SaveTargetTest, PlanReportsTheFolderInsteadOfCreatingIt) {
  Result<SaveTargetPlan> plan = PlanSaveTarget(
      {SaveWhere::kNewSubfolder, "", "out"}, "plan.dwg", dir_ / "plan.dwg",
      "dwg", [](const fs::path&) { return false; });
  ASSERT_TRUE(plan.ok());
  ASSERT_TRUE(plan->folder_to_create.has_value());
  EXPECT_EQ(*plan->folder_to_create, dir_ / "out");
  EXPECT_FALSE(fs::exists(dir_ / "out"));
}

TEST_F(SaveTargetTest, SubfolderThatCannotBeCreatedFails) {
  Touch(dir_ / "out");  // a file where the folder should go
  Result<fs::path> target =
      ResolveSaveTarget({SaveWhere::kNewSubfolder, "", "out"}, "plan.dwg",
                        dir_ / "plan.dwg", "dwg");
  EXPECT_EQ(target.status().code(), StatusCode::kIOError);
}

TEST_F(SaveTargetTest, MissingTypedFolderFails) {
  Result<fs::path> target =
      ResolveSaveTarget({SaveWhere::kToFolder, (dir_ / "nope").string(), ""},
                        "plan.dwg", dir_ / "plan.dwg", "dwg");
  EXPECT_EQ(target.status().code(), StatusCode::kIOError);
}

TEST_F(SaveTargetTest, ToFolderWithoutFolderIsRefused) {
  Result<SaveTargetPlan> plan = PlanSaveTarget(
      {SaveWhere::kToFolder, "", ""}, "plan.dwg", dir_ / "plan.dwg", "dwg",
      [](const fs::path&) { return false; });
  EXPECT_EQ(plan.status().code(), StatusCode::kInvalidArgument);
}

TEST(SaveTargetStemTest, CutsTheLastFourCharactersOfTheName) {
  auto never = [](const fs::path&) { return false; };
  struct Case {
    const char* name;
    const char* stem;
  };
  const Case cases[] = {
      {"plan.dxf", "plan"},
      {"план.dwg", "план"},  // characters, not bytes
      {"a.b.dwg", "a.b"},
      {"x.dw", ""},
  };
  for (const Case& c : cases) {
    Result<SaveTargetPlan> plan =
        PlanSaveTarget({SaveWhere::kToFolder, "/out", ""}, c.name,
                       fs::path("/in") / "f", "dwg", never);
    ASSERT_TRUE(plan.ok());
    EXPECT_EQ(PathToUtf8(plan->target.filename()), c.stem) << c.name;
  }
}

TEST(SaveVersionTest, CodesOfTheTable) {
  struct Case {
    int index;
    int host_type;
    const char* code;
  };
  const Case cases[] = {
      {0, 25, "25:dxf"}, {0, 36, "36:dwg"}, {0, 0, "0:dwg"},  {0, -1, "-1:dxf"},
      {1, 36, "1:dxf"},  {2, 36, "4:dwg"},  {9, 0, "25:dxf"}, {16, 0, "64:dwg"},
      {19, 0, "71:dxf"}, {20, 36, ""},      {-1, 36, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SaveVersionCode(c.index, c.host_type), c.code) << c.index;
  }
}

TEST(SaveVersionTest, EveryEntrySplitsAndItsFamilyMatchesItsText) {
  for (int i = 1; i < kSaveVersionCount; ++i) {
    std::optional<SaveFormat> f = SplitSaveCode(SaveVersionCode(i, 0));
    ASSERT_TRUE(f.has_value()) << i;
    std::string entry(SaveVersionEntry(i, EntryLanguage::kEnglish));
    EXPECT_NE(entry.find("(*." + f->extension + ")"), std::string::npos)
        << entry;
    EXPECT_EQ(f->save_type % 2 != 0, f->extension == "dxf") << entry;
  }
  EXPECT_EQ(SaveVersionEntry(0, EntryLanguage::kRussian),
            "Пумолчанию из AutoCAD");
  EXPECT_EQ(SaveVersionEntry(0, EntryLanguage::kEnglish),
            "Active AutoCAD release");
}

TEST(SaveVersionTest, SplitRejectsWhatIsNotNumberColonExtension) {
  for (const char* bad : {"", ":dwg", "12:", "12", "x:dwg", "1 2:dwg"}) {
    EXPECT_FALSE(SplitSaveCode(bad).has_value()) << bad;
  }
  std::optional<SaveFormat> f = SplitSaveCode("36:dwg");
  ASSERT_TRUE(f.has_value());
  EXPECT_EQ(f->save_type, 36);
  EXPECT_EQ(f->extension, "dwg");
}

TEST(SaveVersionTest, SaveAsChoiceAndDxfPaths) {
  EXPECT_EQ(SaveAsExtension(0, "plan.DXF"), "dxf");
  EXPECT_EQ(SaveAsExtension(0, "plan"), "");
  EXPECT_EQ(SaveAsExtension(1, "plan.dxf"), "dwg");
  EXPECT_EQ(SaveAsExtension(2, "plan.dwg"), "dxf");
  EXPECT_TRUE(IsDxfPath("C:\\a\\PLAN.DXF"));
  EXPECT_FALSE(IsDxfPath("C:\\a\\plan.dwg"));
}

}  // namespace
}  // namespace lmt::batch

#include "layouts/creation_parameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace lmt::layouts {
namespace {

TEST(FieldToNumberTest, ReadsEitherSeparatorInEitherLocale) {
  for (bool comma : {false, true}) {
    EXPECT_DOUBLE_EQ(FieldToNumber("2.5", comma), 2.5);
    EXPECT_DOUBLE_EQ(FieldToNumber("2,5", comma), 2.5);
    EXPECT_DOUBLE_EQ(FieldToNumber("", comma), 0);
    EXPECT_DOUBLE_EQ(FieldToNumber("  420 ", comma), 420);
    EXPECT_DOUBLE_EQ(FieldToNumber("abc", comma), 0);
    EXPECT_DOUBLE_EQ(FieldToNumber("1,2.3", comma), 0);
    EXPECT_DOUBLE_EQ(FieldToNumber("inf", comma), 0);
    EXPECT_DOUBLE_EQ(FieldToNumber("1e999", comma), 0);
  }
}

TEST(NumberToFieldTest, WritesTheLocaleSeparator) {
  EXPECT_EQ(NumberToField(420, false), "420");
  EXPECT_EQ(NumberToField(0.1 + 0.2, false), "0.3");
  EXPECT_EQ(NumberToField(2.5, true), "2,5");
  EXPECT_EQ(NumberToField(std::nan(""), true), "");
}

CreationFieldTexts FixedScale(std::string paper, std::string model) {
  CreationFieldTexts f;
  f.scale_paper = std::move(paper);
  f.scale_model = std::move(model);
  return f;
}

TEST(ReadCreationParametersTest, FixedScaleIsPaperOverModel) {
  CreationParameters p = ReadCreationParameters(FixedScale("1", "100"), false);
  EXPECT_DOUBLE_EQ(p.scale, 0.01);
}

TEST(ReadCreationParametersTest, ZeroOrEmptyModelKeepsThePreviousScale) {
  PreviousScales previous{0.02, 0.5};
  for (const char* model : {"0", "", "0,0"}) {
    CreationFieldTexts f = FixedScale("1", model);
    f.copy_scale_paper = "1";
    f.copy_scale_model = model;
    CreationParameters p = ReadCreationParameters(f, true, previous);
    EXPECT_DOUBLE_EQ(p.scale, 0.02) << model;
    EXPECT_DOUBLE_EQ(p.copy_scale, 0.5) << model;
  }
  // 0 : 0 is no number either.
  EXPECT_DOUBLE_EQ(
      ReadCreationParameters(FixedScale("", ""), false, previous).scale, 0.02);
}

TEST(ReadCreationParametersTest, ReadsPlacesAndCopyViewport) {
  CreationFieldTexts f = FixedScale("1", "50");
  f.corner_x = "10,5";
  f.corner_y = "";
  f.increment = "10";
  f.copy_scale_paper = "1";
  f.copy_scale_model = "200";
  f.copy_corner_x = "300";
  f.copy_corner_y = "20.5";
  f.copy_width = "80";
  f.copy_height = "60";
  CreationParameters p = ReadCreationParameters(f, false);
  EXPECT_EQ(p.corner, (frames::Point{10.5, 0}));
  EXPECT_DOUBLE_EQ(p.increment, 10);
  EXPECT_DOUBLE_EQ(p.copy_scale, 0.005);
  EXPECT_EQ(p.copy_corner, (frames::Point{300, 20.5}));
  EXPECT_DOUBLE_EQ(p.copy_width, 80);
  EXPECT_DOUBLE_EQ(p.copy_height, 60);
}

TEST(AnnotationScaleNameTest, TakesFixedOrExplicitFields) {
  CreationFieldTexts f = FixedScale("1", "100");
  f.annotation_paper = " 1 ";
  f.annotation_model = "50";
  EXPECT_EQ(AnnotationScaleName(f), "1:50");
  f.annotation_as_viewport = true;
  EXPECT_EQ(AnnotationScaleName(f), "1:100");
}

bool EnabledIn(const std::vector<ControlState>& states,
               std::string_view control) {
  for (const ControlState& s : states) {
    if (s.control == control) return s.enabled;
  }
  ADD_FAILURE() << "no state for " << control;
  return false;
}

TEST(ControlStatesTest, ScaleOptionSwapsTheTwoGroups) {
  auto fixed = ScaleOptionStates(ScaleMode::kFixed);
  auto width = ScaleOptionStates(ScaleMode::kFromWidth);
  ASSERT_EQ(fixed.size(), width.size());
  for (size_t i = 0; i < fixed.size(); ++i) {
    EXPECT_EQ(fixed[i].control, width[i].control);
    EXPECT_NE(fixed[i].enabled, width[i].enabled) << fixed[i].control;
  }
  EXPECT_TRUE(EnabledIn(fixed, "Text_MashtabModel"));
  EXPECT_TRUE(EnabledIn(fixed, "TXT_Dvoetoch"));
  EXPECT_TRUE(EnabledIn(width, "Command_GetMashtabRamka"));
  EXPECT_TRUE(EnabledIn(width, "Text_AutoMashtabRamka"));
}

TEST(FrameLengthFromPickTest, DividesDistanceByTheAnswer) {
  EXPECT_EQ(FrameLengthFromPick(42000, "100", false), 420);
  EXPECT_EQ(FrameLengthFromPick(420, "", false), 420);  // empty counts as 1
  EXPECT_EQ(FrameLengthFromPick(42, "0,5", false), 84);
  EXPECT_EQ(FrameLengthFromPick(0, "100", false), std::nullopt);
  EXPECT_EQ(FrameLengthFromPick(420, "0", false), std::nullopt);
  EXPECT_EQ(FrameLengthFromPick(420, "abc", false), std::nullopt);
}

}  // namespace
}  // namespace lmt::layouts

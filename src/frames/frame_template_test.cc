#include "frames/frame_template.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lmt::frames {
namespace {

using host::FilterValue;
using host::SelectionFilter;

SelectionFilter Pairs(std::vector<std::pair<int16_t, FilterValue>> pairs) {
  SelectionFilter f;
  for (auto& [code, value] : pairs) f.Add(code, value);
  return f;
}

TEST(FrameTemplateTest, KindFromObjectName) {
  EXPECT_EQ(KindOf("AcDbPolyline", false), "POLYLINE");
  EXPECT_EQ(KindOf("acdbpolyline", false), "POLYLINE");
  EXPECT_EQ(KindOf("AcDbBlockReference", false), "BLOCK");
  EXPECT_EQ(KindOf("AcDbBlockReference", true), "XRef");
  EXPECT_EQ(KindOf("AcDbCircle", false), "AcDbCircle");
  EXPECT_TRUE(IsReferenceKind("xref"));
  EXPECT_TRUE(IsPolylineKind("Polyline"));
  EXPECT_FALSE(IsReferenceKind("AcDbCircle"));
}

TEST(FrameTemplateTest, ColourAndLineweightTexts) {
  EXPECT_EQ(ColorText(256), "ByLayer");
  EXPECT_EQ(ColorText(0), "ByBlock");
  EXPECT_EQ(ColorText(7), "7");
  EXPECT_EQ(LineWeightText(-1), "ByLayer");
  EXPECT_EQ(LineWeightText(-2), "ByBlock");
  EXPECT_EQ(LineWeightText(-3), "Default");
  EXPECT_EQ(LineWeightText(25), "25");
  const std::pair<const char*, const char*> shown[] = {
      {"0", "0.00"},          {"9", "0.09"},   {"25", "0.25"},
      {"100", "1.00"},        {"211", "2.11"}, {"Default", "Default"},
      {"ByLayer", "ByLayer"},
  };
  for (auto [text, expected] : shown) {
    EXPECT_EQ(LineWeightShown(text), expected) << text;
  }
}

// Every standard lineweight, chosen in the filter window, searches for the
// number the template would have shown it from.
TEST(FrameTemplateTest, EveryListedLineweightRoundTripsThroughTheFilter) {
  for (const std::string& item : LineWeightItems()) {
    FilterChoices c;
    c.line_weight_on = true;
    c.line_weight = item;
    SelectionFilter f = BuildSearchFilter("", c);
    ASSERT_EQ(f.size(), 2u);
    ASSERT_EQ(f.codes[0], 370);
    const int32_t* n = std::get_if<int32_t>(&f.values[0]);
    ASSERT_NE(n, nullptr) << item;
    EXPECT_EQ(LineWeightShown(LineWeightText(*n)), item);
  }
}

TEST(FrameTemplateTest, PickFilterOffersPolylinesAndReferences) {
  EXPECT_EQ(BuildPickFilter(), Pairs({{-4, "<OR"},
                                      {-4, "<AND"},
                                      {0, "LWPOLYLINE"},
                                      {-4, ">="},
                                      {90, int16_t{4}},
                                      {-4, "<="},
                                      {90, int16_t{5}},
                                      {-4, "AND>"},
                                      {-4, "<AND"},
                                      {0, "INSERT"},
                                      {-4, "AND>"},
                                      {-4, "OR>"}}));
}

struct SearchCase {
  const char* name;
  const char* kind;
  FilterChoices choices;
  SelectionFilter expected;
};

class SearchFilterTest : public testing::TestWithParam<SearchCase> {};

TEST_P(SearchFilterTest, PairsInOrder) {
  const SearchCase& c = GetParam();
  EXPECT_EQ(BuildSearchFilter(c.kind, c.choices), c.expected);
}

FilterChoices AllTicked(const char* weight, const char* color) {
  FilterChoices c;
  c.layer_on = c.color_on = c.linetype_on = c.line_weight_on = c.block_name_on =
      true;
  c.layer = "Frames";
  c.color = color;
  c.linetype = "Continuous";
  c.line_weight = weight;
  c.block_name = "A3";
  return c;
}

FilterChoices BlockNameTicked(const char* name) {
  FilterChoices c;
  c.block_name_on = true;
  c.block_name = name;
  return c;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SearchFilterTest,
    testing::Values(
        SearchCase{"PolylineNoTicks",
                   "POLYLINE",
                   {},
                   Pairs({{0, "LWPOLYLINE"},
                          {-4, ">="},
                          {90, int16_t{4}},
                          {-4, "<="},
                          {90, int16_t{5}},
                          {410, "Model"}})},
        SearchCase{"BlockAllTicked", "BLOCK", AllTicked("0.25", "ByLayer"),
                   Pairs({{0, "INSERT"},
                          {8, "Frames"},
                          {62, int16_t{256}},
                          {6, "Continuous"},
                          {370, int32_t{25}},
                          {2, "A3,`*U*"},
                          {410, "Model"}})},
        SearchCase{"PolylineIgnoresBlockName", "POLYLINE",
                   AllTicked("1.00", "7"),
                   Pairs({{0, "LWPOLYLINE"},
                          {-4, ">="},
                          {90, int16_t{4}},
                          {-4, "<="},
                          {90, int16_t{5}},
                          {8, "Frames"},
                          {62, "7"},
                          {6, "Continuous"},
                          {370, int32_t{100}},
                          {410, "Model"}})},
        SearchCase{"XRefSearchedAsInsert", "xref",
                   AllTicked("ByBlock", "byblock"),
                   Pairs({{0, "INSERT"},
                          {8, "Frames"},
                          {62, int16_t{0}},
                          {6, "Continuous"},
                          {370, int32_t{-2}},
                          {2, "A3,`*U*"},
                          {410, "Model"}})},
        SearchCase{"EmptyBlockNameAddsNoPair", "BLOCK", BlockNameTicked(""),
                   Pairs({{0, "INSERT"}, {410, "Model"}})},
        SearchCase{"NoTemplateYet", "", AllTicked("Default", "ByLayer"),
                   Pairs({{8, "Frames"},
                          {62, int16_t{256}},
                          {6, "Continuous"},
                          {370, int32_t{-3}},
                          {410, "Model"}})},
        SearchCase{"UnreadableWeightPassesAsText", "",
                   [] {
                     FilterChoices c;
                     c.line_weight_on = true;
                     c.line_weight = "thick";
                     return c;
                   }(),
                   Pairs({{370, "thick"}, {410, "Model"}})}),
    [](const testing::TestParamInfo<SearchCase>& info) {
      return std::string(info.param.name);
    });

}  // namespace
}  // namespace lmt::frames

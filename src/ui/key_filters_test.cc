#include "ui/key_filters.h"

#include <gtest/gtest.h>

namespace lmt::ui {
namespace {

TEST(KeyFiltersTest, FieldsGetTheirFilters) {
  EXPECT_EQ(KeyFilterOf("Text_StrokaNameFile"), KeyFilter::kNaming);
  EXPECT_EQ(KeyFilterOf("Text_MashtabModel"), KeyFilter::kNumeric);
  EXPECT_EQ(KeyFilterOf("Text_ScalePDF"), KeyFilter::kNumeric);
  EXPECT_EQ(KeyFilterOf("Text_NameSloiViewport"), KeyFilter::kNone);
  EXPECT_EQ(KeyFilterOf("UniText_NameAtribute"), KeyFilter::kNone);
}

TEST(KeyFiltersTest, KeysThroughEachFilter) {
  struct Case {
    KeyFilter filter;
    wchar_t key;
    const char* field;
    bool comma;
    std::optional<wchar_t> expected;
  };
  const Case cases[] = {
      {KeyFilter::kNaming, L'1', "", false, L'1'},
      {KeyFilter::kNaming, L'/', "10", false, L'/'},
      {KeyFilter::kNaming, L'\b', "10", false, L'\b'},
      {KeyFilter::kNaming, L'a', "", false, std::nullopt},
      {KeyFilter::kNaming, L'-', "", false, std::nullopt},
      {KeyFilter::kNumeric, L'7', "1", false, L'7'},
      {KeyFilter::kNumeric, L',', "1", false, L'.'},
      {KeyFilter::kNumeric, L'.', "1", true, L','},
      {KeyFilter::kNumeric, L'.', "1.5", false, std::nullopt},
      {KeyFilter::kNumeric, L'-', "", false, std::nullopt},
      {KeyFilter::kNumeric, L'\x0436', "", false, std::nullopt},
      {KeyFilter::kNone, L'\x0436', "", false, L'\x0436'},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FilterKey(c.filter, c.key, c.field, c.comma), c.expected)
        << static_cast<int>(c.key) << " in '" << c.field << "'";
  }
}

}  // namespace
}  // namespace lmt::ui

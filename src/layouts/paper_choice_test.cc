#include "layouts/paper_choice.h"

#include <gtest/gtest.h>

#include "host/paper_media.h"

namespace lmt::layouts {
namespace {

TEST(PaperChoiceTest, FrameSizesPickSheetAndOrientation) {
  struct Case {
    double width, height, tolerance;
    const char* sheet;  // nullptr: none holds it
    bool landscape, exact;
  } cases[] = {
      {420, 297, 1, "A3", true, true},
      {297, 420, 1, "A3", false, true},
      {210, 297, 1, "A4", false, true},
      {1189, 841, 1, "A0", true, true},
      // Tolerance edges: 1 mm off matches, more is the next sheet up.
      {421, 296, 1, "A3", true, true},
      {421.5, 297, 1, "A4x3", true, false},
      {421.5, 297, 2, "A3", true, true},
      // Extended sheets, either way round.
      {891, 420, 1, "A3x3", true, true},
      {297, 630, 1, "A4x3", false, true},
      {841, 297, 1, "A4x4", true, true},
      {1682, 1189, 1, "A0x2", true, true},
      {1783, 841, 1, "A1x3", true, true},
      // No match: the smallest sheet by area that holds it.
      {400, 280, 1, "A3", true, false},
      {600, 290, 1, "A4x3", true, false},
      {300, 300, 1, "A2", true, false},
      {3000, 1000, 1, nullptr, true, false},
  };
  for (const Case& c : cases) {
    std::optional<PaperChoice> got =
        ChoosePaper(c.width, c.height, c.tolerance);
    const std::string what =
        std::to_string(c.width) + " x " + std::to_string(c.height);
    if (c.sheet == nullptr) {
      EXPECT_FALSE(got.has_value()) << what;
      continue;
    }
    ASSERT_TRUE(got.has_value()) << what;
    EXPECT_EQ(got->sheet.name, c.sheet) << what;
    EXPECT_EQ(got->landscape, c.landscape) << what;
    EXPECT_EQ(got->exact, c.exact) << what;
  }
  EXPECT_FALSE(ChoosePaper(0, 297, 1).has_value());
  EXPECT_FALSE(ChoosePaper(420, -1, 1).has_value());
}

// A frame at a viewport scale: 42 m by 29.7 m at 1:100 is an A3 sheet, even
// with the rounding noise of the scale.
TEST(PaperChoiceTest, ScaledFramesMatchDespiteRounding) {
  const double scale = 1.0 / 100.0;
  std::optional<PaperChoice> got =
      ChoosePaper(42000 * scale, 29700.0000001 * scale, 0);
  ASSERT_TRUE(got.has_value());
  EXPECT_EQ(got->sheet.name, "A3");
  EXPECT_TRUE(got->exact);
}

TEST(PaperChoiceTest, MediaNamesFollowTheSheetAsFed) {
  PaperChoice a3{IsoSheetSizes()[1], true, true};
  EXPECT_EQ(MediaNameOf(a3), "ISO_full_bleed_A3_(420.00_x_297.00_MM)");
  a3.landscape = false;
  EXPECT_EQ(MediaNameOf(a3), "ISO_full_bleed_A3_(297.00_x_420.00_MM)");
  std::optional<PaperChoice> a3x3 = ChoosePaper(420, 891, 1);
  ASSERT_TRUE(a3x3.has_value());
  EXPECT_EQ(MediaNameOf(*a3x3), "UserDefinedMetric_(420.00_x_891.00_MM)");
  // Every name reads back as the sheet it names.
  for (const SheetSize& sheet : IsoSheetSizes()) {
    PaperChoice choice{sheet, true, true};
    std::optional<host::MediaSize> size =
        host::MediaSizeFromName(MediaNameOf(choice));
    ASSERT_TRUE(size.has_value()) << sheet.name;
    EXPECT_DOUBLE_EQ(size->width, sheet.long_side) << sheet.name;
    EXPECT_DOUBLE_EQ(size->height, sheet.short_side) << sheet.name;
  }
}

TEST(MediaSizeTest, SizesFromDeviceNames) {
  struct Case {
    const char* name;
    double width, height;
    bool inches;
  } cases[] = {
      {"ISO_full_bleed_A1_(841.00_x_594.00_MM)", 841, 594, false},
      {"ISO A0 (841.00 x 1189.00 MM)", 841, 1189, false},
      {"UserDefinedMetric (420.00 x 891.00MM)", 420, 891, false},
      {"ANSI_A_(8.50_x_11.00_Inches)", 215.9, 279.4, true},
  };
  for (const Case& c : cases) {
    std::optional<host::MediaSize> size = host::MediaSizeFromName(c.name);
    ASSERT_TRUE(size.has_value()) << c.name;
    EXPECT_NEAR(size->width, c.width, 1e-9) << c.name;
    EXPECT_NEAR(size->height, c.height, 1e-9) << c.name;
    EXPECT_EQ(size->inches, c.inches) << c.name;
  }
  for (const char* name : {"A4", "Letter", "ISO_A4_(210.00_x_297.00_CM)",
                           "X_(0.00_x_297.00_MM)", "X_(210_x_)"}) {
    EXPECT_FALSE(host::MediaSizeFromName(name).has_value()) << name;
  }
}

}  // namespace
}  // namespace lmt::layouts

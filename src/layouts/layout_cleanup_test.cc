#include "layouts/layout_cleanup.h"

#include <gtest/gtest.h>

namespace lmt::layouts {
namespace {

using Names = std::vector<std::string>;

TEST(LayoutsToDeleteTest, SparesModelPatternAndNewLayouts) {
  Names before{"Model", "Layout1", "PATTERN", "Sheet 1", "Layout2"};
  EXPECT_EQ(LayoutsToDelete(before, "Pattern", {"sheet 1", "Sheet 2"}),
            (Names{"Layout1", "Layout2"}));
}

TEST(LayoutsToDeleteTest, EmptyPatternProtectsNothingButModel) {
  Names before{"MODEL", "Layout1", ""};
  EXPECT_EQ(LayoutsToDelete(before, "", {"A"}), (Names{"Layout1", ""}));
}

TEST(LayoutsToDeleteTest, NothingWhenNoLayoutWasMade) {
  EXPECT_TRUE(LayoutsToDelete({"Model", "Layout1"}, "", {}).empty());
}

TEST(LayoutsToDeleteTest, ListsEachNameOnce) {
  EXPECT_EQ(LayoutsToDelete({"Лист1", "ЛИСТ1"}, "", {"A"}), (Names{"Лист1"}));
}

}  // namespace
}  // namespace lmt::layouts

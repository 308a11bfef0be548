#include "core/controls.h"

#include <gtest/gtest.h>

#include "core/window.h"

namespace lmt::core {
namespace {

struct TestWindow : Window {
  TestWindow() : Window("TestWindow", {}) {}
  OptionGroup group{this, "Option_Group", 3, 1};
  CheckBox check{this, "Check_Box", false};
  ComboBox list{this, "Combo_List", {"ByLayer", "ByBlock", "1"}, 0};
  ComboBox edit{
      this, "Combo_Edit", {"ByLayer", "ByBlock"}, 0, ComboBox::Stored::kText};
};

TEST(SettingsKeyOfTest, DropsUnderscoresExceptInitializacia) {
  EXPECT_EQ(SettingsKeyOf("Text_MashtabModel"), "TextMashtabModel");
  EXPECT_EQ(SettingsKeyOf("CheckNotRotate"), "CheckNotRotate");
  EXPECT_EQ(SettingsKeyOf("Check_Initializacia"), "Check_Initializacia");
}

TEST(ControlsTest, ValueWords) {
  TestWindow w;
  EXPECT_EQ(w.group.ValueWord(1), "True");
  EXPECT_EQ(w.group.ValueWord(0), "False");
  EXPECT_TRUE(w.group.SetValueWord(2, "TRUE").ok());
  EXPECT_EQ(w.group.selected(), 2);
  EXPECT_TRUE(w.group.SetValueWord(0, "False").ok());  // not selected: no-op
  EXPECT_EQ(w.group.selected(), 2);
  EXPECT_FALSE(w.group.SetValueWord(0, "yes").ok());
  EXPECT_EQ(w.group.selected(), 2);

  EXPECT_TRUE(w.check.SetValueWord(0, "1").ok());
  EXPECT_EQ(w.check.ValueWord(0), "1");
  EXPECT_FALSE(w.check.SetValueWord(0, "2").ok());
  EXPECT_TRUE(w.check.checked());

  EXPECT_TRUE(w.list.SetValueWord(0, "2").ok());
  EXPECT_EQ(w.list.text(), "1");
  EXPECT_EQ(w.list.ValueWord(0), "2");
  EXPECT_FALSE(w.list.SetValueWord(0, "x").ok());
  EXPECT_EQ(w.list.selected(), 0);

  EXPECT_TRUE(w.edit.SetValueWord(0, "byblock").ok());
  EXPECT_EQ(w.edit.selected(), 1);
  EXPECT_TRUE(w.edit.SetValueWord(0, "0.25").ok());
  EXPECT_EQ(w.edit.selected(), -1);
  EXPECT_EQ(w.edit.ValueWord(0), "0.25");
}

TEST(WindowTest, FindsSlotsByKeyIgnoringCase) {
  TestWindow w;
  auto slot = w.FindSlot("optiongroup2");
  ASSERT_TRUE(slot);
  EXPECT_EQ(slot->control, &w.group);
  EXPECT_EQ(slot->slot, 2);
  EXPECT_FALSE(w.FindSlot("OptionGroup3"));
  EXPECT_FALSE(w.FindSlot("OptionGroup"));
  EXPECT_EQ(w.FindControl("Combo_Edit"), &w.edit);
}

}  // namespace
}  // namespace lmt::core

#include "core/windows.h"

#include <gtest/gtest.h>

#include <set>

#include "core/fixed_lists.h"

namespace lmt::core {
namespace {

// Two controls with one key would make the second unreachable by settings
// and --set.
TEST(WindowsTest, NamesAndKeysAreUnique) {
  Windows windows;
  std::set<std::string> names;
  for (Window* window : windows.All()) {
    EXPECT_TRUE(names.insert(window->name()).second) << window->name();
    EXPECT_EQ(windows.Find(window->name()), window);
    std::set<std::string> keys;
    for (Control* control : window->controls()) {
      for (int slot = 0; slot < control->slot_count(); ++slot) {
        EXPECT_TRUE(keys.insert(control->SlotKey(slot)).second)
            << window->name() << "." << control->SlotKey(slot);
      }
    }
  }
  EXPECT_EQ(windows.Find("oknolmt"), &windows.okno_lmt);
  EXPECT_EQ(windows.Find("OknoNews"), nullptr);
  EXPECT_EQ(windows.Secondary().size() + 1, windows.All().size());
}

TEST(WindowsTest, DesignedValues) {
  Windows w;
  EXPECT_EQ(w.okno_sozdat_layout.text_mashtab_bumaga.text(), "1");
  EXPECT_EQ(w.okno_sozdat_layout.text_mashtab_model.text(), "100");
  EXPECT_EQ(w.okno_sozdat_layout.option_select_mashtab.selected(), 0);
  EXPECT_FALSE(w.okno_sozdat_layout.text_name_sloi_viewport.text().empty());
  EXPECT_EQ(w.okno_lmt.text_stroka_name_file.text(), "20");
  EXPECT_EQ(w.okno_lmt.option_block_poisk.selected(), 0);
  EXPECT_EQ(w.okno_lmt.option_sortirovka_spisok.selected(), 0);
  EXPECT_EQ(w.okno_lmt.option_sort_point.selected(), 0);
  EXPECT_EQ(w.okno_option.option_okruglenie.selected(), 0);
  EXPECT_EQ(w.okno_lmt.combo_versia_cad.text(), "AutoCAD");
  EXPECT_EQ(w.okno_lmt.combo_nomer_autocad.text(), "Auto");
  EXPECT_EQ(w.okno_filter.combo_color_linii.text(), "ByLayer");
  EXPECT_EQ(w.okno_function_run_script.uni_text_text_skript.text(),
            "_Layout\r\n_Set\r\nLayout1");
}

TEST(WindowsTest, DependentControlsFollowTheirChoice) {
  Windows w;
  w.okno_lmt.combo_versia_cad.Select(2);
  w.okno_lmt.option_vid_sozdat_layout.Select(1);
  w.okno_lmt.UpdateEnabled();
  EXPECT_FALSE(w.okno_lmt.combo_nomer_autocad.enabled());
  EXPECT_TRUE(w.okno_lmt.uni_text_name_obrazec_layout.enabled());
  EXPECT_FALSE(w.okno_lmt.uni_text_name_obrazec_put_file_layout.enabled());
  OknoSozdatLayout& s = w.okno_sozdat_layout;
  s.option_select_mashtab.Select(1);
  s.UpdateEnabled();
  EXPECT_FALSE(s.text_mashtab_model.enabled());
  EXPECT_TRUE(s.text_auto_mashtab_ramka.enabled());
  EXPECT_FALSE(s.text_copy_shirina.enabled());
  EXPECT_FALSE(s.text_mashtab_annotation_model.enabled());
}

TEST(FixedListsTest, TablesAsTheProductHasThem) {
  const auto versions = SaveVersionList(kSaveVersionDefaultEnglish);
  ASSERT_EQ(versions.size(), static_cast<size_t>(kSaveVersionCount));
  EXPECT_EQ(versions[0], "Active AutoCAD release");
  EXPECT_EQ(versions[1], "AutoCAD R12 DXF (*.dxf)");
  EXPECT_EQ(versions[19], "AutoCAD 2021 DXF (*.dxf)");
  const auto colors = ColorList();
  ASSERT_EQ(colors.size(), 256u);
  EXPECT_EQ(colors[2], "1");
  EXPECT_EQ(colors.back(), "254");
  const auto weights = LineweightList();
  ASSERT_EQ(weights.size(), 27u);
  EXPECT_EQ(weights[2], "Default");
  EXPECT_EQ(weights[3], "0.00");
  EXPECT_EQ(weights.back(), "2.11");
  const auto releases = AutoCadReleaseList();
  ASSERT_EQ(releases.size(), 15u);
  EXPECT_EQ(releases[1], "09");
  EXPECT_EQ(releases.back(), "22");
  EXPECT_EQ(HostKindList().size(), static_cast<size_t>(kHostKindCount));
}

}  // namespace
}  // namespace lmt::core

#include "core/windows.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/fixed_lists.h"

namespace lmt::core {
namespace {

std::optional<double> NumberOf(const std::string& text) {
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0') return std::nullopt;
  return value;
}

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

// A default the settings file cannot hold would be lost at the first save,
// and a choice outside its list would show nothing.
TEST(WindowsTest, EveryDefaultSurvivesTheSettingsFile) {
  Windows w;
  for (Window* window : w.All()) {
    for (Control* control : window->controls()) {
      const std::string where = window->name() + "." + control->name();
      if (auto* group = dynamic_cast<OptionGroup*>(control)) {
        EXPECT_TRUE(group->selected() >= 0 && group->selected() < group->size())
            << where;
      }
      if (auto* combo = dynamic_cast<ComboBox*>(control)) {
        EXPECT_LT(combo->selected(), combo->size()) << where;
      }
      for (int slot = 0; slot < control->slot_count(); ++slot) {
        const std::string word = control->ValueWord(slot);
        EXPECT_TRUE(control->SetValueWord(slot, word).ok()) << where;
        EXPECT_EQ(control->ValueWord(slot), word) << where;
      }
    }
  }
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
  OknoIzmenitPrinter& p = w.okno_izmenit_printer;
  p.option_vid_bumaga.Select(1);
  p.UpdateEnabled();
  EXPECT_TRUE(p.text_name_bumaga.enabled());
  EXPECT_FALSE(p.text_dopusk_bumaga.enabled());
}

// The lists the windows offer: no blank or repeated entry, numbered entries
// in ascending order, and as many entries as the stored indexes expect.
TEST(FixedListsTest, EntriesAreDistinctAndNumbersAscend) {
  const std::vector<std::vector<std::string>> lists = {
      SaveVersionList(kSaveVersionDefaultEnglish),
      ColorList(),
      LineweightList(),
      AutoCadReleaseList(),
      HostKindList(),
      LinetypeList()};
  for (const std::vector<std::string>& list : lists) {
    std::set<std::string> seen;
    double last = -1;
    for (const std::string& entry : list) {
      EXPECT_FALSE(entry.empty());
      EXPECT_TRUE(seen.insert(entry).second) << entry;
      std::optional<double> number = NumberOf(entry);
      if (!number) continue;
      EXPECT_GT(*number, last) << entry;
      last = *number;
    }
  }
  EXPECT_EQ(SaveVersionList(kSaveVersionDefaultEnglish).size(),
            static_cast<size_t>(kSaveVersionCount));
  EXPECT_EQ(HostKindList().size(), static_cast<size_t>(kHostKindCount));
  EXPECT_EQ(ColorList().size(), 256u);
}

}  // namespace
}  // namespace lmt::core

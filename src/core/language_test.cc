#include "core/language.h"

#include <gtest/gtest.h>

#include <set>

#include "core/file_util.h"
#include "core/ini_unicode.h"
#include "testing/temp_dir.h"

namespace lmt::core {
namespace {

class LanguageTest : public ::testing::Test {
 protected:
  void International() {
    ASSERT_TRUE(CreateUnicodeFile(lang_).ok());
    globals_.UseLanguageFile(lang_);
  }
  void Put(std::string_view section, std::string_view key, std::string value) {
    ASSERT_TRUE(WriteIniUnicode(lang_, section, key, value).ok());
  }

  testing::TempDir dir_;
  std::filesystem::path lang_ = dir_ / "Lang.ini";
  Globals globals_;
  Windows windows_;
};

TEST_F(LanguageTest, EmptyLanguageFileGivesEnglishEverywhere) {
  International();
  ApplyLanguage(globals_, windows_);
  for (Window* window : windows_.All()) {
    for (const CaptionEntry& entry : window->caption_table()) {
      EXPECT_EQ(window->caption(entry.key), entry.english)
          << window->name() << "." << entry.key;
    }
  }
  for (int n = 1; n <= kMessageCount; ++n)
    EXPECT_EQ(globals_.messages.Get(n), EnglishMessage(n));
  EXPECT_EQ(globals_.messages.Get(14), globals_.messages.Get(12));
  EXPECT_EQ(windows_.okno_function_import.combo_save_versia.items()[0],
            "Active AutoCAD release");
  EXPECT_EQ(windows_.okno_lmt.FrameTableCaption(2), "ID");
}

TEST_F(LanguageTest, LanguageFileEntriesWin) {
  International();
  Put("OknoLmt", "mnuComand", "Befehle");
  Put("OknoLmt", "TablTekstiLang1", "Layoutname");
  Put("MSG", "MSG0014", "Layoutvorlage angeben.");
  Put("OknoFunctionRunScript", "ComboSaveVersia0", "Aktuelle Version");
  ApplyLanguage(globals_, windows_);
  EXPECT_EQ(windows_.okno_lmt.caption("mnuComand"), "Befehle");
  EXPECT_EQ(windows_.okno_lmt.FrameTableCaption(1), "Layoutname");
  EXPECT_EQ(globals_.messages.Get(14), "Layoutvorlage angeben.");
  EXPECT_EQ(globals_.messages.Get(12), EnglishMessage(12));
  EXPECT_EQ(windows_.okno_function_run_script.combo_save_versia.text(),
            "Aktuelle Version");
  EXPECT_EQ(windows_.okno_function_run_lisp.combo_save_versia.text(),
            "Active AutoCAD release");
}

TEST_F(LanguageTest, RussianModeIgnoresCaseAndKeepsRussian) {
  International();
  Put("OknoLmt", "mnuComand", "Befehle");
  globals_.language_mode = "RUS";
  ApplyLanguage(globals_, windows_);
  EXPECT_EQ(windows_.okno_lmt.caption("mnuComand"), "Команды");
  EXPECT_EQ(globals_.messages.Get(9), RussianMessage(9));
  EXPECT_EQ(windows_.okno_function_run_script.combo_save_versia.items()[0],
            "Пумолчанию из AutoCAD");
}

// Every option button and check box has a caption in both languages, and
// no window names a caption key twice.
TEST(CaptionTableTest, EveryChoiceIsCaptionedOnce) {
  Windows windows;
  for (Window* window : windows.All()) {
    std::set<std::string> keys;
    for (const CaptionEntry& entry : window->caption_table()) {
      EXPECT_TRUE(keys.insert(std::string(entry.key)).second)
          << window->name() << "." << entry.key;
    }
    for (Control* control : window->controls()) {
      const bool is_choice = dynamic_cast<OptionGroup*>(control) != nullptr ||
                             dynamic_cast<CheckBox*>(control) != nullptr;
      if (!is_choice) continue;
      for (int slot = 0; slot < control->slot_count(); ++slot) {
        EXPECT_TRUE(keys.count(control->SlotKey(slot)))
            << window->name() << "." << control->SlotKey(slot);
      }
    }
  }
}

}  // namespace
}  // namespace lmt::core

#include "core/settings.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "core/file_util.h"
#include "core/private_profile.h"
#include "core/text_encoding.h"
#include "testing/temp_dir.h"

namespace lmt::core {
namespace {

// Every control's value words, by window and slot key.
std::map<std::string, std::string> Snapshot(Windows& windows) {
  std::map<std::string, std::string> words;
  for (Window* window : windows.All()) {
    for (Control* control : window->controls()) {
      for (int slot = 0; slot < control->slot_count(); ++slot) {
        words[window->name() + "." + control->SlotKey(slot)] =
            control->ValueWord(slot);
      }
    }
  }
  return words;
}

// The section headers and keys of a settings file, in file order.
std::vector<std::string> Lines(const std::filesystem::path& file) {
  std::string text = ReadTextFile(file).value();
  std::vector<std::string> lines;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t end = text.find("\r\n", pos);
    std::string line = text.substr(pos, end - pos);
    lines.push_back(line.substr(0, line.find('=')));
    pos = end + 2;
  }
  return lines;
}

class SettingsTest : public ::testing::Test {
 protected:
  testing::TempDir dir_;
  std::filesystem::path file_ = dir_ / "LayomatNas.ini";
  Windows windows_;
};

TEST_F(SettingsTest, MissingFileKeepsDesignedValues) {
  const auto designed = Snapshot(windows_);
  ReadStartupSettings(file_, windows_);
  EXPECT_EQ(Snapshot(windows_), designed);
  ASSERT_TRUE(CreateUnicodeFile(file_).ok());
  ReadStartupSettings(file_, windows_);
  EXPECT_EQ(Snapshot(windows_), designed);
  EXPECT_EQ(windows_.okno_sozdat_layout.text_mashtab_model.text(), "100");
  EXPECT_EQ(windows_.okno_lmt.text_stroka_name_file.text(), "20");
}

TEST_F(SettingsTest, FirstExitWritesAllButTheConfirmedSections) {
  ASSERT_TRUE(CreateUnicodeFile(file_).ok());
  ASSERT_TRUE(WriteExitSettings(file_, windows_).ok());
  EXPECT_TRUE(HasUtf16Bom(file_));
  std::vector<std::string> sections;
  std::vector<std::string> layout_keys;
  for (const std::string& line : Lines(file_)) {
    if (line.starts_with("[")) {
      sections.push_back(line);
    } else if (sections.back() == "[OknoSozdatLayout]") {
      layout_keys.push_back(line);
    }
  }
  EXPECT_EQ(sections,
            (std::vector<std::string>{
                "[VersiaCAD]", "[OknoLmt]", "[OknoSozdatLayout]",
                "[OknoIzmenitPrinter]", "[OknoFunctionRunLisp]",
                "[OknoFunctionRunScript]", "[OknoFunctionReplaceAtribut]",
                "[OknoFunctionReplaceTEXT]", "[OknoFunctionImport]"}));
  // Only the main window's CheckNotRotate lands in the layout section.
  EXPECT_EQ(layout_keys, std::vector<std::string>{"CheckNotRotate"});
  EXPECT_EQ(GetProfileString(file_, "VersiaCAD", "NomerVersiaCAD", ""),
            ":;:0:;:");
  EXPECT_EQ(GetProfileString(file_, "OknoLmt", "OptionSortPoint0", ""),
            ":;:True:;:");
}

TEST_F(SettingsTest, MainWindowKeysInWritingOrder) {
  ASSERT_TRUE(WriteSettings(file_, windows_, SettingsBlock::kMainWindow).ok());
  std::vector<std::string> lines = Lines(file_);
  std::vector<std::string> expected = {"[VersiaCAD]", "VersiaCAD",
                                       "NomerVersiaCAD", "[OknoLmt]"};
  for (int i = 0; i < 3; ++i)
    expected.push_back("OptionBlockPoisk" + std::to_string(i));
  for (const char* key :
       {"UniTextNameAtribute", "UniTextLeyoutName0", "UniTextLeyoutName1",
        "UniTextLeyoutName2", "TextStrokaNameFile"})
    expected.push_back(key);
  for (int i = 0; i < 7; ++i)
    expected.push_back("OptionSortirovkaSpisok" + std::to_string(i));
  for (int i = 0; i < 5; ++i)
    expected.push_back("OptionSortPoint" + std::to_string(i));
  // OknoLmt's later keys follow the layout section, which the file already
  // ends with, so they join the first OknoLmt section.
  for (int i = 0; i < 3; ++i)
    expected.push_back("OptionVidSozdatLayout" + std::to_string(i));
  expected.push_back("UniTextNameObrazecLayout");
  expected.push_back("UniTextNameObrazecPutFileLayout");
  expected.push_back("CheckVstavitObject");
  expected.push_back("[OknoSozdatLayout]");
  expected.push_back("CheckNotRotate");
  expected.push_back("[OknoIzmenitPrinter]");
  expected.push_back("CheckIzmenitPrinter");
  EXPECT_EQ(lines, expected);
}

TEST_F(SettingsTest, EverythingRoundTripsExceptTheValueModes) {
  OknoSozdatLayout& s = windows_.okno_sozdat_layout;
  s.text_mashtab_model.set_text("  200,5 ");
  s.option_select_mashtab.Select(1);
  s.check_initializacia.set_checked(false);
  windows_.okno_lmt.combo_versia_cad.Select(6);
  windows_.okno_lmt.check_not_rotate.set_checked(true);
  windows_.okno_lmt.uni_text_leyout_name0.set_text("Лист-");
  windows_.okno_option.option_okruglenie.Select(2);
  windows_.okno_deistvie.text_text_stroka.set_text("Sheet ##1");
  windows_.okno_function_import.combo_rotate_pdf.Select(3);
  windows_.okno_function_replace_text.uni_text_suffix_list.set_text("\"q\"");
  windows_.okno_function_replace_atribut.atribut2.option_value_atribut.Select(
      2);
  windows_.okno_function_replace_text.text3.option_value_text.Select(1);
  windows_.okno_lmt.check_vstavit_object.set_checked(true);
  OknoVstavitObject& v = windows_.okno_vstavit_object;
  v.option_istochnik_vstavki.Select(1);
  v.uni_text_put_file_vstavki.set_text("C:\\Штампы\\stamp.dxf");
  v.text_vstavka_povorot.set_text("90");
  OknoIzmenitPrinter& printer = windows_.okno_izmenit_printer;
  windows_.okno_lmt.check_izmenit_printer.set_checked(true);
  printer.text_name_printer.set_text("Плоттер HP");
  printer.option_vid_bumaga.Select(1);
  printer.text_name_bumaga.set_text("A1 (841 x 594 мм)");
  printer.check_centr_pechati.set_checked(false);
  for (auto block : {SettingsBlock::kMainWindow, SettingsBlock::kOption,
                     SettingsBlock::kCreationParameters,
                     SettingsBlock::kCreationActions, SettingsBlock::kRunScript,
                     SettingsBlock::kRunLisp, SettingsBlock::kReplaceAttributes,
                     SettingsBlock::kReplaceText, SettingsBlock::kImport,
                     SettingsBlock::kInsertion, SettingsBlock::kPrinter}) {
    ASSERT_TRUE(WriteSettings(file_, windows_, block).ok());
  }
  auto expected = Snapshot(windows_);
  // Written as Option_ValueAtribut.., read as OptionValueAtribut..: the
  // designed mode comes back.
  for (const char* key : {"OknoFunctionReplaceAtribut.OptionValueAtribut20",
                          "OknoFunctionReplaceText.OptionValueTEXT30"})
    expected[key] = "True";
  for (const char* key : {"OknoFunctionReplaceAtribut.OptionValueAtribut22",
                          "OknoFunctionReplaceText.OptionValueTEXT31"})
    expected[key] = "False";

  Windows fresh;
  ReadStartupSettings(file_, fresh);
  EXPECT_EQ(Snapshot(fresh), expected);
  EXPECT_EQ(GetProfileString(file_, "OknoFunctionReplaceAtribut",
                             "Option_ValueAtribut22", ""),
            ":;:True:;:");
}

TEST_F(SettingsTest, StoredIndexOutsideTheListSelectsTheFirstEntry) {
  windows_.okno_lmt.combo_versia_cad.Select(3);
  windows_.okno_function_run_script.combo_save_versia.Select(5);
  windows_.okno_lmt.combo_nomer_autocad.Select(2);
  ASSERT_TRUE(WriteProfileString(file_, "VersiaCAD", "VersiaCAD", "7").ok());
  ASSERT_TRUE(WriteProfileString(file_, "OknoFunctionRunScript",
                                 "ComboSaveVersia", ":;:-1:;:")
                  .ok());
  ASSERT_TRUE(
      WriteProfileString(file_, "VersiaCAD", "NomerVersiaCAD", "14").ok());
  ReadStartupSettings(file_, windows_);
  EXPECT_EQ(windows_.okno_lmt.combo_versia_cad.selected(), 0);
  EXPECT_EQ(windows_.okno_function_run_script.combo_save_versia.selected(), 0);
  EXPECT_EQ(windows_.okno_lmt.combo_nomer_autocad.text(), "22");
}

TEST_F(SettingsTest, WordsThatDoNotFitLeaveControlsUnchanged) {
  windows_.okno_lmt.option_sort_point.Select(2);
  windows_.okno_sozdat_layout.check_copy_viewport.set_checked(true);
  ASSERT_TRUE(
      WriteProfileString(file_, "OknoLmt", "OptionSortPoint2", ":;:ja:;:")
          .ok());
  ASSERT_TRUE(WriteProfileString(file_, "OknoSozdatLayout", "CheckCopyViewport",
                                 ":;:x:;:")
                  .ok());
  ASSERT_TRUE(
      WriteProfileString(file_, "OknoLmt", "OptionSortPoint4", "true").ok());
  ReadStartupSettings(file_, windows_);
  EXPECT_TRUE(windows_.okno_sozdat_layout.check_copy_viewport.checked());
  // The later "true" for button 4 is a boolean and selects it.
  EXPECT_EQ(windows_.okno_lmt.option_sort_point.selected(), 4);
}

TEST_F(SettingsTest, StoredFalseForTheSelectedButtonLeavesNoneSelected) {
  ASSERT_TRUE(
      WriteProfileString(file_, "OknoOption", "OptionOkruglenie0", "False")
          .ok());
  ReadSettings(file_, windows_, SettingsBlock::kOption);
  EXPECT_EQ(windows_.okno_option.option_okruglenie.selected(), -1);
}

TEST(ResolveSettingTest, SettingsKeysThenTheKeyConvention) {
  Windows w;
  struct Case {
    const char* section;
    const char* key;
    Control* control;
    int slot;
  } cases[] = {
      {"VersiaCAD", "VersiaCAD", &w.okno_lmt.combo_versia_cad, 0},
      {"versiacad", "nomerversiacad", &w.okno_lmt.combo_nomer_autocad, 0},
      {"OknoSozdatLayout", "CheckNotRotate", &w.okno_lmt.check_not_rotate, 0},
      {"OknoLmt", "CheckNotRotate", &w.okno_lmt.check_not_rotate, 0},
      {"OknoLmt", "OptionSortPoint3", &w.okno_lmt.option_sort_point, 3},
      {"OknoSozdatLayout", "Check_Initializacia",
       &w.okno_sozdat_layout.check_initializacia, 0},
      {"OknoFilter", "ComboVesLinii", &w.okno_filter.combo_ves_linii, 0},
      {"OknoFunctionReplaceTEXT", "OptionValueTEXT21",
       &w.okno_function_replace_text.text2.option_value_text, 1},
      {"OknoFunctionReplaceAtribut", "ComboSaveAsDWGorDXF",
       &w.okno_function_replace_atribut.combo_save_as_dwg_or_dxf, 0},
      {"OknoFunctionRunScript", "UniTextTextSkript",
       &w.okno_function_run_script.uni_text_text_skript, 0},
      {"OknoLmt", "CheckIzmenitPrinter", &w.okno_lmt.check_izmenit_printer, 0},
      {"OknoIzmenitPrinter", "CheckIzmenitPrinter",
       &w.okno_lmt.check_izmenit_printer, 0},
      {"OknoIzmenitPrinter", "OptionVidBumaga1",
       &w.okno_izmenit_printer.option_vid_bumaga, 1},
  };
  for (const Case& c : cases) {
    auto slot = ResolveSetting(w, c.section, c.key);
    ASSERT_TRUE(slot.has_value()) << c.section << "." << c.key;
    EXPECT_EQ(slot->control, c.control) << c.key;
    EXPECT_EQ(slot->slot, c.slot) << c.key;
  }
  EXPECT_FALSE(ResolveSetting(w, "OknoSozdatLayout", "CheckInitializacia"));
  EXPECT_FALSE(
      ResolveSetting(w, "OknoFunctionReplaceAtribut", "Option_ValueAtribut10"));
  EXPECT_FALSE(ResolveSetting(w, "OknoLmt", "OptionSortPoint5"));
  EXPECT_FALSE(ResolveSetting(w, "OknoNope", "TextX"));
}

}  // namespace
}  // namespace lmt::core

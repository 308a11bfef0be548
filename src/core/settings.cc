#include "core/settings.h"

#include "core/ini_unicode.h"
#include "core/private_profile.h"
#include "core/text_encoding.h"

namespace lmt::core {
namespace {

class EntryList {
 public:
  explicit EntryList(std::string section) : section_(std::move(section)) {}

  void set_section(std::string section) { section_ = std::move(section); }

  // Every slot of `control` under its own keys.
  EntryList& Add(Control& control) {
    for (int slot = 0; slot < control.slot_count(); ++slot) {
      const std::string key = control.SlotKey(slot);
      entries_.push_back({section_, key, key, &control, slot});
    }
    return *this;
  }
  EntryList& Add(Control& control, std::string key) {
    entries_.push_back({section_, key, key, &control, 0});
    return *this;
  }
  // A value-mode group of the replace windows: written under the control's
  // name with its underscore, read under its key.
  EntryList& AddValueMode(OptionGroup& group) {
    for (int slot = 0; slot < group.slot_count(); ++slot) {
      entries_.push_back({section_, group.name() + std::to_string(slot),
                          group.SlotKey(slot), &group, slot});
    }
    return *this;
  }

  std::vector<SettingEntry> Take() { return std::move(entries_); }

 private:
  std::string section_;
  std::vector<SettingEntry> entries_;
};

void AddSaveTarget(EntryList& list, CheckBox* save_file, ComboBox* version,
                   OptionGroup& where, TextField& folder, TextField& name) {
  if (save_file != nullptr) list.Add(*save_file);
  if (version != nullptr) list.Add(*version);
  list.Add(where).Add(folder).Add(name);
}

std::vector<SettingEntry> MainWindowEntries(Windows& w) {
  OknoLmt& m = w.okno_lmt;
  EntryList list("VersiaCAD");
  list.Add(m.combo_versia_cad, "VersiaCAD")
      .Add(m.combo_nomer_autocad, "NomerVersiaCAD");
  list.set_section("OknoLmt");
  list.Add(m.option_block_poisk)
      .Add(m.uni_text_name_atribute)
      .Add(m.uni_text_leyout_name0)
      .Add(m.uni_text_leyout_name1)
      .Add(m.uni_text_leyout_name2)
      .Add(m.text_stroka_name_file)
      .Add(m.option_sortirovka_spisok)
      .Add(m.option_sort_point);
  list.set_section("OknoSozdatLayout");
  list.Add(m.check_not_rotate);
  list.set_section("OknoLmt");
  list.Add(m.option_vid_sozdat_layout)
      .Add(m.uni_text_name_obrazec_layout)
      .Add(m.uni_text_name_obrazec_put_file_layout)
      .Add(m.check_vstavit_object);
  // Stored with the set-up it switches on, like CheckNotRotate above.
  list.set_section("OknoIzmenitPrinter");
  list.Add(m.check_izmenit_printer);
  return list.Take();
}

std::vector<SettingEntry> CreationParameterEntries(Windows& w) {
  OknoSozdatLayout& s = w.okno_sozdat_layout;
  EntryList list("OknoSozdatLayout");
  list.Add(s.option_viewport_vert_gor)
      .Add(s.option_select_mashtab)
      .Add(s.text_mashtab_bumaga)
      .Add(s.text_mashtab_model)
      .Add(s.text_auto_mashtab_ramka)
      .Add(s.text_coord_y)
      .Add(s.text_coord_x)
      .Add(s.text_name_sloi_viewport)
      .Add(s.check_zablokirovat_vyport)
      .Add(s.check_oblast_list)
      .Add(s.text_ramka_prirachenie)
      .Add(s.check_copy_viewport)
      .Add(s.text_copy_mashtab_bumaga)
      .Add(s.text_copy_mashtab_model)
      .Add(s.text_copy_coord_y)
      .Add(s.text_copy_coord_x)
      .Add(s.text_copy_shirina)
      .Add(s.text_copy_visota)
      .Add(s.check_mashtab_annotation)
      .Add(s.check_mashtab_annotation_po)
      .Add(s.text_mashtab_annotation_bumaga)
      .Add(s.text_mashtab_annotation_model)
      .Add(s.check_udalit_listi)
      .Add(s.check_initializacia)
      .Add(s.option_viewport_rotate_start)
      .Add(s.check_viewport_rotate_block);
  return list.Take();
}

std::vector<SettingEntry> CreationActionEntries(Windows& w) {
  OknoDeistvie& d = w.okno_deistvie;
  EntryList list("OknoDeistvie");
  list.Add(d.check_sozdat_text)
      .Add(d.text_text_stroka)
      .Add(d.text_text_sloi)
      .Add(d.text_stil_imia)
      .Add(d.text_stil_srift)
      .Add(d.text_text_visota)
      .Add(d.text_text_coord_x)
      .Add(d.text_text_coord_y)
      .Add(d.option_viravnivanie_text)
      .Add(d.check_izmenit_atribut)
      .Add(d.text_name_block)
      .Add(d.text_imia_atribut1)
      .Add(d.text_value_atribut1)
      .Add(d.text_imia_atribut2)
      .Add(d.text_value_atribut2)
      .Add(d.text_imia_atribut3)
      .Add(d.text_value_atribut3);
  return list.Take();
}

std::vector<SettingEntry> RunScriptEntries(Windows& w) {
  OknoFunctionRunScript& s = w.okno_function_run_script;
  EntryList list("OknoFunctionRunScript");
  list.Add(s.uni_text_name_script_file);
  AddSaveTarget(list, &s.check_save_file, &s.combo_save_versia,
                s.option_save_kuda, s.uni_text_put_save_kuda,
                s.uni_text_name_papka_save);
  return list.Take();
}

std::vector<SettingEntry> RunLispEntries(Windows& w) {
  OknoFunctionRunLisp& l = w.okno_function_run_lisp;
  EntryList list("OknoFunctionRunLisp");
  list.Add(l.uni_text_name_lisp_file)
      .Add(l.uni_text_command_lisp_start)
      .Add(l.check_stop_close_file);
  AddSaveTarget(list, &l.check_save_file, &l.combo_save_versia,
                l.option_save_kuda, l.uni_text_put_save_kuda,
                l.uni_text_name_papka_save);
  return list.Take();
}

std::vector<SettingEntry> ReplaceAttributeEntries(Windows& w) {
  OknoFunctionReplaceAtribut& r = w.okno_function_replace_atribut;
  EntryList list("OknoFunctionReplaceAtribut");
  list.Add(r.option_name_layouts)
      .Add(r.uni_text_name_layouts)
      .Add(r.option_name_block)
      .Add(r.uni_text_name_block)
      .Add(r.check_block_vnutri_bloka);
  for (int n = 1; n <= 3; ++n) {
    AttributeGroup& g = r.group(n);
    list.Add(g.check_atribut)
        .Add(g.uni_text_name_atribut)
        .Add(g.uni_text_value_atribut)
        .AddValueMode(g.option_value_atribut)
        .Add(g.uni_text_zam_sh_to_atribut)
        .Add(g.uni_text_zam_na_atribut)
        .Add(g.check_prefix_atribut)
        .Add(g.check_suffix_atribut)
        .Add(g.uni_text_prefix_atribut)
        .Add(g.uni_text_suffix_atribut);
  }
  AddSaveTarget(list, &r.check_save_file, nullptr, r.option_save_kuda,
                r.uni_text_put_save_kuda, r.uni_text_name_papka_save);
  return list.Take();
}

std::vector<SettingEntry> ReplaceTextEntries(Windows& w) {
  OknoFunctionReplaceText& t = w.okno_function_replace_text;
  EntryList list("OknoFunctionReplaceTEXT");
  list.Add(t.option_name_layouts)
      .Add(t.uni_text_name_layouts)
      .Add(t.check_text)
      .Add(t.check_block)
      .Add(t.check_leader)
      .Add(t.option_name_block)
      .Add(t.uni_text_name_block);
  for (int n = 1; n <= 3; ++n) {
    TextGroup& g = t.group(n);
    list.Add(g.check_text)
        .Add(g.uni_text_name_text)
        .Add(g.uni_text_value_text)
        .AddValueMode(g.option_value_text)
        .Add(g.uni_text_zam_na_text)
        .Add(g.check_prefix_text)
        .Add(g.check_suffix_text)
        .Add(g.uni_text_prefix_text)
        .Add(g.uni_text_suffix_text);
  }
  list.Add(t.option_text_or_list)
      .Add(t.option_value_list)
      .Add(t.check_prefix_list)
      .Add(t.check_suffix_list)
      .Add(t.uni_text_prefix_list)
      .Add(t.uni_text_suffix_list);
  AddSaveTarget(list, &t.check_save_file, nullptr, t.option_save_kuda,
                t.uni_text_put_save_kuda, t.uni_text_name_papka_save);
  return list.Take();
}

std::vector<SettingEntry> ImportEntries(Windows& w) {
  OknoFunctionImport& i = w.okno_function_import;
  EntryList list("OknoFunctionImport");
  list.Add(i.option_import_kuda)
      .Add(i.combo_format_import)
      .Add(i.option_page_pdf)
      .Add(i.text_scale_pdf)
      .Add(i.combo_rotate_pdf)
      .Add(i.text_interval_pdf)
      .Add(i.check_pdfimportfilter1)
      .Add(i.check_pdfimportfilter2)
      .Add(i.check_pdfimportfilter3)
      .Add(i.check_pdfimportfilter4)
      .Add(i.option_pdfimportlayers)
      .Add(i.check_pdfimportmode1)
      .Add(i.check_pdfimportmode2)
      .Add(i.check_pdfimportmode3)
      .Add(i.check_pdfimportmode4)
      .Add(i.check_pdfimportmode5)
      .Add(i.check_vlozenii_papki);
  AddSaveTarget(list, nullptr, &i.combo_save_versia, i.option_save_kuda,
                i.uni_text_put_save_kuda, i.uni_text_name_papka_save);
  list.Add(i.check_save_otdelno_papka);
  return list.Take();
}

std::vector<SettingEntry> InsertionEntries(Windows& w) {
  OknoVstavitObject& v = w.okno_vstavit_object;
  EntryList list("OknoVstavitObject");
  list.Add(v.option_istochnik_vstavki)
      .Add(v.uni_text_name_block_vstavki)
      .Add(v.uni_text_put_file_vstavki)
      .Add(v.text_vstavka_coord_x)
      .Add(v.text_vstavka_coord_y)
      .Add(v.text_vstavka_mashtab)
      .Add(v.text_vstavka_povorot)
      .Add(v.text_vstavka_sloi);
  return list.Take();
}

std::vector<SettingEntry> PrinterEntries(Windows& w) {
  OknoIzmenitPrinter& p = w.okno_izmenit_printer;
  EntryList list("OknoIzmenitPrinter");
  list.Add(p.text_name_printer)
      .Add(p.option_vid_bumaga)
      .Add(p.text_name_bumaga)
      .Add(p.text_dopusk_bumaga)
      .Add(p.text_stil_pechati)
      .Add(p.check_centr_pechati)
      .Add(p.check_mashtab_odin);
  return list.Take();
}

constexpr SettingsBlock kAllBlocks[] = {
    SettingsBlock::kMainWindow,
    SettingsBlock::kOption,
    SettingsBlock::kCreationParameters,
    SettingsBlock::kCreationActions,
    SettingsBlock::kRunScript,
    SettingsBlock::kRunLisp,
    SettingsBlock::kReplaceAttributes,
    SettingsBlock::kReplaceText,
    SettingsBlock::kImport,
    SettingsBlock::kSortLayouts,
    SettingsBlock::kInsertion,
    SettingsBlock::kPrinter,
};

}  // namespace

std::vector<SettingEntry> SettingEntries(Windows& windows,
                                         SettingsBlock block) {
  switch (block) {
    case SettingsBlock::kMainWindow:
      return MainWindowEntries(windows);
    case SettingsBlock::kOption: {
      EntryList list("OknoOption");
      list.Add(windows.okno_option.option_okruglenie)
          .Add(windows.okno_option.check_proverka_obnovlenia);
      return list.Take();
    }
    case SettingsBlock::kCreationParameters:
      return CreationParameterEntries(windows);
    case SettingsBlock::kCreationActions:
      return CreationActionEntries(windows);
    case SettingsBlock::kRunScript:
      return RunScriptEntries(windows);
    case SettingsBlock::kRunLisp:
      return RunLispEntries(windows);
    case SettingsBlock::kReplaceAttributes:
      return ReplaceAttributeEntries(windows);
    case SettingsBlock::kReplaceText:
      return ReplaceTextEntries(windows);
    case SettingsBlock::kImport:
      return ImportEntries(windows);
    case SettingsBlock::kSortLayouts: {
      EntryList list("OknoSortLayouts");
      list.Add(windows.okno_sort_layouts.option_sort_layouts)
          .Add(windows.okno_sort_layouts.text_tag_atribut);
      return list.Take();
    }
    case SettingsBlock::kInsertion:
      return InsertionEntries(windows);
    case SettingsBlock::kPrinter:
      return PrinterEntries(windows);
  }
  LMT_CHECK(false);
  return {};
}

Status WriteSettings(const std::filesystem::path& file, Windows& windows,
                     SettingsBlock block) {
  Status first;
  for (const SettingEntry& entry : SettingEntries(windows, block)) {
    std::string value = entry.control->ValueWord(entry.slot);
    Status s = WriteIniUnicode(file, entry.section, entry.write_key, value);
    if (!s.ok() && first.ok()) first = s;
  }
  return first;
}

namespace {

void ReadSettingsFrom(const ProfileSnapshot& file, Windows& windows,
                      SettingsBlock block) {
  for (const SettingEntry& entry : SettingEntries(windows, block)) {
    const std::string fallback = entry.control->ReadDefault(entry.slot);
    const std::string word =
        ReadIniUnicode(file, entry.section, entry.read_key, fallback);
    // A word that does not fit leaves the control as it is (or, for an index
    // list, on its first entry): the conversion error is dropped here.
    entry.control->SetValueWord(entry.slot, word).IgnoreError();
  }
}

}  // namespace

void ReadSettings(const std::filesystem::path& file, Windows& windows,
                  SettingsBlock block) {
  ReadSettingsFrom(ProfileSnapshot(file), windows, block);
}

void ReadStartupSettings(const std::filesystem::path& file, Windows& windows) {
  const ProfileSnapshot profile(file);
  for (SettingsBlock block :
       {SettingsBlock::kCreationActions, SettingsBlock::kOption,
        SettingsBlock::kCreationParameters, SettingsBlock::kMainWindow,
        SettingsBlock::kRunLisp, SettingsBlock::kRunScript,
        SettingsBlock::kReplaceAttributes, SettingsBlock::kReplaceText,
        SettingsBlock::kImport, SettingsBlock::kSortLayouts,
        SettingsBlock::kInsertion, SettingsBlock::kPrinter}) {
    ReadSettingsFrom(profile, windows, block);
  }
}

Status WriteExitSettings(const std::filesystem::path& file, Windows& windows) {
  Status first;
  for (SettingsBlock block :
       {SettingsBlock::kMainWindow, SettingsBlock::kRunLisp,
        SettingsBlock::kRunScript, SettingsBlock::kReplaceAttributes,
        SettingsBlock::kReplaceText, SettingsBlock::kImport}) {
    Status s = WriteSettings(file, windows, block);
    if (!s.ok() && first.ok()) first = s;
  }
  return first;
}

std::optional<Window::Slot> ResolveSetting(Windows& windows,
                                           std::string_view section,
                                           std::string_view key) {
  for (SettingsBlock block : kAllBlocks) {
    for (const SettingEntry& entry : SettingEntries(windows, block)) {
      if (EqualsIgnoreAsciiCase(entry.section, section) &&
          EqualsIgnoreAsciiCase(entry.read_key, key)) {
        return Window::Slot{entry.control, entry.slot};
      }
    }
  }
  if (Window* window = windows.Find(section)) return window->FindSlot(key);
  return std::nullopt;
}

}  // namespace lmt::core

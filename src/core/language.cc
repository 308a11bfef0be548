#include "core/language.h"

#include "core/fixed_lists.h"
#include "core/ini_unicode.h"
#include "core/private_profile.h"

namespace lmt::core {
namespace {

constexpr std::string_view kMessageSection = "MSG";
constexpr std::string_view kSaveVersionDefaultKey = "ComboSaveVersia0";

// The language file's order of the windows' sections.
std::vector<Window*> LanguageOrder(Windows& w) {
  return {&w.okno_lmt,
          &w.okno_option,
          &w.okno_filter,
          &w.okno_function_on_off_viewport,
          &w.okno_function_del_vne_viewport,
          &w.okno_function_run_lisp,
          &w.okno_function_run_script,
          &w.okno_function_replace_atribut,
          &w.okno_function_replace_text,
          &w.okno_function_import,
          &w.okno_nano_cad_versia,
          &w.okno_deistvie,
          &w.okno_sozdat_layout,
          &w.okno_name_layouts,
          &w.okno_sort_layouts,
          &w.okno_vstavit_object,
          &w.okno_izmenit_printer};
}

// Entry 0 of the save-version lists is named by the window's caption.
void NameSaveVersionDefault(Windows& w) {
  for (auto [window, combo] :
       {std::pair<Window*, ComboBox*>{
            &w.okno_function_run_script,
            &w.okno_function_run_script.combo_save_versia},
        {&w.okno_function_run_lisp,
         &w.okno_function_run_lisp.combo_save_versia},
        {&w.okno_function_import, &w.okno_function_import.combo_save_versia}}) {
    combo->set_item(0, window->caption(kSaveVersionDefaultKey));
  }
}

}  // namespace

void ApplyLanguage(Globals& globals, Windows& windows) {
  if (globals.russian()) {
    globals.messages.LoadRussian();
    for (Window* window : windows.All()) window->UseRussianCaptions();
    NameSaveVersionDefault(windows);
    return;
  }
  const ProfileSnapshot file(globals.language_file_path);
  for (Window* window : LanguageOrder(windows)) {
    for (const CaptionEntry& entry : window->caption_table()) {
      window->set_caption(entry.key, ReadIniUnicode(file, window->name(),
                                                    entry.key, entry.english));
    }
  }
  for (int n = 1; n <= kMessageCount; ++n) {
    globals.messages.Set(n, ReadIniUnicode(file, kMessageSection, MessageKey(n),
                                           EnglishMessage(n)));
  }
  NameSaveVersionDefault(windows);
}

}  // namespace lmt::core

#include "core/windows.h"

#include "core/text_encoding.h"

namespace lmt::core {

std::vector<Window*> Windows::All() {
  std::vector<Window*> all = {&okno_lmt};
  for (Window* window : Secondary()) all.push_back(window);
  return all;
}

std::vector<Window*> Windows::Secondary() {
  return {&okno_option,
          &okno_filter,
          &okno_function_on_off_viewport,
          &okno_function_del_vne_viewport,
          &okno_function_run_lisp,
          &okno_function_run_script,
          &okno_function_replace_atribut,
          &okno_function_replace_text,
          &okno_function_import,
          &okno_nano_cad_versia,
          &okno_deistvie,
          &okno_sozdat_layout,
          &okno_name_layouts,
          &okno_sort_layouts,
          &okno_vstavit_object,
          &okno_izmenit_printer};
}

Window* Windows::Find(std::string_view name) {
  for (Window* window : All()) {
    if (EqualsIgnoreAsciiCase(window->name(), name)) return window;
  }
  return nullptr;
}

}  // namespace lmt::core

// All window models of the add-in, one instance each for the whole run.
// Logic reaches a control by type (windows.okno_sozdat_layout
// .text_mashtab_model.text()); the settings, language and command-line
// routines reach it by window name and settings key (Find, FindSlot).
#ifndef LMT_CORE_WINDOWS_H_
#define LMT_CORE_WINDOWS_H_

#include <string_view>
#include <vector>

#include "core/batch_windows.h"
#include "core/filter_window.h"
#include "core/insert_window.h"
#include "core/layout_windows.h"
#include "core/main_window.h"
#include "core/printer_window.h"
#include "core/sort_layouts_window.h"
#include "core/utility_windows.h"
#include "core/window.h"

namespace lmt::core {

struct Windows {
  Windows() = default;
  Windows(const Windows&) = delete;
  Windows& operator=(const Windows&) = delete;

  OknoLmt okno_lmt;
  OknoFilter okno_filter;
  OknoSozdatLayout okno_sozdat_layout;
  OknoDeistvie okno_deistvie;
  OknoOption okno_option;
  OknoNameLayouts okno_name_layouts;
  OknoFunctionOnOffViewport okno_function_on_off_viewport;
  OknoFunctionDelVneViewport okno_function_del_vne_viewport;
  OknoFunctionRunScript okno_function_run_script;
  OknoFunctionRunLisp okno_function_run_lisp;
  OknoFunctionReplaceAtribut okno_function_replace_atribut;
  OknoFunctionReplaceText okno_function_replace_text;
  OknoFunctionImport okno_function_import;
  OknoNanoCADVersia okno_nano_cad_versia;
  OknoSortLayouts okno_sort_layouts;
  OknoVstavitObject okno_vstavit_object;
  OknoIzmenitPrinter okno_izmenit_printer;

  // Every window, the main window first.
  std::vector<Window*> All();
  // The secondary windows in the order they are loaded at start-up.
  std::vector<Window*> Secondary();
  // The window named `name` (ASCII case ignored), or nullptr.
  Window* Find(std::string_view name);
};

}  // namespace lmt::core

#endif  // LMT_CORE_WINDOWS_H_

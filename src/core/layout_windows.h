// The windows that shape layout creation: the creation parameters
// (OknoSozdatLayout), the actions after creation (OknoDeistvie), the choice
// of the pattern layout (OknoNameLayouts) and the options window
// (OknoOption, which holds the rounding of the sort coordinates).
//
// Designed values of OknoSozdatLayout: fixed scale 1 : 100 (option 0);
// frame-width scale 420 paper units; viewport corner at 0, 0; increment 0;
// viewport layer "Viewport"; viewport locked; plot area = layout; each
// viewport switched on after creation; old layouts kept; horizontal frames
// (option 0); rotation rule 0 ("Intellectual"), block rotation off; no
// annotation scale (when switched on: equal to the viewport scale, else
// 1 : 100); no second viewport (when switched on: 1 : 100 at 0, 0,
// 100 x 100).
// Designed values of OknoDeistvie: no text ("##3" at 10, 10, height 5 on
// layer "0", style "Standard" with "txt.shx", middle left); no attribute
// change, all tags and values empty.
// Designed values of OknoOption: rounding option 0, no update check.
#ifndef LMT_CORE_LAYOUT_WINDOWS_H_
#define LMT_CORE_LAYOUT_WINDOWS_H_

#include <string>
#include <vector>

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

struct OknoSozdatLayout : Window {
  OknoSozdatLayout();

  OptionGroup option_viewport_vert_gor;  // 2
  OptionGroup option_select_mashtab;     // 2
  TextField text_mashtab_bumaga;
  TextField text_mashtab_model;
  TextField text_auto_mashtab_ramka;
  TextField text_coord_y;
  TextField text_coord_x;
  TextField text_name_sloi_viewport;
  CheckBox check_zablokirovat_vyport;
  CheckBox check_oblast_list;
  TextField text_ramka_prirachenie;
  CheckBox check_copy_viewport;
  TextField text_copy_mashtab_bumaga;
  TextField text_copy_mashtab_model;
  TextField text_copy_coord_y;
  TextField text_copy_coord_x;
  TextField text_copy_shirina;
  TextField text_copy_visota;
  CheckBox check_mashtab_annotation;
  CheckBox check_mashtab_annotation_po;
  TextField text_mashtab_annotation_bumaga;
  TextField text_mashtab_annotation_model;
  CheckBox check_udalit_listi;
  CheckBox check_initializacia;              // key "Check_Initializacia"
  OptionGroup option_viewport_rotate_start;  // 2
  CheckBox check_viewport_rotate_block;

  // Enables the fields of the chosen scale option, the explicit annotation
  // scale while the annotation scale is set, and the second viewport's
  // fields while it is set, as the window's click handlers do.
  void UpdateEnabled();
};

struct OknoDeistvie : Window {
  OknoDeistvie();

  CheckBox check_sozdat_text;
  TextField text_text_stroka;
  TextField text_text_sloi;
  TextField text_stil_imia;
  TextField text_stil_srift;
  TextField text_text_visota;
  TextField text_text_coord_x;
  TextField text_text_coord_y;
  OptionGroup option_viravnivanie_text;  // 3: attachment 4, 5, 6
  CheckBox check_izmenit_atribut;
  TextField text_name_block;
  TextField text_imia_atribut1;
  TextField text_value_atribut1;
  TextField text_imia_atribut2;
  TextField text_value_atribut2;
  TextField text_imia_atribut3;
  TextField text_value_atribut3;
};

// Lists the active drawing's layouts (except "Model") for the user to pick
// the pattern layout; its OK copies the chosen name to the main window.
struct OknoNameLayouts : Window {
  OknoNameLayouts();

  std::vector<std::string> layout_names;  // filled when shown
  int selected_row = -1;                  // index into layout_names
};

struct OknoOption : Window {
  OknoOption();

  OptionGroup option_okruglenie;  // 4
  CheckBox check_proverka_obnovlenia;
};

}  // namespace lmt::core

#endif  // LMT_CORE_LAYOUT_WINDOWS_H_

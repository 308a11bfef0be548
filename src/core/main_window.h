// OknoLmt, the main window: host choice, template and block search mode,
// naming, sorting and the layout creation mode. Designed values (a fresh
// installation, before any settings file):
//   host kind 0 (AutoCAD), AutoCAD release "Auto";
//   block search mode 0 ("By polyline inside");
//   attribute tag and the three free naming texts empty;
//   naming template "20" (the frame's number);
//   sort option 0 (columns left to right, top down), sort point 0 (centre),
//   "Only without rotation" clear;
//   creation mode 0 (new empty layout), pattern layout and file empty;
//   insert objects and printer change clear.
#ifndef LMT_CORE_MAIN_WINDOW_H_
#define LMT_CORE_MAIN_WINDOW_H_

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

// Column headers of the frame table that follow the interface language:
// caption keys TablTekstiLang0 .. TablTekstiLang6.
inline constexpr int kFrameTableCaptionCount = 7;

struct OknoLmt : Window {
  OknoLmt();

  // Section VersiaCAD of the settings file.
  ComboBox combo_versia_cad;     // host kind 0..6
  ComboBox combo_nomer_autocad;  // enabled only while host kind 0

  OptionGroup option_block_poisk;  // 3
  TextField uni_text_name_atribute;
  TextField uni_text_leyout_name0;       // naming code "10"
  TextField uni_text_leyout_name1;       // "11"
  TextField uni_text_leyout_name2;       // "12"
  TextField text_stroka_name_file;       // naming template
  OptionGroup option_sortirovka_spisok;  // 7
  CheckBox check_not_rotate;             // stored under OknoSozdatLayout
  OptionGroup option_sort_point;         // 5
  OptionGroup option_vid_sozdat_layout;  // 3
  TextField uni_text_name_obrazec_layout;
  TextField uni_text_name_obrazec_put_file_layout;
  CheckBox check_vstavit_object;
  CheckBox check_izmenit_printer;

  // Texts the window shows but the user does not choose: the kind of the
  // active frame template ("Active template:") and the found-frames count.
  std::string active_template;
  std::string found_count = "0";

  // Enables the controls that depend on others, as the window's click
  // handlers do: the AutoCAD release list only for host kind 0, the pattern
  // layout for creation modes 1 and 2, its file for mode 2.
  void UpdateEnabled();

  // The header caption of frame-table column `index` (0..6 as in
  // TablTekstiLang).
  const std::string& FrameTableCaption(int index) const;
};

}  // namespace lmt::core

#endif  // LMT_CORE_MAIN_WINDOW_H_

// The page set-up window (OknoIzmenitPrinter), opened by the main window's
// Command_ParamIzmenitPrinter: which plot device each new layout gets, its
// paper (picked from the frame's size on paper, or one fixed paper by the
// device's name), the tolerance of that pick, the plot style table, whether
// the plot is centred and plotted 1:1. The main window's
// Check_IzmenitPrinter switches the whole set-up on.
//
// Designed values: "DWG To PDF.pc3", paper from the frame (option 0), fixed
// paper "ISO_full_bleed_A3_(420.00_x_297.00_MM)", tolerance 1 mm, style
// table "monochrome.ctb", centred, 1:1.
#ifndef LMT_CORE_PRINTER_WINDOW_H_
#define LMT_CORE_PRINTER_WINDOW_H_

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

struct OknoIzmenitPrinter : Window {
  OknoIzmenitPrinter();

  TextField text_name_printer;
  OptionGroup option_vid_bumaga;  // 2: from the frame, fixed
  TextField text_name_bumaga;
  TextField text_dopusk_bumaga;  // millimetres
  TextField text_stil_pechati;
  CheckBox check_centr_pechati;
  CheckBox check_mashtab_odin;

  // The fixed paper's name is typed only while it is chosen; the tolerance
  // only counts while the paper follows the frame.
  void UpdateEnabled();
};

}  // namespace lmt::core

#endif  // LMT_CORE_PRINTER_WINDOW_H_

// OknoVstavitObject, the insertion options of layout creation: what the
// main window's "Insert objects" puts on every new layout's sheet. The
// source is a block of the drawing (option 0) or a drawing file whose model
// space becomes a block named after the file (option 1); it is placed at X,
// Y on the sheet (paper units) with a scale, a rotation in degrees and a
// layer. Stored in its own settings section, written on Save.
//
// Designed values: block of the drawing, no name, no file; at 0, 0, scale
// 1, rotation 0, layer "0".
#ifndef LMT_CORE_INSERT_WINDOW_H_
#define LMT_CORE_INSERT_WINDOW_H_

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

struct OknoVstavitObject : Window {
  OknoVstavitObject();

  OptionGroup option_istochnik_vstavki;  // 2: block, drawing file
  TextField uni_text_name_block_vstavki;
  TextField uni_text_put_file_vstavki;
  TextField text_vstavka_coord_x;
  TextField text_vstavka_coord_y;
  TextField text_vstavka_mashtab;
  TextField text_vstavka_povorot;
  TextField text_vstavka_sloi;
};

}  // namespace lmt::core

#endif  // LMT_CORE_INSERT_WINDOW_H_

// OknoFilter, the template filter: which captured properties of the frame
// template narrow the search. Not stored in the settings file. Its lists are
// editable: their value words are the texts shown, not indexes. Designed
// values: every criterion off except "Block Name:" (on, so that a block
// template finds only its own block once captured); layer "0", colour,
// linetype and lineweight "ByLayer", block name empty.
#ifndef LMT_CORE_FILTER_WINDOW_H_
#define LMT_CORE_FILTER_WINDOW_H_

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

struct OknoFilter : Window {
  OknoFilter();

  CheckBox check_tolko_v_sloe;
  ComboBox combo_sloy_linii;
  CheckBox check_tolko_v_cvete;
  ComboBox combo_color_linii;
  CheckBox check_tolko_v_tip;
  ComboBox combo_tip_linii;
  CheckBox check_tolko_v_ves;
  ComboBox combo_ves_linii;
  CheckBox check_tolko_name_block;
  TextField uni_text_name_block;
};

}  // namespace lmt::core

#endif  // LMT_CORE_FILTER_WINDOW_H_

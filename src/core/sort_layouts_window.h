// The "Sort Layouts" window: which order the layout tabs get (by name in
// natural order, the frame table's order, the current order reversed, or
// an attribute of each layout's title block) and the attribute's tag. Its
// Sort button sorts the connected drawing's tabs; its choices are stored
// in their own section of the settings file when it sorts.
#ifndef LMT_CORE_SORT_LAYOUTS_WINDOW_H_
#define LMT_CORE_SORT_LAYOUTS_WINDOW_H_

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

struct OknoSortLayouts : Window {
  // The buttons of option_sort_layouts, in their order on the window.
  enum Order { kByName = 0, kByTable = 1, kReversed = 2, kByAttribute = 3 };

  OknoSortLayouts();

  OptionGroup option_sort_layouts;  // 4: see Order
  TextField text_tag_atribut;       // the tag for kByAttribute
};

}  // namespace lmt::core

#endif  // LMT_CORE_SORT_LAYOUTS_WINDOW_H_

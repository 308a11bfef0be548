// The layout utilities' windows and the nanoCAD registration window.
// Designed values: viewports "On Off" ticked with "On" selected.
#ifndef LMT_CORE_UTILITY_WINDOWS_H_
#define LMT_CORE_UTILITY_WINDOWS_H_

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

struct OknoFunctionOnOffViewport : Window {
  OknoFunctionOnOffViewport();

  CheckBox check_viewport_on_off;
  OptionGroup option_viewport_on_off;  // 0 on, 1 off
};

// Only captions: the work starts from its button.
struct OknoFunctionDelVneViewport : Window {
  OknoFunctionDelVneViewport();
};

// Installed nanoCAD versions and their folders, filled when shown.
struct OknoNanoCADVersia : Window {
  OknoNanoCADVersia();

  ComboBox list_vers_nano_cad;
  ComboBox list_put_nano_cad;
};

}  // namespace lmt::core

#endif  // LMT_CORE_UTILITY_WINDOWS_H_

// layomat settings [WINDOW...]: prints the controls as a command would see
// them (designed values, then the settings file, then --set), one
// "Window.Key=value word" line per settings key, and the product name the
// chosen language gives. Useful to check a settings file or a --set.
#include <ostream>

#include "cli/registry.h"
#include "core/text_encoding.h"
#include "core/windows.h"

namespace lmt::cli {
namespace {

bool Wanted(const std::vector<std::string>& names, std::string_view window) {
  if (names.empty()) return true;
  for (const std::string& name : names) {
    if (core::EqualsIgnoreAsciiCase(name, window)) return true;
  }
  return false;
}

int RunSettings(CommandContext& context) {
  core::Windows& windows = context.addin.windows();
  for (const std::string& name : context.options.args) {
    if (windows.Find(name) == nullptr) {
      context.err << "layomat: unknown window " << name << "\n";
      return kExitUsage;
    }
  }
  context.out << "# " << context.addin.globals().product_name << " "
              << context.addin.globals().version << "\n";
  for (core::Window* window : windows.All()) {
    if (!Wanted(context.options.args, window->name())) continue;
    for (core::Control* control : window->controls()) {
      for (int slot = 0; slot < control->slot_count(); ++slot) {
        context.out << window->name() << "." << control->SlotKey(slot) << "="
                    << control->ValueWord(slot) << "\n";
      }
    }
  }
  return kExitOk;
}

const CommandRegistration kSettings({
    "settings",
    "layomat settings [WINDOW...] [--settings FILE] [--set ...]",
    "print every control's value as the commands would use it",
    &RunSettings,
});

}  // namespace
}  // namespace lmt::cli

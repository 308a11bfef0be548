// layomat settings [WINDOW...]: prints the controls as a command would see
// them (designed values, then the settings file, then --set), one
// "Window.Key=value word" line per settings key, and the product name the
// chosen language gives. Useful to check a settings file or a --set.
// --explain adds below each its meaning and the plain options that set it.
#include <ostream>

#include "cli/control_meanings.h"
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

// The lines --explain adds below a control's value: its meaning and the
// plain options that set it, "-" where there is none.
void Explain(CommandContext& context, const core::Control& control, int slot) {
  core::Windows& windows = context.addin.windows();
  const std::string_view meaning = MeaningOf(windows, control, slot);
  context.out << "    meaning: " << (meaning.empty() ? "-" : meaning) << "\n";
  const std::vector<std::string> options =
      PlainOptionsOf(windows, control, slot);
  context.out << "    option: ";
  if (options.empty()) context.out << "-";
  for (size_t i = 0; i < options.size(); ++i) {
    context.out << (i ? ", " : "") << options[i];
  }
  context.out << "\n";
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
        if (context.options.explain) Explain(context, *control, slot);
      }
    }
  }
  return kExitOk;
}

const CommandRegistration kSettings({
    "settings",
    "layomat settings [WINDOW...] [--explain] [--settings FILE] [--set ...]",
    "print every control's value as the commands would use it",
    &RunSettings,
});

}  // namespace
}  // namespace lmt::cli

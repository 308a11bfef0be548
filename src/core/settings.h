// The settings file "LayomatNas.ini": which control is stored under which
// section and key, in which order, and when.
//
// Each block below is one window's write routine and read routine. Its
// entries are in writing order and keep the file format's quirks: the main
// window's routines also store CheckNotRotate, under section
// OknoSozdatLayout; the replace-text window's section is spelled
// "OknoFunctionReplaceTEXT"; the two replace windows store no
// ComboSaveVersia; their value modes are written as "Option_ValueAtribut10"
// (with the underscore) but read as "OptionValueAtribut10", so a stored mode
// never comes back.
//
// Reading a key passes the control's present value word as the default, so
// a missing key leaves the control as it is; an index list passes "0" and
// selects its first entry when the stored index is not in the list; a word
// that does not fit a check box or option button leaves it unchanged.
// Failures to read are silent; writing returns the first failure but goes on
// with the other keys.
#ifndef LMT_CORE_SETTINGS_H_
#define LMT_CORE_SETTINGS_H_

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "core/windows.h"

namespace lmt::core {

inline constexpr std::string_view kSettingsFileName = "LayomatNas.ini";

enum class SettingsBlock {
  kMainWindow,          // sections VersiaCAD, OknoLmt (+ CheckNotRotate)
  kOption,              // OknoOption: written on confirmation
  kCreationParameters,  // OknoSozdatLayout: written on confirmation
  kCreationActions,     // OknoDeistvie: written on confirmation
  kRunScript,
  kRunLisp,
  kReplaceAttributes,
  kReplaceText,
  kImport,
  kSortLayouts,  // OknoSortLayouts: written when it sorts
  kInsertion,    // OknoVstavitObject: written on confirmation
  kPrinter,      // OknoIzmenitPrinter: written on confirmation
};

struct SettingEntry {
  std::string section;
  std::string write_key;
  std::string read_key;
  Control* control;
  int slot;  // option button index; 0 for other controls
};

// The entries of one block, in writing order.
std::vector<SettingEntry> SettingEntries(Windows& windows, SettingsBlock block);

Status WriteSettings(const std::filesystem::path& file, Windows& windows,
                     SettingsBlock block);
void ReadSettings(const std::filesystem::path& file, Windows& windows,
                  SettingsBlock block);

// Start-up: actions, options, layout parameters, main window, Lisp, script,
// attribute replacement, text replacement, import, layout sorting,
// insertion.
void ReadStartupSettings(const std::filesystem::path& file, Windows& windows);
// Exit: main window, Lisp, script, attribute replacement, text replacement,
// import. (The options, layout-parameter and action windows are written
// when the user confirms them, with WriteSettings.)
Status WriteExitSettings(const std::filesystem::path& file, Windows& windows);

// A "SECTION.KEY" as the command line names it: first as an entry of the
// settings file (the key as it is read), then as any control of the window
// named SECTION by the key convention. ASCII case is ignored. nullopt when
// neither knows it.
std::optional<Window::Slot> ResolveSetting(Windows& windows,
                                           std::string_view section,
                                           std::string_view key);

}  // namespace lmt::core

#endif  // LMT_CORE_SETTINGS_H_

// The add-in object: global state, the window models and their views, and
// the start-up and shut-down order that the public class LmtView drives.
//
// Start-up (StartProgram): exiting cleared, decimal separator detected, the
// thirteen secondary windows and then the main window loaded hidden, the
// interface language applied, the start-up routines of other subsystems run
// (frame table columns, batch modules, layout sorting), the host lists set to
// their first entries, the frame search's state flags cleared, the settings
// read, the main window shown, started set. Exit (ExitProgram): exiting set,
// the exit settings written, every window unloaded, the main window last.
// Failures are never reported to the caller; a settings folder that cannot
// be made is shown as "Error159753".
#ifndef LMT_CORE_PROGRAM_H_
#define LMT_CORE_PROGRAM_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "core/environment.h"
#include "core/globals.h"
#include "core/settings.h"
#include "core/view.h"
#include "core/windows.h"

namespace lmt::core {

class AddIn {
 public:
  // `view` may be nullptr (a HeadlessView is used); it must outlive the
  // add-in.
  explicit AddIn(Environment env, WindowView* view = nullptr);
  AddIn(const AddIn&) = delete;
  AddIn& operator=(const AddIn&) = delete;

  Globals& globals() { return globals_; }
  Windows& windows() { return windows_; }
  const Environment& environment() const { return env_; }

  // Routines of other subsystems: run by StartProgram step 4 after the
  // language (frame table columns, the batch modules' and the sorting
  // module's start-up), and step 6 (clearing the frame search's flags).
  using Routine = std::function<void(AddIn&)>;
  void AddStartupRoutine(Routine routine);
  void AddSearchStateReset(Routine routine);

  // InitGlobals: column positions, language mode and product name (by the
  // presence of Lang.ini in the add-in's folder), version, settings folder
  // and paths. With `create_files` the settings folder and an empty Unicode
  // settings file are created when missing; the command line passes false
  // and touches nothing.
  void InitGlobals(bool create_files = true);

  // Steps 2 to 7 of the start-up with the settings of `settings_file`:
  // everything but showing the main window. StartProgram uses it with the
  // user's settings file; the command line with its own.
  void LoadModels(const std::filesystem::path& settings_file);

  void StartProgram();
  void ExitProgram();

  // The main window's handle, loading it hidden first when needed.
  std::intptr_t MainWindowHandle();
  void ResizeMainWindow(long width, long height);

  // Writes a window's settings when the user confirms it (Command_Save of
  // OknoOption, OknoSozdatLayout, OknoDeistvie).
  Status SaveConfirmed(SettingsBlock block);

  // A message box titled with the product name.
  void ShowMessage(std::string_view text, MessageIcon icon);
  // Message `number` of the message table (1..22).
  void ShowMessage(int number, MessageIcon icon);

 private:
  void Load(Window& window);

  Environment env_;
  std::unique_ptr<HeadlessView> headless_;
  WindowView* view_;
  Globals globals_;
  Windows windows_;
  std::vector<Routine> startup_routines_;
  std::vector<Routine> search_resets_;
};

}  // namespace lmt::core

#endif  // LMT_CORE_PROGRAM_H_

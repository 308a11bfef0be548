// What the add-in's commands ask of the window system: showing and hiding
// windows, refreshing what a command changed, the rows the user selected,
// the file and folder dialogs, a text window, the clipboard and the web
// browser. The Win32
// user interface implements it over real windows; tests record the calls.
#ifndef LMT_ADDIN_SHELL_H_
#define LMT_ADDIN_SHELL_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/window.h"

namespace lmt::addin {

class Shell {
 public:
  virtual ~Shell() = default;

  // Shows `window` (made if needed) owned by the main window.
  virtual void ShowWindow(core::Window& window) = 0;
  // Hides `window`; its values stay for the next time it is shown.
  virtual void HideWindow(core::Window& window) = 0;
  // A command changed the model of `window`: show its values again.
  virtual void Refresh(core::Window& window) = 0;
  // A command changed the frame table: show its rows again.
  virtual void FrameTableChanged() = 0;
  // The selected data row of the frame table (1..), 0 when none.
  virtual int SelectedFrameRow() = 0;
  // The selected data row (1..) of `window`'s file table, 0 when none.
  virtual int SelectedFileRow(core::Window& window) = 0;
  // The open-file dialog with a "Name|pattern|..." filter: the chosen
  // paths (UTF-8), empty when cancelled.
  virtual std::vector<std::string> PickFiles(std::string_view filter,
                                             bool multiple) = 0;
  // The save-file dialog with such a filter, proposing `default_name`; the
  // chosen path (UTF-8), nullopt when cancelled. The dialog asks before a
  // file that exists is replaced.
  virtual std::optional<std::string> PickSaveFile(
      std::string_view filter, std::string_view default_name) = 0;
  // The folder browser; nullopt when cancelled.
  virtual std::optional<std::string> PickFolder(std::string_view title) = 0;
  // The clipboard's text (UTF-8); empty when it holds none.
  virtual std::string ClipboardText() = 0;
  // Opens `address` in the default browser.
  virtual void OpenWebPage(std::string_view address) = 0;
  // A read-only window of many lines titled `title` (lines end with "\n"),
  // its text selectable for copying; showing another text replaces it.
  virtual void ShowText(std::string_view title, std::string_view text) = 0;
  // The about window (product, version, support address).
  virtual void ShowAbout() = 0;
};

}  // namespace lmt::addin

#endif  // LMT_ADDIN_SHELL_H_

// The user of a Windows session: system-modal message boxes titled with the
// product name (the add-in's window made topmost and activated first), the
// input box, the progress bar and status line of the main window, event
// pumping (through which the stop button sets the interrupt flag), waits,
// and the window order around the CAD program. Picks belong to the CAD
// program here: the embedded host's pick requests are cancelled.
#ifndef LMT_UI_WIN32_USER_H_
#define LMT_UI_WIN32_USER_H_

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "host/user.h"

namespace lmt::ui {

class Win32View;

class Win32User : public host::User {
 public:
  // `view` gives the main window and its progress display; `product_name`
  // (read when a box is shown) titles the boxes. Both must outlive the user.
  Win32User(const Win32View& view, const std::string& product_name);

  void ActivateCadWindow(std::string_view caption) override;
  void BringToFront() override;
  void PumpEvents() override;
  void Wait(std::chrono::milliseconds duration) override;
  void SetProgressRange(int32_t maximum) override;
  void SetProgressValue(int32_t value) override;
  void SetStatusText(std::string_view text) override;
  void ShowProgress(bool visible) override;

 protected:
  host::Answer DoShowMessage(const host::Message& message) override;
  std::optional<std::string> DoInputBox(std::string_view prompt,
                                        std::string_view title,
                                        std::string_view default_text) override;
  Result<std::vector<std::string>> DoPickEntities(
      const host::SelectionFilter& filter) override;
  Result<host::Point> DoPickPoint(
      std::string_view prompt, const std::optional<host::Point>& base) override;
  Result<double> DoPickDistance(
      std::string_view prompt, const std::optional<host::Point>& base) override;

 private:
  const Win32View& view_;
  const std::string& product_name_;
};

// The MessageBoxW style of `message`: system-modal, its buttons and icon.
UINT MessageBoxStyle(const host::Message& message);

// A modal input box owned by `owner`: the typed text, nullopt on Cancel.
std::optional<std::wstring> ShowInputBox(HWND owner, const std::wstring& title,
                                         const std::wstring& prompt,
                                         const std::wstring& text);

}  // namespace lmt::ui

#endif  // LMT_UI_WIN32_USER_H_

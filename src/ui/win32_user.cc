#include "ui/win32_user.h"

#include <commctrl.h>

#include "ui/wide.h"
#include "ui/win32_view.h"
#include "ui/window_order.h"

namespace lmt::ui {

Win32User::Win32User(const Win32View& view, const std::string& product_name)
    : view_(view), product_name_(product_name) {}

UINT MessageBoxStyle(const host::Message& message) {
  UINT style = MB_SYSTEMMODAL | MB_SETFOREGROUND;
  style |= message.buttons == host::MessageButtons::kYesNo ? MB_YESNO : MB_OK;
  switch (message.icon) {
    case host::MessageIcon::kQuestion:
      style |= MB_ICONQUESTION;
      break;
    case host::MessageIcon::kCritical:
      style |= MB_ICONERROR;
      break;
    case host::MessageIcon::kInformation:
      style |= MB_ICONINFORMATION;
      break;
  }
  return style;
}

host::Answer Win32User::DoShowMessage(const host::Message& message) {
  // The box must not open behind the CAD program.
  if (HWND main = view_.main_window()) {
    SetWindowPos(main, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    SetForegroundWindow(main);
  }
  const std::string& title =
      message.title.empty() ? product_name_ : message.title;
  const int answer = MessageBoxW(nullptr, Wide(message.text).c_str(),
                                 Wide(title).c_str(), MessageBoxStyle(message));
  if (message.buttons == host::MessageButtons::kOk) return host::Answer::kOk;
  return answer == IDYES ? host::Answer::kYes : host::Answer::kNo;
}

std::optional<std::string> Win32User::DoInputBox(
    std::string_view prompt, std::string_view title,
    std::string_view default_text) {
  std::optional<std::wstring> text = ShowInputBox(
      view_.main_window(), Wide(title), Wide(prompt), Wide(default_text));
  if (!text) return std::nullopt;
  return Utf8(*text);
}

Result<std::vector<std::string>> Win32User::DoPickEntities(
    const host::SelectionFilter&) {
  return Status::Cancelled("picks are made in the CAD program");
}

Result<host::Point> Win32User::DoPickPoint(std::string_view,
                                           const std::optional<host::Point>&) {
  return Status::Cancelled("picks are made in the CAD program");
}

Result<double> Win32User::DoPickDistance(std::string_view,
                                         const std::optional<host::Point>&) {
  return Status::Cancelled("picks are made in the CAD program");
}

void Win32User::ActivateCadWindow(std::string_view caption) {
  ActivateWindowByCaption(caption);
}

void Win32User::BringToFront() {
  ui::BringToFront(view_.main_window(), product_name_);
}

void Win32User::PumpEvents() { PumpMessages(1); }

void Win32User::Wait(std::chrono::milliseconds duration) {
  Sleep(static_cast<DWORD>(duration.count()));
}

void Win32User::SetProgressRange(int32_t maximum) {
  SendMessageW(view_.progress_bar(), PBM_SETRANGE32, 0, maximum);
}

void Win32User::SetProgressValue(int32_t value) {
  SendMessageW(view_.progress_bar(), PBM_SETPOS, static_cast<WPARAM>(value), 0);
}

void Win32User::SetStatusText(std::string_view text) {
  SetWindowTextW(view_.status_line(), Wide(text).c_str());
}

void Win32User::ShowProgress(bool visible) {
  ::ShowWindow(view_.progress_bar(), visible ? SW_SHOW : SW_HIDE);
}

}  // namespace lmt::ui

// The add-in as Windows runs it: the portable LmtView with real windows,
// a Windows user, a session over the automation runtime the factory makes,
// and the command router behind every menu item and button. The COM face
// (src/comserver) owns one per created LmtView object.
#ifndef LMT_UI_WINDOWS_ADDIN_H_
#define LMT_UI_WINDOWS_ADDIN_H_

#include <windows.h>

#include <memory>

#include "addin/commands.h"
#include "addin/no_host_runtime.h"
#include "core/environment.h"
#include "core/lmt_view.h"
#include "host/session.h"
#include "ui/win32_user.h"
#include "ui/win32_view.h"

namespace lmt::ui {

class WindowsAddIn {
 public:
  // `instance` owns the window class; `make_runtime` is called once.
  WindowsAddIn(HINSTANCE instance, core::Environment env,
               const addin::RuntimeFactory& make_runtime);
  WindowsAddIn(const WindowsAddIn&) = delete;
  WindowsAddIn& operator=(const WindowsAddIn&) = delete;

  core::LmtView& lmt_view() { return lmt_; }
  core::AddIn& addin() { return lmt_.addin(); }
  Win32View& view() { return view_; }
  Win32User& user() { return user_; }
  host::Session& session() { return session_; }
  addin::Commands& commands() { return commands_; }

 private:
  Win32View view_;  // first: LmtView keeps a pointer to it
  core::LmtView lmt_;
  std::unique_ptr<host::AutomationRuntime> runtime_;
  Win32User user_;
  host::Session session_;
  addin::Commands commands_;
};

}  // namespace lmt::ui

#endif  // LMT_UI_WINDOWS_ADDIN_H_

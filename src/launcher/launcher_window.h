// The launcher's frame window: titled with the add-in's product name, it
// holds the add-in's main window as a child and keeps it at its own client
// size (LmtResize on every WM_SIZE); closing it ends the add-in with
// LmtExit(True) and then the program. Its last size is kept in the
// launcher's own settings file, "FormViewport.ini", whose path the add-in
// hands out.
#ifndef LMT_LAUNCHER_LAUNCHER_WINDOW_H_
#define LMT_LAUNCHER_LAUNCHER_WINDOW_H_

#include <windows.h>

#include <string>

#include "launcher/add_in_client.h"

namespace lmt::launcher {

class LauncherWindow {
 public:
  // `client` must be created and outlive the window.
  LauncherWindow(HINSTANCE instance, AddInClient& client);
  LauncherWindow(const LauncherWindow&) = delete;
  LauncherWindow& operator=(const LauncherWindow&) = delete;

  // Runs the protocol up to the embedded, shown main window. False (with
  // nothing shown) when the add-in does not start.
  bool Start(int show);

  HWND frame() const { return frame_; }
  HWND embedded() const { return embedded_; }
  bool closed() const { return closed_; }

 private:
  static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wparam,
                                     LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);

  HINSTANCE instance_;
  AddInClient& client_;
  HWND frame_ = nullptr;
  HWND embedded_ = nullptr;
  std::wstring settings_file_;
  bool closed_ = false;
};

}  // namespace lmt::launcher

#endif  // LMT_LAUNCHER_LAUNCHER_WINDOW_H_

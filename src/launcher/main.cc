// layomat.exe: starts the add-in beside the CAD program and shows its main
// window inside a frame of its own.
#include <objbase.h>
#include <windows.h>

#include "launcher/add_in_client.h"
#include "launcher/launcher_window.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) noexcept {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int status = 1;
  {
    lmt::launcher::AddInClient client;
    if (FAILED(client.Create())) {
      MessageBoxW(
          nullptr,
          L"Layomats.LmtView is not registered (regsvr32 Layomats.dll).",
          L"Layomat", MB_OK | MB_ICONERROR);
    } else {
      lmt::launcher::LauncherWindow window(instance, client);
      if (window.Start(show)) {
        MSG msg;
        while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
          TranslateMessage(&msg);
          DispatchMessageW(&msg);
        }
        status = 0;
      }
    }
  }
  CoUninitialize();
  return status;
}

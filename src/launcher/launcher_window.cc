#include "launcher/launcher_window.h"

#include <fstream>

namespace lmt::launcher {
namespace {

constexpr wchar_t kFrameClass[] = L"LayomatLauncher";
constexpr wchar_t kSection[] = L"Launcher";

// The private-profile functions keep a file Unicode only when it starts as
// UTF-16 with its byte-order mark.
void EnsureUnicodeFile(const std::wstring& path) {
  if (path.empty() ||
      GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
    return;
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const unsigned char bom[] = {0xFF, 0xFE};
  DWORD written = 0;
  WriteFile(file, bom, sizeof bom, &written, nullptr);
  CloseHandle(file);
}

}  // namespace

LauncherWindow::LauncherWindow(HINSTANCE instance, AddInClient& client)
    : instance_(instance), client_(client) {
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = &LauncherWindow::WindowProc;
  wc.hInstance = instance_;
  wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kFrameClass;
  RegisterClassExW(&wc);
}

bool LauncherWindow::Start(int show) {
  if (!client_.LmtStartDLL()) return false;
  const std::wstring title = client_.LmtGetProg().value_or(L"Layomat");
  settings_file_ = client_.LmtPutFileINIform().value_or(L"");
  const int width = static_cast<int>(
      GetPrivateProfileIntW(kSection, L"Width", 1100, settings_file_.c_str()));
  const int height = static_cast<int>(
      GetPrivateProfileIntW(kSection, L"Height", 780, settings_file_.c_str()));
  frame_ = CreateWindowExW(0, kFrameClass, title.c_str(), WS_OVERLAPPEDWINDOW,
                           CW_USEDEFAULT, CW_USEDEFAULT, width, height, nullptr,
                           nullptr, instance_, this);
  if (frame_ == nullptr) return false;
  if (!client_.LmtStartProg()) return false;
  embedded_ = client_.LmtParent();
  if (embedded_ != nullptr) EmbedWindow(embedded_, frame_);
  ShowWindow(frame_, show);
  RECT client;
  GetClientRect(frame_, &client);
  client_.LmtResize(PixelsToTwipsX(client.right),
                    PixelsToTwipsY(client.bottom));
  return true;
}

LRESULT CALLBACK LauncherWindow::WindowProc(HWND hwnd, UINT message,
                                            WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* self =
      reinterpret_cast<LauncherWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (self == nullptr || self->frame_ == nullptr)
    return DefWindowProcW(hwnd, message, wparam, lparam);
  return self->Handle(message, wparam, lparam);
}

LRESULT LauncherWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (embedded_ != nullptr && wparam != SIZE_MINIMIZED) {
        client_.LmtResize(PixelsToTwipsX(LOWORD(lparam)),
                          PixelsToTwipsY(HIWORD(lparam)));
      }
      return 0;
    case WM_CLOSE: {
      RECT rect;
      if (!settings_file_.empty() && GetWindowRect(frame_, &rect)) {
        EnsureUnicodeFile(settings_file_);
        WritePrivateProfileStringW(
            kSection, L"Width", std::to_wstring(rect.right - rect.left).c_str(),
            settings_file_.c_str());
        WritePrivateProfileStringW(
            kSection, L"Height",
            std::to_wstring(rect.bottom - rect.top).c_str(),
            settings_file_.c_str());
      }
      client_.LmtExit(true);
      embedded_ = nullptr;
      closed_ = true;
      DestroyWindow(frame_);
      return 0;
    }
    case WM_DESTROY:
      frame_ = nullptr;
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(frame_, message, wparam, lparam);
  }
}

}  // namespace lmt::launcher

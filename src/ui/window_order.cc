#include "ui/window_order.h"

#include <string>

#include "ui/wide.h"

namespace lmt::ui {
namespace {

void SetTopmost(HWND window, bool topmost) {
  if (window == nullptr) return;
  SetWindowPos(window, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE);
}

struct Search {
  std::wstring caption;
  HWND starts = nullptr;
  HWND contains = nullptr;
};

std::wstring Lower(std::wstring text) {
  CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

BOOL CALLBACK Visit(HWND hwnd, LPARAM lparam) {
  auto* search = reinterpret_cast<Search*>(lparam);
  if (!IsWindowVisible(hwnd)) return TRUE;
  std::wstring title(static_cast<size_t>(GetWindowTextLengthW(hwnd)) + 1,
                     L'\0');
  title.resize(static_cast<size_t>(
      GetWindowTextW(hwnd, title.data(), static_cast<int>(title.size()))));
  title = Lower(title);
  if (title.starts_with(search->caption)) {
    search->starts = hwnd;
    return FALSE;
  }
  if (search->contains == nullptr &&
      title.find(search->caption) != std::wstring::npos) {
    search->contains = hwnd;
  }
  return TRUE;
}

}  // namespace

void PumpMessages(int times) {
  for (int i = 0; i < times; ++i) {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
      if (msg.message == WM_QUIT) {
        PostQuitMessage(static_cast<int>(msg.wParam));
        return;
      }
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
  }
}

void SubPoverhVsehProgram(HWND window) {
  PumpMessages(2);
  SetTopmost(window, true);
  PumpMessages(2);
}

void SubNEPoverhVsehProgram(HWND window) {
  PumpMessages(2);
  SetTopmost(window, false);
  PumpMessages(2);
}

bool ActivateWindowByCaption(std::string_view caption) {
  if (caption.empty()) return false;
  Search search{Lower(Wide(caption))};
  EnumWindows(&Visit, reinterpret_cast<LPARAM>(&search));
  HWND found = search.starts != nullptr ? search.starts : search.contains;
  if (found == nullptr) return false;
  if (IsIconic(found)) ShowWindow(found, SW_RESTORE);
  SetForegroundWindow(found);
  return true;
}

void BringToFront(HWND window, std::string_view product_name) {
  PumpMessages(2);
  SetTopmost(window, true);
  PumpMessages(4);
  ActivateWindowByCaption(product_name);
  PumpMessages(4);
  SetTopmost(window, false);
  PumpMessages(2);
}

}  // namespace lmt::ui

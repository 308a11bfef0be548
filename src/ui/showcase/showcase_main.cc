// ui_showcase.exe ADDIN_FOLDER APPDATA_FOLDER DRAWING SHOT.bmp [FOLDER]
//
// Shows the main window as a user sees it after a search: the add-in
// started with ADDIN_FOLDER as its folder (a "Lang.ini" there makes it
// English), the frames of DRAWING found by the same frame commands the menu
// runs (on the embedded host, the first polyline the template), then the
// window's picture saved as a 24-bit BMP. With FOLDER, every other window
// of the add-in (core::Windows::All, so a window added later comes along)
// is then shown in turn and saved there as NAME.bmp, NAME the window's
// name. For screenshots under a display; prints "N passed, M failed", one
// count per picture.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "core/lmt_view.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "frames/frame_commands.h"
#include "host/host_kind.h"
#include "layouts/layout_naming.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"
#include "ui/wide.h"
#include "ui/window_order.h"
#include "ui/windows_addin.h"

namespace {

using lmt::ui::Utf8;

class NoMessages : public lmt::core::MessageSink {
 public:
  void Show(std::string_view, std::string_view,
            lmt::core::MessageIcon) override {}
};

void Print(const std::string& text) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(),
            static_cast<DWORD>(text.size()), &written, nullptr);
}

// The frames of `drawing` found as "Select template" on handle `handle` and
// "Find All" would find them, named by the main window's naming template.
bool FindFrames(lmt::core::AddIn& addin, const std::string& drawing,
                const std::string& handle, lmt::frames::FrameState& state) {
  lmt::testing::ScriptedUser user;
  user.AllowUnusedAnswers();
  auto app = lmt::dxfhost::DxfApplication::Create(lmt::host::HostKind::kAutoCad,
                                                  &user);
  auto documents = app->Documents();
  if (!documents.ok() || !(*documents)->Open(drawing).ok()) return false;
  lmt::testing::FakeRuntime runtime;
  runtime.SetRunning(
      std::string(lmt::host::HostProgramId(lmt::host::HostKind::kAutoCad)),
      app);
  lmt::core::Windows& windows = addin.windows();
  lmt::host::Session session(addin.globals(), windows, user, runtime);
  lmt::frames::FrameCommands commands(
      session, state, [&windows](lmt::frames::FrameTable& table) {
        const lmt::core::OknoLmt& main = windows.okno_lmt;
        lmt::layouts::NameAllRows(table, main.text_stroka_name_file.text(),
                                  {main.uni_text_leyout_name0.text(),
                                   main.uni_text_leyout_name1.text(),
                                   main.uni_text_leyout_name2.text()});
      });
  user.QueuePick({handle});
  if (commands.CaptureTemplate() != lmt::host::Outcome::kDone) return false;
  user.QueuePointCancel();
  return commands.Search(lmt::frames::SearchMode::kAll) ==
         lmt::host::Outcome::kDone;
}

// Reads the window's own surface (frame, menu and children included): a
// read of the screen gives black under Wine's X11 driver.
bool SaveWindow(HWND window, const std::wstring& path) {
  RECT r;
  GetWindowRect(window, &r);
  const int w = r.right - r.left;
  const int h = r.bottom - r.top;
  HDC screen = GetWindowDC(window);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, w, h);
  HGDIOBJ old = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, w, h, screen, 0, 0, SRCCOPY);
  SelectObject(memory, old);
  BITMAPINFOHEADER info{};
  info.biSize = sizeof info;
  info.biWidth = w;
  info.biHeight = h;  // bottom-up rows, as BMP files keep them
  info.biPlanes = 1;
  info.biBitCount = 24;
  info.biCompression = BI_RGB;
  const int stride = (w * 3 + 3) & ~3;
  std::vector<char> pixels(static_cast<size_t>(stride) * h);
  const int rows =
      GetDIBits(memory, bitmap, 0, static_cast<UINT>(h), pixels.data(),
                reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, screen);
  if (rows != h) return false;
  BITMAPFILEHEADER file{};
  file.bfType = 0x4D42;
  file.bfOffBits = sizeof file + sizeof info;
  file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size());
  std::ofstream out(std::filesystem::path(path), std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file), sizeof file);
  out.write(reinterpret_cast<const char*>(&info), sizeof info);
  out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
  return static_cast<bool>(out);
}

}  // namespace

int wmain(int argc, wchar_t** argv) noexcept {
  if (argc != 5 && argc != 6) {
    Print(
        "usage: ui_showcase ADDIN_FOLDER APPDATA DRAWING SHOT.bmp "
        "[FOLDER]\n");
    return 2;
  }
  const std::string appdata = Utf8(argv[2]);
  NoMessages messages;
  lmt::core::Environment env;
  env.addin_folder = std::filesystem::path(argv[1]);
  env.get_env = [appdata](std::string_view name) -> std::optional<std::string> {
    if (name == "APPDATA") return appdata;
    return std::nullopt;
  };
  env.messages = &messages;
  lmt::ui::WindowsAddIn addin(GetModuleHandleW(nullptr), env, nullptr);
  addin.lmt_view().LmtStartDLL();
  addin.lmt_view().LmtStartProg();
  lmt::core::OknoLmt& main = addin.addin().windows().okno_lmt;
  main.text_stroka_name_file.set_text("10/20");
  main.uni_text_leyout_name0.set_text(
      addin.addin().globals().language_mode == "Rus" ? "Лист-" : "Sheet-");

  if (!FindFrames(addin.addin(), Utf8(argv[3]), "30",
                  addin.commands().frame_state())) {
    Print("the frames of the drawing were not found\n0 passed, 1 failed\n");
    return 1;
  }
  lmt::frames::FrameTable& table = addin.commands().frame_state().table;
  lmt::frames::TableCaptions captions;
  for (int i = 0; i < lmt::core::kFrameTableCaptionCount; ++i)
    captions[static_cast<size_t>(i)] = main.FrameTableCaption(i);
  table.SetCaptions(captions);
  addin.view().FrameTableChanged();
  addin.view().Refresh(main);

  // The size a launcher would give it, as LmtResize gives it (twips).
  HWND window = addin.view().main_window();
  HDC dc = GetDC(window);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
  ReleaseDC(window, dc);
  addin.lmt_view().LmtResize(MulDiv(1150, 1440, dpi), MulDiv(800, 1440, dpi));
  SetWindowPos(window, HWND_TOP, 20, 20, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
  SetForegroundWindow(window);
  for (int i = 0; i < 30; ++i) {
    lmt::ui::PumpMessages(1);
    Sleep(50);
  }
  int passed = 0;
  int failed = 0;
  if (SaveWindow(window, argv[4])) {
    ++passed;
  } else {
    Print("main window: screen not read\n");
    ++failed;
  }
  if (argc == 6) {
    const std::filesystem::path folder(argv[5]);
    for (lmt::core::Window* model : addin.addin().windows().All()) {
      if (model == &main) continue;
      addin.view().ShowWindow(*model);
      HWND shown = addin.view().WindowOf(*model);
      if (shown != nullptr) {
        SetWindowPos(shown, HWND_TOP, 40, 40, 0, 0,
                     SWP_NOSIZE | SWP_SHOWWINDOW);
        SetForegroundWindow(shown);
        for (int i = 0; i < 10; ++i) {
          lmt::ui::PumpMessages(1);
          Sleep(50);
        }
      }
      const std::wstring shot =
          (folder / lmt::ui::Wide(model->name() + ".bmp")).wstring();
      if (shown != nullptr && SaveWindow(shown, shot)) {
        ++passed;
      } else {
        Print(model->name() + ": not shown or screen not read\n");
        ++failed;
      }
      addin.view().HideWindow(*model);
    }
  }
  addin.lmt_view().LmtExit(lmt::core::kVariantTrue);
  Print(std::to_string(passed) + " passed, " + std::to_string(failed) +
        " failed\n");
  return failed == 0 ? 0 : 1;
}

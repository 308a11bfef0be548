// The launcher's side of the add-in: "Layomats.LmtView" created late-bound
// and called by name through IDispatch, in the order the add-in expects:
// LmtStartDLL, LmtGetProg and LmtPutFileINIform, LmtStartProg, then
// LmtParent and LmtResize as often as needed, LmtExit(True) at the end.
// Each call reports failure by its return value; nothing throws.
#ifndef LMT_LAUNCHER_ADD_IN_CLIENT_H_
#define LMT_LAUNCHER_ADD_IN_CLIENT_H_

#include <oaidl.h>
#include <windows.h>

#include <optional>
#include <string>

namespace lmt::launcher {

inline constexpr wchar_t kAddInProgId[] = L"Layomats.LmtView";

class AddInClient {
 public:
  AddInClient() = default;
  ~AddInClient();
  AddInClient(const AddInClient&) = delete;
  AddInClient& operator=(const AddInClient&) = delete;

  // Creates the object; the error of CLSIDFromProgID or CoCreateInstance.
  // REQUIRES: COM initialised apartment-threaded on this thread.
  HRESULT Create();

  // The protocol's calls; nullopt (or false) when a call fails.
  bool LmtStartDLL();
  std::optional<std::wstring> LmtGetProg();
  std::optional<std::wstring> LmtPutFileINIform();
  bool LmtStartProg();
  // The add-in's main window, nullptr on failure.
  HWND LmtParent();
  bool LmtResize(long width_twips, long height_twips);
  bool LmtExit(bool save);

 private:
  // Calls `name` with `args` (in call order) and returns its result.
  std::optional<VARIANT> Call(const wchar_t* name, VARIANT* args, int count);

  IDispatch* object_ = nullptr;
};

// Pixels of this screen to twips (1440 to the inch).
long PixelsToTwipsX(int pixels);
long PixelsToTwipsY(int pixels);

// Embeds `child` (a top-level window of the add-in) as a child of
// `parent`: child style, no caption or frame, placed at 0, 0.
void EmbedWindow(HWND child, HWND parent);

}  // namespace lmt::launcher

#endif  // LMT_LAUNCHER_ADD_IN_CLIENT_H_

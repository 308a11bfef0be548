// MakeLmtView() over the add-in's own LmtView: the wiring of the COM face to
// the portable class. It supplies what the add-in takes from Windows: the
// DLL's folder (where "Lang.ini" decides the language), the process's
// environment, message boxes, the Win32 windows and the automation runtime
// through which the commands reach a CAD program.
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "comhost/com_runtime.h"
#include "comserver/lmt_view_methods.h"
#include "comserver/module.h"
#include "comserver/wide_text.h"
#include "core/environment.h"
#include "core/lmt_view.h"
#include "host/automation_runtime.h"
#include "ui/windows_addin.h"

namespace lmt::comserver {
namespace {

// Message boxes as the add-in shows them: system-modal, titled with the
// product name, the icon telling the kind.
class MessageBoxSink : public core::MessageSink {
 public:
  void Show(std::string_view title, std::string_view text,
            core::MessageIcon icon) override {
    UINT style = MB_OK | MB_SYSTEMMODAL | MB_SETFOREGROUND;
    switch (icon) {
      case core::MessageIcon::kInformation:
        style |= MB_ICONINFORMATION;
        break;
      case core::MessageIcon::kQuestion:
        style |= MB_ICONQUESTION;
        break;
      case core::MessageIcon::kCritical:
        style |= MB_ICONERROR;
        break;
    }
    MessageBoxW(nullptr, Utf8ToWide(text).c_str(), Utf8ToWide(title).c_str(),
                style);
  }
};

// How the commands reach a CAD program: over COM.
std::unique_ptr<host::AutomationRuntime> MakeRuntime() {
  return comhost::MakeComRuntime();
}

// The window class belongs to the DLL; a program that links the library
// statically (the tests) owns it itself.
HINSTANCE WindowInstance() {
  return Module() != nullptr ? Module() : GetModuleHandleW(nullptr);
}

class CoreView : public LmtViewMethods {
 public:
  CoreView()
      : addin_(
            WindowInstance(),
            core::SystemEnvironment(
                std::filesystem::path(ModulePath()).parent_path(), &messages_),
            &MakeRuntime),
        view_(addin_.lmt_view()) {}

  bool LmtStartDLL() override { return view_.LmtStartDLL(); }
  std::string LmtGetProg() override { return view_.LmtGetProg(); }
  std::string LmtPutFileINIform() override { return view_.LmtPutFileINIform(); }
  std::int32_t LmtParent() override { return view_.LmtParent(); }
  void LmtResize(std::int32_t width, std::int32_t height) override {
    view_.LmtResize(width, height);
  }
  bool LmtStartProg() override { return view_.LmtStartProg(); }
  bool LmtExit(std::int16_t save) override { return view_.LmtExit(save); }
  bool FunctionCommands(std::string_view command) override {
    return view_.FunctionCommands(command);
  }

 private:
  MessageBoxSink messages_;  // declared first: the add-in keeps a pointer
  ui::WindowsAddIn addin_;
  core::LmtView& view_;
};

}  // namespace

std::unique_ptr<LmtViewMethods> MakeLmtView() {
  return std::make_unique<CoreView>();
}

}  // namespace lmt::comserver

// layomat-automation.exe: the embedded CAD host as an out-of-process
// automation server.
//
//   layomat-automation.exe /regserver [/progid ID] [/kind N]
//   layomat-automation.exe /unregserver [/progid ID]
//   layomat-automation.exe [/progid ID] [/kind N] [/idle SECONDS]
//
// ID defaults to "Layomat.Automation", N (the host kind played, 0..6) to 0.
// Started without /regserver or /unregserver (by COM, with -Embedding, or
// by hand as a "running program") it registers its class and puts its
// Application into the running object table, then serves until
// Application.Quit or until no call came for SECONDS (default 120: a test
// that dies never leaves a server behind for long). Exit status 0, or 1
// for a registration failure or bad arguments.
#include <objbase.h>
#include <oleauto.h>
#include <shellapi.h>
#include <windows.h>

#include <string>
#include <vector>

#include "automation/server.h"
#include "automation/server_object.h"
#include "automation/server_registration.h"
#include "automation/tables.h"
#include "host/application.h"
#include "host/host_kind.h"

namespace lmt::automation {
namespace {

struct Options {
  bool reg = false;
  bool unreg = false;
  std::wstring prog_id = kOwnProgId;
  int kind = 0;
  int idle_seconds = 120;
  bool ok = true;
};

bool Is(const std::wstring& arg, const wchar_t* name) {
  return CompareStringOrdinal(arg.c_str(), -1, name, -1, TRUE) == CSTR_EQUAL;
}

Options Parse(const std::vector<std::wstring>& args) {
  Options o;
  for (size_t i = 1; i < args.size(); ++i) {
    const std::wstring& a = args[i];
    bool has_value = i + 1 < args.size();
    if (Is(a, L"/regserver") || Is(a, L"-regserver")) {
      o.reg = true;
    } else if (Is(a, L"/unregserver") || Is(a, L"-unregserver")) {
      o.unreg = true;
    } else if (Is(a, L"/progid") && has_value) {
      o.prog_id = args[++i];
    } else if (Is(a, L"/kind") && has_value) {
      o.kind = _wtoi(args[++i].c_str());
    } else if (Is(a, L"/idle") && has_value) {
      o.idle_seconds = _wtoi(args[++i].c_str());
    } else if (Is(a, L"-Embedding") || Is(a, L"/Embedding") ||
               Is(a, L"-Automation") || Is(a, L"/Automation")) {
      // How COM starts a local server; nothing else to do.
    } else {
      o.ok = false;
    }
  }
  if (!host::HostKindFromIndex(o.kind)) o.ok = false;
  return o;
}

// Hands out the one Application of this process.
class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(IDispatch* application) : application_(application) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (out == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IClassFactory)) {
      *out = static_cast<IClassFactory*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  // Lives on the stack of Serve(), which revokes it before returning.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid,
                                           void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return application_->QueryInterface(riid, out);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  IDispatch* application_;
};

int Serve(const Options& options) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int rc = 0;
  {
    Server server(*host::HostKindFromIndex(options.kind), GetCurrentThreadId());
    ServerObject* application =
        ServerObject::Create(server.application(), kApplicationTable, server);
    ClassFactory factory(application);
    const CLSID clsid = ClassForProgId(options.prog_id);
    DWORD class_cookie = 0, rot_cookie = 0;
    HRESULT hr = CoRegisterClassObject(clsid, &factory, CLSCTX_LOCAL_SERVER,
                                       REGCLS_MULTIPLEUSE, &class_cookie);
    if (SUCCEEDED(hr)) {
      hr = RegisterActiveObject(application, clsid, ACTIVEOBJECT_STRONG,
                                &rot_cookie);
    }
    if (FAILED(hr)) {
      rc = 1;
    } else {
      // A thread timer wakes the loop to check for idleness.
      SetTimer(nullptr, 0, 1000, nullptr);
      int64_t last_calls = -1;
      DWORD last_change = GetTickCount();
      MSG msg;
      while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        if (server.calls() != last_calls) {
          last_calls = server.calls();
          last_change = GetTickCount();
        } else if (GetTickCount() - last_change >
                   static_cast<DWORD>(options.idle_seconds) * 1000u) {
          break;
        }
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
      }
    }
    if (rot_cookie != 0) RevokeActiveObject(rot_cookie, nullptr);
    if (class_cookie != 0) CoRevokeClassObject(class_cookie);
    application->Release();
  }
  CoUninitialize();
  return rc;
}

std::wstring ExePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    DWORD n = GetModuleFileNameW(nullptr, path.data(),
                                 static_cast<DWORD>(path.size()));
    if (n < path.size()) {
      path.resize(n);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace
}  // namespace lmt::automation

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  using namespace lmt::automation;
  int argc = 0;
  LPWSTR* argv = CommandLineToArgvW(GetCommandLineW(), &argc);
  std::vector<std::wstring> args(argv, argv + argc);
  LocalFree(argv);
  Options options = Parse(args);
  if (!options.ok) return 1;
  if (options.reg) {
    return SUCCEEDED(RegisterProgId(options.prog_id, ExePath(), options.kind))
               ? 0
               : 1;
  }
  if (options.unreg) {
    return SUCCEEDED(UnregisterProgId(options.prog_id)) ? 0 : 1;
  }
  return Serve(options);
}

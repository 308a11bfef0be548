// The exports of Layomats.dll. Linked only into the DLL, not into the
// library the tests use. The boundaries are noexcept: nothing may unwind
// into COM.
#include <windows.h>

#include "comserver/class_factory.h"
#include "comserver/module.h"
#include "comserver/registration.h"

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) noexcept {
  if (reason == DLL_PROCESS_ATTACH) {
    lmt::comserver::SetModule(instance);
    DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID clsid, REFIID riid,
                                         void** out) noexcept {
  return lmt::comserver::GetLmtViewClassObject(clsid, riid, out);
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() noexcept {
  return lmt::comserver::ModuleInUse() ? S_FALSE : S_OK;
}

HRESULT STDAPICALLTYPE DllRegisterServer() noexcept {
  return lmt::comserver::RegisterServer(lmt::comserver::ModulePath());
}

HRESULT STDAPICALLTYPE DllUnregisterServer() noexcept {
  return lmt::comserver::UnregisterServer();
}

// regsvr32 /n /i:user registers for the current user only (no
// administrator needed); /u /n /i:user removes that registration.
HRESULT STDAPICALLTYPE DllInstall(BOOL install, LPCWSTR command) noexcept {
  const lmt::comserver::Scope scope =
      lmt::comserver::ScopeOfInstallCommand(command);
  return install ? lmt::comserver::RegisterServer(lmt::comserver::ModulePath(),
                                                  scope)
                 : lmt::comserver::UnregisterServer(scope);
}

}  // extern "C"

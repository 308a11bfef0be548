// Self-registration of Layomats.dll (DllRegisterServer and
// DllUnregisterServer, and DllInstall for one user): the ProgID
// "Layomats.LmtView", the class with its in-process server and apartment
// threading model, and the type library. Machine-wide the keys go under
// HKEY_CLASSES_ROOT; for the current user under HKCU\Software\Classes,
// which needs no administrator (the class and ProgID; the type library,
// which only early-binding clients need, is registered machine-wide only). Wine ignores per-user classes when it
// activates one, so machine-wide is what works there.
#ifndef LMT_COMSERVER_REGISTRATION_H_
#define LMT_COMSERVER_REGISTRATION_H_

#include <windows.h>

#include <string>

namespace lmt::comserver {

inline constexpr wchar_t kProgId[] = L"Layomats.LmtView";

enum class Scope { kMachine, kUser };

// Registers the DLL at `dll_path`. Returns S_OK, or the first failure
// (SELFREG_E_CLASS, SELFREG_E_TYPELIB) after undoing nothing: a second
// registration overwrites a partial one.
HRESULT RegisterServer(const std::wstring& dll_path,
                       Scope scope = Scope::kMachine);
// Removes every key RegisterServer writes; keys already gone are no error.
HRESULT UnregisterServer(Scope scope = Scope::kMachine);

// The scope DllInstall's command line asks for: "user" (any case, as
// regsvr32 /i:user passes it) registers for the current user, anything
// else machine-wide.
Scope ScopeOfInstallCommand(const wchar_t* command);

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_REGISTRATION_H_

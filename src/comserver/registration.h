// Self-registration of Layomats.dll (DllRegisterServer and
// DllUnregisterServer): the ProgID "Layomats.LmtView", the class with its
// in-process server and apartment threading model, and the type library.
// The keys go under HKEY_CLASSES_ROOT, that is machine-wide for a new
// class; Wine ignores per-user classes, so this is also what works there.
#ifndef LMT_COMSERVER_REGISTRATION_H_
#define LMT_COMSERVER_REGISTRATION_H_

#include <windows.h>

#include <string>

namespace lmt::comserver {

inline constexpr wchar_t kProgId[] = L"Layomats.LmtView";

// Registers the DLL at `dll_path`. Returns S_OK, or the first failure
// (SELFREG_E_CLASS, SELFREG_E_TYPELIB) after undoing nothing: a second
// registration overwrites a partial one.
HRESULT RegisterServer(const std::wstring& dll_path);
// Removes every key RegisterServer writes; keys already gone are no error.
HRESULT UnregisterServer();

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_REGISTRATION_H_

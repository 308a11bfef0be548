// Registration of layomat-automation.exe as a local automation server under
// a program identifier: its own ("Layomat.Automation") or, for tests, the
// identifier of a CAD program whose part it plays. Each identifier gets a
// class of its own, derived from the identifier, so that several can be
// registered side by side; the class's LocalServer32 command line carries
// the identifier and the host kind, which is how a server started by COM
// knows what to play. Keys go under HKEY_CLASSES_ROOT (Wine ignores
// per-user classes).
#ifndef LMT_AUTOMATION_SERVER_REGISTRATION_H_
#define LMT_AUTOMATION_SERVER_REGISTRATION_H_

#include <windows.h>

#include <string>

namespace lmt::automation {

inline constexpr wchar_t kOwnProgId[] = L"Layomat.Automation";

// The class registered for `prog_id` (the same every time; identifiers
// differing only in case give the same class).
CLSID ClassForProgId(const std::wstring& prog_id);

// Writes the keys for `prog_id`, started as `exe_path` playing host kind
// `kind`. Returns S_OK or the first failure.
HRESULT RegisterProgId(const std::wstring& prog_id,
                       const std::wstring& exe_path, int kind);
// Removes them; keys already gone are no error.
HRESULT UnregisterProgId(const std::wstring& prog_id);

}  // namespace lmt::automation

#endif  // LMT_AUTOMATION_SERVER_REGISTRATION_H_

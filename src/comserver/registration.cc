#include "comserver/registration.h"

#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>

#include <string>

#include "layomats_h.h"  // made by widl from layomats.idl

namespace lmt::comserver {
namespace {

constexpr wchar_t kClassName[] = L"LmtView";
constexpr wchar_t kUserClasses[] = L"Software\\Classes\\";

// The root and the prefix of class keys in `scope`.
HKEY RootOf(Scope scope) {
  return scope == Scope::kUser ? HKEY_CURRENT_USER : HKEY_CLASSES_ROOT;
}
std::wstring KeyOf(Scope scope, const std::wstring& key) {
  return scope == Scope::kUser ? kUserClasses + key : key;
}

std::wstring GuidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

// Sets the value `name` (null: the default value) of the class key `key` in
// `scope`, creating the key.
bool SetValue(Scope scope, const std::wstring& class_key, const wchar_t* name,
              const std::wstring& value) {
  const std::wstring key = KeyOf(scope, class_key);
  HKEY handle = nullptr;
  if (RegCreateKeyExW(RootOf(scope), key.c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                      nullptr, &handle, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  LONG rc = RegSetValueExW(
      handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
      static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(handle);
  return rc == ERROR_SUCCESS;
}

// Deletes the class key `key` of `scope` with everything below it.
bool DeleteTree(Scope scope, const std::wstring& key) {
  LONG rc = RegDeleteTreeW(RootOf(scope), KeyOf(scope, key).c_str());
  return rc == ERROR_SUCCESS || rc == ERROR_FILE_NOT_FOUND;
}

}  // namespace

HRESULT RegisterServer(const std::wstring& dll_path, Scope scope) {
  const std::wstring clsid = GuidText(CLSID_LmtView);
  const std::wstring class_key = L"CLSID\\" + clsid;
  auto set = [scope](const std::wstring& key, const wchar_t* name,
                     const std::wstring& value) {
    return SetValue(scope, key, name, value);
  };
  bool ok =
      set(kProgId, nullptr, kClassName) &&
      set(std::wstring(kProgId) + L"\\CLSID", nullptr, clsid) &&
      set(class_key, nullptr, kClassName) &&
      set(class_key + L"\\InprocServer32", nullptr, dll_path) &&
      set(class_key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
      set(class_key + L"\\ProgID", nullptr, kProgId) &&
      set(class_key + L"\\Programmable", nullptr, L"") &&
      set(class_key + L"\\TypeLib", nullptr, GuidText(LIBID_Layomats)) &&
      set(class_key + L"\\Version", nullptr, L"1.0");
  if (!ok) return SELFREG_E_CLASS;

  // The type library serves early-binding clients only and stays a
  // machine-wide registration: Wine's per-user type library functions
  // register machine-wide, which would undo or break another registration.
  if (scope == Scope::kUser) return S_OK;
  ITypeLib* library = nullptr;
  if (FAILED(LoadTypeLibEx(dll_path.c_str(), REGKIND_REGISTER, &library))) {
    return SELFREG_E_TYPELIB;
  }
  library->Release();
  return S_OK;
}

HRESULT UnregisterServer(Scope scope) {
  bool ok =
      DeleteTree(scope, std::wstring(L"CLSID\\") + GuidText(CLSID_LmtView)) &&
      DeleteTree(scope, kProgId);
  if (scope == Scope::kUser) return ok ? S_OK : SELFREG_E_CLASS;
  // Gone already counts as removed; any other failure is a failure.
  HRESULT hr =
      UnRegisterTypeLib(LIBID_Layomats, 1, 0, LOCALE_NEUTRAL, SYS_WIN64);
  if (FAILED(hr) && hr != TYPE_E_REGISTRYACCESS &&
      hr != TYPE_E_LIBNOTREGISTERED) {
    return SELFREG_E_TYPELIB;
  }
  return ok ? S_OK : SELFREG_E_CLASS;
}

Scope ScopeOfInstallCommand(const wchar_t* command) {
  if (command == nullptr) return Scope::kMachine;
  return CompareStringOrdinal(command, -1, L"user", -1, TRUE) == CSTR_EQUAL
             ? Scope::kUser
             : Scope::kMachine;
}

}  // namespace lmt::comserver

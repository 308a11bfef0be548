#include "comserver/registration.h"

#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>

#include <string>

#include "layomats_h.h"  // made by widl from layomats.idl

namespace lmt::comserver {
namespace {

constexpr wchar_t kClassName[] = L"LmtView";

std::wstring GuidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

// Sets the value `name` (null: the default value) of HKCR\`key`, creating
// the key.
bool SetValue(const std::wstring& key, const wchar_t* name,
              const std::wstring& value) {
  HKEY handle = nullptr;
  if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0,
                      KEY_SET_VALUE, nullptr, &handle,
                      nullptr) != ERROR_SUCCESS) {
    return false;
  }
  LONG rc = RegSetValueExW(
      handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
      static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(handle);
  return rc == ERROR_SUCCESS;
}

// Deletes HKCR\`key` with everything below it.
bool DeleteTree(const std::wstring& key) {
  LONG rc = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
  return rc == ERROR_SUCCESS || rc == ERROR_FILE_NOT_FOUND;
}

}  // namespace

HRESULT RegisterServer(const std::wstring& dll_path) {
  const std::wstring clsid = GuidText(CLSID_LmtView);
  const std::wstring class_key = L"CLSID\\" + clsid;
  bool ok =
      SetValue(kProgId, nullptr, kClassName) &&
      SetValue(std::wstring(kProgId) + L"\\CLSID", nullptr, clsid) &&
      SetValue(class_key, nullptr, kClassName) &&
      SetValue(class_key + L"\\InprocServer32", nullptr, dll_path) &&
      SetValue(class_key + L"\\InprocServer32", L"ThreadingModel",
               L"Apartment") &&
      SetValue(class_key + L"\\ProgID", nullptr, kProgId) &&
      SetValue(class_key + L"\\Programmable", nullptr, L"") &&
      SetValue(class_key + L"\\TypeLib", nullptr, GuidText(LIBID_Layomats)) &&
      SetValue(class_key + L"\\Version", nullptr, L"1.0");
  if (!ok) return SELFREG_E_CLASS;

  ITypeLib* library = nullptr;
  if (FAILED(LoadTypeLibEx(dll_path.c_str(), REGKIND_REGISTER, &library))) {
    return SELFREG_E_TYPELIB;
  }
  library->Release();
  return S_OK;
}

HRESULT UnregisterServer() {
  bool ok = DeleteTree(std::wstring(L"CLSID\\") + GuidText(CLSID_LmtView)) &&
            DeleteTree(kProgId);
  // Gone already counts as removed; any other failure is a failure.
  HRESULT hr =
      UnRegisterTypeLib(LIBID_Layomats, 1, 0, LOCALE_NEUTRAL, SYS_WIN64);
  if (FAILED(hr) && hr != TYPE_E_REGISTRYACCESS &&
      hr != TYPE_E_LIBNOTREGISTERED) {
    return SELFREG_E_TYPELIB;
  }
  return ok ? S_OK : SELFREG_E_CLASS;
}

}  // namespace lmt::comserver

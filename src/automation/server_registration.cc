#include "automation/server_registration.h"

#include <objbase.h>

#include <cwctype>

namespace lmt::automation {
namespace {

std::wstring GuidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

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

bool DeleteTree(const std::wstring& key) {
  LONG rc = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
  return rc == ERROR_SUCCESS || rc == ERROR_FILE_NOT_FOUND;
}

}  // namespace

CLSID ClassForProgId(const std::wstring& prog_id) {
  // FNV-1a over the identifier folded to lower case fills the last eight
  // bytes; the first half is fixed and ours.
  uint64_t hash = 1469598103934665603ull;
  for (wchar_t c : prog_id) {
    hash ^= static_cast<uint64_t>(std::towlower(c));
    hash *= 1099511628211ull;
  }
  CLSID clsid = {0x4c4d5441, 0x7574, 0x4f6d, {}};
  for (int i = 0; i < 8; ++i) {
    clsid.Data4[i] = static_cast<unsigned char>(hash >> (8 * i));
  }
  // The variant bits of an RFC 4122 identifier.
  clsid.Data4[0] = static_cast<unsigned char>((clsid.Data4[0] & 0x3f) | 0x80);
  return clsid;
}

HRESULT RegisterProgId(const std::wstring& prog_id,
                       const std::wstring& exe_path, int kind) {
  const std::wstring clsid = GuidText(ClassForProgId(prog_id));
  const std::wstring class_key = L"CLSID\\" + clsid;
  const std::wstring command = L"\"" + exe_path + L"\" /progid " + prog_id +
                               L" /kind " + std::to_wstring(kind);
  bool ok = SetValue(prog_id, nullptr, L"Layomat automation server") &&
            SetValue(prog_id + L"\\CLSID", nullptr, clsid) &&
            SetValue(class_key, nullptr, prog_id) &&
            SetValue(class_key + L"\\LocalServer32", nullptr, command) &&
            SetValue(class_key + L"\\ProgID", nullptr, prog_id) &&
            SetValue(class_key + L"\\Programmable", nullptr, L"");
  return ok ? S_OK : E_ACCESSDENIED;
}

HRESULT UnregisterProgId(const std::wstring& prog_id) {
  bool ok = DeleteTree(L"CLSID\\" + GuidText(ClassForProgId(prog_id))) &&
            DeleteTree(prog_id);
  return ok ? S_OK : E_ACCESSDENIED;
}

}  // namespace lmt::automation

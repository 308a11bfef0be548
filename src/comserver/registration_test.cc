// Registration for the current user through the DLL's own DllInstall, as
// regsvr32 /n /i:user calls it: the keys appear under HKCU\Software\Classes
// and go again on /u. Machine-wide registration is the ctest fixture's.
#include "comserver/registration.h"

#include <gtest/gtest.h>

#include <string>

#include "layomats_h.h"

namespace lmt::comserver {
namespace {

std::wstring UserValue(const std::wstring& key, const wchar_t* name = nullptr) {
  wchar_t value[512] = {};
  DWORD size = sizeof value;
  const std::wstring full = L"Software\\Classes\\" + key;
  if (RegGetValueW(HKEY_CURRENT_USER, full.c_str(), name, RRF_RT_REG_SZ,
                   nullptr, value, &size) != ERROR_SUCCESS) {
    return L"<none>";
  }
  return value;
}

std::wstring BuiltDll() {
  std::string path = LMT_BINARY_DIR "/src/comserver/Layomats.dll";
  // The build's paths are the Linux side's, drive Z: under Wine.
  if (path.starts_with("/")) path = "Z:" + path;
  std::wstring wide(path.begin(), path.end());
  for (wchar_t& c : wide)
    if (c == L'/') c = L'\\';
  return wide;
}

TEST(RegistrationTest, InstallCommandChoosesTheScope) {
  EXPECT_EQ(ScopeOfInstallCommand(L"user"), Scope::kUser);
  EXPECT_EQ(ScopeOfInstallCommand(L"USER"), Scope::kUser);
  EXPECT_EQ(ScopeOfInstallCommand(L""), Scope::kMachine);
  EXPECT_EQ(ScopeOfInstallCommand(L"users"), Scope::kMachine);
  EXPECT_EQ(ScopeOfInstallCommand(nullptr), Scope::kMachine);
}

TEST(RegistrationTest, DllInstallForTheUserWritesAndRemovesTheUsersKeys) {
  const std::wstring dll = BuiltDll();
  HMODULE module = LoadLibraryW(dll.c_str());
  ASSERT_NE(module, nullptr) << "build Layomats.dll first";
  using Install = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);
  auto install = reinterpret_cast<Install>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllInstall")));
  ASSERT_NE(install, nullptr);

  wchar_t clsid[40] = {};
  StringFromGUID2(CLSID_LmtView, clsid, 40);
  const std::wstring class_key = std::wstring(L"CLSID\\") + clsid;
  // The user's classes are a store of their own, not a view of the
  // machine's, which other tests register meanwhile.
  ASSERT_EQ(UserValue(L"Layomats.LmtView\\CLSID"), L"<none>");
  ASSERT_EQ(install(TRUE, L"user"), S_OK);
  EXPECT_EQ(UserValue(L"Layomats.LmtView\\CLSID"), clsid);
  EXPECT_EQ(UserValue(class_key + L"\\InprocServer32"), dll);
  EXPECT_EQ(UserValue(class_key + L"\\InprocServer32", L"ThreadingModel"),
            L"Apartment");

  ASSERT_EQ(install(FALSE, L"user"), S_OK);
  EXPECT_EQ(UserValue(L"Layomats.LmtView\\CLSID"), L"<none>");
  EXPECT_EQ(UserValue(class_key + L"\\InprocServer32"), L"<none>");
  // Removing what is gone already is no error.
  EXPECT_EQ(install(FALSE, L"user"), S_OK);
  FreeLibrary(module);
}

}  // namespace
}  // namespace lmt::comserver

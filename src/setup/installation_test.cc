// Checks of an installation made by Layomat-setup.exe, run by
// setup_test.sh between the setup and uninstaller runs. The environment
// says what to expect: LMT_SETUP_SCOPE "user" or "machine", LMT_SETUP_ENGLISH
// "1" when Lang.ini was asked for, LMT_SETUP_SETTINGS "kept" or "removed"
// after an uninstallation.
//   Installed.*  files, class registration, uninstall entry, loader key;
//   Launcher.*   the installed layomat.exe opens the main window;
//   Removed.*    nothing of the installation is left.
#include <gtest/gtest.h>
#include <objbase.h>
#include <shlobj.h>
#include <windows.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "layomats_h.h"  // made by widl from layomats.idl

namespace {

constexpr wchar_t kProgId[] = L"Layomats.LmtView";
constexpr wchar_t kUninstallKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Layomat";
constexpr wchar_t kProductKey[] = L"Software\\Layomat";

std::wstring Env(const wchar_t* name) {
  const wchar_t* value = _wgetenv(name);
  return value == nullptr ? L"" : value;
}

bool MachineScope() { return Env(L"LMT_SETUP_SCOPE") == L"machine"; }

std::wstring KnownFolder(REFKNOWNFOLDERID id) {
  PWSTR path = nullptr;
  std::wstring result;
  if (SUCCEEDED(SHGetKnownFolderPath(id, 0, nullptr, &path))) result = path;
  CoTaskMemFree(path);
  return result;
}

// Where the setup installs without /D=.
std::wstring InstallDir() {
  return MachineScope()
             ? KnownFolder(FOLDERID_ProgramFilesX64) + L"\\Layomat"
             : KnownFolder(FOLDERID_LocalAppData) + L"\\Programs\\Layomat";
}

std::wstring StartMenuEntry() {
  return KnownFolder(MachineScope() ? FOLDERID_CommonPrograms
                                    : FOLDERID_Programs) +
         L"\\Layomat.lnk";
}

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::wstring ClsidText() {
  wchar_t text[40] = {};
  StringFromGUID2(CLSID_LmtView, text, 40);
  return text;
}

bool KeyExists(HKEY root, const std::wstring& key) {
  HKEY handle = nullptr;
  if (RegOpenKeyExW(root, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS)
    return false;
  RegCloseKey(handle);
  return true;
}

std::optional<std::wstring> Text(HKEY root, const std::wstring& key,
                                 const wchar_t* name) {
  wchar_t value[1024] = {};
  DWORD size = sizeof(value);
  if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, value,
                   &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return std::wstring(value);
}

std::optional<DWORD> Number(HKEY root, const std::wstring& key,
                            const wchar_t* name) {
  DWORD value = 0;
  DWORD size = sizeof(value);
  if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value,
                   &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return value;
}

// The class keys of both scopes: HKCU\Software\Classes for the user,
// HKLM\Software\Classes (what HKEY_CLASSES_ROOT shows) for the machine.
struct Scopes {
  HKEY own;
  HKEY other;
};
Scopes RootsOfScope() {
  return MachineScope() ? Scopes{HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}
                        : Scopes{HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};
}

const std::wstring kClasses = L"Software\\Classes\\";

class Installed : public testing::Test {
 protected:
  const std::wstring dir_ = InstallDir();
  const Scopes roots_ = RootsOfScope();
};

TEST_F(Installed, FilesAndStartMenuEntry) {
  for (const wchar_t* name :
       {L"Layomats.dll", L"layomat.exe", L"layomat.lsp", L"uninstall.exe"}) {
    EXPECT_TRUE(Exists(dir_ + L"\\" + name)) << "missing: " << name;
  }
  EXPECT_EQ(Exists(dir_ + L"\\Lang.ini"), Env(L"LMT_SETUP_ENGLISH") == L"1");
  EXPECT_TRUE(Exists(StartMenuEntry()));
}

TEST_F(Installed, ClassRegisteredInItsScopeOnly) {
  const std::wstring clsid_key = kClasses + L"CLSID\\" + ClsidText();
  EXPECT_EQ(Text(roots_.own, kClasses + kProgId + L"\\CLSID", nullptr),
            ClsidText());
  EXPECT_EQ(Text(roots_.own, clsid_key + L"\\InprocServer32", nullptr),
            dir_ + L"\\Layomats.dll");
  EXPECT_EQ(
      Text(roots_.own, clsid_key + L"\\InprocServer32", L"ThreadingModel"),
      L"Apartment");
  EXPECT_FALSE(KeyExists(roots_.other, kClasses + kProgId));
  EXPECT_FALSE(KeyExists(roots_.other, clsid_key));
  EXPECT_FALSE(KeyExists(roots_.other, kUninstallKey));
  EXPECT_FALSE(KeyExists(roots_.other, kProductKey));
}

TEST_F(Installed, UninstallEntryAndLauncherKey) {
  const HKEY root = roots_.own;
  EXPECT_EQ(Text(root, kUninstallKey, L"DisplayName"), L"Layomat");
  EXPECT_EQ(Text(root, kUninstallKey, L"Publisher"), L"Layomat");
  EXPECT_EQ(Text(root, kUninstallKey, L"InstallLocation"), dir_);
  const std::wstring uninstaller = L"\"" + dir_ + L"\\uninstall.exe\"";
  EXPECT_EQ(Text(root, kUninstallKey, L"UninstallString"), uninstaller);
  EXPECT_EQ(Text(root, kUninstallKey, L"QuietUninstallString"),
            uninstaller + L" /S");
  const std::wstring version =
      Text(root, kUninstallKey, L"DisplayVersion").value_or(L"");
  EXPECT_EQ(version, Env(L"LMT_SETUP_VERSION"));
  EXPECT_EQ(Number(root, kUninstallKey, L"NoModify"), 1u);
  EXPECT_EQ(Number(root, kUninstallKey, L"NoRepair"), 1u);
  EXPECT_EQ(Text(root, kProductKey, L"Launcher"), dir_ + L"\\layomat.exe");
}

// Finds the launcher's frame in process `pid` once it is shown with the
// add-in's main window embedded.
struct WindowSearch {
  DWORD pid;
  HWND found = nullptr;
};
BOOL CALLBACK OfProcess(HWND window, LPARAM param) {
  auto* search = reinterpret_cast<WindowSearch*>(param);
  DWORD pid = 0;
  GetWindowThreadProcessId(window, &pid);
  wchar_t class_name[64] = {};
  GetClassNameW(window, class_name, 64);
  if (pid == search->pid && IsWindowVisible(window) &&
      std::wstring(class_name) == L"LayomatLauncher" &&
      GetWindow(window, GW_CHILD) != nullptr) {
    search->found = window;
    return FALSE;
  }
  return TRUE;
}

TEST(Launcher, InstalledLauncherOpensTheMainWindowAndCloses) {
  std::wstring command = L"\"" + InstallDir() + L"\\layomat.exe\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE,
                             0, nullptr, nullptr, &startup, &process));
  WindowSearch search{process.dwProcessId};
  for (int i = 0; i < 300 && search.found == nullptr; ++i) {
    if (WaitForSingleObject(process.hProcess, 100) == WAIT_OBJECT_0) break;
    EnumWindows(OfProcess, reinterpret_cast<LPARAM>(&search));
  }
  EXPECT_NE(search.found, nullptr) << "no window (not registered?)";
  if (search.found != nullptr) {
    wchar_t title[64] = {};
    GetWindowTextW(search.found, title, 64);
    // Lang.ini makes the international product name.
    EXPECT_STREQ(title,
                 Env(L"LMT_SETUP_ENGLISH") == L"1" ? L"Layomat" : L"Лайомат");
    PostMessageW(search.found, WM_CLOSE, 0, 0);
  }
  if (WaitForSingleObject(process.hProcess, 20000) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "the launcher did not end";
    TerminateProcess(process.hProcess, 3);
  }
  DWORD code = 1;
  GetExitCodeProcess(process.hProcess, &code);
  EXPECT_EQ(code, search.found != nullptr ? 0u : 1u);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

TEST(Removed, NothingOfTheInstallationIsLeft) {
  EXPECT_FALSE(Exists(InstallDir())) << "the folder is still there";
  EXPECT_FALSE(Exists(StartMenuEntry()));
  for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    EXPECT_FALSE(KeyExists(root, kClasses + kProgId));
    EXPECT_FALSE(KeyExists(root, kClasses + L"CLSID\\" + ClsidText()));
    EXPECT_FALSE(KeyExists(root, kUninstallKey));
    EXPECT_FALSE(KeyExists(root, kProductKey));
  }
}

TEST(Removed, SettingsStayUnlessAskedToGo) {
  const std::wstring settings =
      KnownFolder(FOLDERID_RoamingAppData) + L"\\Layomat\\LayomatNas.ini";
  EXPECT_EQ(Exists(settings), Env(L"LMT_SETUP_SETTINGS") == L"kept");
}

}  // namespace

#include "core/settings_folder.h"

#include <system_error>

#include "core/file_util.h"

namespace lmt::core {

std::filesystem::path SettingsFolderPath(std::string_view folder_name,
                                         const Environment& env) {
  auto lookup = [&](std::string_view name) -> std::string {
    if (!env.get_env) return {};
    return env.get_env(name).value_or("");
  };
#ifdef _WIN32
  return PathFromUtf8(lookup("APPDATA")) / PathFromUtf8(folder_name);
#else
  std::string base = lookup("XDG_CONFIG_HOME");
  if (base.empty())
    return PathFromUtf8(lookup("HOME")) / ".config" / PathFromUtf8(folder_name);
  return PathFromUtf8(base) / PathFromUtf8(folder_name);
#endif
}

std::filesystem::path GetSettingsFolder(std::string_view folder_name,
                                        const Environment& env,
                                        std::string_view title) {
  std::filesystem::path folder = SettingsFolderPath(folder_name, env);
  if (!FolderExists(folder)) {
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    if (!FolderExists(folder) && env.messages != nullptr) {
      env.messages->Show(title, kSettingsFolderError, MessageIcon::kCritical);
    }
  }
  return folder;
}

void EnsureSettingsFile(const std::filesystem::path& path) {
  if (!FileExists(path)) CreateUnicodeFile(path).IgnoreError();
}

}  // namespace lmt::core

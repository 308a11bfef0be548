// Where the add-in keeps its settings: APPDATA\Layomat on Windows,
// $XDG_CONFIG_HOME/Layomat (default ~/.config/Layomat) elsewhere.
#ifndef LMT_CORE_SETTINGS_FOLDER_H_
#define LMT_CORE_SETTINGS_FOLDER_H_

#include <filesystem>
#include <string_view>

#include "core/environment.h"

namespace lmt::core {

inline constexpr std::string_view kSettingsFolderError = "Error159753";

// The folder `folder_name` in the user's settings place; touches nothing.
std::filesystem::path SettingsFolderPath(std::string_view folder_name,
                                         const Environment& env);

// SettingsFolderPath, creating the folder when it does not exist. When that
// fails, shows "Error159753" (titled `title`) and returns the path anyway.
std::filesystem::path GetSettingsFolder(std::string_view folder_name,
                                        const Environment& env,
                                        std::string_view title);

// Creates `path` as an empty UTF-16LE file when it does not exist, so that
// the settings are stored as Unicode. Failures are silent, as later writes
// then fail silently too.
void EnsureSettingsFile(const std::filesystem::path& path);

}  // namespace lmt::core

#endif  // LMT_CORE_SETTINGS_FOLDER_H_

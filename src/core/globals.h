// The add-in's global state, one instance per add-in object, set up by
// InitGlobals (core/program.h) and read everywhere.
#ifndef LMT_CORE_GLOBALS_H_
#define LMT_CORE_GLOBALS_H_

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/messages.h"

namespace lmt::core {

inline constexpr std::string_view kVersion = "1.9.2";
inline constexpr std::string_view kProductNameRussian = "Лайомат";
inline constexpr std::string_view kProductNameInternational = "Layomat";
inline constexpr std::string_view kLanguageModeRussian = "Rus";
inline constexpr std::string_view kLanguageModeMulti = "Multi";
inline constexpr std::string_view kSettingsFolderName = "Layomat";
inline constexpr std::string_view kLanguageFileName = "Lang.ini";
inline constexpr std::string_view kLayoutFileName = "FormViewport.ini";
inline constexpr int kFrameColumnCount = 27;

struct Globals {
  std::string language_mode{kLanguageModeRussian};
  std::string product_name{kProductNameRussian};  // every message box title
  std::string support_address;
  std::string web_site;
  std::string version{kVersion};
  std::string version_caption;  // "Version 1.9.2"
  std::string settings_folder_name{kSettingsFolderName};
  std::filesystem::path settings_folder;
  std::filesystem::path layout_file_path;    // the launcher's own file
  std::filesystem::path settings_path;       // LayomatNas.ini
  std::filesystem::path language_file_path;  // Lang.ini beside the add-in
  bool decimal_comma = false;
  bool exiting = false;
  bool started = false;
  // The frame table's column positions, 0 .. 26; their meaning belongs to
  // the frame table.
  std::array<int, kFrameColumnCount> frame_columns{};
  MessageTable messages;

  // Language mode "Rus", compared without regard to case.
  bool russian() const;
  // The built-in Russian texts (the default installation).
  void UseRussian();
  // International mode with texts from `language_file`; a file that does
  // not exist gives the built-in English texts throughout.
  void UseLanguageFile(std::filesystem::path language_file);
};

}  // namespace lmt::core

#endif  // LMT_CORE_GLOBALS_H_

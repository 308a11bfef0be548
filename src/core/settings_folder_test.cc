#include "core/settings_folder.h"

#include <gtest/gtest.h>

#include <map>

namespace lmt::core {
namespace {

Environment WithVariables(std::map<std::string, std::string> vars) {
  Environment env;
  env.get_env = [vars](std::string_view name) -> std::optional<std::string> {
    auto it = vars.find(std::string(name));
    if (it == vars.end()) return std::nullopt;
    return it->second;
  };
  return env;
}

TEST(SettingsFolderTest, PlatformRule) {
#ifdef _WIN32
  EXPECT_EQ(SettingsFolderPath("Layomat",
                               WithVariables({{"APPDATA", "C:\\Users\\u"}})),
            std::filesystem::path("C:\\Users\\u\\Layomat"));
#else
  EXPECT_EQ(SettingsFolderPath("Layomat",
                               WithVariables({{"XDG_CONFIG_HOME", "/x/cfg"},
                                              {"HOME", "/home/u"}})),
            std::filesystem::path("/x/cfg/Layomat"));
  EXPECT_EQ(SettingsFolderPath(
                "Layomat",
                WithVariables({{"HOME", "/home/u"}, {"XDG_CONFIG_HOME", ""}})),
            std::filesystem::path("/home/u/.config/Layomat"));
#endif
}

}  // namespace
}  // namespace lmt::core

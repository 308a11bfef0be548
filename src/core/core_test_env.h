// A throw-away installation for tests: the add-in's folder and a settings
// home under a temporary folder, and the message boxes collected.
#ifndef LMT_CORE_CORE_TEST_ENV_H_
#define LMT_CORE_CORE_TEST_ENV_H_

#include <filesystem>
#include <string>
#include <vector>

#include "core/environment.h"
#include "testing/temp_dir.h"

namespace lmt::core {

class RecordingSink : public MessageSink {
 public:
  void Show(std::string_view title, std::string_view text,
            MessageIcon) override {
    shown.push_back(std::string(title) + ": " + std::string(text));
  }
  std::vector<std::string> shown;
};

class TestInstallation {
 public:
  explicit TestInstallation(bool decimal_comma = false) {
    std::filesystem::create_directories(addin_folder());
    env_.addin_folder = addin_folder();
    const std::filesystem::path home = dir_ / "home";
    env_.get_env = [home](std::string_view name) -> std::optional<std::string> {
      if (name == "XDG_CONFIG_HOME" || name == "APPDATA") return home.string();
      return std::nullopt;
    };
    env_.format_number = [decimal_comma](double) {
      return std::string(decimal_comma ? "0,2" : "0.2");
    };
    env_.messages = &sink_;
  }

  std::filesystem::path addin_folder() const { return dir_ / "addin"; }
  std::filesystem::path settings_folder() const {
    return dir_ / "home" / "Layomat";
  }
  std::filesystem::path settings_file() const {
    return settings_folder() / "LayomatNas.ini";
  }
  const Environment& env() const { return env_; }
  Environment& env() { return env_; }
  RecordingSink& sink() { return sink_; }
  const testing::TempDir& dir() const { return dir_; }

 private:
  testing::TempDir dir_;
  RecordingSink sink_;
  Environment env_;
};

}  // namespace lmt::core

#endif  // LMT_CORE_CORE_TEST_ENV_H_

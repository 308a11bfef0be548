#include "core/environment.h"

#include <cstdlib>

namespace lmt::core {

EnvLookup SystemEnvLookup() {
  return [](std::string_view name) -> std::optional<std::string> {
    const char* value = std::getenv(std::string(name).c_str());
    if (value == nullptr) return std::nullopt;
    return std::string(value);
  };
}

Environment SystemEnvironment(std::filesystem::path addin_folder,
                              MessageSink* messages) {
  Environment env;
  env.addin_folder = std::move(addin_folder);
  env.get_env = SystemEnvLookup();
  env.format_number = SystemNumberFormatter();
  env.messages = messages;
  return env;
}

}  // namespace lmt::core

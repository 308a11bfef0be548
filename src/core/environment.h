// What the add-in takes from its surroundings, injectable so that tests and
// the command line can play any installation: the folder that holds the
// add-in (where "Lang.ini" decides the language), environment variables, the
// locale's way of writing numbers, and where message boxes go.
#ifndef LMT_CORE_ENVIRONMENT_H_
#define LMT_CORE_ENVIRONMENT_H_

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/numbers.h"

namespace lmt::core {

enum class MessageIcon { kInformation, kQuestion, kCritical };

// Shows one message box (OK button only) and returns when it is closed.
class MessageSink {
 public:
  virtual ~MessageSink() = default;
  virtual void Show(std::string_view title, std::string_view text,
                    MessageIcon icon) = 0;
};

using EnvLookup =
    std::function<std::optional<std::string>(std::string_view name)>;

struct Environment {
  std::filesystem::path addin_folder;  // the folder holding the add-in
  EnvLookup get_env;                   // nullopt: variable not set
  NumberFormatter format_number;
  MessageSink* messages = nullptr;  // not owned; nullptr drops messages
};

// The process's environment variables (std::getenv).
EnvLookup SystemEnvLookup();

// The real surroundings with the add-in in `addin_folder`.
Environment SystemEnvironment(std::filesystem::path addin_folder,
                              MessageSink* messages);

}  // namespace lmt::core

#endif  // LMT_CORE_ENVIRONMENT_H_

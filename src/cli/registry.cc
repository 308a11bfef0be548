#include "cli/registry.h"

#include <algorithm>

#include "core/check.h"

namespace lmt::cli {

CommandRegistry& CommandRegistry::Global() {
  static CommandRegistry* registry = new CommandRegistry();
  return *registry;
}

void CommandRegistry::Add(const CommandSpec& spec) {
  LMT_CHECK(spec.run != nullptr && !spec.name.empty());
  LMT_CHECK(Find(spec.name) == nullptr);
  commands_.push_back(spec);
}

const CommandSpec* CommandRegistry::Find(std::string_view name) const {
  for (const CommandSpec& spec : commands_) {
    if (spec.name == name) return &spec;
  }
  return nullptr;
}

std::vector<CommandSpec> CommandRegistry::List() const {
  std::vector<CommandSpec> sorted = commands_;
  std::sort(sorted.begin(), sorted.end(),
            [](const CommandSpec& a, const CommandSpec& b) {
              return a.name < b.name;
            });
  return sorted;
}

CommandRegistration::CommandRegistration(const CommandSpec& spec) {
  CommandRegistry::Global().Add(spec);
}

}  // namespace lmt::cli

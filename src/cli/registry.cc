#include "cli/registry.h"

#include <algorithm>

#include "core/check.h"

namespace lmt::cli {

CommandRegistry& CommandRegistry::Global() {
  static CommandRegistry* registry = new CommandRegistry();
  return *registry;
}

void CommandRegistry::Add(const CommandSpec& entry) {
  LMT_CHECK(entry.run != nullptr && !entry.name.empty());
  LMT_CHECK(Find(entry.name) == nullptr);
  commands_.push_back(entry);
}

const CommandSpec* CommandRegistry::Find(std::string_view name) const {
  for (const CommandSpec& entry : commands_) {
    if (entry.name == name) return &entry;
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

CommandRegistration::CommandRegistration(const CommandSpec& entry) {
  CommandRegistry::Global().Add(entry);
}

}  // namespace lmt::cli

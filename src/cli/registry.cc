#include "cli/registry.h"

#include <algorithm>
#include <string>

#include "core/check.h"

namespace lmt::cli {

CommandRegistry& CommandRegistry::Global() {
  static CommandRegistry* registry = new CommandRegistry();
  return *registry;
}

void CommandRegistry::Add(const CommandInfo& entry) {
  LMT_CHECK(entry.run != nullptr && !entry.name.empty());
  LMT_CHECK(Find(entry.name) == nullptr);
  commands_.push_back(entry);
}

const CommandInfo* CommandRegistry::Find(std::string_view name) const {
  for (const CommandInfo& entry : commands_) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

std::vector<CommandInfo> CommandRegistry::List() const {
  std::vector<CommandInfo> sorted = commands_;
  std::sort(sorted.begin(), sorted.end(),
            [](const CommandInfo& a, const CommandInfo& b) {
              return a.name < b.name;
            });
  return sorted;
}

Status CheckRequiredOptions(const CommandInfo& command,
                            const CliOptions& options) {
  const std::string name(command.name);
  const bool dry_run_taken = (command.required & kTakesDryRun) != 0;
  if (options.dry_run && !dry_run_taken) {
    return Status::InvalidArgument(name + " has no --dry-run");
  }
  if ((command.required & kRequiresOutput) != 0 && !options.output &&
      !options.dry_run) {
    return Status::InvalidArgument(name + " needs -o OUT");
  }
  if ((command.required & kRequiresViewport) != 0 && !options.viewport) {
    return Status::InvalidArgument(name + " needs --viewport HANDLE");
  }
  return Status::Ok();
}

CommandRegistration::CommandRegistration(const CommandInfo& entry) {
  CommandRegistry::Global().Add(entry);
}

}  // namespace lmt::cli

// The commands of `layomat`. Each command is one cmd_NAME.cc file in this
// folder that registers itself at start-up:
//
//   namespace {
//   int RunFrames(lmt::cli::CommandContext& context) { ... }
//   const lmt::cli::CommandRegistration kFrames({
//       "frames", "layomat frames DRAWING [options] [--json]",
//       "find the frames and print the frame table", &RunFrames});
//   }  // namespace
//
// No central list names the commands, and only registered commands are
// listed by --help, so a command appears when its file arrives. A command's
// run function returns an exit status (cli/cli_options.h).
#ifndef LMT_CLI_REGISTRY_H_
#define LMT_CLI_REGISTRY_H_

#include <ostream>
#include <string_view>
#include <vector>

#include "cli/cli_options.h"
#include "core/program.h"
#include "core/status.h"

namespace lmt::cli {

// What a command runs with: the parsed options and the add-in with its
// window models loaded from the settings file, the --set entries applied,
// and the interface language chosen. Message boxes go through
// addin.ShowMessage (one line "title: text" on standard error).
struct CommandContext {
  const CliOptions& options;
  core::AddIn& addin;
  std::ostream& out;
  std::ostream& err;
  // See CliEnvironment::exits_after_run.
  bool exits_after_run = false;

  // Applies the --set entries of section OknoFilter again, in order; a
  // command calls it after capturing the template, so that the user's filter
  // choices win over what the capture filled in.
  void ReapplyFilterSets();
};

using CommandFunction = int (*)(CommandContext& context);

// Options a command cannot run without, as its usage line shows them. The
// command line is refused (exit 2, naming the first one missing) before the
// command starts, so no command begins work it cannot finish.
enum RequiredOption : unsigned {
  kRequiresOutput = 1u << 0,    // -o OUT
  kRequiresViewport = 1u << 1,  // --viewport HANDLE
  // Not a requirement: the command takes --dry-run, and with it needs no
  // -o. Any other command refuses --dry-run.
  kTakesDryRun = 1u << 2,
};

struct CommandInfo {
  std::string_view name;     // "frames"
  std::string_view usage;    // "layomat frames DRAWING [options] [--json]"
  std::string_view summary;  // one line for --help
  CommandFunction run;
  unsigned required = 0;  // RequiredOption bits
};

// InvalidArgument naming the first option `command` requires that
// `options` lacks.
Status CheckRequiredOptions(const CommandInfo& command,
                            const CliOptions& options);

class CommandRegistry {
 public:
  // The registry of this process (the executable's and the tests').
  static CommandRegistry& Global();

  // REQUIRES: no command of that name yet (a duplicate is a bug).
  void Add(const CommandInfo& entry);
  const CommandInfo* Find(std::string_view name) const;
  // All commands, sorted by name.
  std::vector<CommandInfo> List() const;

 private:
  std::vector<CommandInfo> commands_;
};

// Registers `entry` with the global registry when constructed (a namespace-
// scope constant of the command's file).
class CommandRegistration {
 public:
  explicit CommandRegistration(const CommandInfo& entry);
};

}  // namespace lmt::cli

#endif  // LMT_CLI_REGISTRY_H_

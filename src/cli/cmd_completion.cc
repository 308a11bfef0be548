// layomat completion bash: prints the bash completion script
// (cli/completion_script.h); `source <(layomat completion bash)` or a copy
// in bash-completion's folder puts it to use.
#include <ostream>

#include "cli/completion_script.h"
#include "cli/registry.h"
#include "core/text_encoding.h"

namespace lmt::cli {
namespace {

int RunCompletion(CommandContext& context) {
  const std::vector<std::string>& args = context.options.args;
  if (args.size() != 1 || !core::EqualsIgnoreAsciiCase(args.front(), "bash")) {
    context.err << "layomat: completion knows one shell: bash\n"
                   "Try 'layomat completion bash'.\n";
    return kExitUsage;
  }
  context.out << BashCompletionScript(CommandRegistry::Global().List());
  return kExitOk;
}

const CommandRegistration kCompletion({
    "completion",
    "layomat completion bash",
    "print the bash completion script for layomat",
    &RunCompletion,
});

}  // namespace
}  // namespace lmt::cli

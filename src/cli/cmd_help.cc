// layomat help options: the plain options and the controls each one sets,
// the same table README.md carries.
#include <ostream>

#include "cli/plain_options.h"
#include "cli/registry.h"
#include "core/text_encoding.h"

namespace lmt::cli {
namespace {

int RunHelp(CommandContext& context) {
  const std::vector<std::string>& topics = context.options.args;
  if (topics.size() != 1 ||
      !core::EqualsIgnoreAsciiCase(topics.front(), "options")) {
    context.err << "layomat: help knows one topic: options\n"
                   "Try 'layomat help options' or 'layomat --help'.\n";
    return kExitUsage;
  }
  context.out << "Plain options set the same controls as --set "
                 "SECTION.KEY=VALUE does;\n"
                 "a plain option and a --set that give one control different "
                 "values are refused.\n\n"
              << PlainOptionsMarkdown();
  return kExitOk;
}

const CommandRegistration kHelp({
    "help",
    "layomat help options",
    "list the plain options and the controls they set",
    &RunHelp,
});

}  // namespace
}  // namespace lmt::cli

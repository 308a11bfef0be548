// Bash completion for `layomat`, generated from the program itself: the
// registered commands, the global options and the plain options, so that
// it never falls behind them. `layomat completion bash` prints it.
#ifndef LMT_CLI_COMPLETION_SCRIPT_H_
#define LMT_CLI_COMPLETION_SCRIPT_H_

#include <string>
#include <vector>

#include "cli/registry.h"

namespace lmt::cli {

// A bash script defining the completion function _layomat and binding it
// to `layomat`: command names for the first word that is no option,
// options for a word that starts with "-", the words of an option whose
// forms are words (--order rows) after it, file names elsewhere.
std::string BashCompletionScript(const std::vector<CommandInfo>& commands);

}  // namespace lmt::cli

#endif  // LMT_CLI_COMPLETION_SCRIPT_H_

// The whole `layomat` run as a function, testable without a process: parse
// the command line, answer --help and --version, prepare the window models
// (language, settings file, --set) and run the registered command. The
// command line never writes settings.
#ifndef LMT_CLI_CLI_APP_H_
#define LMT_CLI_CLI_APP_H_

#include <ostream>
#include <string>
#include <vector>

#include "cli/cli_options.h"
#include "core/environment.h"
#include "core/program.h"

namespace lmt::cli {

// Where the run happens: the folder of the executable (a Lang.ini there
// selects the international mode), environment variables (for the user's
// settings file) and the locale.
struct CliEnvironment {
  std::filesystem::path program_folder;
  core::EnvLookup get_env;
  core::NumberFormatter format_number;
  // The process ends when RunLayomat returns (the executable's main): the
  // drawings opened are then left to the system instead of destroyed.
  bool exits_after_run = false;
};

CliEnvironment SystemCliEnvironment(const char* argv0);

// `args` without the program name. Returns the exit status.
int RunLayomat(const std::vector<std::string>& args, std::ostream& out,
               std::ostream& err, const CliEnvironment& env);

// Applies --set entries to the models in order (all, or only those of
// section OknoFilter). Unknown section or key, or a value that does not
// fit, is an InvalidArgument naming it.
Status ApplySets(const std::vector<SetAssignment>& sets, core::Windows& windows,
                 bool filter_only = false);

}  // namespace lmt::cli

#endif  // LMT_CLI_CLI_APP_H_

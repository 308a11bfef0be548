// Running a shell command from a test: the command line program, the
// ezdxf read-back scripts. POSIX only (popen); Windows test programs run
// under Wine and cannot start Linux programs.
#ifndef LMT_TESTING_SHELL_H_
#define LMT_TESTING_SHELL_H_

#include <string>

namespace lmt::testing {

struct ShellRun {
  int status = -1;  // the exit code; -1 when it could not run or was killed
  std::string out;  // standard output (and error, when the command says so)
};

// Runs `command` with /bin/sh and collects its standard output.
ShellRun RunShell(const std::string& command);

// `text` quoted for /bin/sh: single quotes, inner ones escaped.
std::string ShellQuote(const std::string& text);

}  // namespace lmt::testing

#endif  // LMT_TESTING_SHELL_H_

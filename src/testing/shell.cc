#include "testing/shell.h"

#include <cstdio>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace lmt::testing {

ShellRun RunShell(const std::string& command) {
  ShellRun run;
#ifdef _WIN32
  (void)command;
#else
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  char buffer[4096];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
    run.out.append(buffer, n);
  }
  const int raw = pclose(pipe);
  run.status = raw != -1 && WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
#endif
  return run;
}

std::string ShellQuote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

}  // namespace lmt::testing

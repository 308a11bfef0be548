// The layomat executable: the command line over the add-in's logic.
#include <iostream>
#include <string>
#include <vector>

#include "cli/cli_app.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
  lmt::cli::CliEnvironment env =
      lmt::cli::SystemCliEnvironment(argc > 0 ? argv[0] : nullptr);
  env.exits_after_run = true;
  return lmt::cli::RunLayomat(args, std::cout, std::cerr, env);
}

// The layomat executable: the command line over the add-in's logic.
#include <iostream>
#include <string>
#include <vector>

#include "cli/cli_app.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + (argc > 0 ? 1 : 0), argv + argc);
  return lmt::cli::RunLayomat(
      args, std::cout, std::cerr,
      lmt::cli::SystemCliEnvironment(argc > 0 ? argv[0] : nullptr));
}

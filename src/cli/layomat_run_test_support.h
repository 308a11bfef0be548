// Running the built `layomat` program as a user does, for the command
// line's end-to-end tests: in a folder of the test's own, which is both its
// working folder and its settings folder (XDG_CONFIG_HOME); and the ezdxf
// scripts of testdata/cli that make their drawings and read them back.
#ifndef LMT_CLI_LAYOMAT_RUN_TEST_SUPPORT_H_
#define LMT_CLI_LAYOMAT_RUN_TEST_SUPPORT_H_

#include <filesystem>
#include <string>
#include <vector>

#include "core/file_util.h"
#include "testing/shell.h"
#include "testing/test_paths.h"

namespace lmt::cli::test {

struct LayomatRun {
  int status = -1;
  std::string out;  // standard output
  std::string err;  // standard error
  std::string all() const { return out + err; }
};

inline LayomatRun RunLayomat(const std::string& args,
                             const std::filesystem::path& home) {
  const std::filesystem::path err_file = home / "layomat.stderr";
  const std::string dir = testing::ShellQuote(home.string());
  testing::ShellRun run =
      testing::RunShell("cd " + dir + " && XDG_CONFIG_HOME=" + dir + " '" +
                        LMT_BINARY_DIR "/layomat' " + args + " 2>" +
                        testing::ShellQuote(err_file.string()));
  LayomatRun result{run.status, std::move(run.out),
                    core::ReadFileBytes(err_file).value_or("")};
  std::filesystem::remove(err_file);
  return result;
}

// Runs testdata/cli/`script` with `args` (each quoted for the shell) under
// the interpreter with ezdxf; standard error joins the output.
inline testing::ShellRun RunTestScript(const std::string& script,
                                       const std::vector<std::string>& args) {
  std::string command =
      testing::PythonCommand() +
      testing::ShellQuote(testing::TestdataPath("cli/" + script));
  for (const std::string& arg : args) command += " " + testing::ShellQuote(arg);
  return testing::RunShell(command + " 2>&1");
}

}  // namespace lmt::cli::test

#endif  // LMT_CLI_LAYOMAT_RUN_TEST_SUPPORT_H_

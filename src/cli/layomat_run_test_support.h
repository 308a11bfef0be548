// Running the built `layomat` program as a user does, for the command
// line's end-to-end tests: in a folder of the test's own, which is both its
// working folder and its settings folder (XDG_CONFIG_HOME).
#ifndef LMT_CLI_LAYOMAT_RUN_TEST_SUPPORT_H_
#define LMT_CLI_LAYOMAT_RUN_TEST_SUPPORT_H_

#include <filesystem>
#include <string>

#include "core/file_util.h"
#include "testing/shell.h"

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

}  // namespace lmt::cli::test

#endif  // LMT_CLI_LAYOMAT_RUN_TEST_SUPPORT_H_

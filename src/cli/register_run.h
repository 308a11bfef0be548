// `create-layouts --register FILE` on the command line: its errors as exit
// statuses and its matching warnings on standard error. Reading the file
// and writing its values are layouts/register_values.h.
#ifndef LMT_CLI_REGISTER_RUN_H_
#define LMT_CLI_REGISTER_RUN_H_

#include <string>
#include <vector>

#include "cli/registry.h"
#include "frames/frame_table.h"
#include "layouts/register_values.h"

namespace lmt::cli {

// Writes "layomat: MESSAGE" for a register ReadRegister refused and
// returns its exit status: 3 when unreadable, 2 when not a register.
int ReportRegisterError(CommandContext& context, const Status& status);

// The register matched to the frames found: the frames it lists, in its
// order, and its warnings (rows that match no frame, frames it leaves out).
struct MatchedRegister {
  std::vector<layouts::RegisteredFrame> frames;
  std::vector<std::string> warnings;
};

// Matches `reg` to the searched `table`, which becomes the register's
// table, and writes the warnings ("warning: ", unless --quiet).
MatchedRegister MatchRegister(CommandContext& context,
                              const layouts::Register& reg,
                              frames::FrameTable& table);

}  // namespace lmt::cli

#endif  // LMT_CLI_REGISTER_RUN_H_

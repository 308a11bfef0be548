// `create-layouts --register FILE` in the embedded host: reading the
// register file, and writing its attribute values into each listed frame's
// title block in model space and into the same tags on the frame's new
// layout (the title block the pattern layout gave it).
#ifndef LMT_CLI_REGISTER_RUN_H_
#define LMT_CLI_REGISTER_RUN_H_

#include <string>
#include <vector>

#include "cli/frame_register.h"
#include "cli/registry.h"
#include "host/document.h"

namespace lmt::cli {

// The register in file `path`: IOError naming it when it cannot be read,
// InvalidArgument naming it and the line when it is not a register.
Result<Register> ReadRegister(const std::string& path);

// Writes "layomat: MESSAGE" for a register ReadRegister refused and
// returns its exit status: 3 when unreadable, 2 when not a register.
int ReportRegisterError(CommandContext& context, const Status& status);

// Matches `reg` to the searched `table`, which becomes the register's
// table, writes the warnings ("warning: ", unless --quiet) and returns the
// frames listed.
std::vector<RegisteredFrame> MatchRegister(CommandContext& context,
                                           const Register& reg,
                                           frames::FrameTable& table);

// Sets the attributes of the block reference `frame.id` names to the
// register's values (tags compared ignoring case; a tag the block lacks is
// passed over). Returns how many attributes were set.
int WriteFrameValues(host::Document& document, const RegisteredFrame& frame);

// The same values on every block reference of layout `frame.layout`.
int WriteLayoutValues(host::Document& document, const RegisteredFrame& frame);

}  // namespace lmt::cli

#endif  // LMT_CLI_REGISTER_RUN_H_

#include "cli/register_run.h"

#include <ostream>

namespace lmt::cli {

int ReportRegisterError(CommandContext& context, const Status& status) {
  context.err << "layomat: " << status.message() << "\n";
  return status.code() == StatusCode::kIOError ? kExitFileError : kExitUsage;
}

MatchedRegister MatchRegister(CommandContext& context,
                              const layouts::Register& reg,
                              frames::FrameTable& table) {
  layouts::RegisterOutcome matched = layouts::ApplyRegister(reg, table);
  if (!context.options.quiet) {
    for (const std::string& warning : matched.warnings) {
      context.err << "warning: " << warning << "\n";
    }
  }
  table = std::move(matched.table);
  return {std::move(matched.frames), std::move(matched.warnings)};
}

}  // namespace lmt::cli

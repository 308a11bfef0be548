// The frame steps that `frames` and `create-layouts` share: template capture
// (with --template, after which the user's OknoFilter --set entries win over
// what the capture filled in) and the search (the whole model, or the objects
// of --pick), with the embedded user's picks queued in the order the
// commands ask for them.
#ifndef LMT_CLI_FRAME_SEARCH_RUN_H_
#define LMT_CLI_FRAME_SEARCH_RUN_H_

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "frames/frame_commands.h"

namespace lmt::cli {

// kRefused when the capture was refused; otherwise the search's outcome.
frames::Outcome CaptureAndSearch(CommandContext& context,
                                 EmbeddedSession& embedded,
                                 frames::FrameCommands& commands);

}  // namespace lmt::cli

#endif  // LMT_CLI_FRAME_SEARCH_RUN_H_

// How the drawing commands open their drawing: the embedded session over
// DRAWING (to be written to OUT, or only read), then, for those that work on
// frames, the steps `frames` and `create-layouts` share: template capture
// (with --template, after which the user's OknoFilter --set entries win over
// what the capture filled in) and the search (the whole model, or the objects
// of --pick), with the embedded user's picks queued in the order the
// commands ask for them.
#ifndef LMT_CLI_FRAME_SEARCH_RUN_H_
#define LMT_CLI_FRAME_SEARCH_RUN_H_

#include <functional>
#include <memory>
#include <string>

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "core/status.h"
#include "frames/frame_commands.h"

namespace lmt::cli {

// Whether the command works on frames.
enum class FrameSearch {
  kNone,             // only open the drawing
  kRequired,         // capture and search; anything but a finished search stops
  kKeepInterrupted,  // an interrupted search still hands back its rows
};

// Runs right after opening, before the search; a failure is reported as a
// file error.
using AfterOpen = std::function<Status(EmbeddedSession&)>;

struct OpenedDrawing {
  // kExitOk, or the status to exit with, its message already written:
  // kExitFileError when the drawing could not be opened, kExitRefused when
  // the capture or the search did not run to its end.
  int exit = kExitOk;
  std::unique_ptr<EmbeddedSession> embedded;
  frames::FrameState state;
  // The search's outcome; kDone when there was no search.
  host::Outcome outcome = host::Outcome::kDone;
};

// The hook of the commands that make layouts: an R13 or R14 drawing is made
// DXF 2000 (EmbeddedSession::PrepareForLayouts).
AfterOpen PrepareForLayouts(CommandContext& context);

// Opens `drawing` to be written to `out` (EmbeddedSession::OpenToSave), or
// only to read it when `out` is null, then searches as `search` says.
OpenedDrawing OpenDrawing(CommandContext& context, const std::string& drawing,
                          const std::string* out, FrameSearch search,
                          const AfterOpen& after_open = nullptr);

}  // namespace lmt::cli

#endif  // LMT_CLI_FRAME_SEARCH_RUN_H_

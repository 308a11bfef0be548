// The router: runs the routine of a menu item or button on a session, the
// same routine the command line runs (frames, layouts, utilities, batch).
// Commands run to their end on the caller's thread; the stop buttons reach
// a running command only through the events it pumps (host::User).
//
// The router owns the frame state (the frame table and the template) for
// the whole run of the add-in. Nothing here throws; a command that cannot
// connect stops silently, as its routine says.
#ifndef LMT_ADDIN_COMMANDS_H_
#define LMT_ADDIN_COMMANDS_H_

#include <string_view>

#include "addin/command_table.h"
#include "addin/shell.h"
#include "frames/frame_commands.h"
#include "host/session.h"

namespace lmt::addin {

class Commands {
 public:
  // `session` and `shell` must outlive the router.
  Commands(host::Session& session, Shell& shell);
  Commands(const Commands&) = delete;
  Commands& operator=(const Commands&) = delete;

  // Runs the command of `control` (a control or menu item name) of the
  // window named `window`. False when the table has no such command.
  bool Run(std::string_view window, std::string_view control);
  // Runs one table entry.
  void Run(const CommandEntry& entry);

  frames::FrameState& frame_state() { return state_; }
  const frames::FrameTable& frame_table() const { return state_.table; }
  host::Session& session() { return session_; }

 private:
  // Highlighting, its removal and the named views over the frame table,
  // each ending with an information message.
  void FrameTools(Action action);
  void Batch(core::Window& window, Action action);
  void BatchStart(core::Window& window);
  void ShowNameLayouts();

  host::Session& session_;
  Shell& shell_;
  frames::FrameState state_;
  frames::FrameCommands frame_commands_;
};

}  // namespace lmt::addin

#endif  // LMT_ADDIN_COMMANDS_H_

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
#include <vector>

#include "addin/command_table.h"
#include "addin/shell.h"
#include "frames/frame_commands.h"
#include "host/session.h"
#include "layouts/frame_register.h"

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
  // Layout creation; an imported register's values go into the title
  // blocks of its frames before and of their new layouts after.
  void CreateLayouts();
  // The plan of the next creation and its warnings in the text window.
  void CheckPlan();
  // The table's layouts plotted by the CAD program to PDF files beside the
  // drawing, one per sheet, ending with an information message.
  void PlotPdf();
  // The frame table with the title blocks' attributes to a CSV file, and
  // an edited one applied to the table: its order, names and values.
  void ExportRegister();
  void ImportRegister();
  void Batch(core::Window& window, Action action);
  void BatchStart(core::Window& window);
  void ShowNameLayouts();
  // Zooms the drawing onto the frame of the selected table row.
  void ShowFrame();
  // Sorts the drawing's layout tabs in the sort window's order, which is
  // stored first.
  void SortLayouts();

  host::Session& session_;
  Shell& shell_;
  frames::FrameState state_;
  frames::FrameCommands frame_commands_;
  // The frames of the last imported register, until the next search.
  std::vector<layouts::RegisteredFrame> registered_;
};

}  // namespace lmt::addin

#endif  // LMT_ADDIN_COMMANDS_H_

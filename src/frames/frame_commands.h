// The frame commands of the main window: template capture, the search in
// its two selection modes, the update (renumber and name again), the four
// row commands and the stop button. They share one FrameState, which lives
// as long as the add-in (or the command-line run) does.
//
// Naming belongs to the layout subsystem, which builds on this one; the
// caller hands the commands a RowNamer that names every row of the table
// (from the main window's naming template and free texts). The search and
// the update call it after ordering, as the table is named each time it
// has been sorted.
//
// Nothing here throws. Host calls that fail skip their statement (the
// field or cell keeps what it had); the user hears of refusals and of the
// end of a command through messages, and the caller gets a host::Outcome
// (kRefused also for no host or drawing; never kNotConnected).
#ifndef LMT_FRAMES_FRAME_COMMANDS_H_
#define LMT_FRAMES_FRAME_COMMANDS_H_

#include <functional>
#include <vector>

#include "frames/frame_table.h"
#include "frames/frame_template.h"
#include "host/outcome.h"
#include "host/session.h"

namespace lmt::frames {

// Names every data row of the table.
using RowNamer = std::function<void(FrameTable& table)>;

// Everything the frame commands share between calls.
struct FrameState {
  FrameTable table;
  // Empty until the first successful capture; kept when a capture is empty.
  FrameTemplate frame_template;
  // The sort start point of the last search; (0, 0) when cancelled.
  Point start;
  // The direction polyline of the last search (its vertices); empty when
  // none was picked or the ordering does not use one.
  std::vector<Point> direction;
};

// Which objects `Search` looks at.
enum class SearchMode {
  kOnScreen,  // those the user selects on screen ("Select Window")
  kAll,       // every object of the drawing ("Select All" / "Find All")
};

// Which of the search's four state flags (Session::search_flags) marks
// which step. While a flag is set the connection keeps the document that
// step works on, so a drawing switched in the CAD program meanwhile is not
// taken for it. Each is set for the duration of its step only.
enum SearchFlag : int {
  kFlagCapture = 0,         // template capture
  kFlagSearch = 1,          // the search from connection to its end
  kFlagDirectionPick = 2,   // picking the direction polyline
  kFlagStartPointPick = 3,  // asking for the start point
};

class FrameCommands {
 public:
  // `session` and `state` must outlive the commands. `namer` may be empty
  // (rows then keep their names).
  FrameCommands(host::Session& session, FrameState& state, RowNamer namer);

  // mnuObrazec / Command_GetObrazec: the user picks one example frame; its
  // kind and properties become the template and fill the filter window.
  // kRefused when no host or drawing is there or the pick was empty (the
  // old template stays); the frame table is reset either way.
  host::Outcome CaptureTemplate();

  // mnuSelectAll / Command_GetAll (kAll) and mnuSelect / Command_GetVibor
  // (kOnScreen): fills the table with one row per frame found, orders and
  // names it. kRefused when nothing was selected; kInterrupted when the
  // stop button ended it (the rows made so far stay, neither ordered nor
  // named).
  host::Outcome Search(SearchMode mode);

  // Command_Update: renumbers the rows and names them all again.
  void Update();

  // The row buttons on the selected row `row` of the table, each followed
  // by renumbering. A row outside the data rows (no selection) does
  // nothing.
  void MoveRowToFirst(int row);  // Command_PeremestitStrokuNaPervii
  void MoveRowUp(int row);       // Command_PeremestitStrokuVverh
  void MoveRowDown(int row);     // Command_PeremestitStrokuVniz
  void DeleteRow(int row);       // Command_UdalitStroku

  // Command_Prervat: sets the interrupt flag, lets events run six times so
  // the running command sees it, and says so (MSG0005), also when no
  // command runs.
  void Interrupt();

 private:
  bool IsDataRow(int row) const;

  host::Session& session_;
  FrameState& state_;
  RowNamer namer_;
};

}  // namespace lmt::frames

#endif  // LMT_FRAMES_FRAME_COMMANDS_H_

#include "frames/frame_commands.h"

#include <utility>

#include "core/messages.h"

namespace lmt::frames {

FrameCommands::FrameCommands(host::Session& session, FrameState& state,
                             RowNamer namer)
    : session_(session), state_(state), namer_(std::move(namer)) {}

void FrameCommands::Update() {
  state_.table.Renumber();
  if (namer_) namer_(state_.table);
}

bool FrameCommands::IsDataRow(int row) const {
  return row >= 1 && row <= state_.table.last_row();
}

void FrameCommands::MoveRowToFirst(int row) {
  if (IsDataRow(row)) state_.table.MoveRowToFirst(row);
}

void FrameCommands::MoveRowUp(int row) {
  if (IsDataRow(row)) state_.table.MoveRowUp(row);
}

void FrameCommands::MoveRowDown(int row) {
  if (IsDataRow(row)) state_.table.MoveRowDown(row);
}

void FrameCommands::DeleteRow(int row) {
  if (IsDataRow(row)) state_.table.DeleteRow(row);
}

void FrameCommands::Interrupt() {
  host::User& user = session_.user();
  user.RequestInterrupt();
  for (int i = 0; i < 6; ++i) user.PumpEvents();
  session_.ShowMessage(core::kMsgInterrupted, host::MessageIcon::kInformation);
}

}  // namespace lmt::frames

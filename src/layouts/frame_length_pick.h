// `Command_GetMashtabRamka` of the creation-parameters window: the paper
// length a frame's width is to occupy, taken from a distance the user
// picks in the drawing divided by the drawing's scale the user types.
//
// Talks to the user and the host; the arithmetic is FrameLengthFromPick.
#ifndef LMT_LAYOUTS_FRAME_LENGTH_PICK_H_
#define LMT_LAYOUTS_FRAME_LENGTH_PICK_H_

#include <string_view>

#include "host/session.h"

namespace lmt::layouts {

// The prompt of the distance pick.
inline constexpr std::string_view kDistancePrompt = "Insert distance: \n";

// Connects (stops silently without a drawing), tells the user what to pick
// (MSG0016) and activates the CAD window, asks for a distance (on nanoCAD
// a base point first, with the same prompt), stops on a cancel or a zero
// distance, asks for the scale (MSG0017, default "1", empty or cancelled
// counts as "1"), and writes distance / scale into
// `Text_AutoMashtabRamka` followed by the box "Ok". Returns true when the
// field was written.
bool GetFrameLengthFromDrawing(host::Session& session);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_FRAME_LENGTH_PICK_H_

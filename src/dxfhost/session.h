// The session-level parts of a DXF document: system variables, the command
// line, the tiled viewport and Utility. Internal to dxfhost; document.cc
// wires them to the object model.
#ifndef LMT_DXFHOST_SESSION_H_
#define LMT_DXFHOST_SESSION_H_

#include <memory>
#include <string_view>

#include "core/status.h"
#include "dxfhost/drawing.h"
#include "host/document.h"
#include "host/variant.h"

namespace lmt::dxfhost {

// Sets the session state of a freshly read drawing from its header: the
// active tab ($TILEMODE), the UCS ($UCSNAME, $UCSXDIR).
void InitSession(Drawing& d);

// Makes `block` (model space or a layout's block) the active tab. A paper
// layout also becomes the file's *Paper_Space (the one it opens on) and
// $TILEMODE follows, so a saved drawing opens where the session was.
Status ActivateBlock(Drawing& d, dxf::Block* block);

// GetVariable / SetVariable (variables.cc).
Result<host::Variant> ReadVariable(Drawing& d, std::string_view name);
Status WriteVariable(Drawing& d, std::string_view name,
                     const host::Variant& value);

// SendCommand (commands.cc): runs the whole text or, when any part of it is
// unknown or unsupported, nothing.
Status RunCommandLine(Drawing& d, std::string_view text);

// The UCS of the current view ("_UCS _View") and the world UCS.
void SetViewUcs(Drawing& d);
void SetWorldUcs(Drawing& d);

// Utility and the tiled model viewport (utility.cc).
host::UtilityPtr MakeUtility(const std::shared_ptr<Drawing>& d);
host::ViewportPtr MakeTiledViewport(const std::shared_ptr<Drawing>& d);
// Applies a tiled viewport's pending direction (SetActiveViewport).
Status ApplyTiledViewport(const host::Viewport& viewport, Drawing& d);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_SESSION_H_

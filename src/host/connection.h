// The connection to the CAD program, rebuilt at the start of every command
// that touches the drawing: find the running program of the chosen kind (or
// offer to start one), take its active drawing, and record the host's name
// and release year; plus the ObjectDBX document factory and the view and
// coordinate-system checks run before the frame search and layout creation.
//
// Errors of single host calls are not reported to the caller: ConnectHost
// tells the user why it failed (messages 1 to 4) and leaves
// ConnectionState::connected false, and the caller stops silently.
#ifndef LMT_HOST_CONNECTION_H_
#define LMT_HOST_CONNECTION_H_

#include <array>
#include <string>
#include <string_view>

#include "core/messages.h"
#include "core/status.h"
#include "host/automation_runtime.h"
#include "host/document.h"
#include "host/host_kind.h"
#include "host/object.h"
#include "host/user.h"

namespace lmt::host {

// What the connection holds between ConnectHost and the end of a command.
struct ConnectionState {
  // False from the start of every ConnectHost; true only when it ran to the
  // end.
  bool connected = false;
  ApplicationPtr application;
  // One of the names of host_kind.h ("ZWCAD+" after the ZWCAD fall-back);
  // empty for a host-list index outside 0..6.
  std::string host_name;
  DocumentPtr active_document;
  // AutoCadYear() for AutoCAD, NanoCadYear() for nanoCAD, kNewestYear for
  // the others.
  double host_year = kNewestYear;
  // AutoCAD only (null for the other hosts or when the host refused it).
  DbxDocumentPtr dbx_document;
};

// The main window's choices that ConnectHost reads.
struct ConnectRequest {
  int kind_index = 0;        // Combo_VersiaCAD
  std::string release_text;  // Combo_NomerAutoCAD
  // The frame search's four state flags; while any is set the active
  // document of `state` is kept instead of being taken anew.
  std::array<bool, 4> search_flags{};
};

// Connects as the request says and fills `state`. Asks the user (message 1,
// an empty line, message 2; Yes/No) whether to start the program when none
// runs; shows message 3 when starting fails and message 4 when there is no
// drawing (also when no program answers while a search flag is set), both
// with the critical icon, taking the texts from `messages`.
// AutoCAD is found by the identifier of the release list text, but always
// started by the generic identifier.
void ConnectHost(const ConnectRequest& request, AutomationRuntime& runtime,
                 User& user, const core::MessageTable& messages,
                 ConnectionState& state);

// Asks AutoCAD for an ObjectDBX document: "ObjectDBX.AxDbDocument.NN" where
// NN, the major release from the first two characters of Version, is 16 or
// more; "ObjectDBX.AxDbDocument" otherwise (also when Version fails).
Result<DbxDocumentPtr> CreateDbxDocument(Application& application);

// In model space (TILEMODE 1) with a view direction (VIEWDIR) other than
// (0, 0, 1): sets the active viewport's Direction to (0, 0, 1) and assigns
// the viewport back so that it takes effect. Returns true when it did so;
// false when nothing was needed or the host refused a step (ignored: the
// search then works in whatever view there is).
bool EnsurePlanView(Document& document);

// On AutoCAD hosts (host name containing "AutoCAD", any case) whose current
// UCS is not named "*ВЕРХНЯЯ*" or "*TOPVIEW*" and is not the world UCS
// (WORLDUCS other than 1): sends "_UCS", CR, "_World", CR. Returns true when
// the command was sent. Unreadable variables count as "not world".
bool EnsureWorldUcs(std::string_view host_name, Document& document);

// The command text EnsureWorldUcs sends.
inline constexpr std::string_view kWorldUcsCommand = "_UCS\r_World\r";

}  // namespace lmt::host

#endif  // LMT_HOST_CONNECTION_H_

// Session: what every command of the add-in works with. The add-in's global
// state and window models (the single store of the user's choices), the
// user-interaction interface, the automation runtime that finds the CAD
// program, and the connection rebuilt at the start of each command.
//
// A command begins with Connect(); when it returns false the user has
// already been told why and the command stops silently.
#ifndef LMT_HOST_SESSION_H_
#define LMT_HOST_SESSION_H_

#include <array>
#include <string_view>

#include "core/globals.h"
#include "core/windows.h"
#include "host/automation_runtime.h"
#include "host/connection.h"
#include "host/user.h"

namespace lmt::host {

class Session {
 public:
  // All references must outlive the session.
  Session(core::Globals& globals, core::Windows& windows, User& user,
          AutomationRuntime& runtime)
      : globals_(globals), windows_(windows), user_(user), runtime_(runtime) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  core::Globals& globals() { return globals_; }
  core::Windows& windows() { return windows_; }
  User& user() { return user_; }
  AutomationRuntime& runtime() { return runtime_; }
  const core::MessageTable& messages() const { return globals_.messages; }

  // ConnectHost with the host choice of the main window. Returns
  // connection().connected.
  bool Connect();
  ConnectionState& connection() { return connection_; }
  // The active document; REQUIRES a successful Connect().
  Document& document();

  // The frame search's four state flags: while one is set, Connect keeps
  // the active document it had.
  std::array<bool, 4>& search_flags() { return search_flags_; }

  // Message `number` of the message table, titled with the product name,
  // optionally followed by `suffix` (a name or a number).
  Answer ShowMessage(int number, MessageIcon icon, std::string_view suffix = {},
                     MessageButtons buttons = MessageButtons::kOk);

 private:
  core::Globals& globals_;
  core::Windows& windows_;
  User& user_;
  AutomationRuntime& runtime_;
  ConnectionState connection_;
  std::array<bool, 4> search_flags_{};
};

}  // namespace lmt::host

#endif  // LMT_HOST_SESSION_H_

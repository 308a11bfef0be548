#include "host/session.h"

#include <string>

#include "core/check.h"

namespace lmt::host {

bool Session::Connect() {
  ConnectRequest request;
  request.kind_index = windows_.okno_lmt.combo_versia_cad.selected();
  request.release_text = windows_.okno_lmt.combo_nomer_autocad.text();
  request.search_flags = search_flags_;
  ConnectHost(request, runtime_, user_, globals_.messages, connection_);
  return connection_.connected;
}

Document& Session::document() {
  LMT_CHECK(connection_.connected && connection_.active_document != nullptr);
  return *connection_.active_document;
}

Answer Session::ShowMessage(int number, MessageIcon icon,
                            std::string_view suffix, MessageButtons buttons) {
  std::string text = globals_.messages.Get(number);
  text += suffix;
  return user_.ShowMessage(text, icon, buttons, globals_.product_name);
}

}  // namespace lmt::host

#include "layouts/frame_length_pick.h"

#include <optional>
#include <string>

#include "core/messages.h"
#include "host/application.h"
#include "host/host_kind.h"
#include "layouts/creation_parameters.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {
bool GetFrameLengthFromDrawing(host::Session& session) {
  if (!session.Connect()) return false;
  host::User& user = session.user();
  host::Document& document = session.document();
  session.ShowMessage(core::kMsgSpecifyRectangleLength,
                      host::MessageIcon::kInformation);
  if (const host::ApplicationPtr& app = session.connection().application) {
    if (Result<std::string> caption = app->Caption(); caption.ok()) {
      user.ActivateCadWindow(*caption);
    }
  }
  Result<host::UtilityPtr> utility = document.Utility();
  if (!utility.ok()) return false;
  std::optional<host::Point> base;
  if (NamesEqualNoCase(session.connection().host_name, host::kNanoCadName)) {
    Result<host::Point> point =
        (*utility)->GetPoint(std::nullopt, kDistancePrompt);
    if (!point.ok()) return false;
    base = *point;
  }
  Result<double> distance = (*utility)->GetDistance(base, kDistancePrompt);
  if (!distance.ok() || *distance == 0) return false;

  user.BringToFront();
  const core::Globals& globals = session.globals();
  std::optional<std::string> answer =
      user.InputBox(globals.messages.Get(core::kMsgScaleOfRectangle),
                    globals.product_name, "1");
  std::optional<double> length = FrameLengthFromPick(
      *distance, answer.value_or(""), globals.decimal_comma);
  if (!length) return false;
  session.windows().okno_sozdat_layout.text_auto_mashtab_ramka.set_text(
      NumberToField(*length, globals.decimal_comma));
  user.ShowMessage("Ok", host::MessageIcon::kInformation);
  return true;
}

}  // namespace lmt::layouts

#include "frames/drawing_steps.h"

#include "core/check.h"
#include "frames/frame_template.h"

namespace lmt::frames {

void ActivateCadWindow(host::Session& session) {
  host::User& user = session.user();
  user.PumpEvents();
  user.PumpEvents();
  if (const host::ApplicationPtr& app = session.connection().application) {
    if (Result<std::string> caption = app->Caption(); caption.ok()) {
      user.ActivateCadWindow(*caption);
    }
  }
  user.PumpEvents();
  user.PumpEvents();
}

void MakeModelCurrent(host::Document& document) {
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return;
  Result<host::LayoutPtr> model = (*layouts)->Item("Model");
  if (!model.ok()) return;
  document.SetActiveLayout(*model).IgnoreError();  // the search goes on
}

Result<host::SelectionSetPtr> RenewSelectionSet(host::Document& document,
                                                std::string_view name) {
  Result<host::SelectionSetsPtr> sets = document.SelectionSets();
  if (!sets.ok()) return sets.status();
  if (Result<std::vector<host::SelectionSetPtr>> all = (*sets)->Items();
      all.ok()) {
    for (const host::SelectionSetPtr& set : *all) {
      Result<std::string> set_name = set->Name();
      if (set_name.ok() && EqualsNoCase(*set_name, name)) {
        set->Delete().IgnoreError();  // Add then fails and says so
        break;
      }
    }
  }
  return (*sets)->Add(name);
}

ScopedSearchFlag::ScopedSearchFlag(host::Session& session, int flag)
    : session_(session), flag_(flag) {
  LMT_CHECK(flag >= 0 && flag < 4);
  session_.search_flags()[flag_] = true;
}

ScopedSearchFlag::~ScopedSearchFlag() {
  session_.search_flags()[flag_] = false;
}

}  // namespace lmt::frames

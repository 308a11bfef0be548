// Steps the frame commands take in the same way around their work with the
// drawing: bringing the CAD window forward with events let run, making
// model space current, renewing a named selection set, and holding one of
// the search's state flags for the duration of a step.
//
// Each step ignores the host's refusals, as the commands do statement by
// statement; what the caller needs to know is in the return value.
#ifndef LMT_FRAMES_DRAWING_STEPS_H_
#define LMT_FRAMES_DRAWING_STEPS_H_

#include <string_view>

#include "core/status.h"
#include "host/object_model.h"
#include "host/session.h"

namespace lmt::frames {

// The temporary selection sets of the frame commands.
inline constexpr std::string_view kPrintSetName = "VremeniyNaborPrint";
inline constexpr std::string_view kPolylineSetName = "VremeniyNaborPolyline";

// Lets events run twice, activates the CAD window by the application's
// Caption (skipped when the host refuses it), lets events run twice again.
// REQUIRES: a successful Connect().
void ActivateCadWindow(host::Session& session);

// Sets the active layout to Layouts.Item("Model").
void MakeModelCurrent(host::Document& document);

// Deletes the first selection set called `name` (if any) and adds a new
// one. Fails when the host gives no set.
Result<host::SelectionSetPtr> RenewSelectionSet(host::Document& document,
                                                std::string_view name);

// Sets one of the session's search flags while it lives.
class ScopedSearchFlag {
 public:
  ScopedSearchFlag(host::Session& session, int flag);
  ~ScopedSearchFlag();
  ScopedSearchFlag(const ScopedSearchFlag&) = delete;
  ScopedSearchFlag& operator=(const ScopedSearchFlag&) = delete;

 private:
  host::Session& session_;
  int flag_;
};

}  // namespace lmt::frames

#endif  // LMT_FRAMES_DRAWING_STEPS_H_

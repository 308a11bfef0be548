// How the add-in reaches a CAD program from outside the object model: the
// platform's "get the running object registered under a program identifier"
// and "create a new instance by identifier". On Windows these are
// GetActiveObject and CoCreateInstance behind the COM host; tests use a fake
// (testing/fake_runtime.h).
#ifndef LMT_HOST_AUTOMATION_RUNTIME_H_
#define LMT_HOST_AUTOMATION_RUNTIME_H_

#include <string_view>

#include "core/status.h"
#include "host/object.h"

namespace lmt::host {

class AutomationRuntime {
 public:
  virtual ~AutomationRuntime() = default;

  // The running program registered under `prog_id`; kNotFound when none
  // runs (or the identifier is not registered).
  virtual Result<ApplicationPtr> GetObject(std::string_view prog_id) = 0;

  // Starts a new instance of `prog_id` and returns it (not yet visible);
  // kNotFound when the identifier is not registered, kRefused when it
  // cannot be started.
  virtual Result<ApplicationPtr> CreateObject(std::string_view prog_id) = 0;
};

}  // namespace lmt::host

#endif  // LMT_HOST_AUTOMATION_RUNTIME_H_

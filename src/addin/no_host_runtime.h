// The automation runtime of an add-in that has no way to reach a CAD
// program yet: every program identifier is "not running" and "not
// registered", so each command stops at its connection with the usual
// message. The Windows add-in uses it until the COM runtime is plugged in.
#ifndef LMT_ADDIN_NO_HOST_RUNTIME_H_
#define LMT_ADDIN_NO_HOST_RUNTIME_H_

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/automation_runtime.h"

namespace lmt::addin {

class NoHostRuntime : public host::AutomationRuntime {
 public:
  Result<host::ApplicationPtr> GetObject(std::string_view prog_id) override {
    return Status::NotFound("no automation runtime: " + std::string(prog_id));
  }
  Result<host::ApplicationPtr> CreateObject(std::string_view prog_id) override {
    return Status::NotFound("no automation runtime: " + std::string(prog_id));
  }
};

// Makes the runtime a session reaches CAD programs through.
using RuntimeFactory =
    std::function<std::unique_ptr<host::AutomationRuntime>()>;

}  // namespace lmt::addin

#endif  // LMT_ADDIN_NO_HOST_RUNTIME_H_

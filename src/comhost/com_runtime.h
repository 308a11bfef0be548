// ComRuntime: the automation runtime of the Windows add-in. A running CAD
// program is found with GetActiveObject (the running object table) under
// the class its program identifier names, a new one started with
// CoCreateInstance (a local server); either way the program's Application
// object is wrapped by WrapApplication.
//
// REQUIRES: COM initialised on the calling thread, apartment-threaded (the
// CAD program's user-interface thread, or a test's CoInitializeEx).
#ifndef LMT_COMHOST_COM_RUNTIME_H_
#define LMT_COMHOST_COM_RUNTIME_H_

#include <map>
#include <memory>
#include <string>
#include <string_view>

// A translation unit that included <windows.h> first has GetObject defined
// as GetObjectW; the members below and their base must keep their name.
#ifdef GetObject
#undef GetObject
#endif

#include "core/status.h"
#include "host/automation_runtime.h"
#include "host/call_gate.h"

namespace lmt::comhost {

class ComContext;

class ComRuntime : public host::AutomationRuntime {
 public:
  // kNotFound when the identifier is not registered or nothing runs under
  // it; kRefused when the running object is no automation object.
  Result<host::ApplicationPtr> GetObject(std::string_view prog_id) override;
  // kNotFound when the identifier is not registered; kRefused when the
  // program cannot be started.
  Result<host::ApplicationPtr> CreateObject(std::string_view prog_id) override;

 private:
  struct PerProgram {
    std::shared_ptr<host::CallGate> gate;
    std::shared_ptr<ComContext> context;
  };
  // The gate and context of `prog_id` (any case), made on first use.
  PerProgram& For(std::string_view prog_id);
  // Takes over one reference to `unknown` (an IUnknown*).
  Result<host::ApplicationPtr> Wrap(void* unknown, std::string_view prog_id);

  std::map<std::string, PerProgram> programs_;
};

// The runtime the add-in's sessions use on Windows.
std::unique_ptr<host::AutomationRuntime> MakeComRuntime();

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_COM_RUNTIME_H_

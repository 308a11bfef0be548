// An automation runtime for tests: which program identifiers have a running
// program, which can be started, and a record of every lookup. Identifiers
// match without regard to case, as registered program identifiers do.
#ifndef LMT_TESTING_FAKE_RUNTIME_H_
#define LMT_TESTING_FAKE_RUNTIME_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/status.h"
#include "host/automation_runtime.h"
#include "host/object.h"

namespace lmt::testing {

class FakeRuntime : public host::AutomationRuntime {
 public:
  // GetObject(prog_id) answers `application` from now on.
  void SetRunning(std::string prog_id, host::ApplicationPtr application);
  // CreateObject(prog_id) answers `application`, which from then on also
  // runs under `prog_id`.
  void SetCreatable(std::string prog_id, host::ApplicationPtr application);

  // "GetObject <id>" and "CreateObject <id>", in call order.
  const std::vector<std::string>& calls() const { return calls_; }

  Result<host::ApplicationPtr> GetObject(std::string_view prog_id) override;
  Result<host::ApplicationPtr> CreateObject(std::string_view prog_id) override;

 private:
  using Table = std::vector<std::pair<std::string, host::ApplicationPtr>>;
  static host::ApplicationPtr Lookup(const Table& table,
                                     std::string_view prog_id);

  Table running_;
  Table creatable_;
  std::vector<std::string> calls_;
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_FAKE_RUNTIME_H_

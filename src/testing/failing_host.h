// Makes any host a failing host: it forwards every call and refuses the
// chosen members (by gate name, see host/call_gate.h), for tests of the skip
// paths; or presses the user's stop button during a chosen call, for tests
// of the interrupt that do not depend on how often a routine pumps events.
// Works on whatever host made the object given, since all objects of an
// application share one call gate. Counting is switched on so the test can
// check what was called; the rules are dropped again when this goes away.
#ifndef LMT_TESTING_FAILING_HOST_H_
#define LMT_TESTING_FAILING_HOST_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/call_gate.h"
#include "host/object.h"
#include "host/user.h"

namespace lmt::testing {

class FailingHost {
 public:
  // Any object of the host (usually its Application).
  explicit FailingHost(const host::Object& any_object);
  FailingHost(const FailingHost&) = delete;
  FailingHost& operator=(const FailingHost&) = delete;
  ~FailingHost();

  // Refuses `member` ("Entity.Layer", "PViewport.*", "*") after letting the
  // first `allow_first` matching calls through, `times` times (-1: always).
  FailingHost& Refuse(std::string member, int64_t allow_first = 0,
                      int64_t times = -1);
  // Sets `user`'s interrupt flag, as the stop button does, during the
  // `nth` call (1: the first) of exactly `member` from now; the call itself
  // goes through. `user` must outlive the rule.
  FailingHost& InterruptAt(std::string member, int64_t nth, host::User& user);
  // Calls of exactly `member` since this was made, refused ones included.
  int64_t CallCount(std::string_view member) const;
  int64_t refused_calls() const { return gate_->refused_calls(); }
  host::CallGate& gate() { return *gate_; }

 private:
  std::shared_ptr<host::CallGate> gate_;
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_FAILING_HOST_H_

#include "testing/failing_host.h"

#include <utility>

namespace lmt::testing {

FailingHost::FailingHost(const host::Object& any_object)
    : gate_(any_object.shared_gate()) {
  gate_->ResetCounts();
  gate_->set_counting(true);
}

FailingHost::~FailingHost() {
  gate_->AllowAll();
  gate_->set_counting(false);
}

FailingHost& FailingHost::Refuse(std::string member, int64_t allow_first,
                                 int64_t times) {
  gate_->Refuse(std::move(member), allow_first, times);
  return *this;
}

FailingHost& FailingHost::InterruptAt(std::string member, int64_t nth,
                                      host::User& user) {
  gate_->RefuseIf([member = std::move(member), nth, seen = int64_t{0},
                   &user](std::string_view called) mutable {
    if (called == member && ++seen == nth) user.RequestInterrupt();
    return false;
  });
  return *this;
}

int64_t FailingHost::CallCount(std::string_view member) const {
  return gate_->CallCount(member);
}

}  // namespace lmt::testing

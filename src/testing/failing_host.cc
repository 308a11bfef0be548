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

int64_t FailingHost::CallCount(std::string_view member) const {
  return gate_->CallCount(member);
}

}  // namespace lmt::testing

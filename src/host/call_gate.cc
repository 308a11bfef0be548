#include "host/call_gate.h"

#include <algorithm>
#include <utility>

namespace lmt::host {

void CallGate::Refuse(std::string pattern, int64_t allow_first, int64_t times) {
  Rule rule;
  rule.pattern = std::move(pattern);
  rule.allow_first = allow_first;
  rule.times = times;
  rules_.push_back(std::move(rule));
  UpdateActive();
}

void CallGate::RefuseIf(std::function<bool(std::string_view)> decide) {
  Rule rule;
  rule.pattern = "*";
  rule.decide = std::move(decide);
  rules_.push_back(std::move(rule));
  UpdateActive();
}

void CallGate::Allow(std::string_view pattern) {
  std::erase_if(
      rules_, [&](const Rule& r) { return !r.decide && r.pattern == pattern; });
  UpdateActive();
}

void CallGate::AllowAll() {
  rules_.clear();
  UpdateActive();
}

void CallGate::set_counting(bool on) {
  counting_ = on;
  UpdateActive();
}

int64_t CallGate::CallCount(std::string_view member) const {
  auto it = counts_.find(member);
  return it == counts_.end() ? 0 : it->second;
}

void CallGate::ResetCounts() {
  counts_.clear();
  total_calls_ = 0;
  refused_calls_ = 0;
}

void CallGate::set_logging(bool on) {
  logging_ = on;
  UpdateActive();
}

void CallGate::UpdateActive() {
  active_ = counting_ || logging_ || !rules_.empty();
}

bool CallGate::Matches(std::string_view pattern, std::string_view member) {
  if (pattern == "*") return true;
  if (pattern.size() >= 2 && pattern.ends_with(".*")) {
    std::string_view cls = pattern.substr(0, pattern.size() - 1);  // "Class."
    return member.starts_with(cls);
  }
  return pattern == member;
}

Status CallGate::EnterSlow(std::string_view member) {
  if (counting_) {
    ++total_calls_;
    auto it = counts_.find(member);
    if (it == counts_.end()) {
      counts_.emplace(std::string(member), 1);
    } else {
      ++it->second;
    }
  }
  if (logging_) log_.emplace_back(member);

  bool refuse = false;
  for (Rule& rule : rules_) {
    if (rule.decide) {
      if (rule.decide(member)) {
        refuse = true;
        break;
      }
      continue;
    }
    if (!Matches(rule.pattern, member)) continue;
    ++rule.seen;
    if (rule.seen <= rule.allow_first) continue;
    if (rule.times >= 0 && rule.seen > rule.allow_first + rule.times) continue;
    refuse = true;
    break;
  }
  if (!refuse) return Status();
  if (counting_) ++refused_calls_;
  return Status::Refused(std::string(member) + " refused");
}

}  // namespace lmt::host

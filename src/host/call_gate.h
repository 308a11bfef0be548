// The call gate: every public member of the object model passes through the
// gate of its application before the host implementation runs. The gate can
// refuse chosen members (so any host becomes a failing host for tests of the
// skip paths), counts calls and keeps an ordered log of them (so tests and
// the COM host can see what was called). With no rules, counting and logging
// off, Enter() is one branch.
//
// Member names are "Class.Member", the class that declares the member and the
// member's C++ name: "Entity.Layer", "Entity.SetLayer",
// "PViewport.SetCustomScale", "Database.Layouts", "SelectionSet.Select".
// A rule's pattern is such a name, "Class.*" (every member declared by that
// class) or "*" (everything).
//
// Single-threaded, as the add-in is; not safe for concurrent use.
#ifndef LMT_HOST_CALL_GATE_H_
#define LMT_HOST_CALL_GATE_H_

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"

namespace lmt::host {

class CallGate {
 public:
  CallGate() = default;
  CallGate(const CallGate&) = delete;
  CallGate& operator=(const CallGate&) = delete;

  // Ok, or kRefused when a rule refuses `member` now. Counts and logs the
  // call (refused calls too) when those are on.
  Status Enter(std::string_view member) {
    if (!active_) return Status();
    return EnterSlow(member);
  }

  // Refuses calls matching `pattern` after letting the first `allow_first`
  // matching calls through (0: refuse from the first), `times` times in all
  // (-1: for ever). Rules are tried in the order they were added.
  void Refuse(std::string pattern, int64_t allow_first = 0, int64_t times = -1);
  // Refuses the calls for which `decide` returns true; for refusals that
  // depend on more than the name (for example the n-th call of two members).
  void RefuseIf(std::function<bool(std::string_view member)> decide);
  // Drops every rule added with exactly this pattern.
  void Allow(std::string_view pattern);
  // Drops every rule.
  void AllowAll();

  void set_counting(bool on);
  // Calls of exactly `member` since counting was switched on or reset.
  int64_t CallCount(std::string_view member) const;
  int64_t total_calls() const { return total_calls_; }
  int64_t refused_calls() const { return refused_calls_; }
  void ResetCounts();

  void set_logging(bool on);
  // Every member entered while logging, in order.
  const std::vector<std::string>& log() const { return log_; }
  void ClearLog() { log_.clear(); }

 private:
  struct Rule {
    std::string pattern;
    int64_t allow_first = 0;
    int64_t times = -1;
    int64_t seen = 0;
    std::function<bool(std::string_view)> decide;
  };

  Status EnterSlow(std::string_view member);
  void UpdateActive();
  static bool Matches(std::string_view pattern, std::string_view member);

  bool active_ = false;
  bool counting_ = false;
  bool logging_ = false;
  std::vector<Rule> rules_;
  std::map<std::string, int64_t, std::less<>> counts_;
  int64_t total_calls_ = 0;
  int64_t refused_calls_ = 0;
  std::vector<std::string> log_;
};

}  // namespace lmt::host

#endif  // LMT_HOST_CALL_GATE_H_

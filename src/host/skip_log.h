// What a command passed over because the host refused a call. The user sees
// only the messages of the command; a refusal along the way skips one object
// and the loop goes on, and is recorded here, so that tests can assert it and
// the reports can carry it.
#ifndef LMT_HOST_SKIP_LOG_H_
#define LMT_HOST_SKIP_LOG_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/status.h"

namespace lmt::host {

// One host call that failed and what was passed over because of it.
struct Skip {
  // The handle of the drawing object passed over, or the name of the
  // selection set, layout or layer concerned; empty when not known.
  std::string object;
  // What was being done, e.g. "switch", "own viewport", "select".
  std::string step;
  // The host's refusal.
  Status status;
};

class SkipLog {
 public:
  void Add(std::string object, std::string step, Status status) {
    skips_.push_back({std::move(object), std::move(step), std::move(status)});
  }
  // The one way a routine passes over a host call and goes on: records
  // `status` when the host refused, nothing when the call went through.
  // Returns whether it went through.
  bool Record(std::string_view object, std::string_view step,
              const Status& status) {
    if (status.ok()) return true;
    Add(std::string(object), std::string(step), status);
    return false;
  }
  template <typename T>
  bool Record(std::string_view object, std::string_view step,
              const Result<T>& result) {
    return result.ok() || Record(object, step, result.status());
  }
  // Takes over the skips of a routine run on the way.
  void Append(const SkipLog& other) {
    skips_.insert(skips_.end(), other.skips_.begin(), other.skips_.end());
  }
  const std::vector<Skip>& skips() const { return skips_; }
  bool empty() const { return skips_.empty(); }
  // Skips of `step`.
  int Count(std::string_view step) const;

 private:
  std::vector<Skip> skips_;
};

}  // namespace lmt::host

#endif  // LMT_HOST_SKIP_LOG_H_

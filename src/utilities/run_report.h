// How a layout utility tells its caller what happened. The user sees only the
// messages of the command; what the host refused along the way is passed over
// silently (one object skipped, the loop goes on) and recorded here, so tests
// can assert it and a debug log can print it.
#ifndef LMT_UTILITIES_RUN_REPORT_H_
#define LMT_UTILITIES_RUN_REPORT_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/status.h"
#include "host/outcome.h"

namespace lmt::utilities {

// One host call that failed and what was passed over because of it.
struct Skip {
  // The handle of the drawing object passed over, or the name of the
  // selection set or layout concerned; empty when not known.
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
  const std::vector<Skip>& skips() const { return skips_; }
  bool empty() const { return skips_.empty(); }
  // Skips of `step`.
  int Count(std::string_view step) const;

 private:
  std::vector<Skip> skips_;
};

}  // namespace lmt::utilities

#endif  // LMT_UTILITIES_RUN_REPORT_H_

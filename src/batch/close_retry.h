// The close-retry budget of a batch run. A command sent to the host runs
// asynchronously, so saving and closing a drawing may fail while it still
// works; the run then tries saving and closing again. The budget is one for
// the whole run, not per file: once an early file has spent it, each later
// file gets a single attempt and is left open when that fails, so that a
// host that never finishes cannot hold the run forever.
#ifndef LMT_BATCH_CLOSE_RETRY_H_
#define LMT_BATCH_CLOSE_RETRY_H_

namespace lmt::batch {

inline constexpr int kCloseRetryBudget = 100;

class CloseRetryBudget {
 public:
  // Call when a close left documents open in the host. True when the save
  // and close are to be tried again: the count of failed closes of the run,
  // this one included, is still below the budget.
  bool RetryAfterFailedClose() { return ++failed_closes_ < kCloseRetryBudget; }

  int failed_closes() const { return failed_closes_; }

 private:
  int failed_closes_ = 0;
};

}  // namespace lmt::batch

#endif  // LMT_BATCH_CLOSE_RETRY_H_

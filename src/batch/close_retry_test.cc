#include "batch/close_retry.h"

#include <gtest/gtest.h>

namespace lmt::batch {
namespace {

// Simulates the loop: a file whose close keeps failing `fails` times.
int RetriesFor(CloseRetryBudget& budget, int fails) {
  int retries = 0;
  for (int attempt = 0; attempt < fails; ++attempt) {
    if (!budget.RetryAfterFailedClose()) break;
    ++retries;
  }
  return retries;
}

TEST(CloseRetryBudgetTest, BudgetIsSharedByTheWholeRun) {
  CloseRetryBudget budget;
  EXPECT_EQ(RetriesFor(budget, 3), 3);      // a slow script, then success
  EXPECT_EQ(RetriesFor(budget, 1000), 96);  // a hung file spends the rest
  EXPECT_EQ(RetriesFor(budget, 1), 0);      // later files: one attempt only
  EXPECT_EQ(budget.failed_closes(), 101);
}

}  // namespace
}  // namespace lmt::batch

// main() of the test programs in the Windows build. Besides GoogleTest's own
// report it prints one last line "N passed, M failed, K skipped", which
// cmake/wine-run.sh requires: under Wine a program that never ran its tests
// can still exit with 0, so only a program that reached this line counts.
#include <gtest/gtest.h>

#include <cstdio>

namespace {

class SummaryPrinter : public testing::EmptyTestEventListener {
 public:
  void OnTestProgramEnd(const testing::UnitTest& unit) override {
    std::printf("%d passed, %d failed, %d skipped\n",
                unit.successful_test_count(), unit.failed_test_count(),
                unit.skipped_test_count());
    std::fflush(stdout);
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // Listed last so that it prints after GoogleTest's own summary.
  testing::UnitTest::GetInstance()->listeners().Append(new SummaryPrinter);
  return RUN_ALL_TESTS();
}

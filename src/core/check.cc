#include "core/check.h"

#include <cstdio>
#include <cstdlib>

namespace lmt::internal {

void CheckFailed(const char* file, int line, const char* expr) {
  std::fprintf(stderr, "%s:%d: LMT_CHECK failed: %s\n", file, line, expr);
  std::fflush(stderr);
  std::abort();
}

}  // namespace lmt::internal

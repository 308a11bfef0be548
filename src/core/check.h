// LMT_CHECK: a broken invariant is a bug, not a refusal. It aborts loudly in
// every build, so that tests and sanitizers see it at the place it happened.
// Never use it for bad input or for a host that refuses a call: those travel
// as Status values.
#ifndef LMT_CORE_CHECK_H_
#define LMT_CORE_CHECK_H_

namespace lmt::internal {
[[noreturn]] void CheckFailed(const char* file, int line, const char* expr);
}  // namespace lmt::internal

#define LMT_CHECK(cond)                                        \
  do {                                                         \
    if (!(cond)) {                                             \
      ::lmt::internal::CheckFailed(__FILE__, __LINE__, #cond); \
    }                                                          \
  } while (false)

#endif  // LMT_CORE_CHECK_H_

// DXF_CHECK: a broken engine invariant (a bug, never bad input) aborts.
//
// The engine cannot use core/check.h (standard library only), so it has its
// own. Bad input is reported through dxf::Status instead.
#ifndef LMT_DXF_CHECK_H_
#define LMT_DXF_CHECK_H_

#include <cstdio>
#include <cstdlib>

#define DXF_CHECK(cond)                                               \
  do {                                                                \
    if (!(cond)) {                                                    \
      std::fprintf(stderr, "%s:%d: DXF_CHECK failed: %s\n", __FILE__, \
                   __LINE__, #cond);                                  \
      std::abort();                                                   \
    }                                                                 \
  } while (0)

// Costly checks that a fast path agrees with the slow one it stands for:
// on in builds with assertions (the sanitizer build) and in the fuzzer.
#if !defined(LMT_DXF_CROSS_CHECKS)
#if defined(NDEBUG)
#define LMT_DXF_CROSS_CHECKS 0
#else
#define LMT_DXF_CROSS_CHECKS 1
#endif
#endif

#endif  // LMT_DXF_CHECK_H_

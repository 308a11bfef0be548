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

#endif  // LMT_DXF_CHECK_H_

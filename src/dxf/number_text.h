// The text of numbers as FormatDouble and FormatInt give it, written into a
// caller's buffer: the binary reader converts every number of a file and
// would otherwise make a string for each.
#ifndef LMT_DXF_NUMBER_TEXT_H_
#define LMT_DXF_NUMBER_TEXT_H_

#include <cstddef>
#include <cstdint>

namespace lmt::dxf {

inline constexpr size_t kNumberTextSize = 32;

// Both return the length written to `buf` (kNumberTextSize bytes).
size_t FormatDoubleTo(double v, char* buf);
size_t FormatIntTo(int64_t v, char* buf);

}  // namespace lmt::dxf

#endif  // LMT_DXF_NUMBER_TEXT_H_

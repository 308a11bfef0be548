// The values that system variables take and return (GetVariable and
// SetVariable): 16-bit and 32-bit integers, doubles, text and points, the
// variant kinds the object model uses for them. TILEMODE and WORLDUCS come
// back as int16_t, VIEWDIR and VIEWCTR as points, UCSNAME and CANNOSCALE as
// text. The To* conversions are lenient in the way late-bound callers expect
// (a number held as text converts), and fail with kInvalidArgument instead of
// guessing when the kind cannot hold the value.
#ifndef LMT_HOST_VARIANT_H_
#define LMT_HOST_VARIANT_H_

#include <cstdint>
#include <string>
#include <variant>

#include "core/status.h"
#include "host/point.h"

namespace lmt::host {

using Variant = std::variant<int16_t, int32_t, double, std::string, Point>;

// Integers and doubles as they are; text parsed as a number with "." as the
// decimal separator (surrounding blanks allowed). Points fail.
Result<double> ToDouble(const Variant& value);

// Integers as they are; doubles and numeric text rounded to the nearest
// integer (halves away from zero); out of range or points fail.
Result<int32_t> ToInt(const Variant& value);

// Text as it is; numbers in their shortest round-trip form ("1", "0.25").
// Points fail.
Result<std::string> ToText(const Variant& value);

// Points only.
Result<Point> ToPoint(const Variant& value);

}  // namespace lmt::host

#endif  // LMT_HOST_VARIANT_H_

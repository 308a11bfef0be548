#include "host/variant.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

namespace lmt::host {
namespace {

Result<double> ParseNumber(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(),
                                   value, std::chars_format::general);
  if (text.empty() || ec != std::errc() || end != text.data() + text.size()) {
    return Status::InvalidArgument("not a number: \"" + std::string(text) +
                                   "\"");
  }
  return value;
}

}  // namespace

Result<double> ToDouble(const Variant& value) {
  if (const auto* i16 = std::get_if<int16_t>(&value))
    return static_cast<double>(*i16);
  if (const auto* i32 = std::get_if<int32_t>(&value))
    return static_cast<double>(*i32);
  if (const auto* d = std::get_if<double>(&value)) return *d;
  if (const auto* s = std::get_if<std::string>(&value)) return ParseNumber(*s);
  return Status::InvalidArgument("a point is not a number");
}

Result<int32_t> ToInt(const Variant& value) {
  if (const auto* i16 = std::get_if<int16_t>(&value)) return int32_t{*i16};
  if (const auto* i32 = std::get_if<int32_t>(&value)) return *i32;
  Result<double> d = ToDouble(value);
  if (!d.ok()) return d.status();
  double rounded = std::round(*d);
  if (!(rounded >= std::numeric_limits<int32_t>::min() &&
        rounded <= std::numeric_limits<int32_t>::max())) {
    return Status::InvalidArgument("number out of the 32-bit range");
  }
  return static_cast<int32_t>(rounded);
}

Result<std::string> ToText(const Variant& value) {
  if (const auto* s = std::get_if<std::string>(&value)) return *s;
  if (std::holds_alternative<Point>(value)) {
    return Status::InvalidArgument("a point is not text");
  }
  if (const auto* i16 = std::get_if<int16_t>(&value)) {
    return std::to_string(*i16);
  }
  if (const auto* i32 = std::get_if<int32_t>(&value)) {
    return std::to_string(*i32);
  }
  char buffer[64];
  auto [end, ec] =
      std::to_chars(buffer, buffer + sizeof buffer, std::get<double>(value));
  LMT_CHECK(ec == std::errc());
  return std::string(buffer, end);
}

Result<Point> ToPoint(const Variant& value) {
  if (const auto* p = std::get_if<Point>(&value)) return *p;
  return Status::InvalidArgument("not a point");
}

}  // namespace lmt::host

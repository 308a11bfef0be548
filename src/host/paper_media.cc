#include "host/paper_media.h"

#include <charconv>
#include <cstdio>

#include "core/text_encoding.h"

namespace lmt::host {
namespace {

std::optional<double> Number(std::string_view text) {
  double value = 0;
  const char* end = text.data() + text.size();
  auto [at, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || at != end || !(value > 0)) return std::nullopt;
  return value;
}

bool IsGap(char c) { return c == '_' || c == ' '; }

}  // namespace

std::optional<MediaSize> MediaSizeFromName(std::string_view name) {
  const size_t open = name.rfind('(');
  const size_t close = name.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos ||
      close < open) {
    return std::nullopt;
  }
  std::string inside(name.substr(open + 1, close - open - 1));
  for (char& c : inside) {
    if (IsGap(c)) c = ' ';
  }
  // "W x H UNIT": three separators, the unit possibly glued to H ("841MM").
  const size_t x = inside.find(" x ");
  if (x == std::string::npos) return std::nullopt;
  std::string_view rest = std::string_view(inside).substr(x + 3);
  size_t unit_at = rest.find_first_not_of("0123456789.");
  if (unit_at == std::string_view::npos) return std::nullopt;
  std::string_view height_text = rest.substr(0, unit_at);
  std::string_view unit = rest.substr(unit_at);
  while (!unit.empty() && unit.front() == ' ') unit.remove_prefix(1);
  MediaSize size;
  if (core::EqualsIgnoreAsciiCase(unit, "MM")) {
    size.inches = false;
  } else if (core::EqualsIgnoreAsciiCase(unit, "Inches")) {
    size.inches = true;
  } else {
    return std::nullopt;
  }
  std::optional<double> w = Number(std::string_view(inside).substr(0, x));
  std::optional<double> h = Number(height_text);
  if (!w || !h) return std::nullopt;
  const double factor = size.inches ? 25.4 : 1.0;
  size.width = *w * factor;
  size.height = *h * factor;
  return size;
}

std::string MetricMediaName(std::string_view prefix, double width,
                            double height) {
  char size[64];
  std::snprintf(size, sizeof size, "(%.2f_x_%.2f_MM)", width, height);
  return std::string(prefix) + size;
}

}  // namespace lmt::host

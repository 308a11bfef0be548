#include "core/numbers.h"

#include <charconv>
#include <locale>
#include <sstream>

namespace lmt::core {

NumberFormatter SystemNumberFormatter() {
  return [](double value) {
    std::ostringstream out;
    // The user's locale, as the system would format it; the classic "C"
    // locale when the environment names none that the library knows.
    std::locale user = std::locale::classic();
    try {
      user = std::locale("");
    } catch (const std::runtime_error&) {
      // An unknown LANG is not an error for us: keep the classic locale.
    }
    out.imbue(user);
    out << value;
    return out.str();
  };
}

bool DetectDecimalSeparator(const NumberFormatter& format, bool current) {
  const std::string text = format(0.2);
  if (text.size() < 2) return current;
  if (text[1] == ',') return true;
  if (text[1] == '.') return false;
  return current;
}

double TextToNumber(std::string_view text, bool decimal_comma) {
  if (text.empty()) return 0;
  std::string normal(text);
  // In a decimal-comma locale "." becomes "," and the locale parses ","; the
  // result is the same as parsing with "." after the opposite swap, which is
  // what from_chars (always ".") needs.
  (void)decimal_comma;
  for (char& c : normal) {
    if (c == ',') c = '.';
  }
  size_t begin = normal.find_first_not_of(" \t");
  size_t end = normal.find_last_not_of(" \t");
  if (begin == std::string::npos) return 0;
  std::string_view digits(normal.data() + begin, end - begin + 1);
  if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
  double value = 0;
  auto [ptr, ec] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (ec != std::errc() || ptr != digits.data() + digits.size()) return 0;
  return value;
}

std::optional<char> FilterNumericKey(char key, std::string_view field_text,
                                     bool decimal_comma) {
  if (key == kBackspace || (key >= '0' && key <= '9')) return key;
  if (key == '.' || key == ',') {
    const char separator = decimal_comma ? ',' : '.';
    if (field_text.find(separator) != std::string_view::npos)
      return std::nullopt;
    return separator;
  }
  return std::nullopt;
}

}  // namespace lmt::core

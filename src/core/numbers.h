// Numbers typed by the user. Numeric fields accept both "." and "," as the
// decimal separator whatever the locale, and the locale's separator is known
// once at start-up (DetectDecimalSeparator) for the fields' key filter.
#ifndef LMT_CORE_NUMBERS_H_
#define LMT_CORE_NUMBERS_H_

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace lmt::core {

// How the user's locale writes a number, e.g. 0.2 -> "0,2". Injected so
// that tests can play either locale.
using NumberFormatter = std::function<std::string(double)>;

// The C++ global locale's formatting (std::locale("") when available).
NumberFormatter SystemNumberFormatter();

// The decimal-comma flag after looking at how `format` writes 0.2: its
// second character "," gives true, "." false; anything else keeps `current`.
bool DetectDecimalSeparator(const NumberFormatter& format, bool current);

// Empty text gives 0. Otherwise the separator the locale does not use is
// replaced by the one it does, so "2.5" and "2,5" both give 2.5 in either
// locale; text that is then not a number (blanks around it allowed) gives 0,
// as the conversion error is swallowed.
double TextToNumber(std::string_view text, bool decimal_comma);

inline constexpr char kBackspace = '\b';

// The shared key filter of numeric fields: what a key press inserts into a
// field holding `field_text`, or nullopt when the key is dropped. Backspace
// and digits pass; "." and "," become the locale's separator unless the
// field already holds one; everything else (a minus sign too) is dropped.
std::optional<char> FilterNumericKey(char key, std::string_view field_text,
                                     bool decimal_comma);

}  // namespace lmt::core

#endif  // LMT_CORE_NUMBERS_H_

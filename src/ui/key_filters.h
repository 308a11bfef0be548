// The key filters of the add-in's text fields: the naming template field
// lets through digits, "/" and Backspace; the numeric fields (scales,
// coordinates, sizes, the PDF scale and interval) digits, Backspace and one
// decimal separator, written as the locale writes it.
#ifndef LMT_UI_KEY_FILTERS_H_
#define LMT_UI_KEY_FILTERS_H_

#include <optional>
#include <string_view>

namespace lmt::ui {

enum class KeyFilter { kNone, kNaming, kNumeric };

// The filter of the text field named `control_name`.
KeyFilter KeyFilterOf(std::string_view control_name);

// The character a key press inserts into a field holding `field_text`, or
// nullopt when the key is dropped. Characters beyond the first 64K pass
// unfiltered only for kNone.
std::optional<wchar_t> FilterKey(KeyFilter filter, wchar_t key,
                                 std::string_view field_text,
                                 bool decimal_comma);

}  // namespace lmt::ui

#endif  // LMT_UI_KEY_FILTERS_H_

// UTF-8 (the add-in's text) to and from UTF-16 (the W functions of Windows).
#ifndef LMT_UI_WIDE_H_
#define LMT_UI_WIDE_H_

#include <string>
#include <string_view>

namespace lmt::ui {

std::wstring Wide(std::string_view utf8);
std::string Utf8(std::wstring_view wide);

}  // namespace lmt::ui

#endif  // LMT_UI_WIDE_H_

#include "ui/wide.h"

#include "core/text_encoding.h"

namespace lmt::ui {

std::wstring Wide(std::string_view utf8) { return core::Utf8ToWide(utf8); }

std::string Utf8(std::wstring_view wide) { return core::WideToUtf8(wide); }

}  // namespace lmt::ui

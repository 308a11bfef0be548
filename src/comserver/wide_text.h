// UTF-8 <-> UTF-16 for the automation boundary: the add-in keeps UTF-8, COM
// speaks BSTR. Invalid sequences become U+FFFD rather than failing.
#ifndef LMT_COMSERVER_WIDE_TEXT_H_
#define LMT_COMSERVER_WIDE_TEXT_H_

#include <windows.h>

#include <string>
#include <string_view>

namespace lmt::comserver {

std::wstring Utf8ToWide(std::string_view utf8);
std::string WideToUtf8(std::wstring_view wide);
// A new BSTR the caller frees with SysFreeString; null when out of memory.
BSTR Utf8ToBstr(std::string_view utf8);

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_WIDE_TEXT_H_

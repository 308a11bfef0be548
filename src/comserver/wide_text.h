// UTF-8 <-> UTF-16 for the automation boundary: the add-in keeps UTF-8, COM
// speaks BSTR. Invalid sequences become U+FFFD rather than failing.
#ifndef LMT_COMSERVER_WIDE_TEXT_H_
#define LMT_COMSERVER_WIDE_TEXT_H_

#include <windows.h>

#include <string>
#include <string_view>

#include "core/text_encoding.h"

namespace lmt::comserver {

using core::Utf8ToWide;
using core::WideToUtf8;
// A new BSTR the caller frees with SysFreeString; null when out of memory.
BSTR Utf8ToBstr(std::string_view utf8);

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_WIDE_TEXT_H_

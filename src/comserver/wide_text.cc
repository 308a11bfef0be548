#include "comserver/wide_text.h"

#include <oleauto.h>

namespace lmt::comserver {

BSTR Utf8ToBstr(std::string_view utf8) {
  std::wstring wide = Utf8ToWide(utf8);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

}  // namespace lmt::comserver

#include "comserver/wide_text.h"

#include <oleauto.h>

namespace lmt::comserver {

std::wstring Utf8ToWide(std::string_view utf8) {
  if (utf8.empty()) return {};
  int n = MultiByteToWideChar(CP_UTF8, 0, utf8.data(),
                              static_cast<int>(utf8.size()), nullptr, 0);
  std::wstring wide(n, L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                      wide.data(), n);
  return wide;
}

std::string WideToUtf8(std::wstring_view wide) {
  if (wide.empty()) return {};
  int n = WideCharToMultiByte(CP_UTF8, 0, wide.data(),
                              static_cast<int>(wide.size()), nullptr, 0,
                              nullptr, nullptr);
  std::string utf8(n, '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                      utf8.data(), n, nullptr, nullptr);
  return utf8;
}

BSTR Utf8ToBstr(std::string_view utf8) {
  std::wstring wide = Utf8ToWide(utf8);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

}  // namespace lmt::comserver

// Text conversions at the file boundary. Inside the add-in every string is
// UTF-8; files speak UTF-16LE (settings, language), UTF-8 or the Russian ANSI
// code page (Windows-1251), which is what an older settings or language file
// written by a non-Unicode editor holds. Also the ASCII-only case folding that
// the INI routines use to match section and key names.
#ifndef LMT_CORE_TEXT_ENCODING_H_
#define LMT_CORE_TEXT_ENCODING_H_

#include <string>
#include <string_view>

namespace lmt::core {

// Malformed UTF-8 becomes U+FFFD per bad byte; never fails.
std::u16string Utf8ToUtf16(std::string_view utf8);
// An unpaired surrogate becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);
bool IsValidUtf8(std::string_view bytes);

// Windows-1251, mapped one to one (the five unassigned bytes to the C1
// controls of the same number) so that decode then encode gives the bytes
// back. Characters outside the code page encode as '?'.
std::u16string DecodeCp1251(std::string_view bytes);
std::string EncodeCp1251(std::u16string_view text);

// Byte order of the serialized UTF-16 forms.
std::u16string DecodeUtf16Le(std::string_view bytes);  // odd last byte dropped
std::string EncodeUtf16Le(std::u16string_view text);

std::string AsciiLower(std::string_view text);
bool EqualsIgnoreAsciiCase(std::string_view a, std::string_view b);
bool EqualsIgnoreAsciiCase(std::u16string_view a, std::u16string_view b);

// Number of UTF-16 code units `utf8` needs; what the INI length limits count.
size_t Utf16Length(std::string_view utf8);
// The longest prefix of `utf8` that takes at most `units` UTF-16 code units;
// a surrogate pair is never split.
std::string Utf16Prefix(std::string_view utf8, size_t units);

#ifdef _WIN32
// The W functions and BSTRs of Windows: wchar_t holds UTF-16 there.
inline std::wstring Utf8ToWide(std::string_view utf8) {
  const std::u16string utf16 = Utf8ToUtf16(utf8);
  return std::wstring(utf16.begin(), utf16.end());
}
inline std::string WideToUtf8(std::wstring_view wide) {
  return Utf16ToUtf8(std::u16string_view(
      reinterpret_cast<const char16_t*>(wide.data()), wide.size()));
}
#endif

}  // namespace lmt::core

#endif  // LMT_CORE_TEXT_ENCODING_H_

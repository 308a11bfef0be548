// The two settings primitives and their value encoding, shared by the
// settings file and the language file.
//
// Writing frames the value as ":;:" + value + ":;:" so that blanks and
// quotes at its ends survive the INI routines' trimming, after replacing
// every CR LF by the six letters "vbCrLf" and every remaining LF by one blank
// (an INI value is one line). Reading removes every ":;:" anywhere in the
// value, deliberately not only at its ends, leaves "vbCrLf" as it is, and
// cuts the result to 127 UTF-16 characters, the length the settings have
// always been limited to (values up to that length round-trip exactly).
#ifndef LMT_CORE_INI_UNICODE_H_
#define LMT_CORE_INI_UNICODE_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "core/private_profile.h"
#include "core/status.h"

namespace lmt::core {

inline constexpr std::string_view kIniFrame = ":;:";
inline constexpr size_t kIniValueLimit = 127;

// The line-break replacement, applied to `value` in place.
void EncodeLineBreaks(std::string& value);

// Writes the framed `value`. The line-break replacement is applied to the
// caller's `value` too, as the original routine did; the framing is not.
// A failed write returns its Status; callers that follow the add-in's rule
// (a lost setting is silent) ignore it.
Status WriteIniUnicode(const std::filesystem::path& file,
                       std::string_view section, std::string_view key,
                       std::string& value);

// The stored value with every ":;:" removed, cut to 127 characters; when the
// key is missing, `default_value` treated the same way (an unreadable file
// counts as missing). Never fails.
std::string ReadIniUnicode(const std::filesystem::path& file,
                           std::string_view section, std::string_view key,
                           std::string_view default_value);
// The same from a file read once for many look-ups.
std::string ReadIniUnicode(const ProfileSnapshot& file,
                           std::string_view section, std::string_view key,
                           std::string_view default_value);

}  // namespace lmt::core

#endif  // LMT_CORE_INI_UNICODE_H_

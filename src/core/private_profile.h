// Our own private-profile (INI) routines, standing in for the system's
// GetPrivateProfileStringW / WritePrivateProfileStringW so that the settings
// and language files behave the same on every platform.
//
// What is kept from the system routines: section and key names match
// without regard to ASCII case (first match wins); on reading, blanks
// around a value are trimmed and then one pair of matching surrounding
// quotes ("..." or '...') is stripped; a missing key gives the default with
// its trailing blanks removed. On writing, only the one line of the key
// changes and every other byte of the file stays as it was; a new key goes
// after the last non-empty line of its section, a new section at the end of
// the file; new lines end in CR LF. The file keeps its encoding: UTF-16LE
// with its byte-order mark (a new file is made so), UTF-8, or the ANSI code
// page. Every write goes through a temporary file renamed into place.
//
// Deliberately not kept: the system's length limits (the caller cuts), and
// key deletion (nothing of ours deletes).
#ifndef LMT_CORE_PRIVATE_PROFILE_H_
#define LMT_CORE_PRIVATE_PROFILE_H_

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/status.h"

namespace lmt::core {

// The value of `key` in `section`, trimmed and unquoted, as UTF-8; nullopt
// when the file, the section or the key is missing or unreadable.
std::optional<std::string> FindProfileString(const std::filesystem::path& file,
                                             std::string_view section,
                                             std::string_view key);

// FindProfileString, or `default_value` without its trailing blanks.
std::string GetProfileString(const std::filesystem::path& file,
                             std::string_view section, std::string_view key,
                             std::string_view default_value);

// A profile file read and decoded once, for the many look-ups in a row of
// a block of settings or a language file: those read the file a few
// hundred times otherwise. Later writes to the file are not seen.
class ProfileSnapshot {
 public:
  // A missing or unreadable file: every look-up finds nothing.
  explicit ProfileSnapshot(const std::filesystem::path& file);
  ~ProfileSnapshot();
  ProfileSnapshot(const ProfileSnapshot&) = delete;
  ProfileSnapshot& operator=(const ProfileSnapshot&) = delete;

  // As FindProfileString and GetProfileString.
  std::optional<std::string> Find(std::string_view section,
                                  std::string_view key) const;
  std::string Get(std::string_view section, std::string_view key,
                  std::string_view default_value) const;

 private:
  struct Loaded;
  std::unique_ptr<const Loaded> loaded_;
};

// Sets `key` = `value` in `section`, creating the file, the section or the
// key as needed. `value` is written as given (no quoting); a line break in
// it would end the line, so callers encode those first.
Status WriteProfileString(const std::filesystem::path& file,
                          std::string_view section, std::string_view key,
                          std::string_view value);

}  // namespace lmt::core

#endif  // LMT_CORE_PRIVATE_PROFILE_H_

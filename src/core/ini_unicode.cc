#include "core/ini_unicode.h"

#include "core/private_profile.h"
#include "core/text_encoding.h"

namespace lmt::core {
namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  size_t pos = 0;
  while ((pos = text.find(from, pos)) != std::string::npos) {
    text.replace(pos, from.size(), to);
    pos += to.size();
  }
}

}  // namespace

void EncodeLineBreaks(std::string& value) {
  ReplaceAll(value, "\r\n", "vbCrLf");
  ReplaceAll(value, "\n", " ");
}

Status WriteIniUnicode(const std::filesystem::path& file,
                       std::string_view section, std::string_view key,
                       std::string& value) {
  EncodeLineBreaks(value);
  std::string framed;
  framed.reserve(value.size() + 2 * kIniFrame.size());
  framed.append(kIniFrame).append(value).append(kIniFrame);
  return WriteProfileString(file, section, key, framed);
}

std::string ReadIniUnicode(const std::filesystem::path& file,
                           std::string_view section, std::string_view key,
                           std::string_view default_value) {
  return ReadIniUnicode(ProfileSnapshot(file), section, key, default_value);
}

std::string ReadIniUnicode(const ProfileSnapshot& file,
                           std::string_view section, std::string_view key,
                           std::string_view default_value) {
  std::string value = file.Get(section, key, default_value);
  ReplaceAll(value, kIniFrame, "");
  return Utf16Prefix(value, kIniValueLimit);
}

}  // namespace lmt::core

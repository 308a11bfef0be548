// UTF-8 texts to file-system paths and back. Every text the batch windows
// hold is UTF-8; std::filesystem::path's narrow constructor would read it in
// the ANSI code page on Windows, so conversions go through char8_t.
#ifndef LMT_BATCH_PATHS_H_
#define LMT_BATCH_PATHS_H_

#include <filesystem>
#include <string>
#include <string_view>

namespace lmt::batch {

std::filesystem::path PathFromUtf8(std::string_view text);
std::string PathToUtf8(const std::filesystem::path& path);

}  // namespace lmt::batch

#endif  // LMT_BATCH_PATHS_H_

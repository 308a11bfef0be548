// The small file-system helpers every subsystem uses, portable over
// std::filesystem. They never throw: queries answer false on any error, and
// operations that can fail return a Status. Paths are std::filesystem::path;
// texts handed to the user or stored in controls are UTF-8, converted with
// PathFromUtf8 / PathToUtf8 (which also work on Windows, where a path is
// wide).
#ifndef LMT_CORE_FILE_UTIL_H_
#define LMT_CORE_FILE_UTIL_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "core/status.h"

namespace lmt::core {

std::filesystem::path PathFromUtf8(std::string_view utf8);
std::string PathToUtf8(const std::filesystem::path& path);

bool FolderExists(const std::filesystem::path& path);
bool FileExists(const std::filesystem::path& path);  // a regular file

// Creates one folder (its parent must exist). Ok when it already exists.
Status CreateFolder(const std::filesystem::path& path);

// Creates, or empties, a UTF-16LE text file holding only its byte-order mark.
Status CreateUnicodeFile(const std::filesystem::path& path);

// "C:\dir\plan.dwg" and "/dir/plan.dwg" both give "plan"; either separator
// is accepted on every platform, since paths come from settings files.
std::string GetBaseName(std::string_view path);

// Whole-file byte access. WriteFileAtomically writes `bytes` to a temporary
// file beside `path` and renames it into place, so that a failure never
// leaves a half-written file; on failure the old file is untouched.
Result<std::string> ReadFileBytes(const std::filesystem::path& path);
Status WriteFileAtomically(const std::filesystem::path& path,
                           std::string_view bytes);

enum class TextEncoding {
  kAnsi,     // Windows-1251, the Russian installation's code page
  kUtf8,     // no byte-order mark
  kUtf16Le,  // with the byte-order mark FF FE
};

// Writes the UTF-8 `text` in `encoding` (atomically).
Status WriteTextFile(const std::filesystem::path& path, std::string_view text,
                     TextEncoding encoding);

// The two readers of the add-in: as the ANSI code page, and as UTF-16LE (a
// leading byte-order mark is skipped). Both give UTF-8.
Result<std::string> ReadAnsiTextFile(const std::filesystem::path& path);
Result<std::string> ReadUtf16TextFile(const std::filesystem::path& path);
// Picks the reader: UTF-16LE when HasUtf16Bom, UTF-8 when the bytes are
// valid UTF-8 (a UTF-8 byte-order mark is skipped), ANSI otherwise.
Result<std::string> ReadTextFile(const std::filesystem::path& path);

// True only when the file begins with FF FE.
bool HasUtf16Bom(const std::filesystem::path& path);

}  // namespace lmt::core

#endif  // LMT_CORE_FILE_UTIL_H_

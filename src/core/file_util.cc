#include "core/file_util.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <system_error>

#include "core/text_encoding.h"

namespace lmt::core {
namespace fs = std::filesystem;

fs::path PathFromUtf8(std::string_view utf8) {
  std::u8string u8(utf8.begin(), utf8.end());
  return fs::path(u8);
}

std::string PathToUtf8(const fs::path& path) {
  std::u8string u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

bool FolderExists(const fs::path& path) {
  std::error_code ec;
  return fs::is_directory(path, ec);
}

bool FileExists(const fs::path& path) {
  std::error_code ec;
  return fs::is_regular_file(path, ec);
}

Status CreateFolder(const fs::path& path) {
  std::error_code ec;
  fs::create_directory(path, ec);
  if (ec && !FolderExists(path)) {
    return Status::IOError(PathToUtf8(path) + ": " + ec.message());
  }
  return Status::Ok();
}

Status CreateUnicodeFile(const fs::path& path) {
  return WriteFileAtomically(path, "\xFF\xFE");
}

std::string GetBaseName(std::string_view path) {
  const size_t slash = path.find_last_of("\\/");
  std::string_view name =
      slash == std::string_view::npos ? path : path.substr(slash + 1);
  const size_t dot = name.rfind('.');
  if (dot != std::string_view::npos && dot > 0) name = name.substr(0, dot);
  return std::string(name);
}

Result<std::string> ReadFileBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return Status::IOError(PathToUtf8(path) + ": cannot open");
  std::string bytes((std::istreambuf_iterator<char>(in)),
                    std::istreambuf_iterator<char>());
  if (in.bad()) return Status::IOError(PathToUtf8(path) + ": read failed");
  return bytes;
}

Status WriteFileAtomically(const fs::path& path, std::string_view bytes) {
  fs::path temp = path;
  temp += ".tmp~";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    if (!out) return Status::IOError(PathToUtf8(temp) + ": cannot create");
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
      out.close();
      std::error_code ignored;
      fs::remove(temp, ignored);
      return Status::IOError(PathToUtf8(temp) + ": write failed");
    }
  }
  std::error_code ec;
  fs::rename(temp, path, ec);
  if (ec) {
    std::error_code ignored;
    fs::remove(temp, ignored);
    return Status::IOError(PathToUtf8(path) + ": " + ec.message());
  }
  return Status::Ok();
}

Status WriteTextFile(const fs::path& path, std::string_view text,
                     TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::kAnsi:
      return WriteFileAtomically(path, EncodeCp1251(Utf8ToUtf16(text)));
    case TextEncoding::kUtf8:
      return WriteFileAtomically(path, text);
    case TextEncoding::kUtf16Le:
      return WriteFileAtomically(path,
                                 "\xFF\xFE" + EncodeUtf16Le(Utf8ToUtf16(text)));
  }
  LMT_CHECK(false);
  return Status::Ok();
}

Result<std::string> ReadAnsiTextFile(const fs::path& path) {
  Result<std::string> bytes = ReadFileBytes(path);
  if (!bytes.ok()) return bytes.status();
  return Utf16ToUtf8(DecodeCp1251(*bytes));
}

Result<std::string> ReadUtf16TextFile(const fs::path& path) {
  Result<std::string> bytes = ReadFileBytes(path);
  if (!bytes.ok()) return bytes.status();
  std::string_view view = *bytes;
  if (view.starts_with("\xFF\xFE")) view.remove_prefix(2);
  return Utf16ToUtf8(DecodeUtf16Le(view));
}

Result<std::string> ReadTextFile(const fs::path& path) {
  Result<std::string> bytes = ReadFileBytes(path);
  if (!bytes.ok()) return bytes.status();
  std::string_view view = *bytes;
  if (view.starts_with("\xFF\xFE")) {
    return Utf16ToUtf8(DecodeUtf16Le(view.substr(2)));
  }
  if (view.starts_with("\xEF\xBB\xBF")) view.remove_prefix(3);
  if (IsValidUtf8(view)) return std::string(view);
  return Utf16ToUtf8(DecodeCp1251(view));
}

bool HasUtf16Bom(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  char head[2] = {0, 0};
  if (!in.read(head, 2)) return false;
  return static_cast<unsigned char>(head[0]) == 0xFF &&
         static_cast<unsigned char>(head[1]) == 0xFE;
}

}  // namespace lmt::core

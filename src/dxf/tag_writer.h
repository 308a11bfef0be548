// Writes Tags as ASCII DXF text.
//
// Codes are right-aligned to three columns as CAD programs write them;
// values go out exactly as stored, so an untouched tag is written back as it
// was read (string values byte for byte, numbers trimmed).
#ifndef LMT_DXF_TAG_WRITER_H_
#define LMT_DXF_TAG_WRITER_H_

#include <cstdio>
#include <span>
#include <string>

#include "dxf/tag.h"

namespace lmt::dxf {

class TagWriter {
 public:
  // Appends to *out, which the caller owns. crlf selects CR LF line ends.
  // With a file, the text is written out whenever *out holds about 1 MiB,
  // so a large drawing is never held twice in memory.
  TagWriter(std::string* out, bool crlf, std::FILE* file = nullptr)
      : out_(out), crlf_(crlf), file_(file) {}

  void Write(const Tag& t);
  void Write(int code, std::string_view value);
  void Write(std::span<const Tag> tags) {
    for (const Tag& t : tags) Write(t);
  }
  // Writes what is buffered to the file (if any). False once a write failed.
  bool Flush();
  bool ok() const { return ok_; }

 private:
  static constexpr size_t kFlushAt = size_t{1} << 20;
  std::string* out_;
  bool crlf_;
  std::FILE* file_;
  bool ok_ = true;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_TAG_WRITER_H_

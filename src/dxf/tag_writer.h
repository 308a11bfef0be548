// Writes Tags as ASCII DXF text.
//
// Codes are right-aligned to three columns as CAD programs write them;
// values go out exactly as stored, so an untouched tag is written back as it
// was read (string values byte for byte, numbers trimmed).
#ifndef LMT_DXF_TAG_WRITER_H_
#define LMT_DXF_TAG_WRITER_H_

#include <span>
#include <string>

#include "dxf/tag.h"

namespace lmt::dxf {

class TagWriter {
 public:
  // Appends to *out, which the caller owns. crlf selects CR LF line ends.
  TagWriter(std::string* out, bool crlf) : out_(out), crlf_(crlf) {}

  void Write(const Tag& t);
  void Write(int code, std::string_view value);
  void Write(std::span<const Tag> tags) {
    for (const Tag& t : tags) Write(t);
  }

 private:
  std::string* out_;
  bool crlf_;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_TAG_WRITER_H_

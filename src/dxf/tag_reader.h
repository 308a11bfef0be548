// Tokenizes a whole drawing file held in memory into Tags.
//
// ASCII files (R12 to 2018, CR LF or LF, optional UTF-8 BOM) give Tags that
// point straight into the buffer: no allocation per tag. Code lines and the
// values of numeric codes are trimmed; string values are kept exactly (only
// the line end is removed). 999 comments are kept as tags. Binary files
// (22-byte sentinel) are converted: each value is stored as the text an ASCII
// file would hold, in the given Arena. Reading stops at `0 EOF`; anything
// after it is ignored, as CAD programs do.
//
// Limits: the buffer must outlive the Tags; files of 2 GiB and more are
// refused. Nothing is allocated from sizes read out of the file.
#ifndef LMT_DXF_TAG_READER_H_
#define LMT_DXF_TAG_READER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "dxf/status.h"
#include "dxf/tag.h"

namespace lmt::dxf {

inline constexpr std::string_view kBinarySentinel{
    "AutoCAD Binary DXF\r\n\x1a\0", 22};

struct TagFile {
  std::vector<Tag> tags;
  // Indexes of the code 0 tags, in order: record starts, found while
  // tokenizing so that nothing scans the tags for them again.
  std::vector<uint32_t> starts;
  // Binary files only: the byte offset of each of those tags, so that a
  // record can be written back as the bytes it was read from.
  std::vector<uint32_t> start_offsets;
  bool binary = false;
  bool one_byte_codes = false;  // a binary R12 file with 1-byte codes
  bool crlf = false;            // the ASCII file used CR LF line ends
};

// Tokenizes `data`. `name` is used in messages only ("a.dxf:12: ...").
// On failure returns Corruption naming the line (ASCII) or byte offset
// (binary) and what was expected there. A file that ends without 0 EOF is
// one only with `allow_missing_eof` (recovering reads).
Status ReadTags(std::string_view data, std::string_view name, Arena* arena,
                TagFile* out, bool allow_missing_eof = false);

// ASCII text of at least this many bytes is tokenized on two threads, in
// pieces cut at guessed record starts that are checked afterwards; the
// result is the same as one thread's in every field and every message.
// Below it a thread costs more than it saves.
inline constexpr size_t kDefaultTwoThreadBytes = size_t{1} << 20;

// Sets that size for the whole process and returns the one before: tests
// and the fuzzer lower it so that small texts take the two-thread path.
size_t SetTwoThreadBytes(size_t bytes);

// "name:LINE" for the tag at `index` of an ASCII file, "name:offset N" is
// not available for binary files, which give "name: tag N".
std::string TagLocation(std::string_view name, const TagFile& file,
                        size_t index);

}  // namespace lmt::dxf

#endif  // LMT_DXF_TAG_READER_H_

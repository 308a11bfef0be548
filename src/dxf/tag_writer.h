// Writes Tags as ASCII or binary DXF.
//
// ASCII: codes are right-aligned to three columns as CAD programs write
// them; values go out exactly as stored. With the source text given, an
// untouched tag is written back exactly as it was read, and an untouched
// record as the run of source text it came from; neighbouring runs join,
// so a long stretch of untouched records costs one copy (or one write).
//
// Binary: the 22-byte sentinel, then each tag as its code (two bytes, or
// one for R12 files that used one) and its value in the code's type: raw
// string bytes (caret form undone) with a zero, little-endian numbers,
// length-prefixed chunks. A stored value that is not of its code's type
// (only code can put one there: the reader refuses such files) stops the
// writer with an error instead of writing a wrong number.
#ifndef LMT_DXF_TAG_WRITER_H_
#define LMT_DXF_TAG_WRITER_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "dxf/entity_db.h"
#include "dxf/file_sink.h"
#include "dxf/tag.h"

namespace lmt::dxf {

// The two forms of a DXF file.
enum class DxfFormat : uint8_t { kAscii, kBinary };

class TagWriter {
 public:
  // ASCII output appended to *out, which the caller owns. crlf selects CR LF
  // line ends. With a sink, *out is handed to it whenever it holds about
  // 1 MiB (and comes back empty), so a large drawing is never held twice in
  // memory; long runs of source text go to the sink without a copy, so the
  // source must outlive the sink's Finish.
  TagWriter(std::string* out, bool crlf, FileSink* sink = nullptr)
      : out_(out), crlf_(crlf), sink_(sink) {}
  // Binary output; writes the sentinel at once. one_byte_codes for R12
  // files read that way.
  static TagWriter Binary(std::string* out, FileSink* sink = nullptr,
                          bool one_byte_codes = false);

  // ASCII only: the text the tags were read from. A tag whose value still
  // lies in it, on its own line after a line with its code, is copied as
  // it was (padding, line end, number text), so that untouched records
  // come back byte for byte.
  void SetSource(std::string_view source) { source_ = source; }
  // ASCII only: the base tags of SetValues' EntityDb are the source's line
  // pairs in order, none left out or added (a read without repairs). An
  // untouched record is then the text from its first tag's code line to
  // its last tag's value line, without looking at the tags between, and
  // records next to each other in the base array are so in the text.
  void SetBaseIsSourceLines() { base_is_source_lines_ = true; }
  // ASCII only: numbers edited in place keep the width of their field
  // (EntityDb::StoreValueLike).
  void SetValues(const EntityDb* db) { db_ = db; }
  // Binary only: the binary file the base tags of SetValues' EntityDb were
  // read from, with the reader's TagFile::starts and start_offsets. A whole
  // untouched record, from one record start to the next, is copied as the
  // bytes it was read from. Only for output with the source's code width.
  void SetBinarySource(std::string_view source,
                       std::span<const uint32_t> starts,
                       std::span<const uint32_t> offsets) {
    binary_source_ = source;
    binary_starts_ = starts;
    binary_offsets_ = offsets;
  }

  void Write(const Tag& t);
  // Bytes that are no tag, copied as they are (ASCII only).
  void WriteVerbatim(std::string_view bytes) {
    FlushCopy();
    out_->append(bytes);
  }
  void Write(int code, std::string_view value);
  void Write(std::span<const Tag> tags) {
    for (const Tag& t : tags) Write(t);
  }
  // A whole record. as_loaded: its tags are those the reader made, in file
  // order and unedited (EntityDb::as_loaded); the lines (or binary bytes)
  // they were read from are then copied in one piece when nothing else lies
  // between them.
  void WriteRecord(std::span<const Tag> tags, bool as_loaded);
  // Source text may wait for the next output to join it: *out (or the file)
  // is complete only after Flush. With a sink, hands it what is buffered and
  // waits until all is written (Finish). False once a write failed or a
  // value could not be written.
  bool Flush();
  bool ok() const { return ok_ && error_.empty(); }
  // Why a binary value could not be written; empty when all went well.
  const std::string& error() const { return error_; }

 private:
  // The code line and value line `t` was read from, with their line ends;
  // false when its value does not lie on such a pair of source lines.
  bool SourceLines(const Tag& t, const char** from, const char** to) const;
  // The source text of a record as read, when it is exactly its tags' lines.
  bool SourceRun(std::span<const Tag> tags, const char** from,
                 const char** to) const;
  // Whether [from, to) holds the tags' lines and nothing else.
  bool IsLinesOf(std::span<const Tag> tags, const char* from,
                 const char* to) const;
  // Whether the tags lie in the EntityDb's base array.
  bool InBase(std::span<const Tag> tags) const;
  // The same for a binary source: the record must be base tags from one
  // record start to the next.
  bool BinarySourceRun(std::span<const Tag> tags, const char** from,
                       const char** to) const;
  // Source text goes out through Copy, which joins adjacent runs, and
  // FlushCopy, which writes the joined run (large runs straight to the
  // sink); every other output calls FlushCopy first to keep the order.
  void Copy(const char* from, const char* to);
  void FlushCopy();
  // Untouched records of a read without repairs (SetBaseIsSourceLines):
  // records that follow each other in the base array follow each other in
  // the text, so a run of them is looked at only where it starts and, in
  // EndBaseRun, where it ends. False when the record is not such a record.
  bool ContinueBaseRun(std::span<const Tag> tags);
  // Sets copy_to_ from the run's last tag.
  void EndBaseRun();
  bool WriteBuffer();
  void WriteBinary(int code, std::string_view value);
  void BinaryCode(int code);
  void Fail(int code, std::string_view expected, std::string_view value);

  static constexpr size_t kFlushAt = size_t{1} << 20;
  // Runs at least this long skip the buffer when there is a sink.
  static constexpr size_t kDirectAt = size_t{64} << 10;
  // A joined run this long goes to the sink at once, so that the writing of
  // a long untouched stretch starts while the rest of it is still checked.
  static constexpr size_t kRunAt = size_t{1} << 20;
  std::string* out_;
  bool crlf_;
  FileSink* sink_;
  bool binary_ = false;
  bool one_byte_codes_ = false;
  bool ok_ = true;
  std::string error_;
  std::string scratch_;
  std::string_view source_;
  bool base_is_source_lines_ = false;
  const char* copy_from_ = nullptr;  // the run not yet written
  const char* copy_to_ = nullptr;
  // A run of base tags from copy_from_, its end not yet looked for.
  const Tag* run_first_ = nullptr;
  const Tag* run_last_ = nullptr;
  const EntityDb* db_ = nullptr;
  std::string_view binary_source_;
  std::span<const uint32_t> binary_starts_;
  std::span<const uint32_t> binary_offsets_;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_TAG_WRITER_H_

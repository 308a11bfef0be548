#include "dxf/tag_writer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>

#include "dxf/check.h"
#include "dxf/tag_reader.h"

namespace lmt::dxf {
namespace {

template <typename T>
void Append(std::string* o, T v) {
  char b[sizeof v];
  std::memcpy(b, &v, sizeof v);  // the format is little endian, like our hosts
  o->append(b, sizeof v);
}

// 1 in each byte of `w` that is '\n', 0 in the others.
uint64_t LineEndBytes(uint64_t w) {
  constexpr uint64_t kLow7 = 0x7F7F7F7F7F7F7F7Fu;
  const uint64_t x = w ^ 0x0A0A0A0A0A0A0A0Au;  // zero bytes where '\n' was
  return ~(((x & kLow7) + kLow7) | x | kLow7) >> 7;
}

// The sum of the bytes of `ones` (each 0 or 1), without a popcount
// instruction (not in the baseline instruction set).
size_t SumBytes(uint64_t ones) {
  return static_cast<size_t>((ones * 0x0101010101010101u) >> 56);
}

// The line ends in [from, to), which lies inside a buffer ending at `end`.
// The text between two values of a record is a few bytes (a line end and a
// code line): read a word at a time, it costs no mispredicted loop exit.
size_t CountLineEnds(const char* from, const char* to, const char* end) {
  size_t n = 0;
  uint64_t w;
  for (; to - from >= 8; from += 8) {
    std::memcpy(&w, from, 8);
    n += SumBytes(LineEndBytes(w));
  }
  if (from == to) return n;
  if (end - from < 8) {
    return n + static_cast<size_t>(std::count(from, to, '\n'));
  }
  std::memcpy(&w, from, 8);
  // Only the first to - from bytes: the low ones, as a word is read little
  // endian on our hosts (as the binary format assumes too).
  const uint64_t mask = (uint64_t{1} << ((to - from) * 8)) - 1;
  return n + SumBytes(LineEndBytes(w) & mask);
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

TagWriter TagWriter::Binary(std::string* out, FileSink* sink,
                            bool one_byte_codes) {
  TagWriter w(out, false, sink);
  w.binary_ = true;
  w.one_byte_codes_ = one_byte_codes;
  out->append(kBinarySentinel);
  return w;
}

void TagWriter::Write(int code, std::string_view value) {
  FlushCopy();
  if (binary_) {
    WriteBinary(code, value);
    if (sink_ && out_->size() >= kFlushAt) WriteBuffer();
    return;
  }
  char buf[8];
  int n = 0;
  char digits[6];
  int c = code;
  do {
    digits[n++] = static_cast<char>('0' + c % 10);
    c /= 10;
  } while (c > 0 && n < 5);
  int len = 0;
  for (int pad = 3 - n; pad > 0; --pad) buf[len++] = ' ';
  while (n > 0) buf[len++] = digits[--n];
  std::string& o = *out_;
  o.append(buf, static_cast<size_t>(len));
  if (crlf_) o += '\r';
  o += '\n';
  o.append(value);
  if (crlf_) o += '\r';
  o += '\n';
  if (sink_ && o.size() >= kFlushAt) WriteBuffer();
}

void TagWriter::BinaryCode(int code) {
  if (one_byte_codes_) {
    if (code < 255) {
      *out_ += static_cast<char>(code);
      return;
    }
    *out_ += static_cast<char>(255);
  }
  Append(out_, static_cast<int16_t>(code));
}

void TagWriter::Fail(int code, std::string_view expected,
                     std::string_view value) {
  if (!error_.empty()) return;  // the first one says it
  error_ = "group " + std::to_string(code) + " expects " +
           std::string(expected) + ", got '" +
           std::string(value.substr(0, 40)) + "'";
}

void TagWriter::WriteBinary(int code, std::string_view value) {
  std::string& o = *out_;
  switch (TypeOfCode(code)) {
    case ValueType::kString:
    case ValueType::kHandle:
      BinaryCode(code);
      if (UnescapeControlChars(value, &scratch_)) value = scratch_;
      o.append(value);
      o += '\0';
      return;
    case ValueType::kDouble: {
      std::optional<double> d = ParseDouble(value);
      if (!d) return Fail(code, "a number", value);
      BinaryCode(code);
      Append(&o, *d);
      return;
    }
    case ValueType::kInt16:
    case ValueType::kInt32:
    case ValueType::kInt64:
    case ValueType::kBool: {
      std::optional<int64_t> v = ParseInt(value);
      if (!v) return Fail(code, "an integer", value);
      BinaryCode(code);
      // Truncation keeps the bits of values written unsigned (65535 in a
      // 16-bit group reads back as the same bits).
      switch (TypeOfCode(code)) {
        case ValueType::kInt16:
          Append(&o, static_cast<int16_t>(*v));
          break;
        case ValueType::kInt32:
          Append(&o, static_cast<int32_t>(*v));
          break;
        case ValueType::kInt64:
          Append(&o, *v);
          break;
        default:
          o += static_cast<char>(*v);
          break;
      }
      return;
    }
    case ValueType::kBinary: {
      if (value.size() % 2 != 0) return Fail(code, "hex digit pairs", value);
      scratch_.clear();
      for (size_t i = 0; i < value.size(); i += 2) {
        int hi = HexValue(value[i]), lo = HexValue(value[i + 1]);
        if (hi < 0 || lo < 0) return Fail(code, "hex digit pairs", value);
        scratch_ += static_cast<char>(hi * 16 + lo);
      }
      // A chunk's length is one byte: a longer value from an ASCII file
      // goes out as several chunks of the same code, which readers join.
      size_t pos = 0;
      do {
        size_t n = std::min<size_t>(scratch_.size() - pos, 255);
        BinaryCode(code);
        o += static_cast<char>(n);
        o.append(scratch_, pos, n);
        pos += n;
      } while (pos < scratch_.size());
      return;
    }
  }
}

bool TagWriter::Flush() {
  FlushCopy();
  if (sink_ && !sink_->Finish(out_)) ok_ = false;
  return ok();
}

bool TagWriter::WriteBuffer() {
  if (sink_ && !sink_->Put(out_)) ok_ = false;
  return ok();
}

void TagWriter::Copy(const char* from, const char* to) {
  EndBaseRun();
  if (from == copy_to_) {
    copy_to_ = to;
    if (sink_ && static_cast<size_t>(copy_to_ - copy_from_) >= kRunAt) {
      FlushCopy();
    }
    return;
  }
  FlushCopy();
  copy_from_ = from;
  copy_to_ = to;
}

void TagWriter::EndBaseRun() {
  if (run_last_ == nullptr) return;
  const char* unused;
  const bool found = SourceLines(*run_last_, &unused, &copy_to_);
  DXF_CHECK(found);
#if LMT_DXF_CROSS_CHECKS
  // Checks builds look at every line of the run after all.
  DXF_CHECK(IsLinesOf(std::span<const Tag>(run_first_, run_last_ + 1),
                      copy_from_, copy_to_));
#endif
  run_first_ = run_last_ = nullptr;
}

bool TagWriter::ContinueBaseRun(std::span<const Tag> tags) {
  if (!base_is_source_lines_ || binary_ || tags.empty() || !InBase(tags)) {
    return false;
  }
  if (run_last_ != nullptr && tags.data() == run_last_ + 1) {
    // The next tags of the file: the run grows without a look at the text.
    run_last_ = &tags.back();
    const char* end = run_last_->data() + run_last_->size();
    if (sink_ && static_cast<size_t>(end - copy_from_) >= kRunAt) FlushCopy();
    return true;
  }
  const char* from;
  const char* unused;
  if (!SourceLines(tags.front(), &from, &unused)) return false;
  FlushCopy();
  copy_from_ = from;
  run_first_ = tags.data();
  run_last_ = &tags.back();
  return true;
}

void TagWriter::FlushCopy() {
  EndBaseRun();
  if (copy_from_ == nullptr) return;
  const size_t n = static_cast<size_t>(copy_to_ - copy_from_);
  if (sink_ && n >= kDirectAt) {
    WriteBuffer();
    if (!sink_->PutSpan(std::string_view(copy_from_, n))) ok_ = false;
  } else {
    out_->append(copy_from_, n);
    if (sink_ && out_->size() >= kFlushAt) WriteBuffer();
  }
  copy_from_ = copy_to_ = nullptr;
}

void TagWriter::WriteRecord(std::span<const Tag> tags, bool as_loaded) {
  if (as_loaded && ContinueBaseRun(tags)) return;
  const char* from;
  const char* to;
  if (as_loaded && (binary_ ? BinarySourceRun(tags, &from, &to)
                            : SourceRun(tags, &from, &to))) {
    Copy(from, to);
    return;
  }
  Write(tags);
}

bool TagWriter::BinarySourceRun(std::span<const Tag> tags, const char** from,
                                const char** to) const {
  if (binary_source_.empty() || tags.empty() || !InBase(tags)) return false;
  const auto first = static_cast<uint32_t>(tags.data() - db_->base().data());
  auto it =
      std::lower_bound(binary_starts_.begin(), binary_starts_.end(), first);
  // The next record start right after the record's last tag: nothing lies
  // between the two, so their bytes are exactly this record's.
  if (it == binary_starts_.end() || *it != first ||
      it + 1 == binary_starts_.end() || it[1] - first != tags.size()) {
    return false;
  }
  const auto k = static_cast<size_t>(it - binary_starts_.begin());
  if (k + 1 >= binary_offsets_.size() ||
      binary_offsets_[k + 1] > binary_source_.size()) {
    return false;
  }
  *from = binary_source_.data() + binary_offsets_[k];
  *to = binary_source_.data() + binary_offsets_[k + 1];
  return true;
}

bool TagWriter::InBase(std::span<const Tag> tags) const {
  if (db_ == nullptr) return false;
  const std::vector<Tag>& base = db_->base();
  const auto at = reinterpret_cast<uintptr_t>(tags.data());
  const auto base_at = reinterpret_cast<uintptr_t>(base.data());
  return at >= base_at &&
         at + tags.size() * sizeof(Tag) <= base_at + base.size() * sizeof(Tag);
}

bool TagWriter::SourceRun(std::span<const Tag> tags, const char** from,
                          const char** to) const {
  if (tags.empty()) return false;
  const char* unused;
  if (!SourceLines(tags.front(), from, &unused) ||
      !SourceLines(tags.back(), &unused, to)) {
    return false;
  }
  // The values in order inside the run, and just two lines a tag: then no
  // line lies between two tags (one dropped when the file was repaired, say)
  // and the run is what writing the tags one by one would copy.
  return IsLinesOf(tags, *from, *to);
}

// The reader's values hold no line end, so only the text between them is
// counted: a run of long values (hex chunks) is not read twice.
bool TagWriter::IsLinesOf(std::span<const Tag> tags, const char* from,
                          const char* to) const {
  const char* at = from;
  const char* end = source_.data() + source_.size();
  size_t lines = to[-1] != '\n';
  for (const Tag& t : tags) {
    if (t.data() < at || t.data() + t.size() > to) return false;
    lines += CountLineEnds(at, t.data(), end);
    at = t.data() + t.size();
  }
  lines += CountLineEnds(at, to, end);
  return lines == 2 * tags.size();
}

void TagWriter::Write(const Tag& t) {
  const char* from;
  const char* to;
  if (!binary_ && SourceLines(t, &from, &to)) {
    Copy(from, to);
    return;
  }
  if (!binary_ && db_ != nullptr) {
    if (size_t pad = db_->PaddingBefore(t.data())) {
      Write(t.code, std::string_view(t.data() - pad, t.size() + pad));
      return;
    }
  }
  Write(t.code, t.value());
}

bool TagWriter::SourceLines(const Tag& t, const char** from,
                            const char** to) const {
  const char* begin = source_.data();
  const char* end = begin + source_.size();
  const char* value = t.data();
  if (begin == nullptr || value < begin || value > end) return false;
  auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  // The value line: only padding before the value, only padding and the
  // line end after it. Anything else means the tag was edited to text that
  // merely lies in the file.
  const char* line = value;
  while (line > begin && line[-1] != '\n') --line;
  if (line == begin || !std::all_of(line, value, blank)) return false;
  const char* after = value + t.size();
  while (after < end && blank(*after)) ++after;
  if (after < end && *after++ != '\n') return false;
  // The code line before it must hold the tag's own code.
  const char* code_end = line - 1;
  const char* code = code_end;
  while (code > begin && code[-1] != '\n') --code;
  const char* digits = code;
  while (digits < code_end && blank(*digits)) ++digits;
  const char* digits_end = code_end;
  while (digits_end > digits && blank(digits_end[-1])) --digits_end;
  int read = 0;
  if (std::from_chars(digits, digits_end, read).ptr != digits_end ||
      read != static_cast<int>(t.code)) {
    return false;
  }
  *from = code;
  *to = after;
  return true;
}

}  // namespace lmt::dxf

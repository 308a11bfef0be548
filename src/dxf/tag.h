// Tag: one (group code, value) pair of a drawing, and the value-type table.
//
// A Tag does not own its text: it points into the file buffer or into an
// Arena (edited and new values). Values are kept as text exactly as the
// ASCII file has them (numbers trimmed, strings untouched); binary files are
// converted to the same text form when read. Numbers are parsed on demand
// and formatted with std::from_chars / std::to_chars, so the process locale
// never changes a value.
#ifndef LMT_DXF_TAG_H_
#define LMT_DXF_TAG_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lmt::dxf {

// The value type of a group code (shared by ASCII and binary files).
enum class ValueType : uint8_t {
  kString,
  kHandle,  // hex text
  kDouble,
  kInt16,
  kInt32,
  kInt64,
  kBool,
  kBinary,  // hex text in ASCII files, length-prefixed bytes in binary ones
};

// Highest group code the format defines (1071, XDATA int32).
inline constexpr int kMaxGroupCode = 1071;

// REQUIRES: 0 <= code <= kMaxGroupCode for the table-based forms.
ValueType TypeOfCode(int code);
bool IsNumericCode(int code);

// 12 bytes, so that the tag array of a large drawing stays small: the
// pointer is split in two words and the size shares a word with the code.
struct Tag {
  static constexpr uint32_t kMaxSize = (1u << 20) - 1;  // per value

  Tag() : lo_(0), hi_(0), size_(0), code(0) {}
  // REQUIRES: size <= kMaxSize, 0 <= code <= kMaxGroupCode.
  Tag(int c, std::string_view v) { Reset(c, v); }

  std::string_view value() const { return {data(), size_}; }
  const char* data() const {
    return reinterpret_cast<const char*>(
        static_cast<uintptr_t>((static_cast<uint64_t>(hi_) << 32) | lo_));
  }
  uint32_t size() const { return size_; }
  bool Is(int c, std::string_view v) const {
    return static_cast<int>(code) == c && value() == v;
  }
  void Reset(int c, std::string_view v) {
    uint64_t p = reinterpret_cast<uintptr_t>(v.data());
    lo_ = static_cast<uint32_t>(p);
    hi_ = static_cast<uint32_t>(p >> 32);
    size_ = static_cast<uint32_t>(v.size());
    code = static_cast<uint32_t>(c);
  }
  void SetValue(std::string_view v) { Reset(static_cast<int>(code), v); }

 private:
  uint32_t lo_;
  uint32_t hi_;
  uint32_t size_ : 20;

 public:
  uint32_t code : 12;
};
static_assert(sizeof(Tag) == 12);

// Number parsing and formatting, locale independent. Parse* return nullopt
// for text that is not a number of that kind.
std::optional<double> ParseDouble(std::string_view s);
std::optional<int64_t> ParseInt(std::string_view s);
// Handles are 1-16 hex digits; 0 is the null handle.
std::optional<uint64_t> ParseHandle(std::string_view s);
// Shortest text that reads back to the same double ("0", "1.5", "1e+20").
std::string FormatDouble(double v);
std::string FormatInt(int64_t v);
std::string FormatHandle(uint64_t h);  // upper-case hex, as CAD programs write

// ASCII files cannot hold line breaks or other control characters in a
// value; CAD programs write them in caret form: "^" and the character + 64
// ("^J" for a line feed, "^[" for ESC), and a caret itself as "^ ". Tags
// hold the caret form; binary files hold the raw bytes.
// Returns true and fills *out when `s` needs escaping.
bool EscapeControlChars(std::string_view s, std::string* out);
// The reverse: returns true and fills *out when `s` holds a caret. A caret
// before anything but a space or '@'..'_' stays as it is, as lenient
// readers keep it, and so does one at the end.
bool UnescapeControlChars(std::string_view s, std::string* out);

// Stable storage for edited and new values. Strings stored here never move,
// so Tags may point at them for the life of the Arena.
class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  // Copies s and returns a view of the copy.
  std::string_view Store(std::string_view s);
  size_t bytes_used() const { return used_; }

 private:
  static constexpr size_t kBlockSize = 64 * 1024;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* cur_ = nullptr;
  size_t left_ = 0;
  size_t used_ = 0;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_TAG_H_

#include "dxf/tag_reader.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "dxf/file_map.h"
#include "dxf/number_text.h"
#include "dxf/page_allocator.h"

namespace lmt::dxf {
namespace {

constexpr size_t kMaxFileSize = size_t{2} << 30;

std::string Quote(std::string_view s) {
  constexpr size_t kMax = 40;
  std::string out = "'";
  for (char c : s.substr(0, kMax)) {
    if (static_cast<unsigned char>(c) < 0x20) {
      out += '?';
    } else {
      out += c;
    }
  }
  if (s.size() > kMax) out += "...";
  return out + "'";
}

inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

inline std::string_view Trim(std::string_view s) {
  size_t b = 0, e = s.size();
  while (b < e && IsBlank(s[b])) ++b;
  while (e > b && IsBlank(s[e - 1])) --e;
  return s.substr(b, e - b);
}

// Parses a trimmed code line; -1 when it is not a valid group code.
inline int ParseCode(const char* b, const char* e) {
  while (b < e && (*b == ' ' || *b == '\t')) ++b;
  while (e > b && IsBlank(e[-1])) --e;
  if (b == e || e - b > 4) return -1;
  int v = 0;
  for (; b < e; ++b) {
    unsigned d = static_cast<unsigned char>(*b) - '0';
    if (d > 9) return -1;
    v = v * 10 + static_cast<int>(d);
  }
  return v <= kMaxGroupCode ? v : -1;
}

// The next '\n' at or after p, or end. Eight bytes at a time: most lines
// are short, and a libc call per line costs more than the scan.
inline const char* FindNewline(const char* p, const char* end) {
  if constexpr (std::endian::native == std::endian::little) {
    constexpr uint64_t kOnes = 0x0101010101010101ULL;
    constexpr uint64_t kHigh = 0x8080808080808080ULL;
    constexpr uint64_t kNl = 0x0a0a0a0a0a0a0a0aULL;
    while (end - p >= 8) {
      uint64_t x;
      std::memcpy(&x, p, 8);
      uint64_t y = x ^ kNl;
      uint64_t hit = (y - kOnes) & ~y & kHigh;
      if (hit) return p + (std::countr_zero(hit) >> 3);
      p += 8;
    }
  }
  while (p < end && *p != '\n') ++p;
  return p;
}

// Finds the line ends of the data in order. Keeps a bit per byte of the
// current 64-byte block, so that a line end costs a bit scan rather than a
// search loop whose length the branch predictor cannot guess (most lines of
// a drawing are 1 to 20 bytes).
class LineEnds {
 public:
  LineEnds(const char* begin, const char* end)
      : block_(begin), end_(end), bits_(Bits(begin)) {}

  // The next '\n' at or after p, or end. REQUIRES: p does not go back.
  const char* Next(const char* p) {
    while (true) {
      size_t skip = static_cast<size_t>(p - block_);
      if (skip < 64) {
        uint64_t m = bits_ & (~uint64_t{0} << skip);
        if (m) return block_ + std::countr_zero(m);
        block_ += 64;
        p = block_;
      } else {
        block_ = p;
      }
      if (block_ >= end_) return end_;
#if defined(__GNUC__)
      // Mapped pages come cold from memory; ask for them well ahead.
      __builtin_prefetch(block_ + 1024);
#endif
      bits_ = Bits(block_);
    }
  }

 private:
  // Bit i set when block[i] is '\n', for the bytes before end_.
  uint64_t Bits(const char* block) const {
    if (block >= end_) return 0;
    char tail[64];
    if (end_ - block < 64) {
      std::memset(tail, 0, sizeof tail);
      std::memcpy(tail, block, static_cast<size_t>(end_ - block));
      block = tail;
    }
    uint64_t bits = 0;
#if defined(__SSE2__)
    // Sixteen bytes a compare: this runs over every byte of the file.
    const __m128i nl = _mm_set1_epi8('\n');
    for (int w = 0; w < 4; ++w) {
      const __m128i x =
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * w));
      const auto hits =
          static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(x, nl)));
      bits |= uint64_t{hits} << (16 * w);
    }
#else
    if constexpr (std::endian::native == std::endian::little) {
      constexpr uint64_t kLow7 = 0x7f7f7f7f7f7f7f7fULL;
      constexpr uint64_t kNl = 0x0a0a0a0a0a0a0a0aULL;
      for (int w = 0; w < 8; ++w) {
        uint64_t x;
        std::memcpy(&x, block + 8 * w, 8);
        const uint64_t y = x ^ kNl;
        // High bit of each byte that was '\n', exactly (no borrows).
        const uint64_t hit = ~(((y & kLow7) + kLow7) | y | kLow7);
        // Gathers the eight high bits into one byte, first byte lowest.
        bits |= (((hit >> 7) * 0x0102040810204080ULL) >> 56) << (8 * w);
      }
    } else {
      for (int i = 0; i < 64; ++i) {
        if (block[i] == '\n') bits |= uint64_t{1} << i;
      }
    }
#endif
    return bits;
  }

  const char* block_;
  const char* end_;
  uint64_t bits_;
};

// What a value must look like, by group code.
enum class Check : uint8_t { kNone, kReal, kInt, kHandle, kHex };

struct CheckTable {
  Check check[kMaxGroupCode + 1];
  bool numeric[kMaxGroupCode + 1];  // values trimmed like numbers
  CheckTable() {
    for (int c = 0; c <= kMaxGroupCode; ++c) {
      switch (TypeOfCode(c)) {
        case ValueType::kString:
          check[c] = Check::kNone;
          break;
        case ValueType::kHandle:
          // A dimension style's own handle (105) must be one; 5 is not
          // checked, as R12 styles keep DIMBLK there. Pointer groups are not
          // checked: some writers put names there (a dimension style's 340
          // holding "Standard", as in R12), and readers resolve pointers
          // lazily, taking one that names nothing as null.
          check[c] = c == 105 ? Check::kHandle : Check::kNone;
          break;
        case ValueType::kDouble:
          check[c] = Check::kReal;
          break;
        case ValueType::kBinary:
          check[c] = Check::kHex;
          break;
        default:
          check[c] = Check::kInt;
          break;
      }
      // Handles and hex data are trimmed too: writers pad them like
      // numbers.
      numeric[c] = check[c] != Check::kNone;
    }
    numeric[0] = true;  // structure names are trimmed like numbers
  }
};

const CheckTable& Checks() {
  static const CheckTable table;
  return table;
}

inline bool IsDigit(char c) { return static_cast<unsigned>(c - '0') <= 9; }

// The end of the run of digits that starts at `b`, at most `e`. Eight
// bytes are tested at once where the buffer holds them (up to `limit`, the
// end of the data, past `e`): numbers are most of a drawing's values, and
// testing them byte by byte costs a tenth of the load.
inline const char* SkipDigits(const char* b, const char* e, const char* limit) {
  constexpr uint64_t kOnes = 0x0101010101010101u;
  while (limit - b >= 8) {
    uint64_t x;
    std::memcpy(&x, b, 8);
    // A digit becomes 0..9; adding 0x76 sets the high bit of anything
    // above 9 (a carry it makes only reaches later bytes).
    const uint64_t t = x ^ (0x30 * kOnes);
    const uint64_t other = ((t + 0x76 * kOnes) | t) & (0x80 * kOnes);
    // Little endian, like the binary reader below: the first byte is the
    // lowest.
    if (other != 0) return std::min(b + (std::countr_zero(other) >> 3), e);
    b += 8;
    if (b >= e) return e;
  }
  while (b < e && IsDigit(*b)) ++b;
  return b;
}

// [+-]digits: what nearly every integer value looks like.
inline bool IsPlainInt(const char* b, const char* e, const char* limit) {
  if (b < e && (*b == '-' || *b == '+')) ++b;
  return b < e && SkipDigits(b, e, limit) == e;
}

// [+-]digits[.digits][e[+-]digits], a digit somewhere before the exponent:
// what CAD programs write for reals.
inline bool IsPlainReal(const char* b, const char* e, const char* limit) {
  if (b < e && (*b == '-' || *b == '+')) ++b;
  const char* m = b;
  b = SkipDigits(b, e, limit);
  bool digits = b > m;
  if (b < e && *b == '.') {
    const char* f = ++b;
    b = SkipDigits(b, e, limit);
    digits = digits || b > f;
  }
  if (!digits) return false;
  if (b < e && (*b == 'e' || *b == 'E')) {
    ++b;
    if (b < e && (*b == '-' || *b == '+')) ++b;
    const char* x = b;
    while (b < e && IsDigit(*b)) ++b;
    if (b == x) return false;
  }
  return b == e;
}

inline bool IsHexDigit(char c) {
  return IsDigit(c) || static_cast<unsigned>((c | 0x20) - 'a') <= 5;
}

// Eight bytes at a time: proxy graphics and other hex chunks (310 and the
// like) can be most of a drawing's bytes.
inline bool IsHex(std::string_view s) {
  const char* p = s.data();
  const char* e = p + s.size();
  constexpr uint64_t kOnes = 0x0101010101010101u;
  constexpr uint64_t kHigh = 0x80 * kOnes;
  while (e - p >= 8) {
    uint64_t x;
    std::memcpy(&x, p, 8);
    // With every high bit clear no sum below carries into the next byte.
    if (x & kHigh) return false;
    // '0'..'9' become 0..9; adding 0x76 sets the high bit of anything
    // above 9.
    const uint64_t t = x ^ (0x30 * kOnes);
    const uint64_t digit = ~((t + 0x76 * kOnes) | t);
    // 'a'..'f' and 'A'..'F' become 1..6: at least 1, below 7.
    const uint64_t u = (x | 0x20 * kOnes) ^ (0x60 * kOnes);
    const uint64_t letter = (u + 0x7f * kOnes) & ~(u + 0x79 * kOnes);
    if (((digit | letter) & kHigh) != kHigh) return false;
    p += 8;
  }
  for (; p < e; ++p) {
    if (!IsHexDigit(*p)) return false;
  }
  return true;
}

// Null when `v` suits `check`, else what the group expects. Lenient where
// CAD programs are: integer groups take integral reals ("1.0", written by
// some exporters), reals take "inf"/"nan" spellings from_chars knows, and
// a pointer group may be empty (no object). Integers are not range-checked
// by width: files hold unsigned values (65535) in 16-bit groups.
// `limit`, the end of the data, lets the digit test read past the value.
// Forced inline: the tokenizer calls it for most values, and with two
// instantiations of the tokenizer the compiler stops inlining it.
[[gnu::always_inline]] inline const char* Mismatch(Check check,
                                                   std::string_view v,
                                                   const char* limit) {
  const char* b = v.data();
  const char* e = b + v.size();
  switch (check) {
    case Check::kNone:
      return nullptr;
    case Check::kReal:
      return IsPlainReal(b, e, limit) || ParseDouble(v) ? nullptr : "a number";
    case Check::kInt:
      return IsPlainInt(b, e, limit) || ParseInt(v) ? nullptr : "an integer";
    case Check::kHandle:
      return v.size() <= 16 && IsHex(v) ? nullptr : "a hexadecimal handle";
    case Check::kHex:
      return v.size() % 2 == 0 && IsHex(v) ? nullptr : "hexadecimal data";
  }
  return nullptr;
}

std::string MismatchText(int code, const char* expected, std::string_view v) {
  return "group " + std::to_string(code) + " expects " + expected + ", got " +
         Quote(v);
}

// Where a pass over ASCII text is: at the start of a code line.
struct AsciiCursor {
  const char* p;
  size_t line;        // of p, from 1
  bool done = false;  // nothing more to read: 0 EOF, blank lines or the end
  bool eof = false;   // read 0 EOF
};

// Tokenizes tags from cur->p on, appending them (and the indexes of their
// code 0 tags) until 0 EOF, the end of the data or a tag that starts at or
// past `stop`: the cursor is then at that tag, past `stop` when the last
// tag read began before it and ended after. Errors name the line counted
// from cur->line.
template <typename Tags, typename Starts>
Status ScanAscii(const char* end, const char* stop, std::string_view name,
                 AsciiCursor* cur, Tags* tags, Starts* starts) {
  const char* p = cur->p;
  size_t line = cur->line;
  const Check* check = Checks().check;
  const bool* numeric = Checks().numeric;
  LineEnds lines(p, end);
  while (p < stop) {
    const char* le = lines.Next(p);
    // Fast path for the usual "  10" code line.
    const char* q = p;
    while (q < le && *q == ' ') ++q;
    const char* digits = q;
    int code = 0;
    while (q < le && static_cast<unsigned>(*q - '0') <= 9 && q - digits < 5) {
      code = code * 10 + (*q - '0');
      ++q;
    }
    size_t ndigits = static_cast<size_t>(q - digits);
    while (q < le && IsBlank(*q)) ++q;
    if (ndigits == 0 || ndigits > 4 || code > kMaxGroupCode || q != le ||
        le >= end) {
      // Unusual or broken: decide on the whole line.
      code = ParseCode(p, le);
      if (code < 0) {
        std::string_view text = Trim(std::string_view(p, le - p));
        if (text.empty() && std::all_of(p, end, [](char c) {
              return IsBlank(c) || c == '\n';
            })) {
          cur->done = true;  // trailing blank lines
          break;
        }
        return Status::Corruption(
            std::string(name) + ":" + std::to_string(line) +
            ": expected a group code, got " + Quote(text));
      }
      if (le >= end) {
        return Status::Corruption(std::string(name) + ":" +
                                  std::to_string(line + 1) +
                                  ": expected a value after group code " +
                                  std::to_string(code) + ", got end of file");
      }
    }
    p = le + 1;
    ++line;
    const char* vnl = lines.Next(p);
    const char* ve = vnl;
    const char* vb = p;
    if (ve > vb && ve[-1] == '\r') --ve;
    if (numeric[code]) {
      while (vb < ve && (*vb == ' ' || *vb == '\t')) ++vb;
      while (ve > vb && (ve[-1] == ' ' || ve[-1] == '\t')) --ve;
    }
    if (static_cast<size_t>(ve - vb) > Tag::kMaxSize) {
      return Status::Corruption(std::string(name) + ":" + std::to_string(line) +
                                ": expected a value of at most 1 MiB, got " +
                                std::to_string(ve - vb) + " bytes");
    }
    std::string_view value(vb, static_cast<size_t>(ve - vb));
    if (check[code] != Check::kNone) {
      if (const char* expected = Mismatch(check[code], value, end)) {
        return Status::Corruption(std::string(name) + ":" +
                                  std::to_string(line) + ": " +
                                  MismatchText(code, expected, value));
      }
    }
    if (code == 0) starts->push_back(static_cast<uint32_t>(tags->size()));
    tags->emplace_back(code, value);
    p = vnl < end ? vnl + 1 : end;
    ++line;
    if (code == 0 && ve - vb == 3 && std::memcmp(vb, "EOF", 3) == 0) {
      cur->done = cur->eof = true;
      break;
    }
  }
  cur->p = p;
  cur->line = line;
  if (p >= end) cur->done = true;
  return Status::Ok();
}

// A place near `from` that starts a code 0 line in any well-formed file:
// a line that trims to "0" followed by one that starts with a letter. Were
// the "0" a value, the next line would be a group code, all digits. Null
// when there is none in the next `kCutSearch` bytes. Only a guess for
// damaged files: the reader that comes from before checks that it lands
// there.
const char* FindCut(const char* from, const char* end) {
  constexpr size_t kCutSearch = size_t{1} << 20;
  const char* limit =
      end - from > static_cast<ptrdiff_t>(kCutSearch) ? from + kCutSearch : end;
  const char* nl = FindNewline(from, limit);
  while (nl < limit) {
    const char* q = nl + 1;
    while (q < end && (*q == ' ' || *q == '\t')) ++q;
    if (q < end && *q == '0') {
      ++q;
      while (q < end && IsBlank(*q)) ++q;
      if (end - q >= 2 && *q == '\n') {
        const auto c = static_cast<unsigned char>(q[1] | 0x20);
        if (c >= 'a' && c <= 'z') return nl + 1;
      }
    }
    nl = FindNewline(q < end ? q : end, limit);
  }
  return nullptr;
}

std::atomic<size_t> g_two_thread_bytes{kDefaultTwoThreadBytes};

// A stretch of the text between two cuts.
struct Piece {
  const char* begin = nullptr;
  const char* stop = nullptr;  // the next piece's begin, or the end
  // What the helper read of it, when it took it.
  Status status;
  AsciiCursor cur{nullptr, 1};
  size_t tags_begin = 0, tags_end = 0, starts_begin = 0, starts_end = 0;
};

using HelperTags = std::vector<Tag, PageAllocator<Tag>>;  // see PageAllocator
using HelperStarts = std::vector<uint32_t, PageAllocator<uint32_t>>;

// This thread reads pieces from the front, straight into the result; a
// helper thread reads them from the back, each on its own, into arrays of
// its own, until the two meet. A helper that starts late (a thread can
// take milliseconds to get a core) or never costs little: it is not waited
// for unless it is reading, and then owns this state with this thread.
struct TwoThreads {
  std::vector<Piece> pieces;
  HelperTags tags;
  HelperStarts starts;
  std::mutex mu;
  std::condition_variable idle;
  size_t front = 0;      // pieces [0, front) are this thread's
  size_t back = 0;       // pieces [back, size) are the helper's
  bool give_up = false;  // no more pieces for the helper
  bool reading = false;  // the helper is reading its last piece taken

  // The next piece from the front, or false once the helper has it.
  bool TakeFront(size_t* i) {
    std::lock_guard lock(mu);
    if (front >= back) return false;
    *i = front++;
    return true;
  }
  // Ends the helper's part; returns once it reads nothing more.
  void Finish() {
    std::unique_lock lock(mu);
    give_up = true;
    idle.wait(lock, [this] { return !reading; });
  }
  void Help(const char* end, std::string_view name) {
    while (true) {
      size_t j;
      {
        std::lock_guard lock(mu);
        reading = !give_up && back > front;
        if (!reading) break;
        j = --back;
      }
      Piece& piece = pieces[j];
      piece.cur.p = piece.begin;
      piece.tags_begin = tags.size();
      piece.starts_begin = starts.size();
      piece.status =
          ScanAscii(end, piece.stop, name, &piece.cur, &tags, &starts);
      piece.tags_end = tags.size();
      piece.starts_end = starts.size();
    }
    idle.notify_all();  // with `reading` false
  }
};

// Appends `tags` to `out` in pieces, each given back to the system once
// copied, so that the copies never both count whole in the peak memory.
void AppendReleasing(const Tag* tags, size_t n, std::vector<Tag>* out) {
  constexpr size_t kStep = (size_t{1} << 20) / sizeof(Tag);
  for (size_t i = 0; i < n; i += kStep) {
    const size_t k = std::min(kStep, n - i);
    out->insert(out->end(), tags + i, tags + i + k);
    ReleasePages(const_cast<Tag*>(tags + i), k * sizeof(Tag));
  }
}

// More pieces balance no better.
constexpr size_t kMaxPieces = 32;

// Reads from cur->p on two threads, in pieces of at least `min_piece`
// bytes (where the text allows a cut), leaving the cursor where the text
// is read up to exactly as one thread would have: the end, or a tag from
// which the caller reads on alone. Returns the error one thread would meet
// before that place.
Status ReadOnTwoThreads(const char* end, std::string_view name,
                        size_t min_piece, AsciiCursor* cur, TagFile* out) {
  const size_t size = static_cast<size_t>(end - cur->p);
  const size_t count = std::clamp<size_t>(size / min_piece, 2, kMaxPieces);
  std::vector<const char*> cuts{cur->p};
  for (size_t i = 1; i < count; ++i) {
    const char* c = FindCut(cur->p + size / count * i, end);
    if (c && c > cuts.back()) cuts.push_back(c);
  }
  const size_t n = cuts.size();
  if (n < 2) return Status::Ok();
  auto two = std::make_shared<TwoThreads>();
  two->pieces.resize(n);
  for (size_t i = 0; i < n; ++i) {
    two->pieces[i].begin = cuts[i];
    two->pieces[i].stop = i + 1 < n ? cuts[i + 1] : end;
  }
  two->front = 1;  // the first piece is this thread's
  two->back = n;
  two->tags.reserve(size / 16 + 16);
  AdviseLargePages(two->tags.data(), two->tags.capacity() * sizeof(Tag));
  two->starts.reserve(size / 256 + 16);
  std::thread helper;
  try {
    helper = std::thread([two, end, name] { two->Help(end, name); });
  } catch (const std::system_error&) {
    // No thread to be had: this one takes every piece.
  }
  // This thread's pieces, while each lands on the next one's start.
  size_t i = 0;
  Status s;
  bool alone = false;  // read on from `cur` without the helper's pieces
  while (true) {
    const Piece& piece = two->pieces[i];
    s = ScanAscii(end, piece.stop, name, cur, &out->tags, &out->starts);
    if (!s.ok() || cur->done || i + 1 == n ||
        cur->p != two->pieces[i + 1].begin) {
      alone = true;
      break;
    }
    if (!two->TakeFront(&i)) break;
  }
  two->Finish();
  if (helper.joinable()) helper.detach();
  if (alone) return s;
  // The helper's pieces, while each was read cleanly and lands on the next
  // one's start. A failed piece is read again by the caller, so that its
  // message names the line.
  for (size_t j = two->back; j < n; ++j) {
    const Piece& piece = two->pieces[j];
    if (!piece.status.ok()) break;
    const size_t at = out->tags.size();
    AppendReleasing(two->tags.data() + piece.tags_begin,
                    piece.tags_end - piece.tags_begin, &out->tags);
    // The helper's starts count from the front of its own array.
    for (size_t k = piece.starts_begin; k < piece.starts_end; ++k) {
      out->starts.push_back(
          static_cast<uint32_t>(at + (two->starts[k] - piece.tags_begin)));
    }
    cur->p = piece.cur.p;
    cur->done = piece.cur.done;
    cur->eof = piece.cur.eof;
    if (cur->done || (j + 1 < n && cur->p != two->pieces[j + 1].begin)) break;
  }
  // Every tag is two lines.
  cur->line = 1 + 2 * out->tags.size();
  return Status::Ok();
}

Status ReadAscii(std::string_view data, std::string_view name, TagFile* out,
                 bool allow_missing_eof) {
  const char* p = data.data();
  const char* end = p + data.size();
  if (data.substr(0, 3) == "\xEF\xBB\xBF") p += 3;
  // A guess, not a bound: CAD files average well over 8 bytes a tag, and
  // pages of the reserve that are never touched cost no memory.
  out->tags.reserve(data.size() / 8 + 16);
  AdviseLargePages(out->tags.data(), out->tags.capacity() * sizeof(Tag));
  out->starts.reserve(data.size() / 128 + 16);
  const char* first_nl = FindNewline(p, end);
  out->crlf = first_nl < end && first_nl > p && first_nl[-1] == '\r';
  AsciiCursor cur{p, 1};
  const size_t two_thread_bytes = g_two_thread_bytes.load();
  if (data.size() >= two_thread_bytes) {
    // Pieces of half the size that pays for a thread keep both busy to
    // the end; tests lower it to cut small texts into many pieces.
    const size_t min_piece = std::max<size_t>(two_thread_bytes / 2, 64);
    Status s = ReadOnTwoThreads(end, name, min_piece, &cur, out);
    if (!s.ok()) return s;
  }
  if (!cur.done) {
    Status s = ScanAscii(end, end, name, &cur, &out->tags, &out->starts);
    if (!s.ok()) return s;
  }
  if (!cur.eof && !allow_missing_eof) {
    return Status::Corruption(std::string(name) + ":" +
                              std::to_string(cur.line) +
                              ": expected 0 EOF, got end of file");
  }
  return Status::Ok();
}

template <typename T>
T Load(const char* p) {
  T v;
  std::memcpy(&v, p, sizeof v);  // the format is little endian, like our hosts
  return v;
}

Status ReadBinary(std::string_view data, std::string_view name, Arena* arena,
                  TagFile* out, bool allow_missing_eof) {
  out->binary = true;
  const char* base = data.data();
  const char* p = base + kBinarySentinel.size();
  const char* end = base + data.size();
  // R12 writes 1-byte codes: its first tag is then 00 'S'ECTION.
  bool two_byte = end - p >= 2 && p[1] == '\0';
  out->one_byte_codes = !two_byte;
  auto fail = [&](const char* at, const std::string& what) {
    return Status::Corruption(std::string(name) + ": offset " +
                              std::to_string(at - base) + ": " + what);
  };
  std::string text;
  char number[kNumberTextSize];
  auto store_int = [&](int64_t v) {
    return arena->Store({number, FormatIntTo(v, number)});
  };
  bool seen_eof = false;
  while (p < end) {
    const char* tag_at = p;
    int code;
    if (two_byte) {
      if (end - p < 2) return fail(p, "expected a group code, got end of file");
      code = Load<int16_t>(p);
      p += 2;
    } else {
      code = static_cast<unsigned char>(*p++);
      if (code == 255) {
        if (end - p < 2)
          return fail(p, "expected a group code, got end of file");
        code = Load<int16_t>(p);
        p += 2;
      }
    }
    if (code < 0 || code > kMaxGroupCode) {
      return fail(tag_at, "expected a group code, got " + std::to_string(code));
    }
    auto need = [&](ptrdiff_t n) { return end - p >= n; };
    std::string_view value;
    ValueType type = TypeOfCode(code);
    auto value_msg = [code] {
      return "expected a value for group code " + std::to_string(code);
    };
    switch (type) {
      case ValueType::kString:
      case ValueType::kHandle: {
        const char* z = static_cast<const char*>(std::memchr(p, 0, end - p));
        if (!z) return fail(p, value_msg() + ", got an unterminated string");
        value = std::string_view(p, z - p);  // stays in the caller's buffer
        if (Checks().check[code] == Check::kHandle) {
          if (const char* expected = Mismatch(Check::kHandle, value,
                                              value.data() + value.size())) {
            return fail(p, MismatchText(code, expected, value));
          }
        } else if (EscapeControlChars(value, &text)) {
          value = arena->Store(text);
        }
        p = z + 1;
        break;
      }
      case ValueType::kDouble:
        if (!need(8)) return fail(p, value_msg() + ", got end of file");
        value = arena->Store({number, FormatDoubleTo(Load<double>(p), number)});
        p += 8;
        break;
      case ValueType::kInt16:
        if (!need(2)) return fail(p, value_msg() + ", got end of file");
        value = store_int(Load<int16_t>(p));
        p += 2;
        break;
      case ValueType::kInt32:
        if (!need(4)) return fail(p, value_msg() + ", got end of file");
        value = store_int(Load<int32_t>(p));
        p += 4;
        break;
      case ValueType::kInt64:
        if (!need(8)) return fail(p, value_msg() + ", got end of file");
        value = store_int(Load<int64_t>(p));
        p += 8;
        break;
      case ValueType::kBool:
        if (!need(1)) return fail(p, value_msg() + ", got end of file");
        value = store_int(static_cast<unsigned char>(*p));
        p += 1;
        break;
      case ValueType::kBinary: {
        if (!need(1)) return fail(p, value_msg() + ", got end of file");
        size_t n = static_cast<unsigned char>(*p++);
        if (!need(static_cast<ptrdiff_t>(n))) {
          return fail(p, value_msg() + ", got a chunk cut short");
        }
        // Chunks (proxy graphics) can be most of a file: filled in place,
        // not appended byte by byte.
        static constexpr char kHex[] = "0123456789ABCDEF";
        char hex[2 * 255];
        for (size_t i = 0; i < n; ++i) {
          unsigned char c = static_cast<unsigned char>(p[i]);
          hex[2 * i] = kHex[c >> 4];
          hex[2 * i + 1] = kHex[c & 15];
        }
        p += n;
        value = arena->Store({hex, 2 * n});
        break;
      }
    }
    if (value.size() > Tag::kMaxSize) {
      return fail(tag_at, "expected a value of at most 1 MiB, got " +
                              std::to_string(value.size()) + " bytes");
    }
    if (code == 0) {
      out->starts.push_back(static_cast<uint32_t>(out->tags.size()));
      out->start_offsets.push_back(static_cast<uint32_t>(tag_at - base));
    }
    out->tags.emplace_back(code, value);
    if (code == 0 && value == "EOF") {
      seen_eof = true;
      break;
    }
  }
  if (!seen_eof && !allow_missing_eof) {
    return fail(end, "expected 0 EOF, got end of file");
  }
  return Status::Ok();
}

}  // namespace

Status ReadTags(std::string_view data, std::string_view name, Arena* arena,
                TagFile* out, bool allow_missing_eof) {
  out->tags.clear();
  out->starts.clear();
  out->start_offsets.clear();
  out->binary = false;
  out->one_byte_codes = false;
  out->crlf = false;
  if (data.size() >= kMaxFileSize) {
    return Status::Corruption(std::string(name) +
                              ": file too large (2 GiB or more)");
  }
  if (data.empty()) {
    return Status::Corruption(std::string(name) +
                              ":1: expected a group code, got end of file");
  }
  if (data.substr(0, kBinarySentinel.size()) == kBinarySentinel) {
    return ReadBinary(data, name, arena, out, allow_missing_eof);
  }
  return ReadAscii(data, name, out, allow_missing_eof);
}

size_t SetTwoThreadBytes(size_t bytes) {
  return g_two_thread_bytes.exchange(bytes);
}

std::string TagLocation(std::string_view name, const TagFile& file,
                        size_t index) {
  if (file.binary) {
    return std::string(name) + ": tag " + std::to_string(index + 1);
  }
  // Every tag of an ASCII file is two lines.
  return std::string(name) + ":" + std::to_string(2 * index + 1);
}

}  // namespace lmt::dxf

// The two-thread reader of large ASCII drawings must give exactly what one
// thread gives: the same tags (pointing at the same bytes), record starts,
// flags, and on damaged text the same message naming the same line.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "dxf/tag_reader.h"
#include "dxf/test_util.h"

namespace lmt::dxf {
namespace {

class TwoThreadBytes {
 public:
  explicit TwoThreadBytes(size_t bytes) : old_(SetTwoThreadBytes(bytes)) {}
  ~TwoThreadBytes() { SetTwoThreadBytes(old_); }

 private:
  size_t old_;
};

struct Read {
  Status status;
  TagFile file;
  std::unique_ptr<Arena> arena = std::make_unique<Arena>();  // binary values
};

Read ReadWith(size_t two_thread_bytes, const std::string& data,
              bool allow_missing_eof) {
  TwoThreadBytes set(two_thread_bytes);
  Read r;
  r.status = ReadTags(data, "t.dxf", r.arena.get(), &r.file, allow_missing_eof);
  return r;
}

// "" when both reads agree in every field, else the first difference.
std::string Difference(const Read& a, const Read& b) {
  if (a.status.ToString() != b.status.ToString()) {
    return a.status.ToString() + " vs " + b.status.ToString();
  }
  const TagFile& x = a.file;
  const TagFile& y = b.file;
  if (x.tags.size() != y.tags.size()) {
    return std::to_string(x.tags.size()) + " vs " +
           std::to_string(y.tags.size()) + " tags";
  }
  for (size_t i = 0; i < x.tags.size(); ++i) {
    // ASCII tags point into the text; binary values are each read's own.
    const bool same_value = x.binary ? x.tags[i].value() == y.tags[i].value()
                                     : x.tags[i].data() == y.tags[i].data() &&
                                           x.tags[i].size() == y.tags[i].size();
    if (x.tags[i].code != y.tags[i].code || !same_value) {
      return "tag " + std::to_string(i) + ": " +
             std::to_string(x.tags[i].code) + " '" +
             std::string(x.tags[i].value()) + "' vs " +
             std::to_string(y.tags[i].code) + " '" +
             std::string(y.tags[i].value()) + "'";
    }
  }
  if (x.starts != y.starts) return "record starts differ";
  if (x.start_offsets != y.start_offsets) return "start offsets differ";
  if (x.binary != y.binary || x.one_byte_codes != y.one_byte_codes ||
      x.crlf != y.crlf) {
    return "flags differ";
  }
  return "";
}

// Returns the one-thread read, after checking the two-thread one against it.
Read ExpectSameOnTwoThreads(const std::string& data,
                            bool allow_missing_eof = false) {
  Read one = ReadWith(SIZE_MAX, data, allow_missing_eof);
  Read two = ReadWith(0, data, allow_missing_eof);
  EXPECT_EQ(Difference(one, two), "")
      << (allow_missing_eof ? "(missing EOF allowed) " : "")
      << (data.size() < 2000 ? data : "");
  return one;
}

// A small ENTITIES section whose values look like code lines and structure
// names: "  0" and "0" as values, "SECTION" and "EOF" as strings.
std::string Entities(int count, const std::string& eol) {
  std::string s =
      "  0" + eol + "SECTION" + eol + "  2" + eol + "ENTITIES" + eol;
  for (int i = 0; i < count; ++i) {
    const std::string n = std::to_string(i + 10);
    s += "  0" + eol + "TEXT" + eol + "  5" + eol + n + eol + "  8" + eol +
         "0" + eol + " 10" + eol + n + ".5" + eol + "  1" + eol + "  0" + eol +
         "  3" + eol + "SECTION" + eol + " 70 " + eol + "     0" + eol + "  1" +
         eol + "EOF" + eol + "999" + eol + "0" + eol;
  }
  return s + "  0" + eol + "ENDSEC" + eol;
}

std::string Eof(const std::string& eol) { return "  0" + eol + "EOF" + eol; }

// Every split point the guess can land on: a comment in front pulls the
// middle of the text toward its start, records after 0 EOF (ignored)
// push it past the end.
TEST(TwoThreadReadTest, SameTagsWhereverTheMiddleFalls) {
  for (const std::string eol : {"\n", "\r\n"}) {
    const std::string body = Entities(3, eol) + Eof(eol);
    for (size_t pad = 0; pad <= body.size(); ++pad) {
      const std::string comment =
          "999" + eol + std::string(pad, 'c') + "0" + eol;
      Read front = ExpectSameOnTwoThreads(comment + body);
      ASSERT_TRUE(front.status.ok()) << front.status.ToString();
      ExpectSameOnTwoThreads(body + Entities(1, eol).substr(0, pad));
    }
  }
}

TEST(TwoThreadReadTest, SameEndingsWithoutEof) {
  for (const std::string eol : {"\n", "\r\n"}) {
    const std::string body = Entities(4, eol);
    for (size_t cut = body.size() / 2; cut <= body.size(); ++cut) {
      // Cut anywhere in the second half, then trailing blank lines.
      for (const std::string tail : {"", "\n\n", " \r\n\t\n"}) {
        const std::string data = body.substr(0, cut) + tail;
        Read r = ExpectSameOnTwoThreads(data);
        EXPECT_FALSE(r.status.ok());
        ExpectSameOnTwoThreads(data, /*allow_missing_eof=*/true);
      }
    }
  }
}

// Damage in either half, and splits guessed where the one-thread reader
// sees a value: "0" followed by a line that is no group code. The comment
// in front moves the middle across a whole record.
TEST(TwoThreadReadTest, SameMessageForDamageAnywhere) {
  const std::string good = Entities(6, "\n") + Eof("\n");
  const std::string damages[] = {"1.5mm", "0\nEOF", "0\nLINE\n  8", "x\n"};
  for (size_t pad = 0; pad < 130; pad += 3) {
    const std::string comment = "999\n" + std::string(pad, 'c') + "\n";
    size_t at = 0;
    while ((at = good.find("\n 10\n", at)) != std::string::npos) {
      at += 5;
      const size_t value_end = good.find('\n', at);
      for (const std::string& damage : damages) {
        std::string data = good;
        data.replace(at, value_end - at, damage);
        Read r = ExpectSameOnTwoThreads(comment + data);
        EXPECT_FALSE(r.status.ok()) << damage;
      }
    }
  }
}

TEST(TwoThreadReadTest, SameTagsForCorpusDrawings) {
  LMT_SKIP_WITHOUT_SHARED();
  const std::filesystem::path dir = testing::CorpusPath("");
  if (!std::filesystem::is_directory(dir)) GTEST_SKIP() << "no " << dir;
  int ascii = 0;
  for (const auto& entry : std::filesystem::directory_iterator(dir)) {
    std::ifstream in(entry.path(), std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    const std::string data = ss.str();
    SCOPED_TRACE(entry.path().string());
    Read r = ExpectSameOnTwoThreads(data);
    if (r.status.ok() && !r.file.binary) ++ascii;
    // Cut short in its second half: a damaged copy reads the same too.
    ExpectSameOnTwoThreads(data.substr(0, data.size() * 3 / 4));
  }
  EXPECT_GT(ascii, 0);
}

}  // namespace
}  // namespace lmt::dxf

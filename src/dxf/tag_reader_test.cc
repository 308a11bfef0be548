#include "dxf/tag_reader.h"

#include <gtest/gtest.h>

#include <charconv>
#include <string>
#include <vector>

#include "dxf/tag_writer.h"

namespace lmt::dxf {
namespace {

struct Damaged {
  const char* label;
  std::string data;
  const char* message;  // expected Status message
};

void PrintTo(const Damaged& d, std::ostream* os) { *os << d.label; }

class DamagedTagsTest : public ::testing::TestWithParam<Damaged> {};

TEST_P(DamagedTagsTest, ReportsFileLineAndExpectation) {
  Arena arena;
  TagFile file;
  Status s = ReadTags(GetParam().data, "bad.dxf", &arena, &file);
  ASSERT_TRUE(s.IsCorruption()) << GetParam().label;
  EXPECT_EQ(s.message(), GetParam().message) << GetParam().label;
}

std::string Bin(std::string body) {
  return std::string(kBinarySentinel) + body;
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, DamagedTagsTest,
    ::testing::Values(
        Damaged{"empty", "",
                "bad.dxf:1: expected a group code, got end of file"},
        Damaged{"text code", "  0\nSECTION\nabc\nHEADER\n",
                "bad.dxf:3: expected a group code, got 'abc'"},
        Damaged{"negative code", "-1\nX\n",
                "bad.dxf:1: expected a group code, got '-1'"},
        Damaged{"code too big", "  0\nSECTION\n5000\nX\n",
                "bad.dxf:3: expected a group code, got '5000'"},
        Damaged{"value missing", "  0\nSECTION\n  2",
                "bad.dxf:4: expected a value after group code 2, got end of "
                "file"},
        Damaged{"no EOF", "  0\nSECTION\n  2\nHEADER\n  0\nENDSEC\n",
                "bad.dxf:7: expected 0 EOF, got end of file"},
        Damaged{"truncated line", "  0\nSECTION\n  2\nENTITIES\n  0\nLI",
                "bad.dxf:7: expected 0 EOF, got end of file"},
        Damaged{"binary string unterminated", Bin(std::string("\0\0SECT", 6)),
                "bad.dxf: offset 24: expected a value for group code 0, got an "
                "unterminated string"},
        Damaged{"binary double cut", Bin(std::string("\x0a\0\x01\x02", 4)),
                "bad.dxf: offset 24: expected a value for group code 10, got "
                "end of file"},
        Damaged{"binary chunk cut",
                Bin(std::string("\0\0SECTION\0\x36\x01\x09\x01\x02", 15)),
                "bad.dxf: offset 35: expected a value for group code 310, got "
                "a chunk cut short"},
        Damaged{"binary bad code",
                Bin(std::string("\0\0SECTION\0\xff\x7f", 12)),
                "bad.dxf: offset 32: expected a group code, got 32767"},
        Damaged{"binary no EOF", Bin(std::string("\0\0SECTION\0", 10)),
                "bad.dxf: offset 32: expected 0 EOF, got end of file"},
        Damaged{"text for a coordinate",
                "  0\nLWPOLYLINE\n 10\nabc\n 20\n0\n  0\nEOF\n",
                "bad.dxf:4: group 10 expects a number, got 'abc'"},
        Damaged{"number with trailing text", "  0\nLINE\n 40\n1.5mm\n",
                "bad.dxf:4: group 40 expects a number, got '1.5mm'"},
        // Long digit runs are tested eight bytes at a time: a stray byte
        // anywhere in them, or right after them, must still be seen.
        Damaged{"letter after eight digits", "  0\nLINE\n 90\n12345678x\n",
                "bad.dxf:4: group 90 expects an integer, got '12345678x'"},
        Damaged{"colon inside long digits", "  0\nLINE\n 40\n1234567890:23.5\n",
                "bad.dxf:4: group 40 expects a number, got '1234567890:23.5'"},
        Damaged{"slash in the fraction", "  0\nLINE\n 40\n0.123456789/1\n",
                "bad.dxf:4: group 40 expects a number, got '0.123456789/1'"},
        Damaged{"fraction for an integer", "  0\nLINE\n 70\n1.5\n",
                "bad.dxf:4: group 70 expects an integer, got '1.5'"},
        Damaged{"empty integer", "  0\nLINE\n 90\n\n",
                "bad.dxf:4: group 90 expects an integer, got ''"},
        Damaged{"handle not hex", "  0\nDIMSTYLE\n105\n2G\n",
                "bad.dxf:4: group 105 expects a hexadecimal handle, got '2G'"},
        Damaged{"handle over 64 bits",
                "  0\nDIMSTYLE\n105\n10000000000000000\n",
                "bad.dxf:4: group 105 expects a hexadecimal handle, got "
                "'10000000000000000'"},
        Damaged{"odd hex chunk", "  0\nOLE2FRAME\n310\nABC\n",
                "bad.dxf:4: group 310 expects hexadecimal data, got 'ABC'"},
        Damaged{"binary handle not hex",
                Bin(std::string("\0\0DIMSTYLE\0\x69\0ZZ\0", 16)),
                "bad.dxf: offset 35: group 105 expects a hexadecimal handle, "
                "got 'ZZ'"}),
    [](const auto& info) {
      std::string n = info.param.label;
      for (char& c : n) {
        if (!isalnum(static_cast<unsigned char>(c))) c = '_';
      }
      return n;
    });

// What CAD programs accept stays readable: integral reals in integer
// groups, padding, names in pointer groups, unsigned 16-bit values.
TEST(TagReaderTest, AcceptsValuesCadProgramsAccept) {
  std::string data =
      "  0\nLINE\n105\n 2F \n 70\n1.0\n 62\n  7 \n 40\n1e-3\n 41\n-.5\n"
      " 42\n+2.\n340\nStandard\n330\n\n 71\n65535\n310\n0aFF\n"
      " 43\n12345678901234.5678901234\n 90\n-1234567890123\n"
      "  0\nEOF\n";
  Arena arena;
  TagFile file;
  Status s = ReadTags(data, "ok.dxf", &arena, &file);
  ASSERT_TRUE(s.ok()) << s.message();
  EXPECT_EQ(file.tags[1].value(), "2F");
  EXPECT_EQ(file.tags[3].value(), "7");
}

TEST(TagReaderTest, TrimsCodesAndNumbersButKeepsStrings) {
  std::string data =
      "  0\r\nTEXT\r\n 10\r\n  1.5  \r\n  1\r\n  two  spaces \r\n"
      "999\r\ncomment\r\n  0\r\nEOF\r\n";
  Arena arena;
  TagFile file;
  ASSERT_TRUE(ReadTags(data, "t.dxf", &arena, &file).ok());
  ASSERT_EQ(file.tags.size(), 5u);
  EXPECT_TRUE(file.crlf);
  EXPECT_EQ(file.tags[1].value(), "1.5");
  EXPECT_EQ(file.tags[2].value(), "  two  spaces ");
  EXPECT_TRUE(file.tags[3].Is(999, "comment"));
}

TEST(TagReaderTest, IgnoresWhatFollowsEof) {
  std::string data = "  0\nEOF\ngarbage\x01\n";
  Arena arena;
  TagFile file;
  ASSERT_TRUE(ReadTags(data, "t.dxf", &arena, &file).ok());
  EXPECT_EQ(file.tags.size(), 1u);
}

// Line ends are found a block of bytes at a time: values of every length
// around the block size, both line-end styles, must come back whole, and a
// bad value far into the file must still be reported on its own line.
TEST(TagReaderTest, LinesOfEveryLengthAcrossBlocks) {
  for (const char* nl : {"\n", "\r\n"}) {
    std::string data;
    std::vector<std::string> values;
    for (size_t n = 0; n < 200; ++n) {
      values.push_back(std::string(n, static_cast<char>('a' + n % 26)));
      data += std::string(n % 3 == 0 ? "  1" : "1") + nl + values.back() + nl;
    }
    std::string good = data + "  0" + nl + "EOF";  // no final line end
    Arena arena;
    TagFile file;
    Status s = ReadTags(good, "t.dxf", &arena, &file);
    ASSERT_TRUE(s.ok()) << s.message();
    ASSERT_EQ(file.tags.size(), values.size() + 1) << nl;
    for (size_t i = 0; i < values.size(); ++i) {
      ASSERT_TRUE(file.tags[i].Is(1, values[i])) << nl << " value " << i;
    }
    EXPECT_TRUE(file.tags.back().Is(0, "EOF"));

    std::string bad = data + " 40" + nl + "1.5x" + nl + "  0" + nl + "EOF" + nl;
    s = ReadTags(bad, "t.dxf", &arena, &file);
    EXPECT_EQ(s.message(), "t.dxf:" + std::to_string(2 * values.size() + 2) +
                               ": group 40 expects a number, got '1.5x'");
  }
}

// Hex data is checked several bytes at once: every byte that is not a hex
// digit must be refused wherever it sits, and every digit taken.
TEST(TagReaderTest, HexDataTakesHexDigitsOnlyAtEveryPosition) {
  const std::string digits = "0123456789abcdefABCDEF";
  std::string ok_data;
  for (int i = 0; i < 3; ++i) ok_data += digits;  // 66 bytes
  ok_data += "00";
  Arena arena;
  TagFile file;
  std::string text;  // the tags point into it
  auto read = [&](const std::string& value) {
    text = "  0\nOLE2FRAME\n310\n" + value + "\n  0\nEOF\n";
    return ReadTags(text, "t.dxf", &arena, &file).ok();
  };
  ASSERT_TRUE(read(ok_data));
  EXPECT_TRUE(file.tags[1].Is(310, ok_data));
  for (int c = 0; c < 256; ++c) {
    if (c == '\n' || c == '\r' || c == ' ' || c == '\t') continue;  // trimmed
    const bool hex = digits.find(static_cast<char>(c)) != std::string::npos;
    for (size_t at : {size_t{0}, size_t{5}, size_t{7}, size_t{8}, size_t{31},
                      size_t{62}, ok_data.size() - 1}) {
      std::string value = ok_data;
      value[at] = static_cast<char>(c);
      EXPECT_EQ(read(value), hex) << "byte " << c << " at " << at;
    }
  }
}

TEST(TagReaderTest, BinaryValuesBecomeAsciiText) {
  std::string body;
  auto code = [&](int c) {
    body += static_cast<char>(c & 0xff);
    body += static_cast<char>(c >> 8);
  };
  code(0);
  body += std::string("LINE\0", 5);
  code(10);
  double d = 2.5;
  body.append(reinterpret_cast<const char*>(&d), 8);
  code(70);
  int16_t s = -3;
  body.append(reinterpret_cast<const char*>(&s), 2);
  code(290);
  body += '\x01';
  code(310);
  body += std::string("\x02\xab\x01", 3);
  code(0);
  body += std::string("EOF\0", 4);
  Arena arena;
  TagFile file;
  std::string data = Bin(body);  // tags point into it
  ASSERT_TRUE(ReadTags(data, "b.dxf", &arena, &file).ok());
  ASSERT_EQ(file.tags.size(), 6u);
  EXPECT_TRUE(file.binary);
  EXPECT_TRUE(file.tags[1].Is(10, "2.5"));
  EXPECT_TRUE(file.tags[2].Is(70, "-3"));
  EXPECT_TRUE(file.tags[3].Is(290, "1"));
  EXPECT_TRUE(file.tags[4].Is(310, "AB01"));
}

TEST(TagReaderTest, R12BinaryUsesOneByteCodes) {
  // 255 escapes a code that needs two bytes.
  std::string body(
      "\0SECTION\0\x02"
      "ENTITIES\0\xff\xe9\x03"
      "ACAD\0\0ENDSEC\0\0EOF\0",
      40);
  Arena arena;
  TagFile file;
  std::string data = Bin(body);  // tags point into it
  Status s = ReadTags(data, "r12.dxf", &arena, &file);
  ASSERT_TRUE(s.ok()) << s.ToString();
  ASSERT_EQ(file.tags.size(), 5u);
  EXPECT_TRUE(file.tags[1].Is(2, "ENTITIES"));
  EXPECT_TRUE(file.tags[2].Is(1001, "ACAD"));
  EXPECT_TRUE(file.tags[4].Is(0, "EOF"));
}

TEST(TagWriterTest, RightAlignsCodes) {
  std::string out;
  TagWriter w(&out, false);
  w.Write(0, "LINE");
  w.Write(10, "1.0");
  w.Write(100, "AcDbLine");
  w.Write(1001, "ACAD");
  EXPECT_EQ(out, "  0\nLINE\n 10\n1.0\n100\nAcDbLine\n1001\nACAD\n");
}

TEST(NumberTest, FormatsAndParsesWithoutLocale) {
  EXPECT_EQ(FormatDouble(1), "1.0");
  EXPECT_EQ(FormatDouble(0.1), "0.1");
  EXPECT_EQ(FormatDouble(1e20), "1e+20");
  EXPECT_EQ(ParseDouble("+1.5"), 1.5);
  EXPECT_FALSE(ParseDouble("1,5"));
  EXPECT_EQ(ParseInt("1.0"), 1);  // integers written as reals
  EXPECT_FALSE(ParseInt("1.5"));
  EXPECT_EQ(ParseHandle("1f"), 0x1fu);
  EXPECT_FALSE(ParseHandle("12345678901234567"));
  EXPECT_EQ(FormatHandle(0x2ab), "2AB");
}

// Whole numbers take a shorter road than std::to_chars; the text must be
// the same as the shortest form's, around and past the edges of that road.
TEST(NumberTest, WholeNumbersFormatAsTheShortestForm) {
  auto shortest = [](double v) {
    char buf[32];
    auto [p, ec] = std::to_chars(buf, buf + sizeof buf, v);
    std::string s(buf, p);
    if (s.find_first_of(".eEn") == std::string::npos) s += ".0";
    return s;
  };
  for (int i = -100001; i <= 100001; ++i) {
    ASSERT_EQ(FormatDouble(i), shortest(i)) << i;
  }
  for (double v : {0.0, -0.0, 99999.5, -99999.5, 1e5, 1e15, 0.5, -1e-300}) {
    EXPECT_EQ(FormatDouble(v), shortest(v)) << v;
  }
  EXPECT_EQ(FormatDouble(-0.0), "-0.0");
  EXPECT_EQ(FormatDouble(100000), "1e+05");
}

}  // namespace
}  // namespace lmt::dxf

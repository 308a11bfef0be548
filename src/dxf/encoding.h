// Text encoding of string values.
//
// From 2007 (AC1021) files are UTF-8. Up to 2004 string bytes are in the
// $DWGCODEPAGE code page (ANSI_1252 when missing or unknown; ANSI_1251 for
// Cyrillic), and characters outside it are written as \U+XXXX. Readers
// decode \U+XXXX in every version. Only the two code pages our users need
// are built in; others are treated as ANSI_1252.
#ifndef LMT_DXF_ENCODING_H_
#define LMT_DXF_ENCODING_H_

#include <string>
#include <string_view>

namespace lmt::dxf {

class Document;

enum class CodePage { kUtf8, kAnsi1251, kAnsi1252 };

// The encoding of `doc`'s string values, from $ACADVER and $DWGCODEPAGE.
CodePage CodePageOf(const Document& doc);
// "ANSI_1251" -> kAnsi1251; anything else but UTF-8 -> kAnsi1252.
CodePage CodePageFromName(std::string_view dwgcodepage);

// Raw file text -> UTF-8, with caret forms ("^J", "^ ") and \U+XXXX escapes
// resolved (a surrogate pair gives the one character). Bytes that are not
// valid in the code page become U+FFFD; malformed UTF-8 is kept as is.
std::string DecodeText(std::string_view raw, CodePage cp);
// UTF-8 -> file text, so that DecodeText gives `utf8` back. For the ANSI
// pages, characters outside the page are written as \U+XXXX (upper-case
// hex), beyond U+FFFF as their UTF-16 surrogate pair; control characters
// and carets take the caret form in every page.
std::string EncodeText(std::string_view utf8, CodePage cp);

// True when a \U+XXXX escape (one character) starts at s[i].
bool IsUnicodeEscape(std::string_view s, size_t i);

}  // namespace lmt::dxf

#endif  // LMT_DXF_ENCODING_H_

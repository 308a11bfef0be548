// Wild-card matching as CAD selection filters and name tests use it,
// without regard to case:
//   *  any sequence (also empty)     ?  any one character
//   #  one digit                     @  one letter
//   .  one character that is neither letter nor digit
//   ~  (first) the pattern must NOT match
//   [...]  one of the characters, ranges a-z allowed; [~...] none of them
//   `  the next character literally (",`*U*" finds names starting "*U")
//   ,  separates alternative patterns
// Letters are ASCII; other bytes (UTF-8 text) compare exactly.
#ifndef LMT_DXFHOST_WILDCARD_H_
#define LMT_DXFHOST_WILDCARD_H_

#include <string_view>

namespace lmt::dxfhost {

bool WildcardMatch(std::string_view text, std::string_view pattern);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_WILDCARD_H_

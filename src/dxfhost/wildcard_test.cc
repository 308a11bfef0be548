#include "dxfhost/wildcard.h"

#include <gtest/gtest.h>

namespace lmt::dxfhost {
namespace {

struct Case {
  const char* text;
  const char* pattern;
  bool match;
};

TEST(WildcardTest, MatchesLikeSelectionFilters) {
  const Case kCases[] = {
      {"FRAME_A3", "FRAME_A3", true},
      {"frame_a3", "FRAME_A3", true},  // case does not matter
      {"FRAME_A3", "FRAME_A4", false},
      {"FRAME_A3", "FRAME*", true},
      {"FRAME", "FRAME*", true},  // * may be empty
      {"FRAME_A3", "*A?", true},
      {"FRAME_A3", "FRAME_A#", true},
      {"FRAME_AX", "FRAME_A#", false},
      {"A3", "@#", true},
      {"33", "@#", false},
      {"A_3", "A.3", true},  // . is neither letter nor digit
      {"AB3", "A.3", false},
      {"FRAME_A3", "~FRAME*", false},
      {"TITLE", "~FRAME*", true},
      {"A3", "[AB]3", true},
      {"C3", "[A-B]3", false},
      {"C3", "[~AB]3", true},
      // The back-quote takes the next character literally: ",`*U*" is the
      // empty name or any name that starts with "*U".
      {"*U16", "FRAME_A3,`*U*", true},
      {"FRAME_A3", "FRAME_A3,`*U*", true},
      {"XU16", "`*U*", false},
      {"A,B", "A`,B", true},
      {"LWPOLYLINE", "LINE,LWPOLYLINE", true},
      {"POLYLINE", "LINE,LWPOLYLINE", false},
      {"", "*", true},
      {"Лист", "Лист", true},  // UTF-8 compares exactly
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(WildcardMatch(c.text, c.pattern), c.match)
        << c.text << " vs " << c.pattern;
  }
}

}  // namespace
}  // namespace lmt::dxfhost

#include "dxfhost/wildcard.h"

#include <cctype>
#include <string>
#include <vector>

namespace lmt::dxfhost {
namespace {

char Lower(char c) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

// Matches one alternative (no top-level commas) at text[ti..], pattern[pi..].
bool MatchOne(std::string_view t, size_t ti, std::string_view p, size_t pi) {
  while (pi < p.size()) {
    char c = p[pi];
    if (c == '*') {
      while (pi < p.size() && p[pi] == '*') ++pi;
      if (pi == p.size()) return true;
      for (size_t k = ti; k <= t.size(); ++k) {
        if (MatchOne(t, k, p, pi)) return true;
      }
      return false;
    }
    if (ti >= t.size()) return false;
    char tc = t[ti];
    unsigned char utc = static_cast<unsigned char>(tc);
    switch (c) {
      case '?':
        break;
      case '#':
        if (!std::isdigit(utc)) return false;
        break;
      case '@':
        if (!std::isalpha(utc)) return false;
        break;
      case '.':
        if (std::isalnum(utc)) return false;
        break;
      case '`':
        if (pi + 1 < p.size()) ++pi;
        if (Lower(p[pi]) != Lower(tc)) return false;
        break;
      case '[': {
        size_t end = pi + 1;
        bool negate = end < p.size() && p[end] == '~';
        if (negate) ++end;
        size_t first = end;
        // A ']' right after '[' or '[~' is a member, not the end.
        while (end < p.size() && (p[end] != ']' || end == first)) ++end;
        if (end >= p.size()) {  // no closing bracket: literal '['
          if (tc != '[') return false;
          break;
        }
        bool found = false;
        for (size_t k = first; k < end; ++k) {
          if (k + 2 < end && p[k + 1] == '-') {
            if (Lower(tc) >= Lower(p[k]) && Lower(tc) <= Lower(p[k + 2])) {
              found = true;
            }
            k += 2;
          } else if (Lower(p[k]) == Lower(tc)) {
            found = true;
          }
        }
        if (found == negate) return false;
        pi = end;
        break;
      }
      default:
        if (Lower(c) != Lower(tc)) return false;
    }
    ++pi;
    ++ti;
  }
  return ti == t.size();
}

}  // namespace

bool WildcardMatch(std::string_view text, std::string_view pattern) {
  // Split at commas that are neither escaped nor inside brackets.
  std::vector<std::string_view> alternatives;
  size_t start = 0;
  bool in_bracket = false;
  for (size_t i = 0; i < pattern.size(); ++i) {
    char c = pattern[i];
    if (c == '`') {
      ++i;
    } else if (c == '[') {
      in_bracket = true;
    } else if (c == ']') {
      in_bracket = false;
    } else if (c == ',' && !in_bracket) {
      alternatives.push_back(pattern.substr(start, i - start));
      start = i + 1;
    }
  }
  alternatives.push_back(pattern.substr(start));
  for (std::string_view alt : alternatives) {
    bool negate = !alt.empty() && alt[0] == '~';
    if (negate) alt.remove_prefix(1);
    if (MatchOne(text, 0, alt, 0) != negate) return true;
  }
  return false;
}

}  // namespace lmt::dxfhost

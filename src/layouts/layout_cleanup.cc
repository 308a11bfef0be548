#include "layouts/layout_cleanup.h"

#include <algorithm>

#include "layouts/sheet_texts.h"

namespace lmt::layouts {

std::vector<std::string> LayoutsToDelete(
    const std::vector<std::string>& before, std::string_view pattern,
    const std::vector<std::string>& created) {
  std::vector<std::string> doomed;
  if (created.empty()) return doomed;
  auto same = [](std::string_view name) {
    return [name](const std::string& other) {
      return NamesEqualNoCase(name, other);
    };
  };
  for (const std::string& name : before) {
    if (NamesEqualNoCase(name, kModelLayout)) continue;
    if (!pattern.empty() && NamesEqualNoCase(name, pattern)) continue;
    if (std::any_of(created.begin(), created.end(), same(name))) continue;
    if (std::any_of(doomed.begin(), doomed.end(), same(name))) continue;
    doomed.push_back(name);
  }
  return doomed;
}

}  // namespace lmt::layouts

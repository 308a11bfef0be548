#include "host/selection_set.h"

#include <algorithm>

#include "core/text_case.h"
#include "host/entity.h"

namespace lmt::host {

Status SelectionSet::DoForEachItemNamed(
    std::span<const std::string_view> names,
    const std::function<bool(const EntityPtr&, int32_t)>& visit) const {
  int32_t position = 0;
  return DoForEachItem([&](const EntityPtr& item) {
    const int32_t at = position++;
    Result<std::string> name = item->ObjectName();
    if (!name.ok() ||
        std::none_of(names.begin(), names.end(), [&](std::string_view n) {
          return core::EqualsIgnoreCase(*name, n);
        })) {
      return true;
    }
    return visit(item, at);
  });
}

}  // namespace lmt::host

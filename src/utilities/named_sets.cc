#include "utilities/named_sets.h"

#include <string>
#include <vector>

#include "core/text_case.h"
#include "host/object.h"

namespace lmt::utilities {

Status DeleteSelectionSet(host::Document& document, std::string_view name) {
  Result<host::SelectionSetsPtr> sets = document.SelectionSets();
  if (!sets.ok()) return sets.status();
  Result<std::vector<host::SelectionSetPtr>> items = (*sets)->Items();
  if (!items.ok()) return items.status();
  Status first_failure;
  for (const host::SelectionSetPtr& set : *items) {
    Result<std::string> set_name = set->Name();
    if (!set_name.ok()) {
      if (first_failure.ok()) first_failure = set_name.status();
      continue;
    }
    if (!core::EqualsIgnoreCase(*set_name, name)) continue;
    if (Status s = set->Delete(); !s.ok() && first_failure.ok()) {
      first_failure = s;
    }
  }
  return first_failure;
}

Result<host::SelectionSetPtr> RecreateSelectionSet(host::Document& document,
                                                   std::string_view name) {
  // A set that could not be deleted makes Add refuse the name, which is the
  // failure the caller sees.
  DeleteSelectionSet(document, name).IgnoreError();
  Result<host::SelectionSetsPtr> sets = document.SelectionSets();
  if (!sets.ok()) return sets.status();
  return (*sets)->Add(name);
}

host::SelectionFilter ViewportFilter() {
  host::SelectionFilter filter;
  filter.Add(0, std::string("VIEWPORT"));
  return filter;
}

}  // namespace lmt::utilities

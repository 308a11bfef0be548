#include "batch/attribute_rules.h"

#include "core/text_case.h"

namespace lmt::batch {

LayoutScope LayoutScopeFromIndex(int index) {
  switch (index) {
    case 1:
      return LayoutScope::kModelOnly;
    case 2:
      return LayoutScope::kLayoutsOnly;
    case 3:
      return LayoutScope::kNamedTab;
    default:
      return LayoutScope::kAll;
  }
}

bool LayoutInScope(std::string_view layout_name, const ScopeOptions& scope) {
  bool is_model = core::EqualsIgnoreCase(layout_name, kModelLayoutName);
  switch (scope.layouts) {
    case LayoutScope::kAll:
      return true;
    case LayoutScope::kModelOnly:
      return is_model;
    case LayoutScope::kLayoutsOnly:
      return !is_model;
    case LayoutScope::kNamedTab:
      return core::EqualsIgnoreCase(layout_name, scope.tab_name);
  }
  return true;
}

bool BlockInScope(std::string_view effective_name, const ScopeOptions& scope) {
  return !scope.only_named_block ||
         core::EqualsIgnoreCase(effective_name, scope.block_name);
}

std::optional<std::string> RewriteAttribute(const AttributeGroups& groups,
                                            std::string_view tag,
                                            std::string_view value) {
  std::optional<std::string> out;
  for (const AttributeGroup& group : groups) {
    if (!group.enabled || !core::EqualsIgnoreCase(group.tag, tag)) continue;
    out = ApplyValueRule(group.rule, out ? std::string_view(*out) : value);
  }
  return out;
}

bool ProcessedDefinitions::Contains(std::string_view name) const {
  return names_.find(core::FoldText(name)) != names_.end();
}

bool ProcessedDefinitions::Add(std::string_view name) {
  return names_.insert(core::FoldText(name)).second;
}

}  // namespace lmt::batch

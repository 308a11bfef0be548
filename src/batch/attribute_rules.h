// The decisions of Replace attributes, free of the object model: which
// layouts and block references a run visits, how an attribute's value is
// rewritten by the three groups of the window, and which block definitions
// have already been visited in one drawing. The walk over the host's
// layouts, references and definitions calls these.
#ifndef LMT_BATCH_ATTRIBUTE_RULES_H_
#define LMT_BATCH_ATTRIBUTE_RULES_H_

#include <array>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "batch/value_rule.h"

namespace lmt::batch {

// `Option_NameLayouts(0..3)`.
enum class LayoutScope : int {
  kAll = 0,          // "All Tabs"
  kModelOnly = 1,    // "Only in Model"
  kLayoutsOnly = 2,  // "Only in Layouts"
  kNamedTab = 3,     // "Only in the tab:"
};

// The window's option index as a scope; outside 0..3 means all tabs.
LayoutScope LayoutScopeFromIndex(int index);

struct ScopeOptions {
  LayoutScope layouts = LayoutScope::kAll;
  std::string tab_name;           // `UniText_NameLayouts`, for kNamedTab
  bool only_named_block = false;  // `Option_NameBlock(1)`
  std::string block_name;         // `UniText_NameBlock`
  bool nested_blocks = false;     // `Check_BlockVnutriBloka`
};

// The model layout's name; layout names compare without regard to case.
inline constexpr std::string_view kModelLayoutName = "Model";

// Whether the run walks the layout called `layout_name`. Scope 3 with a
// name no layout has visits nothing.
bool LayoutInScope(std::string_view layout_name, const ScopeOptions& scope);

// Whether a reference with this `EffectiveName` has its attributes
// rewritten (the nested walk into its definition is decided apart).
bool BlockInScope(std::string_view effective_name, const ScopeOptions& scope);

// One attribute group of the window (k = 1, 2, 3).
struct AttributeGroup {
  bool enabled = false;  // `Check_Atribut`k
  std::string tag;       // `UniText_NameAtribut`k
  ValueRule rule;
};

using AttributeGroups = std::array<AttributeGroup, 3>;

// The value to write into an attribute tagged `tag` whose value is `value`:
// every enabled group whose tag equals `tag` (case-insensitive) rewrites it
// in turn, group 1 first, each from what the one before wrote. nullopt when
// no group applies; otherwise the value is written even when unchanged.
std::optional<std::string> RewriteAttribute(const AttributeGroups& groups,
                                            std::string_view tag,
                                            std::string_view value);

// The block definitions a run has walked in one drawing, so that each is
// walked at most once however many references use it. Names compare
// without regard to case, as the host's block names do.
class ProcessedDefinitions {
 public:
  bool Contains(std::string_view name) const;
  // Records `name`; false when it was recorded already.
  bool Add(std::string_view name);
  void Clear() { names_.clear(); }

 private:
  std::set<std::string, std::less<>> names_;  // folded names
};

}  // namespace lmt::batch

#endif  // LMT_BATCH_ATTRIBUTE_RULES_H_

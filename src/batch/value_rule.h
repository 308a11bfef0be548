// One group of the Replace windows: how a value (an attribute's text or a
// text's content) is rewritten. Mode 0 sets a new value, mode 1 replaces
// every occurrence of a search text without regard to case, mode 2 keeps
// the value; then the optional prefix and suffix are added, in that order.
#ifndef LMT_BATCH_VALUE_RULE_H_
#define LMT_BATCH_VALUE_RULE_H_

#include <string>
#include <string_view>

namespace lmt::batch {

// The option index of `Option_ValueAtribut` / `Option_ValueTEXT`.
enum class ValueMode : int {
  kNewValue = 0,
  kReplace = 1,
  kKeep = 2,
};

// The window's option index as a mode; an index outside 0..2 (no option
// selected) keeps the value.
ValueMode ValueModeFromIndex(int index);

struct ValueRule {
  ValueMode mode = ValueMode::kNewValue;
  std::string new_value;    // mode 0
  std::string search;       // mode 1; empty changes nothing
  std::string replacement;  // mode 1
  bool use_prefix = false;
  std::string prefix;
  bool use_suffix = false;
  std::string suffix;
};

// The rewritten value of a plain text.
std::string ApplyValueRule(const ValueRule& rule, std::string_view value);

}  // namespace lmt::batch

#endif  // LMT_BATCH_VALUE_RULE_H_

#include "batch/value_rule.h"

#include "core/text_case.h"

namespace lmt::batch {

ValueMode ValueModeFromIndex(int index) {
  switch (index) {
    case 0:
      return ValueMode::kNewValue;
    case 1:
      return ValueMode::kReplace;
    default:
      return ValueMode::kKeep;
  }
}

std::string ApplyValueRule(const ValueRule& rule, std::string_view value) {
  std::string out;
  switch (rule.mode) {
    case ValueMode::kNewValue:
      out = rule.new_value;
      break;
    case ValueMode::kReplace:
      out = core::ReplaceIgnoreCase(value, rule.search, rule.replacement);
      break;
    case ValueMode::kKeep:
      out = std::string(value);
      break;
  }
  if (rule.use_prefix) out = rule.prefix + out;
  if (rule.use_suffix) out += rule.suffix;
  return out;
}

}  // namespace lmt::batch

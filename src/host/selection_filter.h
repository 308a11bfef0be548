// A selection filter as the CAD object model takes it: two parallel arrays,
// 16-bit group codes and variant values. Group code -4 carries the grouping
// operators ("<OR", "<AND", "AND>", "OR>") and the comparisons (">=", "<=")
// that apply to the next pair.
#ifndef LMT_HOST_SELECTION_FILTER_H_
#define LMT_HOST_SELECTION_FILTER_H_

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace lmt::host {

// The variant kinds a filter value travels as (VT_I2, VT_I4, VT_R8, VT_BSTR).
using FilterValue = std::variant<int16_t, int32_t, double, std::string>;

struct SelectionFilter {
  std::vector<int16_t> codes;
  std::vector<FilterValue> values;

  void Add(int16_t code, FilterValue value) {
    codes.push_back(code);
    values.push_back(std::move(value));
  }
  size_t size() const { return codes.size(); }
  bool empty() const { return codes.empty(); }
  bool operator==(const SelectionFilter&) const = default;
};

}  // namespace lmt::host

#endif  // LMT_HOST_SELECTION_FILTER_H_

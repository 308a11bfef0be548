// Selection filters (host::SelectionFilter) evaluated against DXF entities.
//
// The pairs at the top level must all hold. Group code -4 carries the
// grouping operators "<AND" "AND>", "<OR" "OR>", "<NOT" "NOT>" (one
// operand), "<XOR" "XOR>" (two) and the comparisons "=", "!=", "/=", "<>",
// "<", "<=", ">", ">=", "*" that apply to the next pair. Text codes (0 type,
// 2 name, 6 linetype, 7 style, 8 layer, 410 layout, ...) match with
// wildcards (wildcard.h); number codes compare as numbers (62 also takes
// "BYLAYER"/"BYBLOCK" or a number as text). Codes an entity lacks take the
// CAD defaults: 6 "BYLAYER", 8 "0", 62 256, 370 -1, 67 0; 410 is "Model" for
// model space and the layout's name on a layout.
#ifndef LMT_DXFHOST_FILTER_H_
#define LMT_DXFHOST_FILTER_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "dxf/entity.h"
#include "dxfhost/drawing.h"
#include "host/selection_filter.h"

namespace lmt::dxfhost {

class CompiledFilter {
 public:
  // kInvalidArgument for unbalanced groups, a comparison without an operand
  // or an unknown operator.
  static Result<CompiledFilter> Compile(const host::SelectionFilter& filter);

  // `space` is the entity's layout name ("Model", a layout, "" in a block).
  // Text values compare as UTF-8, decoded from the file text of `d`.
  bool Matches(const Drawing& d, const dxf::Entity& e,
               const std::string& space) const;

  // False when no entity of type `type` (as the file has it) can match:
  // the filter names one type, without wildcards, among the pairs that must
  // all hold. True for every type when it does not.
  bool AdmitsType(std::string_view type) const;
  // Whether AdmitsType rules any type out.
  bool NamesOneType() const;

  struct Node;

 private:
  std::shared_ptr<const Node> root_;
};

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_FILTER_H_

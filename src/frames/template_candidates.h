// The objects in model space that could serve as the frame template, grouped
// as a user thinks of them: closed four-corner polylines by layer and size,
// block references by block name (only blocks that hold a four-corner
// polyline), external references by name. Each group has a count, the
// frame's size, and one member's handle to pick as the template. This is
// what lets someone who has never seen a handle choose a template.
//
// Host calls that fail skip the object they concern; a model space the host
// will not hand out is the only failure returned.
#ifndef LMT_FRAMES_TEMPLATE_CANDIDATES_H_
#define LMT_FRAMES_TEMPLATE_CANDIDATES_H_

#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/document.h"

namespace lmt::frames {

struct CandidateGroup {
  std::string kind;        // kKindPolyline, kKindBlock or kKindXRef
  std::string block_name;  // references only (the effective name)
  std::string layer;       // polylines only: the group's layer
  double width = 0;        // the frame's first side, in drawing units
  double height = 0;       // its second side
  int count = 0;
  std::string handle;  // the first member in model-space order
};

// Model space's candidates, the largest group first (ties in model-space
// order of their first member).
Result<std::vector<CandidateGroup>> FindTemplateCandidates(
    host::Database& database);

// How a template is named on the command line besides a handle:
// "block:NAME", "layer:NAME" or "auto".
struct TemplateQuery {
  enum class Kind { kHandle, kBlock, kLayer, kAuto } kind = Kind::kHandle;
  std::string value;  // the handle, block name or layer name
};
TemplateQuery ParseTemplateQuery(std::string_view text);

// The group a query names: the block's references (or the external
// reference of that name), the polylines on the layer (the largest group
// there), or for kAuto the largest group overall. NotFound when nothing
// matches, InvalidArgument when kAuto meets two largest groups of equal
// size (the message says so; the caller lists the groups).
// REQUIRES: query.kind != kHandle.
Result<CandidateGroup> ChooseCandidate(
    const std::vector<CandidateGroup>& groups, const TemplateQuery& query);

}  // namespace lmt::frames

#endif  // LMT_FRAMES_TEMPLATE_CANDIDATES_H_

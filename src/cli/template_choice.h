// Choosing the frame template without a handle: the candidate groups of
// model space as the `templates` command shows them, and the resolution of
// `--template block:NAME`, `layer:NAME` and `auto` into the handle of one
// member of the chosen group. A template chosen by name also switches on the
// filter criterion that keeps the search to that group (the block name, or
// the layer); a --set of OknoFilter given by the user still wins, as after
// any capture.
#ifndef LMT_CLI_TEMPLATE_CHOICE_H_
#define LMT_CLI_TEMPLATE_CHOICE_H_

#include <ostream>
#include <string>
#include <vector>

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "frames/template_candidates.h"

namespace lmt::cli {

// What to pass to --template to choose `group`: "block:NAME" for references,
// "layer:NAME" for the largest polyline group of its layer, else the handle.
std::string TemplateArgument(const std::vector<frames::CandidateGroup>& groups,
                             const frames::CandidateGroup& group);

// One line per group under a heading, then a suggested command line.
void WriteCandidatesText(const std::vector<frames::CandidateGroup>& groups,
                         const std::string& drawing, std::ostream& out);
// {"candidates": [{"kind", "block", "layer", "width", "height", "count",
//  "handle", "template"}...], "suggested": "..."}; sizes as numbers.
void WriteCandidatesJson(const std::vector<frames::CandidateGroup>& groups,
                         const std::string& drawing, std::ostream& out);

// The handle --template names: the option itself when it is a handle, else
// a member of the group it names, with that group's filter criterion
// switched on. Refusals (nothing matches, `auto` between equal groups) are
// written to the error stream with the groups, and returned as the status.
Result<std::string> ResolveTemplateHandle(CommandContext& context,
                                          EmbeddedSession& embedded);

}  // namespace lmt::cli

#endif  // LMT_CLI_TEMPLATE_CHOICE_H_

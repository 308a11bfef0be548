#include "cli/template_choice.h"

#include <charconv>

#include "cli/frame_output.h"
#include "core/text_case.h"
#include "frames/frame_template.h"

namespace lmt::cli {
namespace {

using frames::CandidateGroup;
using frames::TemplateQuery;

// The shortest text that reads back as the same number.
std::string Number(double value) {
  char buffer[32];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return ec == std::errc() ? std::string(buffer, end) : "0";
}

bool IsReference(const CandidateGroup& g) { return !g.block_name.empty(); }

std::string Suggestion(const std::vector<CandidateGroup>& groups,
                       const std::string& drawing) {
  return "layomat create-layouts " + drawing + " --template " +
         TemplateArgument(groups, groups.front()) + " -o OUT.dxf";
}

// The criterion that keeps the search to the chosen group.
void NarrowFilter(core::OknoFilter& filter, const CandidateGroup& g) {
  if (IsReference(g)) {
    filter.check_tolko_name_block.set_checked(true);
  } else {
    filter.check_tolko_v_sloe.set_checked(true);
  }
}

}  // namespace

std::string TemplateArgument(const std::vector<CandidateGroup>& groups,
                             const CandidateGroup& group) {
  if (IsReference(group)) return "block:" + group.block_name;
  for (const CandidateGroup& g : groups) {
    if (!IsReference(g) && core::EqualsIgnoreCase(g.layer, group.layer)) {
      // Groups come largest first: the first of the layer is what
      // "layer:NAME" chooses.
      return &g == &group ? "layer:" + group.layer : group.handle;
    }
  }
  return group.handle;
}

void WriteCandidatesText(const std::vector<CandidateGroup>& groups,
                         const std::string& drawing, std::ostream& out) {
  if (groups.empty()) {
    out << "no frame candidates in model space\n";
    return;
  }
  out << "kind\tname\tlayer\twidth\theight\tcount\thandle\ttemplate\n";
  for (const CandidateGroup& g : groups) {
    out << g.kind << "\t" << g.block_name << "\t" << g.layer << "\t"
        << Number(g.width) << "\t" << Number(g.height) << "\t" << g.count
        << "\t" << g.handle << "\t" << TemplateArgument(groups, g) << "\n";
  }
  out << "suggested: " << Suggestion(groups, drawing) << "\n";
}

void WriteCandidatesJson(const std::vector<CandidateGroup>& groups,
                         const std::string& drawing, std::ostream& out) {
  out << "{\"candidates\": [";
  for (size_t i = 0; i < groups.size(); ++i) {
    const CandidateGroup& g = groups[i];
    out << (i ? ",\n  " : "\n  ") << "{\"kind\": " << JsonString(g.kind)
        << ", \"block\": " << JsonString(g.block_name)
        << ", \"layer\": " << JsonString(g.layer)
        << ", \"width\": " << Number(g.width)
        << ", \"height\": " << Number(g.height) << ", \"count\": " << g.count
        << ", \"handle\": " << JsonString(g.handle)
        << ", \"template\": " << JsonString(TemplateArgument(groups, g)) << "}";
  }
  out << (groups.empty() ? "]" : "\n]") << ", \"suggested\": "
      << (groups.empty() ? "null" : JsonString(Suggestion(groups, drawing)))
      << "}\n";
}

Result<std::string> ResolveTemplateHandle(CommandContext& context,
                                          EmbeddedSession& embedded) {
  const TemplateQuery query =
      frames::ParseTemplateQuery(context.options.template_handle.value_or(""));
  if (query.kind == TemplateQuery::Kind::kHandle) return query.value;
  Result<std::vector<CandidateGroup>> groups =
      frames::FindTemplateCandidates(*embedded.document());
  if (!groups.ok()) {
    context.err << "layomat: " << groups.status().message() << "\n";
    return groups.status();
  }
  Result<CandidateGroup> chosen = frames::ChooseCandidate(*groups, query);
  if (!chosen.ok()) {
    context.err << "layomat: --template " << *context.options.template_handle
                << ": " << chosen.status().message() << "\n";
    WriteCandidatesText(*groups, context.options.args.front(), context.err);
    return chosen.status();
  }
  NarrowFilter(context.addin.windows().okno_filter, *chosen);
  return chosen->handle;
}

}  // namespace lmt::cli

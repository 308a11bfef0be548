// What `layomat create-layouts` tells before it makes anything: the plan
// of the run (layout names, frames, viewports) from the same code the run
// carries out (layouts::PlanLayouts), its warnings, and --dry-run, which
// prints the plan and writes no file at all.
#ifndef LMT_CLI_CREATE_LAYOUTS_PLAN_H_
#define LMT_CLI_CREATE_LAYOUTS_PLAN_H_

#include <string>
#include <vector>

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "frames/frame_table.h"
#include "layouts/layout_creation.h"

namespace lmt::cli {

// The layout names of the plan that the run is expected to make, in order:
// a name used by an earlier row, taken by the drawing or refused as a
// layout name is left out, as the run skips its row.
std::vector<std::string> ExpectedLayouts(const layouts::CreationPlan& plan);

// Every warning of the plan (layouts::CheckPlan, then a drawing with more
// than kMaxLayoutsPerDrawing new layouts when split `per_file` to a file,
// 0 for one file), one sentence each.
std::vector<std::string> PlanWarnings(const layouts::CreationPlan& plan,
                                      const frames::FrameTable& table,
                                      int per_file);

// Plans the run in `embedded` over `table`, writes its warnings to
// standard error, "warning: " and one line each (unless --quiet), and
// returns them. Nothing when the session cannot be connected (the run then
// says why).
std::vector<std::string> WarnAboutPlan(CommandContext& context,
                                       EmbeddedSession& embedded,
                                       const frames::FrameTable& table,
                                       int per_file);

// create-layouts --dry-run [--json]: the frame search and the plan, printed
// as text (one "plan" line per layout, with the page set-up's paper when it
// is asked for) or as JSON, the warnings on
// standard error; no file is written, -o only names the split files the
// plan would give. Exit 1 when the run would be refused (no frames, the
// pattern layout missing). With --register, the plan of the sheets the
// register lists (cli/register_run.h).
int RunCreateLayoutsDryRun(CommandContext& context);

}  // namespace lmt::cli

#endif  // LMT_CLI_CREATE_LAYOUTS_PLAN_H_

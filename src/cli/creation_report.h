// What `create-layouts` tells its user: the layouts made (each with the
// frame it shows: kind, model-space centre, viewport scale and twist), the
// rows skipped with the host's refusal, the other refused steps passed
// over, the earlier layouts deleted, and the totals; as a RunReport for
// --json and as the command's text lines.
#ifndef LMT_CLI_CREATION_REPORT_H_
#define LMT_CLI_CREATION_REPORT_H_

#include <ostream>
#include <string>
#include <vector>

#include "cli/cli_options.h"
#include "cli/run_report.h"
#include "frames/frame_table.h"
#include "host/document.h"
#include "layouts/layout_creation.h"

namespace lmt::cli {

// Items "layout" (made, with field "frame": {"kind", "centre": [x, y],
// "scale", "twist"}; skipped, with the reason; "deleted"), "step" (skipped:
// a refused call passed over, named by the layout or layer it concerned,
// the reason naming the step as AddSkips does), totals "rows", "made",
// "skipped" (rows), "refused" (steps), "deleted", "viewports", and `outputs`
// (OUT, or the files of a split run). The
// viewport of each made layout is read back from `document`; a value the
// host cannot give is null. Without `with_frames` the layouts have neither
// field "frame" nor the detail line: only --json and --verbose show them,
// and reading them back costs 8 us a layout.
RunReport CreationRunReport(const layouts::CreationReport& report,
                            const frames::FrameTable& table,
                            const host::Document& document,
                            const std::vector<std::string>& outputs,
                            bool with_frames);

// The text lines: "layout NAME", "skipped NAME REASON", "deleted NAME",
// "file PATH N layouts" for each file item of a split run (tab separated)
// and the count line, which says how many host calls were refused when any
// were (the command writes those to standard error with WriteSkip).
// --quiet leaves the count line only; --verbose adds below each layout
// made the frame it shows.
void WriteCreationText(const RunReport& report, const CliOptions& options,
                       std::ostream& out);

}  // namespace lmt::cli

#endif  // LMT_CLI_CREATION_REPORT_H_

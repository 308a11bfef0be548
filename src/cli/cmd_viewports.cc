// layomat viewports on|off DRAWING -o OUT: the Start of the viewports window
// (OknoFunctionOnOffViewport) with its check box ticked and the direction of
// the first argument, on DRAWING in the embedded host; saves OUT through the
// command line's one save path (EmbeddedSession::SaveOutput). --json
// reports each viewport switched and each the host refused.
#include <ostream>

#include "cli/embedded_session.h"
#include "cli/registry.h"
#include "cli/run_report.h"
#include "core/text_encoding.h"
#include "core/windows.h"
#include "utilities/viewports_on_off.h"

namespace lmt::cli {
namespace {

int RunViewports(CommandContext& context) {
  const CliOptions& options = context.options;
  const bool on = options.args.size() == 2 &&
                  core::EqualsIgnoreAsciiCase(options.args[0], "on");
  const bool off = options.args.size() == 2 &&
                   core::EqualsIgnoreAsciiCase(options.args[0], "off");
  if (!on && !off) {
    context.err << "layomat: viewports expects on or off and DRAWING\n"
                   "Try 'layomat viewports --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[1];
  RunReport report("viewports");
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::OpenToSave(context, drawing, *options.output);
  if (!run.ok()) {
    return FinishReport(context, report,
                        ReportFileError(context, run.status()));
  }

  core::OknoFunctionOnOffViewport& window =
      context.addin.windows().okno_function_on_off_viewport;
  window.check_viewport_on_off.set_checked(true);
  window.option_viewport_on_off.Select(on ? 0 : 1);
  utilities::SwitchReport switched;
  if (const int status = ExitStatusOf(
          utilities::StartViewportsOnOff((*run)->session(), &switched));
      status != kExitOk) {
    return FinishReport(context, report, status);
  }
  Status saved = (*run)->SaveOutput();
  if (!saved.ok()) {
    return FinishReport(context, report, ReportFileError(context, saved));
  }
  for (const std::string& handle : switched.switched_handles) {
    report.Add({"viewport", handle, on ? "on" : "off", "", {}, ""});
  }
  AddSkips(report, "viewport", switched.skips);
  report.SetTotal("selected", switched.selected);
  report.SetTotal("switched", switched.switched);
  report.SetTotal("own", switched.own_viewports);
  report.SetTotal("skipped",
                  static_cast<int64_t>(switched.skips.skips().size()));
  report.AddOutput(*options.output);
  if (options.verbose && !options.json) WriteItemsText(report, context.out);
  return FinishReport(context, report, kExitOk);
}

const CommandRegistration kViewports({
    "viewports",
    "layomat viewports on|off DRAWING -o OUT [options]",
    "switch every viewport of DRAWING on or off (not the layouts' own)",
    &RunViewports,
    kRequiresOutput,
});

}  // namespace
}  // namespace lmt::cli

#include "cli/create_layouts_plan.h"

#include <cmath>
#include <cstdio>
#include <numbers>
#include <optional>
#include <ostream>
#include <set>

#include "cli/frame_output.h"
#include "cli/frame_search_run.h"
#include "cli/register_run.h"
#include "cli/split_output.h"
#include "frames/frame_commands.h"
#include "layouts/plan_checks.h"
#include "layouts/sheet_texts.h"

namespace lmt::cli {
namespace {

// Enough digits for a drawing's coordinates without the noise of the last
// bits of a double.
std::string Number(double value) {
  if (std::abs(value) < 1e-9) value = 0;  // no "-0"
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.10g", value);
  return buffer;
}

// The viewport's twist as a host shows it: degrees in [0, 360).
double TwistDegrees(double radians) {
  double degrees = radians * 180 / std::numbers::pi;
  if (std::abs(degrees - 360) < 1e-9) degrees = 0;
  return degrees;
}

// "polyline", "block" or "xref" from the table's "Typ" cell.
std::string FrameKind(const frames::FrameTable& table, int row) {
  const std::string& typ = table.Cell(row, frames::Column::kTyp);
  if (typ == frames::kTypBlock) return "block";
  if (typ == frames::kTypXRef) return "xref";
  if (typ == frames::kTypPolyline) return "polyline";
  return typ;
}

bool PatternMissing(const layouts::CreationPlan& plan) {
  if (plan.settings.mode != layouts::CreationMode::kPattern) return false;
  for (const std::string& name : plan.existing_layouts) {
    if (layouts::NamesEqualNoCase(name, plan.settings.pattern_layout)) {
      return false;
    }
  }
  return true;
}

// The file each planned layout goes to, by name; empty when not split.
std::vector<std::string> FilesOf(const layouts::CreationPlan& plan,
                                 const CliOptions& options, int per_file) {
  std::vector<std::string> files(plan.frames.size());
  if (per_file == 0 || !options.output) return files;
  const std::vector<std::string> expected = ExpectedLayouts(plan);
  const std::vector<std::vector<std::string>> groups =
      SplitIntoFiles(expected, per_file);
  const std::vector<std::string> names =
      SplitFileNames(*options.output, groups.size());
  size_t next = 0;
  for (size_t i = 0; i < plan.frames.size() && next < expected.size(); ++i) {
    if (plan.frames[i].layout_name != expected[next]) continue;
    files[i] = names[next / static_cast<size_t>(per_file)];
    ++next;
  }
  return files;
}

void WriteText(const layouts::CreationPlan& plan,
               const frames::FrameTable& table,
               const std::vector<std::string>& files, std::ostream& out) {
  for (size_t i = 0; i < plan.frames.size(); ++i) {
    const layouts::FramePlan& frame = plan.frames[i];
    out << "plan\t" << frame.layout_name << "\t" << FrameKind(table, frame.row);
    if (const std::optional<layouts::ViewportPlan>& vp = frame.viewport) {
      out << "\t" << Number(vp->frame_centre.x) << ","
          << Number(vp->frame_centre.y) << "\t" << Number(vp->viewport.width)
          << "x" << Number(vp->viewport.height) << "\t"
          << layouts::ScaleRatioText(vp->scale) << "\t"
          << Number(TwistDegrees(vp->viewport.twist));
    } else {
      out << "\t-\t-\t-\t-";  // a layout without viewport
    }
    if (!files[i].empty()) out << "\t" << files[i];
    out << "\n";
  }
  out << plan.frames.size() << " layouts planned; nothing written (dry run)\n";
}

void WriteJson(const layouts::CreationPlan& plan,
               const frames::FrameTable& table,
               const std::vector<std::string>& files,
               const std::vector<std::string>& warnings, std::ostream& out) {
  out << "{\"dry_run\": true, \"layouts\": [";
  for (size_t i = 0; i < plan.frames.size(); ++i) {
    const layouts::FramePlan& frame = plan.frames[i];
    out << (i == 0 ? "\n" : ",\n") << "  {\"row\": " << frame.row
        << ", \"name\": " << JsonString(frame.layout_name)
        << ", \"kind\": " << JsonString(FrameKind(table, frame.row));
    if (const std::optional<layouts::ViewportPlan>& vp = frame.viewport) {
      out << ", \"centre\": [" << Number(vp->frame_centre.x) << ", "
          << Number(vp->frame_centre.y) << "], \"size\": ["
          << Number(vp->viewport.width) << ", " << Number(vp->viewport.height)
          << "], \"scale\": " << Number(vp->scale) << ", \"scale_text\": "
          << JsonString(layouts::ScaleRatioText(vp->scale))
          << ", \"twist\": " << Number(TwistDegrees(vp->viewport.twist));
    } else {
      out << ", \"centre\": null, \"size\": null, \"scale\": null, "
             "\"scale_text\": null, \"twist\": null";
    }
    if (!files[i].empty()) out << ", \"file\": " << JsonString(files[i]);
    out << "}";
  }
  out << (plan.frames.empty() ? "" : "\n") << "], \"warnings\": [";
  for (size_t i = 0; i < warnings.size(); ++i) {
    out << (i == 0 ? "" : ", ") << JsonString(warnings[i]);
  }
  out << "]}\n";
}

}  // namespace

std::vector<std::string> ExpectedLayouts(const layouts::CreationPlan& plan) {
  std::set<std::string> taken;
  for (const std::string& name : plan.existing_layouts) {
    taken.insert(layouts::FoldedName(name));
  }
  std::vector<std::string> names;
  for (const layouts::FramePlan& frame : plan.frames) {
    if (!layouts::NameProblem(frame.layout_name).empty()) continue;
    if (!taken.insert(layouts::FoldedName(frame.layout_name)).second) continue;
    names.push_back(frame.layout_name);
  }
  return names;
}

std::vector<std::string> PlanWarnings(const layouts::CreationPlan& plan,
                                      const frames::FrameTable& table,
                                      int per_file) {
  std::vector<std::string> warnings =
      layouts::CheckPlan(plan.frames, table, plan.existing_layouts);
  std::string too_many =
      TooManyLayoutsWarning(SplitIntoFiles(ExpectedLayouts(plan), per_file));
  if (!too_many.empty()) warnings.push_back(std::move(too_many));
  return warnings;
}

void WarnAboutPlan(CommandContext& context, EmbeddedSession& embedded,
                   const frames::FrameTable& table, int per_file) {
  if (context.options.quiet) return;  // only errors then
  std::optional<layouts::CreationPlan> plan =
      layouts::PlanLayouts(embedded.session(), table);
  if (!plan) return;
  for (const std::string& warning : PlanWarnings(*plan, table, per_file)) {
    context.err << "warning: " << warning << "\n";
  }
}

int RunCreateLayoutsDryRun(CommandContext& context) {
  const CliOptions& options = context.options;
  Result<int> per_file = SheetsPerFile(options);
  if (!per_file.ok() || options.pdf) {
    context.err << "layomat: "
                << (per_file.ok() ? "--dry-run writes nothing; leave out --pdf"
                                  : per_file.status().message())
                << "\nTry 'layomat create-layouts --help'.\n";
    return kExitUsage;
  }
  const std::string& drawing = options.args[0];
  Result<std::unique_ptr<EmbeddedSession>> run =
      EmbeddedSession::Open(context, drawing);
  if (!run.ok()) return ReportFileError(context, run.status());
  EmbeddedSession& embedded = **run;
  if (Status ready =
          embedded.PrepareForLayouts(context.err, context.options.quiet);
      !ready.ok()) {
    return ReportFileError(context, ready);
  }

  frames::FrameState state;
  frames::FrameCommands commands(embedded.session(), state,
                                 MainWindowNamer(context.addin.windows()));
  if (CaptureAndSearch(context, embedded, commands) != frames::Outcome::kDone) {
    return kExitRefused;
  }
  if (options.register_file) {  // the plan of the sheets it lists
    Result<Register> read = ReadRegister(*options.register_file);
    if (!read.ok()) return ReportRegisterError(context, read.status());
    MatchRegister(context, *read, state.table);
  }
  std::optional<layouts::CreationPlan> plan =
      layouts::PlanLayouts(embedded.session(), state.table);
  if (!plan) return kExitRefused;
  const std::vector<std::string> warnings =
      PlanWarnings(*plan, state.table, *per_file);
  const std::vector<std::string> files = FilesOf(*plan, options, *per_file);
  if (options.json) {
    WriteJson(*plan, state.table, files, warnings, context.out);
  } else {
    WriteText(*plan, state.table, files, context.out);
  }
  for (const std::string& warning : warnings) {
    context.err << "warning: " << warning << "\n";
  }
  if (PatternMissing(*plan)) {
    context.err << "layomat: the pattern layout \""
                << plan->settings.pattern_layout << "\" is not in " << drawing
                << "; the run would make nothing\n";
    return kExitRefused;
  }
  return kExitOk;
}

}  // namespace lmt::cli

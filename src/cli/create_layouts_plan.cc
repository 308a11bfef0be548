#include "cli/create_layouts_plan.h"

#include <optional>
#include <ostream>
#include <set>

#include "cli/frame_output.h"
#include "cli/frame_search_run.h"
#include "cli/register_run.h"
#include "cli/split_output.h"
#include "frames/frame_commands.h"
#include "layouts/plan_checks.h"
#include "layouts/plan_text.h"
#include "layouts/sheet_insert.h"
#include "layouts/sheet_texts.h"

namespace lmt::cli {
namespace {

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

// What the insertion options would put on each sheet, as the plan lines
// write it; empty when nothing is inserted.
std::string InsertLine(const layouts::CreationPlan& plan) {
  const layouts::InsertSettings& insert = plan.settings.insert;
  if (!insert.insert) return "";
  return "insert\t" + insert.source + "\t" +
         (insert.from_file ? "file" : "block") + "\t" +
         layouts::PlanNumber(insert.x) + "," + layouts::PlanNumber(insert.y) +
         "\t" + layouts::PlanNumber(insert.scale) + "\t" +
         layouts::PlanNumber(insert.rotation) + "\t" + insert.layer;
}

// The page set-up's paper of entry `i`: the device's name, and for a
// paper picked from the frame its sheet, the way it lies, and "larger" when
// the frame matches no sheet and sits on the next one up.
std::string PaperText(const layouts::SheetPaper& paper) {
  if (paper.media.empty()) return "no paper fits";
  std::string text = paper.media;
  if (const std::optional<layouts::PaperChoice>& c = paper.choice) {
    text += " (" + std::string(c->sheet.name) +
            (c->landscape ? " landscape" : " portrait") +
            (c->exact ? "" : ", larger") + ")";
  }
  return text;
}

void WriteText(const layouts::CreationPlan& plan,
               const frames::FrameTable& table,
               const std::vector<std::string>& files, std::ostream& out) {
  const std::vector<layouts::PlanRow> rows = layouts::PlanRows(plan, table);
  for (size_t i = 0; i < rows.size(); ++i) {
    const layouts::PlanRow& row = rows[i];
    out << "plan\t" << row.name << "\t" << row.kind << "\t" << row.centre
        << "\t" << row.size << "\t" << row.scale << "\t" << row.twist;
    if (i < plan.papers.size()) out << "\t" << PaperText(plan.papers[i]);
    if (!files[i].empty()) out << "\t" << files[i];
    out << "\n";
  }
  if (const std::string insert = InsertLine(plan); !insert.empty()) {
    out << insert << "\n";
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
        << ", \"kind\": " << JsonString(layouts::KindOfRow(table, frame.row));
    if (const std::optional<layouts::ViewportPlan>& vp = frame.viewport) {
      out << ", \"centre\": [" << layouts::PlanNumber(vp->frame_centre.x)
          << ", " << layouts::PlanNumber(vp->frame_centre.y) << "], \"size\": ["
          << layouts::PlanNumber(vp->viewport.width) << ", "
          << layouts::PlanNumber(vp->viewport.height)
          << "], \"scale\": " << layouts::PlanNumber(vp->scale)
          << ", \"scale_text\": "
          << JsonString(layouts::ScaleRatioText(vp->scale)) << ", \"twist\": "
          << layouts::PlanNumber(layouts::TwistDegrees(vp->viewport.twist));
    } else {
      out << ", \"centre\": null, \"size\": null, \"scale\": null, "
             "\"scale_text\": null, \"twist\": null";
    }
    if (i < plan.papers.size()) {
      const layouts::SheetPaper& paper = plan.papers[i];
      out << ", \"paper\": "
          << (paper.media.empty() ? "null" : JsonString(paper.media));
      if (const std::optional<layouts::PaperChoice>& c = paper.choice) {
        out << ", \"sheet\": " << JsonString(std::string(c->sheet.name))
            << ", \"landscape\": " << (c->landscape ? "true" : "false")
            << ", \"exact\": " << (c->exact ? "true" : "false");
      }
    }
    if (!files[i].empty()) out << ", \"file\": " << JsonString(files[i]);
    out << "}";
  }
  out << (plan.frames.empty() ? "" : "\n") << "]";
  if (const layouts::InsertSettings& insert = plan.settings.insert;
      insert.insert) {
    out << ", \"insert\": {\"source\": " << JsonString(insert.source)
        << ", \"kind\": " << (insert.from_file ? "\"file\"" : "\"block\"")
        << ", \"at\": [" << layouts::PlanNumber(insert.x) << ", "
        << layouts::PlanNumber(insert.y)
        << "], \"scale\": " << layouts::PlanNumber(insert.scale)
        << ", \"rotation\": " << layouts::PlanNumber(insert.rotation)
        << ", \"layer\": " << JsonString(insert.layer) << "}";
  }
  out << ", \"warnings\": [";
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

std::vector<std::string> WarnAboutPlan(CommandContext& context,
                                       EmbeddedSession& embedded,
                                       const frames::FrameTable& table,
                                       int per_file) {
  // Only errors with --quiet; the plan is still worth its time for --json.
  if (context.options.quiet && !context.options.json) return {};
  std::optional<layouts::CreationPlan> plan =
      layouts::PlanLayouts(embedded.session(), table);
  if (!plan) return {};
  std::vector<std::string> warnings = PlanWarnings(*plan, table, per_file);
  if (!context.options.quiet) {
    for (const std::string& warning : warnings) {
      context.err << "warning: " << warning << "\n";
    }
  }
  return warnings;
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
  OpenedDrawing opened =
      OpenDrawing(context, drawing, nullptr, FrameSearch::kRequired,
                  PrepareForLayouts(context));
  if (opened.exit != kExitOk) return opened.exit;
  EmbeddedSession& embedded = *opened.embedded;
  frames::FrameState& state = opened.state;
  std::vector<std::string> register_warnings;
  if (options.register_file) {  // the plan of the sheets it lists
    Result<layouts::Register> read =
        layouts::ReadRegister(*options.register_file);
    if (!read.ok()) return ReportRegisterError(context, read.status());
    register_warnings = MatchRegister(context, *read, state.table).warnings;
  }
  std::optional<layouts::CreationPlan> plan =
      layouts::PlanLayouts(embedded.session(), state.table);
  if (!plan) return kExitRefused;
  std::vector<std::string> warnings =
      PlanWarnings(*plan, state.table, *per_file);
  if (plan->settings.insert.insert) {
    if (std::optional<std::string> problem = layouts::InsertSourceProblem(
            *embedded.document(), plan->settings.insert)) {
      warnings.push_back("\"" + plan->settings.insert.source +
                         "\" would not be inserted: " + *problem);
    }
  }
  // The JSON document holds every warning; the register's were written to
  // standard error as they were found.
  std::vector<std::string> all_warnings = register_warnings;
  all_warnings.insert(all_warnings.end(), warnings.begin(), warnings.end());
  const std::vector<std::string> files = FilesOf(*plan, options, *per_file);
  if (options.json) {
    WriteJson(*plan, state.table, files, all_warnings, context.out);
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

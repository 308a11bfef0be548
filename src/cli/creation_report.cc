#include "cli/creation_report.h"

#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "cli/frame_output.h"
#include "frames/frame_record.h"
#include "host/block.h"
#include "host/entity.h"
#include "host/layout.h"
#include "layouts/viewport_geometry.h"

namespace lmt::cli {
namespace {

using frames::Column;

constexpr std::string_view kLayout = "layout";
constexpr std::string_view kStep = "step";
constexpr std::string_view kRefused = "refused";

// The frame table row that named the layout `name`; 0 when none did.
// Rows by their layout name, the first of equal names: looked up once per
// layout made, so not searched for each.
std::unordered_map<std::string_view, int> RowsByName(
    const frames::FrameTable& table) {
  std::unordered_map<std::string_view, int> rows;
  for (int row = 1; row < table.row_count(); ++row) {
    rows.try_emplace(table.Cell(row, Column::kLayoutName), row);
  }
  return rows;
}

struct Frame {
  std::string kind;
  std::optional<double> x, y;   // centre of the four corners
  std::optional<double> scale;  // paper units per model unit
  std::optional<double> twist;  // degrees
};

Frame FrameOfRow(const frames::FrameTable& table, int row) {
  Frame frame;
  if (row == 0) return frame;
  const frames::FrameRecord record = frames::ReadRecord(table, row);
  // The dry run's word for the kind, so that both reports read alike.
  frame.kind = std::string(frames::KindWord(record.kind));
  if (record.corners) {
    // The dry run's centre too: one definition for both reports.
    const frames::Point centre = layouts::FrameCentre(*record.corners);
    frame.x = centre.x;
    frame.y = centre.y;
  }
  return frame;
}

// Reads scale and twist from the layout's viewport (not its own paper
// viewport, entity 0 of its block).
void ReadViewport(const host::Document& document, const std::string& name,
                  Frame& frame) {
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return;
  Result<host::LayoutPtr> layout = (*layouts)->Item(name);
  if (!layout.ok()) return;
  Result<host::BlockPtr> block = (*layout)->Block();
  if (!block.ok()) return;
  Result<std::vector<host::EntityPtr>> entities = (*block)->Items();
  if (!entities.ok()) return;
  for (size_t i = 1; i < entities->size(); ++i) {
    host::PViewportPtr viewport = host::As<host::PViewport>((*entities)[i]);
    if (viewport == nullptr) continue;
    if (Result<double> scale = viewport->CustomScale(); scale.ok()) {
      frame.scale = *scale;
    }
    if (Result<double> twist = viewport->TwistAngle(); twist.ok()) {
      // To the nanodegree: radians of -30 degrees read 329.99999999999994.
      frame.twist = std::round(*twist * 180 / std::numbers::pi * 1e9) / 1e9;
    }
    return;
  }
}

std::string Json(const std::optional<double>& value) {
  return value ? JsonNumber(*value) : "null";
}

std::string FrameJson(const Frame& frame) {
  return "{\"kind\": " + JsonString(frame.kind) + ", \"centre\": [" +
         Json(frame.x) + ", " + Json(frame.y) +
         "], \"scale\": " + Json(frame.scale) +
         ", \"twist\": " + Json(frame.twist) + "}";
}

std::string FrameWords(const Frame& frame) {
  std::string words = "frame " + (frame.kind.empty() ? "?" : frame.kind);
  words += ", centre " + (frame.x ? JsonNumber(*frame.x) : "?") + "," +
           (frame.y ? JsonNumber(*frame.y) : "?");
  words += ", scale ";
  words += frame.scale && *frame.scale > 0 ? "1:" + JsonNumber(1 / *frame.scale)
                                           : "?";
  words += ", twist " + (frame.twist ? JsonNumber(*frame.twist) : "?");
  return words;
}

}  // namespace

RunReport CreationRunReport(const layouts::CreationReport& report,
                            const frames::FrameTable& table,
                            const host::Document& document,
                            const std::vector<std::string>& outputs,
                            bool with_frames) {
  RunReport run("create-layouts");
  std::unordered_map<std::string_view, int> rows;
  if (with_frames) rows = RowsByName(table);
  for (const std::string& name : report.created) {
    if (!with_frames) {
      run.Add({std::string(kLayout), name, std::string(kMade), "", {}, ""});
      continue;
    }
    auto row = rows.find(name);
    Frame frame = FrameOfRow(table, row != rows.end() ? row->second : 0);
    ReadViewport(document, name, frame);
    run.Add({std::string(kLayout),
             name,
             std::string(kMade),
             "",
             {{"frame", FrameJson(frame)}},
             FrameWords(frame)});
  }
  host::SkipLog steps;
  for (const host::Skip& skip : report.skips.skips()) {
    if (skip.step != layouts::kSkipLayout) {
      steps.Add(skip.object, skip.step, skip.status);
      continue;
    }
    run.Add({std::string(kLayout),
             skip.object,
             std::string(kSkipped),
             skip.status.message(),
             {},
             ""});
  }
  AddSkips(run, kStep, steps);
  for (const std::string& name : report.deleted) {
    run.Add({std::string(kLayout), name, "deleted", "", {}, ""});
  }
  run.SetTotal("rows", report.rows);
  run.SetTotal("made", static_cast<int64_t>(report.created.size()));
  run.SetTotal("skipped", report.skips.Count(layouts::kSkipLayout));
  run.SetTotal(kRefused, static_cast<int64_t>(steps.skips().size()));
  run.SetTotal("deleted", static_cast<int64_t>(report.deleted.size()));
  run.SetTotal("viewports", report.viewports);
  for (const std::string& out : outputs) run.AddOutput(out);
  return run;
}

void WriteCreationText(const RunReport& report, const CliOptions& options,
                       std::ostream& out) {
  if (!options.quiet) {
    for (const ReportItem& item : report.items()) {
      if (item.kind == "file") {
        out << "file\t" << item.name << "\t" << item.detail << "\n";
      } else if (item.result == kMade) {
        out << "layout\t" << item.name << "\n";
        if (options.verbose) out << "\t" << item.detail << "\n";
      } else if (item.kind == kStep) {
        continue;  // the command writes these to standard error
      } else if (item.result == kSkipped) {
        out << "skipped\t" << item.name << "\t" << item.reason << "\n";
      } else {
        out << item.result << "\t" << item.name << "\n";
      }
    }
  }
  const std::vector<std::string>& files = report.outputs();
  const int64_t skipped = report.Total("skipped");
  out << report.Total("made") << " of " << report.Total("rows")
      << " layouts made";
  if (skipped > 0) out << "; " << skipped << " skipped";
  if (const int64_t refused = report.Total(kRefused); refused > 0) {
    out << "; " << refused << (refused == 1 ? " host call" : " host calls")
        << " refused";
  }
  out << "; " << report.Total("viewports") << " viewports -> ";
  if (files.size() == 1) {
    out << files.front() << "\n";
  } else {
    out << files.size() << " files\n";
  }
}

}  // namespace lmt::cli

#include "utilities/frame_marks.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "host/block.h"
#include "host/entity.h"
#include "host/symbol_tables.h"

namespace lmt::utilities {
namespace {

// The mark layer, made when the drawing has none; a refusal is recorded and
// the marks then go on the current layer rather than not at all.
bool EnsureMarkLayer(host::Document& document, host::SkipLog& skips) {
  const std::string name(kMarkLayer);
  Result<host::LayersPtr> layers = document.Layers();
  if (!layers.ok()) {
    skips.Add(name, "layer", layers.status());
    return false;
  }
  if ((*layers)->Item(kMarkLayer).ok()) return true;
  Result<host::LayerPtr> added = (*layers)->Add(kMarkLayer);
  if (!added.ok()) {
    skips.Add(name, "layer", added.status());
    return false;
  }
  return true;
}

// Layer, colour and mark of one drawn object. Without its mark the object
// could not be removed again, so an object that refuses the mark is erased.
bool Finish(host::Entity& entity, bool on_layer, std::string_view kind,
            const std::string& number, MarkReport& report) {
  if (Status s = entity.SetXData(kMarkApplication, {std::string(kind), number});
      !s.ok()) {
    report.skips.Add(number, "mark", s);
    if (Status erased = entity.Erase(); !erased.ok()) {
      report.skips.Add(number, "erase unmarked", erased);
    }
    return false;
  }
  if (on_layer) {
    if (Status s = entity.SetLayer(kMarkLayer); !s.ok()) {
      report.skips.Add(number, "layer", s);
    }
  }
  if (Status s = entity.SetColor(kMarkColor); !s.ok()) {
    report.skips.Add(number, "colour", s);
  }
  ++report.drawn;
  return true;
}

double Distance(const frames::Point& a, const frames::Point& b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}

void MarkRow(host::Block& model, const frames::FrameTable& table, int row,
             bool on_layer, MarkReport& report) {
  std::optional<frames::Quad> corners = table.Corners(row);
  if (!corners) return;
  std::string number = table.Cell(row, frames::Column::kNumber);
  if (number.empty()) number = std::to_string(row);
  std::vector<double> coordinates;
  for (const frames::Point& p : *corners) {
    coordinates.push_back(p.x);
    coordinates.push_back(p.y);
  }
  Result<host::PolylinePtr> outline = model.AddLightWeightPolyline(coordinates);
  if (!outline.ok()) {
    report.skips.Add(number, "outline", outline.status());
    return;
  }
  if (Status s = (*outline)->SetClosed(true); !s.ok()) {
    report.skips.Add(number, "close outline", s);
  }
  if (!Finish(**outline, on_layer, kMarkOutline, number, report)) return;
  ++report.frames;

  const frames::Quad& q = *corners;
  const double shorter = std::min(Distance(q[0], q[1]), Distance(q[1], q[2]));
  const double height = shorter > 0 ? shorter / 10 : 1;
  host::Point centre{(q[0].x + q[1].x + q[2].x + q[3].x) / 4,
                     (q[0].y + q[1].y + q[2].y + q[3].y) / 4, 0};
  Result<host::TextPtr> text = model.AddText(number, centre, height);
  if (!text.ok()) {
    report.skips.Add(number, "number", text.status());
    return;
  }
  Finish(**text, on_layer, kMarkNumber, number, report);
}

}  // namespace

MarkReport HighlightFrames(host::Document& document,
                           const frames::FrameTable& table) {
  MarkReport report = RemoveHighlighting(document);
  Result<host::BlockPtr> model = document.ModelSpace();
  if (!model.ok()) {
    report.skips.Add("", "model space", model.status());
    return report;
  }
  const bool on_layer = EnsureMarkLayer(document, report.skips);
  // Some programs take extended data only of a registered application;
  // others register it themselves, so a refusal here is told, not fatal.
  if (Status s = document.RegisterApplication(kMarkApplication); !s.ok()) {
    report.skips.Add(std::string(kMarkApplication), "register", s);
  }
  for (int row = 1; row <= table.last_row(); ++row) {
    MarkRow(**model, table, row, on_layer, report);
  }
  return report;
}

MarkReport RemoveHighlighting(host::Document& document) {
  MarkReport report;
  Result<host::BlockPtr> model = document.ModelSpace();
  if (!model.ok()) {
    report.skips.Add("", "model space", model.status());
    return report;
  }
  Result<std::vector<host::EntityPtr>> items = (*model)->Items();
  if (!items.ok()) {
    report.skips.Add("", "walk", items.status());
    return report;
  }
  for (const host::EntityPtr& entity : *items) {
    if (!frames::MayCarryMark(*entity)) continue;
    Result<std::vector<std::string>> mark = entity->GetXData(kMarkApplication);
    if (!mark.ok()) {
      Result<std::string> handle = entity->Handle();
      report.skips.Add(handle.ok() ? *handle : "", "read mark", mark.status());
      continue;
    }
    if (mark->empty()) continue;
    if (Status s = entity->Erase(); !s.ok()) {
      Result<std::string> handle = entity->Handle();
      report.skips.Add(handle.ok() ? *handle : "", "erase", s);
      continue;
    }
    ++report.erased;
  }
  return report;
}

}  // namespace lmt::utilities

#include "dxfhost/session.h"

#include <cmath>
#include <numbers>
#include <string>

namespace lmt::dxfhost {
namespace {

constexpr double kAngleEps = 1e-12;

void WriteUcsHeader(Drawing& d) {
  // Only tiled model space keeps its UCS in the header; a viewport's UCS
  // stays in the session.
  if (!d.IsModel(d.active_block)) return;
  double c = std::cos(d.ucs_angle), s = std::sin(d.ucs_angle);
  auto point = [&](std::string_view var, double x, double y) {
    if (d.doc->HeaderTags(var).empty()) return;
    std::string xs = dxf::FormatDouble(x), ys = dxf::FormatDouble(y);
    dxf::Tag tags[] = {d.doc->MakeTag(10, xs), d.doc->MakeTag(20, ys),
                       d.doc->MakeTag(30, "0")};
    d.doc->SetHeader(var, tags);
  };
  point("$UCSORG", 0, 0);
  point("$UCSXDIR", c, s);
  point("$UCSYDIR", -s, c);
  if (!d.doc->HeaderTags("$UCSNAME").empty()) {
    d.doc->SetHeader("$UCSNAME", 2, d.ucs_name);
  }
}

}  // namespace

void InitSession(Drawing& d) {
  dxf::Document& doc = *d.doc;
  d.last_paper_block = doc.paper_space();
  bool tiled =
      dxf::ParseInt(doc.HeaderValue("$TILEMODE").value_or("1")).value_or(1) !=
      0;
  d.active_block = tiled || doc.paper_space() == nullptr ? doc.model_space()
                                                         : doc.paper_space();
  d.ucs_name = std::string(doc.HeaderValue("$UCSNAME").value_or(""));
  std::span<const dxf::Tag> xdir = doc.HeaderTags("$UCSXDIR");
  double x = 1, y = 0;
  if (xdir.size() >= 2) {
    x = dxf::ParseDouble(xdir[0].value()).value_or(1);
    y = dxf::ParseDouble(xdir[1].value()).value_or(0);
  }
  std::span<const dxf::Tag> org = doc.HeaderTags("$UCSORG");
  bool at_origin = true;
  for (const dxf::Tag& t : org) {
    if (std::fabs(dxf::ParseDouble(t.value()).value_or(0)) > kAngleEps) {
      at_origin = false;
    }
  }
  d.ucs_angle = std::atan2(y, x);
  d.ucs_world =
      std::fabs(d.ucs_angle) < kAngleEps && at_origin && d.ucs_name.empty();
}

Status ActivateBlock(Drawing& d, dxf::Block* block) {
  if (block == nullptr || d.SpaceName(block).empty()) {
    return Status::InvalidArgument("the block is no layout");
  }
  bool model = d.IsModel(block);
  dxf::Block* current_paper = d.doc->paper_space();
  if (!model && block != current_paper && current_paper != nullptr &&
      !d.doc->IsR12()) {
    // The file opens on its *Paper_Space layout: the target takes that
    // name and the previous one a free *Paper_SpaceN (handles and the
    // LAYOUT links stay as they are).
    std::string spare;
    // Searched from the block count, where a free number usually is.
    for (size_t n = d.doc->blocks().size(); spare.empty(); ++n) {
      std::string candidate = "*Paper_Space" + std::to_string(n);
      if (d.doc->FindBlock(candidate) == nullptr) spare = candidate;
    }
    std::string target_name = block->name;
    if (!d.doc->RenameBlock(current_paper, spare) ||
        !d.doc->RenameBlock(block, "*Paper_Space")) {
      d.doc->RenameBlock(block, target_name);
      d.doc->RenameBlock(current_paper, "*Paper_Space");
      return Status::Refused("the layout could not be made active");
    }
  }
  d.active_block = block;
  d.mspace = false;
  d.active_pviewport = dxf::kNoRecord;
  if (!model) d.last_paper_block = block;
  if (!d.doc->HeaderTags("$TILEMODE").empty() || !model) {
    d.doc->SetHeader("$TILEMODE", 70, model ? "1" : "0");
  }
  return Status();
}

void SetWorldUcs(Drawing& d) {
  d.ucs_angle = 0;
  d.ucs_world = true;
  d.ucs_name.clear();
  WriteUcsHeader(d);
}

void SetViewUcs(Drawing& d) {
  // The view's X axis in world coordinates is turned by -twist; paper space
  // is never twisted.
  double angle = 0;
  if (d.InViewport()) {
    angle = -ViewportView(d, d.active_pviewport).twist;
  } else if (d.IsModel(d.active_block)) {
    angle = -TiledView(d).twist;
  }
  angle = std::remainder(angle, 2 * std::numbers::pi);
  d.ucs_angle = angle;
  d.ucs_world = std::fabs(angle) < kAngleEps;
  d.ucs_name.clear();
  WriteUcsHeader(d);
}

}  // namespace lmt::dxfhost

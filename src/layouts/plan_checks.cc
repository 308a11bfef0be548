#include "layouts/plan_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>

#include "layouts/sheet_texts.h"
#include "layouts/viewport_geometry.h"

namespace lmt::layouts {
namespace {

std::string Quoted(std::string_view name) {
  return "\"" + std::string(name) + "\"";
}

std::string RowAndName(const FramePlan& plan) {
  return "row " + std::to_string(plan.row) + " (" + Quoted(plan.layout_name) +
         ")";
}

// Model units per paper unit of the usual scales: metric ratios both ways,
// then architectural (inches on paper per foot) and engineering (one inch
// per so many feet) ones, all as plain ratios.
constexpr double kStandardRatios[] = {
    // metric, reduced
    1, 2, 5, 10, 20, 25, 50, 100, 200, 250, 500, 1000, 2000, 2500, 5000, 10000,
    20000, 25000, 50000, 100000,
    // metric, enlarged
    1.0 / 2, 1.0 / 4, 1.0 / 5, 1.0 / 8, 1.0 / 10, 1.0 / 20, 1.0 / 50, 1.0 / 100,
    // 1/128" ... 6" = 1'-0"
    1536, 768, 384, 192, 128, 96, 64, 48, 32, 24, 16, 12, 8, 4,
    // 1" = 10' ... 1" = 100'
    120, 240, 360, 480, 600, 720, 1200};

struct Span {
  double low = 0;
  double high = 0;
};

Span Project(const frames::Quad& q, double ax, double ay) {
  Span s{q[0].x * ax + q[0].y * ay, q[0].x * ax + q[0].y * ay};
  for (const frames::Point& p : q) {
    const double d = p.x * ax + p.y * ay;
    s.low = std::min(s.low, d);
    s.high = std::max(s.high, d);
  }
  return s;
}

double SignedArea(const frames::Quad& q) {
  double twice = 0;
  for (size_t k = 0; k < 4; ++k) {
    const frames::Point& a = q[k];
    const frames::Point& b = q[(k + 1) % 4];
    twice += a.x * b.y - b.x * a.y;
  }
  return twice / 2;
}

double LongestSide(const frames::Quad& q) {
  double longest = 0;
  for (size_t k = 0; k < 4; ++k) {
    longest = std::max(longest, std::hypot(q[(k + 1) % 4].x - q[k].x,
                                           q[(k + 1) % 4].y - q[k].y));
  }
  return longest;
}

// True when the insides of the two convex quads overlap by more than
// `tolerance` along every separating direction (their sides' normals).
bool InsidesOverlap(const frames::Quad& a, const frames::Quad& b,
                    double tolerance) {
  for (const frames::Quad* q : {&a, &b}) {
    for (size_t k = 0; k < 4; ++k) {
      const double dx = (*q)[(k + 1) % 4].x - (*q)[k].x;
      const double dy = (*q)[(k + 1) % 4].y - (*q)[k].y;
      const double length = std::hypot(dx, dy);
      if (length == 0) continue;
      const Span sa = Project(a, -dy / length, dx / length);
      const Span sb = Project(b, -dy / length, dx / length);
      if (std::min(sa.high, sb.high) - std::max(sa.low, sb.low) <= tolerance) {
        return false;
      }
    }
  }
  return true;
}

// Every corner of `inner` inside `outer` or on its border.
bool LiesInside(const frames::Quad& inner, const frames::Quad& outer,
                double tolerance) {
  const double turn = SignedArea(outer) > 0 ? 1 : -1;
  for (size_t k = 0; k < 4; ++k) {
    const frames::Point& a = outer[k];
    const frames::Point& b = outer[(k + 1) % 4];
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (length == 0) continue;
    for (const frames::Point& p : inner) {
      const double side =
          turn * ((b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x));
      if (side < -tolerance * length) return false;
    }
  }
  return true;
}

struct Outline {
  const FramePlan* plan;
  frames::Quad corners;
  double min_x, max_x, min_y, max_y;
  double size;
};

}  // namespace

std::string NameProblem(std::string_view name) {
  if (name.empty()) return "it is empty";
  if (name.size() > kMaxLayoutNameBytes) {
    return "it is longer than " + std::to_string(kMaxLayoutNameBytes) +
           " bytes";
  }
  const size_t bad = name.find_first_of(kRefusedNameCharacters);
  if (bad != std::string_view::npos) {
    return std::string("layout names cannot hold '") + name[bad] + "'";
  }
  for (char c : name) {
    if (static_cast<unsigned char>(c) < 0x20) {
      return "layout names cannot hold control characters";
    }
  }
  return "";
}

std::vector<std::string> CheckLayoutNames(
    const std::vector<FramePlan>& plans,
    const std::vector<std::string>& existing) {
  std::vector<std::string> warnings;
  std::map<std::string, std::string> in_drawing;  // folded -> as stored
  for (const std::string& name : existing) {
    in_drawing.emplace(FoldedName(name), name);
  }
  std::map<std::string, std::vector<const FramePlan*>> uses;
  for (const FramePlan& plan : plans) {
    uses[FoldedName(plan.layout_name)].push_back(&plan);
  }
  for (const FramePlan& plan : plans) {
    const std::string key = FoldedName(plan.layout_name);
    const std::vector<const FramePlan*>& same = uses[key];
    if (same.size() > 1 && same.front() == &plan) {
      std::string rows;
      for (const FramePlan* other : same) {
        rows += (rows.empty() ? "" : ", ") + std::to_string(other->row);
      }
      warnings.push_back("layout name " + Quoted(plan.layout_name) +
                         " is given to rows " + rows +
                         "; only the first gets a layout");
    }
    if (auto taken = in_drawing.find(key); taken != in_drawing.end()) {
      warnings.push_back("layout name " + Quoted(plan.layout_name) + " of " +
                         "row " + std::to_string(plan.row) +
                         " is taken by the drawing's layout " +
                         Quoted(taken->second) + "; the row is skipped");
    }
    if (std::string problem = NameProblem(plan.layout_name); !problem.empty()) {
      warnings.push_back("layout name " + Quoted(plan.layout_name) + " of " +
                         "row " + std::to_string(plan.row) +
                         " cannot be used: " + problem);
    }
  }
  return warnings;
}

std::vector<std::string> CheckFrameOverlaps(const std::vector<FramePlan>& plans,
                                            const frames::FrameTable& table) {
  std::vector<Outline> outlines;
  for (const FramePlan& plan : plans) {
    std::optional<FrameRow> row = ReadFrameRow(table, plan.row);
    if (!row) continue;
    Outline o{&plan,
              row->corners,
              row->corners[0].x,
              row->corners[0].x,
              row->corners[0].y,
              row->corners[0].y,
              LongestSide(row->corners)};
    for (const frames::Point& p : row->corners) {
      o.min_x = std::min(o.min_x, p.x);
      o.max_x = std::max(o.max_x, p.x);
      o.min_y = std::min(o.min_y, p.y);
      o.max_y = std::max(o.max_y, p.y);
    }
    // A frame without area has no inside to overlap.
    if (std::abs(SignedArea(o.corners)) > 0) outlines.push_back(o);
  }
  // Sweep along x: only frames whose x ranges meet are compared.
  std::sort(
      outlines.begin(), outlines.end(),
      [](const Outline& a, const Outline& b) { return a.min_x < b.min_x; });
  std::vector<std::pair<int, std::string>> found;  // first row, text
  for (size_t i = 0; i < outlines.size(); ++i) {
    const Outline& a = outlines[i];
    for (size_t j = i + 1; j < outlines.size() && outlines[j].min_x < a.max_x;
         ++j) {
      const Outline& b = outlines[j];
      if (b.min_y >= a.max_y || a.min_y >= b.max_y) continue;
      // Coordinates are drawn, not computed: a millionth of the frame is
      // noise, not an overlap.
      const double tolerance = 1e-6 * std::max(a.size, b.size);
      if (!InsidesOverlap(a.corners, b.corners, tolerance)) continue;
      const Outline* first = a.plan->row < b.plan->row ? &a : &b;
      const Outline* second = first == &a ? &b : &a;
      std::string text;
      if (LiesInside(second->corners, first->corners, tolerance)) {
        text = "the frame of " + RowAndName(*second->plan) +
               " lies inside the frame of " + RowAndName(*first->plan);
      } else if (LiesInside(first->corners, second->corners, tolerance)) {
        text = "the frame of " + RowAndName(*first->plan) +
               " lies inside the frame of " + RowAndName(*second->plan);
      } else {
        text = "the frames of " + RowAndName(*first->plan) + " and " +
               RowAndName(*second->plan) + " overlap";
      }
      found.emplace_back(first->plan->row, std::move(text));
    }
  }
  std::stable_sort(
      found.begin(), found.end(),
      [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> warnings;
  for (auto& [row, text] : found) warnings.push_back(std::move(text));
  return warnings;
}

// Not rounded to a whole number, so that 1:99.9 does not read as the 1:100
// it is not.
std::string ScaleRatioText(double scale) {
  char buffer[64];
  if (scale <= 1) {
    std::snprintf(buffer, sizeof buffer, "1:%.6g", 1 / scale);
  } else {
    std::snprintf(buffer, sizeof buffer, "%.6g:1", scale);
  }
  return buffer;
}

bool IsStandardScale(double scale) {
  if (!(scale > 0) || !std::isfinite(scale)) return false;
  const double ratio = 1 / scale;
  for (double standard : kStandardRatios) {
    if (std::abs(ratio - standard) <= 1e-6 * standard) return true;
  }
  return false;
}

std::vector<std::string> CheckScales(const std::vector<FramePlan>& plans) {
  struct Use {
    const FramePlan* first;
    int count;
  };
  std::vector<std::pair<std::string, Use>> odd;  // label, in plan order
  for (const FramePlan& plan : plans) {
    if (!plan.viewport || IsStandardScale(plan.viewport->scale)) continue;
    const std::string label = ScaleRatioText(plan.viewport->scale);
    auto same = std::find_if(odd.begin(), odd.end(),
                             [&](const auto& o) { return o.first == label; });
    if (same == odd.end()) {
      odd.push_back({label, {&plan, 1}});
    } else {
      ++same->second.count;
    }
  }
  std::vector<std::string> warnings;
  for (const auto& [label, use] : odd) {
    std::string text =
        "scale " + label + " of layout " + Quoted(use.first->layout_name);
    if (use.count > 1) {
      text += " and " + std::to_string(use.count - 1) + " more";
    }
    warnings.push_back(text + " is not a standard scale");
  }
  return warnings;
}

std::vector<std::string> CheckPlan(const std::vector<FramePlan>& plans,
                                   const frames::FrameTable& table,
                                   const std::vector<std::string>& existing) {
  std::vector<std::string> warnings = CheckLayoutNames(plans, existing);
  for (const std::vector<std::string>& more :
       {CheckFrameOverlaps(plans, table), CheckScales(plans)}) {
    warnings.insert(warnings.end(), more.begin(), more.end());
  }
  return warnings;
}

}  // namespace lmt::layouts

// What a user should hear about a creation plan before layouts are made:
// layout names the drawing cannot take (repeated, already there, holding a
// character layout names refuse, too long), frames that overlap or lie
// inside one another, and scales that are not on a standard scale list.
// Each check gives whole sentences, one per line, for a caller to print;
// none of them stops a run (the host loop skips a refused name itself).
//
// Pure: the plan, the frame table and the drawing's layout names go in.
#ifndef LMT_LAYOUTS_PLAN_CHECKS_H_
#define LMT_LAYOUTS_PLAN_CHECKS_H_

#include <string>
#include <string_view>
#include <vector>

#include "frames/frame_table.h"
#include "layouts/run_plan.h"

namespace lmt::layouts {

// The longest layout name a drawing holds, in bytes of its UTF-8 text.
inline constexpr size_t kMaxLayoutNameBytes = 255;

// Characters no layout name may hold.
inline constexpr std::string_view kRefusedNameCharacters = "<>/\\\":;?*|,=`";

// A name that would be refused as a layout name: empty, over
// kMaxLayoutNameBytes, or holding one of kRefusedNameCharacters; the reason
// in a few words, or empty when the name is fine.
std::string NameProblem(std::string_view name);

// Names used by more than one row, names `existing` already holds, and
// names NameProblem refuses; compared ignoring case as layout names are.
std::vector<std::string> CheckLayoutNames(
    const std::vector<FramePlan>& plans,
    const std::vector<std::string>& existing);

// Pairs of frames whose insides overlap, or one of which lies inside the
// other. Frames that only share a border (a sheet set laid edge to edge) are
// fine. Rows whose corners cannot be read are left out.
std::vector<std::string> CheckFrameOverlaps(const std::vector<FramePlan>& plans,
                                            const frames::FrameTable& table);

// True when `scale` (paper units per model unit) is, within rounding, one
// of the usual metric ratios (1:1 ... 1:100000, 2:1 ... 100:1) or imperial
// ones (1/128" = 1' ... 1' = 1', 1" = 10' ... 1" = 100').
bool IsStandardScale(double scale);

// A scale as a ratio, not rounded to whole numbers as the sheet label
// is: "1:100", "1:137.5", "2.5:1".
std::string ScaleRatioText(double scale);

// One line per scale of the plan's viewports that IsStandardScale refuses,
// naming the first layout that has it and how many do.
std::vector<std::string> CheckScales(const std::vector<FramePlan>& plans);

// All of the above, names first.
std::vector<std::string> CheckPlan(const std::vector<FramePlan>& plans,
                                   const frames::FrameTable& table,
                                   const std::vector<std::string>& existing);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_PLAN_CHECKS_H_

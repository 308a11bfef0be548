// Layout creation, the add-in's main command (ModulSozdatVkladki): one
// paper-space layout per named row of the frame table, each with a
// viewport that shows exactly its frame, the actions after creation on it,
// and the clean-up that leaves the drawing as the user had it apart from
// the new layouts.
//
// The run: connect; make the viewport layer; with the annotation scale,
// the temporary layer "TEMPAddLayerLayomat" made active and every other
// layer frozen (entering a viewport then regenerates nothing); viewports
// switched off; the family of the host decides how layouts are copied and
// which host settings are touched; every layer thawed again; viewports
// switched on; the final message unless the user interrupted.
//
// Families: the AutoCAD family copies the pattern layout straight into
// each new layout and switches FILEDIA and LayoutCreateViewport; nanoCAD
// and ZWCAD copy it first into a temporary layout ("TempNewNano",
// "TempNewZW") that is the source for every new layout and is deleted at
// the end; nanoCAD touches neither FILEDIA nor LayoutCreateViewport, and
// only the AutoCAD family knows the extended rotation rule.
//
// Failures: a host call refused for one object skips that step and the
// run goes on; a layout name the host refuses (taken, or not valid there)
// skips that row. Every refusal passed over is recorded in the report's
// skip log, under the layout (or layer) it concerned. A source of the
// insertion options that cannot be inserted is told once and the layouts
// are made without it. Only the
// missing pattern layout stops a run before it starts (its message, nothing
// created, then the clean-up and the final message as after any run).
#ifndef LMT_LAYOUTS_LAYOUT_CREATION_H_
#define LMT_LAYOUTS_LAYOUT_CREATION_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/frame_table.h"
#include "host/outcome.h"
#include "host/session.h"
#include "host/skip_log.h"
#include "layouts/page_setup.h"
#include "layouts/run_plan.h"
#include "layouts/run_settings.h"

namespace lmt::layouts {

inline constexpr std::string_view kAnnotationLayer = "TEMPAddLayerLayomat";
inline constexpr std::string_view kNanoCadCopyLayout = "TempNewNano";
inline constexpr std::string_view kZwCadCopyLayout = "TempNewZW";

// Step of a row skipped because the host refused its layout: the skip's
// object is the layout name, its status the host's refusal. Every other
// step passed over leaves the row's layout made, without that one property.
inline constexpr std::string_view kSkipLayout = "layout";

struct CreationReport {
  // kDone also for an unknown host name; kInterrupted cleaned up, with no
  // final message; kRefused when the pattern layout is missing (its message
  // shown, nothing made).
  host::Outcome outcome = host::Outcome::kDone;
  int rows = 0;                      // rows to make a layout for
  std::vector<std::string> created;  // layout names, in order
  // Every refused call passed over; the rows passed over are its
  // kSkipLayout entries.
  host::SkipLog skips;
  std::vector<std::string> deleted;  // earlier layouts (Check_UdalitListi)
  int viewports = 0;                 // viewports made, copies included
  // Block references the insertion options put on the sheets, and what the
  // user was told when the source could not be inserted (empty: nothing).
  int inserted = 0;
  std::string insert_problem;
};

// What a run makes, worked out before anything is made: the settings read
// from the windows, the parameters as the host's family uses them, the
// plan of every layout, and the layouts the drawing has beforehand.
// CreateLayouts carries out exactly this plan.
struct CreationPlan {
  RunSettings settings;
  HostFamily family = HostFamily::kNone;
  CreationParameters params;  // settings.params for this family
  std::vector<FramePlan> frames;
  std::vector<std::string> existing_layouts;  // "Model" included
  // The page set-up's paper of each entry of `frames`; empty when the
  // set-up is off.
  std::vector<SheetPaper> papers;
};

// Connects as CreateLayouts does and plans the run over `table` without
// changing the drawing. Nullopt when the connection failed (the user has
// been told why).
std::optional<CreationPlan> PlanLayouts(host::Session& session,
                                        const frames::FrameTable& table);

// The whole command on the session's active drawing, with the settings of
// the session's windows, over the rows of `table` (named by the naming
// template beforehand).
CreationReport CreateLayouts(host::Session& session,
                             const frames::FrameTable& table);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_LAYOUT_CREATION_H_

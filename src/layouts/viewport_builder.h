// The viewport of one frame, made on the host step by step as the standard
// builder does it: AddPViewport at the planned centre and size, plan view,
// custom scale, twist, the view centred on the frame through VIEWCTR and
// TranslateCoordinates into the target, layer, lock, annotation scale, and
// the optional copy viewport. The numbers come from PlanViewport; which
// rule gave the view angle (standard or extended) is the plan's business.
//
// A host that refuses a step leaves that property as it is, the refusal is
// recorded under the layout's name and the next step runs; only a refused
// AddPViewport leaves the layout without a viewport.
#ifndef LMT_LAYOUTS_VIEWPORT_BUILDER_H_
#define LMT_LAYOUTS_VIEWPORT_BUILDER_H_

#include <string_view>

#include "host/object_model.h"
#include "host/skip_log.h"
#include "host/user.h"
#include "layouts/creation_parameters.h"
#include "layouts/viewport_geometry.h"

namespace lmt::layouts {

struct BuiltViewports {
  host::PViewportPtr viewport;  // null when the host refused it
  host::PViewportPtr copy;      // null when not asked for or refused
};

// Builds the viewports of `plan` in `layout` (named `name`), which becomes
// the active layout in paper space. `user` pumps events before the
// annotation scale is set.
BuiltViewports BuildViewport(host::Document& document,
                             const host::LayoutPtr& layout,
                             std::string_view name, const ViewportPlan& plan,
                             const CreationParameters& params, host::User& user,
                             host::SkipLog& skips);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_VIEWPORT_BUILDER_H_

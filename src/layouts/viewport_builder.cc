#include "layouts/viewport_builder.h"

#include <cmath>

namespace lmt::layouts {
namespace {

// The refusals of one layout's viewports, recorded under its name.
class Steps {
 public:
  Steps(std::string_view name, host::SkipLog& skips)
      : name_(name), skips_(skips) {}
  // `outcome`: a Status or a Result, as SkipLog::Record takes them.
  template <typename Outcome>
  bool operator()(std::string_view step, const Outcome& outcome) {
    return skips_.Record(name_, step, outcome);
  }

 private:
  std::string_view name_;
  host::SkipLog& skips_;
};

// The target that shows the frame centre C in the middle of the view: the
// current view centre turned by the block angle, taken from C, read as a
// display point and converted to world.
void CentreOnFrame(host::Document& document, host::PViewport& viewport,
                   const ViewportPlan& plan, Steps& step) {
  host::Point v{};
  Result<host::Variant> ctr = document.GetVariable("VIEWCTR");
  if (step("VIEWCTR", ctr)) {
    if (Result<host::Point> p = host::ToPoint(*ctr); p.ok()) v = *p;
  }
  const double b = plan.block_angle;
  const double x = v.x * std::cos(b) - v.y * std::sin(b);
  const double y = v.x * std::sin(b) + v.y * std::cos(b);
  host::Point display{plan.frame_centre.x - x, plan.frame_centre.y - y, 0};
  host::Point target = display;
  Result<host::UtilityPtr> utility = document.Utility();
  if (step("utility", utility)) {
    Result<host::Point> world = (*utility)->TranslateCoordinates(
        display, host::CoordinateSystem::kDisplay,
        host::CoordinateSystem::kWorld, /*displacement=*/false);
    if (step("translate", world)) target = *world;
  }
  step("target", viewport.SetTarget(target));
  step("update", viewport.Update());
}

// Layer, lock and annotation scale, shared by the viewport and its copy.
void FinishViewport(host::Document& document, const host::PViewportPtr& vp,
                    const CreationParameters& params, host::User& user,
                    Steps& step) {
  step("viewport layer", vp->SetLayer(params.viewport_layer));
  if (params.lock_display) step("lock display", vp->SetDisplayLocked(true));
  if (params.set_annotation_scale) {
    step("display", vp->Display(true));
    step("enter model space", document.SetMSpace(true));
    // MSpace enters some viewport of the layout; make sure it is this one.
    step("active viewport", document.SetActivePViewport(vp));
    user.PumpEvents();
    step("set CANNOSCALE",
         document.SetVariable("CANNOSCALE",
                              host::Variant(params.annotation_scale)));
    step("update", vp->Update());
    step("leave model space", document.SetMSpace(false));
    // All viewports are switched on together when the run ends.
    step("display", vp->Display(false));
  }
}

}  // namespace

BuiltViewports BuildViewport(host::Document& document,
                             const host::LayoutPtr& layout,
                             std::string_view name, const ViewportPlan& plan,
                             const CreationParameters& params, host::User& user,
                             host::SkipLog& skips) {
  Steps step(name, skips);
  BuiltViewports built;
  step("active space", document.SetActiveSpace(host::Space::kPaperSpace));
  step("active layout", document.SetActiveLayout(layout));
  Result<host::BlockPtr> paper = document.PaperSpace();
  if (!step("paper space", paper)) return built;
  const ViewportView& view = plan.viewport;
  Result<host::PViewportPtr> added = (*paper)->AddPViewport(
      {view.centre.x, view.centre.y, 0}, view.width, view.height);
  if (!step("add viewport", added)) return built;
  built.viewport = *added;
  host::PViewport& vp = **added;
  step("direction", vp.SetDirection({0, 0, 1}));
  step("standard scale", vp.SetStandardScale(host::kCustomScale));
  step("custom scale", vp.SetCustomScale(plan.scale));
  if (params.switch_on_at_once) step("display", vp.Display(true));
  step("twist", vp.SetTwistAngle(-plan.view_angle));
  CentreOnFrame(document, vp, plan, step);
  FinishViewport(document, built.viewport, params, user, step);

  if (plan.copy) {
    Result<host::EntityPtr> copied = vp.Copy();
    if (step("copy viewport", copied)) {
      built.copy = host::As<host::PViewport>(*copied);
    }
    if (built.copy) {
      host::PViewport& copy = *built.copy;
      step("copy width", copy.SetWidth(params.copy_width));
      step("copy height", copy.SetHeight(params.copy_height));
      step("copy move",
           copy.Move({plan.copy_move_from.x, plan.copy_move_from.y, 0},
                     {plan.copy_move_to.x, plan.copy_move_to.y, 0}));
      step("copy scale", copy.SetCustomScale(params.copy_scale));
      FinishViewport(document, built.copy, params, user, step);
    }
  }
  step("update", vp.Update());
  return built;
}

}  // namespace lmt::layouts

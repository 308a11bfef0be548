#include "layouts/viewport_builder.h"

#include <cmath>

namespace lmt::layouts {
namespace {

// The target that shows the frame centre C in the middle of the view: the
// current view centre turned by the block angle, taken from C, read as a
// display point and converted to world.
void CentreOnFrame(host::Document& document, host::PViewport& viewport,
                   const ViewportPlan& plan) {
  host::Point v{};
  if (Result<host::Variant> ctr = document.GetVariable("VIEWCTR"); ctr.ok()) {
    if (Result<host::Point> p = host::ToPoint(*ctr); p.ok()) v = *p;
  }
  const double b = plan.block_angle;
  const double x = v.x * std::cos(b) - v.y * std::sin(b);
  const double y = v.x * std::sin(b) + v.y * std::cos(b);
  host::Point display{plan.frame_centre.x - x, plan.frame_centre.y - y, 0};
  host::Point target = display;
  if (Result<host::UtilityPtr> utility = document.Utility(); utility.ok()) {
    Result<host::Point> world = (*utility)->TranslateCoordinates(
        display, host::CoordinateSystem::kDisplay,
        host::CoordinateSystem::kWorld, /*displacement=*/false);
    if (world.ok()) target = *world;
  }
  (void)viewport.SetTarget(target);
  (void)viewport.Update();
}

// Layer, lock and annotation scale, shared by the viewport and its copy.
void FinishViewport(host::Document& document, const host::PViewportPtr& vp,
                    const CreationParameters& params, host::User& user) {
  (void)vp->SetLayer(params.viewport_layer);
  if (params.lock_display) (void)vp->SetDisplayLocked(true);
  if (params.set_annotation_scale) {
    (void)vp->Display(true);
    (void)document.SetMSpace(true);
    // MSpace enters some viewport of the layout; make sure it is this one.
    (void)document.SetActivePViewport(vp);
    user.PumpEvents();
    (void)document.SetVariable("CANNOSCALE",
                               host::Variant(params.annotation_scale));
    (void)vp->Update();
    (void)document.SetMSpace(false);
    // All viewports are switched on together when the run ends.
    (void)vp->Display(false);
  }
}

}  // namespace

BuiltViewports BuildViewport(host::Document& document,
                             const host::LayoutPtr& layout,
                             const ViewportPlan& plan,
                             const CreationParameters& params,
                             host::User& user) {
  BuiltViewports built;
  (void)document.SetActiveSpace(host::Space::kPaperSpace);
  (void)document.SetActiveLayout(layout);
  Result<host::BlockPtr> paper = document.PaperSpace();
  if (!paper.ok()) return built;
  const ViewportView& view = plan.viewport;
  Result<host::PViewportPtr> added = (*paper)->AddPViewport(
      {view.centre.x, view.centre.y, 0}, view.width, view.height);
  if (!added.ok()) return built;
  built.viewport = *added;
  host::PViewport& vp = **added;
  (void)vp.SetDirection({0, 0, 1});
  (void)vp.SetStandardScale(host::kCustomScale);
  (void)vp.SetCustomScale(plan.scale);
  if (params.switch_on_at_once) (void)vp.Display(true);
  (void)vp.SetTwistAngle(-plan.view_angle);
  CentreOnFrame(document, vp, plan);
  FinishViewport(document, built.viewport, params, user);

  if (plan.copy) {
    Result<host::EntityPtr> copied = vp.Copy();
    if (copied.ok()) {
      built.copy = host::As<host::PViewport>(*copied);
    }
    if (built.copy) {
      host::PViewport& copy = *built.copy;
      (void)copy.SetWidth(params.copy_width);
      (void)copy.SetHeight(params.copy_height);
      (void)copy.Move({plan.copy_move_from.x, plan.copy_move_from.y, 0},
                      {plan.copy_move_to.x, plan.copy_move_to.y, 0});
      (void)copy.SetCustomScale(params.copy_scale);
      FinishViewport(document, built.copy, params, user);
    }
  }
  (void)vp.Update();
  return built;
}

}  // namespace lmt::layouts

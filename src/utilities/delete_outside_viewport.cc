#include "utilities/delete_outside_viewport.h"

#include <optional>
#include <vector>

#include "core/messages.h"
#include "core/text_case.h"
#include "host/application.h"
#include "host/document.h"
#include "host/entity.h"
#include "host/object.h"
#include "host/selection_set.h"
#include "host/variant.h"
#include "utilities/named_sets.h"
#include "utilities/viewports_on_off.h"

namespace lmt::utilities {
namespace {

constexpr std::string_view kViewportObjectName = "AcDbViewport";

// Records a refusal; true when `status` is ok.
bool Note(host::SkipLog& skips, std::string_view object, std::string_view step,
          const Status& status) {
  if (status.ok()) return true;
  skips.Add(std::string(object), std::string(step), status);
  return false;
}

bool ModelTabCurrent(const host::Document& document) {
  Result<host::Variant> tilemode = document.GetVariable("TILEMODE");
  if (!tilemode.ok()) return false;
  Result<int32_t> value = host::ToInt(*tilemode);
  return value.ok() && *value == 1;
}

void BringCadForward(host::Session& session) {
  const host::ApplicationPtr& application = session.connection().application;
  if (application == nullptr) return;
  Result<std::string> caption = application->Caption();
  if (caption.ok()) session.user().ActivateCadWindow(*caption);
}

// The z of a bounding-box corner in the viewport's display coordinates;
// only the z is used, so a refusal falls back to the paper z.
double DisplayZ(const host::Utility* utility, const host::Point& corner,
                std::string_view handle, host::SkipLog& skips) {
  if (utility == nullptr) return corner.z;
  Result<host::Point> translated = utility->TranslateCoordinates(
      corner, host::CoordinateSystem::kPaperSpaceDisplay,
      host::CoordinateSystem::kDisplay, false);
  if (!Note(skips, handle, "translate", translated.status())) return corner.z;
  return translated->z;
}

// The paper-space values read before the viewport is entered.
struct PaperValues {
  double width = 0;
  double height = 0;
  double custom_scale = 0;
  host::BoundingBox box;
};

// Reads the viewport from paper space (with it made the active one) and then
// enters it locked. nullopt when a value the window needs is missing or the
// viewport could not be entered.
std::optional<PaperValues> ReadAndEnter(host::Document& document,
                                        const host::PViewportPtr& viewport,
                                        std::string_view handle,
                                        host::SkipLog& skips) {
  Note(skips, handle, "paper space", document.SetMSpace(false));
  Note(skips, handle, "activate", document.SetActivePViewport(viewport));
  // The centre is read as the host expects the sequence; the window is built
  // around the view centre instead.
  Note(skips, handle, "centre", viewport->Center().status());
  Result<double> width = viewport->Width();
  Result<double> height = viewport->Height();
  Result<double> scale = viewport->CustomScale();
  Result<host::BoundingBox> box = viewport->GetBoundingBox();
  bool readable = Note(skips, handle, "width", width.status()) &
                  Note(skips, handle, "height", height.status()) &
                  Note(skips, handle, "scale", scale.status());
  Note(skips, handle, "bounding box", box.status());
  Note(skips, handle, "lock", viewport->SetDisplayLocked(true));
  Note(skips, handle, "display", viewport->Display(true));
  // Inside the viewport VIEWCTR is its view centre; outside it would be the
  // paper's, and the window would be wrong.
  bool entered =
      Note(skips, handle, "model space", document.SetMSpace(true)) &&
      Note(skips, handle, "activate", document.SetActivePViewport(viewport));
  if (!readable || !entered) return std::nullopt;
  return PaperValues{*width, *height, *scale,
                     box.value_or(host::BoundingBox{})};
}

// Steps 8 and 9 inside the entered viewport: the window and its selection
// added to `keep`. False when the keep set may be short.
bool SelectWindow(host::Document& document, const PaperValues& paper,
                  std::string_view handle, host::SelectionSet& keep,
                  DeleteOutsideReport& report) {
  host::SkipLog& skips = report.skips;
  // A refused UCS command would leave a rotated view's window misplaced.
  if (!Note(skips, handle, "view ucs", document.SendCommand(kViewUcsCommand))) {
    return false;
  }
  Result<host::UtilityPtr> utility = document.Utility();
  Note(skips, handle, "utility", utility.status());
  const host::Utility* util = utility.ok() ? utility->get() : nullptr;
  double z1 = DisplayZ(util, paper.box.min, handle, skips);
  double z2 = DisplayZ(util, paper.box.max, handle, skips);
  Result<host::Variant> center_value = document.GetVariable("VIEWCTR");
  if (!Note(skips, handle, "view centre", center_value.status())) return false;
  Result<host::Point> center = host::ToPoint(*center_value);
  if (!Note(skips, handle, "view centre", center.status())) return false;
  Result<ModelWindow> window = ViewportModelWindow(
      *center, paper.width, paper.height, paper.custom_scale, z1, z2);
  if (!Note(skips, handle, "window", window.status())) return false;
  report.window = *window;

  Result<host::SelectionSetPtr> found =
      RecreateSelectionSet(document, kSetWindow);
  if (!Note(skips, kSetWindow, "create set", found.status())) return false;
  if (!Note(skips, kSetWindow, "select",
            (*found)->Select(host::SelectMode::kCrossing, window->corner1,
                             window->corner2, host::SelectionFilter{}))) {
    return false;
  }
  Result<int32_t> count = (*found)->Count();
  if (!Note(skips, kSetWindow, "count", count.status())) return false;
  if (*count == 0) return true;
  Result<std::vector<host::EntityPtr>> items = (*found)->Items();
  if (!Note(skips, kSetWindow, "walk", items.status())) return false;
  if (!Note(skips, kSetKeep, "add", keep.AddItems(*items))) return false;
  report.kept = *count;
  return true;
}

// Steps 7 to 9 for one picked viewport. The viewport is left in paper space
// and unlocked whatever happened.
bool ProcessViewport(host::Document& document,
                     const host::PViewportPtr& viewport,
                     std::string_view handle, host::SelectionSet& keep,
                     DeleteOutsideReport& report) {
  std::optional<PaperValues> paper =
      ReadAndEnter(document, viewport, handle, report.skips);
  bool selected =
      paper.has_value() && SelectWindow(document, *paper, handle, keep, report);
  Note(report.skips, handle, "paper space", document.SetMSpace(false));
  Note(report.skips, handle, "unlock", viewport->SetDisplayLocked(false));
  return selected;
}

// Step 10: erases model space except the keep set. Nothing is erased when
// the host refuses to take a kept object out of the erase set.
void EraseOutside(host::Document& document, const host::SelectionSet& keep,
                  DeleteOutsideReport& report) {
  host::SkipLog& skips = report.skips;
  Result<host::SelectionSetPtr> model =
      RecreateSelectionSet(document, kSetModel);
  if (!Note(skips, kSetModel, "create set", model.status())) return;
  host::SelectionFilter model_only;
  model_only.Add(410, std::string("Model"));
  if (!Note(skips, kSetModel, "select",
            (*model)->Select(host::SelectMode::kAll, model_only))) {
    return;
  }
  Result<std::vector<host::EntityPtr>> kept = keep.Items();
  if (!Note(skips, kSetKeep, "walk", kept.status())) return;
  for (const host::EntityPtr& entity : *kept) {
    if (!Note(skips, kSetModel, "remove", (*model)->RemoveItems({entity}))) {
      return;
    }
  }
  Result<int32_t> count = (*model)->Count();
  if (Note(skips, kSetModel, "erase", (*model)->Erase())) {
    report.erased = count.value_or(0);
  }
}

}  // namespace

Result<ModelWindow> ViewportModelWindow(const host::Point& view_center,
                                        double width, double height,
                                        double custom_scale, double z1,
                                        double z2) {
  if (!(custom_scale > 0)) {
    return Status::InvalidArgument("viewport scale is not positive");
  }
  double half_width = width / 2 / custom_scale;
  double half_height = height / 2 / custom_scale;
  return ModelWindow{
      {view_center.x - half_width, view_center.y - half_height, z1},
      {view_center.x + half_width, view_center.y + half_height, z2}};
}

host::Outcome DeleteOutsideViewport(host::Session& session,
                                    DeleteOutsideReport* report) {
  DeleteOutsideReport local;
  DeleteOutsideReport& run = report != nullptr ? *report : local;
  if (!session.Connect()) return host::Outcome::kNotConnected;
  BringCadForward(session);
  host::Document& document = session.document();
  host::User& user = session.user();

  if (ModelTabCurrent(document)) {
    session.ShowMessage(core::kMsgImpossibleInModel,
                        host::MessageIcon::kCritical);
    return host::Outcome::kRefused;
  }

  Note(run.skips, kSetKeep, "delete set",
       DeleteSelectionSet(document, kSetKeep));
  Result<host::SelectionSetPtr> picked =
      RecreateSelectionSet(document, kSetPickedViewports);
  std::vector<host::EntityPtr> members;
  if (Note(run.skips, kSetPickedViewports, "create set", picked.status())) {
    // A cancelled pick leaves the set empty, which the next test reports.
    Note(run.skips, kSetPickedViewports, "pick",
         (*picked)->SelectOnScreen(ViewportFilter()));
    Result<int32_t> count = (*picked)->Count();
    if (count.ok() && *count > 0) {
      Result<std::vector<host::EntityPtr>> items = (*picked)->Items();
      if (Note(run.skips, kSetPickedViewports, "walk", items.status())) {
        members = std::move(*items);
      }
    }
  }
  user.BringToFront();
  if (members.empty()) {
    session.ShowMessage(core::kMsgNoObjects, host::MessageIcon::kCritical);
    return host::Outcome::kRefused;
  }

  Result<host::SelectionSetPtr> keep = RecreateSelectionSet(document, kSetKeep);
  if (Note(run.skips, kSetKeep, "create set", keep.status())) {
    for (const host::EntityPtr& entity : members) {
      Result<std::string> handle = entity->Handle();
      if (!Note(run.skips, "", "handle", handle.status())) continue;
      Result<std::string> object_name = entity->ObjectName();
      if (!Note(run.skips, *handle, "object name", object_name.status()) ||
          !core::EqualsIgnoreCase(*object_name, kViewportObjectName)) {
        continue;
      }
      host::PViewportPtr viewport = host::As<host::PViewport>(entity);
      if (viewport == nullptr) {
        run.skips.Add(*handle, "viewport",
                      Status::NotSupported("no viewport interface"));
        continue;
      }
      if (!ProcessViewport(document, viewport, *handle, **keep, run)) continue;
      run.viewport = *handle;
      EraseOutside(document, **keep, run);
      break;
    }
  }

  user.ShowMessage(kOkText, host::MessageIcon::kInformation,
                   host::MessageButtons::kOk, session.globals().product_name);
  return host::Outcome::kDone;
}

}  // namespace lmt::utilities

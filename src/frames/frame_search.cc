// The frame search (FrameCommands::Search).
#include <string>
#include <vector>

#include "core/messages.h"
#include "frames/drawing_steps.h"
#include "frames/frame_commands.h"
#include "frames/frame_ordering.h"
#include "frames/frame_readers.h"
#include "frames/frame_template.h"
#include "frames/highlight_mark.h"
#include "host/connection.h"
#include "host/host_kind.h"

namespace lmt::frames {
namespace {

constexpr std::string_view kStartPointPrompt = "Enter Start point: ";
constexpr std::string_view kPolylinePrompt = "Select a polyline: ";

FilterChoices ChoicesOf(const core::OknoFilter& f) {
  FilterChoices c;
  c.layer_on = f.check_tolko_v_sloe.checked();
  c.layer = f.combo_sloy_linii.text();
  c.color_on = f.check_tolko_v_cvete.checked();
  c.color = f.combo_color_linii.text();
  c.linetype_on = f.check_tolko_v_tip.checked();
  c.linetype = f.combo_tip_linii.text();
  c.line_weight_on = f.check_tolko_v_ves.checked();
  c.line_weight = f.combo_ves_linii.text();
  c.block_name_on = f.check_tolko_name_block.checked();
  c.block_name = f.uni_text_name_block.text();
  return c;
}

// An option group's choice; none selected counts as the first button.
int Selected(const core::OptionGroup& group) {
  return group.selected() < 0 ? 0 : group.selected();
}

// The user picks the direction polyline; its vertices, or none.
std::vector<Point> PickDirection(host::Session& session,
                                 host::Document& document) {
  ScopedSearchFlag flag(session, kFlagDirectionPick);
  session.ShowMessage(core::kMsgSelectSortPolyline,
                      host::MessageIcon::kQuestion);
  ActivateCadWindow(session);
  std::vector<Point> vertices;
  Result<host::SelectionSetPtr> set =
      RenewSelectionSet(document, kPolylineSetName);
  if (!set.ok()) return vertices;
  if (Result<host::UtilityPtr> utility = document.Utility(); utility.ok()) {
    (*utility)->Prompt(kPolylinePrompt).IgnoreError();  // only a prompt
  }
  host::SelectionFilter only_polylines;
  only_polylines.Add(0, "LWPOLYLINE");
  if (!(*set)->SelectOnScreen(only_polylines).ok()) return vertices;
  Result<host::EntityPtr> picked = (*set)->Item(0);
  if (!picked.ok()) return vertices;
  host::PolylinePtr polyline = host::As<host::Polyline>(*picked);
  if (polyline == nullptr) return vertices;
  if (Result<std::vector<double>> xy = polyline->Coordinates(); xy.ok()) {
    for (size_t i = 0; i + 1 < xy->size(); i += 2) {
      vertices.push_back({(*xy)[i], (*xy)[i + 1]});
    }
  }
  return vertices;
}

// The sort start point; (0, 0) when the user cancels.
Point AskStartPoint(host::Session& session, host::Document& document) {
  ScopedSearchFlag flag(session, kFlagStartPointPick);
  session.ShowMessage(core::kMsgSpecifyStartPoint,
                      host::MessageIcon::kInformation);
  ActivateCadWindow(session);
  Result<host::UtilityPtr> utility = document.Utility();
  if (!utility.ok()) return {};
  Result<host::Point> p = (*utility)->GetPoint(std::nullopt, kStartPointPrompt);
  if (!p.ok()) return {};
  return {p->x, p->y};
}

}  // namespace

host::Outcome FrameCommands::Search(SearchMode mode) {
  if (!session_.Connect()) return host::Outcome::kRefused;
  ScopedSearchFlag flag(session_, kFlagSearch);
  host::Document& document = session_.document();
  host::User& user = session_.user();
  core::OknoLmt& main = session_.windows().okno_lmt;
  FrameTable& table = state_.table;

  table.Reset();
  ActivateCadWindow(session_);
  user.ClearInterrupt();
  main.found_count.assign(1, '0');
  const std::string kind = state_.frame_template.kind;

  MakeModelCurrent(document);
  host::EnsureWorldUcs(session_.connection().host_name, document);
  host::EnsurePlanView(document);

  Result<host::SelectionSetPtr> set =
      RenewSelectionSet(document, kPrintSetName);
  const FilterChoices choices = ChoicesOf(session_.windows().okno_filter);
  const host::SelectionFilter filter = BuildSearchFilter(kind, choices);
  int32_t count = 0;
  if (set.ok()) {
    if (mode == SearchMode::kOnScreen) {
      ActivateCadWindow(session_);
      (*set)->SelectOnScreen(filter).IgnoreError();  // counted below
    } else {
      (*set)->Select(host::SelectMode::kAll, filter).IgnoreError();
    }
    count = (*set)->Count().value_or(0);
  }
  state_.direction.clear();
  state_.start = {};
  if (count == 0) {
    user.BringToFront();
    session_.ShowMessage(core::kMsgNoObjects, host::MessageIcon::kCritical);
    return host::Outcome::kRefused;
  }

  const auto order =
      static_cast<SortOrder>(Selected(main.option_sortirovka_spisok));
  if (order == SortOrder::kPolyline) {
    state_.direction = PickDirection(session_, document);
  }
  state_.start = AskStartPoint(session_, document);

  ReaderOptions options;
  options.attribute_tag = main.uni_text_name_atribute.text();
  options.block_mode =
      static_cast<BlockSearchMode>(Selected(main.option_block_poisk));
  options.vertex_by_vertex =
      host::HostNameIs(session_.connection().host_name, host::kIntelliCadName);
  if (IsReferenceKind(kind) && choices.block_name_on) {
    options.required_block_name = choices.block_name;
  }
  options.measure.rounding = static_cast<Rounding>(
      Selected(session_.windows().okno_option.option_okruglenie));
  options.measure.sort_point =
      static_cast<SortPoint>(Selected(main.option_sort_point));
  options.measure.start = state_.start;
  options.measure.direction = state_.direction;
  FrameReader reader(document, user, std::move(options), table);

  user.SetProgressRange(count);
  user.ShowProgress(true);
  int counter = 1;
  int32_t walked = 0;
  bool interrupted = false;
  // One object at a time: a whole drawing's worth of them at once would
  // cost the embedded host more memory than the drawing itself. Only
  // polylines and references can be frames; the others are passed over
  // without being made.
  (*set)
      ->ForEachItemNamed(
          kFrameObjectNames,
          [&](const host::EntityPtr& object, int32_t position) {
            if (counter >= table.row_count()) table.SetRowCount(counter + 1);
            if (!IsHighlightMark(*object) && reader.Read(*object, counter)) {
              ++counter;
            }
            walked = position + 1;
            user.SetProgressValue(walked);
            user.PumpEvents();
            interrupted = user.interrupted();
            return !interrupted;
          })
      .IgnoreError();  // a failed walk ends with the rows made so far
  if (!interrupted && walked < count) {
    // A stop pressed after the last frame still counts, as it did while
    // the objects after it were walked.
    walked = count;
    user.SetProgressValue(walked);
    user.PumpEvents();
    interrupted = user.interrupted();
  }
  user.ShowProgress(false);
  // The blank rows of the reset go, so the table holds exactly the frames
  // read (also after an interrupt: what was made so far).
  table.SetRowCount(counter);
  main.found_count = std::to_string(counter - 1);
  if (interrupted) return host::Outcome::kInterrupted;

  OrderTable(table, order);
  if (namer_) namer_(table);
  user.BringToFront();
  session_.ShowMessage(core::kMsgSelectionComplete,
                       host::MessageIcon::kInformation);
  return host::Outcome::kDone;
}

}  // namespace lmt::frames

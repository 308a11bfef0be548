// Template capture (FrameCommands::CaptureTemplate).
#include <string>
#include <vector>

#include "core/messages.h"
#include "frames/drawing_steps.h"
#include "frames/frame_commands.h"
#include "frames/frame_template.h"

namespace lmt::frames {
namespace {

// The current text first, then every name of the collection in its order
// except one equal to the current text.
template <typename Collection>
void RefreshNames(const Result<std::shared_ptr<Collection>>& collection,
                  core::ComboBox& list) {
  if (!collection.ok()) return;
  auto items = (*collection)->Items();
  if (!items.ok()) return;
  std::vector<std::string> names = {list.text()};
  for (const auto& item : *items) {
    Result<std::string> name = item->Name();
    if (name.ok() && !EqualsNoCase(*name, list.text())) names.push_back(*name);
  }
  list.set_items(std::move(names));
}

// Fills the template from the picked object. A property the host refuses
// leaves its field as it was.
void ReadTemplate(host::Document& document, const host::Entity& picked,
                  FrameTemplate& t) {
  Result<std::string> object_name = picked.ObjectName();
  const auto* reference = dynamic_cast<const host::BlockReference*>(&picked);
  if (object_name.ok()) {
    if (EqualsNoCase(*object_name, "AcDbBlockReference")) {
      Result<bool> xref = Status::NotFound("not a block reference");
      if (reference != nullptr) {
        if (Result<std::string> name = reference->Name(); name.ok()) {
          if (auto blocks = document.Blocks(); blocks.ok()) {
            if (auto block = (*blocks)->Item(*name); block.ok()) {
              xref = (*block)->IsXRef();
            }
          }
        }
      }
      if (xref.ok()) t.kind = KindOf(*object_name, *xref);
    } else {
      t.kind = KindOf(*object_name, false);
    }
  }
  if (reference != nullptr) {
    if (Result<std::string> name = reference->EffectiveName(); name.ok()) {
      t.block_name = *name;
    }
  } else if (object_name.ok()) {
    t.block_name.clear();
  }
  if (Result<std::string> layer = picked.Layer(); layer.ok()) t.layer = *layer;
  if (Result<int32_t> color = picked.Color(); color.ok()) {
    t.color = ColorText(*color);
  }
  if (Result<std::string> linetype = picked.Linetype(); linetype.ok()) {
    t.linetype = *linetype;
  }
  if (Result<int32_t> weight = picked.LineWeight(); weight.ok()) {
    t.line_weight = LineWeightText(*weight);
  }
}

}  // namespace

host::Outcome FrameCommands::CaptureTemplate() {
  if (!session_.Connect()) return host::Outcome::kRefused;
  ScopedSearchFlag flag(session_, kFlagCapture);
  host::Document& document = session_.document();
  host::User& user = session_.user();
  core::OknoFilter& filter = session_.windows().okno_filter;

  MakeModelCurrent(document);
  RefreshNames(document.Layers(), filter.combo_sloy_linii);
  RefreshNames(document.Linetypes(), filter.combo_tip_linii);
  ActivateCadWindow(session_);
  state_.table.Reset();  // a new template discards the old result
  session_.ShowMessage(core::kMsgSelectTemplate, host::MessageIcon::kQuestion);
  ActivateCadWindow(session_);

  Result<host::SelectionSetPtr> set =
      RenewSelectionSet(document, kPrintSetName);
  int32_t count = 0;  // an unreadable set counts as empty
  if (set.ok()) {
    (*set)->SelectOnScreen(BuildPickFilter()).IgnoreError();  // empty then
    count = (*set)->Count().value_or(0);
  }
  if (count == 0) {
    user.BringToFront();
    session_.ShowMessage(core::kMsgTemplateEmpty, host::MessageIcon::kCritical);
    return host::Outcome::kRefused;
  }
  if (count >= 2) {
    user.BringToFront();
    session_.ShowMessage(core::kMsgSeveralSelected,
                         host::MessageIcon::kCritical);
  }

  FrameTemplate& t = state_.frame_template;
  if (Result<host::EntityPtr> first = (*set)->Item(0); first.ok()) {
    ReadTemplate(document, **first, t);
  }
  session_.windows().okno_lmt.active_template = t.kind;
  filter.combo_sloy_linii.set_text(t.layer);
  filter.combo_color_linii.set_text(t.color);
  filter.combo_tip_linii.set_text(t.linetype);
  filter.uni_text_name_block.set_text(t.block_name);
  filter.combo_ves_linii.set_text(LineWeightShown(t.line_weight));

  user.BringToFront();
  session_.ShowMessage(core::kMsgTemplateReceived,
                       host::MessageIcon::kInformation, t.kind);
  return host::Outcome::kDone;
}

}  // namespace lmt::frames

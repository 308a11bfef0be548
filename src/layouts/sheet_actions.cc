#include "layouts/sheet_actions.h"

#include <string>

#include "layouts/layer_helpers.h"

namespace lmt::layouts {
namespace {

bool EndsWithNoCase(std::string_view text, std::string_view tail) {
  return text.size() >= tail.size() &&
         NamesEqualNoCase(text.substr(text.size() - tail.size()), tail);
}

// TextStyles.Add and ActiveTextStyle; the font goes to the style as a font
// file for SHX fonts and as the typeface of GetFont otherwise.
void MakeTextStyle(host::Document& document, std::string_view name,
                   std::string_view font, std::string_view layout,
                   host::SkipLog& skips) {
  Result<host::TextStylesPtr> styles = document.TextStyles();
  if (!skips.Record(layout, "text styles", styles)) return;
  Result<host::TextStylePtr> style = (*styles)->Add(name);
  if (!skips.Record(layout, "add text style", style)) return;
  if (!font.empty()) {
    if (EndsWithNoCase(font, ".shx")) {
      skips.Record(layout, "font file", (*style)->SetFontFile(font));
    } else if (Result<host::Font> current = (*style)->GetFont();
               skips.Record(layout, "font", current)) {
      current->typeface = std::string(font);
      skips.Record(layout, "font", (*style)->SetFont(*current));
    }
  }
  skips.Record(layout, "active text style",
               document.SetActiveTextStyle(*style));
}

Result<host::BlockPtr> ActiveSpaceBlock(host::Document& document) {
  Result<host::Space> space = document.ActiveSpace();
  if (space.ok() && *space == host::Space::kModelSpace) {
    return document.ModelSpace();
  }
  return document.PaperSpace();
}

bool ReferenceMatches(const host::BlockReference& reference,
                      std::string_view wanted) {
  Result<std::string> name = reference.Name();
  if (name.ok() && BlockMatches(*name, wanted)) return true;
  Result<std::string> effective = reference.EffectiveName();
  return effective.ok() && BlockMatches(*effective, wanted);
}

int SetMatching(const Result<std::vector<host::AttributePtr>>& attributes,
                const AttributeChanges& changes, std::string_view layout,
                host::SkipLog& skips) {
  if (!skips.Record(layout, "attributes", attributes)) return 0;
  int set = 0;
  for (const host::AttributePtr& attribute : *attributes) {
    Result<std::string> tag = attribute->TagString();
    if (!skips.Record(layout, "attribute tag", tag)) continue;
    std::optional<std::string> value = NewAttributeValue(changes, *tag);
    if (value && skips.Record(layout, "attribute " + *tag,
                              attribute->SetTextString(*value))) {
      ++set;
    }
  }
  return set;
}

}  // namespace

host::MTextPtr CreateSheetText(host::Document& document,
                               const SheetTextSettings& settings,
                               const SheetValues& values,
                               host::SkipLog& skips) {
  const std::string_view layout = values.layout;
  const std::string text = FillPlaceholders(settings.text, values);
  MakeLayer(document, settings.layer, /*frozen=*/false,
            /*locked=*/false, /*make_active=*/true, skips);
  MakeTextStyle(document, settings.style, settings.font, layout, skips);

  Result<host::BlockPtr> space = ActiveSpaceBlock(document);
  if (!skips.Record(layout, "active space", space)) return nullptr;
  const host::Point at{settings.x, settings.y, 0};
  Result<host::MTextPtr> mtext = (*space)->AddMText(at, 0, text);
  if (!skips.Record(layout, "add text", mtext)) return nullptr;
  host::MText& m = **mtext;
  skips.Record(layout, "text height", m.SetHeight(settings.height));
  skips.Record(layout, "text attachment",
               m.SetAttachmentPoint(settings.attachment_point));
  skips.Record(layout, "text position", m.SetInsertionPoint(at));
  skips.Record(layout, "text attachment",
               m.SetAttachmentPoint(settings.attachment_point));
  skips.Record(layout, "text style", m.SetStyleName(settings.style));
  return *mtext;
}

int ChangeAttributes(host::Document& document,
                     const AttributeSettings& settings,
                     const SheetValues& values, host::SkipLog& skips) {
  const std::string_view layout = values.layout;
  const AttributeChanges changes = FillAttributeChanges(settings.typed, values);
  Result<host::SelectionSetsPtr> sets = document.SelectionSets();
  if (!skips.Record(layout, "selection sets", sets)) return 0;
  if (Result<host::SelectionSetPtr> old = (*sets)->Item(kAttributeSetName);
      old.ok()) {
    skips.Record(kAttributeSetName, "delete set", (*old)->Delete());
  }
  Result<host::SelectionSetPtr> set = (*sets)->Add(kAttributeSetName);
  if (!skips.Record(kAttributeSetName, "create set", set)) return 0;
  // Only the new layout's references: a title block of another sheet keeps
  // its values.
  host::SelectionFilter filter;
  filter.Add(0, std::string("INSERT"));
  filter.Add(410, values.layout);
  if (!skips.Record(kAttributeSetName, "select",
                    (*set)->Select(host::SelectMode::kAll, filter))) {
    return 0;
  }
  Result<std::vector<host::EntityPtr>> items = (*set)->Items();
  if (!skips.Record(kAttributeSetName, "walk", items)) return 0;
  int changed = 0;
  for (const host::EntityPtr& entity : *items) {
    host::BlockReferencePtr reference = host::As<host::BlockReference>(entity);
    if (reference == nullptr) continue;
    Result<bool> has = reference->HasAttributes();
    if (!skips.Record(layout, "has attributes", has) || !*has) {
      continue;
    }
    if (!ReferenceMatches(*reference, settings.block_name)) continue;
    changed += SetMatching(reference->GetAttributes(), changes, layout, skips);
    changed +=
        SetMatching(reference->GetConstantAttributes(), changes, layout, skips);
  }
  return changed;
}

}  // namespace lmt::layouts

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
                   std::string_view font) {
  Result<host::TextStylesPtr> styles = document.TextStyles();
  if (!styles.ok()) return;
  Result<host::TextStylePtr> style = (*styles)->Add(name);
  if (!style.ok()) return;
  if (!font.empty()) {
    if (EndsWithNoCase(font, ".shx")) {
      (void)(*style)->SetFontFile(font);
    } else if (Result<host::Font> current = (*style)->GetFont(); current.ok()) {
      current->typeface = std::string(font);
      (void)(*style)->SetFont(*current);
    }
  }
  (void)document.SetActiveTextStyle(*style);
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
                const AttributeChanges& changes) {
  if (!attributes.ok()) return 0;
  int set = 0;
  for (const host::AttributePtr& attribute : *attributes) {
    Result<std::string> tag = attribute->TagString();
    if (!tag.ok()) continue;
    std::optional<std::string> value = NewAttributeValue(changes, *tag);
    if (value && attribute->SetTextString(*value).ok()) ++set;
  }
  return set;
}

}  // namespace

Result<host::MTextPtr> CreateSheetText(host::Document& document,
                                       const SheetTextSettings& settings,
                                       const SheetValues& values) {
  const std::string text = FillPlaceholders(settings.text, values);
  (void)MakeLayer(document, settings.layer, /*frozen=*/false,
                  /*locked=*/false, /*make_active=*/true);
  MakeTextStyle(document, settings.style, settings.font);

  Result<host::BlockPtr> space = ActiveSpaceBlock(document);
  if (!space.ok()) return space.status();
  const host::Point at{settings.x, settings.y, 0};
  Result<host::MTextPtr> mtext = (*space)->AddMText(at, 0, text);
  if (!mtext.ok()) return mtext.status();
  host::MText& m = **mtext;
  (void)m.SetHeight(settings.height);
  (void)m.SetAttachmentPoint(settings.attachment_point);
  (void)m.SetInsertionPoint(at);
  (void)m.SetAttachmentPoint(settings.attachment_point);
  (void)m.SetStyleName(settings.style);
  return mtext;
}

int ChangeAttributes(host::Document& document,
                     const AttributeSettings& settings,
                     const SheetValues& values) {
  const AttributeChanges changes = FillAttributeChanges(settings.typed, values);
  Result<host::SelectionSetsPtr> sets = document.SelectionSets();
  if (!sets.ok()) return 0;
  if (Result<host::SelectionSetPtr> old = (*sets)->Item(kAttributeSetName);
      old.ok()) {
    (void)(*old)->Delete();
  }
  Result<host::SelectionSetPtr> set = (*sets)->Add(kAttributeSetName);
  if (!set.ok()) return 0;
  // Only the new layout's references: a title block of another sheet keeps
  // its values.
  host::SelectionFilter filter;
  filter.Add(0, std::string("INSERT"));
  filter.Add(410, values.layout);
  if (!(*set)->Select(host::SelectMode::kAll, filter).ok()) return 0;
  Result<std::vector<host::EntityPtr>> items = (*set)->Items();
  if (!items.ok()) return 0;
  int changed = 0;
  for (const host::EntityPtr& entity : *items) {
    host::BlockReferencePtr reference = host::As<host::BlockReference>(entity);
    if (reference == nullptr) continue;
    Result<bool> has = reference->HasAttributes();
    if (!has.ok() || !*has) continue;
    if (!ReferenceMatches(*reference, settings.block_name)) continue;
    changed += SetMatching(reference->GetAttributes(), changes);
    changed += SetMatching(reference->GetConstantAttributes(), changes);
  }
  return changed;
}

}  // namespace lmt::layouts

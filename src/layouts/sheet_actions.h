// The actions after creation on one new layout, over the host object
// model: the sheet text (an MTEXT with its placeholders filled in, on its
// own layer and text style) and the attribute change of the title blocks
// the layout holds.
//
// Every host call may fail; a failing step is skipped and the next one
// runs, so a missing style or block leaves the drawing as the host left it.
// Nothing is shown to the user: the refusals go to the run's skip log under
// the layout's name.
#ifndef LMT_LAYOUTS_SHEET_ACTIONS_H_
#define LMT_LAYOUTS_SHEET_ACTIONS_H_

#include <string_view>

#include "host/object_model.h"
#include "host/skip_log.h"
#include "layouts/run_settings.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {

// The working selection set of the attribute change.
inline constexpr std::string_view kAttributeSetName = "SS2";

// Makes `settings.layer` the active layer (thawed, unlocked) and
// `settings.style` the active text style (font from `settings.font`), then
// adds the filled-in text with AddMText to the active space at (x, y) and
// sets Height, AttachmentPoint, the insertion point again, AttachmentPoint
// again and StyleName, in that order (setting the attachment point moves
// the text). The text, or null when the host refused to add it.
host::MTextPtr CreateSheetText(host::Document& document,
                               const SheetTextSettings& settings,
                               const SheetValues& values, host::SkipLog& skips);

// Selects the block references of layout `values.layout` through the set
// "SS2" (any older set of that name is deleted first) and, in each one
// whose block name (or effective name) matches, sets every attribute and
// constant attribute whose tag matches one of the three tags to its
// filled-in value. Returns how many attributes were set.
int ChangeAttributes(host::Document& document,
                     const AttributeSettings& settings,
                     const SheetValues& values, host::SkipLog& skips);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_SHEET_ACTIONS_H_

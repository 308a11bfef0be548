// The insertion after creation: the block of the insertion options
// (OknoVstavitObject) put into each new layout's paper space, its
// attributes filled in for the sheet.
//
// A drawing file becomes a block through the host's InsertBlock, which
// takes the file's path; the host defines it once and later sheets reuse
// it. A source that is missing or cannot be used is told to the user once
// and the run goes on without insertion; a call the host refuses is
// skipped and recorded, sheet by sheet, as the other actions do.
#ifndef LMT_LAYOUTS_SHEET_INSERT_H_
#define LMT_LAYOUTS_SHEET_INSERT_H_

#include <optional>
#include <string>
#include <string_view>

#include "host/object_model.h"
#include "host/skip_log.h"
#include "layouts/run_settings.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {

// Skip steps of the insertion, under the layout's name.
inline constexpr std::string_view kSkipInsert = "insert block";

// What the user is told when the source cannot be inserted: `reason` after
// a sentence naming the source.
std::string InsertProblemText(bool russian, const InsertSettings& settings,
                              std::string_view reason);

// Before the first sheet: why the source cannot be inserted at all (an
// empty name, a block the drawing lacks, a file that does not exist, here
// or beside the drawing when relative), or
// nullopt when it may be tried. A host that refuses to list its blocks
// leaves the answer to the insertion itself.
std::optional<std::string> InsertSourceProblem(host::Document& document,
                                               const InsertSettings& settings);

// Inserts the source into `space` (a layout's block) at the sheet's point,
// scale and rotation, on the options' layer, then fills each attribute's
// value as the sheet text is filled ("##3" becomes the layout's name).
// Returns the reference, or the failed InsertBlock's status (the reference
// is then not made); later refusals only skip their step.
Result<host::BlockReferencePtr> InsertSheetBlock(host::Document& document,
                                                 host::Block& space,
                                                 const InsertSettings& settings,
                                                 const SheetValues& values,
                                                 host::SkipLog& skips);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_SHEET_INSERT_H_

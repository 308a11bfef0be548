// The batch runs of Replace attributes and Replace text: each file of the
// table is read into one ObjectDBX document (DxfIn for a path containing
// ".dxf", Open otherwise), walked (drawing_walk.h) and written where the
// options say, in the family the "Save as" choice gives (DxfOut for a
// ".dxf" target, SaveAs otherwise). No window opens in the CAD program.
//
// A file that cannot be read or written is recorded in the report and the
// run goes on. A drawing whose walk the stop button interrupted is not
// written, so no half-processed file is left behind.
#ifndef LMT_BATCH_REPLACE_RUN_H_
#define LMT_BATCH_REPLACE_RUN_H_

#include <functional>
#include <string>
#include <vector>

#include "batch/batch_run.h"
#include "batch/drawing_walk.h"
#include "core/batch_windows.h"
#include "host/object_model.h"
#include "host/session.h"

namespace lmt::batch {

struct ReplaceSettings {
  std::vector<FileEntry> files;
  bool save = true;  // `Check_SaveFile`
  SaveTargetOptions target;
  int save_as = 0;  // `Combo_SaveAsDWGorDXF`: 0 Auto, 1 DWG, 2 DXF
};

ReplaceSettings ReplaceSettingsOf(const core::OknoFunctionReplaceAtribut& w);
ReplaceSettings ReplaceSettingsOf(const core::OknoFunctionReplaceText& w);

// The work on one drawing read into the document.
using DrawingOperation = std::function<WalkStats(host::DbxDocument& drawing)>;

// The loop over the files; ends with FinishRun.
BatchReport RunDbxBatch(host::DbxDocument& dbx, BatchUi& ui,
                        const ReplaceSettings& settings,
                        const DrawingOperation& operation);

BatchReport ReplaceAttributesFiles(host::DbxDocument& dbx, BatchUi& ui,
                                   const ReplaceSettings& settings,
                                   const AttributeRun& run);
BatchReport ReplaceTextFiles(host::DbxDocument& dbx, BatchUi& ui,
                             const ReplaceSettings& settings,
                             const TextRun& run);

// The ObjectDBX document of the connection, or one asked of the host when
// the connection made none (hosts other than AutoCAD). When the host gives
// none the user is told so and the result is null.
host::DbxDocumentPtr DbxDocumentFor(host::Session& session, BatchUi& ui);

// `Command_Start` of the two windows.
BatchReport ReplaceAttributes(host::Session& session, BatchUi& ui);
BatchReport ReplaceText(host::Session& session, BatchUi& ui);

}  // namespace lmt::batch

#endif  // LMT_BATCH_REPLACE_RUN_H_

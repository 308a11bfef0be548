// Documents of the embedded host: a drawing open in the session
// (host::Document) and the ObjectDBX document (host::DbxDocument), both over
// a Drawing.
//
// Saving: SaveAs takes the DXF save types 13 (2000), 25 (2004), 37 (2007),
// 49 (2010), 61 (2013), 65 (2018) and 71 (2021); DWG types and the R12, R13
// and R14 types are refused with kNotSupported, since the engine writes DXF
// of release 2000 and later only. The engine has no release conversion yet:
// the file is written in the drawing's own release, whatever DXF type was
// asked for. Files are written to a temporary file renamed into place.
#ifndef LMT_DXFHOST_DOCUMENT_H_
#define LMT_DXFHOST_DOCUMENT_H_

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dxfhost/drawing.h"
#include "host/application.h"
#include "host/document.h"

namespace lmt::dxfhost {

// `on_close` runs when the document is closed (the application forgets it).
host::DocumentPtr MakeDocument(std::shared_ptr<Drawing> d,
                               std::weak_ptr<host::Application> application,
                               std::function<void(const Drawing*)> on_close);
// An empty ObjectDBX document; Open or DxfIn fill it.
host::DbxDocumentPtr MakeDbxDocument(std::shared_ptr<host::CallGate> gate,
                                     host::HostKind kind);
// The drawing of a document made by MakeDocument, or nullptr.
const Drawing* DrawingOf(const host::Document& document);

// Deletes the layouts named `names` of a document made by MakeDocument in
// one pass, as Layout.Delete on each in turn would (DeleteLayoutsAtOnce in
// layouts.h). Nullopt, nothing changed, for another host's document or
// when they are to be deleted one by one.
std::optional<Status> DeleteLayoutsAtOnce(
    host::Document& document, const std::vector<std::string>& names);

// Layouts need DXF 2000: converts the drawing of an R13 or R14 document in
// memory (dxf/upgrade.h) and returns the release it had ("R14"); "" when
// nothing needed doing. NotSupported for R12, unchanged.
Result<std::string> UpgradeForLayouts(host::Document& document);

// The extension-less check of the save type: the DXF release text
// ("AC1015".."AC1032") of a type number, kNotSupported for DWG and releases
// before 2000, kInvalidArgument for a number no table has.
Result<std::string> ReleaseOfSaveType(int32_t save_type);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_DOCUMENT_H_

// Writing a command's drawing to its output file (-o OUT): in the DXF
// release of the drawing it was read from, through a temporary file beside
// OUT that is renamed into place, so that a failed run never leaves a
// half-written OUT and OUT equal to the source replaces it only at the end.
#ifndef LMT_CLI_DRAWING_OUTPUT_H_
#define LMT_CLI_DRAWING_OUTPUT_H_

#include <string>

#include "core/status.h"
#include "host/document.h"

namespace lmt::cli {

// The $ACADVER of the DXF file `path` (ASCII or binary), e.g. "AC1032";
// IOError when it cannot be read, Corruption when it names no release.
Result<std::string> DxfRelease(const std::string& path);

// The host's save-as type of DXF release `release` ("AC1015" 13 ...
// "AC1032" 65); NotSupported for a release the add-in cannot save (R12).
Result<int> DxfSaveType(const std::string& release);

// Saves `document` as `out` in the release of `source`. On failure OUT is
// left as it was and the status (IOError or NotSupported) names the file.
Status SaveDrawing(host::Document& document, const std::string& source,
                   const std::string& out);

}  // namespace lmt::cli

#endif  // LMT_CLI_DRAWING_OUTPUT_H_

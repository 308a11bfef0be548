// Writing a command's drawing to its output file (-o OUT): exactly OUT (no
// extension added), in the DXF release of the drawing it was read from and
// in the engine's format of it (binary stays binary), through a temporary
// file in OUT's folder that is renamed into place, so that a failed run
// never leaves a half-written OUT or a stray temporary file, and OUT equal
// to the source replaces it only at the end. Every command that writes a
// drawing saves through here.
#ifndef LMT_CLI_DRAWING_OUTPUT_H_
#define LMT_CLI_DRAWING_OUTPUT_H_

#include <string>
#include <string_view>

#include "core/status.h"
#include "host/document.h"

namespace lmt::cli {

// The $ACADVER of the DXF file `path` (ASCII or binary), e.g. "AC1032";
// "AC1009" (R12) for a file without one or of a release before R12;
// IOError when it cannot be read.
Result<std::string> DxfRelease(const std::string& path);

// The host's DXF save-as type of release `release` ("AC1009" 1 ...
// "AC1032" 65); NotSupported for a word that names no release.
Result<int> DxfSaveType(const std::string& release);

// IOError naming `out` when it cannot be the output file: a folder, in a
// folder that does not exist, or an existing file that cannot be written.
// Commands check it before they change anything.
Status CheckOutput(const std::string& out);

// Saves `document` as `out` in the release of `source`, or in
// `at_least` ("AC1015") when that is newer. On failure OUT is left as it
// was, no temporary file remains, and the status (IOError or NotSupported)
// names OUT.
Status SaveDrawing(host::Document& document, const std::string& source,
                   const std::string& out, std::string_view at_least = {});

}  // namespace lmt::cli

#endif  // LMT_CLI_DRAWING_OUTPUT_H_

// Writing a drawing as another DXF release (2000 to 2018).
//
// The object model is the same from 2000 to 2018, so handles, owners,
// dictionaries and layouts stay as they are. What changes (as CAD programs
// write it): $ACADVER and the code of $ACADMAINTVER, header variables newer
// than the target, CLASS 91 (absent in 2000), the text encoding (code page
// with \U+XXXX escapes up to 2004, UTF-8 from 2007), and codes the target
// does not know: entity true colour and transparency (before 2004), VIEWPORT
// 170 (before 2004) and its lighting and visual-style codes (before 2007),
// LAYER 347/348, BLOCK_RECORD 70/280/281 and MTEXT background codes (before
// 2007), the ATTRIB version and lock codes, and 2018 embedded objects. A
// 2018 multi-line attribute keeps its text: it is flattened into the
// single-line value (lossy: line breaks become spaces). ACDSDATA goes before
// 2013. Nothing is added when moving to a newer release.
//
// Converting to R12, R13 or R14 is refused: those releases have one paper
// space and no layouts, so layouts would be lost. A drawing of those
// releases is written in its own release (see Document::Save).
#ifndef LMT_DXF_VERSION_H_
#define LMT_DXF_VERSION_H_

#include <string_view>

#include "dxf/document.h"
#include "dxf/status.h"

namespace lmt::dxf {

// OK for AC1015, AC1018, AC1021, AC1024, AC1027 and AC1032; otherwise
// InvalidArgument with a message that says why.
Status CheckTargetVersion(std::string_view acadver);

// Converts `doc` in place to `acadver` (see CheckTargetVersion). The source
// must be 2000 or later too.
Status ConvertVersion(Document& doc, std::string_view acadver);

// The release a drawing whose $ACADVER is `acadver` is read as: the word
// itself, or "AC1009" (R12) for an empty word, one from before R12
// ("AC1006", "AC2.10") or one that names no release, as CAD programs read
// them.
std::string_view ReleaseAsRead(std::string_view acadver);

// "R12", "R14", "DXF 2000" ... for a release word; the word itself when it
// names no release.
std::string_view ReleaseName(std::string_view acadver);

// "AC1015" for 2000, ... "AC1032" for 2018; "" for anything else.
std::string_view AcadVerOfYear(int year);

}  // namespace lmt::dxf

#endif  // LMT_DXF_VERSION_H_

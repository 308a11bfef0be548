// The sheet register (layouts/frame_register.h) against a drawing: reading
// the register file, and writing its attribute values into each listed
// frame's title block in model space and into the same tags on the frame's
// new layout (the title block the pattern layout gave it). The command line
// and the main window's import share these.
#ifndef LMT_LAYOUTS_REGISTER_VALUES_H_
#define LMT_LAYOUTS_REGISTER_VALUES_H_

#include <string>

#include "core/status.h"
#include "host/document.h"
#include "layouts/frame_register.h"

namespace lmt::layouts {

// The register in file `path`: IOError naming it when it cannot be read,
// InvalidArgument naming it and the line when it is not a register.
Result<Register> ReadRegister(const std::string& path);

// Sets the attributes of the block reference `frame.id` names to the
// register's values (tags compared ignoring case; a tag the block lacks is
// passed over). Returns how many attributes were set.
int WriteFrameValues(host::Document& document, const RegisteredFrame& frame);

// The same values on every block reference of layout `frame.layout`.
int WriteLayoutValues(host::Document& document, const RegisteredFrame& frame);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_REGISTER_VALUES_H_

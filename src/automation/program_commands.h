// What the server's command line does beyond the embedded host's, as the
// CAD programs it plays do: load a Lisp file, start a command it defines,
// and import a DXF file into model space.
//
// The Lisp is the smallest the add-in's runs need: a loaded file's
// "(defun c:NAME ...)" forms are kept as the "(command ...)" calls in their
// bodies (anything else in them is ignored), and NAME typed alone runs those
// calls in order on the embedded host's command line. An import places the
// file's model space as a block reference at the origin (the programs
// translate it into objects; the drawing's content is the same).
#ifndef LMT_AUTOMATION_PROGRAM_COMMANDS_H_
#define LMT_AUTOMATION_PROGRAM_COMMANDS_H_

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/document.h"

namespace lmt::automation {

// The commands loaded Lisp files defined, by upper-case name.
using LispCommands = std::map<std::string, std::vector<std::string>>;

// The "(command ...)" calls of each "(defun c:NAME ...)" in `lisp_text`.
LispCommands ParseLispCommands(std::string_view lisp_text);

// Runs `text` when it is a Lisp load, a loaded command's name or an import;
// nullopt when it is none of them (the embedded host's command line takes
// it then).
std::optional<Status> RunProgramCommand(LispCommands& loaded,
                                        host::Document& document,
                                        std::string_view text);

}  // namespace lmt::automation

#endif  // LMT_AUTOMATION_PROGRAM_COMMANDS_H_

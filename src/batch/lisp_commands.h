// Run Lisp's texts: the two commands sent to each drawing (load the Lisp
// file, then start its command), the start command proposed from the file's
// definitions, and the refusals before a run.
#ifndef LMT_BATCH_LISP_COMMANDS_H_
#define LMT_BATCH_LISP_COMMANDS_H_

#include <optional>
#include <string>
#include <string_view>

#include "core/status.h"

namespace lmt::batch {

// "(command (load" + '"' + path with backslashes doubled + '"' + ")" + CR +
// ")" + CR. The CR before the last parenthesis is the host's Enter for the
// load prompt and is sent as it stands.
std::string LispLoadCommand(std::string_view lisp_path);

// The user's start command followed by CR.
std::string LispStartCommand(std::string_view start_command);

// The command name of the first "(defun c:NAME" in `lisp_text`, matched
// without regard to case and with any blanks between "(" and "defun" and
// after "defun"; NAME runs up to a blank, a parenthesis or a line end.
// nullopt when the file defines no command.
std::optional<std::string> ProposeStartCommand(std::string_view lisp_text);

// The checks before a run, in this order: the Lisp file must exist ("Lisp
// file not found."), the start command must not be empty ("Enter lisp start
// command"). The failing Status carries the message to show.
Status CheckLispRun(bool lisp_file_exists, std::string_view start_command);

}  // namespace lmt::batch

#endif  // LMT_BATCH_LISP_COMMANDS_H_

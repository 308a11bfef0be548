// Run Script's texts: loading a script file into the editable script text
// (one token a line) and turning that text into the single Lisp call sent to
// each drawing, (command "tok1""tok2"...). The whole script thus runs as
// one `command` call, not through the host's script command. Pure text
// work; reading the file is the only input.
#ifndef LMT_BATCH_SCRIPT_H_
#define LMT_BATCH_SCRIPT_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "core/status.h"

namespace lmt::batch {

// The script the window shows after Load: "_Layout", "_Set", "Layout1".
inline constexpr std::string_view kSampleScript = "_Layout\r\n_Set\r\nLayout1";

// The text of a file's bytes as UTF-8: UTF-16LE when the bytes start with
// its byte-order mark, else UTF-8 (a UTF-8 mark is dropped) when they are
// valid UTF-8, else the Russian ANSI code page, Windows-1251, which is what
// the "ANSI" script files of our users are written in.
std::string DecodeTextFile(std::string_view bytes);

// Script tokenising: every blank becomes a line break (CR LF), except blanks
// between a pair of double quotes (1st with 2nd, 3rd with 4th, ...; a last
// unpaired quote protects nothing). Lone LF and lone CR line ends become
// CR LF first, so files written on any system split the same way.
std::string BlanksToLineBreaks(std::string_view text);

// Reads and tokenises the script file. kNotFound when it does not exist (the
// window then keeps its text), kIOError when it cannot be read.
Result<std::string> LoadScriptFile(const std::filesystem::path& path);

// The arguments of the call: for each CR LF line of `script_text`, "" for an
// empty line (Enter), else the line without its double quotes enclosed in
// double quotes; then every backslash doubled. An empty text has no lines
// and gives "".
std::string ScriptArguments(std::string_view script_text);

// Whether the run sends anything: arguments neither empty nor one blank.
bool ScriptSendsCommand(std::string_view arguments);

// "(command " + arguments + ")" + CR.
std::string ScriptExpression(std::string_view script_text);

// Lisp string escaping of paths.
std::string DoubleBackslashes(std::string_view text);

}  // namespace lmt::batch

#endif  // LMT_BATCH_SCRIPT_H_

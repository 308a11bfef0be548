#include "batch/lisp_commands.h"

#include "batch/batch_messages.h"
#include "batch/script.h"

namespace lmt::batch {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  while (at < text.size() && IsBlank(text[at])) ++at;
  return at;
}

}  // namespace

std::string LispLoadCommand(std::string_view lisp_path) {
  return "(command (load\"" + DoubleBackslashes(lisp_path) + "\")\r)\r";
}

std::string LispStartCommand(std::string_view start_command) {
  return std::string(start_command) + "\r";
}

std::optional<std::string> ProposeStartCommand(std::string_view lisp_text) {
  // Only the ASCII keyword is compared, so lowering ASCII bytes suffices
  // and keeps every offset valid for the original text.
  std::string folded(lisp_text);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  for (std::size_t open = folded.find('('); open != std::string::npos;
       open = folded.find('(', open + 1)) {
    std::size_t at = SkipBlanks(folded, open + 1);
    if (folded.compare(at, 5, "defun") != 0) continue;
    at += 5;
    if (at >= folded.size() || !IsBlank(folded[at])) continue;
    at = SkipBlanks(folded, at);
    if (folded.compare(at, 2, "c:") != 0) continue;
    at += 2;
    std::size_t end = at;
    while (end < folded.size() && !IsBlank(folded[end]) && folded[end] != '(' &&
           folded[end] != ')') {
      ++end;
    }
    if (end > at) return std::string(lisp_text.substr(at, end - at));
  }
  return std::nullopt;
}

Status CheckLispRun(bool lisp_file_exists, std::string_view start_command) {
  if (!lisp_file_exists) {
    return Status::NotFound(std::string(kLispFileNotFound));
  }
  if (start_command.empty()) {
    return Status::InvalidArgument(std::string(kEnterLispStartCommand));
  }
  return Status::Ok();
}

}  // namespace lmt::batch

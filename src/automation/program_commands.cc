#include "automation/program_commands.h"

#include <cctype>

#include "core/file_util.h"
#include "host/block.h"

namespace lmt::automation {
namespace {

std::string Upper(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return out;
}

bool StartsWithWord(std::string_view text, size_t at, std::string_view word) {
  return at + word.size() <= text.size() &&
         Upper(text.substr(at, word.size())) == word;
}

// The index of the parenthesis that closes the one at `open`, skipping
// Lisp strings (with their backslash escapes); npos when unbalanced.
size_t Closing(std::string_view text, size_t open) {
  int depth = 0;
  for (size_t i = open; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\') ++i;
      }
    } else if (c == ';') {
      while (i < text.size() && text[i] != '\n') ++i;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')' && --depth == 0) {
      return i;
    }
  }
  return std::string_view::npos;
}

// The first Lisp string from `at` on, unescaped; nullopt when none.
std::optional<std::string> StringAfter(std::string_view text, size_t at) {
  size_t i = text.find('"', at);
  if (i == std::string_view::npos) return std::nullopt;
  std::string out;
  for (++i; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    out += text[i];
  }
  if (i >= text.size()) return std::nullopt;
  return out;
}

std::string_view Trimmed(std::string_view text) {
  const size_t b = text.find_first_not_of(" \t\r\n");
  if (b == std::string_view::npos) return {};
  return text.substr(b, text.find_last_not_of(" \t\r\n") - b + 1);
}

}  // namespace

LispCommands ParseLispCommands(std::string_view lisp_text) {
  LispCommands out;
  const std::string_view text = lisp_text;
  std::vector<std::string>* body = nullptr;  // of the defun being read
  size_t defun_end = std::string_view::npos;
  for (size_t i = 0; i < text.size(); ++i) {
    if (body != nullptr && i >= defun_end) body = nullptr;
    const char c = text[i];
    if (c == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\') ++i;
      }
      continue;
    }
    if (c == ';') {
      while (i < text.size() && text[i] != '\n') ++i;
      continue;
    }
    if (c != '(') continue;
    size_t word = i + 1;
    while (word < text.size() &&
           std::isspace(static_cast<unsigned char>(text[word]))) {
      ++word;
    }
    const size_t close = Closing(text, i);
    if (close == std::string_view::npos) break;
    if (body != nullptr && StartsWithWord(text, word, "COMMAND")) {
      body->emplace_back(text.substr(i, close - i + 1));
      i = close;
      continue;
    }
    if (body != nullptr || !StartsWithWord(text, word, "DEFUN")) continue;
    size_t name = word + 5;
    while (name < close &&
           std::isspace(static_cast<unsigned char>(text[name]))) {
      ++name;
    }
    if (!StartsWithWord(text, name, "C:")) {
      i = close;  // a plain function: no command of its own
      continue;
    }
    size_t name_end = name + 2;
    while (name_end < close && text[name_end] != '(' &&
           !std::isspace(static_cast<unsigned char>(text[name_end]))) {
      ++name_end;
    }
    body = &out[Upper(text.substr(name + 2, name_end - name - 2))];
    body->clear();
    defun_end = close;
    i = name_end - 1;
  }
  return out;
}

std::optional<Status> RunProgramCommand(LispCommands& loaded,
                                        host::Document& document,
                                        std::string_view text) {
  const std::string_view line = Trimmed(text);
  const std::string upper = Upper(line);
  // "(command (load "path") <Enter>)": the add-in's load.
  if (upper.starts_with("(COMMAND (LOAD")) {
    std::optional<std::string> path = StringAfter(line, 0);
    if (!path) return Status::InvalidArgument("load: no file name");
    Result<std::string> lisp = core::ReadFileBytes(core::PathFromUtf8(*path));
    if (!lisp.ok()) return lisp.status();
    for (auto& [name, body] : ParseLispCommands(*lisp)) {
      loaded[name] = std::move(body);
    }
    return Status();
  }
  if (auto command = loaded.find(upper); command != loaded.end()) {
    for (const std::string& call : command->second) {
      if (Status s = document.SendCommand(call); !s.ok()) return s;
    }
    return Status();
  }
  // (command "_Import" "path").
  if (upper.starts_with("(COMMAND \"_IMPORT\"")) {
    std::optional<std::string> path =
        StringAfter(line, line.find('"', line.find('"') + 1) + 1);
    if (!path) return Status::InvalidArgument("import: no file name");
    Result<host::BlockPtr> model = document.ModelSpace();
    if (!model.ok()) return model.status();
    return (*model)
        ->InsertBlock(host::Point{0, 0, 0}, *path, 1, 1, 1, 0)
        .status();
  }
  return std::nullopt;
}

}  // namespace lmt::automation

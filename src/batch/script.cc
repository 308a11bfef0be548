#include "batch/script.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "batch/paths.h"
#include "core/text_encoding.h"

namespace lmt::batch {
namespace {

std::string NormalizeLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\r') {
      out += "\r\n";
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else if (c == '\n') {
      out += "\r\n";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

std::vector<std::string_view> SplitCrLf(std::string_view text) {
  std::vector<std::string_view> lines;
  if (text.empty()) return lines;
  std::size_t start = 0;
  while (true) {
    std::size_t at = text.find("\r\n", start);
    if (at == std::string_view::npos) {
      lines.push_back(text.substr(start));
      return lines;
    }
    lines.push_back(text.substr(start, at - start));
    start = at + 2;
  }
}

}  // namespace

std::string DecodeTextFile(std::string_view bytes) {
  if (bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE') {
    return core::Utf16ToUtf8(core::DecodeUtf16Le(bytes.substr(2)));
  }
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  if (core::IsValidUtf8(bytes)) return std::string(bytes);
  return core::Utf16ToUtf8(core::DecodeCp1251(bytes));
}

std::string BlanksToLineBreaks(std::string_view text) {
  std::string normalized = NormalizeLineEnds(text);
  // A quote opens a protected stretch only when a closing one follows.
  std::size_t quote_count = 0;
  for (char c : normalized) quote_count += c == '"';
  std::string out;
  out.reserve(normalized.size());
  std::size_t quotes_seen = 0;
  for (char c : normalized) {
    bool inside = quotes_seen % 2 == 1 && quotes_seen < quote_count;
    if (c == '"') {
      ++quotes_seen;
      out.push_back(c);
    } else if (c == ' ' && !inside) {
      out += "\r\n";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

Result<std::string> LoadScriptFile(const std::filesystem::path& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    return Status::NotFound("script file not found: " + PathToUtf8(path));
  }
  std::ifstream in(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)),
                    std::istreambuf_iterator<char>());
  if (in.bad()) {
    return Status::IOError("cannot read script file " + PathToUtf8(path));
  }
  return BlanksToLineBreaks(DecodeTextFile(bytes));
}

std::string DoubleBackslashes(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    out.push_back(c);
    if (c == '\\') out.push_back('\\');
  }
  return out;
}

std::string ScriptArguments(std::string_view script_text) {
  std::string acc;
  for (std::string_view line : SplitCrLf(script_text)) {
    acc.push_back('"');
    for (char c : line) {
      if (c != '"') acc.push_back(c);
    }
    acc.push_back('"');
  }
  return DoubleBackslashes(acc);
}

bool ScriptSendsCommand(std::string_view arguments) {
  return !arguments.empty() && arguments != " ";
}

std::string ScriptExpression(std::string_view script_text) {
  return "(command " + ScriptArguments(script_text) + ")\r";
}

}  // namespace lmt::batch

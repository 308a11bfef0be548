#include "layouts/layout_naming.h"

#include <array>
#include <string>

namespace lmt::layouts {
namespace {

using frames::Column;

// In the order they are replaced.
constexpr std::array<char, 13> kForbidden = {
    '>', '<', '/', '\\', ':', ';', '?', '*', '|', ',', '=', '\'', '"'};

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; }

// ASCII case-insensitive replacement of every occurrence, left to right.
std::string ReplaceAllNoCase(std::string_view text, std::string_view from,
                             std::string_view to) {
  std::string out;
  size_t i = 0;
  while (i < text.size()) {
    bool match = i + from.size() <= text.size();
    for (size_t k = 0; match && k < from.size(); ++k) {
      match = Lower(text[i + k]) == Lower(from[k]);
    }
    if (match) {
      out += to;
      i += from.size();
    } else {
      out += text[i++];
    }
  }
  return out;
}

}  // namespace

std::string CleanLayoutName(std::string_view name) {
  std::string out = ReplaceAllNoCase(name, "\r\n", " ");
  // "\P" is the paragraph break of multi-line texts and attribute values.
  out = ReplaceAllNoCase(out, "\\P", " ");
  for (char c : kForbidden) {
    for (char& ch : out) {
      if (ch == c) ch = '.';
    }
  }
  return out;
}

std::string BuildLayoutName(std::string_view name_template, int row,
                            const NamingTexts& texts,
                            std::string_view block_name,
                            std::string_view attribute) {
  if (name_template.empty()) return CleanLayoutName(std::to_string(row));
  std::string name;
  std::string_view rest = name_template;
  while (true) {
    size_t slash = rest.find('/');
    std::string_view code = rest.substr(0, slash);
    if (code == "10") {
      name += texts.text10;
    } else if (code == "11") {
      name += texts.text11;
    } else if (code == "12") {
      name += texts.text12;
    } else if (code == "20") {
      name += std::to_string(row);
    } else if (code == "30") {
      name += block_name;
    } else if (code == "31") {
      name += attribute;
    }
    if (slash == std::string_view::npos) break;
    rest.remove_prefix(slash + 1);
  }
  return CleanLayoutName(name);
}

void NameAllRows(frames::FrameTable& table, std::string_view name_template,
                 const NamingTexts& texts) {
  for (int r = 1; r <= table.last_row(); ++r) {
    table.SetCell(r, Column::kLayoutName,
                  BuildLayoutName(name_template, r, texts,
                                  table.Cell(r, Column::kBlockName),
                                  table.Cell(r, Column::kAttribute)));
  }
}

void UpdateTable(frames::FrameTable& table, std::string_view name_template,
                 const NamingTexts& texts) {
  table.Renumber();
  NameAllRows(table, name_template, texts);
}

bool NamingKeyAllowed(int key_code) {
  return (key_code >= '0' && key_code <= '9') || key_code == '/' ||
         key_code == 8;
}

}  // namespace lmt::layouts

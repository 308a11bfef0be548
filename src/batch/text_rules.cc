#include "batch/text_rules.h"

#include "batch/batch_messages.h"
#include "core/text_case.h"

namespace lmt::batch {
namespace {

std::string ApplyGroup(const TextGroup& group, TextFormat format,
                       std::string content) {
  switch (group.mode) {
    case ValueMode::kNewValue:
      content = EscapeContent(group.replacement, format);
      break;
    case ValueMode::kReplace: {
      ReplacementPair pair{group.find, group.replacement};
      content = ReplaceInContent(content, format, {&pair, 1});
      break;
    }
    case ValueMode::kKeep:
      break;
  }
  if (group.use_prefix) content = EscapeContent(group.prefix, format) + content;
  if (group.use_suffix) content += EscapeContent(group.suffix, format);
  return content;
}

std::string ApplyList(const TextOptions& options, TextFormat format,
                      std::string_view content) {
  std::string plain = PlainContent(content, format);
  std::string out(content);
  bool matched = false;
  for (const ReplacementPair& pair : options.list) {
    if (pair.find.empty()) continue;
    if (options.list_match == ListMatch::kWholeText) {
      if (core::EqualsIgnoreCase(plain, pair.find)) {
        out = EscapeContent(pair.replace, format);
        matched = true;
        break;
      }
    } else if (core::FindIgnoreCase(plain, pair.find) !=
               std::string_view::npos) {
      matched = true;
      break;
    }
  }
  if (!matched) return out;
  if (options.list_match == ListMatch::kOccurrences) {
    out = ReplaceInContent(content, format, options.list);
  }
  if (options.list_use_prefix) {
    out = EscapeContent(options.list_prefix, format) + out;
  }
  if (options.list_use_suffix)
    out += EscapeContent(options.list_suffix, format);
  return out;
}

}  // namespace

ListMatch ListMatchFromIndex(int index) {
  return index >= 0 && index <= 2 ? static_cast<ListMatch>(index)
                                  : ListMatch::kKeep;
}

std::optional<TextObject> TextObjectFromName(std::string_view object_name) {
  if (object_name == "AcDbText") return TextObject::kText;
  if (object_name == "AcDbMText") return TextObject::kMText;
  if (object_name == "AcDbMLeader") return TextObject::kMLeader;
  return std::nullopt;
}

TextFormat FormatOf(TextObject object) {
  return object == TextObject::kText ? TextFormat::kPlain : TextFormat::kMText;
}

bool TextObjectInScope(TextObject object, const TextOptions& options) {
  return object == TextObject::kMLeader ? options.leaders : options.texts;
}

std::optional<std::string> RewriteText(const TextOptions& options,
                                       TextObject object,
                                       std::string_view content) {
  TextFormat format = FormatOf(object);
  std::string out(content);
  if (options.use_list) {
    out = ApplyList(options, format, content);
  } else {
    for (const TextGroup& group : options.groups) {
      if (!group.enabled || group.find.empty()) continue;
      if (core::FindIgnoreCase(PlainContent(out, format), group.find) ==
          std::string_view::npos) {
        continue;
      }
      out = ApplyGroup(group, format, std::move(out));
    }
  }
  if (out == content) return std::nullopt;
  return out;
}

Result<std::vector<ReplacementPair>> ParsePastedTable(std::string_view text) {
  if (text.empty()) return Status::NotFound(std::string(kClipboardEmpty));
  std::vector<ReplacementPair> pairs;
  std::vector<std::string> cells(1);
  auto end_row = [&] {
    if (!cells[0].empty()) {
      pairs.push_back({cells[0], cells.size() > 1 ? cells[1] : ""});
    }
    cells.assign(1, "");
  };
  std::size_t i = 0;
  bool cell_start = true;
  while (i < text.size()) {
    char c = text[i];
    if (cell_start && c == '"') {
      // A quoted cell runs to the quote not doubled.
      ++i;
      while (i < text.size()) {
        if (text[i] == '"') {
          if (i + 1 < text.size() && text[i + 1] == '"') {
            cells.back().push_back('"');
            i += 2;
            continue;
          }
          ++i;
          break;
        }
        cells.back().push_back(text[i++]);
      }
      cell_start = false;
      continue;
    }
    cell_start = false;
    if (c == '\t') {
      cells.emplace_back();
      cell_start = true;
      ++i;
    } else if (c == '\r' || c == '\n') {
      end_row();
      cell_start = true;
      i += (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
    } else {
      cells.back().push_back(c);
      ++i;
    }
  }
  end_row();
  return pairs;
}

}  // namespace lmt::batch

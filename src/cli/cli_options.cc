#include "cli/cli_options.h"

#include <cctype>
#include <charconv>
#include <map>
#include <string_view>

#include "cli/plain_options.h"
#include "frames/template_candidates.h"

namespace lmt::cli {
namespace {

bool IsHandle(std::string_view text) {
  if (text.empty() || text.size() > 16) return false;
  for (char c : text) {
    if (!std::isxdigit(static_cast<unsigned char>(c))) return false;
  }
  return true;
}

Status BadHandle(std::string_view option, std::string_view text) {
  return Status::InvalidArgument(std::string(option) +
                                 " expects a hexadecimal DXF handle, not '" +
                                 std::string(text) + "'");
}

bool ParseDouble(std::string_view text, double& value) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  auto [ptr, ec] =
      std::from_chars(text.data(), text.data() + text.size(), value);
  return !text.empty() && ec == std::errc() && ptr == text.data() + text.size();
}

Result<SetAssignment> ParseSet(std::string_view text) {
  const size_t eq = text.find('=');
  const size_t dot = text.find('.');
  if (eq == std::string_view::npos || dot == std::string_view::npos ||
      dot > eq || dot == 0 || dot + 1 == eq) {
    return Status::InvalidArgument("--set expects SECTION.KEY=VALUE, not '" +
                                   std::string(text) + "'");
  }
  return SetAssignment{std::string(text.substr(0, dot)),
                       std::string(text.substr(dot + 1, eq - dot - 1)),
                       std::string(text.substr(eq + 1))};
}

bool TakesValue(std::string_view name) {
  for (const GlobalOption& option : GlobalOptions()) {
    if (option.name == name) return option.values > 0;
  }
  return false;
}

Status Apply(CliOptions& o, std::string_view name, std::string_view value) {
  if (name == "--settings") {
    o.settings_file = std::string(value);
  } else if (name == "--lang") {
    o.lang_file = std::string(value);
  } else if (name == "--set") {
    Result<SetAssignment> set = ParseSet(value);
    if (!set.ok()) return set.status();
    o.sets.push_back(*set);
  } else if (name == "--template") {
    const frames::TemplateQuery query = frames::ParseTemplateQuery(value);
    if (query.kind == frames::TemplateQuery::Kind::kHandle) {
      if (!IsHandle(value)) return BadHandle(name, value);
    } else if (query.kind != frames::TemplateQuery::Kind::kAuto &&
               query.value.empty()) {
      return Status::InvalidArgument("--template " + std::string(value) +
                                     " names no block or layer");
    }
    o.template_handle = std::string(value);
  } else if (name == "--pick") {
    o.pick_given = true;
    size_t pos = 0;
    while (pos <= value.size()) {
      size_t comma = value.find(',', pos);
      if (comma == std::string_view::npos) comma = value.size();
      std::string_view handle = value.substr(pos, comma - pos);
      if (!IsHandle(handle)) return BadHandle(name, handle);
      o.pick_handles.emplace_back(handle);
      pos = comma + 1;
    }
  } else if (name == "--start" || name == "--index-at") {
    const size_t comma = value.find(',');
    Point2 p;
    if (comma == std::string_view::npos ||
        !ParseDouble(value.substr(0, comma), p.x) ||
        !ParseDouble(value.substr(comma + 1), p.y)) {
      return Status::InvalidArgument(std::string(name) + " expects X,Y, not '" +
                                     std::string(value) + "'");
    }
    (name == "--start" ? o.start : o.index_at) = p;
  } else if (name == "--sort-polyline") {
    if (!IsHandle(value)) return BadHandle(name, value);
    o.sort_polyline = std::string(value);
  } else if (name == "--viewport") {
    if (!IsHandle(value)) return BadHandle(name, value);
    o.viewport = std::string(value);
  } else if (name == "-o" || name == "--output") {
    if (value.empty()) return Status::InvalidArgument("-o expects a file");
    o.output = std::string(value);
  } else if (name == "--preview") {
    if (value.empty())
      return Status::InvalidArgument("--preview expects a file");
    o.preview = std::string(value);
  } else if (name == "--layouts") {
    o.layouts = std::string(value);
  } else if (name == "--pdf") {
    if (value.empty()) return Status::InvalidArgument("--pdf expects a file");
    o.pdf = std::string(value);
  } else if (name == "--csv") {
    if (value.empty()) return Status::InvalidArgument("--csv expects a file");
    o.csv = std::string(value);
  } else if (name == "--register") {
    if (value.empty()) {
      return Status::InvalidArgument("--register expects a file");
    }
    o.register_file = std::string(value);
  } else if (name == "--index-layout") {
    if (value.empty()) {
      return Status::InvalidArgument("--index-layout expects a layout name");
    }
    o.index_layout = std::string(value);
  } else if (name == "--index-columns") {
    o.index_columns.clear();
    size_t pos = 0;
    while (pos <= value.size()) {
      size_t comma = value.find(',', pos);
      if (comma == std::string_view::npos) comma = value.size();
      if (comma > pos)
        o.index_columns.emplace_back(value.substr(pos, comma - pos));
      pos = comma + 1;
    }
  } else if (name == "--mark") {
    if (value.empty()) return Status::InvalidArgument("--mark expects a file");
    o.mark = std::string(value);
  } else if (name == "--by") {
    if (value.empty()) {
      return Status::InvalidArgument(
          "--by expects name, reverse, table or attribute:TAG");
    }
    o.by = std::string(value);
  } else if (name == "--row") {
    int row = 0;
    auto [ptr, ec] =
        std::from_chars(value.data(), value.data() + value.size(), row);
    if (value.empty() || ec != std::errc() ||
        ptr != value.data() + value.size() || row < 1) {
      return Status::InvalidArgument(
          "--row expects a row number of 1 or more, not '" +
          std::string(value) + "'");
    }
    o.row = row;
  } else if (name == "--sheets-per-file") {
    int count = 0;
    auto [ptr, ec] =
        std::from_chars(value.data(), value.data() + value.size(), count);
    if (value.empty() || ec != std::errc() ||
        ptr != value.data() + value.size() || count < 1) {
      return Status::InvalidArgument(
          "--sheets-per-file expects a whole number of 1 or more, not '" +
          std::string(value) + "'");
    }
    o.sheets_per_file = count;
  }
  return Status::Ok();
}

}  // namespace

const std::vector<GlobalOption>& GlobalOptions() {
  static const std::vector<GlobalOption> options = {
      {"--settings", 1},
      {"--set", 1},
      {"--lang", 1},
      {"--template", 1},
      {"--pick", 1},
      {"--start", 1},
      {"--sort-polyline", 1},
      {"--viewport", 1},
      {"--yes", 0},
      {"-o", 1},
      {"--output", 1},
      {"--json", 0},
      {"-q", 0},
      {"--quiet", 0},
      {"-v", 0},
      {"--verbose", 0},
      {"--explain", 0},
      {"--preview", 1},
      {"--layouts", 1},
      {"--one-file", 0},
      {"--file-per-sheet", 0},
      {"--monochrome", 0},
      {"--pdf", 1},
      {"--dry-run", 0},
      {"--recover", 0},
      {"--sheets-per-file", 1},
      {"--csv", 1},
      {"--register", 1},
      {"--index-layout", 1},
      {"--index-at", 1},
      {"--index-columns", 1},
      {"--mark", 1},
      {"--by", 1},
      {"--row", 1},
      {"-h", 0},
      {"--help", 0},
      {"--version", 0},
  };
  return options;
}

std::optional<uint64_t> ParseObjectId(std::string_view handle) {
  if (!IsHandle(handle)) return std::nullopt;
  uint64_t id = 0;
  auto [ptr, ec] =
      std::from_chars(handle.data(), handle.data() + handle.size(), id, 16);
  if (ec != std::errc() || ptr != handle.data() + handle.size()) {
    return std::nullopt;
  }
  return id;
}

Result<CliOptions> ParseCommandLine(const std::vector<std::string>& args) {
  CliOptions o;
  std::map<const PlainOption*, int> plain_uses;  // numbers repeated uses
  bool options_ended = false;
  for (size_t i = 0; i < args.size(); ++i) {
    std::string_view arg = args[i];
    const bool is_option =
        !options_ended && arg.size() > 1 && arg.front() == '-';
    if (!is_option) {
      if (o.command.empty()) {
        o.command = std::string(arg);
      } else {
        o.args.emplace_back(arg);
      }
      continue;
    }
    if (arg == "--") {
      options_ended = true;
      continue;
    }
    std::string_view name = arg;
    std::optional<std::string_view> inline_value;
    if (const size_t eq = arg.find('=');
        arg.starts_with("--") && eq != std::string_view::npos) {
      name = arg.substr(0, eq);
      inline_value = arg.substr(eq + 1);
    }
    if (name == "--help" || name == "-h") {
      o.help = true;
    } else if (name == "--version") {
      o.version = true;
    } else if (name == "--yes") {
      o.yes = true;
    } else if (name == "--json") {
      o.json = true;
    } else if (name == "--quiet" || name == "-q") {
      o.quiet = true;
    } else if (name == "--verbose" || name == "-v") {
      o.verbose = true;
    } else if (name == "--explain") {
      o.explain = true;
    } else if (name == "--one-file") {
      o.one_file = true;
    } else if (name == "--file-per-sheet") {
      o.file_per_sheet = true;
    } else if (name == "--monochrome") {
      o.monochrome = true;
    } else if (name == "--dry-run") {
      o.dry_run = true;
    } else if (name == "--recover") {
      o.recover = true;
    } else if (TakesValue(name)) {
      std::string_view value;
      if (inline_value) {
        value = *inline_value;
      } else if (i + 1 < args.size()) {
        value = args[++i];
      } else {
        return Status::InvalidArgument(std::string(name) + " needs a value");
      }
      Status s = Apply(o, name, value);
      if (!s.ok()) return s;
      continue;
    } else if (const PlainOption* plain = FindPlainOption(name)) {
      const int count = PlainArgumentCount(*plain);
      if (count == 0 && inline_value) {
        return Status::InvalidArgument(std::string(name) + " takes no value");
      }
      std::vector<std::string_view> values;
      if (inline_value) values.push_back(*inline_value);
      while (static_cast<int>(values.size()) < count) {
        if (i + 1 >= args.size()) {
          return Status::InvalidArgument(std::string(name) + " needs " +
                                         std::to_string(count) +
                                         (count == 1 ? " value" : " values"));
        }
        values.push_back(args[++i]);
      }
      Result<std::vector<PlainWrite>> writes =
          TranslatePlainOption(*plain, values, ++plain_uses[plain]);
      if (!writes.ok()) return writes.status();
      o.plain.insert(o.plain.end(), writes->begin(), writes->end());
      continue;
    } else {
      return Status::InvalidArgument("unknown option " + std::string(name));
    }
    if (inline_value) {
      return Status::InvalidArgument(std::string(name) + " takes no value");
    }
  }
  if (o.quiet && o.verbose) {
    return Status::InvalidArgument("--quiet contradicts --verbose");
  }
  return o;
}

std::string GlobalOptionsHelp() {
  return "Options:\n"
         "  --settings FILE        read the controls from FILE (default: the "
         "user's settings file)\n"
         "  --set SECTION.KEY=VALUE  set one control after the settings "
         "(repeatable)\n"
         "  --lang en|ru|FILE      built-in English or Russian texts, or FILE "
         "as the\n"
         "                         language file\n"
         "  --template HANDLE      the picked frame template; also "
         "block:NAME,\n"
         "                         layer:NAME or auto (see 'layomat "
         "templates')\n"
         "  --pick HANDLE[,...]    the objects picked on screen (default: the "
         "whole model)\n"
         "  --start X,Y            the sort start point\n"
         "  --sort-polyline HANDLE the direction polyline for sorting\n"
         "  --viewport HANDLE      the viewport picked for deletion outside\n"
         "  --yes                  answer Yes to every question\n"
         "  -o, --output FILE      the drawing to write\n"
         "  --json                 print results as JSON (one document on "
         "standard output)\n"
         "  -q, --quiet            errors only: no per-item lines, no "
         "progress\n"
         "  -v, --verbose          also what was done with each item\n"
         "  --explain              settings: each control's meaning and "
         "plain option\n"
         "  --preview FILE.svg     draw the model space with the frames "
         "found\n"
         "  --layouts PATTERN      plot only layouts matching PATTERN (* ?)\n"
         "  --one-file, --file-per-sheet  one PDF, or one file per layout\n"
         "  --monochrome           plot everything black\n"
         "  --pdf FILE.pdf         create-layouts: plot the new layouts\n"
         "  --csv FILE             frames: also write the table with the "
         "title\n"
         "                         blocks' attributes as a CSV file\n"
         "  --mark OUT             frames: also write the drawing with the "
         "frames\n"
         "                         outlined and numbered on layer AViewport\n"
         "  --by ORDER             sort-layouts: name, reverse, table or "
         "attribute:TAG\n"
         "  --row N                show: the row of the frame table to "
         "zoom onto\n"
         "  --dry-run              create-layouts: print the plan and its "
         "warnings,\n"
         "                         write nothing (no -o needed)\n"
         "  --sheets-per-file N    create-layouts: write OUT-1, OUT-2, ... "
         "with N new\n"
         "                         layouts each (--file-per-sheet: one "
         "each)\n"
         "  --recover              read damaged drawings as far as they can "
         "be\n"
         "                         repaired, listing each repair\n"
         "  --register FILE        create-layouts: the sheets, their order, "
         "names and\n"
         "                         title-block values from a CSV of "
         "'frames --csv'\n"
         "  --index-layout NAME, --index-at X,Y  create-layouts: draw a "
         "table of\n"
         "                         the sheets made on layout NAME at X,Y\n"
         "  --index-columns TAG,...  attribute columns of that table\n"
         "  --help, --version\n"
         "Plain options such as --scale 1:100 or --names Sheet- set the same "
         "controls\nas --set; 'layomat help options' lists them.\n";
}

}  // namespace lmt::cli

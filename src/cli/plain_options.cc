#include "cli/plain_options.h"

#include <optional>

#include "cli/cli_app.h"
#include "core/check.h"
#include "core/numbers.h"
#include "core/settings.h"
#include "core/text_encoding.h"

namespace lmt::cli {
namespace {

constexpr std::string_view kMain = "OknoLmt";
constexpr std::string_view kParams = "OknoSozdatLayout";
constexpr std::string_view kActions = "OknoDeistvie";
constexpr std::string_view kInsert = "OknoVstavitObject";

// A name the host takes as a drawing file rather than a block: no block
// name ends in a drawing's extension or holds a path separator.
bool IsDrawingFile(std::string_view text) {
  auto ends_with = [&](std::string_view tail) {
    return text.size() > tail.size() &&
           core::EqualsIgnoreAsciiCase(text.substr(text.size() - tail.size()),
                                       tail);
  };
  return ends_with(".dxf") || ends_with(".dwg") ||
         text.find_first_of("/\\") != std::string_view::npos;
}
constexpr std::string_view kPrinter = "OknoIzmenitPrinter";

// A number as the window's numeric fields take it: digits with at most one
// "." (or "," where `comma_ok`), optionally signed.
bool IsNumber(std::string_view text, bool signed_ok, bool comma_ok) {
  if (signed_ok && !text.empty() && text.front() == '-') text.remove_prefix(1);
  bool digit = false;
  bool separator = false;
  for (char c : text) {
    if (c >= '0' && c <= '9') {
      digit = true;
    } else if ((c == '.' || (comma_ok && c == ',')) && !separator) {
      separator = true;
    } else {
      return false;
    }
  }
  return digit;
}

bool IsPositive(std::string_view text) {
  return IsNumber(text, /*signed_ok=*/false, /*comma_ok=*/true) &&
         core::TextToNumber(text, /*decimal_comma=*/false) > 0;
}

// `text` split at the first `separator`, or nullopt without one.
std::optional<std::vector<std::string_view>> SplitPair(std::string_view text,
                                                       char separator) {
  const size_t at = text.find(separator);
  if (at == std::string_view::npos) return std::nullopt;
  return std::vector<std::string_view>{text.substr(0, at), text.substr(at + 1)};
}

// The parts of `args` that `form` accepts ($1, $2), or nullopt.
std::optional<std::vector<std::string_view>> Match(
    const PlainForm& form, const std::vector<std::string_view>& args) {
  using Parts = std::vector<std::string_view>;
  switch (form.arg) {
    case PlainArg::kNone:
      return Parts{};
    case PlainArg::kWord:
      if (core::EqualsIgnoreAsciiCase(args[0], form.usage)) return Parts{};
      return std::nullopt;
    case PlainArg::kText:
      if (args[0].empty()) return std::nullopt;
      return Parts{args[0]};
    case PlainArg::kTwoTexts:
      if (args[0].empty() || args[1].empty()) return std::nullopt;
      return Parts{args[0], args[1]};
    case PlainArg::kPositive:
      if (!IsPositive(args[0])) return std::nullopt;
      return Parts{args[0]};
    case PlainArg::kRatio: {
      auto parts = SplitPair(args[0], ':');
      if (!parts || !IsPositive((*parts)[0]) || !IsPositive((*parts)[1])) {
        return std::nullopt;
      }
      return parts;
    }
    case PlainArg::kPoint: {
      auto parts = SplitPair(args[0], ',');
      if (!parts || !IsNumber((*parts)[0], true, false) ||
          !IsNumber((*parts)[1], true, false)) {
        return std::nullopt;
      }
      return parts;
    }
    case PlainArg::kNumbering:
      // The field's own key filter lets only digits and "/" in.
      if (args[0].empty() ||
          args[0].find_first_not_of("0123456789/") != std::string_view::npos) {
        return std::nullopt;
      }
      return Parts{args[0]};
    case PlainArg::kTagValue: {
      auto parts = SplitPair(args[0], '=');
      if (!parts || (*parts)[0].empty()) return std::nullopt;
      return parts;
    }
    case PlainArg::kNumber:
      if (!IsNumber(args[0], /*signed_ok=*/true, /*comma_ok=*/true)) {
        return std::nullopt;
      }
      return Parts{args[0]};
    case PlainArg::kFile:
      if (!IsDrawingFile(args[0])) return std::nullopt;
      return Parts{args[0]};
  }
  return std::nullopt;
}

// What each shape means, for the message on a bad argument.
std::string_view Describe(PlainArg arg) {
  switch (arg) {
    case PlainArg::kNone:
    case PlainArg::kWord:
      return "";
    case PlainArg::kText:
    case PlainArg::kTwoTexts:
      return " (not empty)";
    case PlainArg::kPositive:
      return " (a number above 0)";
    case PlainArg::kRatio:
      return " (two numbers above 0)";
    case PlainArg::kPoint:
      return " (two numbers)";
    case PlainArg::kNumbering:
      return " (codes 10, 11, 12, 20, 30, 31 joined by /)";
    case PlainArg::kTagValue:
      return " (TAG not empty)";
    case PlainArg::kNumber:
      return " (a number)";
    case PlainArg::kFile:
      return " (a .dxf file)";
  }
  return "";
}

// Replaces every "$1"/"$2" in `text` by parts[0]/parts[1], and every "#"
// by `use`.
std::string Fill(std::string_view text,
                 const std::vector<std::string_view>& parts,
                 std::string_view use) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '$' && i + 1 < text.size() && text[i + 1] >= '1' &&
        text[i + 1] <= '2') {
      const size_t part = static_cast<size_t>(text[i + 1] - '1');
      if (part < parts.size()) out += parts[part];
      ++i;
    } else if (text[i] == '#') {
      out += use;
    } else {
      out += text[i];
    }
  }
  return out;
}

// The names of a form's parts as its usage writes them ("P:M" -> P, M).
std::vector<std::string_view> PartNames(const PlainForm& form) {
  std::string_view separator;
  switch (form.arg) {
    case PlainArg::kRatio:
      separator = ":";
      break;
    case PlainArg::kPoint:
      separator = ",";
      break;
    case PlainArg::kTagValue:
      separator = "=";
      break;
    case PlainArg::kTwoTexts:
      separator = " ";
      break;
    default:
      return {form.usage};
  }
  const size_t at = form.usage.find(separator);
  return {form.usage.substr(0, at), form.usage.substr(at + 1)};
}

// The value words of every slot of `control`.
std::vector<std::string> Snapshot(const core::Control& control) {
  std::vector<std::string> words;
  for (int slot = 0; slot < control.slot_count(); ++slot) {
    words.push_back(control.ValueWord(slot));
  }
  return words;
}

// Puts a snapshot back. In slot order this also restores an option group:
// its one "True" selects, and a "False" clears only the selected button.
void Restore(core::Control& control, const std::vector<std::string>& words) {
  for (int slot = 0; slot < control.slot_count(); ++slot) {
    control.SetValueWord(slot, words[static_cast<size_t>(slot)]).IgnoreError();
  }
}

// Two writes agree when their order does not matter: both orders leave the
// control in the same state (same text, same button, or a "False" for a
// button the other write does not select). Values that do not fit the
// control count as agreeing here; applying them reports them.
bool Agree(core::Control& control, int slot_a, std::string_view a, int slot_b,
           std::string_view b) {
  const std::vector<std::string> before = Snapshot(control);
  const bool a_fits = control.SetValueWord(slot_a, a).ok();
  const bool b_fits = control.SetValueWord(slot_b, b).ok();
  const std::vector<std::string> a_then_b = Snapshot(control);
  Restore(control, before);
  control.SetValueWord(slot_b, b).IgnoreError();
  control.SetValueWord(slot_a, a).IgnoreError();
  const std::vector<std::string> b_then_a = Snapshot(control);
  Restore(control, before);
  return !a_fits || !b_fits || a_then_b == b_then_a;
}

std::string SetText(const SetAssignment& set) {
  return "--set " + set.section + "." + set.key + "=" + set.value;
}

}  // namespace

const std::vector<PlainOption>& PlainOptions() {
  using A = PlainArg;
  static const std::vector<PlainOption> table = {
      {"--scale",
       {{A::kRatio,
         "P:M",
         "fixed viewport scale, paper units to model units",
         {{kParams, "OptionSelectMashtab0", "True"},
          {kParams, "TextMashtabBumaga", "$1"},
          {kParams, "TextMashtabModel", "$2"}}},
        {A::kWord,
         "from-width",
         "scale each viewport so that its frame's width fills the paper "
         "length",
         {{kParams, "OptionSelectMashtab1", "True"}}}}},
      {"--paper-length",
       {{A::kPositive,
         "L",
         "the paper length of --scale from-width",
         {{kParams, "TextAutoMashtabRamka", "$1"}}}}},
      {"--layer",
       {{A::kText,
         "NAME",
         "layer of the viewports",
         {{kParams, "TextNameSloiViewport", "$1"}}}}},
      {"--names",
       {{A::kText,
         "TEXT",
         "text 10 of the layout names",
         {{kMain, "UniTextLeyoutName0", "$1"}}}}},
      {"--numbering",
       {{A::kNumbering,
         "CODES",
         "layout names: codes joined by / (10 text, 20 number, 30 block "
         "name, 31 attribute)",
         {{kMain, "TextStrokaNameFile", "$1"}}}}},
      {"--pattern-layout",
       {{A::kText,
         "NAME",
         "copy each new layout from layout NAME of the drawing",
         {{kMain, "OptionVidSozdatLayout1", "True"},
          {kMain, "UniTextNameObrazecLayout", "$1"}}}}},
      {"--template-file",
       {{A::kTwoTexts,
         "FILE LAYOUT",
         "copy each new layout from layout LAYOUT of drawing FILE",
         {{kMain, "OptionVidSozdatLayout2", "True"},
          {kMain, "UniTextNameObrazecPutFileLayout", "$1"},
          {kMain, "UniTextNameObrazecLayout", "$2"}}}}},
      {"--order",
       {{A::kWord,
         "columns",
         "frames in columns left to right, each top down",
         {{kMain, "OptionSortirovkaSpisok0", "True"}}},
        {A::kWord,
         "columns-up",
         "frames in columns left to right, each bottom up",
         {{kMain, "OptionSortirovkaSpisok1", "True"}}},
        {A::kWord,
         "rows",
         "frames in rows top down, each left to right",
         {{kMain, "OptionSortirovkaSpisok2", "True"}}},
        {A::kWord,
         "rows-up",
         "frames in rows bottom up, each left to right",
         {{kMain, "OptionSortirovkaSpisok3", "True"}}},
        {A::kWord,
         "start",
         "frames nearest to the point of --start X,Y first",
         {{kMain, "OptionSortirovkaSpisok4", "True"}}},
        {A::kWord,
         "attribute",
         "frames by their attribute value",
         {{kMain, "OptionSortirovkaSpisok5", "True"}}},
        {A::kWord,
         "polyline",
         "frames along the polyline of --sort-polyline HANDLE",
         {{kMain, "OptionSortirovkaSpisok6", "True"}}}}},
      {"--by-inner-polyline",
       {{A::kNone,
         "",
         "block frames: the corners of the polyline inside",
         {{kMain, "OptionBlockPoisk0", "True"}}}}},
      {"--by-size",
       {{A::kNone,
         "",
         "block frames: the corners of the reference's extents",
         {{kMain, "OptionBlockPoisk1", "True"}}}}},
      {"--by-size-unrotated",
       {{A::kNone,
         "",
         "block frames: the extents when not rotated",
         {{kMain, "OptionBlockPoisk2", "True"}}}}},
      {"--text",
       {{A::kText,
         "TEXT",
         "a text on each new layout (##1 number, ##2 drawing, ##3 layout, "
         "##4 scale, ##N number of layouts)",
         {{kActions, "CheckSozdatText", "1"},
          {kActions, "TextTextStroka", "$1"}}}}},
      {"--text-at",
       {{A::kPoint,
         "X,Y",
         "insertion point of the text",
         {{kActions, "TextTextCoordX", "$1"},
          {kActions, "TextTextCoordY", "$2"}}}}},
      {"--text-height",
       {{A::kPositive,
         "H",
         "height of the text",
         {{kActions, "TextTextVisota", "$1"}}}}},
      {"--attribute-block",
       {{A::kText,
         "NAME",
         "the block whose attributes --attribute sets",
         {{kActions, "TextNameBlock", "$1"}}}}},
      {"--attribute",
       {{A::kTagValue,
         "TAG=VALUE",
         "set attribute TAG on each new layout (up to 3 times: N = 1, 2, 3)",
         {{kActions, "CheckIzmenitAtribut", "1"},
          {kActions, "TextImiaAtribut#", "$1"},
          {kActions, "TextValueAtribut#", "$2"}}}},
       3},
      {"--insert",
       {{A::kFile,
         "FILE.dxf",
         "insert the model space of drawing FILE.dxf as a block on each new "
         "layout",
         {{kMain, "CheckVstavitObject", "1"},
          {kInsert, "OptionIstochnikVstavki1", "True"},
          {kInsert, "UniTextPutFileVstavki", "$1"}}},
        {A::kText,
         "BLOCK",
         "insert block BLOCK of the drawing on each new layout (attribute "
         "defaults such as ##3 are filled in as --text is)",
         {{kMain, "CheckVstavitObject", "1"},
          {kInsert, "OptionIstochnikVstavki0", "True"},
          {kInsert, "UniTextNameBlockVstavki", "$1"}}}}},
      {"--insert-at",
       {{A::kPoint,
         "X,Y",
         "insertion point of --insert on the sheet",
         {{kInsert, "TextVstavkaCoordX", "$1"},
          {kInsert, "TextVstavkaCoordY", "$2"}}}}},
      {"--insert-scale",
       {{A::kPositive,
         "S",
         "scale of --insert",
         {{kInsert, "TextVstavkaMashtab", "$1"}}}}},
      {"--insert-rotation",
       {{A::kNumber,
         "DEG",
         "rotation of --insert, degrees counterclockwise",
         {{kInsert, "TextVstavkaPovorot", "$1"}}}}},
      {"--insert-layer",
       {{A::kText,
         "NAME",
         "layer of --insert",
         {{kInsert, "TextVstavkaSloi", "$1"}}}}},
      {"--plotter",
       {{A::kText,
         "NAME",
         "give each new layout a page set-up for plot device NAME "
         "(\"DWG To PDF.pc3\")",
         {{kMain, "CheckIzmenitPrinter", "1"},
          {kPrinter, "TextNamePrinter", "$1"}}}}},
      {"--paper",
       {{A::kWord,
         "auto",
         "the page set-up's paper by the frame's size: ISO A4 to A0 or an "
         "extended sheet, turned as the frame lies",
         {{kMain, "CheckIzmenitPrinter", "1"},
          {kPrinter, "OptionVidBumaga0", "True"}}},
        {A::kText,
         "NAME",
         "the page set-up's paper for every layout, by the device's name",
         {{kMain, "CheckIzmenitPrinter", "1"},
          {kPrinter, "OptionVidBumaga1", "True"},
          {kPrinter, "TextNameBumaga", "$1"}}}}},
      {"--paper-tolerance",
       {{A::kPositive,
         "MM",
         "how far a frame's sides may be off a sheet's for --paper auto",
         {{kPrinter, "TextDopuskBumaga", "$1"}}}}},
      {"--plot-style",
       {{A::kText,
         "NAME",
         "the page set-up's plot style table",
         {{kMain, "CheckIzmenitPrinter", "1"},
          {kPrinter, "TextStilPechati", "$1"}}}}},
  };
  return table;
}

const PlainOption* FindPlainOption(std::string_view name) {
  for (const PlainOption& option : PlainOptions()) {
    if (option.name == name) return &option;
  }
  return nullptr;
}

int PlainArgumentCount(const PlainOption& option) {
  switch (option.forms.front().arg) {
    case PlainArg::kNone:
      return 0;
    case PlainArg::kTwoTexts:
      return 2;
    default:
      return 1;
  }
}

Result<std::vector<PlainWrite>> TranslatePlainOption(
    const PlainOption& option, const std::vector<std::string_view>& args,
    int use) {
  LMT_CHECK(static_cast<int>(args.size()) == PlainArgumentCount(option));
  std::string typed(option.name);
  for (std::string_view arg : args) typed += " " + std::string(arg);
  if (option.numbered_uses > 0 && use > option.numbered_uses) {
    return Status::InvalidArgument(
        std::string(option.name) + " may be given at most " +
        std::to_string(option.numbered_uses) + " times (" + typed + ")");
  }
  const std::string use_text = std::to_string(use);
  for (const PlainForm& form : option.forms) {
    std::optional<std::vector<std::string_view>> parts = Match(form, args);
    if (!parts) continue;
    std::vector<PlainWrite> writes;
    for (const ControlWrite& write : form.writes) {
      writes.push_back(
          {typed,
           {std::string(write.section), Fill(write.key, *parts, use_text),
            Fill(write.value, *parts, use_text)}});
    }
    return writes;
  }
  std::string expected;
  for (const PlainForm& form : option.forms) {
    if (!expected.empty()) expected += " or ";
    expected += std::string(form.usage) + std::string(Describe(form.arg));
  }
  std::string got;
  for (std::string_view arg : args) {
    got += (got.empty() ? "'" : " '") + std::string(arg) + "'";
  }
  return Status::InvalidArgument(std::string(option.name) + " expects " +
                                 expected + ", not " + got);
}

Status ApplyPlainAndSets(const std::vector<PlainWrite>& plain,
                         const std::vector<SetAssignment>& sets,
                         core::Windows& windows) {
  for (size_t i = 0; i < plain.size(); ++i) {
    const SetAssignment& write = plain[i].set;
    std::optional<core::Window::Slot> slot =
        core::ResolveSetting(windows, write.section, write.key);
    LMT_CHECK(slot.has_value());  // the table names existing controls
    auto contradicts = [&](const SetAssignment& other) {
      std::optional<core::Window::Slot> other_slot =
          core::ResolveSetting(windows, other.section, other.key);
      return other_slot && other_slot->control == slot->control &&
             !Agree(*slot->control, slot->slot, write.value, other_slot->slot,
                    other.value);
    };
    for (size_t j = 0; j < i; ++j) {
      if (plain[j].option != plain[i].option && contradicts(plain[j].set)) {
        return Status::InvalidArgument(plain[i].option + " contradicts " +
                                       plain[j].option);
      }
    }
    for (const SetAssignment& set : sets) {
      if (contradicts(set)) {
        return Status::InvalidArgument(plain[i].option + " contradicts " +
                                       SetText(set));
      }
    }
  }
  std::vector<SetAssignment> writes;
  for (const PlainWrite& write : plain) writes.push_back(write.set);
  Status s = ApplySets(writes, windows);
  if (!s.ok()) return s;
  return ApplySets(sets, windows);
}

std::string PlainOptionsMarkdown() {
  std::string out =
      "| option | meaning | controls set |\n"
      "|---|---|---|\n";
  for (const PlainOption& option : PlainOptions()) {
    for (const PlainForm& form : option.forms) {
      const std::vector<std::string_view> names = PartNames(form);
      out += "| `" + std::string(option.name);
      if (!form.usage.empty()) out += " " + std::string(form.usage);
      out += "` | " + std::string(form.summary) + " |";
      std::string_view comma = " ";
      for (const ControlWrite& write : form.writes) {
        out += std::string(comma) + "`" + std::string(write.section) + "." +
               Fill(write.key, names, "N") + "=" +
               Fill(write.value, names, "N") + "`";
        comma = ", ";
      }
      out += " |\n";
    }
  }
  return out;
}

}  // namespace lmt::cli

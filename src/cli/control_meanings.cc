#include "cli/control_meanings.h"

#include "cli/plain_options.h"
#include "core/settings.h"

namespace lmt::cli {
namespace {

constexpr std::string_view kHost = "VersiaCAD";
constexpr std::string_view kMain = "OknoLmt";
constexpr std::string_view kParams = "OknoSozdatLayout";
constexpr std::string_view kActions = "OknoDeistvie";
constexpr std::string_view kInsert = "OknoVstavitObject";
constexpr std::string_view kPrinter = "OknoIzmenitPrinter";

bool Is(core::Windows& windows, std::string_view section, std::string_view key,
        const core::Control& control, int slot) {
  std::optional<core::Window::Slot> found =
      core::ResolveSetting(windows, section, key);
  return found && found->control == &control && found->slot == slot;
}

// "#" of a numbered key replaced by `use`.
std::string Numbered(std::string_view key, int use) {
  std::string out;
  for (char c : key) {
    if (c == '#') {
      out += std::to_string(use);
    } else {
      out += c;
    }
  }
  return out;
}

std::string Ordinal(int use) {
  switch (use) {
    case 1:
      return "1st";
    case 2:
      return "2nd";
    case 3:
      return "3rd";
    default:
      return std::to_string(use) + "th";
  }
}

}  // namespace

const std::vector<ControlMeaning>& ControlMeanings() {
  static const std::vector<ControlMeaning> table = {
      // The main window.
      {kHost, "VersiaCAD",
       "which CAD program the run plays: 0 AutoCAD, 1 nanoCAD, 2 ZWCAD, "
       "3 BricsCAD, 4 GstarCAD, 5 progeCAD, 6 IntelliCAD"},
      {kHost, "NomerVersiaCAD", "the AutoCAD release to connect to (index)"},
      {kMain, "OptionBlockPoisk0",
       "block frames: corners of the polyline inside the block"},
      {kMain, "OptionBlockPoisk1",
       "block frames: corners of the reference's extents"},
      {kMain, "OptionBlockPoisk2",
       "block frames: the extents as if not rotated"},
      {kMain, "UniTextNameAtribute",
       "the attribute tag whose value names (code 31) and sorts the frames"},
      {kMain, "UniTextLeyoutName0", "layout names: text of code 10"},
      {kMain, "UniTextLeyoutName1", "layout names: text of code 11"},
      {kMain, "UniTextLeyoutName2", "layout names: text of code 12"},
      {kMain, "TextStrokaNameFile",
       "layout names: naming codes joined by / (10, 11, 12 texts, 20 "
       "number, 30 block name, 31 attribute)"},
      {kMain, "OptionSortirovkaSpisok0",
       "order: columns left to right, each top down"},
      {kMain, "OptionSortirovkaSpisok1",
       "order: columns left to right, each bottom up"},
      {kMain, "OptionSortirovkaSpisok2",
       "order: rows top down, each left to right"},
      {kMain, "OptionSortirovkaSpisok3",
       "order: rows bottom up, each left to right"},
      {kMain, "OptionSortirovkaSpisok4", "order: nearest to a point first"},
      {kMain, "OptionSortirovkaSpisok5", "order: by attribute value"},
      {kMain, "OptionSortirovkaSpisok6", "order: along a polyline"},
      {kMain, "OptionSortPoint0", "the frame point sorted by: its centre"},
      {kMain, "OptionSortPoint1",
       "the frame point sorted by: lower left corner of its extents"},
      {kMain, "OptionSortPoint2",
       "the frame point sorted by: upper left corner of its extents"},
      {kMain, "OptionSortPoint3",
       "the frame point sorted by: upper right corner of its extents"},
      {kMain, "OptionSortPoint4",
       "the frame point sorted by: lower right corner of its extents"},
      {kParams, "CheckNotRotate", "only frames without rotation"},
      {kMain, "OptionVidSozdatLayout0", "each new layout starts empty"},
      {kMain, "OptionVidSozdatLayout1",
       "each new layout is a copy of a layout of the drawing"},
      {kMain, "OptionVidSozdatLayout2",
       "each new layout is a copy of a layout of another drawing"},
      {kMain, "UniTextNameObrazecLayout", "the pattern layout's name"},
      {kMain, "UniTextNameObrazecPutFileLayout",
       "the drawing that holds the pattern layout"},
      // Layout parameters.
      {kParams, "OptionSelectMashtab0", "viewport scale: fixed, P:M"},
      {kParams, "OptionSelectMashtab1",
       "viewport scale: the frame's width fills the paper length"},
      {kParams, "TextMashtabBumaga", "fixed scale: paper units (P)"},
      {kParams, "TextMashtabModel", "fixed scale: model units (M)"},
      {kParams, "TextAutoMashtabRamka", "paper length the frame's width fills"},
      {kParams, "TextNameSloiViewport", "layer of the new viewports"},
      // Actions after creation.
      {kActions, "CheckSozdatText", "put a text on each new layout"},
      {kActions, "TextTextStroka",
       "that text (##1 number, ##2 drawing, ##3 layout, ##4 scale)"},
      {kActions, "TextTextCoordX", "the text's insertion point, X"},
      {kActions, "TextTextCoordY", "the text's insertion point, Y"},
      {kActions, "TextTextVisota", "the text's height"},
      {kActions, "TextNameBlock",
       "the block on each new layout whose attributes are set"},
      {kActions, "CheckIzmenitAtribut", "set attributes on each new layout"},
      {kActions, "TextImiaAtribut1", "1st attribute to set: its tag"},
      {kActions, "TextValueAtribut1", "1st attribute to set: its value"},
      {kActions, "TextImiaAtribut2", "2nd attribute to set: its tag"},
      {kActions, "TextValueAtribut2", "2nd attribute to set: its value"},
      {kActions, "TextImiaAtribut3", "3rd attribute to set: its tag"},
      {kActions, "TextValueAtribut3", "3rd attribute to set: its value"},
      // Layout sorting (sort-layouts without --by).
      {"OknoSortLayouts", "OptionSortLayouts0",
       "tab order: by name, numbers by value"},
      {"OknoSortLayouts", "OptionSortLayouts1", "tab order: the frame table's"},
      {"OknoSortLayouts", "OptionSortLayouts2", "tab order: reversed"},
      {"OknoSortLayouts", "OptionSortLayouts3",
       "tab order: by a title-block attribute"},
      {"OknoSortLayouts", "TextTagAtribut", "that attribute's tag"},
      // Insertion options.
      {kMain, "CheckVstavitObject", "insert a block on each new layout"},
      {kInsert, "OptionIstochnikVstavki0", "insert a block of the drawing"},
      {kInsert, "OptionIstochnikVstavki1",
       "insert a drawing file's model space as a block"},
      {kInsert, "UniTextNameBlockVstavki", "the block to insert"},
      {kInsert, "UniTextPutFileVstavki", "the drawing file to insert"},
      {kInsert, "TextVstavkaCoordX", "the insertion point on the sheet, X"},
      {kInsert, "TextVstavkaCoordY", "the insertion point on the sheet, Y"},
      {kInsert, "TextVstavkaMashtab", "the inserted block's scale"},
      {kInsert, "TextVstavkaPovorot", "the inserted block's rotation, degrees"},
      {kInsert, "TextVstavkaSloi", "the inserted block's layer"},
      // Page set-up.
      {kPrinter, "CheckIzmenitPrinter", "give each new layout a page set-up"},
      {kPrinter, "TextNamePrinter", "page set-up: the plot device"},
      {kPrinter, "OptionVidBumaga0",
       "page set-up: paper by the frame's size (ISO A4 to A0, extended "
       "sheets)"},
      {kPrinter, "OptionVidBumaga1", "page set-up: one fixed paper"},
      {kPrinter, "TextNameBumaga", "the fixed paper, by the device's name"},
      {kPrinter, "TextDopuskBumaga",
       "how far a frame's sides may be off a sheet's, mm"},
      {kPrinter, "TextStilPechati", "page set-up: the plot style table"},
      {kPrinter, "CheckCentrPechati", "page set-up: centre the plot"},
      {kPrinter, "CheckMashtabOdin", "page set-up: plot 1:1"},
  };
  return table;
}

std::string_view MeaningOf(core::Windows& windows, const core::Control& control,
                           int slot) {
  for (const ControlMeaning& entry : ControlMeanings()) {
    if (Is(windows, entry.section, entry.key, control, slot)) {
      return entry.meaning;
    }
  }
  return {};
}

std::vector<std::string> PlainOptionsOf(core::Windows& windows,
                                        const core::Control& control,
                                        int slot) {
  std::vector<std::string> found;
  for (const PlainOption& option : PlainOptions()) {
    const int uses = option.numbered_uses > 0 ? option.numbered_uses : 1;
    for (const PlainForm& form : option.forms) {
      for (int use = 1; use <= uses; ++use) {
        bool sets = false;
        for (const ControlWrite& write : form.writes) {
          sets = sets || Is(windows, write.section, Numbered(write.key, use),
                            control, slot);
        }
        if (!sets) continue;
        std::string text(option.name);
        if (!form.usage.empty()) text += " " + std::string(form.usage);
        if (option.numbered_uses > 0) text += " (" + Ordinal(use) + " use)";
        found.push_back(std::move(text));
      }
    }
  }
  return found;
}

}  // namespace lmt::cli

#include "addin/command_table.h"

#include "core/text_case.h"

namespace lmt::addin {
namespace {

using A = Action;

constexpr std::string_view kMain = "OknoLmt";

constexpr CommandEntry kTable[] = {
    // The main window's menu.
    {kMain, "mnuObrazec", A::kCaptureTemplate, ""},
    {kMain, "mnuSelectAll", A::kSearchAll, ""},
    {kMain, "mnuSelect", A::kSearchOnScreen, ""},
    {kMain, "mnuSozdat", A::kCreateLayouts, ""},
    {kMain, "mnuProveritPlan", A::kCheckPlan, ""},
    {kMain, "mnuPlotPdf", A::kPlotPdf, ""},
    {kMain, "mnuFunctionOnOffViewport", A::kShowWindow,
     "OknoFunctionOnOffViewport"},
    {kMain, "mnuFunctionDelVneViewport", A::kShowWindow,
     "OknoFunctionDelVneViewport"},
    {kMain, "mnuReplaceAtribut", A::kShowWindow, "OknoFunctionReplaceAtribut"},
    {kMain, "mnuReplaceText", A::kShowWindow, "OknoFunctionReplaceText"},
    {kMain, "mnuRunScript", A::kShowWindow, "OknoFunctionRunScript"},
    {kMain, "mnuRunLisp", A::kShowWindow, "OknoFunctionRunLisp"},
    {kMain, "mnuImport", A::kOpenImportPage, ""},
    {kMain, "mnuOption", A::kShowWindow, "OknoOption"},
    {kMain, "mnuAbout", A::kShowAbout, ""},
    // The main window's buttons.
    {kMain, "Command_GetObrazec", A::kCaptureTemplate, ""},
    {kMain, "Command_ParamFilter", A::kShowWindow, "OknoFilter"},
    {kMain, "Command_GetAll", A::kSearchAll, ""},
    {kMain, "Command_GetVibor", A::kSearchOnScreen, ""},
    {kMain, "Command_SozdatVkladki", A::kCreateLayouts, ""},
    {kMain, "Command_Update", A::kUpdate, ""},
    {kMain, "Command_VidelitRamki", A::kHighlightFrames, ""},
    {kMain, "Command_NeVidelitRamki", A::kUnhighlight, ""},
    {kMain, "Command_SozdatVidi", A::kCreateViews, ""},
    {kMain, "Command_EksportReestr", A::kExportRegister, ""},
    {kMain, "Command_ImportReestr", A::kImportRegister, ""},
    {kMain, "Command_PeremestitStrokuNaPervii", A::kRowToFirst, ""},
    {kMain, "Command_PeremestitStrokuVverh", A::kRowUp, ""},
    {kMain, "Command_PeremestitStrokuVniz", A::kRowDown, ""},
    {kMain, "Command_UdalitStroku", A::kRowDelete, ""},
    {kMain, "Command_Prervat", A::kInterrupt, ""},
    {kMain, "Command_GetNameLayouts", A::kShowNameLayouts, ""},
    {kMain, "Command_ParamSozdatLayout", A::kShowWindow, "OknoSozdatLayout"},
    {kMain, "Command_ParamDeistvie", A::kShowWindow, "OknoDeistvie"},
    {kMain, "Command_ParamVstavit", A::kShowWindow, "OknoVstavitObject"},
    // Secondary windows.
    {"OknoFilter", "Command_Ok", A::kHide, ""},
    {"OknoNameLayouts", "Command_Ok", A::kNameLayoutsOk, ""},
    {"OknoSozdatLayout", "Command_Save", A::kSaveAndHide, ""},
    {"OknoSozdatLayout", "Command_Close", A::kHide, ""},
    {"OknoSozdatLayout", "Command_GetMashtabRamka", A::kPickFrameLength, ""},
    {"OknoDeistvie", "Command_Save", A::kSaveAndHide, ""},
    {"OknoDeistvie", "Command_Close", A::kHide, ""},
    {"OknoOption", "Command_Save", A::kSaveAndHide, ""},
    {"OknoOption", "Command_Close", A::kHide, ""},
    {"OknoNanoCADVersia", "Command_Apply", A::kHide, ""},
    {"OknoFunctionOnOffViewport", "Command_Start", A::kViewportsOnOff, ""},
    {"OknoFunctionDelVneViewport", "Command_SelViewpost", A::kDeleteOutside,
     ""},
#define LMT_BATCH_WINDOW(name)                                \
  {name, "Command_Start", A::kBatchStart, ""},                \
      {name, "Command_Prervat", A::kBatchInterrupt, ""},      \
      {name, "Command_VibratFaili", A::kBatchAddFiles, ""},   \
      {name, "Command_DobavitPapku", A::kBatchAddFolder, ""}, \
      {name, "Command_UdalitStroku", A::kBatchDeleteRow, ""}, \
      {name, "Command_DeleteAll", A::kBatchClear, ""}, {      \
    name, "Command_ViborSaveKuda", A::kBatchSaveFolder, ""    \
  }
    LMT_BATCH_WINDOW("OknoFunctionRunScript"),
    LMT_BATCH_WINDOW("OknoFunctionRunLisp"),
    LMT_BATCH_WINDOW("OknoFunctionReplaceAtribut"),
    LMT_BATCH_WINDOW("OknoFunctionReplaceText"),
    LMT_BATCH_WINDOW("OknoFunctionImport"),
#undef LMT_BATCH_WINDOW
    {"OknoFunctionRunScript", "Command_GetFileScript", A::kBatchScriptFile, ""},
    {"OknoFunctionRunLisp", "Command_GetFileLisp", A::kBatchLispFile, ""},
    {"OknoFunctionReplaceText", "Command_VstavitSpisok", A::kBatchPasteList,
     ""},
    {kMain, "Command_PokazatRamku", A::kShowFrame, ""},
    {kMain, "mnuFunctionSortLayouts", A::kShowWindow, "OknoSortLayouts"},
    {"OknoSortLayouts", "Command_Sort", A::kSortLayouts, ""},
    {"OknoSortLayouts", "Command_Close", A::kHide, ""},
    {"OknoVstavitObject", "Command_Save", A::kSaveAndHide, ""},
    {"OknoVstavitObject", "Command_Close", A::kHide, ""},
    {"OknoVstavitObject", "Command_ObzorFileVstavki", A::kInsertFile, ""},
    {kMain, "Command_ParamIzmenitPrinter", A::kShowWindow,
     "OknoIzmenitPrinter"},
    {"OknoIzmenitPrinter", "Command_Save", A::kSaveAndHide, ""},
    {"OknoIzmenitPrinter", "Command_Close", A::kHide, ""},
};

constexpr MenuEntry kMenu[] = {
    {"mnuComand", 0},
    {"mnuObrazec", 1},
    {"mnuSep1", 1},
    {"mnuSelectAll", 1},
    {"mnuSelect", 1},
    {"mnuSep2", 1},
    {"mnuProveritPlan", 1},
    {"mnuSozdat", 1},
    {"mnuPlotPdf", 1},
    {"mnuFunction", 0},
    {"mnuFunctionSortLayouts", 1},
    {"mnuSep3", 1},
    {"mnuFunctionOnOffViewport", 1},
    {"mnuFunctionDelVneViewport", 1},
    {"mnuSep4", 1},
    {"mnuReplaceAtribut", 1},
    {"mnuReplaceText", 1},
    {"mnuSep5", 1},
    {"mnuRunScript", 1},
    {"mnuRunLisp", 1},
    {"mnuSep6", 1},
    {"mnuImport", 1},
    {"mnuOption", 0},
    {"mnuHelp", 0},
    {"mnuAbout", 1},
};

}  // namespace

std::span<const CommandEntry> CommandTable() { return kTable; }

std::optional<CommandEntry> FindCommand(std::string_view window,
                                        std::string_view control) {
  for (const CommandEntry& entry : kTable) {
    if (core::EqualsIgnoreCase(entry.window, window) &&
        core::EqualsIgnoreCase(entry.control, control)) {
      return entry;
    }
  }
  return std::nullopt;
}

std::string ButtonName(std::string_view caption_key) {
  constexpr std::string_view kPrefix = "Command";
  if (!caption_key.starts_with(kPrefix) || caption_key.size() == kPrefix.size())
    return std::string(caption_key);
  return std::string(kPrefix) + "_" +
         std::string(caption_key.substr(kPrefix.size()));
}

std::span<const MenuEntry> MainMenu() { return kMenu; }

}  // namespace lmt::addin

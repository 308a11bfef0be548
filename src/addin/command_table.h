// Which routine every menu item and button of the add-in's windows starts:
// one table, keyed by window name and control name ("OknoLmt",
// "Command_GetAll"; menu items by their "mnu" name). The Win32 windows look
// a click up here; the router (commands.h) runs it on a session.
//
// Buttons are named as the product names them ("Command_GetObrazec"); their
// caption keys drop the underscore ("CommandGetObrazec"), see ButtonName.
// Controls without an entry start nothing.
#ifndef LMT_ADDIN_COMMAND_TABLE_H_
#define LMT_ADDIN_COMMAND_TABLE_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lmt::addin {

enum class Action {
  kCaptureTemplate,  // template capture
  kSearchAll,        // frame search over the whole drawing
  kSearchOnScreen,   // frame search over objects picked on screen
  kCreateLayouts,    // layout creation over the frame table
  kUpdate,           // renumber and name again
  kRowToFirst,       // the row buttons on the selected row
  kRowUp,
  kRowDown,
  kRowDelete,
  kInterrupt,        // main window's stop button
  kShowWindow,       // shows `target`
  kShowNameLayouts,  // lists the drawing's layouts, shows OknoNameLayouts
  kNameLayoutsOk,    // the chosen layout becomes the pattern layout
  kShowAbout,
  kOpenImportPage,   // the separate import product's web page
  kHide,             // Command_Ok / Command_Close of a secondary window
  kSaveAndHide,      // Command_Save: the window's settings written
  kPickFrameLength,  // Command_GetMashtabRamka
  kViewportsOnOff,   // Command_Start of OknoFunctionOnOffViewport
  kDeleteOutside,    // Command_SelViewpost
  kHighlightFrames,  // Command_VidelitRamki: outline the table's frames
  kUnhighlight,      // Command_NeVidelitRamki: remove the outlines
  kCreateViews,      // Command_SozdatVidi: a named view per frame
  kCheckPlan,        // mnuProveritPlan: the creation plan shown as text
  kExportRegister,   // Command_EksportReestr: the frame table as CSV
  kImportRegister,   // Command_ImportReestr: an edited CSV applied
  kBatchStart,       // Command_Start of a batch window
  kBatchInterrupt,   // Command_Prervat of a batch window
  kBatchAddFiles,    // Command_VibratFaili
  kBatchAddFolder,   // Command_DobavitPapku
  kBatchDeleteRow,   // Command_UdalitStroku
  kBatchClear,       // Command_DeleteAll
  kBatchPasteList,   // Command_VstavitSpisok (replacement list)
  kBatchSaveFolder,  // Command_ViborSaveKuda
  kBatchScriptFile,  // Command_GetFileScript
  kBatchLispFile,    // Command_GetFileLisp
  kPlotPdf,          // mnuPlotPdf: the table's layouts plotted to PDF
  kShowFrame,        // Command_PokazatRamku: zoom onto the selected row
  kSortLayouts,      // Command_Sort of OknoSortLayouts
  kInsertFile,       // Command_ObzorFileVstavki: the drawing to insert
};

struct CommandEntry {
  std::string_view window;   // window name
  std::string_view control;  // control or menu item name
  Action action;
  std::string_view target;  // the window kShowWindow shows
};

// Every entry, in window order.
std::span<const CommandEntry> CommandTable();

// The entry of `control` in `window` (ASCII case ignored), or nullopt.
std::optional<CommandEntry> FindCommand(std::string_view window,
                                        std::string_view control);

// "CommandGetObrazec" -> "Command_GetObrazec"; other keys unchanged.
std::string ButtonName(std::string_view caption_key);

// The main window's menu bar: top-level menus, their items, separators.
struct MenuEntry {
  std::string_view name;  // "mnuComand", "mnuObrazec", "mnuSep1"
  int level;              // 0: on the bar, 1: in the menu above it
};
std::span<const MenuEntry> MainMenu();
inline bool IsSeparator(const MenuEntry& entry) {
  return entry.name.starts_with("mnuSep");
}

// The web page of the separate import product that mnuImport opens.
inline constexpr std::string_view kImportProductAddress =
    "https://layomat.example/import/";

}  // namespace lmt::addin

#endif  // LMT_ADDIN_COMMAND_TABLE_H_

// The Windows add-in driven by window messages, as a user or another
// program would: menu commands as WM_COMMAND, clicks as BM_CLICK, the frame
// table read back with LVM_GETITEMTEXTW, the language of the captions, and
// closing that only hides. Runs on Wine's null display driver.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include "addin/command_table.h"
#include "core/lmt_view.h"
#include "testing/temp_dir.h"
#include "ui/wide.h"
#include "ui/window_order.h"
#include "ui/windows_addin.h"

namespace lmt::ui {
namespace {

using frames::Column;

class DroppedMessages : public core::MessageSink {
 public:
  void Show(std::string_view, std::string_view, core::MessageIcon) override {}
};

std::wstring TextOf(HWND hwnd) {
  wchar_t buffer[512] = {};
  GetWindowTextW(hwnd, buffer, 512);
  return buffer;
}

std::wstring ListText(HWND list, int row, int column) {
  wchar_t buffer[256] = {};
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = buffer;
  item.cchTextMax = 256;
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
               reinterpret_cast<LPARAM>(&item));
  return buffer;
}

int MenuId(std::string_view item) {
  const auto menu = addin::MainMenu();
  for (size_t i = 0; i < menu.size(); ++i)
    if (menu[i].name == item) return kMenuBase + static_cast<int>(i);
  ADD_FAILURE() << item;
  return 0;
}

// Closes every message box titled `title` from a second thread (each box's
// loop runs on the test's thread) until Wait(), keeping the first one's text.
// A Yes/No box is answered No.
class BoxCloser {
 public:
  explicit BoxCloser(std::wstring title)
      : thread_([this, title = std::move(title)] {
          while (!done_) {
            if (HWND box = FindWindowW(L"#32770", title.c_str())) {
              wchar_t text[512] = {};
              GetDlgItemTextW(box, 0xFFFF, text, 512);
              if (texts_ == 0) first_ = text;
              ++texts_;
              HWND button = GetDlgItem(box, IDOK);
              if (button == nullptr) button = GetDlgItem(box, IDNO);
              SendMessageW(button, BM_CLICK, 0, 0);
            }
            Sleep(20);
          }
        }) {}
  ~BoxCloser() { Wait(); }
  // The first box's text, "<no box>" when none was seen.
  std::wstring Wait() {
    done_ = true;
    if (thread_.joinable()) thread_.join();
    return texts_ > 0 ? first_ : L"<no box>";
  }

 private:
  std::atomic<bool> done_{false};
  std::atomic<int> texts_{0};
  std::wstring first_;
  std::thread thread_;
};

class Win32ViewTest : public ::testing::Test {
 protected:
  void Start(bool english) {
    if (english) std::ofstream(dir_ / "Lang.ini") << "";
    core::Environment env;
    env.addin_folder = dir_.path();
    const std::string appdata = (dir_ / "appdata").string();
    env.get_env =
        [appdata](std::string_view name) -> std::optional<std::string> {
      if (name == "APPDATA") return appdata;
      return std::nullopt;
    };
    env.messages = &messages_;
    addin_ =
        std::make_unique<WindowsAddIn>(GetModuleHandleW(nullptr), env, nullptr);
    core::LmtView& lmt = addin_->lmt_view();
    lmt.LmtStartDLL();
    lmt.LmtStartProg();
    main_ = addin_->view().main_window();
    ASSERT_NE(main_, nullptr);
  }
  void TearDown() override {
    if (addin_) addin_->lmt_view().LmtExit(core::kVariantTrue);
  }

  core::Windows& windows() { return addin_->addin().windows(); }
  HWND Control(const core::Window& w, std::string_view key, int slot = 0) {
    HWND hwnd = addin_->view().ControlOf(w, key, slot);
    EXPECT_NE(hwnd, nullptr) << key;
    return hwnd;
  }
  std::wstring MenuText(std::string_view item) {
    wchar_t text[128] = {};
    GetMenuStringW(GetMenu(main_), static_cast<UINT>(MenuId(item)), text, 128,
                   MF_BYCOMMAND);
    return text;
  }
  // Fills the frame table with `count` rows numbered 1.. and IDs 100...
  void FillTable(int count) {
    frames::FrameTable& table = addin_->commands().frame_state().table;
    table.SetRowCount(1);
    for (int i = 1; i <= count; ++i) {
      const int r = table.AddRow();
      table.SetCell(r, Column::kId, std::to_string(100 + i));
      table.SetCell(r, Column::kLayoutName, "Лист " + std::to_string(i));
    }
    table.Renumber();
    addin_->view().FrameTableChanged();
  }

  testing::TempDir dir_;
  DroppedMessages messages_;
  std::unique_ptr<WindowsAddIn> addin_;
  HWND main_ = nullptr;
};

TEST_F(Win32ViewTest, RussianCaptionsByDefault) {
  Start(false);
  EXPECT_EQ(TextOf(main_), L"Лайомат");
  EXPECT_TRUE(IsWindowVisible(main_));
  EXPECT_EQ(TextOf(Control(windows().okno_lmt, "CommandGetAll")), L"Найти все");
  EXPECT_EQ(TextOf(Control(windows().okno_lmt, "OptionBlockPoisk1")),
            L"По габаритам");
  EXPECT_EQ(MenuText("mnuSelectAll"), L"Выбрать все");
  HWND header = reinterpret_cast<HWND>(SendMessageW(
      addin_->view().ListOf(windows().okno_lmt), LVM_GETHEADER, 0, 0));
  EXPECT_EQ(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0), 27);
}

TEST_F(Win32ViewTest, EnglishCaptionsWithALanguageFile) {
  Start(true);
  EXPECT_EQ(TextOf(main_), L"Layomat");
  EXPECT_EQ(TextOf(Control(windows().okno_lmt, "Command_GetAll")), L"Find All");
  EXPECT_EQ(TextOf(Control(windows().okno_lmt, "FrameVersiaCAD")),
            L"Connect to");
  EXPECT_EQ(MenuText("mnuSozdat"), L"Create Layouts");
  EXPECT_EQ(MenuText("mnuImport"), L"IMPORT from many files");
  EXPECT_EQ(TextOf(addin_->view().WindowOf(windows().okno_function_run_lisp)),
            L"Run Lisp in many files");
}

TEST_F(Win32ViewTest, MenuCommandShowsItsWindowOwnedByTheMainWindow) {
  Start(true);
  HWND onoff = addin_->view().WindowOf(windows().okno_function_on_off_viewport);
  ASSERT_NE(onoff, nullptr);
  EXPECT_FALSE(IsWindowVisible(onoff));
  SendMessageW(main_, WM_COMMAND, MenuId("mnuFunctionOnOffViewport"), 0);
  EXPECT_TRUE(IsWindowVisible(onoff));
  EXPECT_TRUE(windows().okno_function_on_off_viewport.visible());
  EXPECT_EQ(GetWindow(onoff, GW_OWNER), main_);
}

// The sorting window is drawn from its model like the others: its order
// buttons, the tag field beside its label, and Close hiding it.
TEST_F(Win32ViewTest, SortLayoutsMenuShowsTheSortingWindow) {
  Start(true);
  core::OknoSortLayouts& sort = windows().okno_sort_layouts;
  HWND window = addin_->view().WindowOf(sort);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(MenuText("mnuFunctionSortLayouts"), L"Sort Layouts");
  SendMessageW(main_, WM_COMMAND, MenuId("mnuFunctionSortLayouts"), 0);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_EQ(GetWindow(window, GW_OWNER), main_);
  EXPECT_EQ(TextOf(window), L"Sort Layouts");
  EXPECT_EQ(TextOf(Control(sort, "OptionSortLayouts3")), L"By attribute");
  SendMessageW(Control(sort, "OptionSortLayouts", 2), BM_CLICK, 0, 0);
  EXPECT_EQ(sort.option_sort_layouts.selected(),
            core::OknoSortLayouts::kReversed);
  SetWindowTextW(Control(sort, "Text_TagAtribut"), L"НОМЕР");
  EXPECT_EQ(sort.text_tag_atribut.text(), "НОМЕР");
  EXPECT_EQ(TextOf(Control(sort, "CommandSort")), L"Sort");
  SendMessageW(Control(sort, "CommandClose"), BM_CLICK, 0, 0);
  EXPECT_FALSE(IsWindowVisible(window));
}

TEST_F(Win32ViewTest, ClosingHidesAndKeepsValuesUntilExit) {
  Start(true);
  core::OknoFunctionRunScript& script = windows().okno_function_run_script;
  SendMessageW(main_, WM_COMMAND, MenuId("mnuRunScript"), 0);
  HWND window = addin_->view().WindowOf(script);
  HWND field = Control(script, "UniText_NameScriptFile");
  SetWindowTextW(field, L"C:\\скрипты\\a.scr");
  EXPECT_EQ(script.uni_text_name_script_file.text(), "C:\\скрипты\\a.scr");

  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(window));
  EXPECT_FALSE(IsWindowVisible(window));
  EXPECT_FALSE(script.visible());
  SendMessageW(main_, WM_COMMAND, MenuId("mnuRunScript"), 0);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_EQ(TextOf(field), L"C:\\скрипты\\a.scr");
  // The main window hides too; only the exit unloads.
  SendMessageW(main_, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(main_));
  addin_->lmt_view().LmtExit(core::kVariantTrue);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_FALSE(IsWindow(main_));
  addin_.reset();
}

TEST_F(Win32ViewTest, OptionClicksEnableThePatternLayoutFields) {
  Start(true);
  core::OknoLmt& main = windows().okno_lmt;
  HWND layout = Control(main, "UniText_NameObrazecLayout");
  HWND file = Control(main, "UniText_NameObrazecPutFileLayout");
  HWND chooser = Control(main, "Command_GetNameLayouts");
  EXPECT_FALSE(IsWindowEnabled(layout));
  SendMessageW(Control(main, "OptionVidSozdatLayout", 2), BM_CLICK, 0, 0);
  EXPECT_EQ(main.option_vid_sozdat_layout.selected(), 2);
  EXPECT_TRUE(IsWindowEnabled(layout));
  EXPECT_TRUE(IsWindowEnabled(file));
  EXPECT_TRUE(IsWindowEnabled(chooser));
  SendMessageW(Control(main, "OptionVidSozdatLayout", 1), BM_CLICK, 0, 0);
  EXPECT_TRUE(IsWindowEnabled(layout));
  EXPECT_FALSE(IsWindowEnabled(file));
  EXPECT_EQ(SendMessageW(Control(main, "OptionVidSozdatLayout", 2), BM_GETCHECK,
                         0, 0),
            BST_UNCHECKED);
  SendMessageW(Control(main, "OptionVidSozdatLayout", 0), BM_CLICK, 0, 0);
  EXPECT_FALSE(IsWindowEnabled(layout));
  EXPECT_FALSE(IsWindowEnabled(chooser));
  // A check box and a list reach their models too.
  SendMessageW(Control(main, "CheckVstavitObject"), BM_CLICK, 0, 0);
  EXPECT_TRUE(main.check_vstavit_object.checked());
}

TEST_F(Win32ViewTest, FrameTableRowsReadBackAndRowButtonsMoveThem) {
  Start(true);
  FillTable(3);
  HWND list = addin_->view().ListOf(windows().okno_lmt);
  ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 3);
  EXPECT_EQ(ListText(list, 1, static_cast<int>(Column::kId)), L"102");
  EXPECT_EQ(ListText(list, 2, static_cast<int>(Column::kLayoutName)),
            L"Лист 3");
  EXPECT_EQ(ListText(list, 0, static_cast<int>(Column::kNumber)), L"1");

  LVITEMW state{};
  state.stateMask = LVIS_SELECTED;
  state.state = LVIS_SELECTED;
  SendMessageW(list, LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&state));
  SendMessageW(Control(windows().okno_lmt, "Command_PeremestitStrokuNaPervii"),
               BM_CLICK, 0, 0);
  EXPECT_EQ(ListText(list, 0, static_cast<int>(Column::kId)), L"103");
  EXPECT_EQ(ListText(list, 0, static_cast<int>(Column::kNumber)), L"1");
  EXPECT_EQ(ListText(list, 1, static_cast<int>(Column::kId)), L"101");
}

TEST_F(Win32ViewTest, KeyFiltersOfTheNamingAndNumericFields) {
  Start(true);
  HWND naming = Control(windows().okno_lmt, "Text_StrokaNameFile");
  SetWindowTextW(naming, L"");
  for (wchar_t c : std::wstring(L"1a0/x2")) SendMessageW(naming, WM_CHAR, c, 1);
  EXPECT_EQ(TextOf(naming), L"10/2");
  EXPECT_EQ(windows().okno_lmt.text_stroka_name_file.text(), "10/2");

  addin_->commands().Run("OknoLmt", "Command_ParamSozdatLayout");
  HWND scale = Control(windows().okno_sozdat_layout, "Text_MashtabModel");
  SetWindowTextW(scale, L"");
  for (wchar_t c : std::wstring(L"1-2,5.7")) SendMessageW(scale, WM_CHAR, c, 1);
  const std::wstring separator =
      addin_->addin().globals().decimal_comma ? L"," : L".";
  EXPECT_EQ(TextOf(scale), L"12" + separator + L"57");
}

TEST_F(Win32ViewTest, CancelButtonShowsTheInterruptMessageOnTop) {
  Start(false);
  BoxCloser closer(L"Лайомат");
  SendMessageW(Control(windows().okno_lmt, "Command_Prervat"), BM_CLICK, 0, 0);
  EXPECT_EQ(closer.Wait(), L"Обработка прервана пользователем.");
  EXPECT_TRUE(addin_->user().interrupted());
  // The add-in's window went topmost before the box.
  EXPECT_TRUE(GetWindowLongPtrW(main_, GWL_EXSTYLE) & WS_EX_TOPMOST);
  BringToFront(main_, "Лайомат");
  EXPECT_FALSE(GetWindowLongPtrW(main_, GWL_EXSTYLE) & WS_EX_TOPMOST);
  SubPoverhVsehProgram(main_);
  EXPECT_TRUE(GetWindowLongPtrW(main_, GWL_EXSTYLE) & WS_EX_TOPMOST);
  SubNEPoverhVsehProgram(main_);
  EXPECT_FALSE(GetWindowLongPtrW(main_, GWL_EXSTYLE) & WS_EX_TOPMOST);
}

TEST_F(Win32ViewTest, PlanAndRegisterEntriesAndTheTextWindow) {
  Start(true);
  EXPECT_EQ(MenuText("mnuProveritPlan"), L"Check plan...");
  EXPECT_EQ(TextOf(Control(windows().okno_lmt, "Command_ImportReestr")),
            L"Import register...");
  // An empty table: the export says so instead of asking for a file.
  BoxCloser closer(L"Layomat");
  SendMessageW(Control(windows().okno_lmt, "Command_EksportReestr"), BM_CLICK,
               0, 0);
  EXPECT_EQ(closer.Wait(), L"The frame table is empty: find the frames first.");

  addin_->view().ShowText("Check plan...", "Layout\tFrame\nЛист 1\tblock\n");
  HWND window = addin_->view().text_window();
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_EQ(TextOf(window), L"Check plan...");
  HWND edit = FindWindowExW(window, nullptr, L"EDIT", nullptr);
  ASSERT_NE(edit, nullptr);
  EXPECT_TRUE(GetWindowLongPtrW(edit, GWL_STYLE) & ES_READONLY);
  EXPECT_EQ(TextOf(edit), L"Layout\tFrame\r\nЛист 1\tblock\r\n");
  addin_->view().ShowText("Check plan...", "again");
  EXPECT_EQ(addin_->view().text_window(), window);  // one window, new text
  EXPECT_EQ(TextOf(edit), L"again");
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_FALSE(IsWindowVisible(window));
  EXPECT_TRUE(IsWindow(window));
}

TEST(WindowOrderTest, CadWindowFoundByTheStartOfItsCaption) {
  HWND cad =
      CreateWindowExW(0, L"STATIC", L"ZWCAD 2024 - [plan.dwg]",
                      WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                      nullptr, GetModuleHandleW(nullptr), nullptr);
  ASSERT_NE(cad, nullptr);
  EXPECT_TRUE(ActivateWindowByCaption("zwcad"));
  EXPECT_TRUE(ActivateWindowByCaption("plan.dwg"));  // contained is enough
  EXPECT_FALSE(ActivateWindowByCaption("BricsCAD"));
  EXPECT_FALSE(ActivateWindowByCaption(""));
  DestroyWindow(cad);
}

TEST_F(Win32ViewTest, SearchWithoutAHostStopsWithTheConnectionMessage) {
  Start(true);
  BoxCloser closer(L"Layomat");
  SendMessageW(main_, WM_COMMAND, MenuId("mnuSelectAll"), 0);
  EXPECT_NE(closer.Wait(), L"<no box>");
  EXPECT_EQ(SendMessageW(addin_->view().ListOf(windows().okno_lmt),
                         LVM_GETITEMCOUNT, 0, 0),
            frames::kResetRowCount - 1);
}

TEST_F(Win32ViewTest, ProgressStatusAndResize) {
  Start(true);
  Win32User& user = addin_->user();
  user.SetProgressRange(10);
  user.SetProgressValue(4);
  EXPECT_EQ(SendMessageW(addin_->view().progress_bar(), PBM_GETPOS, 0, 0), 4);
  user.SetStatusText("Подготовка листов");
  EXPECT_EQ(TextOf(addin_->view().status_line()), L"Подготовка листов");

  addin_->lmt_view().LmtResize(1440 * 8, 1440 * 6);
  RECT rect;
  GetWindowRect(main_, &rect);
  HDC dc = GetDC(main_);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
  ReleaseDC(main_, dc);
  EXPECT_EQ(rect.right - rect.left, 8 * dpi);
}

TEST_F(Win32ViewTest, BatchFileTableFollowsItsRows) {
  Start(true);
  core::OknoFunctionImport& import = windows().okno_function_import;
  import.files = {{"a.dwg", "C:\\d\\a.dwg"}, { "план.dxf", "C:\\d\\план.dxf" }};
  addin_->view().ShowWindow(import);
  HWND list = addin_->view().ListOf(import);
  ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 2);
  EXPECT_EQ(ListText(list, 1, 1), L"план.dxf");
  LVITEMW state{};
  state.stateMask = LVIS_SELECTED;
  state.state = LVIS_SELECTED;
  SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&state));
  SendMessageW(Control(import, "Command_UdalitStroku"), BM_CLICK, 0, 0);
  ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 1);
  EXPECT_EQ(ListText(list, 0, 0), L"1");
  EXPECT_EQ(ListText(list, 0, 2), L"C:\\d\\план.dxf");
}

}  // namespace
}  // namespace lmt::ui

namespace lmt::ui {
namespace {

// Types into the next dialog titled `title` from a second thread and
// presses OK (or Cancel). On a busy machine the box may come late or miss
// an answer given while it is still being made, so the answer is given
// again until the box is gone (30 s at most).
void AnswerInputBox(const std::wstring& title, const std::wstring& text,
                    bool ok) {
  bool answered = false;
  for (int i = 0; i < 1500; ++i) {
    HWND box = FindWindowW(L"#32770", title.c_str());
    if (box == nullptr && answered) return;
    if (box != nullptr && IsWindowVisible(box)) {
      HWND edit = FindWindowExW(box, nullptr, L"Edit", nullptr);
      SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
      const int button = ok ? IDOK : IDCANCEL;
      PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
      answered = true;
    }
    Sleep(20);
  }
}

TEST_F(Win32ViewTest, InputBoxGivesTheTypedTextOrNothing) {
  Start(false);
  std::thread typist(AnswerInputBox, L"Масштаб", L"1:50", true);
  std::optional<std::string> typed =
      addin_->user().InputBox("Масштаб рамки:", "Масштаб", "1:100");
  typist.join();
  EXPECT_EQ(typed, std::optional<std::string>("1:50"));
  std::thread canceller(AnswerInputBox, L"Масштаб", L"x", false);
  typed = addin_->user().InputBox("Масштаб рамки:", "Масштаб", "1:100");
  canceller.join();
  EXPECT_EQ(typed, std::nullopt);
}

TEST_F(Win32ViewTest, ReplacementListPastedFromTheClipboard) {
  Start(true);
  const std::wstring list = L"Старый\tНовый\r\nA1\tB1\r\n";
  ASSERT_TRUE(OpenClipboard(main_));
  EmptyClipboard();
  HGLOBAL memory =
      GlobalAlloc(GMEM_MOVEABLE, (list.size() + 1) * sizeof(wchar_t));
  std::memcpy(GlobalLock(memory), list.c_str(),
              (list.size() + 1) * sizeof(wchar_t));
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
  CloseClipboard();

  core::OknoFunctionReplaceText& text = windows().okno_function_replace_text;
  addin_->view().ShowWindow(text);
  SendMessageW(Control(text, "Command_VstavitSpisok"), BM_CLICK, 0, 0);
  ASSERT_EQ(text.replace_list.size(), 2u);
  EXPECT_EQ(text.replace_list[0].find, "Старый");
  EXPECT_EQ(text.replace_list[0].replace, "Новый");
  EXPECT_EQ(text.replace_list[1].replace, "B1");
  HWND pairs = addin_->view().ReplacementListOf(text);
  ASSERT_EQ(SendMessageW(pairs, LVM_GETITEMCOUNT, 0, 0), 2);
  EXPECT_EQ(ListText(pairs, 0, 1), L"Новый");
}

}  // namespace
}  // namespace lmt::ui

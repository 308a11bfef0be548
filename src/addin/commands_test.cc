// The router over the embedded host: every menu item and button reaches the
// routine the command line runs, on the same drawing, and the window-side
// requests (rows, dialogs, clipboard) go through the shell.
#include "addin/commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "batch/file_table.h"
#include "core/file_util.h"
#include "core/globals.h"
#include "core/ini_unicode.h"
#include "core/settings.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "dxfhost/test_support.h"
#include "frames/frame_commands.h"
#include "host/entity.h"
#include "host/host_kind.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"
#include "testing/temp_dir.h"

namespace lmt::addin {
namespace {

using frames::Column;

class RecordingShell : public Shell {
 public:
  void ShowWindow(core::Window& window) override {
    shown.push_back(window.name());
  }
  void HideWindow(core::Window& window) override {
    hidden.push_back(window.name());
  }
  void Refresh(core::Window& window) override {
    refreshed.push_back(window.name());
  }
  void FrameTableChanged() override { ++table_changes; }
  int SelectedFrameRow() override { return selected_frame_row; }
  int SelectedFileRow(core::Window&) override { return selected_file_row; }
  std::vector<std::string> PickFiles(std::string_view filter,
                                     bool multiple) override {
    file_filters.push_back(std::string(filter) + (multiple ? " *" : ""));
    return picked_files;
  }
  std::optional<std::string> PickSaveFile(std::string_view filter,
                                          std::string_view name) override {
    file_filters.push_back(std::string(filter) + " > " + std::string(name));
    return save_path;
  }
  std::optional<std::string> PickFolder(std::string_view) override {
    return picked_folder;
  }
  void ShowText(std::string_view title, std::string_view text) override {
    texts.push_back(std::string(title) + "\n" + std::string(text));
  }
  std::string ClipboardText() override { return clipboard; }
  void OpenWebPage(std::string_view address) override {
    web_pages.push_back(std::string(address));
  }
  void ShowAbout() override { ++about; }

  std::vector<std::string> shown, hidden, refreshed, web_pages, file_filters,
      texts;
  int table_changes = 0;
  int about = 0;
  int selected_frame_row = 0;
  int selected_file_row = 0;
  std::vector<std::string> picked_files;
  std::optional<std::string> picked_folder;
  std::optional<std::string> save_path;
  std::string clipboard;
};

class CommandsTest : public ::testing::Test {
 protected:
  CommandsTest() {
    globals_.product_name = "Layomat";
    session_ =
        std::make_unique<host::Session>(globals_, windows_, user_, runtime_);
    commands_ = std::make_unique<Commands>(*session_, shell_);
  }

  // Opens a drawing in an embedded AutoCAD the connection finds.
  void Open(const std::string& path) {
    app_ = dxfhost::DxfApplication::Create(host::HostKind::kAutoCad, &user_);
    Result<host::DocumentsPtr> documents = app_->Documents();
    ASSERT_TRUE(documents.ok());
    ASSERT_TRUE((*documents)->Open(path).ok());
    runtime_.SetRunning(
        std::string(host::HostProgramId(host::HostKind::kAutoCad)), app_);
  }

  // Template capture of `handle`, then "Select All" by `search_control`.
  void CaptureAndSearch(const std::string& handle,
                        std::string_view search_control) {
    user_.QueuePick({handle});
    ASSERT_TRUE(commands_->Run("OknoLmt", "Command_GetObrazec"));
    user_.QueuePointCancel();
    ASSERT_TRUE(commands_->Run("OknoLmt", search_control));
  }

  std::vector<std::string> Ids() {
    std::vector<std::string> ids;
    const frames::FrameTable& t = commands_->frame_table();
    for (int r = 1; r < t.row_count(); ++r)
      ids.push_back(t.Cell(r, Column::kId));
    return ids;
  }

  testing::ScriptedUser user_;
  core::Globals globals_;
  core::Windows windows_;
  testing::FakeRuntime runtime_;
  RecordingShell shell_;
  std::shared_ptr<dxfhost::DxfApplication> app_;
  std::unique_ptr<host::Session> session_;
  std::unique_ptr<Commands> commands_;
};

// --- The table itself -------------------------------------------------------

TEST(CommandTableTest, EveryEntryNamesAWindowAndItsTarget) {
  core::Windows windows;
  for (const CommandEntry& entry : CommandTable()) {
    EXPECT_NE(windows.Find(entry.window), nullptr) << entry.window;
    if (entry.action == Action::kShowWindow) {
      EXPECT_NE(windows.Find(entry.target), nullptr) << entry.control;
    }
  }
}

TEST(CommandTableTest, EveryCaptionedButtonStartsSomethingExceptUnbuiltOnes) {
  // Listed by their controls only: no routine behind them yet.
  const std::vector<std::string> not_built = {};
  core::Windows windows;
  for (core::Window* window : windows.All()) {
    for (const core::CaptionEntry& caption : window->caption_table()) {
      if (!caption.key.starts_with("Command")) continue;
      const std::string name = ButtonName(caption.key);
      if (std::find(not_built.begin(), not_built.end(), name) !=
          not_built.end())
        continue;
      EXPECT_TRUE(FindCommand(window->name(), name).has_value())
          << window->name() << "." << name;
    }
  }
}

TEST(CommandTableTest, EveryMenuItemHasACaptionAndACommand) {
  core::Windows windows;
  int items = 0;
  for (const MenuEntry& entry : MainMenu()) {
    if (IsSeparator(entry)) continue;
    EXPECT_FALSE(windows.okno_lmt.caption(entry.name).empty()) << entry.name;
    const bool has_submenu =
        entry.level == 0 &&
        &entry + 1 != MainMenu().data() + MainMenu().size() &&
        (&entry + 1)->level == 1;
    if (has_submenu) continue;
    ++items;
    EXPECT_TRUE(FindCommand("OknoLmt", entry.name).has_value()) << entry.name;
  }
  EXPECT_EQ(items, 16);
}

TEST(CommandTableTest, ButtonNamesAndLookUp) {
  EXPECT_EQ(ButtonName("CommandGetObrazec"), "Command_GetObrazec");
  EXPECT_EQ(ButtonName("Command"), "Command");
  EXPECT_EQ(ButtonName("CheckNotRotate"), "CheckNotRotate");
  EXPECT_TRUE(FindCommand("oknolmt", "COMMAND_GETALL").has_value());
  EXPECT_FALSE(FindCommand("OknoLmt", "Command_Start").has_value());
  EXPECT_FALSE(FindCommand("OknoNews", "Command_Start").has_value());
}

// --- Frame commands -----------------------------------------------------

TEST_F(CommandsTest, MenuAndButtonSearchFillTheSameTable) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  CaptureAndSearch("30", "mnuSelectAll");
  const std::vector<std::string> by_menu = Ids();
  EXPECT_EQ(by_menu.size(), 3u);
  EXPECT_EQ(windows_.okno_lmt.found_count, "3");
  CaptureAndSearch("30", "Command_GetAll");
  EXPECT_EQ(Ids(), by_menu);
  // Capture and search each told the window to show the table again.
  EXPECT_EQ(shell_.table_changes, 4);
  EXPECT_NE(
      std::find(shell_.refreshed.begin(), shell_.refreshed.end(), "OknoFilter"),
      shell_.refreshed.end());
}

TEST_F(CommandsTest, RowButtonsWorkOnTheSelectedRow) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  CaptureAndSearch("30", "Command_GetAll");
  std::vector<std::string> ids = Ids();
  ASSERT_EQ(ids.size(), 3u);

  shell_.selected_frame_row = 3;
  commands_->Run("OknoLmt", "Command_PeremestitStrokuNaPervii");
  EXPECT_EQ(Ids(), (std::vector<std::string>{ids[2], ids[0], ids[1]}));
  EXPECT_EQ(commands_->frame_table().Cell(1, Column::kNumber), "1");

  shell_.selected_frame_row = 1;
  commands_->Run("OknoLmt", "Command_PeremestitStrokuVniz");
  EXPECT_EQ(Ids(), (std::vector<std::string>{ids[0], ids[2], ids[1]}));

  shell_.selected_frame_row = 0;  // nothing selected: nothing moves
  commands_->Run("OknoLmt", "Command_UdalitStroku");
  EXPECT_EQ(Ids().size(), 3u);
  shell_.selected_frame_row = 2;
  commands_->Run("OknoLmt", "Command_UdalitStroku");
  EXPECT_EQ(Ids(), (std::vector<std::string>{ids[0], ids[1]}));
}

TEST_F(CommandsTest, UpdateNamesRowsFromTheNamingTemplate) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  CaptureAndSearch("30", "Command_GetAll");
  windows_.okno_lmt.uni_text_leyout_name0.set_text("Sheet-");
  windows_.okno_lmt.text_stroka_name_file.set_text("10/20");
  commands_->Run("OknoLmt", "Command_Update");
  EXPECT_EQ(commands_->frame_table().Cell(2, Column::kLayoutName), "Sheet-2");
}

TEST_F(CommandsTest, CreateLayoutsMakesOneLayoutPerRow) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  CaptureAndSearch("30", "Command_GetAll");
  user_.AllowUnusedAnswers();
  commands_->Run("OknoLmt", "mnuSozdat");
  Result<host::DocumentPtr> doc = app_->ActiveDocument();
  ASSERT_TRUE(doc.ok());
  Result<host::LayoutsPtr> layouts = (*doc)->Layouts();
  ASSERT_TRUE(layouts.ok());
  for (int r = 1; r <= 3; ++r) {
    const std::string& name =
        commands_->frame_table().Cell(r, Column::kLayoutName);
    EXPECT_TRUE((*layouts)->Item(name).ok()) << name;
  }
  EXPECT_EQ(user_.message_texts().back(), globals_.messages.Get(15));
}

// The made sheets go to the CAD program's plot, one PDF each beside the
// drawing (here a copy, so that nothing is written beside the test data).
TEST_F(CommandsTest, PlotToPdfPlotsTheTablesLayoutsBesideTheDrawing) {
  lmt::testing::TempDir dir;
  const std::filesystem::path copy = dir.path() / "plan.dxf";
  std::filesystem::copy_file(
      dxfhost::test::TestdataPath("frames/polylines.dxf"), copy);
  Open(core::PathToUtf8(copy));
  std::vector<std::string> plotted;
  app_->set_plotter([&](dxf::Document&, std::string_view layout,
                        const std::string& path, std::string_view device) {
    plotted.push_back(std::string(layout) + " " +
                      core::PathToUtf8(core::PathFromUtf8(path).filename()) +
                      " " + std::string(device));
    return Status();
  });
  commands_->Run("OknoLmt", "mnuPlotPdf");
  EXPECT_EQ(user_.message_texts().back(), "No layouts in the table to plot.");

  CaptureAndSearch("30", "Command_GetAll");
  user_.AllowUnusedAnswers();
  commands_->Run("OknoLmt", "mnuSozdat");
  commands_->Run("OknoLmt", "mnuPlotPdf");
  const frames::FrameTable& table = commands_->frame_table();
  ASSERT_EQ(plotted.size(), static_cast<size_t>(table.last_row()));
  const std::string first = table.Cell(1, Column::kLayoutName);
  EXPECT_EQ(plotted[0], first + " " + first + ".pdf DWG To PDF.pc3");
  EXPECT_EQ(user_.message_texts().back(),
            std::to_string(plotted.size()) + " sheets plotted to " +
                core::PathToUtf8(dir.path()) + ".");
}

TEST_F(CommandsTest, HighlightAndViewButtonsWorkOnTheTable) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  CaptureAndSearch("30", "Command_GetAll");
  Result<host::DocumentPtr> doc = app_->ActiveDocument();
  ASSERT_TRUE(doc.ok());
  auto model_count = [&] {
    Result<host::BlockPtr> model = (*doc)->ModelSpace();
    return model.ok() ? (*model)->Count().value_or(-1) : -1;
  };
  const int before = model_count();
  const int rows = commands_->frame_table().last_row();
  ASSERT_GT(rows, 1);

  commands_->Run("OknoLmt", "Command_VidelitRamki");
  EXPECT_EQ(model_count(), before + 2 * rows);
  EXPECT_EQ(user_.message_texts().back(),
            std::to_string(rows) + " frames highlighted.");
  // Removal needs no table: a row deleted since changes nothing.
  shell_.selected_frame_row = 1;
  commands_->Run("OknoLmt", "Command_UdalitStroku");
  commands_->Run("OknoLmt", "Command_NeVidelitRamki");
  EXPECT_EQ(model_count(), before);
  commands_->Run("OknoLmt", "Command_NeVidelitRamki");
  EXPECT_EQ(user_.message_texts().back(), "No highlighting to remove.");

  commands_->Run("OknoLmt", "Command_SozdatVidi");
  EXPECT_EQ(user_.message_texts().back(),
            std::to_string(rows - 1) + " views made.");
  for (int r = 1; r < rows; ++r) {
    const std::string& name =
        commands_->frame_table().Cell(r, Column::kLayoutName);
    EXPECT_TRUE((*doc)->HasView(name).value_or(false)) << name;
  }
  // Every existing view is asked about; "No" keeps them all.
  for (int r = 1; r < rows; ++r) user_.QueueAnswer(host::Answer::kNo);
  commands_->Run("OknoLmt", "Command_SozdatVidi");
  EXPECT_EQ(user_.message_texts().back(), "No view made.");
}

TEST_F(CommandsTest, ShowByTableZoomsOntoTheSelectedFrame) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  Result<host::DocumentPtr> doc = app_->ActiveDocument();
  ASSERT_TRUE(doc.ok());
  auto centre = [&] {
    return std::get<host::Point>(*(*doc)->GetVariable("VIEWCTR"));
  };
  const host::Point before = centre();
  commands_->Run("OknoLmt", "Command_PokazatRamku");
  EXPECT_EQ(user_.message_texts().back(), "Select a frame in the table first.");
  CaptureAndSearch("30", "Command_GetAll");
  shell_.selected_frame_row = 2;
  const size_t messages = user_.messages().size();
  commands_->Run("OknoLmt", "Command_PokazatRamku");
  EXPECT_EQ(user_.messages().size(), messages);
  const frames::Quad corners = *commands_->frame_table().Corners(2);
  const host::Point shown = centre();
  EXPECT_NEAR(shown.x, (corners[0].x + corners[2].x) / 2, 1e-6);
  EXPECT_NEAR(shown.y, (corners[0].y + corners[2].y) / 2, 1e-6);
  EXPECT_NE(shown, before);
}

TEST_F(CommandsTest, SortWindowSortsTheTabsAndStoresItsChoice) {
  testing::TempDir dir;
  globals_.settings_path = dir / "sort.ini";
  Open(dxfhost::test::TestdataPath("example.dxf"));
  core::OknoSortLayouts& sort = windows_.okno_sort_layouts;
  // The attribute order without a tag is refused before the drawing.
  sort.option_sort_layouts.Select(core::OknoSortLayouts::kByAttribute);
  commands_->Run("OknoSortLayouts", "Command_Sort");
  EXPECT_EQ(user_.messages().back().icon, host::MessageIcon::kCritical);
  sort.option_sort_layouts.Select(core::OknoSortLayouts::kReversed);
  sort.text_tag_atribut.set_text("NO");
  commands_->Run("OknoSortLayouts", "Command_Sort");
  EXPECT_EQ(user_.messages().back().icon, host::MessageIcon::kInformation);
  EXPECT_NE(user_.message_texts().back().find("layouts moved."),
            std::string::npos)
      << user_.message_texts().back();
  core::Windows reread;
  core::ReadSettings(globals_.settings_path, reread,
                     core::SettingsBlock::kSortLayouts);
  EXPECT_EQ(reread.okno_sort_layouts.option_sort_layouts.selected(),
            core::OknoSortLayouts::kReversed);
  EXPECT_EQ(reread.okno_sort_layouts.text_tag_atribut.text(), "NO");
  commands_->Run("OknoSortLayouts", "Command_Close");
  EXPECT_EQ(shell_.hidden.back(), "OknoSortLayouts");
}

TEST_F(CommandsTest, CheckPlanShowsThePlanAndItsWarningsMakingNothing) {
  Open(dxfhost::test::TestdataPath("frames/polylines.dxf"));
  CaptureAndSearch("30", "Command_GetAll");
  Result<host::DocumentPtr> doc = app_->ActiveDocument();
  ASSERT_TRUE(doc.ok());
  auto layout_count = [&] {
    Result<host::LayoutsPtr> layouts = (*doc)->Layouts();
    return layouts.ok() ? (*layouts)->Count().value_or(-1) : -1;
  };
  const int before = layout_count();
  frames::FrameTable& table = commands_->frame_state().table;
  ASSERT_GE(table.row_count(), 3);
  const std::string first = table.Cell(1, Column::kLayoutName);
  table.SetCell(2, Column::kLayoutName, first);  // a name used twice

  const size_t messages = user_.messages().size();
  commands_->Run("OknoLmt", "mnuProveritPlan");
  ASSERT_EQ(shell_.texts.size(), 1u);
  const std::string& shown = shell_.texts.front();
  EXPECT_TRUE(shown.starts_with(windows_.okno_lmt.caption("mnuProveritPlan") +
                                "\nLayout\tFrame\t"))
      << shown;
  EXPECT_NE(shown.find("\n" + first + "\tpolyline\t"), std::string::npos)
      << shown;
  EXPECT_NE(shown.find("\nWarnings:\n- "), std::string::npos) << shown;
  EXPECT_NE(shown.find(first), shown.rfind(first)) << shown;
  EXPECT_EQ(layout_count(), before);
  EXPECT_EQ(user_.messages().size(), messages);
}

// Export writes the register, the user edits it, import applies it: the
// table takes the register's rows, order and names, and the next creation
// writes its values into the frames' title blocks.
TEST_F(CommandsTest, RegisterExportAndImportDriveTheNextCreation) {
  testing::TempDir dir;
  auto import = [&](const std::string& text) {
    const std::string path = (dir / "edited.csv").string();
    EXPECT_TRUE(core::WriteFileAtomically(dir / "edited.csv", text).ok());
    shell_.picked_files = {path};
    commands_->Run("OknoLmt", "Command_ImportReestr");
  };
  // Before a search there is nothing to match the register to.
  import("ID,Layout Name\n148,X\n");
  EXPECT_TRUE(shell_.file_filters.empty());
  EXPECT_EQ(user_.messages().back().icon, host::MessageIcon::kInformation);

  Open(dxfhost::test::TestdataPath("example.dxf"));
  windows_.okno_lmt.option_block_poisk.Select(1);  // by size
  CaptureAndSearch("94", "Command_GetAll");
  std::vector<std::string> found = Ids();
  std::sort(found.begin(), found.end());
  ASSERT_EQ(found, (std::vector<std::string>{"148", "155", "162", "169", "176",
                                             "183"}));
  shell_.save_path = (dir / "frames.csv").string();
  commands_->Run("OknoLmt", "Command_EksportReestr");
  Result<std::string> written = core::ReadFileBytes(dir / "frames.csv");
  ASSERT_TRUE(written.ok());
  EXPECT_TRUE(written->starts_with("\xEF\xBB\xBF№,Layout Name,"));
  EXPECT_NE(written->find(",SHEET,TITLE\r\n"), std::string::npos);
  EXPECT_NE(written->find(",A-03,First floor\r\n"), std::string::npos);
  EXPECT_EQ(user_.message_texts().back(),
            "6 frames written to " + *shell_.save_path + ".");

  // Refused registers leave the table as it was.
  found = Ids();
  import("No,Name\n1,x\n");
  EXPECT_EQ(user_.messages().back().icon, host::MessageIcon::kCritical);
  EXPECT_NE(user_.message_texts().back().find("no \"Layout Name\" column"),
            std::string::npos);
  shell_.picked_files.clear();
  commands_->Run("OknoLmt", "Command_ImportReestr");  // cancelled
  EXPECT_EQ(Ids(), found);

  import(
      "ID;Layout Name;sheet\r\n162;Лист 1;Л-1\r\n148;Лист 2;Л-2\r\n"
      "99999;Призрак;x\r\n");
  EXPECT_EQ(Ids(), (std::vector<std::string>{"162", "148"}));
  EXPECT_EQ(commands_->frame_table().Cell(1, Column::kLayoutName), "Лист 1");
  EXPECT_EQ(windows_.okno_lmt.found_count, "2");
  const std::string said = user_.message_texts().back();
  EXPECT_TRUE(said.starts_with("Register applied: 2 frames")) << said;
  EXPECT_NE(said.find("register row 3 (line 4) matches no frame"),
            std::string::npos)
      << said;
  EXPECT_NE(said.find("4 frames have no register row"), std::string::npos)
      << said;

  // Rows moved after the import keep their values with their frame.
  shell_.selected_frame_row = 2;
  commands_->Run("OknoLmt", "Command_PeremestitStrokuNaPervii");
  ASSERT_EQ(Ids(), (std::vector<std::string>{"148", "162"}));
  user_.AllowUnusedAnswers();
  commands_->Run("OknoLmt", "mnuSozdat");
  Result<host::DocumentPtr> doc = app_->ActiveDocument();
  ASSERT_TRUE(doc.ok());
  Result<host::LayoutsPtr> layouts = (*doc)->Layouts();
  ASSERT_TRUE(layouts.ok());
  EXPECT_TRUE((*layouts)->Item("Лист 1").ok());
  EXPECT_TRUE((*layouts)->Item("Лист 2").ok());
  auto sheet_of = [&](uint64_t id) {
    Result<host::ObjectPtr> object = (*doc)->ObjectIdToObject(id);
    if (!object.ok()) return std::string("?");
    host::BlockReferencePtr block = host::As<host::BlockReference>(*object);
    if (block == nullptr) return std::string("?");
    Result<std::vector<host::AttributePtr>> attributes = block->GetAttributes();
    if (!attributes.ok() || attributes->empty()) return std::string("?");
    return attributes->front()->TextString().value_or("?");
  };
  EXPECT_EQ(sheet_of(162), "Л-1");
  EXPECT_EQ(sheet_of(148), "Л-2");
  EXPECT_EQ(sheet_of(155), "A-02");  // not in the register
}

TEST_F(CommandsTest, CancelWithoutARunningCommandStillSaysSo) {
  commands_->Run("OknoLmt", "Command_Prervat");
  ASSERT_EQ(user_.message_texts().size(), 1u);
  EXPECT_EQ(user_.message_texts()[0], globals_.messages.Get(5));
  EXPECT_TRUE(user_.interrupted());
}

TEST_F(CommandsTest, WithoutAHostTheSearchStopsAndTouchesNoTable) {
  user_.QueueAnswer(host::Answer::kNo);  // "Open CAD program ?"
  user_.AllowUnusedAnswers();
  commands_->Run("OknoLmt", "mnuSelectAll");
  EXPECT_EQ(Ids().size(), static_cast<size_t>(frames::kResetRowCount - 1));
  EXPECT_EQ(commands_->frame_table().Cell(1, Column::kId), "");
}

// --- Windows shown, pages opened ----------------------------------------

TEST_F(CommandsTest, ImportMenuOpensTheWebPageNeverTheWindow) {
  commands_->Run("OknoLmt", "mnuImport");
  EXPECT_EQ(shell_.web_pages,
            std::vector<std::string>{std::string(kImportProductAddress)});
  EXPECT_TRUE(shell_.shown.empty());
}

TEST_F(CommandsTest, FunctionItemsShowTheirWindows) {
  struct Case {
    std::string_view control;
    std::string_view window;
  };
  const Case cases[] = {
      {"mnuFunctionOnOffViewport", "OknoFunctionOnOffViewport"},
      {"mnuFunctionDelVneViewport", "OknoFunctionDelVneViewport"},
      {"mnuReplaceAtribut", "OknoFunctionReplaceAtribut"},
      {"mnuReplaceText", "OknoFunctionReplaceText"},
      {"mnuRunScript", "OknoFunctionRunScript"},
      {"mnuRunLisp", "OknoFunctionRunLisp"},
      {"mnuOption", "OknoOption"},
      {"Command_ParamFilter", "OknoFilter"},
      {"Command_ParamSozdatLayout", "OknoSozdatLayout"},
      {"Command_ParamDeistvie", "OknoDeistvie"},
      {"mnuFunctionSortLayouts", "OknoSortLayouts"},
  };
  for (const Case& c : cases) {
    shell_.shown.clear();
    ASSERT_TRUE(commands_->Run("OknoLmt", c.control));
    EXPECT_EQ(shell_.shown, std::vector<std::string>{std::string(c.window)})
        << c.control;
  }
  commands_->Run("OknoLmt", "mnuAbout");
  EXPECT_EQ(shell_.about, 1);
}

TEST_F(CommandsTest, PatternLayoutPickedFromTheDrawingsLayouts) {
  Open(dxfhost::test::TestdataPath("example.dxf"));
  commands_->Run("OknoLmt", "Command_GetNameLayouts");
  const core::OknoNameLayouts& names = windows_.okno_name_layouts;
  ASSERT_FALSE(names.layout_names.empty());
  for (const std::string& name : names.layout_names) EXPECT_NE(name, "Model");
  EXPECT_EQ(shell_.shown.back(), "OknoNameLayouts");

  windows_.okno_name_layouts.selected_row = 0;
  commands_->Run("OknoNameLayouts", "Command_Ok");
  EXPECT_EQ(windows_.okno_lmt.uni_text_name_obrazec_layout.text(),
            names.layout_names[0]);
  EXPECT_EQ(shell_.hidden.back(), "OknoNameLayouts");
}

TEST_F(CommandsTest, ConfirmedOptionsAreWrittenAndTheWindowHidden) {
  testing::TempDir dir;
  globals_.settings_path = dir / "confirmed.ini";
  windows_.okno_option.option_okruglenie.Select(2);
  commands_->Run("OknoOption", "Command_Save");
  core::Windows reread;
  core::ReadSettings(globals_.settings_path, reread,
                     core::SettingsBlock::kOption);
  EXPECT_EQ(reread.okno_option.option_okruglenie.selected(), 2);
  EXPECT_EQ(shell_.hidden, std::vector<std::string>{"OknoOption"});
}

TEST_F(CommandsTest, InsertionOptionsShownFilledFromBrowseAndSaved) {
  testing::TempDir dir;
  globals_.settings_path = dir / "insert.ini";
  commands_->Run("OknoLmt", "Command_ParamVstavit");
  EXPECT_EQ(shell_.shown.back(), "OknoVstavitObject");
  shell_.picked_files = {"C:\\stamps\\stamp.dxf"};
  commands_->Run("OknoVstavitObject", "Command_ObzorFileVstavki");
  core::OknoVstavitObject& insert = windows_.okno_vstavit_object;
  EXPECT_EQ(insert.uni_text_put_file_vstavki.text(), "C:\\stamps\\stamp.dxf");
  EXPECT_EQ(insert.option_istochnik_vstavki.selected(), 1);
  shell_.picked_files.clear();  // cancelled: the choice stays
  commands_->Run("OknoVstavitObject", "Command_ObzorFileVstavki");
  EXPECT_EQ(insert.uni_text_put_file_vstavki.text(), "C:\\stamps\\stamp.dxf");

  insert.text_vstavka_mashtab.set_text("2");
  commands_->Run("OknoVstavitObject", "Command_Save");
  core::Windows reread;
  core::ReadSettings(globals_.settings_path, reread,
                     core::SettingsBlock::kInsertion);
  EXPECT_EQ(reread.okno_vstavit_object.uni_text_put_file_vstavki.text(),
            "C:\\stamps\\stamp.dxf");
  EXPECT_EQ(reread.okno_vstavit_object.text_vstavka_mashtab.text(), "2");
  EXPECT_EQ(shell_.hidden.back(), "OknoVstavitObject");
}

// --- Batch windows --------------------------------------------------------

TEST_F(CommandsTest, FileTableRowsAddedRemovedAndCleared) {
  const std::string window = "OknoFunctionRunScript";
  auto& files = windows_.okno_function_run_script.files;
  shell_.picked_files = {"C:\\d\\a.dwg", "C:\\d\\b.dxf"};
  commands_->Run(window, "Command_VibratFaili");
  shell_.picked_files = {"/x/c.dwg"};
  commands_->Run(window, "Command_VibratFaili");
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[2].name, "c.dwg");
  EXPECT_EQ(files[0].path, "C:\\d\\a.dwg");
  EXPECT_EQ(shell_.refreshed.back(), window);

  shell_.selected_file_row = 2;
  commands_->Run(window, "Command_UdalitStroku");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[1].name, "c.dwg");
  shell_.selected_file_row = 7;  // past the rows: nothing removed
  commands_->Run(window, "Command_UdalitStroku");
  EXPECT_EQ(files.size(), 2u);
  commands_->Run(window, "Command_DeleteAll");
  EXPECT_TRUE(files.empty());
}

TEST_F(CommandsTest, FolderAddsItsDrawingsWithSubfoldersWhenTicked) {
  testing::TempDir dir;
  const std::string root = (dir / "folder_rows").string();
  std::filesystem::create_directories(root + "/sub");
  for (const char* name : {"/a.dwg", "/b.txt", "/sub/c.DXF"})
    std::ofstream(root + name) << "x";
  shell_.picked_folder = root;
  auto& w = windows_.okno_function_import;
  commands_->Run("OknoFunctionImport", "Command_DobavitPapku");
  ASSERT_EQ(w.files.size(), 1u);
  EXPECT_EQ(w.files[0].name, "a.dwg");
  w.files.clear();
  w.check_vlozenii_papki.set_checked(true);
  commands_->Run("OknoFunctionImport", "Command_DobavitPapku");
  ASSERT_EQ(w.files.size(), 2u);
  EXPECT_EQ(w.files[1].name, "c.DXF");
}

TEST_F(CommandsTest, PastedListReplacesTheReplacementRows) {
  auto& list = windows_.okno_function_replace_text.replace_list;
  shell_.clipboard = "old\tnew\r\n\"a\tb\"\t\r\nx\n";
  commands_->Run("OknoFunctionReplaceText", "Command_VstavitSpisok");
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[1].find, "a\tb");
  EXPECT_EQ(list[1].replace, "");
  EXPECT_EQ(list[2].find, "x");

  shell_.clipboard.clear();  // the list stays, the user is told
  commands_->Run("OknoFunctionReplaceText", "Command_VstavitSpisok");
  EXPECT_EQ(list.size(), 3u);
  ASSERT_EQ(user_.messages().size(), 1u);
  EXPECT_EQ(user_.messages()[0].text, "Буфер обмена пуст!");
  EXPECT_EQ(user_.messages()[0].icon, host::MessageIcon::kCritical);
}

TEST_F(CommandsTest, ScriptAndSaveFolderChoicesFillTheirFields) {
  shell_.picked_files = {"C:\\s\\run.scr"};
  commands_->Run("OknoFunctionRunScript", "Command_GetFileScript");
  EXPECT_EQ(windows_.okno_function_run_script.uni_text_name_script_file.text(),
            "C:\\s\\run.scr");
  EXPECT_EQ(shell_.file_filters.back(), std::string(batch::kScriptFileFilter));
  shell_.picked_folder = "C:\\out";
  commands_->Run("OknoFunctionRunLisp", "Command_ViborSaveKuda");
  EXPECT_EQ(windows_.okno_function_run_lisp.uni_text_put_save_kuda.text(),
            "C:\\out");
  shell_.picked_folder.reset();  // cancelled: the field keeps its text
  commands_->Run("OknoFunctionRunLisp", "Command_ViborSaveKuda");
  EXPECT_EQ(windows_.okno_function_run_lisp.uni_text_put_save_kuda.text(),
            "C:\\out");
}

TEST_F(CommandsTest, BatchStartWithoutAHostRunsNothing) {
  user_.QueueAnswer(host::Answer::kNo);  // "Open CAD program ?"
  user_.AllowUnusedAnswers();
  windows_.okno_function_run_script.files.push_back({"a.dwg", "/no/a.dwg"});
  commands_->Run("OknoFunctionRunScript", "Command_Start");
  // The connection told the user; no count box follows.
  for (const std::string& text : user_.message_texts())
    EXPECT_EQ(text.find("1"), std::string::npos) << text;
  commands_->Run("OknoFunctionRunScript", "Command_Prervat");
  EXPECT_TRUE(user_.interrupted());
}

}  // namespace
}  // namespace lmt::addin

#include "addin/commands.h"

#include <filesystem>
#include <string>
#include <vector>

#include "batch/batch_messages.h"
#include "batch/batch_run.h"
#include "batch/file_table.h"
#include "batch/replace_run.h"
#include "batch/run_import.h"
#include "batch/run_lisp.h"
#include "batch/run_script.h"
#include "batch/text_rules.h"
#include "core/file_util.h"
#include "core/settings.h"
#include "core/text_case.h"
#include "layouts/frame_csv.h"
#include "layouts/frame_length_pick.h"
#include "layouts/frame_show.h"
#include "layouts/frame_views.h"
#include "layouts/layout_creation.h"
#include "layouts/layout_naming.h"
#include "layouts/layout_sorting.h"
#include "layouts/plan_checks.h"
#include "layouts/plan_text.h"
#include "layouts/plot_sheets.h"
#include "layouts/register_values.h"
#include "utilities/delete_outside_viewport.h"
#include "utilities/frame_marks.h"
#include "utilities/viewports_on_off.h"

namespace lmt::addin {
namespace {

constexpr std::string_view kLispFileFilter =
    "Lisp Files(*.lsp)|*.lsp*|All Files(*.*)|*.*";
constexpr std::string_view kDrawingFileFilter =
    "DXF Files(*.dxf)|*.dxf|All Files(*.*)|*.*";
constexpr std::string_view kRegisterFileFilter =
    "CSV Files(*.csv)|*.csv|All Files(*.*)|*.*";

frames::RowNamer MainWindowNamer(core::Windows& windows) {
  return [&windows](frames::FrameTable& table) {
    const core::OknoLmt& main = windows.okno_lmt;
    layouts::NameAllRows(
        table, main.text_stroka_name_file.text(),
        {main.uni_text_leyout_name0.text(), main.uni_text_leyout_name1.text(),
         main.uni_text_leyout_name2.text()});
  };
}

// The parts every batch window has, reached by window.
struct BatchParts {
  std::vector<core::BatchFile>* files = nullptr;
  core::CheckBox* subfolders = nullptr;
  core::TextField* save_folder = nullptr;
};

BatchParts PartsOf(core::Windows& w, core::Window& window) {
  auto parts = [](auto& batch_window) {
    return BatchParts{&batch_window.files, &batch_window.check_vlozenii_papki,
                      &batch_window.uni_text_put_save_kuda};
  };
  if (&window == &w.okno_function_run_script)
    return parts(w.okno_function_run_script);
  if (&window == &w.okno_function_run_lisp)
    return parts(w.okno_function_run_lisp);
  if (&window == &w.okno_function_replace_atribut)
    return parts(w.okno_function_replace_atribut);
  if (&window == &w.okno_function_replace_text)
    return parts(w.okno_function_replace_text);
  if (&window == &w.okno_function_import) return parts(w.okno_function_import);
  return {};
}

std::optional<core::SettingsBlock> ConfirmedBlockOf(core::Windows& w,
                                                    core::Window& window) {
  if (&window == &w.okno_sozdat_layout)
    return core::SettingsBlock::kCreationParameters;
  if (&window == &w.okno_deistvie) return core::SettingsBlock::kCreationActions;
  if (&window == &w.okno_option) return core::SettingsBlock::kOption;
  if (&window == &w.okno_vstavit_object) return core::SettingsBlock::kInsertion;
  if (&window == &w.okno_izmenit_printer) return core::SettingsBlock::kPrinter;
  return std::nullopt;
}

// A fresh table holds an empty row; a searched one a frame per row.
bool HasFrames(const frames::FrameTable& table) {
  for (int r = 1; r < table.row_count(); ++r) {
    if (!table.Cell(r, frames::Column::kId).empty()) return true;
  }
  return false;
}

core::BatchFile RowOf(const std::string& path) {
  return {core::PathToUtf8(core::PathFromUtf8(path).filename()), path};
}

}  // namespace

Commands::Commands(host::Session& session, Shell& shell)
    : session_(session),
      shell_(shell),
      frame_commands_(session, state_, MainWindowNamer(session.windows())) {}

bool Commands::Run(std::string_view window, std::string_view control) {
  std::optional<CommandEntry> entry = FindCommand(window, control);
  if (!entry) return false;
  Run(*entry);
  return true;
}

void Commands::Run(const CommandEntry& entry) {
  core::Windows& windows = session_.windows();
  core::Window* window = windows.Find(entry.window);
  LMT_CHECK(window != nullptr);  // the table names only existing windows
  core::OknoLmt& main = windows.okno_lmt;
  // The frame commands change the table and the main window's texts.
  auto frames_changed = [&] {
    shell_.FrameTableChanged();
    shell_.Refresh(main);
  };
  switch (entry.action) {
    case Action::kCaptureTemplate:
      frame_commands_.CaptureTemplate();
      shell_.Refresh(windows.okno_filter);
      frames_changed();
      return;
    case Action::kSearchAll:
      registered_.clear();  // a new table: the register matched the old one
      frame_commands_.Search(frames::SearchMode::kAll);
      frames_changed();
      return;
    case Action::kSearchOnScreen:
      registered_.clear();
      frame_commands_.Search(frames::SearchMode::kOnScreen);
      frames_changed();
      return;
    case Action::kCreateLayouts:
      CreateLayouts();
      return;
    case Action::kCheckPlan:
      CheckPlan();
      return;
    case Action::kPlotPdf:
      PlotPdf();
      return;
    case Action::kExportRegister:
      ExportRegister();
      return;
    case Action::kImportRegister:
      ImportRegister();
      frames_changed();
      return;
    case Action::kUpdate:
      frame_commands_.Update();
      frames_changed();
      return;
    case Action::kRowToFirst:
      frame_commands_.MoveRowToFirst(shell_.SelectedFrameRow());
      frames_changed();
      return;
    case Action::kRowUp:
      frame_commands_.MoveRowUp(shell_.SelectedFrameRow());
      frames_changed();
      return;
    case Action::kRowDown:
      frame_commands_.MoveRowDown(shell_.SelectedFrameRow());
      frames_changed();
      return;
    case Action::kRowDelete:
      frame_commands_.DeleteRow(shell_.SelectedFrameRow());
      frames_changed();
      return;
    case Action::kInterrupt:
      frame_commands_.Interrupt();
      return;
    case Action::kShowWindow: {
      core::Window* target = windows.Find(entry.target);
      LMT_CHECK(target != nullptr);
      shell_.ShowWindow(*target);
      return;
    }
    case Action::kShowNameLayouts:
      ShowNameLayouts();
      return;
    case Action::kNameLayoutsOk: {
      core::OknoNameLayouts& names = windows.okno_name_layouts;
      const int row = names.selected_row;
      if (row >= 0 && row < static_cast<int>(names.layout_names.size())) {
        main.uni_text_name_obrazec_layout.set_text(
            names.layout_names[static_cast<size_t>(row)]);
        shell_.Refresh(main);
      }
      shell_.HideWindow(names);
      return;
    }
    case Action::kShowAbout:
      shell_.ShowAbout();
      return;
    case Action::kOpenImportPage:
      shell_.OpenWebPage(kImportProductAddress);
      return;
    case Action::kHide:
      shell_.HideWindow(*window);
      return;
    case Action::kInsertFile: {
      std::vector<std::string> chosen =
          shell_.PickFiles(kDrawingFileFilter, false);
      if (chosen.empty()) return;
      core::OknoVstavitObject& insert = windows.okno_vstavit_object;
      insert.uni_text_put_file_vstavki.set_text(chosen.front());
      insert.option_istochnik_vstavki.Select(1);
      shell_.Refresh(insert);
      return;
    }
    case Action::kSaveAndHide: {
      std::optional<core::SettingsBlock> block =
          ConfirmedBlockOf(windows, *window);
      LMT_CHECK(block.has_value());
      // A lost setting is silent, as a failed profile write always was.
      core::WriteSettings(session_.globals().settings_path, windows, *block)
          .IgnoreError();
      shell_.HideWindow(*window);
      return;
    }
    case Action::kPickFrameLength:
      layouts::GetFrameLengthFromDrawing(session_);
      shell_.Refresh(windows.okno_sozdat_layout);
      return;
    case Action::kViewportsOnOff:
      utilities::StartViewportsOnOff(session_);
      return;
    case Action::kDeleteOutside:
      utilities::DeleteOutsideViewport(session_);
      return;
    case Action::kHighlightFrames:
    case Action::kUnhighlight:
    case Action::kCreateViews:
      FrameTools(entry.action);
      return;
    case Action::kShowFrame:
      ShowFrame();
      return;
    case Action::kSortLayouts:
      SortLayouts();
      return;
    default:
      Batch(*window, entry.action);
      return;
  }
}

void Commands::FrameTools(Action action) {
  if (!session_.Connect()) return;
  host::Document& document = session_.document();
  host::User& user = session_.user();
  const std::string& title = session_.globals().product_name;
  std::string text;
  if (action == Action::kHighlightFrames) {
    const utilities::MarkReport marked =
        utilities::HighlightFrames(document, state_.table);
    text = std::to_string(marked.frames) + " frames highlighted.";
  } else if (action == Action::kUnhighlight) {
    const utilities::MarkReport removed =
        utilities::RemoveHighlighting(document);
    text = removed.erased == 0 ? std::string("No highlighting to remove.")
                               : "Highlighting removed.";
  } else {
    const layouts::ViewsReport views = layouts::CreateFrameViews(
        document, state_.table, [&](std::string_view name) {
          return user.ShowMessage(
                     "View \"" + std::string(name) + "\" exists. Replace it?",
                     host::MessageIcon::kQuestion, host::MessageButtons::kYesNo,
                     title) == host::Answer::kYes;
        });
    text = views.made + views.replaced == 0
               ? std::string("No view made.")
               : std::to_string(views.made + views.replaced) + " views made.";
  }
  user.ShowMessage(text, host::MessageIcon::kInformation,
                   host::MessageButtons::kOk, title);
}

void Commands::PlotPdf() {
  if (!session_.Connect()) return;
  host::Document& document = session_.document();
  host::User& user = session_.user();
  const std::string& title = session_.globals().product_name;
  auto tell = [&](const std::string& text, host::MessageIcon icon) {
    user.ShowMessage(text, icon, host::MessageButtons::kOk, title);
  };
  std::vector<std::string> layouts;
  for (int r = 1; r < state_.table.row_count(); ++r) {
    const std::string& name = state_.table.Cell(r, frames::Column::kLayoutName);
    if (!name.empty()) layouts.push_back(name);
  }
  if (layouts.empty()) {
    tell("No layouts in the table to plot.", host::MessageIcon::kCritical);
    return;
  }
  // The PDF files go beside the drawing, which must therefore have a place.
  const std::string full_name = document.FullName().value_or("");
  const std::filesystem::path folder =
      core::PathFromUtf8(full_name).parent_path();
  if (full_name.empty() || folder.empty()) {
    tell("Save the drawing first: the PDF files go beside it.",
         host::MessageIcon::kCritical);
    return;
  }
  const host::HostKind kind =
      host::HostKindFromIndex(
          session_.windows().okno_lmt.combo_versia_cad.selected())
          .value_or(host::HostKind::kAutoCad);
  const layouts::PlotSheetsReport report = layouts::PlotSheets(
      document, layouts, folder, layouts::PdfDeviceOf(kind));
  if (report.outcome == host::Outcome::kRefused) {
    tell("The CAD program cannot plot from here.",
         host::MessageIcon::kCritical);
    return;
  }
  std::string text = std::to_string(report.files.size()) +
                     " sheets plotted to " + core::PathToUtf8(folder) + ".";
  if (report.files.size() < layouts.size()) {
    text += " " + std::to_string(layouts.size() - report.files.size()) +
            " not plotted.";
  }
  tell(text, host::MessageIcon::kInformation);
}

void Commands::ShowFrame() {
  host::User& user = session_.user();
  const std::string& title = session_.globals().product_name;
  const int row = shell_.SelectedFrameRow();
  if (row < 1 || !HasFrames(state_.table)) {
    user.ShowMessage("Select a frame in the table first.",
                     host::MessageIcon::kInformation, host::MessageButtons::kOk,
                     title);
    return;
  }
  if (!session_.Connect()) return;
  // Refusals that still leave the frame in view (twist, model space) are not
  // worth a message; a view that did not move is.
  host::SkipLog skips;
  const Status shown =
      layouts::ShowFrame(session_.document(), state_.table, row, skips);
  if (!shown.ok()) {
    user.ShowMessage(shown.message(), host::MessageIcon::kCritical,
                     host::MessageButtons::kOk, title);
  }
}

void Commands::SortLayouts() {
  core::Windows& windows = session_.windows();
  host::User& user = session_.user();
  const std::string& title = session_.globals().product_name;
  // Stored even when the sort cannot run, as the other windows store theirs
  // on confirmation; a lost setting is silent.
  core::WriteSettings(session_.globals().settings_path, windows,
                      core::SettingsBlock::kSortLayouts)
      .IgnoreError();
  Result<layouts::LayoutSort> sort =
      layouts::LayoutSortOf(windows.okno_sort_layouts);
  if (!sort.ok()) {
    user.ShowMessage(sort.status().message(), host::MessageIcon::kCritical,
                     host::MessageButtons::kOk, title);
    return;
  }
  if (!session_.Connect()) return;
  const layouts::SortReport report =
      layouts::SortLayouts(session_.document(), *sort, state_.table);
  std::string text = report.moved == 0
                         ? std::string("The layouts are in that order already.")
                         : std::to_string(report.moved) + " of " +
                               std::to_string(report.after.size()) +
                               " layouts moved.";
  if (!report.skips.empty()) {
    text += "\n" + std::to_string(report.skips.skips().size()) +
            " layouts could not be read or moved.";
  }
  user.ShowMessage(text, host::MessageIcon::kInformation,
                   host::MessageButtons::kOk, title);
}

void Commands::CreateLayouts() {
  // The user may have moved, deleted or renamed rows since the import: the
  // values follow their frame's ID to its row and layout name now.
  std::vector<layouts::RegisteredFrame> listed;
  for (const layouts::RegisteredFrame& frame : registered_) {
    for (int r = 1; r < state_.table.row_count(); ++r) {
      if (frame.id.empty() ||
          state_.table.Cell(r, frames::Column::kId) != frame.id) {
        continue;
      }
      listed.push_back(frame);
      listed.back().table_row = r;
      listed.back().layout = state_.table.Cell(r, frames::Column::kLayoutName);
      break;
    }
  }
  if (!listed.empty() && session_.Connect()) {
    for (const layouts::RegisteredFrame& frame : listed)
      layouts::WriteFrameValues(session_.document(), frame);
  }
  const layouts::CreationReport report =
      layouts::CreateLayouts(session_, state_.table);
  if (report.outcome == host::Outcome::kRefused ||
      report.outcome == host::Outcome::kNotConnected) {
    return;
  }
  for (const layouts::RegisteredFrame& frame : listed)
    layouts::WriteLayoutValues(session_.document(), frame);
}

void Commands::CheckPlan() {
  std::optional<layouts::CreationPlan> plan =
      layouts::PlanLayouts(session_, state_.table);
  if (!plan) return;
  const std::vector<std::string> warnings =
      layouts::CheckPlan(plan->frames, state_.table, plan->existing_layouts);
  shell_.ShowText(session_.windows().okno_lmt.caption("mnuProveritPlan"),
                  layouts::PlanText(*plan, state_.table, warnings));
}

void Commands::ExportRegister() {
  host::User& user = session_.user();
  const std::string& title = session_.globals().product_name;
  const int rows = state_.table.row_count() - 1;
  if (!HasFrames(state_.table)) {
    user.ShowMessage("The frame table is empty: find the frames first.",
                     host::MessageIcon::kInformation, host::MessageButtons::kOk,
                     title);
    return;
  }
  if (!session_.Connect()) return;  // the attributes come from the drawing
  std::optional<std::string> path =
      shell_.PickSaveFile(kRegisterFileFilter, "frames.csv");
  if (!path) return;
  const Status written =
      layouts::WriteFramesCsv(session_.document(), state_.table, *path);
  if (!written.ok()) {
    user.ShowMessage(written.message(), host::MessageIcon::kCritical,
                     host::MessageButtons::kOk, title);
    return;
  }
  user.ShowMessage(std::to_string(rows) + " frames written to " + *path + ".",
                   host::MessageIcon::kInformation, host::MessageButtons::kOk,
                   title);
}

void Commands::ImportRegister() {
  host::User& user = session_.user();
  const std::string& title = session_.globals().product_name;
  if (!HasFrames(state_.table)) {
    user.ShowMessage(
        "The frame table is empty: find the frames first; the register is "
        "matched to them.",
        host::MessageIcon::kInformation, host::MessageButtons::kOk, title);
    return;
  }
  const std::vector<std::string> chosen =
      shell_.PickFiles(kRegisterFileFilter, false);
  if (chosen.empty()) return;
  Result<layouts::Register> read = layouts::ReadRegister(chosen.front());
  if (!read.ok()) {
    user.ShowMessage(read.status().message(), host::MessageIcon::kCritical,
                     host::MessageButtons::kOk, title);
    return;
  }
  layouts::RegisterOutcome outcome =
      layouts::ApplyRegister(*read, state_.table);
  state_.table = std::move(outcome.table);
  registered_ = std::move(outcome.frames);
  const int rows = state_.table.row_count() - 1;
  session_.windows().okno_lmt.found_count = std::to_string(rows);
  std::string text = "Register applied: " + std::to_string(rows) +
                     (rows == 1 ? " frame" : " frames") +
                     " in its order and with its names.";
  for (const std::string& warning : outcome.warnings) text += "\n" + warning;
  user.ShowMessage(text, host::MessageIcon::kInformation,
                   host::MessageButtons::kOk, title);
}

void Commands::Batch(core::Window& window, Action action) {
  core::Windows& windows = session_.windows();
  BatchParts parts = PartsOf(windows, window);
  LMT_CHECK(parts.files != nullptr);  // batch actions live on batch windows
  std::vector<core::BatchFile>& files = *parts.files;
  switch (action) {
    case Action::kBatchStart:
      BatchStart(window);
      return;
    case Action::kBatchInterrupt:
      session_.user().RequestInterrupt();
      return;
    case Action::kBatchAddFiles:
      for (const std::string& path :
           shell_.PickFiles(batch::kDrawingFileFilter, true)) {
        files.push_back(RowOf(path));
      }
      break;
    case Action::kBatchAddFolder: {
      std::optional<std::string> folder =
          shell_.PickFolder(batch::kFolderBrowserTitle);
      if (!folder) return;
      batch::FileTable found;
      found.AddFolder(core::PathFromUtf8(*folder), batch::kDrawingExtensions,
                      parts.subfolders->checked());
      for (const batch::FileEntry& entry : found.Files())
        files.push_back({entry.name, entry.path});
      break;
    }
    case Action::kBatchDeleteRow: {
      const int row = shell_.SelectedFileRow(window);
      if (row < 1 || row > static_cast<int>(files.size())) return;
      files.erase(files.begin() + (row - 1));
      break;
    }
    case Action::kBatchClear:
      files.clear();
      break;
    case Action::kBatchPasteList: {
      core::OknoFunctionReplaceText& text = windows.okno_function_replace_text;
      Result<std::vector<batch::ReplacementPair>> pairs =
          batch::ParsePastedTable(shell_.ClipboardText());
      if (!pairs.ok()) {
        session_.user().ShowMessage(pairs.status().message(),
                                    host::MessageIcon::kCritical);
        return;
      }
      text.replace_list.clear();
      for (const batch::ReplacementPair& pair : *pairs)
        text.replace_list.push_back({pair.find, pair.replace});
      break;
    }
    case Action::kBatchSaveFolder: {
      std::optional<std::string> folder =
          shell_.PickFolder(batch::kFolderBrowserTitle);
      if (!folder) return;
      parts.save_folder->set_text(*folder);
      break;
    }
    case Action::kBatchScriptFile:
    case Action::kBatchLispFile: {
      const bool script = action == Action::kBatchScriptFile;
      std::vector<std::string> chosen = shell_.PickFiles(
          script ? batch::kScriptFileFilter : kLispFileFilter, false);
      if (chosen.empty()) return;
      (script ? windows.okno_function_run_script.uni_text_name_script_file
              : windows.okno_function_run_lisp.uni_text_name_lisp_file)
          .set_text(chosen.front());
      break;
    }
    default:
      LMT_CHECK(false);  // every other action is handled by Run
  }
  shell_.Refresh(window);
}

void Commands::BatchStart(core::Window& window) {
  core::Windows& windows = session_.windows();
  batch::BatchUi ui(session_.user(), session_.messages(),
                    session_.globals().product_name,
                    window.caption(window.name()));
  if (&window == &windows.okno_function_run_script) {
    batch::RunScript(session_, ui);
  } else if (&window == &windows.okno_function_run_lisp) {
    batch::RunLisp(session_, ui);
  } else if (&window == &windows.okno_function_replace_atribut) {
    batch::ReplaceAttributes(session_, ui);
  } else if (&window == &windows.okno_function_replace_text) {
    batch::ReplaceText(session_, ui);
  } else if (&window == &windows.okno_function_import) {
    batch::RunImport(session_, ui);
  }
}

void Commands::ShowNameLayouts() {
  if (!session_.Connect()) return;
  core::OknoNameLayouts& names = session_.windows().okno_name_layouts;
  names.layout_names.clear();
  names.selected_row = -1;
  Result<host::LayoutsPtr> layouts = session_.document().Layouts();
  if (layouts.ok()) {
    Result<std::vector<host::LayoutPtr>> items = (*layouts)->Items();
    if (items.ok()) {
      for (const host::LayoutPtr& layout : *items) {
        Result<std::string> name = layout->Name();
        // A layout whose name cannot be read cannot be a pattern either.
        if (!name.ok() || core::EqualsIgnoreCase(*name, "Model")) continue;
        names.layout_names.push_back(*name);
      }
    }
  }
  shell_.ShowWindow(names);
}

}  // namespace lmt::addin

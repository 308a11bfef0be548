#include "core/program.h"

#include "core/file_util.h"
#include "core/language.h"
#include "core/settings_folder.h"

namespace lmt::core {

AddIn::AddIn(Environment env, WindowView* view)
    : env_(std::move(env)), view_(view) {
  if (view_ == nullptr) {
    headless_ = std::make_unique<HeadlessView>();
    view_ = headless_.get();
  }
}

void AddIn::AddStartupRoutine(Routine routine) {
  startup_routines_.push_back(std::move(routine));
}

void AddIn::AddSearchStateReset(Routine routine) {
  search_resets_.push_back(std::move(routine));
}

void AddIn::InitGlobals(bool create_files) {
  Globals& g = globals_;
  for (int i = 0; i < kFrameColumnCount; ++i)
    g.frame_columns[static_cast<size_t>(i)] = i;
  g.UseRussian();
  // Lang.ini beside the add-in is what makes an international installation.
  const std::filesystem::path language_file =
      env_.addin_folder / PathFromUtf8(kLanguageFileName);
  g.language_file_path = language_file;
  if (FileExists(language_file)) g.UseLanguageFile(language_file);
  g.version = std::string(kVersion);
  g.version_caption = "Version " + g.version;
  g.settings_folder_name = std::string(kSettingsFolderName);
  g.settings_folder =
      create_files
          ? GetSettingsFolder(g.settings_folder_name, env_, g.product_name)
          : SettingsFolderPath(g.settings_folder_name, env_);
  g.layout_file_path = g.settings_folder / PathFromUtf8(kLayoutFileName);
  g.settings_path = g.settings_folder / PathFromUtf8(kSettingsFileName);
  if (create_files) EnsureSettingsFile(g.settings_path);
}

void AddIn::Load(Window& window) {
  if (window.loaded()) return;
  window.set_handle(view_->Create(window));
  window.set_loaded(true);
  window.set_visible(false);
}

void AddIn::LoadModels(const std::filesystem::path& settings_file) {
  if (env_.format_number) {
    globals_.decimal_comma =
        DetectDecimalSeparator(env_.format_number, globals_.decimal_comma);
  }
  for (Window* window : windows_.Secondary()) Load(*window);
  Load(windows_.okno_lmt);
  ApplyLanguage(globals_, windows_);
  for (Routine& routine : startup_routines_) routine(*this);
  OknoLmt& main = windows_.okno_lmt;
  main.combo_versia_cad.Select(0);
  main.combo_nomer_autocad.Select(0);
  for (Routine& reset : search_resets_) reset(*this);
  ReadStartupSettings(settings_file, windows_);
  // Assigning stored values fires the windows' click handlers; while started
  // is false a changed host kind has no effect beyond the enabling.
  main.UpdateEnabled();
  windows_.okno_sozdat_layout.UpdateEnabled();
  for (Window* window : windows_.All()) view_->Refresh(*window);
}

void AddIn::StartProgram() {
  globals_.exiting = false;
  LoadModels(globals_.settings_path);
  view_->Show(windows_.okno_lmt);
  windows_.okno_lmt.set_visible(true);
  globals_.started = true;
}

void AddIn::ExitProgram() {
  globals_.exiting = true;
  // A lost setting is silent, as a failed profile write always was.
  WriteExitSettings(globals_.settings_path, windows_).IgnoreError();
  for (Window* window : windows_.Secondary()) {
    if (!window->loaded()) continue;
    view_->Destroy(*window);
    window->set_loaded(false);
    window->set_visible(false);
  }
  if (windows_.okno_lmt.loaded()) {
    view_->Destroy(windows_.okno_lmt);
    windows_.okno_lmt.set_loaded(false);
    windows_.okno_lmt.set_visible(false);
  }
}

std::intptr_t AddIn::MainWindowHandle() {
  Load(windows_.okno_lmt);
  return windows_.okno_lmt.handle();
}

void AddIn::ResizeMainWindow(long width, long height) {
  Load(windows_.okno_lmt);
  view_->Resize(windows_.okno_lmt, width, height);
}

Status AddIn::SaveConfirmed(SettingsBlock block) {
  return WriteSettings(globals_.settings_path, windows_, block);
}

void AddIn::ShowMessage(std::string_view text, MessageIcon icon) {
  if (env_.messages != nullptr)
    env_.messages->Show(globals_.product_name, text, icon);
}

void AddIn::ShowMessage(int number, MessageIcon icon) {
  ShowMessage(globals_.messages.Get(number), icon);
}

}  // namespace lmt::core

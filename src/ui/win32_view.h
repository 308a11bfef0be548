// The add-in's windows as real Win32 windows, made from the window models
// (core/window.h) by the form plan (form_plan.h): menus of the main window,
// group frames, labels, buttons, option buttons, check boxes, text fields
// and lists, the frame table `TablicaLayout` as a 27-column report list, the
// file tables of the batch windows, a progress bar and a status line. Clicks
// go to the command router (addin/commands.h); edits go straight into the
// models, which stay the single store of the user's choices.
//
// Closing a window only hides it until the add-in is exiting. Every text is
// shown through the W functions. One thread: the one that made the view.
#ifndef LMT_UI_WIN32_VIEW_H_
#define LMT_UI_WIN32_VIEW_H_

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "addin/commands.h"
#include "addin/shell.h"
#include "core/globals.h"
#include "core/view.h"
#include "frames/frame_table.h"

namespace lmt::ui {

// First menu command identifier; item i of addin::MainMenu() is kMenuBase+i.
inline constexpr int kMenuBase = 100;
// First control identifier; element i of a window is kControlBase+i.
inline constexpr int kControlBase = 1000;
// The list views and the progress display.
inline constexpr int kListId = 900;
inline constexpr int kProgressId = 901;
inline constexpr int kStatusId = 902;

class Win32View : public core::WindowView, public addin::Shell {
 public:
  explicit Win32View(HINSTANCE instance);
  ~Win32View() override;
  Win32View(const Win32View&) = delete;
  Win32View& operator=(const Win32View&) = delete;

  // Connects clicks to `commands` and reads the exiting flag, the product
  // name and the decimal separator from `globals`. Both must outlive the
  // view; until attached, clicks only change the models.
  void Attach(addin::Commands* commands, core::Globals* globals);

  // core::WindowView
  std::intptr_t Create(core::Window& model) override;
  void Show(core::Window& model) override;
  void Resize(core::Window& model, long width, long height) override;
  void Refresh(core::Window& model) override;
  void Destroy(core::Window& model) override;

  // addin::Shell
  void ShowWindow(core::Window& window) override;
  void HideWindow(core::Window& window) override;
  void FrameTableChanged() override;
  int SelectedFrameRow() override;
  int SelectedFileRow(core::Window& window) override;
  std::vector<std::string> PickFiles(std::string_view filter,
                                     bool multiple) override;
  std::optional<std::string> PickSaveFile(
      std::string_view filter, std::string_view default_name) override;
  std::optional<std::string> PickFolder(std::string_view title) override;
  void ShowText(std::string_view title, std::string_view text) override;
  std::string ClipboardText() override;
  void OpenWebPage(std::string_view address) override;
  void ShowAbout() override;

  // The main window (nullptr before it is made) and the progress display.
  HWND main_window() const { return main_; }
  HWND progress_bar() const;
  HWND status_line() const;
  // The window of `model`, nullptr when not made.
  HWND WindowOf(const core::Window& model) const;
  // A child of `model`'s window by caption key ("OptionBlockPoisk1"), or by
  // control name or settings key and option slot (case ignored); nullptr
  // when there is none.
  HWND ControlOf(const core::Window& model, std::string_view key_or_name,
                 int slot = 0) const;
  // The list view of `model` (frame table or file table), or nullptr.
  HWND ListOf(const core::Window& model) const;
  // The replacement list of the Replace text window, or nullptr.
  HWND ReplacementListOf(const core::Window& model) const;
  // The about window, nullptr until first shown.
  HWND about_window() const { return about_; }
  // The text window of ShowText, nullptr until first shown.
  HWND text_window() const { return text_window_; }

 private:
  struct Form;
  static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wparam,
                                     LPARAM lparam);
  static LRESULT CALLBACK FieldProc(HWND hwnd, UINT message, WPARAM wparam,
                                    LPARAM lparam);
  LRESULT Handle(Form& form, UINT message, WPARAM wparam, LPARAM lparam);
  void OnCommand(Form& form, int id, int code, HWND control);
  void AfterChange(Form& form);
  void Layout(Form& form);
  void FillList(Form& form);
  void RefreshEnabled(Form& form);
  Form* FormOf(const core::Window& model) const;
  void BuildMenu(Form& form);

  HINSTANCE instance_;
  HFONT font_ = nullptr;
  addin::Commands* commands_ = nullptr;
  core::Globals* globals_ = nullptr;
  std::vector<std::unique_ptr<Form>> forms_;
  HWND main_ = nullptr;
  HWND about_ = nullptr;
  std::unique_ptr<Form> about_form_;
  HWND text_window_ = nullptr;
  HWND text_edit_ = nullptr;
  std::unique_ptr<Form> text_form_;
};

}  // namespace lmt::ui

#endif  // LMT_UI_WIN32_VIEW_H_

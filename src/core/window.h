// A window of the add-in as a model: its name (which is also its settings
// and language section), its controls in a fixed order, and the captions of
// its captioned elements (menus, frames, labels, buttons, option buttons,
// check boxes), keyed as in the language file. The model lives for the whole
// run; "loading" and "unloading" a window are only recorded here, and a user
// interface shows the model through WindowView (core/view.h).
#ifndef LMT_CORE_WINDOW_H_
#define LMT_CORE_WINDOW_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/controls.h"

namespace lmt::core {

// One caption: its language-file key, the built-in English text (the
// default of an international installation) and the Russian text of the
// Russian installation.
struct CaptionEntry {
  std::string_view key;
  std::string_view english;
  std::string_view russian;
};

class Window {
 public:
  // `captions` must outlive the window (static tables). Captions start in
  // Russian, the design of the Russian installation.
  Window(std::string name, std::span<const CaptionEntry> captions);
  virtual ~Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const std::string& name() const { return name_; }
  const std::vector<Control*>& controls() const { return controls_; }

  // The control whose settings key or name equals `key_or_name` (ASCII case
  // ignored), or nullptr.
  Control* FindControl(std::string_view key_or_name) const;

  // A settings key resolved to a control and one of its slots (an option
  // group's button; 0 otherwise).
  struct Slot {
    Control* control;
    int slot;
  };
  // Resolves "OptionSortPoint3", "TextMashtabModel" (ASCII case ignored).
  std::optional<Slot> FindSlot(std::string_view settings_key) const;

  // Captions, in table order. caption() of an unknown key is empty.
  std::span<const CaptionEntry> caption_table() const { return table_; }
  const std::string& caption(std::string_view key) const;
  void set_caption(std::string_view key, std::string text);  // known keys
  void UseRussianCaptions();
  void UseEnglishCaptions();

  // Lifecycle flags kept by the program (core/program.h).
  bool loaded() const { return loaded_; }
  bool visible() const { return visible_; }
  std::intptr_t handle() const { return handle_; }
  void set_loaded(bool loaded) { loaded_ = loaded; }
  void set_visible(bool visible) { visible_ = visible; }
  void set_handle(std::intptr_t handle) { handle_ = handle; }

  // Called by Control's constructor.
  void Register(Control* control) { controls_.push_back(control); }

 private:
  std::string name_;
  std::vector<Control*> controls_;
  std::span<const CaptionEntry> table_;
  std::vector<std::string> captions_;  // parallel to table_
  bool loaded_ = false;
  bool visible_ = false;
  std::intptr_t handle_ = 0;
};

}  // namespace lmt::core

#endif  // LMT_CORE_WINDOW_H_

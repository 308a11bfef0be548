// The controls of the add-in's windows as plain values: the single store of
// the user's choices. A control has the name the product gives it
// ("Option_SortPoint") and a settings key derived from it ("OptionSortPoint";
// Check_Initializacia alone keeps its underscore). An option group holds one
// settings key per button, the group's key followed by the button's index.
//
// Values travel to and from the settings file as "value words": "True" or
// "False" for an option button, "0" or "1" for a check box, the entry index
// for a list (or, for the filter window's editable lists, the text), the text
// for a text field. Window user interfaces read and write the same objects.
#ifndef LMT_CORE_CONTROLS_H_
#define LMT_CORE_CONTROLS_H_

#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"

namespace lmt::core {

class Window;

// "Text_MashtabModel" -> "TextMashtabModel"; "Check_Initializacia" stays.
std::string SettingsKeyOf(std::string_view control_name);

class Control {
 public:
  // Registers the control with `owner`, which must outlive it.
  Control(Window* owner, std::string name);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& name() const { return name_; }
  const std::string& key() const { return key_; }
  bool enabled() const { return enabled_; }
  void set_enabled(bool enabled) { enabled_ = enabled; }

  // Number of settings keys: the buttons of an option group, else 1.
  virtual int slot_count() const { return 1; }
  // The settings key of slot `slot` (REQUIRES 0 <= slot < slot_count()).
  virtual std::string SlotKey(int slot) const;
  // The value word of slot `slot`.
  virtual std::string ValueWord(int slot) const = 0;
  // Applies a value word to slot `slot`. A word that does not fit the
  // control returns InvalidArgument and leaves the control unchanged, except
  // that an index list falls back to its first entry as the settings reader
  // does.
  virtual Status SetValueWord(int slot, std::string_view word) = 0;
  // The default the settings reader passes for slot `slot`: the present
  // value word, so that a missing key changes nothing.
  virtual std::string ReadDefault(int slot) const { return ValueWord(slot); }

 private:
  std::string name_;
  std::string key_;
  bool enabled_ = true;
};

// One option group: at most one selected button (-1: none, as after a
// stored "False" for the selected button).
class OptionGroup : public Control {
 public:
  OptionGroup(Window* owner, std::string name, int button_count, int selected);

  int size() const { return button_count_; }
  int selected() const { return selected_; }
  bool is_selected(int button) const { return selected_ == button; }
  void Select(int button);  // REQUIRES: 0 <= button < size()
  // Sets one button as the user's click or a stored word would: true
  // selects it, false clears it only when it is the selected one.
  void SetButton(int button, bool value);

  int slot_count() const override { return button_count_; }
  std::string SlotKey(int slot) const override;
  std::string ValueWord(int slot) const override;
  Status SetValueWord(int slot, std::string_view word) override;

 private:
  int button_count_;
  int selected_;
};

class CheckBox : public Control {
 public:
  CheckBox(Window* owner, std::string name, bool checked);

  bool checked() const { return checked_; }
  void set_checked(bool checked) { checked_ = checked; }

  std::string ValueWord(int slot) const override;
  Status SetValueWord(int slot, std::string_view word) override;

 private:
  bool checked_;
};

// A plain (`Text_`) or Unicode (`UniText_`) text field; both hold UTF-8.
class TextField : public Control {
 public:
  TextField(Window* owner, std::string name, std::string text);

  const std::string& text() const { return text_; }
  void set_text(std::string text) { text_ = std::move(text); }

  std::string ValueWord(int slot) const override;
  Status SetValueWord(int slot, std::string_view word) override;

 private:
  std::string text_;
};

// A list with fixed entries. An index list is stored as the selected index;
// an editable list (kText) as its text, which need not be an entry.
class ComboBox : public Control {
 public:
  enum class Stored { kIndex, kText };

  ComboBox(Window* owner, std::string name, std::vector<std::string> items,
           int selected, Stored stored = Stored::kIndex);

  const std::vector<std::string>& items() const { return items_; }
  int size() const { return static_cast<int>(items_.size()); }
  int selected() const { return selected_; }  // -1: text not in the list
  const std::string& text() const { return text_; }
  Stored stored() const { return stored_; }

  void Select(int index);  // REQUIRES: 0 <= index < size()
  // Sets the text; selects the first entry equal to it (ASCII case
  // ignored), or none.
  void set_text(std::string text);
  // Replaces the entries, keeping the text; the selection follows the text.
  void set_items(std::vector<std::string> items);
  // Changes one entry's text (the interface language names entry 0 of the
  // save-version list).
  void set_item(int index, std::string text);

  std::string ValueWord(int slot) const override;
  Status SetValueWord(int slot, std::string_view word) override;
  // An index list reads with the default "0", as the host lists always did.
  std::string ReadDefault(int slot) const override;

 private:
  std::vector<std::string> items_;
  int selected_;
  std::string text_;
  Stored stored_;
};

// Parses the value words; nullopt-like failure as InvalidArgument.
Result<bool> ParseBooleanWord(std::string_view word);
Result<int> ParseIntegerWord(std::string_view word);

}  // namespace lmt::core

#endif  // LMT_CORE_CONTROLS_H_

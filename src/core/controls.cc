#include "core/controls.h"

#include <charconv>

#include "core/check.h"
#include "core/text_encoding.h"
#include "core/window.h"

namespace lmt::core {

std::string SettingsKeyOf(std::string_view control_name) {
  // The one control whose stored key keeps its underscore.
  if (control_name == "Check_Initializacia") return std::string(control_name);
  std::string key;
  for (char c : control_name) {
    if (c != '_') key += c;
  }
  return key;
}

Result<bool> ParseBooleanWord(std::string_view word) {
  if (EqualsIgnoreAsciiCase(word, "True")) return true;
  if (EqualsIgnoreAsciiCase(word, "False")) return false;
  // A number converts too: 0 is false, anything else true.
  Result<int> number = ParseIntegerWord(word);
  if (number.ok()) return *number != 0;
  return Status::InvalidArgument("not a boolean: \"" + std::string(word) +
                                 "\"");
}

Result<int> ParseIntegerWord(std::string_view word) {
  while (!word.empty() && word.front() == ' ') word.remove_prefix(1);
  while (!word.empty() && word.back() == ' ') word.remove_suffix(1);
  if (!word.empty() && word.front() == '+') word.remove_prefix(1);
  int value = 0;
  auto [ptr, ec] =
      std::from_chars(word.data(), word.data() + word.size(), value);
  if (word.empty() || ec != std::errc() || ptr != word.data() + word.size()) {
    return Status::InvalidArgument("not a whole number: \"" +
                                   std::string(word) + "\"");
  }
  return value;
}

Control::Control(Window* owner, std::string name)
    : name_(std::move(name)), key_(SettingsKeyOf(name_)) {
  LMT_CHECK(owner != nullptr);
  owner->Register(this);
}

std::string Control::SlotKey(int slot) const {
  LMT_CHECK(slot >= 0 && slot < slot_count());
  return key_;
}

OptionGroup::OptionGroup(Window* owner, std::string name, int button_count,
                         int selected)
    : Control(owner, std::move(name)),
      button_count_(button_count),
      selected_(selected) {
  LMT_CHECK(button_count > 0 && selected >= -1 && selected < button_count);
}

void OptionGroup::Select(int button) {
  LMT_CHECK(button >= 0 && button < button_count_);
  selected_ = button;
}

void OptionGroup::SetButton(int button, bool value) {
  LMT_CHECK(button >= 0 && button < button_count_);
  if (value) {
    selected_ = button;
  } else if (selected_ == button) {
    selected_ = -1;
  }
}

std::string OptionGroup::SlotKey(int slot) const {
  LMT_CHECK(slot >= 0 && slot < button_count_);
  return key() + std::to_string(slot);
}

std::string OptionGroup::ValueWord(int slot) const {
  LMT_CHECK(slot >= 0 && slot < button_count_);
  return selected_ == slot ? "True" : "False";
}

Status OptionGroup::SetValueWord(int slot, std::string_view word) {
  Result<bool> value = ParseBooleanWord(word);
  if (!value.ok()) return value.status();
  SetButton(slot, *value);
  return Status::Ok();
}

CheckBox::CheckBox(Window* owner, std::string name, bool checked)
    : Control(owner, std::move(name)), checked_(checked) {}

std::string CheckBox::ValueWord(int) const { return checked_ ? "1" : "0"; }

Status CheckBox::SetValueWord(int, std::string_view word) {
  Result<int> value = ParseIntegerWord(word);
  if (!value.ok()) return value.status();
  if (*value != 0 && *value != 1) {
    return Status::InvalidArgument("a check box takes 0 or 1, not " +
                                   std::string(word));
  }
  checked_ = *value == 1;
  return Status::Ok();
}

TextField::TextField(Window* owner, std::string name, std::string text)
    : Control(owner, std::move(name)), text_(std::move(text)) {}

std::string TextField::ValueWord(int) const { return text_; }

Status TextField::SetValueWord(int, std::string_view word) {
  text_ = std::string(word);
  return Status::Ok();
}

ComboBox::ComboBox(Window* owner, std::string name,
                   std::vector<std::string> items, int selected, Stored stored)
    : Control(owner, std::move(name)),
      items_(std::move(items)),
      selected_(-1),
      stored_(stored) {
  if (selected >= 0) Select(selected);
}

void ComboBox::Select(int index) {
  LMT_CHECK(index >= 0 && index < size());
  selected_ = index;
  text_ = items_[static_cast<size_t>(index)];
}

void ComboBox::set_text(std::string text) {
  text_ = std::move(text);
  selected_ = -1;
  for (int i = 0; i < size(); ++i) {
    if (EqualsIgnoreAsciiCase(items_[static_cast<size_t>(i)], text_)) {
      selected_ = i;
      break;
    }
  }
}

void ComboBox::set_items(std::vector<std::string> items) {
  items_ = std::move(items);
  set_text(text_);
}

void ComboBox::set_item(int index, std::string text) {
  LMT_CHECK(index >= 0 && index < size());
  items_[static_cast<size_t>(index)] = std::move(text);
  if (selected_ == index) text_ = items_[static_cast<size_t>(index)];
}

std::string ComboBox::ValueWord(int) const {
  if (stored_ == Stored::kText) return text_;
  return std::to_string(selected_ < 0 ? 0 : selected_);
}

std::string ComboBox::ReadDefault(int slot) const {
  return stored_ == Stored::kIndex ? "0" : ValueWord(slot);
}

Status ComboBox::SetValueWord(int, std::string_view word) {
  if (stored_ == Stored::kText) {
    set_text(std::string(word));
    return Status::Ok();
  }
  // A stored index outside the list selects the first entry.
  Result<int> index = ParseIntegerWord(word);
  const int chosen = index.ok() && *index >= 0 && *index < size() ? *index : 0;
  if (size() > 0) Select(chosen);
  return index.status();
}

}  // namespace lmt::core

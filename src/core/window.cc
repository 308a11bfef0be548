#include "core/window.h"

#include <charconv>

#include "core/text_encoding.h"

namespace lmt::core {

Window::Window(std::string name, std::span<const CaptionEntry> captions)
    : name_(std::move(name)), table_(captions) {
  UseRussianCaptions();
}

Control* Window::FindControl(std::string_view key_or_name) const {
  for (Control* control : controls_) {
    if (EqualsIgnoreAsciiCase(control->key(), key_or_name) ||
        EqualsIgnoreAsciiCase(control->name(), key_or_name))
      return control;
  }
  return nullptr;
}

std::optional<Window::Slot> Window::FindSlot(
    std::string_view settings_key) const {
  for (Control* control : controls_) {
    for (int slot = 0; slot < control->slot_count(); ++slot) {
      if (EqualsIgnoreAsciiCase(control->SlotKey(slot), settings_key))
        return Slot{control, slot};
    }
  }
  return std::nullopt;
}

const std::string& Window::caption(std::string_view key) const {
  static const std::string kEmpty;
  for (size_t i = 0; i < table_.size(); ++i) {
    if (EqualsIgnoreAsciiCase(table_[i].key, key)) return captions_[i];
  }
  return kEmpty;
}

void Window::set_caption(std::string_view key, std::string text) {
  for (size_t i = 0; i < table_.size(); ++i) {
    if (EqualsIgnoreAsciiCase(table_[i].key, key)) {
      captions_[i] = std::move(text);
      return;
    }
  }
}

void Window::UseRussianCaptions() {
  captions_.clear();
  for (const CaptionEntry& entry : table_)
    captions_.emplace_back(entry.russian);
}

void Window::UseEnglishCaptions() {
  captions_.clear();
  for (const CaptionEntry& entry : table_)
    captions_.emplace_back(entry.english);
}

}  // namespace lmt::core

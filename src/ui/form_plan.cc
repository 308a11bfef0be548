#include "ui/form_plan.h"

#include <algorithm>
#include <set>
#include <utility>

#include "addin/command_table.h"
#include "core/controls.h"

namespace lmt::ui {
namespace {

// Labels whose field the key convention does not find: the free naming
// texts are spelt "Leyout" in their control names, and the AutoCAD release
// list belongs with the host choice.
constexpr std::pair<std::string_view, std::string_view> kFieldOfLabel[] = {
    {"TXTLayoutName10", "UniText_LeyoutName0"},
    {"TXTLayoutName11", "UniText_LeyoutName1"},
    {"TXTLayoutName12", "UniText_LeyoutName2"},
    {"FrameVersiaCAD", "Combo_NomerAutoCAD"},
};

Element Make(ElementKind kind, std::string key, std::string name,
             core::Control* control = nullptr, int slot = 0) {
  Element e;
  e.kind = kind;
  e.key = std::move(key);
  e.name = std::move(name);
  e.control = control;
  e.slot = slot;
  return e;
}

bool IsField(const core::Control* control) {
  return dynamic_cast<const core::TextField*>(control) != nullptr ||
         dynamic_cast<const core::ComboBox*>(control) != nullptr;
}

Element FieldElement(core::Control* control) {
  return Make(dynamic_cast<core::ComboBox*>(control) != nullptr
                  ? ElementKind::kCombo
                  : ElementKind::kEdit,
              "", control->name(), control);
}

class Planner {
 public:
  explicit Planner(const core::Window& model) : model_(model) {}

  std::vector<Element> Run() {
    for (const core::CaptionEntry& entry : model_.caption_table())
      Add(entry.key);
    // What the captions did not reach goes last, outside every frame.
    for (core::Control* control : model_.controls()) {
      if (auto* group = dynamic_cast<core::OptionGroup*>(control)) {
        for (int slot = 0; slot < group->size(); ++slot) {
          if (options_.contains({control, slot})) continue;
          Push(Make(ElementKind::kOption, group->SlotKey(slot), control->name(),
                    control, slot));
          elements_.back().group = -2;
        }
        continue;
      }
      if (placed_.contains(control)) continue;
      if (IsField(control)) {
        Push(FieldElement(control));
      } else {
        Push(Make(ElementKind::kCheck, control->key(), control->name(),
                  control));
      }
      elements_.back().group = -2;
    }
    for (const ExtraButton& extra : ExtraButtonsOf(model_.name())) {
      Push(Make(ElementKind::kButton, "", std::string(extra.name)));
      elements_.back().group = -2;
    }
    return std::move(elements_);
  }

 private:
  void Push(Element e) {
    if (e.control != nullptr && e.kind != ElementKind::kOption)
      placed_.insert(e.control);
    if (e.kind == ElementKind::kOption) options_.insert({e.control, e.slot});
    elements_.push_back(std::move(e));
  }

  // The field a label or frame names, not placed yet: by the key
  // convention first, then by the table of exceptions.
  core::Control* FieldFor(std::string_view key, std::string_view suffix) {
    if (!suffix.empty()) {
      for (core::Control* c : model_.controls()) {
        if (IsField(c) && !placed_.contains(c) && c->key().ends_with(suffix))
          return c;
      }
    }
    for (const auto& [label, field] : kFieldOfLabel) {
      if (label != key) continue;
      core::Control* c = model_.FindControl(field);
      if (c != nullptr && !placed_.contains(c)) return c;
    }
    return nullptr;
  }

  void Add(std::string_view key) {
    if (key == model_.name() || key.starts_with("mnu") ||
        key.starts_with("TablTekstiLang") || key.starts_with("TXTTabl")) {
      return;
    }
    const std::string k(key);
    if (key.starts_with("Frame")) {
      Push(Make(ElementKind::kGroup, k, k));
      // A frame may hold two lists (the host kind and its release).
      AddField(key, key.substr(5), false);
      AddField(key, key.substr(5), false);
      return;
    }
    if (key.starts_with("Command")) {
      Push(Make(ElementKind::kButton, k, addin::ButtonName(key)));
      return;
    }
    if (key.starts_with("Option")) {
      if (std::optional<core::Window::Slot> slot = model_.FindSlot(key);
          slot && dynamic_cast<core::OptionGroup*>(slot->control)) {
        Push(Make(ElementKind::kOption, k, slot->control->name(), slot->control,
                  slot->slot));
        return;
      }
    }
    if (key.starts_with("Check")) {
      core::Control* c = model_.FindControl(key);
      if (dynamic_cast<core::CheckBox*>(c) != nullptr && !placed_.contains(c)) {
        Push(Make(ElementKind::kCheck, k, c->name(), c));
        return;
      }
    }
    Push(Make(ElementKind::kLabel, k, k));
    if (key.starts_with("TXT")) AddField(key, key.substr(3), true);
  }

  void AddField(std::string_view key, std::string_view suffix, bool beside) {
    core::Control* field = FieldFor(key, suffix);
    if (field == nullptr) return;
    Element e = FieldElement(field);
    e.beside_label = beside;
    Push(std::move(e));
  }

  const core::Window& model_;
  std::vector<Element> elements_;
  std::set<const core::Control*> placed_;
  std::set<std::pair<const core::Control*, int>> options_;
};

}  // namespace

std::vector<ExtraButton> ExtraButtonsOf(std::string_view window_name) {
  if (window_name == "OknoLmt") {
    return {{"Command_GetNameLayouts", "..."},
            {"Command_PeremestitStrokuNaPervii", "^^"},
            {"Command_PeremestitStrokuVverh", "^"},
            {"Command_PeremestitStrokuVniz", "v"},
            {"Command_UdalitStroku", "X"},
            // Highlighting the table's frames, and removing it: buttons
            // without a caption of their own, marked as outlines.
            {"Command_VidelitRamki", "[#]"},
            {"Command_NeVidelitRamki", "[ ]"}};
  }
  return {};
}

std::vector<Element> PlanElements(const core::Window& model) {
  return Planner(model).Run();
}

Rect PlaceElements(std::vector<Element>& elements, const Placement& p) {
  constexpr int kGroupHeader = 18;
  constexpr int kGroupPadding = 6;
  const int top = p.margin;
  const int bottom = p.margin + p.column_height;
  int x = p.margin;
  int y = top;
  int right = x;
  int lowest = y;
  auto next_column = [&] {
    x += p.column_width + p.margin;
    y = top;
  };
  // Places elements [begin, end) as rows from (left, y) with `width`.
  auto place_rows = [&](size_t begin, size_t end, int left, int width,
                        int row_y) {
    for (size_t i = begin; i < end; ++i) {
      Element& e = elements[i];
      if (e.beside_label && i > begin) {
        Rect& label = elements[i - 1].rect;
        label.width = width * 9 / 20;
        e.rect = {left + label.width + 4, label.y, width - label.width - 4,
                  p.row_height - 2};
        continue;
      }
      e.rect = {left, row_y, width, p.row_height - 2};
      row_y += p.row_height;
    }
    return row_y;
  };
  auto rows_of = [&](size_t begin, size_t end) {
    int rows = 0;
    for (size_t i = begin; i < end; ++i)
      if (!(elements[i].beside_label && i > begin)) ++rows;
    return rows;
  };

  size_t i = 0;
  while (i < elements.size()) {
    size_t end = i + 1;
    int height;
    if (elements[i].kind == ElementKind::kGroup) {
      while (end < elements.size() &&
             elements[end].kind != ElementKind::kGroup &&
             elements[end].group != -2) {
        elements[end].group = static_cast<int>(i);
        ++end;
      }
      height =
          kGroupHeader + rows_of(i + 1, end) * p.row_height + kGroupPadding;
    } else {
      if (elements[i].group != -2) elements[i].group = -1;
      while (end < elements.size() && elements[end].beside_label) ++end;
      height = p.row_height;
    }
    if (y + height > bottom && y > top) next_column();
    if (elements[i].kind == ElementKind::kGroup) {
      elements[i].rect = {x, y, p.column_width, height};
      place_rows(i + 1, end, x + 8, p.column_width - 16, y + kGroupHeader);
      y += height + 4;
    } else {
      y = place_rows(i, end, x, p.column_width, y);
    }
    right = std::max(right, x + p.column_width);
    lowest = std::max(lowest, y);
    i = end;
  }
  return {0, 0, right + p.margin, lowest + p.margin};
}

}  // namespace lmt::ui

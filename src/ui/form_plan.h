// The controls of a window made from its model instead of placed by hand:
// one element per captioned entry of the model's caption table (group
// frames, labels, buttons, option buttons, check boxes), each text field or
// list beside the label that names it ("TXTNameAtribute" labels
// "UniText_NameAtribute"), every control the captions do not reach at the
// end, and the window's own extra buttons. Then the elements are stacked in
// columns of a given height, a group frame never split between columns.
//
// The plan knows no Windows types: positions are in pixels of a fixed
// 96-dpi grid, and the window maker turns elements into child windows.
#ifndef LMT_UI_FORM_PLAN_H_
#define LMT_UI_FORM_PLAN_H_

#include <string>
#include <string_view>
#include <vector>

#include "core/window.h"

namespace lmt::ui {

enum class ElementKind {
  kGroup,  // a frame around the elements that follow it
  kLabel,
  kButton,  // `name` is the button's control name ("Command_Start")
  kCheck,
  kOption,  // `slot` is the button's index in its group
  kEdit,
  kCombo,
};

struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

struct Element {
  ElementKind kind = ElementKind::kLabel;
  std::string key;                   // caption key; empty for fields and lists
  std::string name;                  // button name, or the control's name
  core::Control* control = nullptr;  // checks, options, fields, lists
  int slot = 0;
  // A field or list that shares the row of the label before it.
  bool beside_label = false;
  Rect rect;
  int group = -1;  // index of the kGroup element that holds this one
};

// A button a window has without a caption in the language tables.
struct ExtraButton {
  std::string_view name;
  std::string_view text;
};
// The row buttons of the main window, its pattern-layout chooser and its
// highlighting buttons.
std::vector<ExtraButton> ExtraButtonsOf(std::string_view window_name);

// The elements of `model` in order, before placing.
std::vector<Element> PlanElements(const core::Window& model);

struct Placement {
  int column_width = 270;
  int column_height = 480;  // content taller than this starts a new column
  int row_height = 22;
  int margin = 8;
};

// Places `elements` in columns; returns the size of the area they cover.
Rect PlaceElements(std::vector<Element>& elements, const Placement& placement);

}  // namespace lmt::ui

#endif  // LMT_UI_FORM_PLAN_H_

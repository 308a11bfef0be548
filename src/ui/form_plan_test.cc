// The generated forms: every control of every window is reachable, labels
// sit beside the fields they name, and the placement keeps frames whole.
#include "ui/form_plan.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "core/windows.h"

namespace lmt::ui {
namespace {

bool Overlap(const Rect& a, const Rect& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height &&
         b.y < a.y + a.height;
}

bool Inside(const Rect& inner, const Rect& outer) {
  return inner.x >= outer.x && inner.y >= outer.y &&
         inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

TEST(FormPlanTest, EveryControlAndOptionButtonOfEveryWindowIsPlaced) {
  core::Windows windows;
  for (core::Window* window : windows.All()) {
    std::set<std::pair<const core::Control*, int>> seen;
    for (const Element& e : PlanElements(*window))
      if (e.control != nullptr) seen.insert({e.control, e.slot});
    for (core::Control* c : window->controls()) {
      for (int slot = 0; slot < c->slot_count(); ++slot) {
        EXPECT_TRUE(seen.contains({c, slot}))
            << window->name() << "." << c->name() << " " << slot;
      }
    }
  }
}

TEST(FormPlanTest, FieldsFollowTheLabelsThatNameThem) {
  core::Windows windows;
  const std::vector<Element> main = PlanElements(windows.okno_lmt);
  auto field_after = [&](std::string_view label) -> std::string {
    for (size_t i = 0; i + 1 < main.size(); ++i) {
      if (main[i].key == label && main[i + 1].beside_label)
        return main[i + 1].name;
    }
    return "";
  };
  EXPECT_EQ(field_after("TXTNameAtribute"), "UniText_NameAtribute");
  EXPECT_EQ(field_after("TXTStrokaNameFile"), "Text_StrokaNameFile");
  EXPECT_EQ(field_after("TXTLayoutName11"), "UniText_LeyoutName1");
  EXPECT_EQ(field_after("TXTNameObrazecPutFileLayout"),
            "UniText_NameObrazecPutFileLayout");
  // The host frame holds the host list first, then the release list.
  for (size_t i = 0; i + 2 < main.size(); ++i) {
    if (main[i].key != "FrameVersiaCAD") continue;
    EXPECT_EQ(main[i + 1].name, "Combo_VersiaCAD");
    EXPECT_EQ(main[i + 2].name, "Combo_NomerAutoCAD");
  }
  // Buttons carry their control names; captionless ones are there too.
  int buttons = 0;
  for (const Element& e : main) {
    if (e.kind != ElementKind::kButton) continue;
    ++buttons;
    EXPECT_TRUE(e.name.starts_with("Command_")) << e.name;
  }
  EXPECT_EQ(buttons, 15 + 7);
}

TEST(FormPlanTest, PlacementKeepsFramesWholeAndNothingOverlaps) {
  core::Windows windows;
  for (core::Window* window : windows.All()) {
    std::vector<Element> elements = PlanElements(*window);
    Placement placement;
    placement.column_height = 300;
    const Rect area = PlaceElements(elements, placement);
    for (size_t i = 0; i < elements.size(); ++i) {
      const Element& e = elements[i];
      EXPECT_TRUE(Inside(e.rect, area)) << window->name() << " " << e.name;
      EXPECT_GT(e.rect.width, 0) << e.name;
      if (e.group >= 0) {
        EXPECT_TRUE(Inside(e.rect, elements[static_cast<size_t>(e.group)].rect))
            << window->name() << " " << e.name;
      }
      for (size_t j = i + 1; j < elements.size(); ++j) {
        const Element& o = elements[j];
        // A frame holds its members; everything else stays apart.
        if (e.kind == ElementKind::kGroup && o.group == static_cast<int>(i))
          continue;
        if (o.kind == ElementKind::kGroup && e.group == static_cast<int>(j))
          continue;
        EXPECT_FALSE(Overlap(e.rect, o.rect))
            << window->name() << ": " << e.name << " / " << o.name;
      }
    }
  }
}

TEST(FormPlanTest, TallContentWrapsIntoColumns) {
  core::Windows windows;
  std::vector<Element> elements = PlanElements(windows.okno_lmt);
  Placement placement;
  placement.column_height = 200;
  const Rect area = PlaceElements(elements, placement);
  EXPECT_GT(area.width, 3 * placement.column_width);
  for (const Element& e : elements) {
    // Only a frame taller than a column may pass its foot.
    if (e.kind == ElementKind::kGroup && e.rect.height > 200) continue;
    if (e.group >= 0 &&
        elements[static_cast<size_t>(e.group)].rect.height > 200)
      continue;
    EXPECT_LE(e.rect.y + e.rect.height,
              placement.margin + placement.column_height)
        << e.name;
  }
}

}  // namespace
}  // namespace lmt::ui

#include "core/sort_layouts_window.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kSortLayoutsCaptions[] = {
    {"OknoSortLayouts", "Sort Layouts", "Сортировка вкладок"},
    {"FrameSortLayouts", "Order of the layouts", "Порядок вкладок"},
    {"OptionSortLayouts0", "By name", "По имени"},
    {"OptionSortLayouts1", "By the frame table", "По таблице рамок"},
    {"OptionSortLayouts2", "Reverse the order", "В обратном порядке"},
    {"OptionSortLayouts3", "By attribute", "По атрибуту"},
    {"TXTTagAtribut", "Tag Attribute :", "Тег атрибута :"},
    {"CommandSort", "Sort", "Сортировать"},
    {"CommandClose", "Close", "Закрыть"},
};

}  // namespace

OknoSortLayouts::OknoSortLayouts()
    : Window("OknoSortLayouts", kSortLayoutsCaptions),
      option_sort_layouts(this, "Option_SortLayouts", 4, kByName),
      text_tag_atribut(this, "Text_TagAtribut", "") {}

}  // namespace lmt::core

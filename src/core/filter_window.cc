#include "core/filter_window.h"

#include "core/fixed_lists.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kCaptions[] = {
    {"OknoFilter", "Filter template", "Фильтр шаблона"},
    {"FrameFilter", "Search by filter:", "Искать по фильтру:"},
    {"CheckTolkoVSloe", "Layer:", "Слой:"},
    {"CheckTolkoVCvete", "Colour:", "Цвет:"},
    {"CheckTolkoVTip", "Type:", "Тип линии:"},
    {"CheckTolkoVVes", "Weight:", "Вес линии:"},
    {"CheckTolkoNameBlock", "Block Name:", "Имя блока:"},
    {"CommandOk", "Ok", "Ok"},
};

constexpr auto kText = ComboBox::Stored::kText;

}  // namespace

OknoFilter::OknoFilter()
    : Window("OknoFilter", kCaptions),
      check_tolko_v_sloe(this, "Check_TolkoVSloe", false),
      combo_sloy_linii(this, "Combo_SloyLinii", {"0"}, 0, kText),
      check_tolko_v_cvete(this, "Check_TolkoVCvete", false),
      combo_color_linii(this, "Combo_ColorLinii", ColorList(), 0, kText),
      check_tolko_v_tip(this, "Check_TolkoVTip", false),
      combo_tip_linii(this, "Combo_TipLinii", LinetypeList(), 0, kText),
      check_tolko_v_ves(this, "Check_TolkoVVes", false),
      combo_ves_linii(this, "Combo_VesLinii", LineweightList(), 0, kText),
      check_tolko_name_block(this, "Check_TolkoNameBlock", true),
      uni_text_name_block(this, "UniText_NameBlock", "") {}

}  // namespace lmt::core

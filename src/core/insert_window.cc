#include "core/insert_window.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kCaptions[] = {
    {"OknoVstavitObject", "Insertion Options", "Параметры вставки"},
    {"FrameIstochnikVstavki", "Object", "Объект"},
    {"OptionIstochnikVstavki0", "Block of the drawing", "Блок чертежа"},
    {"TXTNameBlockVstavki", "Block name:", "Имя блока:"},
    {"OptionIstochnikVstavki1", "Drawing file (DXF)", "Файл чертежа (DXF)"},
    {"TXTPutFileVstavki", "File:", "Файл:"},
    {"CommandObzorFileVstavki", "Browse...", "Обзор..."},
    {"FrameMestoVstavki", "On the sheet", "На листе"},
    {"TXTVstavkaCoordX", "X:", "X:"},
    {"TXTVstavkaCoordY", "Y:", "Y:"},
    {"TXTVstavkaMashtab", "Scale:", "Масштаб:"},
    {"TXTVstavkaPovorot", "Rotation:", "Поворот:"},
    {"TXTVstavkaSloi", "Layer:", "Слой:"},
    {"CommandSave", "Save", "Сохранить"},
    {"CommandClose", "Close", "Закрыть"},
};

}  // namespace

OknoVstavitObject::OknoVstavitObject()
    : Window("OknoVstavitObject", kCaptions),
      option_istochnik_vstavki(this, "Option_IstochnikVstavki", 2, 0),
      uni_text_name_block_vstavki(this, "UniText_NameBlockVstavki", ""),
      uni_text_put_file_vstavki(this, "UniText_PutFileVstavki", ""),
      text_vstavka_coord_x(this, "Text_VstavkaCoordX", "0"),
      text_vstavka_coord_y(this, "Text_VstavkaCoordY", "0"),
      text_vstavka_mashtab(this, "Text_VstavkaMashtab", "1"),
      text_vstavka_povorot(this, "Text_VstavkaPovorot", "0"),
      text_vstavka_sloi(this, "Text_VstavkaSloi", "0") {}

}  // namespace lmt::core

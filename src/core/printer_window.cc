#include "core/printer_window.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kCaptions[] = {
    {"OknoIzmenitPrinter", "Printer Settings", "Настройки принтера"},
    {"TXTNamePrinter", "Plotter / printer:", "Плоттер / принтер:"},
    {"FrameVidBumaga", "Paper", "Бумага"},
    {"OptionVidBumaga0", "By frame size (ISO A4 - A0 and extended)",
     "По размеру рамки (ISO A4 - A0 и дополнительные)"},
    {"OptionVidBumaga1", "Fixed", "Постоянная"},
    {"TXTNameBumaga", "Paper name:", "Имя бумаги:"},
    {"TXTDopuskBumaga", "Tolerance, mm:", "Допуск, мм:"},
    {"TXTStilPechati", "Plot style table:", "Таблица стилей печати:"},
    {"CheckCentrPechati", "Center the plot", "Центрировать"},
    {"CheckMashtabOdin", "Scale 1:1", "Масштаб 1:1"},
    {"CommandSave", "Save", "Сохранить"},
    {"CommandClose", "Close", "Закрыть"},
};

}  // namespace

OknoIzmenitPrinter::OknoIzmenitPrinter()
    : Window("OknoIzmenitPrinter", kCaptions),
      text_name_printer(this, "Text_NamePrinter", "DWG To PDF.pc3"),
      option_vid_bumaga(this, "Option_VidBumaga", 2, 0),
      text_name_bumaga(this, "Text_NameBumaga",
                       "ISO_full_bleed_A3_(420.00_x_297.00_MM)"),
      text_dopusk_bumaga(this, "Text_DopuskBumaga", "1"),
      text_stil_pechati(this, "Text_StilPechati", "monochrome.ctb"),
      check_centr_pechati(this, "Check_CentrPechati", true),
      check_mashtab_odin(this, "Check_MashtabOdin", true) {}

void OknoIzmenitPrinter::UpdateEnabled() {
  const bool fixed = option_vid_bumaga.selected() == 1;
  text_name_bumaga.set_enabled(fixed);
  text_dopusk_bumaga.set_enabled(!fixed);
}

}  // namespace lmt::core

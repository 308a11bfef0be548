#include "core/main_window.h"

#include "core/check.h"
#include "core/fixed_lists.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kCaptions[] = {
    {"mnuComand", "Commands", "Команды"},
    {"mnuObrazec", "Select template", "Выбрать шаблон"},
    {"mnuSelectAll", "Select All", "Выбрать все"},
    {"mnuSelect", "Select Window", "Выбрать рамкой"},
    {"mnuSozdat", "Create Layouts", "Создать вкладки"},
    {"mnuProveritPlan", "Check plan...", "Проверить план..."},
    {"mnuPlotPdf", "Plot to PDF", "Печать в PDF"},
    {"mnuFunction", "Functions", "Функции"},
    {"mnuFunctionSortLayouts", "Sort Layouts", "Сортировка вкладок"},
    {"mnuFunctionOnOffViewport", "Viewports - On Off",
     "Видовые экраны - Вкл Откл"},
    {"mnuFunctionDelVneViewport", "Delete around Viewport",
     "Удалить вокруг видового экрана"},
    {"mnuReplaceAtribut", "Replace Attributes in many files",
     "Замена атрибутов во многих файлах"},
    {"mnuReplaceText", "Replace Text in many files",
     "Замена текста во многих файлах"},
    {"mnuRunScript", "Run Script in many files",
     "Выполнить скрипт во многих файлах"},
    {"mnuRunLisp", "Run Lisp in many files", "Выполнить Lisp во многих файлах"},
    {"mnuImport", "IMPORT from many files", "ИМПОРТ из многих файлов"},
    {"mnuOption", "Settings", "Настройки"},
    {"mnuHelp", "Help", "Справка"},
    {"mnuAbout", "About", "О программе"},
    {"FrameVersiaCAD", "Connect to", "Подключиться к"},
    {"FrameObrazec", "Template", "Шаблон"},
    {"TXTFrameObrazec1", "or Polyline => 4 points", "или Полилиния => 4 точки"},
    {"TXTFrameObrazec2", "or Block contains a polyline",
     "или Блок, содержащий полилинию"},
    {"TXTFrameObrazec3", "or External Reference a polyline",
     "или Внешняя ссылка, содержащая полилинию"},
    {"TXTObrazecPoiska", "Active template:", "Активный шаблон:"},
    {"CommandGetObrazec", "Select template", "Выбрать шаблон"},
    {"CommandParamFilter", "Filter template", "Фильтр шаблона"},
    {"CommandGetAll", "Find All", "Найти все"},
    {"CommandGetVibor", "Select Window", "Выбрать рамкой"},
    {"CommandSozdatVkladki", "Create Layouts", "Создать вкладки"},
    {"CommandUpdate", "Update", "Обновить"},
    {"CommandPrervat", "Cancel", "Прервать"},
    {"CommandPokazatRamku", "Show by table", "Показать по таблице"},
    {"CommandParamSozdatLayout", "Creation Options", "Параметры создания"},
    {"CommandParamDeistvie", "Action Options", "Параметры действий"},
    {"CommandSozdatVidi", "Create custom views", "Создать виды"},
    {"CommandEksportReestr", "Export register...", "Экспорт реестра..."},
    {"CommandImportReestr", "Import register...", "Импорт реестра..."},
    {"FrameBlockPoisk", "Block and XREF", "Блок и внешняя ссылка"},
    {"OptionBlockPoisk0", "By polyline inside", "По полилинии внутри"},
    {"OptionBlockPoisk1", "By size", "По габаритам"},
    {"OptionBlockPoisk2", "By size If rotation angle = 0",
     "По габаритам, если угол поворота = 0"},
    {"FrameGetBlock", "Get from block", "Получить из блока"},
    {"TXTNameAtribute", "Attribute -", "Атрибут -"},
    {"FrameLayoutName", "Name Layouts", "Имена вкладок"},
    {"TXTLayoutName10", "10 - Text:", "10 - Текст:"},
    {"TXTLayoutName11", "11 - Text:", "11 - Текст:"},
    {"TXTLayoutName12", "12 - Text:", "12 - Текст:"},
    {"TXTLayoutName20", "20 - Number in order", "20 - Номер по порядку"},
    {"TXTLayoutName30", "30 - Block name", "30 - Имя блока"},
    {"TXTLayoutName31", "31 - Attribute Value", "31 - Значение атрибута"},
    {"TXTStrokaNameFile", "New Name (/ - delimiter)",
     "Новое имя (/ - разделитель)"},
    {"FrameSortirovka", "Sorting", "Сортировка"},
    {"OptionSortirovkaSpisok0", "Columns: left to right, top down",
     "Столбцы: слева направо, сверху вниз"},
    {"OptionSortirovkaSpisok1", "Columns: left to right, bottom up",
     "Столбцы: слева направо, снизу вверх"},
    {"OptionSortirovkaSpisok2", "Rows: top down, left to right",
     "Строки: сверху вниз, слева направо"},
    {"OptionSortirovkaSpisok3", "Rows: bottom up, left to right",
     "Строки: снизу вверх, слева направо"},
    {"OptionSortirovkaSpisok4", "By Start point", "По точке Старт"},
    {"OptionSortirovkaSpisok5", "By Attribute Value", "По значению атрибута"},
    {"OptionSortirovkaSpisok6", "By Polyline", "По полилинии"},
    {"CheckNotRotate", "Only without rotation", "Только без поворота"},
    {"FrameSortPoint", "Sorting Point", "Точка сортировки"},
    {"OptionSortPoint0", "Centre", "Центр"},
    {"OptionSortPoint1", "Angle", "Угол"},
    {"OptionSortPoint2", "", ""},
    {"OptionSortPoint3", "", ""},
    {"OptionSortPoint4", "", ""},
    {"TXTVsegoLayout", "Total new Layouts -", "Всего новых вкладок -"},
    {"FrameParamLayout", "Layouts Options", "Параметры вкладок"},
    {"OptionVidSozdatLayout0", "New Layout", "Новая вкладка"},
    {"OptionVidSozdatLayout1", "Layout Template - Layout in active file",
     "Шаблон вкладки - вкладка в активном файле"},
    {"OptionVidSozdatLayout2", "Layout Template - Layout from another file",
     "Шаблон вкладки - вкладка из другого файла"},
    {"TXTNameObrazecLayout", "Template Layout", "Вкладка-образец"},
    {"TXTNameObrazecPutFileLayout", "Template file", "Файл шаблона"},
    {"FrameVstavit", "Insert", "Вставка"},
    {"CheckVstavitObject", "Insert objects", "Вставить объекты"},
    {"CommandParamVstavit", "Insertion Options", "Параметры вставки"},
    {"FrameDeistvie", "Additional actions", "Дополнительные действия"},
    {"FrameIzmenitPrinter", "Printer Settings", "Настройки принтера"},
    {"CheckIzmenitPrinter", "Change printer settings",
     "Изменить настройки принтера"},
    {"CommandParamIzmenitPrinter", "Printer Options", "Параметры принтера"},
    {"TablTekstiLang0", "№", "№"},
    {"TablTekstiLang1", "Layout Name", "Имя вкладки"},
    {"TablTekstiLang2", "ID", "ID"},
    {"TablTekstiLang3", "Block Name", "Имя блока"},
    {"TablTekstiLang4", "Attribute", "Атрибут"},
    {"TablTekstiLang5", "SortX", "СортX"},
    {"TablTekstiLang6", "SortY", "СортY"},
};

}  // namespace

OknoLmt::OknoLmt()
    : Window("OknoLmt", kCaptions),
      combo_versia_cad(this, "Combo_VersiaCAD", HostKindList(), 0),
      combo_nomer_autocad(this, "Combo_NomerAutoCAD", AutoCadReleaseList(), 0),
      option_block_poisk(this, "Option_BlockPoisk", 3, 0),
      uni_text_name_atribute(this, "UniText_NameAtribute", ""),
      uni_text_leyout_name0(this, "UniText_LeyoutName0", ""),
      uni_text_leyout_name1(this, "UniText_LeyoutName1", ""),
      uni_text_leyout_name2(this, "UniText_LeyoutName2", ""),
      text_stroka_name_file(this, "Text_StrokaNameFile", "20"),
      option_sortirovka_spisok(this, "Option_SortirovkaSpisok", 7, 0),
      check_not_rotate(this, "CheckNotRotate", false),
      option_sort_point(this, "Option_SortPoint", 5, 0),
      option_vid_sozdat_layout(this, "Option_VidSozdatLayout", 3, 0),
      uni_text_name_obrazec_layout(this, "UniText_NameObrazecLayout", ""),
      uni_text_name_obrazec_put_file_layout(
          this, "UniText_NameObrazecPutFileLayout", ""),
      check_vstavit_object(this, "Check_VstavitObject", false),
      check_izmenit_printer(this, "Check_IzmenitPrinter", false) {}

void OknoLmt::UpdateEnabled() {
  combo_nomer_autocad.set_enabled(combo_versia_cad.selected() == 0);
  const int mode = option_vid_sozdat_layout.selected();
  uni_text_name_obrazec_layout.set_enabled(mode == 1 || mode == 2);
  uni_text_name_obrazec_put_file_layout.set_enabled(mode == 2);
}

const std::string& OknoLmt::FrameTableCaption(int index) const {
  LMT_CHECK(index >= 0 && index < kFrameTableCaptionCount);
  return caption("TablTekstiLang" + std::to_string(index));
}

}  // namespace lmt::core

#include "core/layout_windows.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kCreationParameterCaptions[] = {
    {"OknoSozdatLayout", "Creation Options", "Параметры создания"},
    {"FrameMashtab", "Viewport scale", "Масштаб видового экрана"},
    {"OptionSelectMashtab0", "Scale", "Масштаб"},
    {"OptionSelectMashtab1",
     "By frame width, paper length:", "По ширине рамки, длина на листе:"},
    {"TXTDvoetoch", ":", ":"},
    {"CommandGetMashtabRamka", "Pick", "Указать"},
    {"FrameViewportVertGor", "Frame", "Рамка"},
    {"OptionViewportVertGor0", "Horizontal", "Горизонтальная"},
    {"OptionViewportVertGor1", "Vertical", "Вертикальная"},
    {"TXTCoordX", "X of lower left corner:", "X левого нижнего угла:"},
    {"TXTCoordY", "Y of lower left corner:", "Y левого нижнего угла:"},
    {"TXTRamkaPrirachenie", "Increase viewport by:", "Увеличить экран на:"},
    {"TXTNameSloiViewport", "Viewport layer:", "Слой видовых экранов:"},
    {"CheckZablokirovatVyport", "Lock viewport", "Заблокировать экран"},
    {"CheckOblastList", "Plot area - Layout", "Область печати - Лист"},
    {"Check_Initializacia", "Turn viewport on", "Включить видовой экран"},
    {"CheckUdalitListi", "Delete existing layouts",
     "Удалить существующие вкладки"},
    {"FrameViewportRotate", "Viewport rotation", "Поворот видового экрана"},
    {"OptionViewportRotateStart0", "Intellectual", "Интеллектуальный"},
    {"OptionViewportRotateStart1", "Mathematical", "Математический"},
    {"CheckViewportRotateBlock", "By angle of rotation block",
     "По углу поворота блока"},
    {"CheckMashtabAnnotation", "Annotation scale", "Масштаб аннотаций"},
    {"CheckMashtabAnnotationPo", "Equal to viewport scale",
     "Равен масштабу экрана"},
    {"CheckCopyViewport", "Copy viewport", "Копия видового экрана"},
    {"TXTCopyMashtab", "Scale:", "Масштаб:"},
    {"TXTCopyCoordX", "X:", "X:"},
    {"TXTCopyCoordY", "Y:", "Y:"},
    {"TXTCopyShirina", "Width:", "Ширина:"},
    {"TXTCopyVisota", "Height:", "Высота:"},
    {"CommandSave", "Save", "Сохранить"},
    {"CommandClose", "Close", "Закрыть"},
};

constexpr CaptionEntry kCreationActionCaptions[] = {
    {"OknoDeistvie", "Action Options", "Параметры действий"},
    {"CheckSozdatText", "Create text", "Создать текст"},
    {"TXTTextStroka", "Text (##1 number, ##2 drawing, ##3 layout, ##4 scale):",
     "Текст (##1 номер, ##2 чертёж, ##3 вкладка, ##4 масштаб):"},
    {"TXTTextSloi", "Layer:", "Слой:"},
    {"TXTStilImia", "Text style:", "Стиль текста:"},
    {"TXTStilSrift", "Font:", "Шрифт:"},
    {"TXTTextVisota", "Height:", "Высота:"},
    {"TXTTextCoordX", "X:", "X:"},
    {"TXTTextCoordY", "Y:", "Y:"},
    {"OptionViravnivanieText0", "Left", "Влево"},
    {"OptionViravnivanieText1", "Centre", "По центру"},
    {"OptionViravnivanieText2", "Right", "Вправо"},
    {"CheckIzmenitAtribut", "Change attributes", "Изменить атрибуты"},
    {"TXTNameBlock", "Block name:", "Имя блока:"},
    {"TXTImiaAtribut", "Tag Attribute :", "Тег атрибута :"},
    {"TXTValueAtribut", "Value:", "Значение:"},
    {"CommandSave", "Save", "Сохранить"},
    {"CommandClose", "Close", "Закрыть"},
};

constexpr CaptionEntry kNameLayoutsCaptions[] = {
    {"OknoNameLayouts", "Layouts", "Вкладки"},
    {"CommandOk", "Ok", "Ok"},
};

constexpr CaptionEntry kOptionCaptions[] = {
    {"OknoOption", "Settings", "Настройки"},
    {"FrameSortirovka", "Sorting", "Сортировка"},
    {"TXTOkruglenie", "Rounding:", "Округление:"},
    {"OptionOkruglenie0", "0", "0"},
    {"OptionOkruglenie1", "1", "1"},
    {"OptionOkruglenie2", "10", "10"},
    {"OptionOkruglenie3", "100", "100"},
    {"CheckProverkaObnovlenia", "Check for updates", "Проверять обновления"},
    {"CommandSave", "Save", "Сохранить"},
};

}  // namespace

OknoSozdatLayout::OknoSozdatLayout()
    : Window("OknoSozdatLayout", kCreationParameterCaptions),
      option_viewport_vert_gor(this, "Option_ViewportVertGor", 2, 0),
      option_select_mashtab(this, "Option_SelectMashtab", 2, 0),
      text_mashtab_bumaga(this, "Text_MashtabBumaga", "1"),
      text_mashtab_model(this, "Text_MashtabModel", "100"),
      text_auto_mashtab_ramka(this, "Text_AutoMashtabRamka", "420"),
      text_coord_y(this, "Text_CoordY", "0"),
      text_coord_x(this, "Text_CoordX", "0"),
      text_name_sloi_viewport(this, "Text_NameSloiViewport", "Viewport"),
      check_zablokirovat_vyport(this, "Check_ZablokirovatVyport", true),
      check_oblast_list(this, "Check_OblastList", true),
      text_ramka_prirachenie(this, "Text_RamkaPrirachenie", "0"),
      check_copy_viewport(this, "Check_CopyViewport", false),
      text_copy_mashtab_bumaga(this, "Text_CopyMashtabBumaga", "1"),
      text_copy_mashtab_model(this, "Text_CopyMashtabModel", "100"),
      text_copy_coord_y(this, "Text_CopyCoordY", "0"),
      text_copy_coord_x(this, "Text_CopyCoordX", "0"),
      text_copy_shirina(this, "Text_CopyShirina", "100"),
      text_copy_visota(this, "Text_CopyVisota", "100"),
      check_mashtab_annotation(this, "Check_MashtabAnnotation", false),
      check_mashtab_annotation_po(this, "Check_MashtabAnnotationPo", true),
      text_mashtab_annotation_bumaga(this, "Text_MashtabAnnotationBumaga", "1"),
      text_mashtab_annotation_model(this, "Text_MashtabAnnotationModel", "100"),
      check_udalit_listi(this, "Check_UdalitListi", false),
      check_initializacia(this, "Check_Initializacia", true),
      option_viewport_rotate_start(this, "Option_ViewportRotateStart", 2, 0),
      check_viewport_rotate_block(this, "Check_ViewportRotateBlock", false) {}

void OknoSozdatLayout::UpdateEnabled() {
  const bool fixed = option_select_mashtab.selected() == 0;
  text_mashtab_bumaga.set_enabled(fixed);
  text_mashtab_model.set_enabled(fixed);
  text_auto_mashtab_ramka.set_enabled(!fixed);
  const bool annotation = check_mashtab_annotation.checked();
  text_mashtab_annotation_bumaga.set_enabled(annotation);
  text_mashtab_annotation_model.set_enabled(annotation);
  const bool copy = check_copy_viewport.checked();
  for (TextField* field :
       {&text_copy_mashtab_bumaga, &text_copy_mashtab_model, &text_copy_coord_x,
        &text_copy_coord_y, &text_copy_shirina, &text_copy_visota}) {
    field->set_enabled(copy);
  }
}

OknoDeistvie::OknoDeistvie()
    : Window("OknoDeistvie", kCreationActionCaptions),
      check_sozdat_text(this, "Check_SozdatText", false),
      text_text_stroka(this, "Text_TextStroka", "##3"),
      text_text_sloi(this, "Text_TextSloi", "0"),
      text_stil_imia(this, "Text_StilImia", "Standard"),
      text_stil_srift(this, "Text_StilSrift", "txt.shx"),
      text_text_visota(this, "Text_TextVisota", "5"),
      text_text_coord_x(this, "Text_TextCoordX", "10"),
      text_text_coord_y(this, "Text_TextCoordY", "10"),
      option_viravnivanie_text(this, "Option_ViravnivanieText", 3, 0),
      check_izmenit_atribut(this, "Check_IzmenitAtribut", false),
      text_name_block(this, "Text_NameBlock", ""),
      text_imia_atribut1(this, "Text_ImiaAtribut1", ""),
      text_value_atribut1(this, "Text_ValueAtribut1", ""),
      text_imia_atribut2(this, "Text_ImiaAtribut2", ""),
      text_value_atribut2(this, "Text_ValueAtribut2", ""),
      text_imia_atribut3(this, "Text_ImiaAtribut3", ""),
      text_value_atribut3(this, "Text_ValueAtribut3", "") {}

OknoNameLayouts::OknoNameLayouts()
    : Window("OknoNameLayouts", kNameLayoutsCaptions) {}

OknoOption::OknoOption()
    : Window("OknoOption", kOptionCaptions),
      option_okruglenie(this, "Option_Okruglenie", 4, 0),
      check_proverka_obnovlenia(this, "Check_ProverkaObnovlenia", false) {}

}  // namespace lmt::core

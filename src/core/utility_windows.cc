#include "core/utility_windows.h"

namespace lmt::core {
namespace {

constexpr CaptionEntry kOnOffCaptions[] = {
    {"OknoFunctionOnOffViewport", "On Off Viewport", "Вкл Откл видовые экраны"},
    {"FrameViewportOnOff", "Turn viewports", "Видовые экраны"},
    {"CheckViewportOnOff", "Switch", "Переключить"},
    {"OptionViewportOnOff0", "On", "Включить"},
    {"OptionViewportOnOff1", "Off", "Отключить"},
    {"CommandStart", "START", "СТАРТ"},
};

constexpr CaptionEntry kDeleteOutsideCaptions[] = {
    {"OknoFunctionDelVneViewport", "Delete all around viewport",
     "Удалить всё вокруг видового экрана"},
    {"TXTSelViewpost",
     "Delete all objects that are not visible in the viewport",
     "Удалить все объекты, которые не видны в видовом экране"},
    {"CommandSelViewpost", "Select Viewport", "Выбрать видовой экран"},
};

constexpr CaptionEntry kNanoCaptions[] = {
    {"OknoNanoCADVersia", "nanoCAD registration", "Регистрация nanoCAD"},
    {"TXTVersNanoCAD", "Installed versions:", "Установленные версии:"},
    {"CommandApply", "Apply", "Применить"},
};

}  // namespace

OknoFunctionOnOffViewport::OknoFunctionOnOffViewport()
    : Window("OknoFunctionOnOffViewport", kOnOffCaptions),
      check_viewport_on_off(this, "Check_ViewportOnOff", true),
      option_viewport_on_off(this, "Option_ViewportOnOff", 2, 0) {}

OknoFunctionDelVneViewport::OknoFunctionDelVneViewport()
    : Window("OknoFunctionDelVneViewport", kDeleteOutsideCaptions) {}

OknoNanoCADVersia::OknoNanoCADVersia()
    : Window("OknoNanoCADVersia", kNanoCaptions),
      list_vers_nano_cad(this, "List_VersNanoCAD", {}, -1),
      list_put_nano_cad(this, "List_PutNanoCAD", {}, -1) {}

}  // namespace lmt::core

#include "core/messages.h"

#include <cstdio>

#include "core/check.h"

namespace lmt::core {
namespace {

struct MessageText {
  std::string_view russian;
  std::string_view english;
};

// Exact texts; "отрытого", "производится" and "Unable open" are the
// product's own spelling. MSG0014's English default repeats MSG0012 on
// purpose.
constexpr std::array<MessageText, kMessageCount> kMessages = {{
    {"CAD программа не открыта !", "CAD software is not open!"},
    {"Открыть CAD программу ?", "Open CAD program ?"},
    {"Невозможно открыть и подключиться к CAD программе !",
     "Unable open and connect CAD program!"},
    {"Нет отрытого чертежа ! Остановка программы.",
     "No open drawing! Stopping program."},
    {"Обработка прервана пользователем.",
     "Processing was interrupted by the user."},
    {"Образец пуст !", "Template is empty!"},
    {"Выбрано несколько объектов, обработка будет производится по "
     "параметрам первого !",
     "Several objects have been selected, processing will be performed "
     "according to parameters of first!"},
    {"Шаблон получен - ", "Template received -"},
    {"Нет объектов для обработки !", "There are no objects to process!"},
    {"Выбор закончен", "Selection Complete"},
    {"Не найден шаблон вкладки в активном документе - ",
     "Layout template in active document was not found -"},
    {"Укажите имя вкладки в Параметры Вкладок.",
     "Specify name Layout in Layouts Options."},
    {"Не найден образец вкладки в активном документе - ",
     "Sample of Layout in the active document was not found -"},
    {"Укажите имя вкладки шаблона в Параметры Вкладок.",
     "Specify name Layout in Layouts Options."},
    {"Создание вкладок закончено.", "Creating Layouts is complete."},
    {"Требуется указать длину прямоугольника",
     "Required to specify the length of the rectangle"},
    {"Масштаб выбранного прямоугольника :", "Scale of selected rectangle:"},
    {"Невозможно в Модель !", "Impossible in Model !"},
    {"Остановка перед закрытием файла.", "Stop before closing the file."},
    {"Укажите точку начала сортировки. Точка Старт.",
     "Specify the starting point for the sort. Start Point."},
    {"Выберите полилинию для направления сортировки.",
     "Select a polyline to sort."},
    {"Выберите шаблон для поиска Полилиния или Блок или Внешняя ссылка.",
     "Select a template to search for Polyline or Block or External "
     "Reference"},
}};

const MessageText& Entry(int number) {
  LMT_CHECK(number >= 1 && number <= kMessageCount);
  return kMessages[static_cast<size_t>(number - 1)];
}

}  // namespace

std::string MessageKey(int number) {
  char key[16];
  std::snprintf(key, sizeof key, "MSG%04d", number);
  return key;
}

std::string_view RussianMessage(int number) { return Entry(number).russian; }
std::string_view EnglishMessage(int number) { return Entry(number).english; }

MessageTable::MessageTable() { LoadRussian(); }

void MessageTable::LoadRussian() {
  for (int n = 1; n <= kMessageCount; ++n)
    Set(n, std::string(RussianMessage(n)));
}

void MessageTable::LoadEnglish() {
  for (int n = 1; n <= kMessageCount; ++n)
    Set(n, std::string(EnglishMessage(n)));
}

void MessageTable::Set(int number, std::string text) {
  LMT_CHECK(number >= 1 && number <= kMessageCount);
  texts_[static_cast<size_t>(number - 1)] = std::move(text);
}

const std::string& MessageTable::Get(int number) const {
  LMT_CHECK(number >= 1 && number <= kMessageCount);
  return texts_[static_cast<size_t>(number - 1)];
}

}  // namespace lmt::core

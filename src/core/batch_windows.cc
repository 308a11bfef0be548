#include "core/batch_windows.h"

#include <algorithm>
#include <array>

#include "core/check.h"
#include "core/fixed_lists.h"

namespace lmt::core {
namespace {

// Every batch window ends with the file table, where to save, the save
// format and Start / Cancel; their captions are the same in all of them.
template <size_t... N>
constexpr auto JoinCaptions(const std::array<CaptionEntry, N>&... parts) {
  std::array<CaptionEntry, (N + ...)> joined{};
  size_t at = 0;
  ((std::copy(parts.begin(), parts.end(), joined.begin() + at),
    at += parts.size()),
   ...);
  return joined;
}

constexpr auto kFilesAndSaving = std::to_array<CaptionEntry>({
    {"TXTTablName", "File Name", "Имя файла"},
    {"TXTTablPut", "File Path", "Путь к файлу"},
    {"CommandVibratFaili", "Select files", "Выбрать файлы"},
    {"CommandDobavitPapku", "Select folder", "Выбрать папку"},
    {"CheckVlozeniiPapki", "Subfolders", "Вложенные папки"},
    {"CommandUdalitStroku", "Delete row", "Удалить строку"},
    {"CommandDeleteAll", "Clear", "Очистить"},
    {"CheckSaveFile", "Save file with changes", "Сохранить файл с изменениями"},
    {"OptionSaveKuda0", "Beside with file", "Рядом с файлом"},
    {"OptionSaveKuda1", "To folder ...", "В папку ..."},
    {"OptionSaveKuda2", "In new folder beside to file. Folder name:",
     "В новую папку рядом с файлом. Имя папки:"},
    {"OptionSaveKuda3", "Replace source file (.dwg only)",
     "Заменить исходный файл (только .dwg)"},
    {"CommandViborSaveKuda", "...", "..."},
});
constexpr auto kSaveVersion = std::to_array<CaptionEntry>({
    {"TXTSaveVersia", "Save version:", "Версия сохранения:"},
    {"ComboSaveVersia0", "Active AutoCAD release", "Пумолчанию из AutoCAD"},
});
constexpr auto kSaveAs = std::to_array<CaptionEntry>({
    {"TXTSaveAsDWGorDXF", "Save as", "Сохранить как"},
});
constexpr auto kStartCancel = std::to_array<CaptionEntry>({
    {"CommandStart", "START", "СТАРТ"},
    {"CommandPrervat", "Cancel", "Прервать"},
});

constexpr auto kScriptCaptions = JoinCaptions(
    std::to_array<CaptionEntry>({
        {"OknoFunctionRunScript", "Run script in many files",
         "Выполнить скрипт во многих файлах"},
        {"FrameNameScriptFile", "Script file path", "Путь к файлу скрипта"},
        {"CommandGetFileScript", "...", "..."},
        {"TXTTextScript", "Script Text :", "Текст скрипта :"},
    }),
    kFilesAndSaving, kSaveVersion, kStartCancel);

constexpr auto kLispCaptions = JoinCaptions(
    std::to_array<CaptionEntry>({
        {"OknoFunctionRunLisp", "Run Lisp in many files",
         "Выполнить Lisp во многих файлах"},
        {"FrameNameLispFile", "Lisp file path", "Путь к файлу Lisp"},
        {"CommandGetFileLisp", "...", "..."},
        {"TXTCommandLispStart", "Start command:", "Команда запуска:"},
        {"CheckStopCloseFile", "Stop before closing the file",
         "Остановка перед закрытием файла"},
    }),
    kFilesAndSaving, kSaveVersion, kStartCancel);

// Where the replace windows look: the tabs, then the blocks.
constexpr auto kScope = std::to_array<CaptionEntry>({
    {"OptionNameLayouts0", "All Tabs", "Все вкладки"},
    {"OptionNameLayouts1", "Only in Model", "Только в Модели"},
    {"OptionNameLayouts2", "Only in Layouts", "Только на Листах"},
    {"OptionNameLayouts3", "Only in the tab:", "Только во вкладке:"},
    {"OptionNameBlock0", "All blocks", "Все блоки"},
    {"OptionNameBlock1", "Only in block:", "Только в блоке:"},
});

// The three numbered replacement groups of each replace window differ only
// in their number.
#define LMT_ATRIBUT_GROUP(n)                                             \
  std::to_array<CaptionEntry>({                                          \
      {"CheckAtribut" #n, "Replace", "Заменить"},                        \
      {"TXTNameAtribut" #n, "Tag Attribute :", "Тег атрибута :"},        \
      {"OptionValueAtribut" #n "0", "New value", "Новое значение"},      \
      {"OptionValueAtribut" #n "1", "Replace part:", "Заменить часть:"}, \
      {"OptionValueAtribut" #n "2", "Keep value", "Оставить значение"},  \
      {"TXTZamNaAtribut" #n, "with", "на"},                              \
      {"CheckPrefixAtribut" #n, "Prefix", "Префикс"},                    \
      {"CheckSuffixAtribut" #n, "Suffix", "Суффикс"},                    \
  })
#define LMT_TEXT_GROUP(n)                                                     \
  std::to_array<CaptionEntry>({                                               \
      {"CheckTEXT" #n, "Replace", "Заменить"},                                \
      {"TXTNameTEXT" #n, "Text :", "Текст :"},                                \
      {"OptionValueTEXT" #n "0", "New value", "Новое значение"},              \
      {"OptionValueTEXT" #n "1", "Replace part with:", "Заменить часть на:"}, \
      {"OptionValueTEXT" #n "2", "Keep value", "Оставить значение"},          \
      {"CheckPrefixTEXT" #n, "Prefix", "Префикс"},                            \
      {"CheckSuffixTEXT" #n, "Suffix", "Суффикс"},                            \
  })

constexpr auto kReplaceAttributeCaptions = JoinCaptions(
    std::to_array<CaptionEntry>({
        {"OknoFunctionReplaceAtribut", "Replace attributes in many files",
         "Замена атрибутов во многих файлах"},
    }),
    kScope,
    std::to_array<CaptionEntry>({
        {"CheckBlockVnutriBloka",
         "Process block inside block (it takes a lot of time)",
         "Обрабатывать блок внутри блока (занимает много времени)"},
    }),
    LMT_ATRIBUT_GROUP(1), LMT_ATRIBUT_GROUP(2), LMT_ATRIBUT_GROUP(3),
    kFilesAndSaving, kSaveAs, kStartCancel);

constexpr auto kTextCaptions = JoinCaptions(
    std::to_array<CaptionEntry>({
        {"OknoFunctionReplaceText", "Replace text in many files",
         "Замена текста во многих файлах"},
    }),
    kScope,
    std::to_array<CaptionEntry>({
        {"CheckTEXT", "Replace text", "Заменять текст"},
        {"CheckBlock", "Replace text inside blocks",
         "Заменять текст внутри блоков"},
        {"CheckLeader", "Replace text in leaders", "Заменять текст в выносках"},
    }),
    LMT_TEXT_GROUP(1), LMT_TEXT_GROUP(2), LMT_TEXT_GROUP(3),
    std::to_array<CaptionEntry>({
        {"OptionTextOrList0", "Fields", "Поля"},
        {"OptionTextOrList1", "List", "Список"},
        {"OptionValueList0", "New value", "Новое значение"},
        {"OptionValueList1", "Replace part", "Заменить часть"},
        {"OptionValueList2", "Keep value", "Оставить значение"},
        {"CheckPrefixList", "Prefix", "Префикс"},
        {"CheckSuffixList", "Suffix", "Суффикс"},
        {"CommandVstavitSpisok", "Paste list", "Вставить список"},
    }),
    kFilesAndSaving, kSaveAs, kStartCancel);

#undef LMT_ATRIBUT_GROUP
#undef LMT_TEXT_GROUP

constexpr auto kImportCaptions = JoinCaptions(
    std::to_array<CaptionEntry>({
        {"OknoFunctionImport", "Import from many files",
         "Импорт из многих файлов"},
        {"OptionImportKuda0", "Into Model", "В Модель"},
        {"OptionImportKuda1", "Into Layout", "На Лист"},
        {"TXTFormatImport", "Format:", "Формат:"},
        {"OptionPagePDF0", "All pages", "Все страницы"},
        {"OptionPagePDF1", "First page", "Первая страница"},
        {"TXTScalePDF", "Scale:", "Масштаб:"},
        {"TXTRotatePDF", "Rotation:", "Поворот:"},
        {"TXTIntervalPDF", "Interval:", "Интервал:"},
        {"CheckPDFIMPORTFILTER1", "Vector geometry", "Векторная геометрия"},
        {"CheckPDFIMPORTFILTER2", "Solid fills", "Заливки"},
        {"CheckPDFIMPORTFILTER3", "TrueType text", "Текст TrueType"},
        {"CheckPDFIMPORTFILTER4", "Raster images", "Растровые изображения"},
        {"OptionPDFIMPORTLAYERS0", "Use PDF layers", "Слои PDF"},
        {"OptionPDFIMPORTLAYERS1", "Create layers by object type",
         "Слои по типу объектов"},
        {"OptionPDFIMPORTLAYERS2", "Use current layer", "Текущий слой"},
        {"CheckPDFIMPORTMODE1", "Import as block", "Импорт как блок"},
        {"CheckPDFIMPORTMODE2", "Join line and arc segments",
         "Объединять отрезки и дуги"},
        {"CheckPDFIMPORTMODE3", "Convert solid fills to hatches",
         "Заливки в штриховки"},
        {"CheckPDFIMPORTMODE4", "Apply lineweight properties",
         "Применять веса линий"},
        {"CheckPDFIMPORTMODE5", "Infer linetypes from collinear dashes",
         "Распознавать типы линий"},
        {"CheckSaveOtdelnoPapka", "Save into a separate folder",
         "Сохранять в отдельную папку"},
    }),
    kFilesAndSaving, kSaveVersion, kStartCancel);

std::string Numbered(const char* name, int n) {
  return name + std::to_string(n);
}

}  // namespace

OknoFunctionRunScript::OknoFunctionRunScript()
    : Window("OknoFunctionRunScript", kScriptCaptions),
      uni_text_name_script_file(this, "UniText_NameScriptFile", ""),
      uni_text_text_skript(this, "UniText_TextSkript",
                           std::string(kSampleScript)),
      check_vlozenii_papki(this, "Check_VlozeniiPapki", false),
      check_save_file(this, "Check_SaveFile", true),
      combo_save_versia(this, "Combo_SaveVersia",
                        SaveVersionList(kSaveVersionDefaultRussian), 0),
      option_save_kuda(this, "Option_SaveKuda", 4, 0),
      uni_text_put_save_kuda(this, "UniText_PutSaveKuda", ""),
      uni_text_name_papka_save(this, "UniText_NamePapkaSave", "Layomat") {}

OknoFunctionRunLisp::OknoFunctionRunLisp()
    : Window("OknoFunctionRunLisp", kLispCaptions),
      uni_text_name_lisp_file(this, "UniText_NameLispFile", ""),
      uni_text_command_lisp_start(this, "UniText_CommandLispStart", ""),
      check_stop_close_file(this, "Check_StopCloseFile", false),
      check_vlozenii_papki(this, "Check_VlozeniiPapki", false),
      check_save_file(this, "Check_SaveFile", true),
      combo_save_versia(this, "Combo_SaveVersia",
                        SaveVersionList(kSaveVersionDefaultRussian), 0),
      option_save_kuda(this, "Option_SaveKuda", 4, 0),
      uni_text_put_save_kuda(this, "UniText_PutSaveKuda", ""),
      uni_text_name_papka_save(this, "UniText_NamePapkaSave", "Layomat") {}

AttributeGroup::AttributeGroup(Window* owner, int n)
    : check_atribut(owner, Numbered("Check_Atribut", n), n == 1),
      uni_text_name_atribut(owner, Numbered("UniText_NameAtribut", n), ""),
      uni_text_value_atribut(owner, Numbered("UniText_ValueAtribut", n), ""),
      option_value_atribut(owner, Numbered("Option_ValueAtribut", n), 3, 0),
      uni_text_zam_sh_to_atribut(owner, Numbered("UniText_ZamShTOAtribut", n),
                                 ""),
      uni_text_zam_na_atribut(owner, Numbered("UniText_ZamNaAtribut", n), ""),
      check_prefix_atribut(owner, Numbered("Check_PrefixAtribut", n), false),
      check_suffix_atribut(owner, Numbered("Check_SuffixAtribut", n), false),
      uni_text_prefix_atribut(owner, Numbered("UniText_PrefixAtribut", n), ""),
      uni_text_suffix_atribut(owner, Numbered("UniText_SuffixAtribut", n), "") {
}

OknoFunctionReplaceAtribut::OknoFunctionReplaceAtribut()
    : Window("OknoFunctionReplaceAtribut", kReplaceAttributeCaptions),
      option_name_layouts(this, "Option_NameLayouts", 4, 0),
      uni_text_name_layouts(this, "UniText_NameLayouts", ""),
      option_name_block(this, "Option_NameBlock", 2, 0),
      uni_text_name_block(this, "UniText_NameBlock", ""),
      check_block_vnutri_bloka(this, "Check_BlockVnutriBloka", false),
      atribut1(this, 1),
      atribut2(this, 2),
      atribut3(this, 3),
      check_save_file(this, "Check_SaveFile", true),
      option_save_kuda(this, "Option_SaveKuda", 4, 0),
      uni_text_put_save_kuda(this, "UniText_PutSaveKuda", ""),
      uni_text_name_papka_save(this, "UniText_NamePapkaSave", "Layomat"),
      combo_save_as_dwg_or_dxf(this, "Combo_SaveAsDWGorDXF", SaveAsKindList(),
                               0),
      check_vlozenii_papki(this, "Check_VlozeniiPapki", false) {}

AttributeGroup& OknoFunctionReplaceAtribut::group(int n) {
  LMT_CHECK(n >= 1 && n <= 3);
  return n == 1 ? atribut1 : n == 2 ? atribut2 : atribut3;
}

TextGroup::TextGroup(Window* owner, int n)
    : check_text(owner, Numbered("Check_TEXT", n), n == 1),
      uni_text_name_text(owner, Numbered("UniText_NameTEXT", n), ""),
      uni_text_value_text(owner, Numbered("UniText_ValueTEXT", n), ""),
      option_value_text(owner, Numbered("Option_ValueTEXT", n), 3, 0),
      uni_text_zam_na_text(owner, Numbered("UniText_ZamNaTEXT", n), ""),
      check_prefix_text(owner, Numbered("Check_PrefixTEXT", n), false),
      check_suffix_text(owner, Numbered("Check_SuffixTEXT", n), false),
      uni_text_prefix_text(owner, Numbered("UniText_PrefixTEXT", n), ""),
      uni_text_suffix_text(owner, Numbered("UniText_SuffixTEXT", n), "") {}

OknoFunctionReplaceText::OknoFunctionReplaceText()
    : Window("OknoFunctionReplaceText", kTextCaptions),
      option_name_layouts(this, "Option_NameLayouts", 4, 0),
      uni_text_name_layouts(this, "UniText_NameLayouts", ""),
      check_text(this, "Check_TEXT", true),
      check_block(this, "Check_Block", false),
      check_leader(this, "Check_Leader", false),
      option_name_block(this, "Option_NameBlock", 2, 0),
      uni_text_name_block(this, "UniText_NameBlock", ""),
      text1(this, 1),
      text2(this, 2),
      text3(this, 3),
      option_text_or_list(this, "Option_TextOrList", 2, 0),
      option_value_list(this, "Option_ValueList", 3, 0),
      check_prefix_list(this, "Check_PrefixList", false),
      check_suffix_list(this, "Check_SuffixList", false),
      uni_text_prefix_list(this, "UniText_PrefixList", ""),
      uni_text_suffix_list(this, "UniText_SuffixList", ""),
      check_save_file(this, "Check_SaveFile", true),
      option_save_kuda(this, "Option_SaveKuda", 4, 0),
      uni_text_put_save_kuda(this, "UniText_PutSaveKuda", ""),
      uni_text_name_papka_save(this, "UniText_NamePapkaSave", "Layomat"),
      combo_save_as_dwg_or_dxf(this, "Combo_SaveAsDWGorDXF", SaveAsKindList(),
                               0),
      check_vlozenii_papki(this, "Check_VlozeniiPapki", false) {}

TextGroup& OknoFunctionReplaceText::group(int n) {
  LMT_CHECK(n >= 1 && n <= 3);
  return n == 1 ? text1 : n == 2 ? text2 : text3;
}

OknoFunctionImport::OknoFunctionImport()
    : Window("OknoFunctionImport", kImportCaptions),
      option_import_kuda(this, "Option_ImportKuda", 2, 0),
      combo_format_import(this, "Combo_FormatImport", ImportFormatList(), 0),
      option_page_pdf(this, "Option_PagePDF", 2, 0),
      text_scale_pdf(this, "Text_ScalePDF", "1"),
      combo_rotate_pdf(this, "Combo_RotatePDF", PdfRotationList(), 0),
      text_interval_pdf(this, "Text_IntervalPDF", "10"),
      check_pdfimportfilter1(this, "Check_PDFIMPORTFILTER1", true),
      check_pdfimportfilter2(this, "Check_PDFIMPORTFILTER2", true),
      check_pdfimportfilter3(this, "Check_PDFIMPORTFILTER3", true),
      check_pdfimportfilter4(this, "Check_PDFIMPORTFILTER4", true),
      option_pdfimportlayers(this, "Option_PDFIMPORTLAYERS", 3, 0),
      check_pdfimportmode1(this, "Check_PDFIMPORTMODE1", false),
      check_pdfimportmode2(this, "Check_PDFIMPORTMODE2", false),
      check_pdfimportmode3(this, "Check_PDFIMPORTMODE3", false),
      check_pdfimportmode4(this, "Check_PDFIMPORTMODE4", false),
      check_pdfimportmode5(this, "Check_PDFIMPORTMODE5", false),
      check_vlozenii_papki(this, "Check_VlozeniiPapki", false),
      combo_save_versia(this, "Combo_SaveVersia",
                        SaveVersionList(kSaveVersionDefaultRussian), 0),
      option_save_kuda(this, "Option_SaveKuda", 4, 0),
      uni_text_put_save_kuda(this, "UniText_PutSaveKuda", ""),
      uni_text_name_papka_save(this, "UniText_NamePapkaSave", "Layomat"),
      check_save_otdelno_papka(this, "Check_SaveOtdelnoPapka", false) {}

}  // namespace lmt::core

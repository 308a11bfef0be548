// The five batch windows: a file table, the operation's own options and the
// common choice of where and how each result is saved. Designed values:
// results saved ("Save file with changes" ticked) beside the source file
// (option 0), new-folder name "Layomat", target folder empty, save version 0
// (the host's default), subfolders not scanned. Run Script holds the sample
// script "_Layout", "_Set", "Layout1" (one token a line). The replace
// windows: all tabs, all blocks, no nested blocks, group 1 ticked with mode 0
// ("New value"), groups 2 and 3 clear, no prefix or suffix, "Save as" Auto;
// Replace text works on texts (not inside blocks, not on leaders) and uses
// the fields, not the list. Import: into model space, PDF format, all pages,
// scale 1, rotation 0, interval 10, all four PDF filters on, layers option 0,
// PDF import modes off.
#ifndef LMT_CORE_BATCH_WINDOWS_H_
#define LMT_CORE_BATCH_WINDOWS_H_

#include <string>
#include <vector>

#include "core/controls.h"
#include "core/window.h"

namespace lmt::core {

// One row of a batch window's file table.
struct BatchFile {
  std::string name;  // file name with extension, e.g. "plan.dwg"
  std::string path;  // full path
};

inline constexpr std::string_view kSampleScript = "_Layout\r\n_Set\r\nLayout1";

struct OknoFunctionRunScript : Window {
  OknoFunctionRunScript();

  std::vector<BatchFile> files;
  TextField uni_text_name_script_file;
  TextField uni_text_text_skript;
  CheckBox check_vlozenii_papki;
  CheckBox check_save_file;
  ComboBox combo_save_versia;
  OptionGroup option_save_kuda;  // 4
  TextField uni_text_put_save_kuda;
  TextField uni_text_name_papka_save;
};

struct OknoFunctionRunLisp : Window {
  OknoFunctionRunLisp();

  std::vector<BatchFile> files;
  TextField uni_text_name_lisp_file;
  TextField uni_text_command_lisp_start;
  CheckBox check_stop_close_file;
  CheckBox check_vlozenii_papki;
  CheckBox check_save_file;
  ComboBox combo_save_versia;
  OptionGroup option_save_kuda;  // 4
  TextField uni_text_put_save_kuda;
  TextField uni_text_name_papka_save;
};

// One of the three attribute groups, n = 1..3 (controls named ...1 .. ...3).
struct AttributeGroup {
  AttributeGroup(Window* owner, int n);

  CheckBox check_atribut;
  TextField uni_text_name_atribut;       // tag
  TextField uni_text_value_atribut;      // new value (mode 0)
  OptionGroup option_value_atribut;      // 3: new value, replace, keep
  TextField uni_text_zam_sh_to_atribut;  // search (mode 1)
  TextField uni_text_zam_na_atribut;     // replacement (mode 1)
  CheckBox check_prefix_atribut;
  CheckBox check_suffix_atribut;
  TextField uni_text_prefix_atribut;
  TextField uni_text_suffix_atribut;
};

struct OknoFunctionReplaceAtribut : Window {
  OknoFunctionReplaceAtribut();
  AttributeGroup& group(int n);  // REQUIRES: 1 <= n <= 3

  std::vector<BatchFile> files;
  OptionGroup option_name_layouts;  // 4
  TextField uni_text_name_layouts;
  OptionGroup option_name_block;  // 2
  TextField uni_text_name_block;
  CheckBox check_block_vnutri_bloka;
  AttributeGroup atribut1;
  AttributeGroup atribut2;
  AttributeGroup atribut3;
  CheckBox check_save_file;
  OptionGroup option_save_kuda;  // 4
  TextField uni_text_put_save_kuda;
  TextField uni_text_name_papka_save;
  ComboBox combo_save_as_dwg_or_dxf;  // not stored
  CheckBox check_vlozenii_papki;      // not stored
};

// One of the three text groups, n = 1..3.
struct TextGroup {
  TextGroup(Window* owner, int n);

  CheckBox check_text;
  TextField uni_text_name_text;    // text searched for
  TextField uni_text_value_text;   // new value (mode 0)
  OptionGroup option_value_text;   // 3
  TextField uni_text_zam_na_text;  // replacement (mode 1)
  CheckBox check_prefix_text;
  CheckBox check_suffix_text;
  TextField uni_text_prefix_text;
  TextField uni_text_suffix_text;
};

// One row of the replacement list of the Replace text window.
struct ReplaceListRow {
  std::string find;
  std::string replace;
};

struct OknoFunctionReplaceText : Window {
  OknoFunctionReplaceText();
  TextGroup& group(int n);  // REQUIRES: 1 <= n <= 3

  std::vector<BatchFile> files;
  std::vector<ReplaceListRow> replace_list;
  OptionGroup option_name_layouts;  // 4
  TextField uni_text_name_layouts;
  CheckBox check_text;            // Check_TEXT
  CheckBox check_block;           // Check_Block
  CheckBox check_leader;          // Check_Leader
  OptionGroup option_name_block;  // 2
  TextField uni_text_name_block;
  TextGroup text1;
  TextGroup text2;
  TextGroup text3;
  OptionGroup option_text_or_list;  // 2: fields, list
  OptionGroup option_value_list;    // 3
  CheckBox check_prefix_list;
  CheckBox check_suffix_list;
  TextField uni_text_prefix_list;
  TextField uni_text_suffix_list;
  CheckBox check_save_file;
  OptionGroup option_save_kuda;  // 4
  TextField uni_text_put_save_kuda;
  TextField uni_text_name_papka_save;
  ComboBox combo_save_as_dwg_or_dxf;  // not stored
  CheckBox check_vlozenii_papki;      // not stored
};

struct OknoFunctionImport : Window {
  OknoFunctionImport();

  std::vector<BatchFile> files;
  OptionGroup option_import_kuda;  // 2
  ComboBox combo_format_import;
  OptionGroup option_page_pdf;  // 2
  TextField text_scale_pdf;
  ComboBox combo_rotate_pdf;
  TextField text_interval_pdf;
  CheckBox check_pdfimportfilter1;
  CheckBox check_pdfimportfilter2;
  CheckBox check_pdfimportfilter3;
  CheckBox check_pdfimportfilter4;
  OptionGroup option_pdfimportlayers;  // 3
  CheckBox check_pdfimportmode1;
  CheckBox check_pdfimportmode2;
  CheckBox check_pdfimportmode3;
  CheckBox check_pdfimportmode4;
  CheckBox check_pdfimportmode5;
  CheckBox check_vlozenii_papki;
  ComboBox combo_save_versia;
  OptionGroup option_save_kuda;  // 4
  TextField uni_text_put_save_kuda;
  TextField uni_text_name_papka_save;
  CheckBox check_save_otdelno_papka;
};

}  // namespace lmt::core

#endif  // LMT_CORE_BATCH_WINDOWS_H_

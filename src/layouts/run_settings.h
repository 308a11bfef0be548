// Everything one layout-creation run reads from the windows, taken once at
// its start: the creation parameters (OknoSozdatLayout), the creation mode
// and pattern layout (main window), and the actions after creation
// (OknoDeistvie) and the insertion options (OknoVstavitObject); plus which
// family of the host object model a host name belongs to.
//
// Pure: the window models go in, plain values come out.
#ifndef LMT_LAYOUTS_RUN_SETTINGS_H_
#define LMT_LAYOUTS_RUN_SETTINGS_H_

#include <string>
#include <string_view>

#include "core/windows.h"
#include "layouts/creation_parameters.h"
#include "layouts/page_setup.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {

// `Option_VidSozdatLayout`, by index.
enum class CreationMode : int {
  kEmpty = 0,         // a new empty layout per frame
  kPattern = 1,       // copies of a pattern layout of the drawing
  kTemplateFile = 2,  // the pattern imported from a template drawing first
};

// How a host is driven: the AutoCAD family (AutoCAD, BricsCAD, GstarCAD,
// progeCAD, IntelliCAD and ZWCAD+), nanoCAD (temporary copy layout, no
// FILEDIA and no LayoutCreateViewport), ZWCAD (temporary copy layout), or
// none (an unknown name creates nothing).
enum class HostFamily { kNone, kAutoCad, kNanoCad, kZwCad };

// The family of a connection's host name, compared ignoring case.
HostFamily FamilyOfHost(std::string_view host_name);

// The sheet text of the actions after creation.
struct SheetTextSettings {
  bool create = false;       // Check_SozdatText
  std::string text;          // Text_TextStroka, with placeholders
  std::string layer;         // Text_TextSloi
  std::string style;         // Text_StilImia
  std::string font;          // Text_StilSrift
  double height = 0;         // Text_TextVisota
  double x = 0;              // Text_TextCoordX
  double y = 0;              // Text_TextCoordY
  int attachment_point = 4;  // from Option_ViravnivanieText
};

// The attribute change of the actions after creation.
struct AttributeSettings {
  bool change = false;     // Check_IzmenitAtribut
  std::string block_name;  // Text_NameBlock
  AttributeChanges typed;  // tags and values as typed
};

// The block the insertion options put on every new sheet.
struct InsertSettings {
  bool insert = false;     // Check_VstavitObject (main window)
  bool from_file = false;  // Option_IstochnikVstavki 1
  // The block's name, or the drawing file's path (from_file).
  std::string source;
  double x = 0;  // paper units on the sheet
  double y = 0;
  double scale = 1;
  double rotation = 0;  // degrees
  std::string layer;
};

struct RunSettings {
  CreationParameters params;
  CreationMode mode = CreationMode::kEmpty;
  std::string pattern_layout;  // UniText_NameObrazecLayout
  std::string pattern_file;    // UniText_NameObrazecPutFileLayout
  SheetTextSettings text;
  AttributeSettings attributes;
  InsertSettings insert;
  PageSetupSettings page_setup;  // OknoIzmenitPrinter
};

// The controls of OknoSozdatLayout as typed.
CreationFieldTexts FieldTextsOf(const core::OknoSozdatLayout& window);

// The whole run's settings; numbers through the shared parser (empty or
// unreadable text is 0). A creation mode outside 0..2 counts as 0.
RunSettings ReadRunSettings(const core::Windows& windows, bool decimal_comma);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_RUN_SETTINGS_H_

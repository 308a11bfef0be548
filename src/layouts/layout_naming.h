// Layout names for the rows of the frame table. A naming template of part
// codes separated by "/" (10, 11, 12: the three free texts; 20: the row
// number; 30: the block name; 31: the attribute value) is expanded per row
// and the result cleaned of line breaks and of the characters a CAD program
// refuses in a layout name.
//
// No check for duplicate names: two frames that give the same name keep it,
// and layout creation deals with them.
#ifndef LMT_LAYOUTS_LAYOUT_NAMING_H_
#define LMT_LAYOUTS_LAYOUT_NAMING_H_

#include <string>
#include <string_view>

#include "frames/frame_table.h"

namespace lmt::layouts {

// The naming group's free texts (codes 10, 11, 12).
struct NamingTexts {
  std::string text10;
  std::string text11;
  std::string text12;
};

// Replaces each CR LF pair, then each "\P" (either case), by one space, and
// then each of > < / \ : ; ? * | , = ' " by ".".
std::string CleanLayoutName(std::string_view name);

// One cleaned name. An empty template gives the row number; otherwise the
// parts' contributions are joined in order with nothing between them, and
// an unknown or empty part contributes nothing (so "/" alone gives "").
std::string BuildLayoutName(std::string_view name_template, int row,
                            const NamingTexts& texts,
                            std::string_view block_name,
                            std::string_view attribute);

// Writes the name of every data row r (1..last_row) into its "Layout Name"
// cell, from the row's "Block Name" and "Attribute" cells and r itself.
void NameAllRows(frames::FrameTable& table, std::string_view name_template,
                 const NamingTexts& texts);

// `Command_Update`: renumbers the rows and names them all again.
void UpdateTable(frames::FrameTable& table, std::string_view name_template,
                 const NamingTexts& texts);

// The key filter of the naming template field `Text_StrokaNameFile`: only
// the digits, "/" and Backspace (8) get through.
bool NamingKeyAllowed(int key_code);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_LAYOUT_NAMING_H_

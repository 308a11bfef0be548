// The fixed entries of the windows' lists, each written once here: the host
// kinds, the AutoCAD releases, the save-version table, the filter window's
// colours, linetypes and lineweights, and the import window's formats and
// rotations.
#ifndef LMT_CORE_FIXED_LISTS_H_
#define LMT_CORE_FIXED_LISTS_H_

#include <string>
#include <string_view>
#include <vector>

namespace lmt::core {

// Combo_VersiaCAD; the index is the host kind (0 AutoCAD .. 6 IntelliCAD).
std::vector<std::string> HostKindList();
inline constexpr int kHostKindCount = 7;

// Combo_NomerAutoCAD: "Auto", then "09" .. "22".
std::vector<std::string> AutoCadReleaseList();

// Combo_SaveVersia: 20 entries; entry 0 is the host's own default, named in
// the interface language.
inline constexpr int kSaveVersionCount = 20;
inline constexpr std::string_view kSaveVersionDefaultRussian =
    "Пумолчанию из AutoCAD";
inline constexpr std::string_view kSaveVersionDefaultEnglish =
    "Active AutoCAD release";
std::vector<std::string> SaveVersionList(std::string_view default_entry);

// Combo_ColorLinii: "ByLayer", "ByBlock", "1" .. "254" (254, not 255).
std::vector<std::string> ColorList();
// Combo_TipLinii at load: "ByLayer", "ByBlock".
std::vector<std::string> LinetypeList();
// Combo_VesLinii: "ByLayer", "ByBlock", "Default", then "0.00" .. "2.11".
std::vector<std::string> LineweightList();

// Combo_FormatImport and Combo_RotatePDF of the import window.
std::vector<std::string> ImportFormatList();
std::vector<std::string> PdfRotationList();

// Combo_SaveAsDWGorDXF of the replace windows: "Auto", "DWG", "DXF".
std::vector<std::string> SaveAsKindList();

}  // namespace lmt::core

#endif  // LMT_CORE_FIXED_LISTS_H_

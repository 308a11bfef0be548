// The save-format table shared by the batch windows (`Combo_SaveVersia` of
// Run Script, Run Lisp and Import): 20 entries made from the hosts' release
// table (host/releases.h), each turned into a code text "code:ext", where
// code is the host's save-as type number passed to `Saveas` and ext the
// family "dwg" or "dxf". Also the "Save as" choice of the Replace windows
// (`Combo_SaveAsDWGorDXF`). Texts only; no host calls.
#ifndef LMT_BATCH_SAVE_VERSION_H_
#define LMT_BATCH_SAVE_VERSION_H_

#include <optional>
#include <string>
#include <string_view>

namespace lmt::batch {

inline constexpr int kSaveVersionCount = 20;

enum class EntryLanguage { kRussian, kEnglish };

// The list entry at `index` (0..19) in the order the combo box holds them;
// only entry 0 depends on the interface language.
// REQUIRES: 0 <= index < kSaveVersionCount.
std::string_view SaveVersionEntry(int index, EntryLanguage language);

// The code text of the selected index. Index 0 is the host's own default,
// `host_save_as_type` (its `Preferences.OpenSave.SaveAsType`), followed by
// ":dxf" when that number is odd and ":dwg" when even: the host's odd save
// types are its DXF ones, so the family is derived, not asked. The argument
// is ignored for every other index. An index outside the table (no selection
// is -1) gives "".
std::string SaveVersionCode(int index, int host_save_as_type);

// A code text split at its ':'.
struct SaveFormat {
  int save_type = 0;
  std::string extension;  // "dwg" or "dxf", as written in the code text
};

// nullopt for "" (nothing to save as) and for a text that is not
// number ':' extension.
std::optional<SaveFormat> SplitSaveCode(std::string_view code);

// `Combo_SaveAsDWGorDXF` of the Replace windows: 0 "Auto" keeps the source's
// extension, 1 "DWG", 2 "DXF". The result has no dot and is lower case; the
// source's extension is that of `source_name` ("" when it has none).
std::string SaveAsExtension(int index, std::string_view source_name);

// Whether the ObjectDBX document reads and writes this path as DXF
// (`DxfIn`/`DxfOut`) rather than DWG: the path contains ".dxf", in any case.
bool IsDxfPath(std::string_view path);

}  // namespace lmt::batch

#endif  // LMT_BATCH_SAVE_VERSION_H_

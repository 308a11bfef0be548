#include "batch/save_version.h"

#include <array>
#include <charconv>

#include "core/check.h"
#include "core/text_case.h"

namespace lmt::batch {
namespace {

struct VersionRow {
  std::string_view entry;
  std::string_view code;
};

// Entry 0 is language dependent and its code comes from the host.
constexpr std::array<VersionRow, kSaveVersionCount> kVersions = {{
    {"", ""},
    {"AutoCAD R12 DXF (*.dxf)", "1:dxf"},
    {"AutoCAD R13 DWG (*.dwg)", "4:dwg"},
    {"AutoCAD R13 DXF (*.dxf)", "5:dxf"},
    {"AutoCAD R14 DWG (*.dwg)", "8:dwg"},
    {"AutoCAD R14 DXF (*.dxf)", "9:dxf"},
    {"AutoCAD 2000 DWG (*.dwg)", "12:dwg"},
    {"AutoCAD 2000 DXF (*.dxf)", "13:dxf"},
    {"AutoCAD 2004 DWG (*.dwg)", "24:dwg"},
    {"AutoCAD 2004 DXF (*.dxf)", "25:dxf"},
    {"AutoCAD 2007 DWG (*.dwg)", "36:dwg"},
    {"AutoCAD 2007 DXF (*.dxf)", "37:dxf"},
    {"AutoCAD 2010 DWG (*.dwg)", "48:dwg"},
    {"AutoCAD 2010 DXF (*.dxf)", "49:dxf"},
    {"AutoCAD 2013 DWG (*.dwg)", "60:dwg"},
    {"AutoCAD 2013 DXF (*.dxf)", "61:dxf"},
    {"AutoCAD 2018 DWG (*.dwg)", "64:dwg"},
    {"AutoCAD 2018 DXF (*.dxf)", "65:dxf"},
    {"AutoCAD 2021 DWG (*.dwg)", "70:dwg"},
    {"AutoCAD 2021 DXF (*.dxf)", "71:dxf"},
}};

}  // namespace

std::string_view SaveVersionEntry(int index, EntryLanguage language) {
  LMT_CHECK(index >= 0 && index < kSaveVersionCount);
  if (index == 0) {
    return language == EntryLanguage::kRussian ? "Пумолчанию из AutoCAD"
                                               : "Active AutoCAD release";
  }
  return kVersions[index].entry;
}

std::string SaveVersionCode(int index, int host_save_as_type) {
  if (index < 0 || index >= kSaveVersionCount) return std::string();
  if (index == 0) {
    return std::to_string(host_save_as_type) +
           (host_save_as_type % 2 != 0 ? ":dxf" : ":dwg");
  }
  return std::string(kVersions[index].code);
}

std::optional<SaveFormat> SplitSaveCode(std::string_view code) {
  std::size_t colon = code.find(':');
  if (colon == std::string_view::npos || colon == 0) return std::nullopt;
  SaveFormat format;
  const char* begin = code.data();
  const char* end = code.data() + colon;
  auto [ptr, ec] = std::from_chars(begin, end, format.save_type);
  if (ec != std::errc() || ptr != end) return std::nullopt;
  format.extension = std::string(code.substr(colon + 1));
  if (format.extension.empty()) return std::nullopt;
  return format;
}

std::string SaveAsExtension(int index, std::string_view source_name) {
  if (index == 1) return "dwg";
  if (index == 2) return "dxf";
  std::size_t dot = source_name.rfind('.');
  if (dot == std::string_view::npos) return std::string();
  return core::FoldText(source_name.substr(dot + 1));
}

bool IsDxfPath(std::string_view path) {
  return core::FindIgnoreCase(path, ".dxf") != std::string_view::npos;
}

}  // namespace lmt::batch

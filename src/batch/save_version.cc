#include "batch/save_version.h"

#include <charconv>
#include <string>
#include <vector>

#include "core/check.h"
#include "core/text_case.h"
#include "host/releases.h"

namespace lmt::batch {
namespace {

struct VersionRow {
  std::string entry;
  std::string code;
};

// Entry 0 is language dependent and its code comes from the host; then
// each release of the hosts' table, its DWG type before its DXF type.
const std::vector<VersionRow>& Versions() {
  static const std::vector<VersionRow>* versions = [] {
    auto* rows = new std::vector<VersionRow>{{"", ""}};
    for (const host::Release& release : host::Releases()) {
      const std::string name = "AutoCAD " + std::string(release.name);
      if (release.dwg_save_type) {
        rows->push_back({name + " DWG (*.dwg)",
                         std::to_string(*release.dwg_save_type) + ":dwg"});
      }
      rows->push_back({name + " DXF (*.dxf)",
                       std::to_string(release.dxf_save_type) + ":dxf"});
    }
    LMT_CHECK(rows->size() == kSaveVersionCount);
    return rows;
  }();
  return *versions;
}

}  // namespace

std::string_view SaveVersionEntry(int index, EntryLanguage language) {
  LMT_CHECK(index >= 0 && index < kSaveVersionCount);
  if (index == 0) {
    return language == EntryLanguage::kRussian ? "Пумолчанию из AutoCAD"
                                               : "Active AutoCAD release";
  }
  return Versions()[static_cast<size_t>(index)].entry;
}

std::string SaveVersionCode(int index, int host_save_as_type) {
  if (index < 0 || index >= kSaveVersionCount) return std::string();
  if (index == 0) {
    return std::to_string(host_save_as_type) +
           (host_save_as_type % 2 != 0 ? ":dxf" : ":dwg");
  }
  return Versions()[static_cast<size_t>(index)].code;
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

#include "layouts/sheet_insert.h"

#include <filesystem>
#include <numbers>
#include <system_error>
#include <vector>

#include "core/file_util.h"
#include "layouts/layer_helpers.h"

namespace lmt::layouts {

std::string InsertProblemText(bool russian, const InsertSettings& settings,
                              std::string_view reason) {
  std::string text = russian ? "Объект для вставки не вставлен: \""
                             : "The object to insert was not inserted: \"";
  text += settings.source;
  text += "\"\n";
  text += reason;
  return text;
}

std::optional<std::string> InsertSourceProblem(host::Document& document,
                                               const InsertSettings& settings) {
  if (settings.source.empty()) {
    return settings.from_file ? "no file is given" : "no block name is given";
  }
  if (settings.from_file) {
    // A relative path is found beside the drawing first, as the hosts look.
    const std::filesystem::path path = core::PathFromUtf8(settings.source);
    std::vector<std::filesystem::path> candidates = {path};
    if (Result<std::string> full = document.FullName();
        path.is_relative() && full.ok() && !full->empty()) {
      candidates.push_back(core::PathFromUtf8(*full).parent_path() / path);
    }
    for (const std::filesystem::path& candidate : candidates) {
      std::error_code ec;
      if (std::filesystem::is_regular_file(candidate, ec)) return std::nullopt;
    }
    return "the file does not exist";
  }
  Result<host::BlocksPtr> blocks = document.Blocks();
  if (!blocks.ok()) return std::nullopt;
  Result<host::BlockPtr> block = (*blocks)->Item(settings.source);
  if (!block.ok() && block.status().code() == StatusCode::kNotFound) {
    return "the drawing has no such block";
  }
  return std::nullopt;
}

Result<host::BlockReferencePtr> InsertSheetBlock(host::Document& document,
                                                 host::Block& space,
                                                 const InsertSettings& settings,
                                                 const SheetValues& values,
                                                 host::SkipLog& skips) {
  const std::string_view layout = values.layout;
  const host::Point at{settings.x, settings.y, 0};
  Result<host::BlockReferencePtr> reference = space.InsertBlock(
      at, settings.source, settings.scale, settings.scale, settings.scale,
      settings.rotation * std::numbers::pi / 180.0);
  if (!skips.Record(layout, kSkipInsert, reference)) return reference;
  host::BlockReference& r = **reference;
  if (!settings.layer.empty()) {
    MakeLayer(document, settings.layer, /*frozen=*/false, /*locked=*/false,
              /*make_active=*/false, skips);
    skips.Record(layout, "inserted block layer", r.SetLayer(settings.layer));
  }
  Result<std::vector<host::AttributePtr>> attributes = r.GetAttributes();
  if (!skips.Record(layout, "inserted block attributes", attributes)) {
    return reference;
  }
  for (const host::AttributePtr& attribute : *attributes) {
    Result<std::string> value = attribute->TextString();
    if (!skips.Record(layout, "inserted attribute", value)) continue;
    const std::string filled = FillPlaceholders(*value, values);
    if (filled != *value) {
      skips.Record(layout, "inserted attribute",
                   attribute->SetTextString(filled));
    }
  }
  return reference;
}

}  // namespace lmt::layouts

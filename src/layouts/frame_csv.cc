#include "layouts/frame_csv.h"

#include <algorithm>
#include <cstdint>

#include "core/check.h"
#include "core/file_util.h"
#include "frames/frame_record.h"
#include "host/entity.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {
namespace {

FrameAttributes AttributesOf(host::Document& document, std::string_view id) {
  FrameAttributes values;
  uint64_t object_id = 0;
  for (char c : id) {
    if (c < '0' || c > '9') return values;  // not an object of the drawing
    object_id = object_id * 10 + static_cast<uint64_t>(c - '0');
  }
  Result<host::ObjectPtr> object = document.ObjectIdToObject(object_id);
  if (!object.ok()) return values;
  host::BlockReferencePtr reference = host::As<host::BlockReference>(*object);
  if (reference == nullptr) return values;
  Result<std::vector<host::AttributePtr>> attributes =
      reference->GetAttributes();
  if (!attributes.ok()) return values;
  for (const host::AttributePtr& attribute : *attributes) {
    Result<std::string> tag = attribute->TagString();
    Result<std::string> text = attribute->TextString();
    if (tag.ok() && !tag->empty()) {
      values.emplace_back(*tag, text.ok() ? *text : std::string());
    }
  }
  return values;
}

}  // namespace

std::vector<FrameAttributes> ReadFrameAttributes(
    host::Document& document, const frames::FrameTable& table) {
  std::vector<FrameAttributes> rows;
  for (int r = 1; r < table.row_count(); ++r) {
    const frames::FrameRecord frame = frames::ReadRecord(table, r);
    rows.push_back(frame.is_reference() && !frame.id.empty()
                       ? AttributesOf(document, frame.id)
                       : FrameAttributes());
  }
  return rows;
}

std::string CsvField(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    return std::string(text);
  }
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

std::string FramesCsv(const frames::FrameTable& table,
                      const std::vector<FrameAttributes>& attributes) {
  LMT_CHECK(attributes.size() + 1 == static_cast<size_t>(table.row_count()));
  std::vector<std::string> tags;  // as first met
  std::vector<std::string> keys;  // folded, for comparing
  for (const FrameAttributes& row : attributes) {
    for (const auto& [tag, value] : row) {
      const std::string key = FoldedName(tag);
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
        keys.push_back(key);
        tags.push_back(tag);
      }
    }
  }
  std::string csv = "\xEF\xBB\xBF";
  for (int c = 0; c < frames::kColumnCount; ++c) {
    if (c > 0) csv += ',';
    csv += CsvField(frames::ColumnName(static_cast<frames::Column>(c)));
  }
  for (const std::string& tag : tags) csv += "," + CsvField(tag);
  csv += "\r\n";
  for (int r = 1; r < table.row_count(); ++r) {
    for (int c = 0; c < frames::kColumnCount; ++c) {
      if (c > 0) csv += ',';
      csv += CsvField(table.Cell(r, static_cast<frames::Column>(c)));
    }
    const FrameAttributes& row = attributes[static_cast<size_t>(r - 1)];
    for (const std::string& key : keys) {
      csv += ',';
      for (const auto& [tag, value] : row) {
        if (FoldedName(tag) == key) {
          csv += CsvField(value);
          break;  // the first of repeated tags, as the attribute change
        }
      }
    }
    csv += "\r\n";
  }
  return csv;
}

Status WriteFramesCsv(host::Document& document, const frames::FrameTable& table,
                      const std::string& path) {
  const std::string csv =
      FramesCsv(table, ReadFrameAttributes(document, table));
  Status written = core::WriteFileAtomically(core::PathFromUtf8(path), csv);
  if (!written.ok()) {
    return Status::IOError(path + ": cannot write (" + written.message() + ")");
  }
  return written;
}

}  // namespace lmt::layouts

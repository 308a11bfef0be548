#include "layouts/frame_register.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "frames/frame_record.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
    text.remove_prefix(1);
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
    text.remove_suffix(1);
  }
  return text;
}

// The separator the header line uses more, counted outside quotes.
char SeparatorOf(std::string_view text) {
  int commas = 0;
  int semicolons = 0;
  bool quoted = false;
  for (char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if (c == '\n' || c == '\r') break;
    if (c == ',') ++commas;
    if (c == ';') ++semicolons;
  }
  return semicolons > commas ? ';' : ',';
}

// A coordinate as a spreadsheet may write it: "12.5" or, in a decimal-comma
// locale, "12,5".
std::optional<double> CoordinateOf(std::string_view text) {
  text = Trimmed(text);
  if (std::optional<double> value = frames::ParseNumber(text)) return value;
  std::string dotted(text);
  if (std::count(dotted.begin(), dotted.end(), ',') != 1) return std::nullopt;
  std::replace(dotted.begin(), dotted.end(), ',', '.');
  return frames::ParseNumber(dotted);
}

bool Near(double a, double b) {
  const double size = std::max({1.0, std::fabs(a), std::fabs(b)});
  return std::fabs(a - b) <= kCornerTolerance * size;
}

bool SameCorners(const frames::Quad& a, const frames::Quad& b) {
  for (int start = 0; start < 4; ++start) {
    for (int step : {1, 3}) {  // either direction round the frame
      bool all = true;
      for (int i = 0; i < 4 && all; ++i) {
        const frames::Point& p = b[static_cast<size_t>((start + step * i) % 4)];
        all = Near(a[static_cast<size_t>(i)].x, p.x) &&
              Near(a[static_cast<size_t>(i)].y, p.y);
      }
      if (all) return true;
    }
  }
  return false;
}

std::string Describe(const RegisterRow& row) {
  std::string text = "ID " + (row.id.empty() ? std::string("-") : row.id);
  if (row.corners) {
    const frames::Point& p = (*row.corners)[0];
    text += ", corner " + frames::FormatNumber(p.x) + "," +
            frames::FormatNumber(p.y);
  }
  if (!row.layout_name.empty()) text += ", layout \"" + row.layout_name + "\"";
  return text;
}

}  // namespace

Result<std::vector<CsvRecord>> ParseCsv(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(3);
  const char separator = SeparatorOf(text);
  std::vector<CsvRecord> records;
  CsvRecord record{1, {}};
  std::string field;
  int line = 1;
  size_t i = 0;
  bool record_open = false;  // something read since the last line end
  while (i < text.size()) {
    const char c = text[i];
    if (c == '"' && field.empty()) {
      const int opened = line;
      ++i;
      bool closed = false;
      while (i < text.size()) {
        if (text[i] == '"') {
          if (i + 1 < text.size() && text[i + 1] == '"') {
            field += '"';
            i += 2;
            continue;
          }
          ++i;
          closed = true;
          break;
        }
        if (text[i] == '\n') ++line;
        field += text[i++];
      }
      if (!closed) {
        return Status::InvalidArgument("line " + std::to_string(opened) +
                                       ": a quoted field is never closed");
      }
      record_open = true;
      continue;  // text after the closing quote joins the field
    }
    if (c == separator) {
      record.fields.push_back(std::move(field));
      field.clear();
      record_open = true;
      ++i;
      continue;
    }
    if (c == '\r' || c == '\n') {
      if (record_open || !field.empty()) {
        record.fields.push_back(std::move(field));
        records.push_back(std::move(record));
      }
      field.clear();
      record_open = false;
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      ++i;
      ++line;
      record = CsvRecord{line, {}};
      continue;
    }
    field += c;
    record_open = true;
    ++i;
  }
  if (record_open || !field.empty()) {
    record.fields.push_back(std::move(field));
    records.push_back(std::move(record));
  }
  return records;
}

Result<Register> ParseRegister(std::string_view text, std::string_view path) {
  const std::string where(path);
  Result<std::vector<CsvRecord>> records = ParseCsv(text);
  if (!records.ok()) {
    return Status::InvalidArgument(where + ":" +
                                   records.status().message().substr(5));
  }
  if (records->empty()) {
    return Status::InvalidArgument(where + ":1: the register is empty");
  }
  const CsvRecord& header = records->front();
  std::map<std::string, int> fixed;  // column name -> field index
  std::vector<std::pair<int, std::string>> tag_fields;
  std::set<std::string> tag_keys;
  for (int f = 0; f < static_cast<int>(header.fields.size()); ++f) {
    const std::string name(Trimmed(header.fields[static_cast<size_t>(f)]));
    bool is_fixed = false;
    for (int c = 0; c < frames::kColumnCount; ++c) {
      if (NamesEqualNoCase(
              name, frames::ColumnName(static_cast<frames::Column>(c)))) {
        fixed.emplace(
            std::string(frames::ColumnName(static_cast<frames::Column>(c))), f);
        is_fixed = true;
      }
    }
    if (!is_fixed && !name.empty() &&
        tag_keys.insert(FoldedName(name)).second) {
      tag_fields.emplace_back(f, name);
    }
  }
  const std::string header_line = where + ":" + std::to_string(header.line);
  if (!fixed.contains("Layout Name")) {
    return Status::InvalidArgument(
        header_line + ": the register has no \"Layout Name\" column");
  }
  static constexpr frames::Column kCornerColumns[] = {
      frames::Column::kPointX1, frames::Column::kPointY1,
      frames::Column::kPointX2, frames::Column::kPointY2,
      frames::Column::kPointX3, frames::Column::kPointY3,
      frames::Column::kPointX4, frames::Column::kPointY4};
  bool has_corners = true;
  for (frames::Column c : kCornerColumns) {
    has_corners =
        has_corners && fixed.contains(std::string(frames::ColumnName(c)));
  }
  const bool has_id = fixed.contains("ID");
  if (!has_id && !has_corners) {
    return Status::InvalidArgument(
        header_line +
        ": the register has neither an \"ID\" column nor the corner columns "
        "PointX1 .. PointY4, so its rows cannot be matched to frames");
  }

  Register reg;
  for (const auto& [field, tag] : tag_fields) reg.tags.push_back(tag);
  for (size_t r = 1; r < records->size(); ++r) {
    const CsvRecord& record = (*records)[r];
    auto cell = [&](int f) -> std::string_view {
      return f < static_cast<int>(record.fields.size())
                 ? std::string_view(record.fields[static_cast<size_t>(f)])
                 : std::string_view();
    };
    if (std::all_of(record.fields.begin(), record.fields.end(),
                    [](const std::string& f) { return Trimmed(f).empty(); })) {
      continue;  // a blank line a spreadsheet left behind
    }
    RegisterRow row;
    row.line = record.line;
    row.layout_name = std::string(Trimmed(cell(fixed.at("Layout Name"))));
    if (has_id) row.id = std::string(Trimmed(cell(fixed.at("ID"))));
    if (has_corners) {
      frames::Quad quad;
      bool complete = true;
      for (int k = 0; k < 8 && complete; ++k) {
        std::optional<double> value = CoordinateOf(
            cell(fixed.at(std::string(frames::ColumnName(kCornerColumns[k])))));
        complete = value.has_value();
        if (!complete) break;
        frames::Point& p = quad[static_cast<size_t>(k / 2)];
        (k % 2 == 0 ? p.x : p.y) = *value;
      }
      if (complete) row.corners = quad;
    }
    for (const auto& [field, tag] : tag_fields) {
      row.values.emplace_back(tag, std::string(cell(field)));
    }
    reg.rows.push_back(std::move(row));
  }
  return reg;
}

RegisterOutcome ApplyRegister(const Register& reg,
                              const frames::FrameTable& found) {
  RegisterOutcome outcome{found, {}, {}};
  std::map<std::string, int> by_id;
  // Index r holds row r's record; index 0 (the header) stays blank.
  std::vector<frames::FrameRecord> records(
      static_cast<size_t>(found.row_count()));
  for (int r = 1; r < found.row_count(); ++r) {
    records[static_cast<size_t>(r)] = frames::ReadRecord(found, r);
    const std::string& id = records[static_cast<size_t>(r)].id;
    if (!id.empty()) by_id.emplace(id, r);
  }
  auto corners_of = [&](int r) -> const std::optional<frames::Quad>& {
    return records[static_cast<size_t>(r)].corners;
  };
  std::vector<int> taken_by(static_cast<size_t>(found.row_count()), 0);
  std::vector<int> chosen;  // found rows in register order
  for (size_t i = 0; i < reg.rows.size(); ++i) {
    const RegisterRow& row = reg.rows[i];
    const int number = static_cast<int>(i) + 1;
    auto fits = [&](int r) {
      return !row.corners ||
             (corners_of(r) && SameCorners(*row.corners, *corners_of(r)));
    };
    int match = 0;
    if (auto it = by_id.find(row.id);
        !row.id.empty() && it != by_id.end() && fits(it->second)) {
      match = it->second;
    } else if (row.corners) {
      int repeated = 0;
      for (int r = 1; r < found.row_count() && match == 0; ++r) {
        if (!corners_of(r) || !fits(r)) continue;
        if (taken_by[static_cast<size_t>(r)] != 0) {
          repeated = r;
          continue;
        }
        match = r;
      }
      if (match == 0 && repeated != 0) match = repeated;
    }
    const std::string where = "register row " + std::to_string(number) +
                              " (line " + std::to_string(row.line) + ")";
    if (match == 0) {
      outcome.warnings.push_back(where + " matches no frame: " + Describe(row));
      continue;
    }
    if (const int earlier = taken_by[static_cast<size_t>(match)]) {
      outcome.warnings.push_back(where + " names the frame of register row " +
                                 std::to_string(earlier) +
                                 " again and is left out: " + Describe(row));
      continue;
    }
    taken_by[static_cast<size_t>(match)] = number;
    chosen.push_back(match);
    RegisteredFrame frame;
    const frames::FrameRecord& matched = records[static_cast<size_t>(match)];
    frame.layout =
        row.layout_name.empty() ? matched.layout_name : row.layout_name;
    frame.id = matched.id;
    frame.values = row.values;
    frame.table_row = static_cast<int>(chosen.size());
    outcome.frames.push_back(std::move(frame));
  }

  std::string unlisted;
  int unlisted_count = 0;
  for (int r = 1; r < found.row_count(); ++r) {
    if (taken_by[static_cast<size_t>(r)] != 0) continue;
    ++unlisted_count;
    unlisted += (unlisted.empty() ? "" : ", ") +
                records[static_cast<size_t>(r)].number + " (ID " +
                records[static_cast<size_t>(r)].id + ")";
  }
  if (unlisted_count > 0) {
    outcome.warnings.push_back(
        std::to_string(unlisted_count) +
        (unlisted_count == 1 ? " frame has" : " frames have") +
        " no register row and " + (unlisted_count == 1 ? "is" : "are") +
        " left out of the run: " + unlisted);
  }

  frames::FrameTable& table = outcome.table;
  table.SetRowCount(1);
  for (size_t i = 0; i < chosen.size(); ++i) {
    const int r = table.AddRow();
    for (int c = 0; c < frames::kColumnCount; ++c) {
      const auto column = static_cast<frames::Column>(c);
      table.SetCell(r, column, found.Cell(chosen[i], column));
    }
    table.SetCell(r, frames::Column::kLayoutName, outcome.frames[i].layout);
  }
  table.Renumber();
  return outcome;
}

}  // namespace lmt::layouts

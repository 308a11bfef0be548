#include "core/private_profile.h"

#include <vector>

#include "core/file_util.h"
#include "core/text_encoding.h"

namespace lmt::core {
namespace {

enum class FileEncoding { kUtf16Le, kUtf8Bom, kUtf8, kAnsi };

struct ProfileText {
  FileEncoding encoding = FileEncoding::kUtf16Le;
  std::u16string text;
};

ProfileText Decode(std::string_view bytes) {
  // An empty file is one we created for Unicode text.
  if (bytes.empty()) return {FileEncoding::kUtf16Le, {}};
  if (bytes.starts_with("\xFF\xFE")) {
    return {FileEncoding::kUtf16Le, DecodeUtf16Le(bytes.substr(2))};
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) {
    return {FileEncoding::kUtf8Bom, Utf8ToUtf16(bytes.substr(3))};
  }
  if (IsValidUtf8(bytes)) return {FileEncoding::kUtf8, Utf8ToUtf16(bytes)};
  return {FileEncoding::kAnsi, DecodeCp1251(bytes)};
}

std::string Encode(const ProfileText& file) {
  switch (file.encoding) {
    case FileEncoding::kUtf16Le:
      return "\xFF\xFE" + EncodeUtf16Le(file.text);
    case FileEncoding::kUtf8Bom:
      return "\xEF\xBB\xBF" + Utf16ToUtf8(file.text);
    case FileEncoding::kUtf8:
      return Utf16ToUtf8(file.text);
    case FileEncoding::kAnsi:
      return EncodeCp1251(file.text);
  }
  LMT_CHECK(false);
  return {};
}

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

std::u16string_view Trim(std::u16string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

// One physical line: [begin, content_end) is the text, up to `end` its
// terminator (CR LF, LF or CR; none on a last line without one).
struct Line {
  size_t begin;
  size_t content_end;
  size_t end;
};

std::vector<Line> SplitLines(std::u16string_view text) {
  std::vector<Line> lines;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t stop = text.find_first_of(u"\r\n", pos);
    if (stop == std::u16string_view::npos) {
      lines.push_back({pos, text.size(), text.size()});
      break;
    }
    size_t next = stop + 1;
    if (text[stop] == u'\r' && next < text.size() && text[next] == u'\n') {
      ++next;
    }
    lines.push_back({pos, stop, next});
    pos = next;
  }
  return lines;
}

// The section name of a header line "[name]", or nullopt.
std::optional<std::u16string_view> SectionName(std::u16string_view line) {
  std::u16string_view t = Trim(line);
  if (t.empty() || t.front() != u'[') return std::nullopt;
  size_t close = t.find(u']');
  if (close == std::u16string_view::npos) return std::nullopt;
  return Trim(t.substr(1, close - 1));
}

struct KeyLine {
  std::u16string_view key;    // trimmed
  std::u16string_view value;  // everything after "=", untrimmed
};

std::optional<KeyLine> SplitKey(std::u16string_view line) {
  size_t eq = line.find(u'=');
  if (eq == std::u16string_view::npos) return std::nullopt;
  return KeyLine{Trim(line.substr(0, eq)), line.substr(eq + 1)};
}

// Where a section and a key sit in the file.
struct Location {
  bool section_found = false;
  size_t last_content_line = 0;  // last non-empty line of the section
  bool key_found = false;
  size_t key_line = 0;
};

Location Locate(std::u16string_view text, const std::vector<Line>& lines,
                std::u16string_view section, std::u16string_view key) {
  Location loc;
  bool inside = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::u16string_view line =
        text.substr(lines[i].begin, lines[i].content_end - lines[i].begin);
    if (auto name = SectionName(line)) {
      if (inside) break;  // the first matching section only
      if (EqualsIgnoreAsciiCase(*name, section)) {
        inside = true;
        loc.section_found = true;
        loc.last_content_line = i;
      }
      continue;
    }
    if (!inside) continue;
    if (!Trim(line).empty()) loc.last_content_line = i;
    if (auto kv = SplitKey(line);
        kv && !loc.key_found && EqualsIgnoreAsciiCase(kv->key, key)) {
      loc.key_found = true;
      loc.key_line = i;
    }
  }
  return loc;
}

std::optional<ProfileText> Load(const std::filesystem::path& file) {
  Result<std::string> bytes = ReadFileBytes(file);
  if (!bytes.ok()) return std::nullopt;
  return Decode(*bytes);
}

}  // namespace

struct ProfileSnapshot::Loaded {
  ProfileText profile;
  std::vector<Line> lines;
};

ProfileSnapshot::ProfileSnapshot(const std::filesystem::path& file) {
  if (std::optional<ProfileText> profile = Load(file)) {
    std::vector<Line> lines = SplitLines(profile->text);
    loaded_.reset(new Loaded{std::move(*profile), std::move(lines)});
  }
}

ProfileSnapshot::~ProfileSnapshot() = default;

std::optional<std::string> ProfileSnapshot::Find(std::string_view section,
                                                 std::string_view key) const {
  if (!loaded_) return std::nullopt;
  const std::u16string_view text = loaded_->profile.text;
  const std::vector<Line>& lines = loaded_->lines;
  const Location loc =
      Locate(text, lines, Utf8ToUtf16(section), Utf8ToUtf16(key));
  if (!loc.key_found) return std::nullopt;
  const Line& line = lines[loc.key_line];
  std::u16string_view value = Trim(
      SplitKey(text.substr(line.begin, line.content_end - line.begin))->value);
  if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  return Utf16ToUtf8(value);
}

std::string ProfileSnapshot::Get(std::string_view section, std::string_view key,
                                 std::string_view default_value) const {
  if (std::optional<std::string> found = Find(section, key)) return *found;
  while (!default_value.empty() &&
         (default_value.back() == ' ' || default_value.back() == '\t')) {
    default_value.remove_suffix(1);
  }
  return std::string(default_value);
}

std::optional<std::string> FindProfileString(const std::filesystem::path& file,
                                             std::string_view section,
                                             std::string_view key) {
  return ProfileSnapshot(file).Find(section, key);
}

std::string GetProfileString(const std::filesystem::path& file,
                             std::string_view section, std::string_view key,
                             std::string_view default_value) {
  return ProfileSnapshot(file).Get(section, key, default_value);
}

Status WriteProfileString(const std::filesystem::path& file,
                          std::string_view section, std::string_view key,
                          std::string_view value) {
  ProfileText profile;  // a new file is UTF-16LE
  if (FileExists(file)) {
    std::optional<ProfileText> loaded = Load(file);
    if (!loaded) return Status::IOError(PathToUtf8(file) + ": cannot read");
    profile = std::move(*loaded);
  }
  std::u16string& text = profile.text;
  const std::u16string wsection = Utf8ToUtf16(section);
  const std::u16string wkey = Utf8ToUtf16(key);
  const std::u16string wvalue = Utf8ToUtf16(value);
  const std::vector<Line> lines = SplitLines(text);
  const Location loc = Locate(text, lines, wsection, wkey);

  if (loc.key_found) {
    // Only the value part of the line changes; the key keeps its spelling.
    const Line& line = lines[loc.key_line];
    std::u16string stored_key(
        SplitKey(std::u16string_view(text).substr(
                     line.begin, line.content_end - line.begin))
            ->key);
    text.replace(line.begin, line.content_end - line.begin,
                 stored_key + u"=" + wvalue);
  } else if (loc.section_found) {
    const Line& after = lines[loc.last_content_line];
    std::u16string insert = wkey + u"=" + wvalue + u"\r\n";
    if (after.end == after.content_end) insert = u"\r\n" + insert;
    text.insert(after.end, insert);
  } else {
    if (!text.empty() && text.back() != u'\n' && text.back() != u'\r') {
      text += u"\r\n";
    }
    text += u"[" + wsection + u"]\r\n" + wkey + u"=" + wvalue + u"\r\n";
  }
  return WriteFileAtomically(file, Encode(profile));
}

}  // namespace lmt::core

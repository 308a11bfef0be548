#include "dxf/entity.h"

#include "dxf/check.h"

namespace lmt::dxf {

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 32);
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 32);
    if (x != y) return false;
  }
  return true;
}

std::string_view Entity::type() const {
  auto t = tags();
  if (t.empty() || t[0].code != 0) return {};
  return t[0].value();
}

uint64_t Entity::owner() const {
  auto t = tags();
  bool in_group = false;
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 102) {
      in_group = !t[i].value().empty() && t[i].value()[0] == '{';
    } else if (t[i].code == 330 && !in_group) {
      return ParseHandle(t[i].value()).value_or(0);
    } else if (t[i].code == 100) {
      break;  // the owner precedes the first subclass marker
    }
  }
  return 0;
}

void Entity::SetOwner(uint64_t owner) {
  auto t = tags();
  bool in_group = false;
  int insert_at = 1;
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 102) {
      in_group = !t[i].value().empty() && t[i].value()[0] == '{';
      if (!in_group) insert_at = static_cast<int>(i) + 1;
    } else if (t[i].code == 330 && !in_group) {
      SetValueAt(static_cast<int>(i), FormatHandle(owner));
      return;
    } else if (t[i].code == 5 || t[i].code == 105) {
      if (insert_at <= static_cast<int>(i)) insert_at = static_cast<int>(i) + 1;
    } else if (t[i].code == 100) {
      break;
    }
  }
  InsertTag(insert_at, 330, FormatHandle(owner));
}

int Entity::Find(int code, int from) const {
  auto t = tags();
  for (size_t i = static_cast<size_t>(from); i < t.size(); ++i) {
    if (t[i].code == code) return static_cast<int>(i);
  }
  return -1;
}

int Entity::FindSubclass(std::string_view subclass) const {
  auto t = tags();
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 100 && t[i].value() == subclass)
      return static_cast<int>(i);
  }
  return -1;
}

int Entity::SubclassEnd(int marker) const {
  auto t = tags();
  for (size_t i = static_cast<size_t>(marker) + 1; i < t.size(); ++i) {
    if (t[i].code == 100 || t[i].code == 101 || t[i].code >= 1000) {
      return static_cast<int>(i);
    }
  }
  return static_cast<int>(t.size());
}

int Entity::FindIn(std::string_view subclass, int code) const {
  int m = FindSubclass(subclass);
  if (m < 0) return -1;
  int e = SubclassEnd(m);
  auto t = tags();
  for (int i = m + 1; i < e; ++i) {
    if (t[i].code == code) return i;
  }
  return -1;
}

int Entity::FindField(std::string_view subclass, int code) const {
  if (Find(100) < 0) return Find(code);
  return FindIn(subclass, code);
}

int Entity::XDataBegin() const {
  auto t = tags();
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 1001) return static_cast<int>(i);
  }
  return static_cast<int>(t.size());
}

std::optional<std::string_view> Entity::Get(int code) const {
  int i = Find(code);
  if (i < 0) return std::nullopt;
  return tags()[i].value();
}

std::string_view Entity::GetString(int code, std::string_view fallback) const {
  return Get(code).value_or(fallback);
}

double Entity::GetDouble(int code, double fallback) const {
  auto v = Get(code);
  if (!v) return fallback;
  return ParseDouble(*v).value_or(fallback);
}

int64_t Entity::GetInt(int code, int64_t fallback) const {
  auto v = Get(code);
  if (!v) return fallback;
  return ParseInt(*v).value_or(fallback);
}

Vec3 Entity::GetPoint(int code, Vec3 fallback) const {
  int i = Find(code);
  if (i < 0) return fallback;
  auto t = tags();
  Vec3 p;
  p.x = ParseDouble(t[i].value()).value_or(0);
  if (i + 1 < static_cast<int>(t.size()) && t[i + 1].code == code + 10) {
    p.y = ParseDouble(t[i + 1].value()).value_or(0);
    if (i + 2 < static_cast<int>(t.size()) && t[i + 2].code == code + 20) {
      p.z = ParseDouble(t[i + 2].value()).value_or(0);
    }
  }
  return p;
}

void Entity::SetValueAt(int index, std::string_view value) {
  std::span<Tag> t = db_->mutable_tags(id_);
  DXF_CHECK(index >= 0 && index < static_cast<int>(t.size()));
  std::string_view v = db_->StoreValueLike(t[index], value);
  DXF_CHECK(v.size() <= Tag::kMaxSize);
  t[index].SetValue(v);
}

int Entity::Set(int code, std::string_view value, int where_missing) {
  int i = Find(code);
  if (i >= 0) {
    SetValueAt(i, value);
    return i;
  }
  int at = where_missing >= 0 ? where_missing : XDataBegin();
  InsertTag(at, code, value);
  return at;
}

int Entity::SetDouble(int code, double v, int where_missing) {
  return Set(code, FormatDouble(v), where_missing);
}

int Entity::SetInt(int code, int64_t v, int where_missing) {
  return Set(code, FormatInt(v), where_missing);
}

void Entity::SetPoint(int code, Vec3 p) {
  int i = Set(code, FormatDouble(p.x));
  auto t = tags();
  if (i + 1 < static_cast<int>(t.size()) && t[i + 1].code == code + 10) {
    SetValueAt(i + 1, FormatDouble(p.y));
  } else {
    InsertTag(i + 1, code + 10, FormatDouble(p.y));
  }
  t = tags();
  if (i + 2 < static_cast<int>(t.size()) && t[i + 2].code == code + 20) {
    SetValueAt(i + 2, FormatDouble(p.z));
  } else {
    InsertTag(i + 2, code + 20, FormatDouble(p.z));
  }
}

void Entity::InsertTag(int index, int code, std::string_view value) {
  Tag t = db_->MakeTag(code, value);
  InsertTags(index, std::span<const Tag>(&t, 1));
}

void Entity::InsertTags(int index, std::span<const Tag> tags) {
  std::vector<Tag>& t = db_->Detach(id_);
  DXF_CHECK(index >= 0 && index <= static_cast<int>(t.size()));
  t.insert(t.begin() + index, tags.begin(), tags.end());
}

void Entity::EraseTags(int begin, int end) {
  std::vector<Tag>& t = db_->Detach(id_);
  DXF_CHECK(begin >= 0 && begin <= end && end <= static_cast<int>(t.size()));
  t.erase(t.begin() + begin, t.begin() + end);
}

std::vector<std::string_view> Entity::GetAll(int code) const {
  std::vector<std::string_view> out;
  for (const Tag& t : tags()) {
    if (t.code == code) out.push_back(t.value());
  }
  return out;
}

namespace {
// [begin, end) of the tags inside `102 {name ... 102 }`, or {-1, -1}.
std::pair<int, int> Group(std::span<const Tag> t, std::string_view name) {
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 100) break;
    if (t[i].code == 102 && t[i].value() == name) {
      for (size_t j = i + 1; j < t.size(); ++j) {
        if (t[j].code == 102) {
          return {static_cast<int>(i) + 1, static_cast<int>(j)};
        }
      }
      return {-1, -1};
    }
  }
  return {-1, -1};
}

// Where a new 102 group goes: after the handle and before the owner.
int GroupInsertPoint(std::span<const Tag> t) {
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 5 || t[i].code == 105) return static_cast<int>(i) + 1;
    if (t[i].code == 100) return static_cast<int>(i);
  }
  return 1;
}
}  // namespace

std::vector<uint64_t> Entity::Reactors() const {
  std::vector<uint64_t> out;
  auto t = tags();
  auto [b, e] = Group(t, "{ACAD_REACTORS");
  for (int i = b; i >= 0 && i < e; ++i) {
    if (auto h = ParseHandle(t[i].value())) out.push_back(*h);
  }
  return out;
}

void Entity::AddReactor(uint64_t handle) {
  auto t = tags();
  auto [b, e] = Group(t, "{ACAD_REACTORS");
  if (b >= 0) {
    InsertTag(e, 330, FormatHandle(handle));
    return;
  }
  // After an extension dictionary group, which CAD programs write first.
  auto [xb, xe] = Group(t, "{ACAD_XDICTIONARY");
  int at = xb >= 0 ? xe + 1 : GroupInsertPoint(t);
  Tag group[3] = {db_->MakeTag(102, "{ACAD_REACTORS"),
                  db_->MakeTag(330, FormatHandle(handle)),
                  db_->MakeTag(102, "}")};
  InsertTags(at, group);
}

uint64_t Entity::ExtensionDictionary() const {
  auto t = tags();
  auto [b, e] = Group(t, "{ACAD_XDICTIONARY");
  for (int i = b; i >= 0 && i < e; ++i) {
    if (t[i].code == 360) return ParseHandle(t[i].value()).value_or(0);
  }
  return 0;
}

void Entity::SetExtensionDictionary(uint64_t handle) {
  auto t = tags();
  auto [b, e] = Group(t, "{ACAD_XDICTIONARY");
  for (int i = b; i >= 0 && i < e; ++i) {
    if (t[i].code == 360) {
      SetValueAt(i, FormatHandle(handle));
      return;
    }
  }
  Tag group[3] = {db_->MakeTag(102, "{ACAD_XDICTIONARY"),
                  db_->MakeTag(360, FormatHandle(handle)),
                  db_->MakeTag(102, "}")};
  InsertTags(GroupInsertPoint(t), group);
}

int Entity::CommonInsertPoint() const {
  int i = Find(8);
  if (i >= 0) return i + 1;
  int m = FindSubclass("AcDbEntity");
  if (m >= 0) return m + 1;
  return 1;
}

void Entity::SetCommon(int code, std::string_view value) {
  int m = FindSubclass("AcDbEntity");
  int i = m >= 0 ? FindIn("AcDbEntity", code) : Find(code);
  if (i >= 0) {
    SetValueAt(i, value);
  } else {
    InsertTag(CommonInsertPoint(), code, value);
  }
}

void Entity::SetLayer(std::string_view layer) { SetCommon(8, layer); }
void Entity::SetColor(int aci) { SetCommon(62, FormatInt(aci)); }
void Entity::SetLinetype(std::string_view name) { SetCommon(6, name); }
void Entity::SetLineweight(int lw) { SetCommon(370, FormatInt(lw)); }
void Entity::SetInvisible(bool on) { SetCommon(60, on ? "1" : "0"); }

void Entity::SetPaperSpace(bool on) {
  int i = Find(67);
  if (i >= 0) {
    SetValueAt(i, on ? "1" : "0");
  } else if (on) {
    int m = FindSubclass("AcDbEntity");
    InsertTag(m >= 0 ? m + 1 : CommonInsertPoint(), 67, "1");
  }
}

std::span<const Tag> Entity::XData(std::string_view appid) const {
  auto t = tags();
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].code == 1001 && t[i].value() == appid) {
      size_t j = i + 1;
      while (j < t.size() && t[j].code != 1001) ++j;
      return t.subspan(i + 1, j - i - 1);
    }
  }
  return {};
}

}  // namespace lmt::dxf

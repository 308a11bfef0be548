#include "dxf/entity_db.h"

#include <algorithm>

#include "dxf/check.h"

namespace lmt::dxf {

uint64_t EntityDb::ReadHandle(std::span<const Tag> tags) {
  if (tags.empty() || tags[0].code != 0) return 0;
  // DIMSTYLE keeps its handle in 105; its 5 is DIMBLK.
  int code = tags[0].value() == "DIMSTYLE" ? 105 : 5;
  for (size_t i = 1; i < tags.size(); ++i) {
    if (tags[i].code == code) return ParseHandle(tags[i].value()).value_or(0);
    if (tags[i].code == 100) break;
  }
  return 0;
}

RecordId EntityDb::AddLoaded(uint32_t begin, uint32_t end) {
  DXF_CHECK(begin <= end && end <= base_.size() && end - begin <= kMaxCount);
  Record r;
  r.begin = begin;
  r.count = end - begin;
  r.handle =
      ReadHandle(std::span<const Tag>(base_).subspan(begin, end - begin));
  records_.push_back(r);
  const auto id = static_cast<RecordId>(records_.size() - 1);
  const bool typed = begin < end && base_[begin].code == 0;
  if (loaded_type_.size() < id) loaded_type_.resize(id, kNoLoadedType);
  loaded_type_.push_back(
      TypeIndexOf(typed ? base_[begin].value() : std::string_view()));
  return id;
}

namespace {

// FNV-1a over the whole name: made-up names of a damaged file that share
// their length and ends must not pile up in one place of the table.
size_t TypeHash(std::string_view type) {
  uint32_t h = 2166136261u;
  for (char c : type) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
  return h;
}

}  // namespace

uint16_t EntityDb::TypeIndexOf(std::string_view type) {
  // Records of one type often come in runs: the last one met first.
  const size_t n = loaded_types_.size();
  if (last_loaded_type_ < n && loaded_types_[last_loaded_type_] == type) {
    return last_loaded_type_;
  }
  // An open table of the types met, at most half full: slot = index + 1.
  if (type_slots_.size() < 2 * (n + 1)) {
    size_t slots = 64;
    while (slots < 4 * (n + 1)) slots *= 2;
    type_slots_.assign(slots, 0);
    for (size_t k = 0; k < n; ++k) {
      size_t at = TypeHash(loaded_types_[k]) & (type_slots_.size() - 1);
      while (type_slots_[at] != 0) at = (at + 1) & (type_slots_.size() - 1);
      type_slots_[at] = static_cast<uint16_t>(k + 1);
    }
  }
  const size_t mask = type_slots_.size() - 1;
  size_t at = TypeHash(type) & mask;
  for (; type_slots_[at] != 0; at = (at + 1) & mask) {
    const uint16_t k = static_cast<uint16_t>(type_slots_[at] - 1);
    if (loaded_types_[k] == type) return last_loaded_type_ = k;
  }
  if (n + 1 >= kNoLoadedType) return kNoLoadedType;
  loaded_types_.push_back(type);
  type_slots_[at] = static_cast<uint16_t>(n + 1);
  return last_loaded_type_ = static_cast<uint16_t>(n);
}

RecordId EntityDb::Create(std::vector<Tag> tags) {
  Record r;
  r.handle = ReadHandle(tags);
  r.detached = 1;
  r.begin = static_cast<uint32_t>(own_.size());
  own_.push_back(std::move(tags));
  records_.push_back(r);
  RecordId id = static_cast<RecordId>(records_.size() - 1);
  NoteChanged(id);
  IndexHandle(id);
  return id;
}

bool EntityDb::IndexHandle(RecordId id) {
  uint64_t h = records_[id].handle;
  if (h == 0) return true;
  if (h > max_handle_) max_handle_ = h;
  if (index_.empty() || index_.back().handle < h) {
    index_.push_back(IndexEntry{h, id});
    return true;
  }
  auto it = std::lower_bound(
      index_.begin(), index_.end(), h,
      [](const IndexEntry& e, uint64_t v) { return e.handle < v; });
  if (it != index_.end() && it->handle == h) {
    if (it->id != kNoRecord) return false;
    it->id = id;
    return true;
  }
  index_.insert(it, IndexEntry{h, id});
  return true;
}

std::vector<RecordId> EntityDb::BuildIndex() {
  index_.clear();
  // Room for the records an edit adds (a layout run adds several per
  // sheet), so that the first new handle does not copy the whole index.
  index_.reserve(records_.size() + records_.size() / 8);
  // Ties go to the earlier record, which the index keeps.
  auto by_handle = [](const IndexEntry& a, const IndexEntry& b) {
    return a.handle != b.handle ? a.handle < b.handle : a.id < b.id;
  };
  // Files list handles mostly in order. A table's head, the end of a
  // sequence, objects made first but written last come later than their
  // handles say; a few made last (an application id) come early. Records in
  // order stay where they are; the others are sorted on their own and
  // merged in from the back, which takes a fraction of a full sort and no
  // copy of the index.
  std::vector<IndexEntry> apart;
  const size_t most_apart = records_.size() / 8;
  bool in_order = true;  // false once too many are apart: sorted at the end
  for (RecordId id = 0; id < records_.size(); ++id) {
    uint64_t h = records_[id].handle;
    if (h == 0) continue;
    if (h > max_handle_) max_handle_ = h;
    IndexEntry e{h, id};
    if (!in_order || index_.empty() || !by_handle(e, index_.back())) {
      index_.push_back(e);
      continue;
    }
    // Either `e` is out of order, or a few kept just before it were: those
    // go apart when that lets `e` stay.
    constexpr size_t kFewLast = 4;
    size_t last = 1;
    const size_t size = index_.size();
    while (last < size && last <= kFewLast &&
           by_handle(e, index_[size - 1 - last])) {
      ++last;
    }
    if (last < size && last <= kFewLast) {
      apart.insert(apart.end(), index_.end() - last, index_.end());
      index_.resize(size - last);
      index_.push_back(e);
    } else {
      apart.push_back(e);
    }
    if (apart.size() > most_apart) {
      index_.insert(index_.end(), apart.begin(), apart.end());
      apart = {};
      in_order = false;
    }
  }
  if (!in_order) {
    std::sort(index_.begin(), index_.end(), by_handle);
  } else if (!apart.empty()) {
    std::sort(apart.begin(), apart.end(), by_handle);
    size_t a = index_.size();
    size_t b = apart.size();
    index_.resize(a + b);
    for (size_t out = a + b; b > 0;) {
      if (a > 0 && by_handle(apart[b - 1], index_[a - 1])) {
        index_[--out] = index_[--a];
      } else {
        index_[--out] = apart[--b];
      }
    }
  }
  std::vector<RecordId> dups;
  size_t out = 0;
  for (size_t i = 0; i < index_.size(); ++i) {
    if (out > 0 && index_[out - 1].handle == index_[i].handle) {
      dups.push_back(index_[i].id);
      continue;
    }
    index_[out++] = index_[i];
  }
  index_.resize(out);
  return dups;
}

std::span<const Tag> EntityDb::tags(RecordId id) const {
  const Record& r = records_[id];
  if (r.detached) return own_[r.begin];
  return std::span<const Tag>(base_).subspan(r.begin, r.count);
}

std::span<Tag> EntityDb::mutable_tags(RecordId id) {
  Record& r = records_[id];
  if (id == watched_) ++watched_changes_;
  if (r.edited == 0 && r.detached == 0) NoteChanged(id);
  r.edited = 1;
  if (r.detached) return own_[r.begin];
  return std::span<Tag>(base_).subspan(r.begin, r.count);
}

std::vector<Tag>& EntityDb::Detach(RecordId id) {
  Record& r = records_[id];
  if (id == watched_) ++watched_changes_;
  if (!r.detached) {
    if (r.edited == 0) NoteChanged(id);
    auto first = base_.begin() + r.begin;
    own_.emplace_back(first, first + r.count);
    r.begin = static_cast<uint32_t>(own_.size() - 1);
    r.detached = 1;
  }
  return own_[r.begin];
}

EntityDb::IndexEntry* EntityDb::IndexSlot(uint64_t handle) {
  auto it = std::lower_bound(
      index_.begin(), index_.end(), handle,
      [](const IndexEntry& e, uint64_t v) { return e.handle < v; });
  return it != index_.end() && it->handle == handle ? &*it : nullptr;
}

void EntityDb::Unindex(RecordId id) {
  IndexEntry* e = IndexSlot(records_[id].handle);
  if (e && e->id == id) e->id = kNoRecord;
}

void EntityDb::MarkErased(RecordId id) {
  records_[id].erased = 1;
  Unindex(id);
}

std::vector<RecordId> EntityDb::RecordsOfType(
    const std::function<bool(std::string_view)>& wanted) {
  auto type_of = [&](RecordId id) {
    std::span<const Tag> t = tags(id);
    return !t.empty() && t[0].code == 0 ? t[0].value() : std::string_view();
  };
  if (typed_upto_ == 0) {
    typed_upto_ = static_cast<RecordId>(records_.size());
    by_type_.resize(loaded_types_.size());
    for (RecordId id = 0; id < typed_upto_; ++id) {
      if (!as_loaded(id)) continue;
      const uint16_t t = LoadedType(id);
      if (t != kNoLoadedType) {
        by_type_[t].push_back(id);
        continue;
      }
      untyped_.push_back(id);
    }
  }
  std::vector<RecordId> out;
  for (size_t t = 0; t < by_type_.size(); ++t) {
    if (!wanted(loaded_types_[t])) continue;
    // Those edited since are met again among the changed ones.
    for (RecordId id : by_type_[t]) {
      if (as_loaded(id)) out.push_back(id);
    }
  }
  for (RecordId id : untyped_) {
    if (as_loaded(id) && wanted(type_of(id))) out.push_back(id);
  }
  // Records read in after the sorting (none, as loading goes) keep their
  // type while they stay as loaded.
  for (RecordId id = typed_upto_; id < records_.size(); ++id) {
    if (as_loaded(id) && wanted(type_of(id))) out.push_back(id);
  }
  for (RecordId id : changed_) {
    if (wanted(type_of(id))) out.push_back(id);
  }
  std::sort(out.begin(), out.end());
  return out;
}

RecordId EntityDb::Find(uint64_t handle) const {
  if (handle == 0) return kNoRecord;
  auto it = std::lower_bound(
      index_.begin(), index_.end(), handle,
      [](const IndexEntry& e, uint64_t v) { return e.handle < v; });
  return it != index_.end() && it->handle == handle ? it->id : kNoRecord;
}

uint64_t EntityDb::AllocateHandle(uint64_t seed) {
  uint64_t h = max_handle_ + 1;
  if (seed > h) h = seed;
  max_handle_ = h;
  return h;
}

void EntityDb::SetHandle(RecordId id, uint64_t handle) {
  std::vector<Tag>& t = Detach(id);
  DXF_CHECK(!t.empty() && t[0].code == 0);
  int code = t[0].value() == "DIMSTYLE" ? 105 : 5;
  Tag ht = MakeTag(code, FormatHandle(handle));
  bool set = false;
  for (size_t i = 1; i < t.size() && t[i].code != 100; ++i) {
    if (t[i].code == code) {
      t[i] = ht;
      set = true;
      break;
    }
  }
  if (!set) t.insert(t.begin() + 1, ht);
  Unindex(id);
  records_[id].handle = handle;
  IndexHandle(id);
}

const std::vector<RecordId>& EntityDb::children(RecordId parent) const {
  static const std::vector<RecordId> kNone;
  if (!records_[parent].has_children) return kNone;
  auto it = children_.find(parent);
  return it == children_.end() ? kNone : it->second;
}

RecordId EntityDb::parent(RecordId child) const {
  auto it = parents_.find(child);
  return it == parents_.end() ? kNoRecord : it->second;
}

std::string_view EntityDb::StoreValue(std::string_view value) {
  std::string escaped;
  if (EscapeControlChars(value, &escaped)) return arena_.Store(escaped);
  return arena_.Store(value);
}

std::string_view EntityDb::StoreValueLike(const Tag& old,
                                          std::string_view value) {
  if (!IsNumericCode(static_cast<int>(old.code))) return StoreValue(value);
  size_t pad = PaddingBefore(old.data());
  const char* begin = source_.data();
  const char* at = old.data();
  if (pad == 0 && begin != nullptr && at > begin &&
      at <= begin + source_.size()) {
    const char* line = at;
    while (line > begin && line[-1] == ' ') --line;
    if (line == begin || line[-1] == '\n') pad = static_cast<size_t>(at - line);
  }
  const size_t width = pad + old.size();
  if (pad == 0 || value.size() >= width || width > 32) {
    return StoreValue(value);
  }
  const size_t spaces = width - value.size();
  std::string field(spaces, ' ');
  field.append(value);
  std::string_view stored = arena_.Store(field).substr(spaces);
  padded_[stored.data()] = static_cast<uint8_t>(spaces);
  return stored;
}

size_t EntityDb::PaddingBefore(const char* value) const {
  auto it = padded_.find(value);
  return it == padded_.end() ? 0 : it->second;
}

Tag EntityDb::MakeTag(int code, std::string_view value) {
  std::string_view v = StoreValue(value);
  DXF_CHECK(v.size() <= Tag::kMaxSize && code >= 0 && code <= kMaxGroupCode);
  return Tag(code, v);
}

}  // namespace lmt::dxf

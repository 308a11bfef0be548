#include "dxf/document.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "dxf/check.h"
#include "dxf/file_sink.h"
#include "dxf/recovery.h"
#include "dxf/tag_reader.h"
#include "dxf/tag_writer.h"
#include "dxf/version.h"

namespace lmt::dxf {
namespace {

std::string Describe(const Tag& t) {
  std::string v(t.value().substr(0, 40));
  return std::to_string(t.code) + " " + (v.empty() ? "''" : v);
}

// What Build needs to know of a record's type. It is taken while the
// record's first line is still in cache: a second look at the type text
// after a whole section has been read comes cold from memory for every
// record of a large drawing.
enum class Kind : uint8_t {
  kOther,
  kTable,
  kEndtab,
  kBlock,
  kEndblk,
  kInsert,
  kPolyline,
  kAttrib,
  kVertex,
  kSeqend,
};

Kind KindOf(std::string_view type) {
  switch (type.size()) {
    case 5:
      if (type == "TABLE") return Kind::kTable;
      if (type == "BLOCK") return Kind::kBlock;
      break;
    case 6:
      if (type == "ENDTAB") return Kind::kEndtab;
      if (type == "ENDBLK") return Kind::kEndblk;
      if (type == "INSERT") return Kind::kInsert;
      if (type == "ATTRIB") return Kind::kAttrib;
      if (type == "VERTEX") return Kind::kVertex;
      if (type == "SEQEND") return Kind::kSeqend;
      break;
    case 8:
      if (type == "POLYLINE") return Kind::kPolyline;
      break;
  }
  return Kind::kOther;
}

bool IsChildKind(Kind k) {
  return k == Kind::kAttrib || k == Kind::kVertex || k == Kind::kSeqend;
}

bool StartsWithNoCase(std::string_view s, std::string_view prefix) {
  return s.size() >= prefix.size() &&
         EqualsNoCase(s.substr(0, prefix.size()), prefix);
}

}  // namespace

Document::~Document() = default;

Status Document::Load(const std::string& path, std::unique_ptr<Document>* out,
                      ReadOptions options) {
  std::unique_ptr<Document> doc(new Document());
  Status s = doc->file_.Open(path, size_t{2} << 30);
  if (!s.ok()) return s;
  doc->name_ = path;
  s = doc->Init(doc->file_.data(), options);
  if (!s.ok()) return s;
  *out = std::move(doc);
  return Status::Ok();
}

Status Document::Parse(std::string data, std::string name,
                       std::unique_ptr<Document>* out, ReadOptions options) {
  std::unique_ptr<Document> doc(new Document());
  doc->name_ = std::move(name);
  doc->data_ = std::move(data);
  Status s = doc->Init(doc->data_, options);
  if (!s.ok()) return s;
  *out = std::move(doc);
  return Status::Ok();
}

Status Document::Init(std::string_view data, ReadOptions options) {
  input_size_ = data.size();
  TagFile file;
  Status s = ReadTags(data, name_, &db_.arena(), &file, options.recover);
  if (!s.ok()) return s;
  binary_ = file.binary;
  if (!binary_) ascii_source_ = data;
  db_.SetSource(ascii_source_);
  one_byte_codes_ = file.one_byte_codes;
  crlf_ = file.crlf;
  recover_ = options.recover;
  if (recover_) {
    for (const Repair& r : RepairSections(&file)) {
      repairs_.push_back(TagLocation(name_, file, r.tag_index) + ": " + r.what);
    }
  }
  db_.SetBase(std::move(file.tags));
  s = Build(db_.base(), file.starts);
  if (s.ok() && binary_ && repairs_.empty()) {
    binary_source_ = data;
    binary_starts_ = std::move(file.starts);
    binary_offsets_ = std::move(file.start_offsets);
  }
  return s;
}

Status Document::Error(size_t tag_index, const std::string& what) const {
  TagFile f;  // only the location format depends on it
  f.binary = binary_;
  return Status::Corruption(TagLocation(name_, f, tag_index) + ": " + what);
}

std::string Document::NameKey(std::string_view name) {
  std::string key(name);
  for (char& c : key) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return key;
}

Block* Document::NewBlock(std::string name) {
  blocks_.push_back(std::make_unique<Block>());
  Block* b = blocks_.back().get();
  b->name = std::move(name);
  // The first of a name wins.
  if (!block_by_name_.emplace(NameKey(b->name), b).second) {
    repeated_block_names_ = true;
  }
  return b;
}

void Document::UnindexName(Block* block) {
  auto it = block_by_name_.find(NameKey(block->name));
  if (it == block_by_name_.end() || it->second != block) return;
  block_by_name_.erase(it);
  // A damaged file may hold the name twice; the next one takes over.
  if (!repeated_block_names_) return;
  for (auto& b : blocks_) {
    if (b.get() != block && EqualsNoCase(b->name, block->name)) {
      block_by_name_.emplace(NameKey(b->name), b.get());
      break;
    }
  }
}

Status Document::Build(const std::vector<Tag>& tags,
                       const std::vector<uint32_t>& starts) {
  const size_t n = tags.size();
  // The next code 0 tag after j (or n). Calls come with growing j, so a
  // cursor over `starts` finds it without scanning tags.
  size_t cursor = 0;
  auto next0 = [&](size_t j) -> size_t {
    if (cursor > 0 && starts[cursor - 1] > j) cursor = 0;  // went back
    while (cursor < starts.size() && starts[cursor] <= j) ++cursor;
    return cursor < starts.size() ? starts[cursor] : n;
  };
  // Each loaded record with its first tag index, for error locations.
  struct Loaded {
    RecordId id;
    uint32_t first;
    Kind kind;
  };
  std::vector<Loaded> recs;
  // Sized once for the largest section: growing it there would fault in a
  // fresh copy at every doubling.
  recs.reserve(starts.size());
  std::vector<RecordId> pending;   // ENTITIES, routed once blocks are known
  pending.reserve(starts.size());  // pages never filled cost nothing
  db_.ReserveRecords(n / 8 + 16);  // a guess; records average 8+ tags
  size_t i = 0;
  // 999 comments between sections (writers put their name first).
  auto comments = [&]() {
    size_t k = i;
    while (k < n && tags[k].code == 999) ++k;
    RecordId id = kNoRecord;
    if (k > i) {
      id = db_.AddLoaded(static_cast<uint32_t>(i), static_cast<uint32_t>(k));
    }
    i = k;
    return id;
  };
  while (true) {
    RecordId comment = comments();
    if (i >= n || tags[i].Is(0, "EOF")) {
      trailing_comments_ = comment;
      if (i < n) eof_ = i;
      break;
    }
    if (!tags[i].Is(0, "SECTION")) {
      return Error(i, "expected 0 SECTION, got " + Describe(tags[i]));
    }
    if (i + 1 >= n || tags[i + 1].code != 2) {
      return Error(i + 1, "expected 2 <section name> after 0 SECTION, got " +
                              Describe(tags[std::min(i + 1, n - 1)]));
    }
    std::string name(tags[i + 1].value());
    size_t j = name == "HEADER" ? i + 2 : next0(i);
    // ACDSDATA carries tags of its own after the name.
    RecordId head =
        db_.AddLoaded(static_cast<uint32_t>(i), static_cast<uint32_t>(j));
    if (name == "HEADER") {
      size_t e = j < n && tags[j].code == 0 ? j : next0(j);
      if (header_ == kNoRecord) header_ = db_.AddLoaded(j, e);
      j = e;
    }
    recs.clear();
    while (j < n && !tags[j].Is(0, "ENDSEC")) {
      if (tags[j].code != 0) {
        return Error(j, "expected 0 <record> in section " + name + ", got " +
                            Describe(tags[j]));
      }
      if (tags[j].Is(0, "EOF") || tags[j].Is(0, "SECTION")) {
        return Error(j, "expected 0 ENDSEC for section " + name + ", got " +
                            Describe(tags[j]));
      }
      size_t e = next0(j);
      recs.push_back(Loaded{
          db_.AddLoaded(static_cast<uint32_t>(j), static_cast<uint32_t>(e)),
          static_cast<uint32_t>(j), KindOf(tags[j].value())});
      j = e;
    }
    if (j >= n) {
      return Error(n - 1, "expected 0 ENDSEC for section " + name);
    }
    if (std::find_if(section_order_.begin(), section_order_.end(),
                     [&](const auto& s) { return s.name == name; }) ==
        section_order_.end()) {
      section_order_.push_back(SectionRef{name, head, comment, j});
    }
    // Groups INSERT+ATTRIB+SEQEND and POLYLINE+VERTEX+SEQEND.
    RecordId open = kNoRecord;
    auto add_entity = [&](const Loaded& r, std::vector<RecordId>* list) {
      if (open != kNoRecord && IsChildKind(r.kind)) {
        db_.mutable_children(open).push_back(r.id);
        db_.SetParent(r.id, open);
        if (r.kind == Kind::kSeqend) open = kNoRecord;
        return;
      }
      open = r.kind == Kind::kInsert || r.kind == Kind::kPolyline ? r.id
                                                                  : kNoRecord;
      list->push_back(r.id);
    };
    if (name == "HEADER") {
      if (!recs.empty()) {
        return Error(recs[0].first,
                     "expected 0 ENDSEC for section HEADER, got " +
                         Describe(tags[recs[0].first]));
      }
    } else if (name == "CLASSES") {
      for (const Loaded& r : recs) classes_.push_back(r.id);
    } else if (name == "TABLES") {
      Table* cur = nullptr;
      for (const Loaded& r : recs) {
        if (!cur) {
          if (r.kind != Kind::kTable) {
            return Error(r.first,
                         "expected 0 TABLE, got " + Describe(tags[r.first]));
          }
          tables_.emplace_back();
          cur = &tables_.back();
          cur->head = r.id;
          cur->name = std::string(entity(r.id).GetString(2));
        } else if (r.kind == Kind::kEndtab) {
          cur->endtab = r.id;
          cur = nullptr;
        } else if (r.kind == Kind::kTable) {
          return Error(r.first, "expected 0 ENDTAB for table " + cur->name +
                                    ", got 0 TABLE");
        } else {
          cur->entries.push_back(r.id);
        }
      }
      if (cur) {
        return Error(
            j, "expected 0 ENDTAB for table " + cur->name + ", got 0 ENDSEC");
      }
    } else if (name == "BLOCKS") {
      Block* cur = nullptr;
      for (const Loaded& r : recs) {
        if (!cur) {
          if (r.kind != Kind::kBlock) {
            return Error(r.first,
                         "expected 0 BLOCK, got " + Describe(tags[r.first]));
          }
          Entity b = entity(r.id);
          cur = NewBlock(std::string(b.GetString(2)));
          cur->begin = r.id;
          cur->record_handle = b.owner();
          open = kNoRecord;
        } else if (r.kind == Kind::kEndblk) {
          cur->end = r.id;
          cur = nullptr;
        } else if (r.kind == Kind::kBlock) {
          return Error(r.first, "expected 0 ENDBLK for block " + cur->name +
                                    ", got 0 BLOCK");
        } else {
          add_entity(r, &cur->entities);
        }
      }
      if (cur) {
        return Error(
            j, "expected 0 ENDBLK for block " + cur->name + ", got 0 ENDSEC");
      }
    } else if (name == "ENTITIES") {
      had_entities_section_ = true;
      for (const Loaded& r : recs) {
        // They would open a block inside BLOCKS once routed there.
        if (r.kind == Kind::kBlock || r.kind == Kind::kEndblk) {
          return Error(r.first,
                       "expected an entity in section "
                       "ENTITIES, got " +
                           Describe(tags[r.first]));
        }
        add_entity(r, &pending);
      }
    } else if (name == "OBJECTS") {
      for (const Loaded& r : recs) objects_.push_back(r.id);
    } else {
      raw_sections_.push_back(RawSection{name, {}});
      for (const Loaded& r : recs) {
        raw_sections_.back().records.push_back(r.id);
      }
    }
    i = j + 1;
  }
  if (i >= n) return Error(n ? n - 1 : 0, "expected 0 EOF");
  // Not needed any more; the index built next takes its place.
  recs.clear();
  recs.shrink_to_fit();

  const std::vector<RecordId> repeated = db_.BuildIndex();
  for (RecordId id : repeated) {
    warnings_.push_back(name_ + ": duplicate handle " +
                        FormatHandle(db_.handle(id)) + "; the first is kept");
  }
  AssignBlockRoles();
  // Most of them go to model space: its list is made once, not doubled.
  if (model_ != nullptr) {
    model_->entities.reserve(model_->entities.size() + pending.size());
  }
  for (RecordId id : pending) Route(id);
  if (recover_) RepairHandles(repeated);
  loaded_max_handle_ = db_.max_handle();
  if (!had_entities_section_) {
    auto it = std::find_if(section_order_.begin(), section_order_.end(),
                           [](const auto& s) { return s.name == "OBJECTS"; });
    section_order_.insert(it, SectionRef{"ENTITIES", kNoRecord, kNoRecord});
  }
  return Status::Ok();
}

void Document::RepairHandles(const std::vector<RecordId>& repeated) {
  if (IsR12()) return;  // handles are optional there
  const bool no_seed = !HeaderValue("$HANDSEED");
  auto give = [&](RecordId id, const std::string& why) {
    const uint64_t h = AllocateHandle();
    repairs_.push_back(name_ + ": " + std::string(entity(id).type()) + " " +
                       why + "; given " + FormatHandle(h));
    db_.SetHandle(id, h);
  };
  for (RecordId id : repeated) {
    give(id, "repeats handle " + FormatHandle(db_.handle(id)));
  }
  auto check = [&](RecordId id) {
    if (id != kNoRecord && db_.handle(id) == 0) give(id, "without a handle");
  };
  for (const Table& t : tables_) {
    check(t.head);
    for (RecordId id : t.entries) check(id);
  }
  for (const auto& b : blocks_) {
    check(b->begin);
    check(b->end);
    for (RecordId id : b->entities) {
      check(id);
      for (RecordId child : db_.children(id)) check(child);
    }
  }
  for (RecordId id : objects_) check(id);
  if (no_seed) {
    SetHeader("$HANDSEED", 5, FormatHandle(db_.max_handle() + 1));
    repairs_.push_back(name_ + ": no $HANDSEED; set above the largest handle");
  }
}

void Document::AssignBlockRoles() {
  // A BLOCK whose owner names no BLOCK_RECORD (hand-made files) still has
  // the record of its name: entities added later must name that one.
  Table* records = IsR12() ? nullptr : table("BLOCK_RECORD");
  for (auto& b : blocks_) {
    if (records == nullptr) break;
    Entity r = FindByHandle(b->record_handle);
    if (r.valid() && r.type() == "BLOCK_RECORD") continue;
    for (RecordId id : records->entries) {
      if (EqualsNoCase(entity(id).GetString(2), b->name)) {
        b->record_handle = entity(id).handle();
        break;
      }
    }
  }
  for (auto& b : blocks_) {
    if (b->record_handle) block_by_record_.emplace(b->record_handle, b.get());
  }
  AssignSpaces();
}

void Document::AssignSpaces() {
  auto named = [&](std::string_view name, std::string_view r12_name) {
    Block* a = FindBlock(name);
    Block* b = FindBlock(r12_name);
    if (a == nullptr || b == nullptr) return a != nullptr ? a : b;
    return a->begin < b->begin ? a : b;  // the one first in the file
  };
  model_ = named("*Model_Space", "$MODEL_SPACE");
  paper_ = named("*Paper_Space", "$PAPER_SPACE");
  // A minimal R12 file has no blocks at all; its entities still need a home.
  if (!model_) model_ = NewBlock(IsR12() ? "$MODEL_SPACE" : "*Model_Space");
}

void Document::Route(RecordId id) {
  Entity e = entity(id);
  Block* b = BlockByRecord(e.owner());
  // The ENTITIES section holds model space and the active paper space only;
  // an owner naming another block (files exist whose model space record is
  // called "*U") does not move an entity out of them.
  if (b != nullptr && b != model_ && b != paper_) {
    if (!misrouted_warned_) {
      warnings_.push_back(name_ + ": entities in ENTITIES name block " +
                          b->name + " as owner; read as " +
                          (e.paper_space() ? "paper" : "model") + " space");
      misrouted_warned_ = true;
    }
    b = nullptr;
  }
  if (!b) {
    if (e.paper_space()) {
      if (!paper_) paper_ = NewBlock(IsR12() ? "$PAPER_SPACE" : "*Paper_Space");
      b = paper_;
    } else {
      b = model_;
    }
  }
  b->entities.push_back(id);
}

std::string_view Document::version() const {
  // Files without $ACADVER, and releases before R12 ("AC1006", "AC2.10"),
  // are read as R12, as CAD programs read them.
  return ReleaseAsRead(HeaderValue("$ACADVER").value_or(""));
}

std::span<const Tag> Document::HeaderTags(std::string_view name) const {
  if (header_ == kNoRecord) return {};
  auto t = db_.tags(header_);
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == 9 && t[i].value() == name) {
      size_t j = i + 1;
      while (j < t.size() && t[j].code != 9) ++j;
      return t.subspan(i + 1, j - i - 1);
    }
  }
  return {};
}

std::optional<std::string_view> Document::HeaderValue(
    std::string_view name) const {
  auto t = HeaderTags(name);
  if (t.empty()) return std::nullopt;
  return t[0].value();
}

int64_t Document::HeaderInt(std::string_view name, int64_t fallback) const {
  auto v = HeaderValue(name);
  return v ? ParseInt(*v).value_or(fallback) : fallback;
}

double Document::HeaderDouble(std::string_view name, double fallback) const {
  auto v = HeaderValue(name);
  return v ? ParseDouble(*v).value_or(fallback) : fallback;
}

std::vector<std::string_view> Document::HeaderNames() const {
  std::vector<std::string_view> out;
  if (header_ == kNoRecord) return out;
  for (const Tag& t : db_.tags(header_)) {
    if (t.code == 9) out.push_back(t.value());
  }
  return out;
}

void Document::SetHeader(std::string_view name, std::span<const Tag> values) {
  if (header_ == kNoRecord) {
    header_ = db_.Create({});
    section_order_.insert(section_order_.begin(),
                          SectionRef{"HEADER", kNoRecord, kNoRecord});
  }
  std::vector<Tag>& t = db_.Detach(header_);
  std::vector<Tag> copy(values.begin(), values.end());  // values may alias t
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == 9 && t[i].value() == name) {
      size_t j = i + 1;
      while (j < t.size() && t[j].code != 9) ++j;
      t.erase(t.begin() + i + 1, t.begin() + j);
      t.insert(t.begin() + i + 1, copy.begin(), copy.end());
      return;
    }
  }
  t.push_back(db_.MakeTag(9, name));
  t.insert(t.end(), copy.begin(), copy.end());
}

bool Document::RemoveHeader(std::string_view name) {
  if (header_ == kNoRecord || !HeaderValue(name)) return false;
  std::vector<Tag>& t = db_.Detach(header_);
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == 9 && t[i].value() == name) {
      size_t j = i + 1;
      while (j < t.size() && t[j].code != 9) ++j;
      t.erase(t.begin() + i, t.begin() + j);
      return true;
    }
  }
  return false;
}

void Document::EnsureSection(std::string_view name) {
  static constexpr std::string_view kOrder[] = {
      "HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"};
  auto rank = [](std::string_view s) {
    auto it = std::find(std::begin(kOrder), std::end(kOrder), s);
    return static_cast<int>(it - std::begin(kOrder));
  };
  const int mine = rank(name);
  DXF_CHECK(mine < static_cast<int>(std::size(kOrder)));
  auto it = section_order_.begin();
  for (; it != section_order_.end(); ++it) {
    if (it->name == name) return;
    const int r = rank(it->name);
    if (r < static_cast<int>(std::size(kOrder)) && r > mine) break;
  }
  // Raw sections (THUMBNAILIMAGE, ...) stay where they were.
  section_order_.insert(it,
                        SectionRef{std::string(name), kNoRecord, kNoRecord});
}

bool Document::DropRawSection(std::string_view name) {
  auto raw = std::find_if(raw_sections_.begin(), raw_sections_.end(),
                          [&](const RawSection& r) { return r.name == name; });
  if (raw == raw_sections_.end()) return false;
  raw_sections_.erase(raw);
  std::erase_if(section_order_,
                [&](const SectionRef& s) { return s.name == name; });
  return true;
}

void Document::SetHeader(std::string_view name, int code,
                         std::string_view value) {
  Tag t = db_.MakeTag(code, value);
  SetHeader(name, std::span<const Tag>(&t, 1));
}

uint64_t Document::HandSeed() const {
  // Read for every new handle, and the variable sits near the header's end:
  // where it was found last is looked at first.
  constexpr std::string_view kName = "$HANDSEED";
  std::span<const Tag> t =
      header_ != kNoRecord ? db_.tags(header_) : std::span<const Tag>();
  size_t at = handseed_at_;
  if (at >= t.size() || t[at].code != 9 || t[at].value() != kName) {
    at = 0;
    while (at < t.size() && !(t[at].code == 9 && t[at].value() == kName)) ++at;
    if (at == t.size()) return 0;
    handseed_at_ = at;
  }
  if (at + 1 == t.size() || t[at + 1].code == 9) return 0;
  return ParseHandle(t[at + 1].value()).value_or(0);
}

Entity Document::FindByHandle(uint64_t handle) {
  RecordId id = db_.Find(handle);
  return id == kNoRecord ? Entity() : entity(id);
}

uint64_t Document::AllocateHandle() {
  uint64_t h = db_.AllocateHandle(HandSeed());
  return h;
}

Table* Document::table(std::string_view name) {
  for (Table& t : tables_) {
    if (EqualsNoCase(t.name, name)) return &t;
  }
  return nullptr;
}

Entity Document::FindTableEntry(std::string_view table_name,
                                std::string_view name) {
  Table* t = table(table_name);
  if (!t) return Entity();
  for (RecordId id : t->entries) {
    Entity e = entity(id);
    if (!e.erased() && EqualsNoCase(e.GetString(2), name)) return e;
  }
  return Entity();
}

Table* Document::AddTable(std::string_view name) {
  if (Table* t = table(name)) return t;
  DXF_CHECK(!IsR12());
  static constexpr std::string_view kOrder[] = {
      "VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
      "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};
  auto rank = [](std::string_view s) {
    for (size_t i = 0; i < std::size(kOrder); ++i) {
      if (EqualsNoCase(kOrder[i], s)) return i;
    }
    return std::size(kOrder);
  };
  auto it = tables_.begin();
  while (it != tables_.end() && rank(it->name) <= rank(name)) ++it;
  Table t;
  t.name = std::string(name);
  t.head = db_.Create({MakeTag(0, "TABLE"), MakeTag(2, name), MakeTag(330, "0"),
                       MakeTag(100, "AcDbSymbolTable"), MakeTag(70, "0")});
  t.endtab = db_.Create({MakeTag(0, "ENDTAB")});
  // The handle goes after the name, where CAD programs write it.
  std::vector<Tag>& head = db_.Detach(t.head);
  head.insert(head.begin() + 2, MakeTag(5, "0"));
  db_.SetHandle(t.head, AllocateHandle());
  EnsureSection("TABLES");
  return &*tables_.insert(it, std::move(t));
}

Entity Document::AddTableEntry(std::string_view table_name,
                               std::vector<Tag> tags) {
  Table* t = table(table_name);
  DXF_CHECK(t != nullptr);
  RecordId id = db_.Create(std::move(tags));
  Entity e = entity(id);
  db_.SetHandle(id, AllocateHandle());
  if (!IsR12()) e.SetOwner(entity(t->head).handle());
  t->entries.push_back(id);
  return e;
}

Entity Document::EnsureClass(std::string_view dxf_name,
                             std::string_view cpp_name, int proxy_flags,
                             bool is_entity, std::string_view application) {
  for (RecordId id : classes_) {
    Entity c = entity(id);
    if (!c.erased() && c.GetString(1) == dxf_name) return c;
  }
  if (IsR12() ||
      std::none_of(section_order_.begin(), section_order_.end(),
                   [](const auto& s) { return s.name == "CLASSES"; })) {
    return Entity();
  }
  std::vector<Tag> t = {MakeTag(0, "CLASS"), MakeTag(1, dxf_name),
                        MakeTag(2, cpp_name), MakeTag(3, application),
                        MakeTag(90, FormatInt(proxy_flags))};
  if (version() >= "AC1018") t.push_back(MakeTag(91, "0"));
  t.push_back(MakeTag(280, "0"));
  t.push_back(MakeTag(281, is_entity ? "1" : "0"));
  RecordId id = db_.Create(std::move(t));
  classes_.push_back(id);
  return entity(id);
}

Block* Document::FindBlock(std::string_view name) {
  auto it = block_by_name_.find(NameKey(name));
  return it == block_by_name_.end() ? nullptr : it->second;
}

Block* Document::BlockByRecord(uint64_t record_handle) {
  if (record_handle == 0) return nullptr;
  auto it = block_by_record_.find(record_handle);
  return it == block_by_record_.end() ? nullptr : it->second;
}

Block* Document::BlockOf(Entity e) {
  RecordId p = db_.parent(e.id());
  if (p != kNoRecord) e = entity(p);
  const uint64_t owner = e.owner();
  if (Block* b = BlockByRecord(owner)) return b;
  // What a dictionary or a table owns (a layout, a block record) lies in no
  // block: spare it the walk through every block's entities, which a split
  // run would pay twice for each layout it deletes.
  if (owner != 0) {
    RecordId o = db_.Find(owner);
    std::string_view type = o != kNoRecord ? entity(o).type() : "";
    if (type == "DICTIONARY" || type == "TABLE") return nullptr;
  }
  for (auto& b : blocks_) {
    if (std::find(b->entities.begin(), b->entities.end(), e.id()) !=
        b->entities.end()) {
      return b.get();
    }
  }
  return nullptr;
}

Block* Document::AddBlock(std::string_view name) {
  if (Block* b = FindBlock(name)) return b;
  bool paper = StartsWithNoCase(name, "*Paper_Space");
  uint64_t record = 0;
  if (!IsR12() && table("BLOCK_RECORD")) {
    std::vector<Tag> r = {MakeTag(0, "BLOCK_RECORD"),
                          MakeTag(100, "AcDbSymbolTableRecord"),
                          MakeTag(100, "AcDbBlockTableRecord"),
                          MakeTag(2, name), MakeTag(340, "0")};
    if (version() >= "AC1021") {  // units, explodable, scale uniformly
      r.push_back(MakeTag(70, "0"));
      r.push_back(MakeTag(280, "1"));
      r.push_back(MakeTag(281, "0"));
    }
    record = AddTableEntry("BLOCK_RECORD", std::move(r)).handle();
  }
  auto head = [&](std::string_view type, std::string_view marker) {
    std::vector<Tag> t = {MakeTag(0, type)};
    if (!IsR12()) t.push_back(MakeTag(100, "AcDbEntity"));
    if (paper && !IsR12()) t.push_back(MakeTag(67, "1"));
    t.push_back(MakeTag(8, "0"));
    if (!IsR12()) t.push_back(MakeTag(100, marker));
    return t;
  };
  std::vector<Tag> begin = head("BLOCK", "AcDbBlockBegin");
  for (Tag t : {MakeTag(2, name), MakeTag(70, "0"), MakeTag(10, "0.0"),
                MakeTag(20, "0.0"), MakeTag(30, "0.0"), MakeTag(3, name),
                MakeTag(1, "")}) {
    begin.push_back(t);
  }
  Block* b = NewBlock(std::string(name));
  b->record_handle = record;
  b->begin = db_.Create(std::move(begin));
  b->end = db_.Create(head("ENDBLK", "AcDbBlockEnd"));
  for (RecordId id : {b->begin, b->end}) {
    db_.SetHandle(id, AllocateHandle());
    if (record) entity(id).SetOwner(record);
  }
  if (record) block_by_record_.emplace(record, b);
  if (paper && paper_ == nullptr && EqualsNoCase(name, "*Paper_Space")) {
    paper_ = b;
  }
  if (!section_order_.empty() &&
      std::none_of(section_order_.begin(), section_order_.end(),
                   [](const auto& s) { return s.name == "BLOCKS"; })) {
    auto it = std::find_if(section_order_.begin(), section_order_.end(),
                           [](const auto& s) { return s.name == "ENTITIES"; });
    section_order_.insert(it, SectionRef{"BLOCKS", kNoRecord, kNoRecord});
  }
  return b;
}

void Document::SetBlockRecord(Block* block, uint64_t record_handle) {
  if (block->record_handle) block_by_record_.erase(block->record_handle);
  block->record_handle = record_handle;
  if (record_handle) block_by_record_[record_handle] = block;
}

bool Document::RenameBlock(Block* block, std::string_view name) {
  Block* other = FindBlock(name);
  if (other && other != block) return false;
  if (block->begin != kNoRecord) {
    Entity b = entity(block->begin);
    int i = b.FindField("AcDbBlockBegin", 2);
    if (i >= 0) b.SetValueAt(i, name);
    i = b.FindField("AcDbBlockBegin", 3);
    if (i >= 0) b.SetValueAt(i, name);
  }
  Entity record = FindByHandle(block->record_handle);
  if (record.valid()) {
    int i = record.FindIn("AcDbBlockTableRecord", 2);
    if (i >= 0) record.SetValueAt(i, name);
  }
  UnindexName(block);
  block->name = std::string(name);
  block_by_name_.emplace(NameKey(block->name), block);
  Block* model = model_;
  AssignSpaces();
  // A block made up for a file without one stays model space.
  if (model && model->begin == kNoRecord && model_ != model) model_ = model;
  return true;
}

bool Document::RemoveBlock(Block* block) {
  if (block == nullptr || block == model_ || block == paper_) return false;
  std::vector<Entity> doomed;
  for (RecordId id : block->entities) doomed.push_back(entity(id));
  EraseAll(doomed);
  for (RecordId id : {block->begin, block->end}) {
    if (id != kNoRecord) db_.MarkErased(id);
  }
  if (Entity record = FindByHandle(block->record_handle); record.valid()) {
    Erase(record);  // takes its extension dictionary (ACAD_SORTENTS, ...)
    if (Table* t = table("BLOCK_RECORD")) std::erase(t->entries, record.id());
  }
  block_by_record_.erase(block->record_handle);
  UnindexName(block);
  std::erase_if(blocks_, [&](const auto& b) { return b.get() == block; });
  return true;
}

Entity Document::AddEntity(Block* block, std::vector<Tag> tags) {
  DXF_CHECK(block != nullptr);
  tags.reserve(tags.size() + 3);  // the handle, owner and space added below
  RecordId id = db_.Create(std::move(tags));
  Entity e = entity(id);
  db_.SetHandle(id, AllocateHandle());
  if (!IsR12() && block->record_handle) e.SetOwner(block->record_handle);
  bool paper = block == paper_ || StartsWithNoCase(block->name, "*Paper_Space");
  if (paper) e.SetPaperSpace(true);
  block->entities.push_back(id);
  return e;
}

Entity Document::root_dictionary() {
  for (RecordId id : objects_) {
    if (!db_.erased(id)) return entity(id);
  }
  return Entity();
}

uint64_t Document::DictionaryLookup(Entity dict, std::string_view key) {
  auto t = dict.tags();
  for (size_t i = 0; i + 1 < t.size(); ++i) {
    if (t[i].code == 3 && t[i].value() == key &&
        (t[i + 1].code == 350 || t[i + 1].code == 360)) {
      return ParseHandle(t[i + 1].value()).value_or(0);
    }
  }
  return 0;
}

void Document::AddToDictionary(Entity dict, std::string_view key,
                               uint64_t handle) {
  DictionaryKeys& known = dictionary_keys_;
  if (known.dict == dict.id() && db_.watched() == dict.id() &&
      db_.watched_changes() == known.changes && !known.keys.contains(key)) {
    InsertDictionaryEntry(dict, known.end, known.code, key, handle);
    return;
  }
  // The layout dictionary gains an entry per new layout: one walk over its
  // tags both looks for the key and finds where the entries end.
  auto t = dict.tags();
  const size_t n = t.size();
  const int m = dict.FindSubclass("AcDbDictionary");
  // Keys of one dictionary often differ only at the end ("Sheet 12",
  // "Sheet 13"): the last letter rules out most before a full compare.
  auto same_key = [&](std::string_view v) {
    return v.size() == key.size() && (v.empty() || v.back() == key.back()) &&
           v == key;
  };
  auto replace_at = [&](size_t i) {
    if (t[i].code == 3 && i + 1 < n && same_key(t[i].value()) &&
        (t[i + 1].code == 350 || t[i + 1].code == 360)) {
      dict.SetValueAt(static_cast<int>(i + 1), FormatHandle(handle));
      return true;
    }
    return false;
  };
  // The same walk finds the hard-owner flag (the first 280), which would
  // otherwise cost another walk over every entry.
  size_t flag = n;
  const size_t marker = m < 0 ? 0 : static_cast<size_t>(m);
  for (size_t i = 0; i < marker; ++i) {
    if (flag == n && t[i].code == 280) flag = i;
    if (replace_at(i)) return;
  }
  size_t entries_end = n;
  bool end_found = m < 0;
  for (size_t i = m < 0 ? 0 : marker + 1; i < n; ++i) {
    const int code = t[i].code;
    if (!end_found && (code == 100 || code == 101 || code >= 1000)) {
      entries_end = i;
      end_found = true;
    }
    if (flag == n && code == 280) flag = i;
    if (replace_at(i)) return;
  }
  const bool hard_owner =
      flag < n && ParseInt(t[flag].value()).value_or(0) == 1;
  int at = m >= 0 ? static_cast<int>(entries_end) : dict.XDataBegin();
  int code = hard_owner ? 360 : 350;
  // A dictionary of many entries (a layout each) is likely to gain more:
  // its keys are kept, so that the next new key needs no walk.
  constexpr size_t kManyTags = 64;
  if (n >= kManyTags) {
    known.dict = dict.id();
    known.keys.clear();
    for (size_t i = 0; i + 1 < n; ++i) {
      if (t[i].code == 3 && (t[i + 1].code == 350 || t[i + 1].code == 360)) {
        known.keys.insert(t[i].value());
      }
    }
    db_.Watch(dict.id());
  }
  InsertDictionaryEntry(dict, at, code, key, handle);
}

void Document::InsertDictionaryEntry(Entity dict, int at, int code,
                                     std::string_view key, uint64_t handle) {
  Tag pair[2] = {MakeTag(3, key), MakeTag(code, FormatHandle(handle))};
  dict.InsertTags(at, pair);
  DictionaryKeys& known = dictionary_keys_;
  if (known.dict != dict.id() || db_.watched() != dict.id()) return;
  known.keys.insert(pair[0].value());
  known.end = at + 2;
  known.code = code;
  known.changes = db_.watched_changes();
}

Entity Document::AddObject(std::vector<Tag> tags, uint64_t owner) {
  tags.reserve(tags.size() + 2);  // the handle and owner added below
  RecordId id = db_.Create(std::move(tags));
  Entity e = entity(id);
  db_.SetHandle(id, AllocateHandle());
  e.SetOwner(owner);
  objects_.push_back(id);
  return e;
}

void Document::WriteRecord(TagWriter& w, RecordId id) {
  w.WriteRecord(db_.tags(id), db_.as_loaded(id));
}

void Document::WriteBlockEntities(TagWriter& w,
                                  const std::vector<RecordId>& ids) {
  for (RecordId id : ids) {
    if (db_.erased(id)) continue;
    WriteRecord(w, id);
    for (RecordId c : db_.children(id)) {
      if (!db_.erased(c)) WriteRecord(w, c);
    }
  }
}

std::string Document::ToString() {
  std::string out;
  out.reserve(input_size_ + db_.arena().bytes_used() + 4096);
  TagWriter w(&out, crlf_);
  SetSources(w, DxfFormat::kAscii);
  Serialize(w);
  w.Flush();
  return out;
}

Status Document::ToString(DxfFormat format, std::string* out) {
  out->clear();
  out->reserve(input_size_ + db_.arena().bytes_used() + 4096);
  TagWriter w = format == DxfFormat::kBinary
                    ? TagWriter::Binary(out, nullptr, OneByteCodes())
                    : TagWriter(out, crlf_);
  SetSources(w, format);
  Serialize(w);
  w.Flush();
  if (!w.ok()) return Status::Corruption(name_ + ": " + w.error());
  return Status::Ok();
}

void Document::Serialize(TagWriter& w) {
  ForgetErasedReferences();
  // Later tools allocate from $HANDSEED, so it must exceed every handle.
  // A drawing that gained no handle keeps its header as it was.
  const bool grew = db_.max_handle() > loaded_max_handle_;
  if ((grew || recover_) && (HeaderValue("$HANDSEED") || !IsR12())) {
    uint64_t seed = HandSeed();
    if (seed <= db_.max_handle()) {
      SetHeader("$HANDSEED", 5, FormatHandle(db_.max_handle() + 1));
    }
  }
  auto write_ids = [&](const std::vector<RecordId>& ids) {
    for (RecordId id : ids) {
      if (!db_.erased(id)) WriteRecord(w, id);
    }
  };
  for (const auto& [sec, head, comment, end] : section_order_) {
    if (head == kNoRecord && sec == "ENTITIES" && SpacesEmpty()) continue;
    if (comment != kNoRecord) WriteRecord(w, comment);
    if (head != kNoRecord) {
      WriteRecord(w, head);
    } else {
      w.Write(0, "SECTION");
      w.Write(2, sec);
    }
    if (sec == "HEADER") {
      if (header_ != kNoRecord) WriteRecord(w, header_);
    } else if (sec == "CLASSES") {
      write_ids(classes_);
    } else if (sec == "TABLES") {
      for (const Table& t : tables_) {
        WriteRecord(w, t.head);
        write_ids(t.entries);
        if (t.endtab != kNoRecord) {
          WriteRecord(w, t.endtab);
        } else {
          w.Write(0, "ENDTAB");
        }
      }
    } else if (sec == "BLOCKS") {
      for (auto& b : blocks_) {
        if (b->begin == kNoRecord) continue;  // made up for a minimal file
        WriteRecord(w, b->begin);
        if (b.get() != model_ && b.get() != paper_) {
          WriteBlockEntities(w, b->entities);
        }
        if (b->end != kNoRecord) {
          WriteRecord(w, b->end);
        } else {
          w.Write(0, "ENDBLK");
        }
      }
    } else if (sec == "ENTITIES") {
      // Model space and the active layout share the section; keep their
      // original interleaving (record ids grow in file order).
      std::vector<RecordId> merged;
      static const std::vector<RecordId> kNone;
      const auto& a = model_ ? model_->entities : kNone;
      const auto& b = paper_ ? paper_->entities : kNone;
      merged.reserve(a.size() + b.size());
      std::merge(a.begin(), a.end(), b.begin(), b.end(),
                 std::back_inserter(merged));
      WriteBlockEntities(w, merged);
    } else if (sec == "OBJECTS") {
      write_ids(objects_);
    } else {
      for (const RawSection& r : raw_sections_) {
        if (r.name == sec) write_ids(r.records);
      }
    }
    if (end != kNoTag) {
      w.Write(db_.base()[end]);
    } else {
      w.Write(0, "ENDSEC");
    }
  }
  if (trailing_comments_ != kNoRecord) WriteRecord(w, trailing_comments_);
  if (eof_ != kNoTag) {
    w.Write(db_.base()[eof_]);
    // What follows EOF (an old end-of-file mark, say) goes along too.
    const Tag& eof = db_.base()[eof_];
    if (!ascii_source_.empty()) {
      size_t rest = ascii_source_.find(
          '\n', static_cast<size_t>(eof.data() - ascii_source_.data()));
      if (rest != std::string_view::npos) {
        w.WriteVerbatim(ascii_source_.substr(rest + 1));
      }
    }
  } else {
    w.Write(0, "EOF");
  }
}

bool Document::SpacesEmpty() const {
  return (model_ == nullptr || model_->entities.empty()) &&
         (paper_ == nullptr || paper_->entities.empty());
}

void Document::SetSources(TagWriter& w, DxfFormat format) const {
  w.SetValues(&db_);
  if (format == DxfFormat::kAscii) {
    w.SetSource(ascii_source_);
    // Repairs add and drop base tags; without them the base tags are the
    // file's lines as read.
    if (!binary_ && repairs_.empty()) w.SetBaseIsSourceLines();
  } else if (OneByteCodes() == one_byte_codes_) {
    // The source's bytes only fit output with its code width (an upgraded
    // R12 drawing goes out with two-byte codes).
    w.SetBinarySource(binary_source_, binary_starts_, binary_offsets_);
  }
}

Status Document::Save(const std::string& path) { return Save(path, format()); }

Status Document::Save(const std::string& path, DxfFormat format) {
  std::string tmp = path + ".lmt-tmp";
  std::FILE* f = std::fopen(tmp.c_str(), "wb");
  if (!f) return Status::IOError(tmp + ": cannot open for writing");
  std::string error;
  std::string buffer;
  // A buffer's worth for a large drawing; a small one's own size (a mapping
  // of its own costs a small save more than its writing).
  buffer.reserve(std::min((size_t{1} << 20) + 64 * 1024,
                          input_size_ + db_.arena().bytes_used() + 4096));
  bool ok;
  {
    // A large output is written on a second thread, done when Flush
    // returns (and, at the latest, before the file is closed).
    FileSink sink(f);
    TagWriter w = format == DxfFormat::kBinary
                      ? TagWriter::Binary(&buffer, &sink, OneByteCodes())
                      : TagWriter(&buffer, crlf_, &sink);
    SetSources(w, format);
    Serialize(w);
    ok = w.Flush() && std::fflush(f) == 0;
    error = w.error();
  }
  ok = std::fclose(f) == 0 && ok;
  std::error_code ec;
  if (!ok) {
    std::filesystem::remove(tmp, ec);
    if (!error.empty()) {
      return Status::Corruption(path + ": not written: " + error);
    }
    return Status::IOError(tmp + ": write failed");
  }
  std::filesystem::rename(tmp, path, ec);
  if (ec) {
    std::error_code ignored;
    std::filesystem::remove(tmp, ignored);
    return Status::IOError(path + ": cannot replace: " + ec.message());
  }
  return Status::Ok();
}

}  // namespace lmt::dxf

// EntityDb: every record of a drawing (entity, table entry, object, ...),
// its raw tags, and the index from handle to record.
//
// A record is the run of tags that starts with a code 0 tag (the HEADER
// section is one record without it). Loaded records are ranges of one shared
// tag array; a record whose tag count changes is detached into its own
// vector, so edits never shift other records. Values written by edits live
// in the Arena. The raw tags are the truth: typed views (entity.h and the
// files beside it) read and edit them in place.
//
// Handles are indexed once at load; Create() and SetHandle() keep the index
// current. Records are never removed, only marked erased, so a RecordId stays
// valid for the life of the EntityDb.
#ifndef LMT_DXF_ENTITY_DB_H_
#define LMT_DXF_ENTITY_DB_H_

#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "dxf/page_allocator.h"
#include "dxf/tag.h"

namespace lmt::dxf {

using RecordId = uint32_t;
inline constexpr RecordId kNoRecord = std::numeric_limits<RecordId>::max();

class EntityDb {
 public:
  EntityDb() = default;
  EntityDb(const EntityDb&) = delete;
  EntityDb& operator=(const EntityDb&) = delete;

  // Takes the loaded tags; records then refer to ranges of them.
  void SetBase(std::vector<Tag> tags) { base_ = std::move(tags); }
  const std::vector<Tag>& base() const { return base_; }

  // Adds the record base()[begin, end). Its handle (code 5, or 105 for
  // DIMSTYLE) is read but not indexed; see IndexHandle.
  RecordId AddLoaded(uint32_t begin, uint32_t end);
  // Adds a new record with the given tags (values must already live in the
  // file buffer or arena()). Indexes its handle.
  RecordId Create(std::vector<Tag> tags);
  // Indexes the record's handle. Returns false when another live record
  // already has it (the index keeps the first).
  bool IndexHandle(RecordId id);
  // Indexes every record at once (after loading). Returns the records whose
  // handle an earlier record already had; the index keeps the first.
  std::vector<RecordId> BuildIndex();

  size_t size() const { return records_.size(); }
  void ReserveRecords(size_t n) {
    records_.reserve(n);
    loaded_type_.reserve(n);
  }
  std::span<const Tag> tags(RecordId id) const;
  // In-place access; the tag count cannot change through it. The record
  // counts as edited from then on.
  std::span<Tag> mutable_tags(RecordId id);
  // Detaches the record (once) and returns its own vector for insertions and
  // removals.
  std::vector<Tag>& Detach(RecordId id);

  uint64_t handle(RecordId id) const { return records_[id].handle; }
  bool erased(RecordId id) const { return records_[id].erased != 0; }
  // True while the record's tags are the loaded ones, never handed out for
  // editing nor detached: the writer may copy its text from the file.
  bool as_loaded(RecordId id) const {
    const Record& r = records_[id];
    return r.detached == 0 && r.edited == 0;
  }
  // Marks erased and drops the handle from the index. Owners' lists are the
  // caller's business (Document::Erase does both).
  void MarkErased(RecordId id);

  // Counts the times one record is handed out for editing (mutable_tags,
  // Detach) from now on, so that what was read from it can be kept while
  // the count stands still. Watching another record starts a new count.
  void Watch(RecordId id) {
    watched_ = id;
    watched_changes_ = 0;
  }
  RecordId watched() const { return watched_; }
  uint64_t watched_changes() const { return watched_changes_; }

  // The records whose type (their 0 tag's value) passes `wanted`, in record
  // order, erased ones included. The records still as loaded are sorted by
  // type at the first call, and `wanted` is asked once per type of theirs;
  // a record edited or made since may have another type by now, so those
  // are asked about one by one.
  std::vector<RecordId> RecordsOfType(
      const std::function<bool(std::string_view)>& wanted);
  // The records no longer as loaded (made, edited or detached since), each
  // once, in the order they changed.
  const std::vector<RecordId>& changed() const { return changed_; }

  // The types of the records as loaded ("" for a record without a 0 tag),
  // each once, and each loaded record's index among them: given when the
  // record is added, while its first tag is at hand, so that asking a large
  // drawing's records for their types compares no text.
  static constexpr uint16_t kNoLoadedType = 0xFFFF;
  const std::vector<std::string_view>& loaded_types() const {
    return loaded_types_;
  }
  // kNoLoadedType for a record no longer as loaded (its type may differ)
  // or made since.
  uint16_t LoadedType(RecordId id) const {
    return id < loaded_type_.size() && as_loaded(id) ? loaded_type_[id]
                                                     : kNoLoadedType;
  }

  // kNoRecord when no live record has the handle (0 is never found).
  RecordId Find(uint64_t handle) const;
  // The largest handle of any record seen so far.
  uint64_t max_handle() const { return max_handle_; }
  // Returns a handle greater than every handle in use and than `seed`
  // (the $HANDSEED value); later calls continue from it.
  uint64_t AllocateHandle(uint64_t seed);
  // Sets code 5 (adds it after the 0 tag when missing) and indexes it.
  void SetHandle(RecordId id, uint64_t handle);

  // Children: ATTRIB/SEQEND after an INSERT, VERTEX/SEQEND after a POLYLINE.
  // They are written right after their parent, in this order.
  const std::vector<RecordId>& children(RecordId parent) const;
  std::vector<RecordId>& mutable_children(RecordId parent) {
    records_[parent].has_children = 1;
    return children_[parent];
  }
  RecordId parent(RecordId child) const;
  void SetParent(RecordId child, RecordId parent) { parents_[child] = parent; }

  Arena& arena() { return arena_; }
  // Copies a value into the arena, control characters in caret form.
  std::string_view StoreValue(std::string_view value);
  // A tag whose value is copied into the arena.
  Tag MakeTag(int code, std::string_view value);

  // The text an ASCII file was read from, for the padding of its numbers.
  void SetSource(std::string_view ascii) { source_ = ascii; }
  // The new value of tag `old`, stored like StoreValue. A number replacing
  // a number that was right-aligned in its line keeps the field's width:
  // the padding sits in the arena just before the returned view (see
  // PaddingBefore), so the value itself stays trimmed.
  std::string_view StoreValueLike(const Tag& old, std::string_view value);
  // How many spaces to write before a value StoreValueLike padded; 0 for
  // any other value.
  size_t PaddingBefore(const char* value) const;

 private:
  // 16 bytes: a large drawing has a record per 150 bytes of file. Detached
  // records are few, so their vectors live apart.
  struct Record {
    uint64_t handle = 0;
    uint32_t begin = 0;       // the first tag in base_, or the slot in own_
    uint32_t count : 28 = 0;  // of a loaded record's tags
    uint32_t detached : 1 = 0;
    uint32_t erased : 1 = 0;
    uint32_t edited : 1 = 0;  // mutable_tags was called
    // Whether children_ may hold a list for it: most records have none,
    // and the writer asks for every record's.
    uint32_t has_children : 1 = 0;
  };
  static constexpr uint32_t kMaxCount = (1u << 28) - 1;
  struct IndexEntry;
  static uint64_t ReadHandle(std::span<const Tag> tags);
  IndexEntry* IndexSlot(uint64_t handle);
  void Unindex(RecordId id);

  std::vector<Tag> base_;
  std::vector<Record, LargePageAllocator<Record>> records_;
  // The tags of detached records; a deque, so references stay valid.
  std::deque<std::vector<Tag>> own_;
  // Sorted by handle; erased records leave kNoRecord behind. New handles
  // come from AllocateHandle and are above all others, so they append.
  struct IndexEntry {
    uint64_t handle;
    RecordId id;
  };
  std::vector<IndexEntry, LargePageAllocator<IndexEntry>> index_;
  std::unordered_map<RecordId, std::vector<RecordId>> children_;
  std::unordered_map<RecordId, RecordId> parents_;
  uint64_t max_handle_ = 0;
  // Records no longer as loaded, each once, in the order they changed
  // (RecordsOfType).
  void NoteChanged(RecordId id) { changed_.push_back(id); }
  std::vector<RecordId> changed_;
  RecordId watched_ = kNoRecord;
  uint64_t watched_changes_ = 0;
  // RecordsOfType's sorting of the records as loaded: the records of each
  // of loaded_types_, by its index. Built at the first call, over the
  // records before `typed_upto_`.
  std::vector<std::vector<RecordId>> by_type_;
  RecordId typed_upto_ = 0;
  // See loaded_types(). Types beyond kNoLoadedType - 1 (a damaged file of
  // made-up types) go untyped and are looked at one by one.
  uint16_t TypeIndexOf(std::string_view type);
  std::vector<std::string_view> loaded_types_;
  std::vector<uint16_t> loaded_type_;
  uint16_t last_loaded_type_ = 0;
  std::vector<uint16_t> type_slots_;  // TypeIndexOf's table
  // Loaded records RecordsOfType found without a type index.
  std::vector<RecordId> untyped_;
  Arena arena_;
  std::string_view source_;
  std::unordered_map<const char*, uint8_t> padded_;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_ENTITY_DB_H_

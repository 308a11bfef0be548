// Document: a whole drawing in memory: header, classes, tables, blocks,
// entities and objects, over one EntityDb.
//
// Load maps the file (or reads it into one buffer) and tokenizes it without a
// heap allocation per tag (tag_reader.h); records are ranges of that tag array.
// Structure is built once: sections, tables with their entries, blocks with
// their entities (ENTITIES-section entities are routed to the model space or
// paper space block by owner 330, or by 67 when there is no owner), the
// OBJECTS list and the handle index. Everything else is kept verbatim.
//
// Writing emits the same structure back: untouched tags come out exactly as
// they were read, and $HANDSEED is raised above the largest handle when it
// is not already. A drawing is saved in the form it was read in (binary or
// ASCII) unless told otherwise.
//
// For code built on top (layouts, viewports, geometry):
//   - iterate a block's entities:  for (RecordId id : block.entities)
//       Entity e = doc.entity(id);  (children of INSERT/POLYLINE:
//       db().children)
//   - find by handle:              doc.FindByHandle(h)
//   - read/write a tag:            Entity::Get/Set/FindIn/SetValueAt
//   - insert tags:                 Entity::InsertTag(s)
//   - allocate a handle:           doc.AllocateHandle()
//   - add to a dictionary:         doc.AddToDictionary(dict, key, handle)
//   - new entity in a block:       doc.AddEntity(block, tags)
//   - new object:                  doc.AddObject(tags)
// Not thread-safe; one thread at a time.
#ifndef LMT_DXF_DOCUMENT_H_
#define LMT_DXF_DOCUMENT_H_

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dxf/entity.h"
#include "dxf/entity_db.h"
#include "dxf/file_map.h"
#include "dxf/status.h"
#include "dxf/tag.h"
#include "dxf/tag_writer.h"

namespace lmt::dxf {

struct Table {
  std::string name;  // "LAYER", "BLOCK_RECORD", ...
  RecordId head = kNoRecord;
  std::vector<RecordId> entries;
  RecordId endtab = kNoRecord;
};

struct Block {
  std::string name;                // BLOCK code 2
  RecordId begin = kNoRecord;      // BLOCK; kNoRecord if the file had none
  RecordId end = kNoRecord;        // ENDBLK
  uint64_t record_handle = 0;      // its BLOCK_RECORD (0 in R12)
  std::vector<RecordId> entities;  // top-level entities in file order
};

// A section other than the ones the Document understands, kept verbatim
// (THUMBNAILIMAGE, ACDSDATA, ...).
struct RawSection {
  std::string name;
  std::vector<RecordId> records;
};

struct ReadOptions {
  // Repair what has one sensible reading (recovery.h; missing and
  // repeated handles, a missing $HANDSEED) instead of refusing it; each
  // repair is listed in repairs().
  bool recover = false;
};

class Document {
 public:
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document();

  // Reads and parses the file at `path`. IOError when it cannot be read,
  // Corruption (with file and line) when it is not a valid drawing.
  static Status Load(const std::string& path, std::unique_ptr<Document>* out,
                     ReadOptions options = {});
  // Parses `data` (ASCII or binary DXF); `name` is used in messages.
  static Status Parse(std::string data, std::string name,
                      std::unique_ptr<Document>* out, ReadOptions options = {});

  // Serializes the drawing as ASCII DXF.
  std::string ToString();
  // Serializes in `format`. Corruption when a value edited in does not fit
  // its group code's type (binary only; ASCII writes values as they are).
  Status ToString(DxfFormat format, std::string* out);
  // Writes to a temporary file beside `path` and renames it into place, so
  // an existing file is never left half written, in the form the drawing
  // was read in (ASCII for one made in memory). IOError on failure.
  Status Save(const std::string& path);
  Status Save(const std::string& path, DxfFormat format);

  const std::string& file_name() const { return name_; }
  bool was_binary() const { return binary_; }
  DxfFormat format() const {
    return binary_ ? DxfFormat::kBinary : DxfFormat::kAscii;
  }
  // Problems that did not stop loading (duplicate handles, ...).
  const std::vector<std::string>& warnings() const { return warnings_; }
  // What a recovering read repaired, each "FILE:LINE: what".
  const std::vector<std::string>& repairs() const { return repairs_; }

  // ---- header ----
  // The tags after `9 name` (usually one; points have 10/20[/30]).
  std::span<const Tag> HeaderTags(std::string_view name) const;
  std::optional<std::string_view> HeaderValue(std::string_view name) const;
  // The first value as a number, or `fallback` when absent or not a number
  // ($INSUNITS, $MEASUREMENT, $TILEMODE, ...).
  int64_t HeaderInt(std::string_view name, int64_t fallback = 0) const;
  double HeaderDouble(std::string_view name, double fallback = 0) const;
  // Replaces the variable's value tags, or appends the variable.
  void SetHeader(std::string_view name, std::span<const Tag> values);
  void SetHeader(std::string_view name, int code, std::string_view value);
  // Removes the variable with its values; false when absent.
  bool RemoveHeader(std::string_view name);
  // "AC1032"; "AC1009" when absent (R12 files may omit it) and for releases
  // before R12, which are read as R12.
  std::string_view version() const;
  bool IsR12() const { return version() <= "AC1009"; }
  // Names of all header variables in file order.
  std::vector<std::string_view> HeaderNames() const;

  // ---- records ----
  EntityDb& db() { return db_; }
  Entity entity(RecordId id) { return Entity(&db_, id); }
  // Invalid Entity when no live record has the handle.
  Entity FindByHandle(uint64_t handle);
  // A fresh handle above every handle in use and $HANDSEED.
  uint64_t AllocateHandle();

  // ---- tables ----
  Table* table(std::string_view name);  // nullptr when absent
  // Entry whose code 2 equals `name`, compared case-insensitively.
  Entity FindTableEntry(std::string_view table, std::string_view name);
  std::vector<Table>& tables() { return tables_; }
  const std::vector<RecordId>& classes() const { return classes_; }
  // The CLASS record whose DXF name (1) is `dxf_name`, added when absent
  // (no 91 in 2000 files, which refuse it). Invalid for R12 or a drawing
  // without a CLASSES section.
  Entity EnsureClass(std::string_view dxf_name, std::string_view cpp_name,
                     int proxy_flags, bool is_entity,
                     std::string_view application = "ObjectDBX Classes");
  // Adds an empty table (`0 TABLE 2 name 5 h 330 0 100 AcDbSymbolTable
  // 70 0`) where CAD programs place it (VPORT ... DIMSTYLE, BLOCK_RECORD),
  // or returns the existing one. Not for R12. Table pointers taken before
  // a table is added are invalid afterwards.
  Table* AddTable(std::string_view name);
  // Adds an entry at the end of `table`, with a new handle and owner.
  // `tags` start with `0 TYPE`; the handle and owner are inserted.
  Entity AddTableEntry(std::string_view table, std::vector<Tag> tags);

  // ---- blocks ----
  std::vector<std::unique_ptr<Block>>& blocks() { return blocks_; }
  // Case-insensitive; nullptr when absent.
  Block* FindBlock(std::string_view name);
  Block* BlockByRecord(uint64_t record_handle);
  // The block an entity's owner handle names, else the block whose list
  // holds it; nullptr for a record a dictionary or a table owns.
  Block* BlockOf(Entity e);
  Block* model_space() { return model_; }
  // The active layout's block (*Paper_Space / $PAPER_SPACE), or nullptr.
  Block* paper_space() { return paper_; }

  // Adds a block definition: BLOCK_RECORD (R2000+), BLOCK and ENDBLK with
  // new handles, base point 0,0,0. Paper-space blocks (*Paper_Space...)
  // get 67 1 on BLOCK and ENDBLK. Returns the existing block when the name
  // is taken (case-insensitive). The caller links a layout (340) itself.
  Block* AddBlock(std::string_view name);

  // Points `block` at its BLOCK_RECORD (a drawing made R2000 in memory).
  void SetBlockRecord(Block* block, uint64_t record_handle);

  // Renames a block: BLOCK 2 and 3 and its BLOCK_RECORD 2. Renaming blocks
  // to and from *Paper_Space is how the active layout changes: the writer
  // puts *Paper_Space's entities in ENTITIES and the others in BLOCKS.
  // False (nothing changed) when another block has the name.
  bool RenameBlock(Block* block, std::string_view name);

  // Removes a block definition: its entities (as EraseAll), BLOCK, ENDBLK
  // and BLOCK_RECORD with the record's extension dictionary. `block` is
  // invalid afterwards. Model space and the active layout (*Paper_Space)
  // are refused: false, nothing changed. References to the block (INSERTs,
  // a LAYOUT's 330) are the caller's.
  bool RemoveBlock(Block* block);

  // Appends a new entity to `block`: gives it a handle, sets its owner to
  // the block record (R2000+) and 67 for paper space. `tags` start with
  // `0 TYPE` and normally hold `100 AcDbEntity` and the layer.
  Entity AddEntity(Block* block, std::vector<Tag> tags);
  // Erases an entity with everything it owns and removes it from its block:
  // its children (ATTRIBs, VERTEXes, SEQEND), its extension dictionary tree
  // and every record its owner pointers (350-369) reach that names it as
  // owner, recursively. What survives forgets the erased records: their
  // handles leave ACAD_REACTORS groups, GROUP member lists and dictionary
  // entries, and a group left without members is erased too. Also right
  // for table entries and objects (no block then).
  // Costs a scan of the block's list; for many entities use EraseAll.
  void Erase(Entity e);
  // Erases all of them as Erase does, compacting each block's list once.
  void EraseAll(std::span<const Entity> entities);

  // Adds an empty section of the ones the Document understands (CLASSES,
  // TABLES, BLOCKS, OBJECTS, ...) in its usual place; nothing when present.
  void EnsureSection(std::string_view name);
  // Drops a section kept verbatim (ACDSDATA, THUMBNAILIMAGE, ...); false
  // when there is none or it is one the Document understands.
  bool DropRawSection(std::string_view name);

  // ---- objects ----
  const std::vector<RecordId>& objects() const { return objects_; }
  // The first object (owner 0); invalid for R12.
  Entity root_dictionary();
  // Handle stored under `key` (3 key / 350|360 handle), 0 when absent.
  uint64_t DictionaryLookup(Entity dict, std::string_view key);
  // Adds or replaces `key`. Uses 360 when the dictionary is a hard owner
  // (280 1), 350 otherwise. The object's owner and reactor are the caller's.
  void AddToDictionary(Entity dict, std::string_view key, uint64_t handle);
  // Appends an object with a new handle; `tags` start with `0 TYPE`.
  Entity AddObject(std::vector<Tag> tags, uint64_t owner);

  // A Tag with its value stored in the document.
  Tag MakeTag(int code, std::string_view value) {
    return db_.MakeTag(code, value);
  }

 private:
  Document() = default;
  Status Init(std::string_view data, ReadOptions options);
  // Fresh handles for records that lack one or repeat an earlier one, and
  // $HANDSEED where it is missing (recovering reads only).
  void RepairHandles(const std::vector<RecordId>& repeated);
  Status Build(const std::vector<Tag>& tags,
               const std::vector<uint32_t>& starts);
  Status Error(size_t tag_index, const std::string& what) const;
  void Route(RecordId id);
  Block* NewBlock(std::string name);
  void Serialize(class TagWriter& w);
  void WriteRecord(class TagWriter& w, RecordId id);
  void WriteBlockEntities(class TagWriter& w, const std::vector<RecordId>& ids);
  // Indexes every block by record handle, then AssignSpaces.
  void AssignBlockRoles();
  // The second half of EraseAll: records pointed to by `erased` drop the
  // handles in `gone`; groups it empties are erased and added to `gone`.
  void ForgetErased(const std::vector<RecordId>& erased,
                    std::unordered_set<uint64_t>* gone);
  // Before writing: what names an erased record without being reached from
  // it forgets it too, in one pass however many erases there were: draw
  // order tables drop its entry, a LAYOUT's last active viewport is cleared,
  // and extended-data handles (1005) to it become the null handle.
  void ForgetErasedReferences();
  // model_ and paper_ from the block names.
  void AssignSpaces();
  // The key of block_by_name_: ASCII letters upper-cased.
  static std::string NameKey(std::string_view name);
  // Drops `block` from block_by_name_ (before a rename or removal).
  void UnindexName(Block* block);
  uint64_t HandSeed() const;
  // Where HandSeed last found $HANDSEED among the header's tags.
  mutable size_t handseed_at_ = 0;
  // Inserts `3 key` / `code handle` at tag `at` of `dict`, and keeps
  // dictionary_keys_ up to date when they are of `dict`.
  void InsertDictionaryEntry(Entity dict, int at, int code,
                             std::string_view key, uint64_t handle);
  // The keys of the last large dictionary AddToDictionary added to, with
  // where its entries end and the code of its handles; valid while the
  // dictionary is the record the EntityDb watches and its count of changes
  // is `changes`. The keys are views of the tags' values, which never move.
  struct DictionaryKeys {
    RecordId dict = kNoRecord;
    uint64_t changes = 0;
    std::unordered_set<std::string_view> keys;
    int end = 0;
    int code = 350;
  };
  DictionaryKeys dictionary_keys_;
  // True when neither model space nor the active paper space holds an
  // entity (erased ones still count until they are forgotten).
  bool SpacesEmpty() const;
  // Binary R12 files have one-byte group codes; a drawing upgraded from
  // one is written with the two-byte codes of its new release.
  bool OneByteCodes() const { return one_byte_codes_ && IsR12(); }
  // Gives `w` (made for `format`) the source to copy untouched text from.
  void SetSources(class TagWriter& w, DxfFormat format) const;

  std::string name_;
  // The whole file (one of the two); base tags point into it.
  std::string data_;
  FileMap file_;  // mapped or read by Load
  size_t input_size_ = 0;
  bool binary_ = false;
  bool one_byte_codes_ = false;
  bool crlf_ = false;
  bool recover_ = false;
  bool misrouted_warned_ = false;
  EntityDb db_;
  std::vector<std::string> warnings_;
  std::vector<std::string> repairs_;
  // Sections in file order with their `0 SECTION` record (kNoRecord for
  // one the file lacked) and the 999 comments before it.
  struct SectionRef {
    std::string name;
    RecordId head = kNoRecord;
    RecordId comments = kNoRecord;
    // Index of its `0 ENDSEC` among the base tags, so that it is written
    // back as it was read; kNoTag when made up.
    size_t end = kNoTag;
  };
  static constexpr size_t kNoTag = static_cast<size_t>(-1);
  // The text an ASCII file was read from (empty for binary), and its
  // `0 EOF` tag's index, for writing untouched tags back as read.
  std::string_view ascii_source_;
  size_t eof_ = kNoTag;
  // A binary file as read (empty for ASCII, and for a repaired stream,
  // whose tags no longer match its bytes), with its record starts as tag
  // indexes and byte offsets (TagFile), for the same purpose.
  std::string_view binary_source_;
  std::vector<uint32_t> binary_starts_;
  std::vector<uint32_t> binary_offsets_;
  // Handles erased since the last write (ForgetErasedReferences).
  std::unordered_set<uint64_t> erased_since_write_;
  // The largest handle once read, to tell whether the drawing gained any.
  uint64_t loaded_max_handle_ = 0;
  std::vector<SectionRef> section_order_;
  RecordId trailing_comments_ = kNoRecord;
  RecordId header_ = kNoRecord;
  std::vector<RecordId> classes_;
  std::vector<Table> tables_;
  std::vector<std::unique_ptr<Block>> blocks_;
  std::unordered_map<uint64_t, Block*> block_by_record_;
  // Case-insensitive name index (NameKey); the first block of a name when a
  // damaged file repeats it. Kept by NewBlock, RenameBlock and RemoveBlock.
  std::unordered_map<std::string, Block*> block_by_name_;
  // Some name was met twice: removals then look for the next holder.
  bool repeated_block_names_ = false;
  Block* model_ = nullptr;
  Block* paper_ = nullptr;
  std::vector<RecordId> objects_;
  std::vector<RawSection> raw_sections_;
  bool had_entities_section_ = false;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_DOCUMENT_H_

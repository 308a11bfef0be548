// Entity: a light view of one record in an EntityDb, with tag access and the
// properties every graphical entity shares.
//
// A view is two words; copy it freely. It reads and edits the record's raw
// tags in place, so codes it does not know survive a save. Setters store the
// new text in the database arena. Indexes returned by Find* are positions in
// tags() and stay valid until a tag is inserted or erased.
//
// Lookups by subclass: CAD programs reuse codes in different subclasses
// (ATTRIB's 280, LAYOUT's 1 and 70), so the *In forms search only between
// the given `100` marker and the next one.
#ifndef LMT_DXF_ENTITY_H_
#define LMT_DXF_ENTITY_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/entity_db.h"
#include "dxf/tag.h"

namespace lmt::dxf {

struct Vec3 {
  double x = 0, y = 0, z = 0;
  bool operator==(const Vec3&) const = default;
};

class Entity {
 public:
  Entity() = default;
  Entity(EntityDb* db, RecordId id) : db_(db), id_(id) {}

  bool valid() const { return db_ != nullptr && id_ != kNoRecord; }
  RecordId id() const { return id_; }
  EntityDb* db() const { return db_; }
  bool operator==(const Entity& o) const {
    return id_ == o.id_ && db_ == o.db_;
  }

  std::span<const Tag> tags() const { return db_->tags(id_); }
  // The DXF type name ("LWPOLYLINE", "INSERT", "LAYER", ...).
  std::string_view type() const;
  uint64_t handle() const { return db_->handle(id_); }
  // The first 330 outside 102 groups; 0 when there is none (R12).
  uint64_t owner() const;
  void SetOwner(uint64_t owner);
  bool erased() const { return db_->erased(id_); }

  // ---- raw tags ----
  // Index of the first tag with `code` at or after `from`, or -1.
  int Find(int code, int from = 0) const;
  // Same, limited to the subclass opened by `100 subclass`; -1 when the
  // subclass or the code is absent.
  int FindIn(std::string_view subclass, int code) const;
  // FindIn for files with subclass markers; R12 entities have none, so
  // there the first `code` anywhere.
  int FindField(std::string_view subclass, int code) const;
  // Index of the `100 subclass` marker, or -1.
  int FindSubclass(std::string_view subclass) const;
  // End of the subclass starting at marker index `marker`: the next 100,
  // 101 or XDATA tag, or tags().size().
  int SubclassEnd(int marker) const;
  // Index of the first XDATA tag (1001), or tags().size().
  int XDataBegin() const;

  std::optional<std::string_view> Get(int code) const;
  std::string_view GetString(int code, std::string_view fallback = {}) const;
  double GetDouble(int code, double fallback = 0) const;
  int64_t GetInt(int code, int64_t fallback = 0) const;
  // 10/20/30 style point from the first `code` (z defaults to 0).
  Vec3 GetPoint(int code, Vec3 fallback = {}) const;

  // Replaces the value of tags()[index].
  void SetValueAt(int index, std::string_view value);
  // Replaces the first `code`; when absent inserts it at `where_missing`
  // (default: before XDATA). Returns the tag's index.
  int Set(int code, std::string_view value, int where_missing = -1);
  int SetDouble(int code, double v, int where_missing = -1);
  int SetInt(int code, int64_t v, int where_missing = -1);
  // Sets code, code+10, code+20 of a point (inserting missing ones after the
  // previous coordinate).
  void SetPoint(int code, Vec3 p);
  // Inserts before index (== size() appends). Detaches the record.
  void InsertTag(int index, int code, std::string_view value);
  void InsertTags(int index, std::span<const Tag> tags);
  void EraseTags(int begin, int end);
  // All values with `code` in order (e.g. 331 frozen layers).
  std::vector<std::string_view> GetAll(int code) const;

  // ---- 102 groups ----
  // Handles in `102 {ACAD_REACTORS ... 102 }`.
  std::vector<uint64_t> Reactors() const;
  void AddReactor(uint64_t handle);
  // The 360 in `102 {ACAD_XDICTIONARY`, 0 when none.
  uint64_t ExtensionDictionary() const;
  void SetExtensionDictionary(uint64_t handle);

  // ---- common entity properties (AcDbEntity) ----
  std::string_view layer() const { return GetString(8, "0"); }
  void SetLayer(std::string_view layer);
  int color() const { return static_cast<int>(GetInt(62, 256)); }  // ByLayer
  void SetColor(int aci);
  std::string_view linetype() const { return GetString(6, "BYLAYER"); }
  void SetLinetype(std::string_view name);
  int lineweight() const { return static_cast<int>(GetInt(370, -1)); }
  void SetLineweight(int lw);
  bool invisible() const { return GetInt(60, 0) != 0; }
  void SetInvisible(bool on);
  bool paper_space() const { return GetInt(67, 0) != 0; }
  void SetPaperSpace(bool on);

  // Layout tab name (410); CAD programs do not write it to DXF, so it is
  // usually empty: use the owner block instead.
  std::string_view layout_name() const { return GetString(410); }

  // XDATA of one application: the tags after `1001 appid` up to the next
  // 1001 (empty when absent).
  std::span<const Tag> XData(std::string_view appid) const;

 protected:
  // Where AcDbEntity properties go when missing: after the layer tag, or
  // after the AcDbEntity marker.
  int CommonInsertPoint() const;
  void SetCommon(int code, std::string_view value);

  EntityDb* db_ = nullptr;
  RecordId id_ = kNoRecord;
};

bool EqualsNoCase(std::string_view a, std::string_view b);

}  // namespace lmt::dxf

#endif  // LMT_DXF_ENTITY_H_

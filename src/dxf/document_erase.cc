// Document::Erase and EraseAll: an entity goes with everything it owns, and
// the records that survive stop naming it.
//
// Ownership follows the owner pointers (codes 350-369) of each erased record
// to records whose owner (330) is that record: extension dictionaries and
// their nested dictionaries, XRECORDs and what they own (a table's
// TABLECONTENT and TABLEGEOMETRY), an image's IMAGEDEF_REACTOR, a solid's
// ACSH_HISTORY_CLASS. A pointer alone never erases: the record must also
// name the erased one as its owner, so shared objects (styles, image
// definitions, layers) stay.
//
// Then every surviving record an erased one points to (its reactors' owners,
// groups, image definitions, dictionaries) drops the erased handles from its
// ACAD_REACTORS group, its group members (340) and its dictionary entries. A
// group left without members is erased in turn and leaves its dictionary.
#include <algorithm>
#include <unordered_set>

#include "dxf/document.h"

namespace lmt::dxf {
namespace {

bool IsOwnerPointer(int code) { return code >= 350 && code <= 369; }
bool IsPointer(int code) { return code >= 330 && code <= 369; }

}  // namespace

void Document::Erase(Entity e) { EraseAll(std::span<const Entity>(&e, 1)); }

void Document::EraseAll(std::span<const Entity> entities) {
  std::vector<Block*> touched;
  std::vector<RecordId> todo;
  for (const Entity& e : entities) {
    if (!e.valid() || e.erased()) continue;
    RecordId parent = db_.parent(e.id());
    if (parent != kNoRecord) {
      auto& kids = db_.mutable_children(parent);
      kids.erase(std::remove(kids.begin(), kids.end(), e.id()), kids.end());
    } else if (Block* b = BlockOf(e)) {
      touched.push_back(b);
    }
    todo.push_back(e.id());
  }
  std::vector<RecordId> erased;
  std::unordered_set<uint64_t> gone;
  while (!todo.empty()) {
    RecordId id = todo.back();
    todo.pop_back();
    if (db_.erased(id)) continue;
    Entity x = entity(id);
    for (RecordId c : db_.children(id)) todo.push_back(c);
    // The extension dictionary goes whatever owner it names.
    if (uint64_t xd = x.ExtensionDictionary()) {
      RecordId d = db_.Find(xd);
      if (d != kNoRecord) todo.push_back(d);
    }
    // Without a handle (R12) nothing can name it as owner.
    for (const Tag& t : x.handle() != 0 ? x.tags() : std::span<const Tag>()) {
      if (!IsOwnerPointer(t.code)) continue;
      RecordId c = db_.Find(ParseHandle(t.value()).value_or(0));
      if (c != kNoRecord && entity(c).owner() == x.handle()) {
        todo.push_back(c);
      }
    }
    db_.MarkErased(id);
    erased.push_back(id);
    if (x.handle() != 0) gone.insert(x.handle());
  }
  std::sort(touched.begin(), touched.end());
  touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
  for (Block* b : touched) {
    auto& v = b->entities;
    v.erase(std::remove_if(v.begin(), v.end(),
                           [&](RecordId id) { return db_.erased(id); }),
            v.end());
  }
  if (!gone.empty()) ForgetErased(erased, &gone);
  erased_since_write_.insert(gone.begin(), gone.end());
}

void Document::ForgetErasedReferences() {
  if (erased_since_write_.empty()) return;
  auto gone = [&](const Tag& t) {
    return erased_since_write_.count(ParseHandle(t.value()).value_or(0)) != 0;
  };
  for (RecordId id : objects_) {
    if (db_.erased(id)) continue;
    Entity o = entity(id);
    if (o.type() == "SORTENTSTABLE") {
      // Pairs of 331 entity and 5 sort handle after the block record.
      std::span<const Tag> t = o.tags();
      std::vector<Tag> kept;
      kept.reserve(t.size());
      for (size_t i = 0; i < t.size(); ++i) {
        if (t[i].code == 331 && gone(t[i]) && i + 1 < t.size() &&
            t[i + 1].code == 5) {
          ++i;
          continue;
        }
        kept.push_back(t[i]);
      }
      if (kept.size() != t.size()) db_.Detach(id) = std::move(kept);
    } else if (o.type() == "LAYOUT") {
      int last = o.FindIn("AcDbLayout", 331);
      if (last >= 0 && gone(o.tags()[last])) o.EraseTags(last, last + 1);
    }
  }
  auto forget_in_xdata = [&](RecordId id) {
    if (db_.erased(id)) return;
    Entity e = entity(id);
    const int x = e.XDataBegin();
    if (x < 0) return;
    for (int i = x; i < static_cast<int>(e.tags().size()); ++i) {
      if (e.tags()[i].code == 1005 && gone(e.tags()[i])) e.SetValueAt(i, "0");
    }
  };
  // A record as loaded names only what the file named. When every handle
  // erased was given out after loading, only the records changed since can
  // name one, and the walk over every record of a large drawing is spared.
  const bool only_new =
      std::all_of(erased_since_write_.begin(), erased_since_write_.end(),
                  [&](uint64_t h) { return h > loaded_max_handle_; });
  if (only_new) {
    // By index: an edit may add to the list (not of these records, which
    // are on it already, but the loop need not rely on that).
    for (size_t k = 0; k < db_.changed().size(); ++k) {
      forget_in_xdata(db_.changed()[k]);
    }
  } else {
    for (RecordId id = 0; id < db_.size(); ++id) forget_in_xdata(id);
  }
  erased_since_write_.clear();
}

void Document::ForgetErased(const std::vector<RecordId>& erased,
                            std::unordered_set<uint64_t>* gone) {
  std::vector<RecordId> pending;
  std::unordered_set<RecordId> seen;
  // `again`: visit even what was already cleaned (a group erased later
  // must still leave its dictionary).
  auto neighbours_of = [&](RecordId id, bool again) {
    for (const Tag& t : db_.tags(id)) {
      if (!IsPointer(t.code)) continue;
      uint64_t h = ParseHandle(t.value()).value_or(0);
      if (h == 0 || gone->count(h)) continue;
      RecordId n = db_.Find(h);
      if (n != kNoRecord && (seen.insert(n).second || again)) {
        pending.push_back(n);
      }
    }
  };
  for (RecordId id : erased) neighbours_of(id, false);
  while (!pending.empty()) {
    RecordId id = pending.back();
    pending.pop_back();
    if (db_.erased(id)) continue;
    Entity n = entity(id);
    const bool group = n.type() == "GROUP";
    const bool dictionary = n.type() == "DICTIONARY";
    auto named = [&](const Tag& t) {
      return gone->count(ParseHandle(t.value()).value_or(0)) != 0;
    };
    std::span<const Tag> t = n.tags();
    std::vector<Tag> kept;
    kept.reserve(t.size());
    bool in_reactors = false;
    int members_left = 0, members_dropped = 0;
    for (size_t i = 0; i < t.size(); ++i) {
      if (t[i].code == 102) {
        if (t[i].value() == "{ACAD_REACTORS") in_reactors = true;
        if (in_reactors && t[i].value() == "}") {
          in_reactors = false;
          // No reactor left: no group either.
          if (!kept.empty() && kept.back().Is(102, "{ACAD_REACTORS")) {
            kept.pop_back();
            continue;
          }
        }
      } else if (in_reactors && t[i].code == 330 && named(t[i])) {
        continue;
      } else if (group && t[i].code == 340) {
        if (named(t[i])) {
          ++members_dropped;
          continue;
        }
        ++members_left;
      } else if (dictionary && t[i].code == 3 && i + 1 < t.size() &&
                 (t[i + 1].code == 350 || t[i + 1].code == 360) &&
                 named(t[i + 1])) {
        ++i;
        continue;
      }
      kept.push_back(t[i]);
    }
    if (kept.size() != t.size()) db_.Detach(id) = std::move(kept);
    if (group && members_dropped > 0 && members_left == 0) {
      db_.MarkErased(id);
      gone->insert(n.handle());
      neighbours_of(id, true);
    }
  }
}

}  // namespace lmt::dxf

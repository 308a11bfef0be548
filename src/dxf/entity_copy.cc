#include "dxf/entity_copy.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "dxf/encoding.h"
#include "dxf/viewport.h"
#include "dxf/viewport_edit.h"

namespace lmt::dxf {
namespace {

bool IsPointer(int code) {
  // 320-329 are arbitrary handles that are never translated.
  return (code >= 330 && code <= 369) || code == 390 || code == 1005;
}

bool StartsWithNoCase(std::string_view s, std::string_view prefix) {
  return s.size() >= prefix.size() &&
         EqualsNoCase(s.substr(0, prefix.size()), prefix);
}

class Copier {
 public:
  Copier(Document& from, Document& to)
      : from_(from),
        to_(to),
        from_cp_(CodePageOf(from)),
        to_cp_(CodePageOf(to)),
        reencode_(from_cp_ != to_cp_) {}

  std::vector<Entity> Run(std::span<const RecordId> ids, Block* target) {
    std::vector<Entity> out;
    bool paper = target == to_.paper_space() ||
                 StartsWithNoCase(target->name, "*Paper_Space");
    for (RecordId id : ids) {
      Entity src = from_.entity(id);
      if (!src.valid() || src.erased()) continue;
      if (paper && src.type() == "VIEWPORT" && Viewport(src).id() == 1) {
        continue;
      }
      std::string block_name = cross() ? ImportDependencies(src) : "";
      Entity copy = to_.AddEntity(target, Strip(src, true));
      if (!block_name.empty()) copy.Set(2, block_name);
      if (!paper && copy.Find(67) >= 0) copy.SetPaperSpace(false);
      Map(src, copy);
      for (RecordId c : from_.db().children(id)) {
        Entity child_src = from_.entity(c);
        if (child_src.erased()) continue;
        if (cross()) ImportDependencies(child_src);
        RecordId n = to_.db().Create(Strip(child_src, true));
        to_.db().SetHandle(n, to_.AllocateHandle());
        to_.db().mutable_children(copy.id()).push_back(n);
        to_.db().SetParent(n, copy.id());
        Entity child = to_.entity(n);
        child.SetOwner(copy.handle());
        if (child.Find(67) >= 0 || paper) child.SetPaperSpace(paper);
        Map(child_src, child);
        CopyTree(child_src, child);
      }
      CopyTree(src, copy);
      out.push_back(copy);
    }
    for (Entity e : made_) Translate(e);
    for (auto& [copy, scale] : scales_) {
      SetViewportAnnotationScale(to_, copy, scale);
    }
    return out;
  }

 private:
  bool cross() const { return &from_ != &to_; }

  void Map(const Entity& src, const Entity& copy) {
    handles_[src.handle()] = copy.handle();
    if (cross()) ImportClass(src.type());
    made_.push_back(copy);
    if (cross() && src.type() == "VIEWPORT") {
      std::string scale = ViewportAnnotationScale(from_, src);
      if (!scale.empty()) scales_.emplace_back(copy, scale);
    }
  }

  // The source's tags without its handle and, for entities, without the
  // reactor group; values stored in the target.
  std::vector<Tag> Strip(const Entity& src, bool drop_reactors,
                         bool drop_xdict = false) {
    std::vector<Tag> out;
    auto t = src.tags();
    bool skipping = false;
    for (size_t i = 0; i < t.size(); ++i) {
      const Tag& tag = t[i];
      if (tag.code == 5 && i < 3) continue;
      if (tag.code == 102) {
        if ((drop_reactors && tag.value() == "{ACAD_REACTORS") ||
            (drop_xdict && tag.value() == "{ACAD_XDICTIONARY")) {
          skipping = true;
          continue;
        }
        if (skipping && tag.value() == "}") {
          skipping = false;
          continue;
        }
      }
      if (skipping) continue;
      if (reencode_ &&
          TypeOfCode(static_cast<int>(tag.code)) == ValueType::kString &&
          std::any_of(tag.value().begin(), tag.value().end(), [](char c) {
            return static_cast<unsigned char>(c) >= 0x80;
          })) {
        out.push_back(to_.MakeTag(
            tag.code, EncodeText(DecodeText(tag.value(), from_cp_), to_cp_)));
        continue;
      }
      out.push_back(to_.MakeTag(tag.code, tag.value()));
    }
    return out;
  }

  // Copies the extension dictionary tree of `src` under `copy`.
  void CopyTree(const Entity& src, Entity copy) {
    Entity xd = from_.FindByHandle(src.ExtensionDictionary());
    if (!xd.valid()) return;
    CopyObject(xd, copy.handle());
  }

  Entity CopyObject(const Entity& src, uint64_t owner) {
    Entity copy = to_.AddObject(Strip(src, false), owner);
    Map(src, copy);
    if (uint64_t xd = src.ExtensionDictionary()) {
      if (Entity d = from_.FindByHandle(xd); d.valid()) {
        CopyObject(d, copy.handle());
      }
    }
    if (src.type() == "DICTIONARY") {
      for (const Tag& t : src.tags()) {
        if (t.code != 360) continue;
        Entity child = from_.FindByHandle(ParseHandle(t.value()).value_or(0));
        if (child.valid() && child.owner() == src.handle()) {
          CopyObject(child, copy.handle());
        }
      }
    }
    return copy;
  }

  // Translates pointers among the copies; between drawings, drops the ones
  // that lead outside the copy (the owner was set already).
  void Translate(Entity e) {
    // The owner was set to a target handle already; every other pointer
    // still holds a source handle.
    int owner_at = -1;
    bool in_group = false;
    for (int i = 1; i < static_cast<int>(e.tags().size()); ++i) {
      const Tag& t = e.tags()[i];
      if (t.code == 102) {
        in_group = !t.value().empty() && t.value()[0] == '{';
      } else if (t.code == 330 && !in_group) {
        owner_at = i;
        break;
      }
    }
    for (int i = static_cast<int>(e.tags().size()) - 1; i >= 1; --i) {
      const Tag& t = e.tags()[i];
      if (!IsPointer(t.code) || i == owner_at) continue;
      uint64_t h = ParseHandle(t.value()).value_or(0);
      if (h == 0) continue;
      auto it = handles_.find(h);
      if (it != handles_.end()) {
        e.SetValueAt(i, FormatHandle(it->second));
      } else if (cross()) {
        if (t.code == 1005) {
          e.SetValueAt(i, "0");
        } else {
          e.EraseTags(i, i + 1);
        }
      }
    }
  }

  // ---- between drawings: what the entity names ----

  // Returns the block name a copied INSERT or DIMENSION must use when it
  // differs from the source's, else "".
  std::string ImportDependencies(const Entity& src) {
    ImportTableEntry("LAYER", src.GetString(8, "0"));
    if (auto lt = src.Get(6)) ImportTableEntry("LTYPE", *lt);
    std::string_view type = src.type();
    if (type == "TEXT" || type == "MTEXT" || type == "ATTRIB" ||
        type == "ATTDEF") {
      if (auto style = src.Get(7)) ImportTableEntry("STYLE", *style);
    }
    for (const Tag& t : src.tags()) {
      if (t.code == 1001) ImportAppId(t.value());
    }
    if (type == "INSERT" || type == "DIMENSION") {
      if (auto name = src.Get(2)) {
        std::string target = ImportBlock(*name);
        if (target != *name) return target;
      }
    }
    return "";
  }

  // Types that are not built in need their CLASS record in the target.
  void ImportClass(std::string_view type) {
    for (RecordId id : from_.classes()) {
      Entity c = from_.entity(id);
      if (c.erased() || c.GetString(1) != type) continue;
      to_.EnsureClass(type, c.GetString(2), static_cast<int>(c.GetInt(90, 0)),
                      c.GetInt(281, 0) != 0, c.GetString(3));
      return;
    }
  }

  void ImportAppId(std::string_view name) {
    if (to_.FindTableEntry("APPID", name).valid() || !to_.table("APPID")) {
      return;
    }
    to_.AddTableEntry("APPID", {to_.MakeTag(0, "APPID"),
                                to_.MakeTag(100, "AcDbSymbolTableRecord"),
                                to_.MakeTag(100, "AcDbRegAppTableRecord"),
                                to_.MakeTag(2, name), to_.MakeTag(70, "0")});
  }

  void ImportTableEntry(std::string_view table, std::string_view name) {
    if (name.empty() || EqualsNoCase(name, "BYLAYER") ||
        EqualsNoCase(name, "BYBLOCK") || !to_.table(table) ||
        to_.FindTableEntry(table, name).valid()) {
      return;
    }
    Entity src = from_.FindTableEntry(table, name);
    if (!src.valid()) return;
    if (table == "LAYER") {
      if (auto lt = src.Get(6)) ImportTableEntry("LTYPE", *lt);
    }
    std::vector<Tag> tags;
    for (const Tag& t : Strip(src, true, true)) {
      // Pointers into the source drawing (plot style, material, ...).
      if (IsPointer(t.code) && t.code != 330) continue;
      if (t.code == 330) continue;  // owner: the target's table
      tags.push_back(t);
    }
    for (size_t i = 0; i < tags.size(); ++i) {
      if (tags[i].code == 1001) ImportAppId(tags[i].value());
    }
    to_.AddTableEntry(table, std::move(tags));
  }

  // Makes sure `to` has block `name`; returns the name to use there.
  std::string ImportBlock(std::string_view name) {
    Block* src = from_.FindBlock(name);
    if (src == nullptr) return std::string(name);
    auto done = blocks_.find(src);
    if (done != blocks_.end()) return done->second;
    Entity begin =
        src->begin != kNoRecord ? from_.entity(src->begin) : Entity();
    int64_t flags = begin.valid() ? begin.GetInt(70, 0) : 0;
    std::string target_name(name);
    if (to_.FindBlock(name) != nullptr) {
      if ((flags & 1) == 0) return blocks_[src] = target_name;
      for (int n = 1;; ++n) {  // anonymous: a fresh *U name
        target_name = "*U" + std::to_string(n);
        if (to_.FindBlock(target_name) == nullptr) break;
      }
    }
    blocks_[src] = target_name;
    Block* dst = to_.AddBlock(target_name);
    if (begin.valid()) {
      Entity b = to_.entity(dst->begin);
      b.Set(70, FormatInt(flags));
      b.SetPoint(10, begin.GetPoint(10));
      if (auto path = begin.Get(1)) b.Set(1, *path);
      ImportTableEntry("LAYER", begin.GetString(8, "0"));
    }
    Copier inner(from_, to_);
    inner.blocks_ = blocks_;
    inner.Run(src->entities, dst);
    for (auto& [k, v] : inner.blocks_) blocks_[k] = v;
    return target_name;
  }

  Document& from_;
  Document& to_;
  // Text moves between drawings of different encodings.
  CodePage from_cp_;
  CodePage to_cp_;
  bool reencode_;
  std::unordered_map<uint64_t, uint64_t> handles_;
  std::vector<Entity> made_;
  std::vector<std::pair<Entity, std::string>> scales_;
  std::unordered_map<Block*, std::string> blocks_;
};

}  // namespace

std::vector<Entity> CopyEntities(Document& from, std::span<const RecordId> ids,
                                 Document& to, Block* target) {
  if (from.IsR12() || to.IsR12() || target == nullptr) return {};
  return Copier(from, to).Run(ids, target);
}

}  // namespace lmt::dxf

#include "dxfhost/symbol_tables.h"

#include <string>
#include <utility>
#include <vector>

#include "dxf/builders.h"
#include "dxfhost/item_index.h"

namespace lmt::dxfhost {
namespace {

// A table record wrapper's shared part.
class RecordBase {
 public:
  RecordBase(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : d_(std::move(d)), id_(id) {}
  const Drawing* drawing() const { return d_.get(); }
  dxf::RecordId id() const { return id_; }

 protected:
  Status Live() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (d_->entity(id_).erased()) return Status::NotFound("record deleted");
    return Status();
  }
  dxf::Entity E() const { return d_->entity(id_); }
  std::string RecordName() const { return d_->Decode(E().GetString(2)); }

  std::shared_ptr<Drawing> d_;
  dxf::RecordId id_;
};

class DxfLayer : public host::Layer, public RecordBase {
 public:
  DxfLayer(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : host::Layer(d->gate), RecordBase(d, id) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return RecordName();
  }
  Result<bool> DoFreeze() const override {
    if (Status s = Live(); !s.ok()) return s;
    return (E().GetInt(70, 0) & 1) != 0;
  }
  Status DoSetFreeze(bool frozen) override {
    if (Status s = Live(); !s.ok()) return s;
    if (frozen && IsActive()) {
      return Status::Refused("the current layer cannot be frozen");
    }
    SetFlag(1, frozen);
    return Status();
  }
  Result<bool> DoLock() const override {
    if (Status s = Live(); !s.ok()) return s;
    return (E().GetInt(70, 0) & 4) != 0;
  }
  Status DoSetLock(bool locked) override {
    if (Status s = Live(); !s.ok()) return s;
    SetFlag(4, locked);
    return Status();
  }
  Status DoDelete() override {
    if (Status s = Live(); !s.ok()) return s;
    std::string name = RecordName();
    if (dxf::EqualsNoCase(name, "0") || dxf::EqualsNoCase(name, "Defpoints")) {
      return Status::Refused("layer \"" + name + "\" cannot be deleted");
    }
    if (IsActive()) {
      return Status::Refused("the current layer cannot be deleted");
    }
    for (auto& block : d_->doc->blocks()) {
      for (dxf::RecordId id : block->entities) {
        dxf::Entity e = d_->entity(id);
        if (!e.erased() && dxf::EqualsNoCase(e.layer(), E().GetString(2))) {
          return Status::Refused("layer \"" + name + "\" is in use");
        }
      }
    }
    dxf::Table* table = d_->doc->table("LAYER");
    if (table == nullptr) return Status::NotFound("no layer table");
    std::erase(table->entries, id_);
    d_->doc->db().MarkErased(id_);
    return Status();
  }

 private:
  bool IsActive() const {
    return dxf::EqualsNoCase(d_->doc->HeaderValue("$CLAYER").value_or("0"),
                             E().GetString(2));
  }
  void SetFlag(int bit, bool on) {
    int64_t flags = E().GetInt(70, 0);
    flags = on ? (flags | bit) : (flags & ~static_cast<int64_t>(bit));
    E().SetInt(70, flags);
  }
};

class DxfLinetype : public host::Linetype, public RecordBase {
 public:
  DxfLinetype(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : host::Linetype(d->gate), RecordBase(d, id) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return RecordName();
  }
};

// TrueType fonts of a style are XDATA "ACAD" 1000 family, 1071 flags
// (italic 0x1000000, bold 0x2000000, charset << 8, pitch and family).
class DxfTextStyle : public host::TextStyle, public RecordBase {
 public:
  DxfTextStyle(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : host::TextStyle(d->gate), RecordBase(d, id) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return RecordName();
  }
  Result<host::Font> DoGetFont() const override {
    if (Status s = Live(); !s.ok()) return s;
    host::Font font;
    std::span<const dxf::Tag> xdata = E().XData("ACAD");
    for (const dxf::Tag& t : xdata) {
      if (t.code == 1000 && font.typeface.empty()) {
        font.typeface = d_->Decode(t.value());
      } else if (t.code == 1071) {
        int64_t f = dxf::ParseInt(t.value()).value_or(0);
        font.italic = (f & 0x1000000) != 0;
        font.bold = (f & 0x2000000) != 0;
        font.charset = static_cast<int32_t>((f >> 8) & 0xFF);
        font.pitch_and_family = static_cast<int32_t>(f & 0xFF);
      }
    }
    return font;
  }
  Status DoSetFont(const host::Font& font) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Entity e = E();
    // Drop the old ACAD group, append the new one.
    int begin = -1, end = static_cast<int>(e.tags().size());
    for (int i = e.XDataBegin(); i < static_cast<int>(e.tags().size()); ++i) {
      if (e.tags()[i].code != 1001) continue;
      if (begin >= 0) {
        end = i;
        break;
      }
      if (e.tags()[i].value() == "ACAD") begin = i;
    }
    if (begin >= 0) e.EraseTags(begin, end);
    int64_t flags = (font.italic ? 0x1000000 : 0) |
                    (font.bold ? 0x2000000 : 0) | ((font.charset & 0xFF) << 8) |
                    (font.pitch_and_family & 0xFF);
    std::vector<dxf::Tag> tags = {
        d_->doc->MakeTag(1001, "ACAD"),
        d_->doc->MakeTag(1000, d_->Encode(font.typeface)),
        d_->doc->MakeTag(1071, dxf::FormatInt(flags))};
    e.InsertTags(static_cast<int>(e.tags().size()), tags);
    if (!font.typeface.empty()) e.Set(3, d_->Encode(font.typeface) + ".ttf");
    return Status();
  }
  Result<std::string> DoFontFile() const override {
    if (Status s = Live(); !s.ok()) return s;
    return d_->Decode(E().GetString(3));
  }
  Status DoSetFontFile(std::string_view file) override {
    if (Status s = Live(); !s.ok()) return s;
    E().Set(3, d_->Encode(file));
    return Status();
  }
};

// Items of table `name` in file order, erased ones left out.
std::vector<dxf::RecordId> Entries(Drawing& d, std::string_view name) {
  std::vector<dxf::RecordId> out;
  if (dxf::Table* t = d.doc->table(name)) {
    for (dxf::RecordId id : t->entries) {
      if (!d.entity(id).erased()) out.push_back(id);
    }
  }
  return out;
}

// A symbol table collection: Count, Item, Items, and Add where `Add` is
// given.
template <typename Base, typename ItemPtr>
class TableCollection : public Base {
 public:
  using Maker = ItemPtr (*)(const std::shared_ptr<Drawing>&, dxf::RecordId);
  TableCollection(std::shared_ptr<Drawing> d, std::string table, Maker make)
      : Base(d->gate),
        d_(std::move(d)),
        table_(std::move(table)),
        make_(make) {}

 protected:
  Result<int32_t> DoCount() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return static_cast<int32_t>(Entries(*d_, table_).size());
  }
  Result<ItemPtr> DoItemAt(int32_t index) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<dxf::RecordId> ids = Entries(*d_, table_);
    if (Status s = CheckItemIndex(index, ids.size()); !s.ok()) return s;
    return make_(d_, ids[index]);
  }
  Result<ItemPtr> DoItemNamed(std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity e = d_->doc->FindTableEntry(table_, d_->Encode(name));
    if (!e.valid() || e.erased()) {
      return Status::NotFound("\"" + std::string(name) + "\" is not in the " +
                              table_ + " table");
    }
    return make_(d_, e.id());
  }
  Result<std::vector<ItemPtr>> DoItems() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<ItemPtr> out;
    for (dxf::RecordId id : Entries(*d_, table_)) out.push_back(make_(d_, id));
    return out;
  }

  std::shared_ptr<Drawing> d_;
  std::string table_;
  Maker make_;
};

host::LinetypePtr MakeLinetype(const std::shared_ptr<Drawing>& d,
                               dxf::RecordId id) {
  return std::make_shared<DxfLinetype>(d, id);
}

class DxfLayers : public TableCollection<host::Layers, host::LayerPtr> {
 public:
  explicit DxfLayers(std::shared_ptr<Drawing> d)
      : TableCollection(std::move(d), "LAYER", &MakeLayer) {}

 protected:
  Result<host::LayerPtr> DoAdd(std::string_view name) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity e = dxf::AddLayer(*d_->doc, d_->Encode(name));
    if (!e.valid()) {
      return Status::InvalidArgument("\"" + std::string(name) +
                                     "\" is not a valid layer name");
    }
    return MakeLayer(d_, e.id());
  }
};

class DxfLinetypes
    : public TableCollection<host::Linetypes, host::LinetypePtr> {
 public:
  explicit DxfLinetypes(std::shared_ptr<Drawing> d)
      : TableCollection(std::move(d), "LTYPE", &MakeLinetype) {}
};

class DxfTextStyles
    : public TableCollection<host::TextStyles, host::TextStylePtr> {
 public:
  explicit DxfTextStyles(std::shared_ptr<Drawing> d)
      : TableCollection(std::move(d), "STYLE", &MakeTextStyle) {}

 protected:
  Result<host::TextStylePtr> DoAdd(std::string_view name) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Entity e = dxf::AddTextStyle(*d_->doc, d_->Encode(name));
    if (!e.valid()) {
      return Status::InvalidArgument("\"" + std::string(name) +
                                     "\" is not a valid text style name");
    }
    return MakeTextStyle(d_, e.id());
  }
};

}  // namespace

host::LayerPtr MakeLayer(const std::shared_ptr<Drawing>& d, dxf::RecordId id) {
  return std::make_shared<DxfLayer>(d, id);
}
host::LayersPtr MakeLayers(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfLayers>(d);
}
host::LinetypesPtr MakeLinetypes(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfLinetypes>(d);
}
host::TextStylePtr MakeTextStyle(const std::shared_ptr<Drawing>& d,
                                 dxf::RecordId id) {
  return std::make_shared<DxfTextStyle>(d, id);
}
host::TextStylesPtr MakeTextStyles(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfTextStyles>(d);
}

dxf::RecordId RecordOf(const host::Layer& layer, const Drawing* d) {
  const auto* l = dynamic_cast<const DxfLayer*>(&layer);
  return l != nullptr && l->drawing() == d ? l->id() : dxf::kNoRecord;
}
dxf::RecordId RecordOf(const host::TextStyle& style, const Drawing* d) {
  const auto* t = dynamic_cast<const DxfTextStyle*>(&style);
  return t != nullptr && t->drawing() == d ? t->id() : dxf::kNoRecord;
}

}  // namespace lmt::dxfhost

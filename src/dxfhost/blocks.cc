#include "dxfhost/blocks.h"

#include <algorithm>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "dxf/builders.h"
#include "dxf/viewport_edit.h"
#include "dxfhost/block_insert.h"
#include "dxfhost/entities.h"
#include "dxfhost/item_index.h"
#include "dxfhost/layouts.h"

namespace lmt::dxfhost {
namespace {

class DxfBlock : public host::Block {
 public:
  DxfBlock(std::shared_ptr<Drawing> d, dxf::Block* block)
      : host::Block(d->gate),
        d_(std::move(d)),
        block_(block),
        record_(block->record_handle) {}
  const Drawing* drawing() const { return d_.get(); }
  // Null once the block is gone (its layout deleted).
  dxf::Block* block() const { return Present().ok() ? block_ : nullptr; }

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Present(); !s.ok()) return s;
    return d_->Decode(block_->name);
  }
  Result<bool> DoIsXRef() const override {
    if (Status s = Present(); !s.ok()) return s;
    return (Flags() & 4) != 0;
  }
  Result<host::Point> DoOrigin() const override {
    if (Status s = Present(); !s.ok()) return s;
    if (block_->begin == dxf::kNoRecord) return host::Point{0, 0, 0};
    // For a reference this is the base point the file keeps, which the CAD
    // program takes from the referenced drawing's $INSBASE when it loads
    // it; the placement of the references agrees with it either way.
    dxf::Vec3 p = d_->entity(block_->begin).GetPoint(10);
    return host::Point{p.x, p.y, p.z};
  }
  Result<bool> DoIsLayout() const override {
    if (Status s = Present(); !s.ok()) return s;
    return !d_->SpaceName(block_).empty();
  }
  Result<host::LayoutPtr> DoLayout() const override {
    if (Status s = Present(); !s.ok()) return s;
    // Asked for every viewport's block: the tab list's index, not a walk.
    const LayoutInfo info = d_->LayoutOfBlock(block_);
    if (info.block == block_) return MakeLayout(d_, info);
    return Status::NotFound("block \"" + block_->name + "\" is no layout");
  }
  Result<int32_t> DoCount() const override {
    if (Status s = Present(); !s.ok()) return s;
    return static_cast<int32_t>(Members().second.size());
  }
  Result<host::EntityPtr> DoItemAt(int32_t index) const override {
    if (Status s = Present(); !s.ok()) return s;
    auto [owner, ids] = Members();
    if (Status s = CheckItemIndex(index, ids.size()); !s.ok()) return s;
    return MakeEntity(owner, ids[index]);
  }
  Result<std::vector<host::EntityPtr>> DoItems() const override {
    if (Status s = Present(); !s.ok()) return s;
    auto [owner, ids] = Members();
    std::vector<host::EntityPtr> out;
    for (dxf::RecordId id : ids) out.push_back(MakeEntity(owner, id));
    return out;
  }
  Result<host::PViewportPtr> DoAddPViewport(const host::Point& center,
                                            double width,
                                            double height) override {
    if (Status s = Present(); !s.ok()) return s;
    if (d_->IsModel(block_) || d_->SpaceName(block_).empty()) {
      return Status::NotSupported(
          "viewports can only be added to a paper-space layout");
    }
    if (!(width > 0) || !(height > 0)) {
      return Status::InvalidArgument(
          "viewport width and height must be positive");
    }
    // The next free number of its layout; made switched off, as the CAD
    // program leaves it until Display, and showing model space 1:1 around
    // the origin until the caller sets its view.
    int id = 1;
    for (dxf::RecordId rid : block_->entities) {
      dxf::Entity e = d_->entity(rid);
      if (e.erased() || e.type() != "VIEWPORT") continue;
      id = std::max(id, dxf::Viewport(e).id());
    }
    dxf::ViewportSettings settings;
    settings.center = dxf::Vec3{center.x, center.y, center.z};
    settings.width = width;
    settings.height = height;
    settings.view_height = height;
    settings.id = id + 1;
    settings.on = false;
    settings.layer = std::string(d_->doc->HeaderValue("$CLAYER").value_or("0"));
    dxf::Viewport vp = dxf::AddViewport(*d_->doc, block_, settings);
    if (!vp.valid()) {
      return Status::NotSupported(
          "this drawing's release has no viewports of layouts");
    }
    // Viewport::id() is the viewport number (69); the record is Entity's.
    return host::As<host::PViewport>(MakeEntity(d_, vp.Entity::id()));
  }
  Result<host::MTextPtr> DoAddMText(const host::Point& p, double width,
                                    std::string_view text) override {
    if (Status s = Present(); !s.ok()) return s;
    std::string layer(d_->doc->HeaderValue("$CLAYER").value_or("0"));
    std::string style(d_->doc->HeaderValue("$TEXTSTYLE").value_or("Standard"));
    double height =
        dxf::ParseDouble(d_->doc->HeaderValue("$TEXTSIZE").value_or("2.5"))
            .value_or(2.5);
    dxf::Entity e = dxf::AddMText(
        *d_->doc, block_, dxf::Vec3{p.x, p.y, p.z}, height, d_->Encode(text),
        dxf::EntityStyle{layer, 256}, width, 1, style);
    if (!e.valid()) {
      return Status::NotSupported("this drawing's release has no MTEXT");
    }
    return host::As<host::MText>(MakeEntity(d_, e.id()));
  }
  Result<host::PolylinePtr> DoAddLightWeightPolyline(
      const std::vector<double>& coordinates) override {
    if (Status s = Present(); !s.ok()) return s;
    if (coordinates.size() < 4 || coordinates.size() % 2 != 0) {
      return Status::InvalidArgument(
          "a polyline needs an even number of coordinates, two points at "
          "least");
    }
    std::vector<dxf::LwVertex> v;
    for (size_t i = 0; i + 1 < coordinates.size(); i += 2) {
      v.push_back(dxf::LwVertex{coordinates[i], coordinates[i + 1]});
    }
    std::string layer(d_->doc->HeaderValue("$CLAYER").value_or("0"));
    dxf::Entity e = dxf::AddLwPolyline(*d_->doc, block_, v, false,
                                       dxf::EntityStyle{layer, 256});
    if (!e.valid()) {
      return Status::NotSupported("this drawing's release has no LWPOLYLINE");
    }
    return host::As<host::Polyline>(MakeEntity(d_, e.id()));
  }
  Result<host::TextPtr> DoAddText(std::string_view text, const host::Point& p,
                                  double height) override {
    if (Status s = Present(); !s.ok()) return s;
    if (!(height > 0)) {
      return Status::InvalidArgument("text height must be positive");
    }
    dxf::Document& doc = *d_->doc;
    std::string layer(doc.HeaderValue("$CLAYER").value_or("0"));
    std::string style(doc.HeaderValue("$TEXTSTYLE").value_or("Standard"));
    bool r12 = doc.IsR12();
    std::vector<dxf::Tag> tags;
    auto add = [&](int code, std::string_view value) {
      tags.push_back(doc.MakeTag(code, value));
    };
    add(0, "TEXT");
    if (!r12) add(100, "AcDbEntity");
    add(8, layer);
    if (!r12) add(100, "AcDbText");
    add(10, dxf::FormatDouble(p.x));
    add(20, dxf::FormatDouble(p.y));
    add(30, dxf::FormatDouble(p.z));
    add(40, dxf::FormatDouble(height));
    add(1, d_->Encode(text));
    add(7, style);
    if (!r12) add(100, "AcDbText");
    dxf::Entity e = doc.AddEntity(block_, std::move(tags));
    if (!e.valid()) return Status::Refused("the text could not be added");
    return host::As<host::Text>(MakeEntity(d_, e.id()));
  }
  Result<host::BlockReferencePtr> DoInsertBlock(const host::Point& p,
                                                std::string_view name,
                                                double x_scale, double y_scale,
                                                double z_scale,
                                                double rotation) override {
    if (Status s = Present(); !s.ok()) return s;
    if (x_scale == 0 || y_scale == 0 || z_scale == 0) {
      return Status::InvalidArgument("a block's scale factors must not be 0");
    }
    Result<dxf::Block*> definition = DefinitionFor(*d_, name);
    if (!definition.ok()) return definition.status();
    if (*definition == block_) {
      return Status::InvalidArgument(
          "a block cannot hold a reference of itself");
    }
    Placement at;
    at.point = dxf::Vec3{p.x, p.y, p.z};
    at.scale = dxf::Vec3{x_scale, y_scale, z_scale};
    at.rotation = rotation * 180.0 / std::numbers::pi;
    dxf::RecordId id = AddReference(*d_, block_, **definition, at);
    return host::As<host::BlockReference>(MakeEntity(d_, id));
  }

 private:
  int Flags() const {
    if (block_->begin == dxf::kNoRecord) return 0;
    return static_cast<int>(d_->entity(block_->begin).GetInt(70, 0));
  }
  // The drawing that holds the block's entities (the referenced one for an
  // external reference) and their live records in order.
  std::pair<std::shared_ptr<Drawing>, std::vector<dxf::RecordId>> Members()
      const {
    std::shared_ptr<Drawing> owner = d_;
    const dxf::Block* block = block_;
    if (Flags() & 4) {
      owner = d_->Xref(*d_->doc, *block_);
      if (owner == nullptr) return {d_, {}};
      block = owner->doc->model_space();
    }
    std::vector<dxf::RecordId> ids;
    for (dxf::RecordId id : block->entities) {
      if (!owner->entity(id).erased()) ids.push_back(id);
    }
    return {owner, ids};
  }

  // Deleting a layout frees its block: the record handle, never reused,
  // tells whether `block_` still stands (R12 blocks have none and are
  // never deleted).
  Status Present() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (record_ != 0 && d_->doc->BlockByRecord(record_) != block_) {
      return Status::NotFound("the block was deleted");
    }
    return Status();
  }

  std::shared_ptr<Drawing> d_;
  dxf::Block* block_;
  uint64_t record_;
};

class DxfBlocks : public host::Blocks {
 public:
  explicit DxfBlocks(std::shared_ptr<Drawing> d)
      : host::Blocks(d->gate), d_(std::move(d)) {}

 protected:
  Result<int32_t> DoCount() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return static_cast<int32_t>(d_->doc->blocks().size());
  }
  Result<host::BlockPtr> DoItemAt(int32_t index) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    auto& blocks = d_->doc->blocks();
    if (Status s = CheckItemIndex(index, blocks.size()); !s.ok()) return s;
    return MakeBlock(d_, blocks[index].get());
  }
  Result<host::BlockPtr> DoItemNamed(std::string_view name) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    dxf::Block* b = d_->doc->FindBlock(d_->Encode(name));
    if (b == nullptr) {
      return Status::NotFound("block \"" + std::string(name) +
                              "\" does not exist");
    }
    return MakeBlock(d_, b);
  }
  Result<std::vector<host::BlockPtr>> DoItems() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    std::vector<host::BlockPtr> out;
    for (auto& b : d_->doc->blocks()) out.push_back(MakeBlock(d_, b.get()));
    return out;
  }

 private:
  std::shared_ptr<Drawing> d_;
};

}  // namespace

host::BlockPtr MakeBlock(const std::shared_ptr<Drawing>& d, dxf::Block* block) {
  return std::make_shared<DxfBlock>(d, block);
}
host::BlocksPtr MakeBlocks(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfBlocks>(d);
}

dxf::Block* BlockOf(const host::Block& block, const Drawing* d) {
  const auto* b = dynamic_cast<const DxfBlock*>(&block);
  return b != nullptr && b->drawing() == d ? b->block() : nullptr;
}

}  // namespace lmt::dxfhost

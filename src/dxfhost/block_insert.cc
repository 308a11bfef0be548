#include "dxfhost/block_insert.h"

#include <cmath>
#include <filesystem>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "dxf/builders.h"
#include "dxf/entity_copy.h"
#include "dxf/insert.h"

namespace lmt::dxfhost {
namespace {

constexpr double kDeg = std::numbers::pi / 180.0;

bool EndsWithNoCase(std::string_view text, std::string_view tail) {
  return text.size() >= tail.size() &&
         dxf::EqualsNoCase(text.substr(text.size() - tail.size()), tail);
}

std::filesystem::path Resolve(const Drawing& d, std::string_view name) {
  std::filesystem::path p{std::string(name)};
  if (p.is_relative() && !d.path.empty()) {
    std::filesystem::path beside =
        std::filesystem::path(d.path).parent_path() / p;
    std::error_code ec;
    if (std::filesystem::exists(beside, ec)) return beside;
  }
  return p;
}

Result<dxf::Block*> DefinitionFromFile(Drawing& d, std::string_view name) {
  const std::filesystem::path path = Resolve(d, name);
  const std::string stem = path.stem().string();
  dxf::Document& doc = *d.doc;
  // Once per drawing: a later insertion of the same file reuses the
  // definition, as the CAD programs do when the block name is taken.
  if (dxf::Block* existing = doc.FindBlock(d.Encode(stem))) return existing;
  if (!EndsWithNoCase(name, ".dxf")) {
    return Status::NotSupported("\"" + std::string(name) +
                                "\": only DXF drawings can be inserted here");
  }
  if (!dxf::IsValidName(doc, d.Encode(stem))) {
    return Status::InvalidArgument("\"" + stem +
                                   "\" cannot name a block in this drawing");
  }
  std::unique_ptr<dxf::Document> source;
  if (dxf::Status s = dxf::Document::Load(path.string(), &source); !s.ok()) {
    return Status::NotFound("cannot read \"" + std::string(name) +
                            "\": " + s.message());
  }
  if (doc.IsR12() || source->IsR12()) {
    return Status::NotSupported("\"" + std::string(name) +
                                "\": R12 drawings are not copied into blocks");
  }
  dxf::Block* block = doc.AddBlock(d.Encode(stem));
  std::vector<dxf::RecordId> ids;
  for (dxf::RecordId id : source->model_space()->entities) {
    if (!source->entity(id).erased()) ids.push_back(id);
  }
  dxf::CopyEntities(*source, ids, doc, block);
  // The file's insertion base is the block's base point.
  std::span<const dxf::Tag> base = source->HeaderTags("$INSBASE");
  if (!base.empty() && block->begin != dxf::kNoRecord) {
    dxf::Vec3 p;
    for (const dxf::Tag& tag : base) {
      double v = dxf::ParseDouble(tag.value()).value_or(0);
      if (tag.code == 10) p.x = v;
      if (tag.code == 20) p.y = v;
      if (tag.code == 30) p.z = v;
    }
    doc.entity(block->begin).SetPoint(10, p);
  }
  return block;
}

// Where a point of the definition lands: scaled from the base point,
// rotated about it and moved to the insertion point (world Z extrusion).
struct Transform {
  dxf::Vec3 base;
  Placement at;

  dxf::Vec3 Apply(dxf::Vec3 p) const {
    const double x = (p.x - base.x) * at.scale.x;
    const double y = (p.y - base.y) * at.scale.y;
    const double z = (p.z - base.z) * at.scale.z;
    const double c = std::cos(at.rotation * kDeg);
    const double s = std::sin(at.rotation * kDeg);
    return {at.point.x + x * c - y * s, at.point.y + x * s + y * c,
            at.point.z + z};
  }
};

// An ATTDEF's tags as an ATTRIB's: no handle, owner or reactors (the caller
// gives new ones), the subclass renamed and the prompt dropped.
std::vector<dxf::Tag> AttribTags(dxf::Document& doc, const dxf::Entity& def) {
  std::vector<dxf::Tag> out;
  std::span<const dxf::Tag> tags = def.tags();
  bool in_definition = false, skipping = false, entity_data = false;
  for (size_t i = 0; i < tags.size(); ++i) {
    const dxf::Tag& tag = tags[i];
    if (tag.code == 0) {
      out.push_back(doc.MakeTag(0, "ATTRIB"));
      continue;
    }
    if (tag.code == 5 && i < 3) continue;
    if (tag.code == 102) {
      skipping = tag.value() != "}";
      continue;
    }
    if (skipping) continue;
    if (tag.code == 330 && !entity_data) continue;
    if (tag.code == 100) {
      entity_data = true;
      in_definition = tag.value() == "AcDbAttributeDefinition";
      out.push_back(doc.MakeTag(100, in_definition
                                         ? std::string_view("AcDbAttribute")
                                         : tag.value()));
      continue;
    }
    if (tag.code == 3 && (in_definition || doc.IsR12())) continue;
    if (tag.code == 101) in_definition = false;
    out.push_back(doc.MakeTag(tag.code, tag.value()));
  }
  return out;
}

void PlaceAttrib(dxf::Entity e, const Transform& t) {
  e.SetPoint(10, t.Apply(e.GetPoint(10)));
  if (e.Find(11) >= 0) e.SetPoint(11, t.Apply(e.GetPoint(11)));
  e.SetDouble(40, e.GetDouble(40, 0) * std::abs(t.at.scale.y));
  if (t.at.scale.x != t.at.scale.y && t.at.scale.y != 0) {
    e.SetDouble(41, e.GetDouble(41, 1) * std::abs(t.at.scale.x / t.at.scale.y));
  }
  const double rotation = e.GetDouble(50, 0) + t.at.rotation;
  if (rotation != 0) {
    int after = e.Find(1);
    e.SetDouble(50, rotation, after >= 0 ? after + 1 : -1);
  }
}

dxf::RecordId AddChild(dxf::Document& doc, const dxf::Entity& parent,
                       std::vector<dxf::Tag> tags, bool paper) {
  dxf::RecordId n = doc.db().Create(std::move(tags));
  doc.db().SetHandle(n, doc.AllocateHandle());
  doc.db().mutable_children(parent.id()).push_back(n);
  doc.db().SetParent(n, parent.id());
  dxf::Entity child = doc.entity(n);
  if (!doc.IsR12()) child.SetOwner(parent.handle());
  if (paper || child.Find(67) >= 0) child.SetPaperSpace(paper);
  return n;
}

}  // namespace

bool NamesDrawingFile(std::string_view name) {
  return EndsWithNoCase(name, ".dxf") || EndsWithNoCase(name, ".dwg") ||
         name.find_first_of("/\\") != std::string_view::npos;
}

Result<dxf::Block*> DefinitionFor(Drawing& d, std::string_view name) {
  if (NamesDrawingFile(name)) return DefinitionFromFile(d, name);
  dxf::Block* block = d.doc->FindBlock(d.Encode(name));
  if (block == nullptr) {
    return Status::NotFound("block \"" + std::string(name) +
                            "\" does not exist");
  }
  return block;
}

dxf::RecordId AddReference(Drawing& d, dxf::Block* target,
                           const dxf::Block& definition, const Placement& at) {
  dxf::Document& doc = *d.doc;
  std::string layer(doc.HeaderValue("$CLAYER").value_or("0"));
  dxf::Entity insert =
      dxf::AddInsert(doc, target, definition.name, at.point, 1, at.rotation,
                     dxf::EntityStyle{layer, 256});
  if (at.scale.x != 1 || at.scale.y != 1 || at.scale.z != 1) {
    int after = insert.Find(30);
    insert.SetDouble(41, at.scale.x, after + 1);
    insert.SetDouble(42, at.scale.y, after + 2);
    insert.SetDouble(43, at.scale.z, after + 3);
  }

  Transform t{{}, at};
  if (definition.begin != dxf::kNoRecord) {
    t.base = doc.entity(definition.begin).GetPoint(10);
  }
  const bool paper = insert.paper_space();
  bool any = false;
  for (dxf::RecordId id : definition.entities) {
    dxf::Entity e = doc.entity(id);
    if (e.erased() || e.type() != "ATTDEF") continue;
    if (dxf::Attrib(e).flags() & 2) continue;  // constant: the definition's
    dxf::RecordId n = AddChild(doc, insert, AttribTags(doc, e), paper);
    PlaceAttrib(doc.entity(n), t);
    any = true;
  }
  if (any) {
    std::vector<dxf::Tag> seqend = {doc.MakeTag(0, "SEQEND")};
    if (!doc.IsR12()) seqend.push_back(doc.MakeTag(100, "AcDbEntity"));
    seqend.push_back(doc.MakeTag(8, layer));
    AddChild(doc, insert, std::move(seqend), paper);
    // 66: attributes follow, before the block name.
    insert.InsertTag(insert.Find(2), 66, "1");
  }
  return insert.id();
}

}  // namespace lmt::dxfhost

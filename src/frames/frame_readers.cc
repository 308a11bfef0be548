#include "frames/frame_readers.h"

#include <cctype>
#include <string_view>
#include <utility>
#include <vector>

#include "core/check.h"
#include "frames/block_transform.h"
#include "frames/frame_template.h"

namespace lmt::frames {
namespace {

// The progress text while a definition is walked.
constexpr std::string_view kWalkingBlock = "Получение данных из блока...";

std::string Upper(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return out;
}

Column PointColumn(int vertex, bool y) {
  return static_cast<Column>(static_cast<int>(Column::kPointX1) + 2 * vertex +
                             (y ? 1 : 0));
}

bool IsAnonymous(std::string_view block_name) {
  return block_name.size() >= 2 && block_name[0] == '*' &&
         (block_name[1] == 'U' || block_name[1] == 'u');
}

}  // namespace

FrameReader::FrameReader(host::Document& document, host::User& user,
                         ReaderOptions options, FrameTable& table)
    : document_(document),
      user_(user),
      options_(std::move(options)),
      table_(table) {}

bool FrameReader::Read(const host::Entity& entity, int row) {
  LMT_CHECK(row > 0 && row < table_.row_count());
  if (Result<uint64_t> id = entity.ObjectID(); id.ok()) {
    table_.SetCell(row, Column::kId, std::to_string(*id));
  }
  Result<std::string> object_name = entity.ObjectName();
  if (!object_name.ok()) return false;

  if (EqualsNoCase(*object_name, kPolylineName)) {
    if (const auto* polyline = dynamic_cast<const host::Polyline*>(&entity)) {
      ReadPolyline(*polyline, row);
    }
    Measure(row, 0);
    return true;
  }
  if (!EqualsNoCase(*object_name, kReferenceName)) return false;
  const auto* reference = dynamic_cast<const host::BlockReference*>(&entity);
  if (reference == nullptr) return false;

  Result<std::string> effective = reference->EffectiveName();
  Result<std::string> name = reference->Name();
  if (!options_.required_block_name.empty() && effective.ok() && name.ok() &&
      IsAnonymous(*name) &&
      !EqualsNoCase(*effective, options_.required_block_name)) {
    return false;  // another dynamic block that the "*U" pattern let in
  }
  double angle = 0;  // of the corners: 0 when they come from the box
  if (name.ok()) {
    Definition& definition = DefinitionOf(*name);
    if (definition.is_xref.has_value()) {
      angle = ReadReference(*reference, definition, *definition.is_xref, row);
    }
  }
  if (effective.ok()) table_.SetCell(row, Column::kBlockName, *effective);
  Measure(row, angle);
  return true;
}

FrameReader::Definition& FrameReader::DefinitionOf(const std::string& name) {
  auto [it, added] = definitions_.try_emplace(Upper(name));
  Definition& definition = it->second;
  if (!added) return definition;
  if (!blocks_read_) {
    blocks_read_ = true;
    if (Result<host::BlocksPtr> blocks = document_.Blocks(); blocks.ok()) {
      blocks_ = *blocks;
    }
  }
  if (blocks_ == nullptr) return definition;
  if (Result<host::BlockPtr> block = blocks_->Item(name); block.ok()) {
    definition.block = *block;
    if (Result<bool> xref = definition.block->IsXRef(); xref.ok()) {
      definition.is_xref = *xref;
    }
  }
  return definition;
}

void FrameReader::WriteVertex(int row, int vertex, Point p) {
  table_.SetNumber(row, PointColumn(vertex, false), p.x);
  table_.SetNumber(row, PointColumn(vertex, true), p.y);
}

void FrameReader::ReadPolyline(const host::Polyline& polyline, int row) {
  if (options_.vertex_by_vertex) {
    for (int i = 0; i < 4; ++i) {
      if (Result<host::Point> p = polyline.Coordinate(i); p.ok()) {
        WriteVertex(row, i, {p->x, p->y});
      }
    }
  } else if (Result<std::vector<double>> xy = polyline.Coordinates(); xy.ok()) {
    // Fewer than four vertices (possible only without a template, which
    // then has no vertex criterion) write what there is.
    for (int i = 0; i < 4 && 2 * i + 1 < static_cast<int>(xy->size()); ++i) {
      WriteVertex(row, i, {(*xy)[2 * i], (*xy)[2 * i + 1]});
    }
  }
  table_.SetCell(row, Column::kTyp, std::string(kTypPolyline));
}

void FrameReader::ReadAttribute(const host::BlockReference& reference,
                                Definition& definition, int row) {
  const std::string& tag = options_.attribute_tag;
  std::optional<std::string> value;
  auto walk = [&](const std::vector<host::AttributePtr>& attributes) {
    for (const host::AttributePtr& attribute : attributes) {
      Result<std::string> attribute_tag = attribute->TagString();
      if (!attribute_tag.ok() || !EqualsNoCase(*attribute_tag, tag)) continue;
      if (Result<std::string> text = attribute->TextString(); text.ok()) {
        value = *text;
      }
    }
  };
  if (Result<bool> has = reference.HasAttributes(); has.ok() && *has) {
    if (auto attributes = reference.GetAttributes(); attributes.ok()) {
      walk(*attributes);
    }
  }
  // Constant attributes live in the definition: the same for every
  // reference of it, so they are read once.
  if (!definition.constants_read) {
    definition.constants_read = true;
    std::optional<std::string> reference_value = std::move(value);
    value.reset();
    if (auto constants = reference.GetConstantAttributes(); constants.ok()) {
      walk(*constants);
    }
    definition.constant_attribute = std::move(value);
    value = std::move(reference_value);
  }
  if (definition.constant_attribute) value = definition.constant_attribute;
  table_.SetCell(row, Column::kAttribute, value.value_or(""));
}

void FrameReader::WalkDefinition(Definition& definition) {
  definition.walked = true;
  if (definition.block == nullptr) return;
  // The inner polyline is drawn relative to the base point, which the
  // reference puts on its insertion point.
  if (Result<host::Point> origin = definition.block->Origin(); origin.ok()) {
    definition.origin = {origin->x, origin->y};
  }
  Result<std::vector<host::EntityPtr>> entities = definition.block->Items();
  if (!entities.ok()) return;
  const int count = static_cast<int>(entities->size());
  for (int i = 0; i < count; ++i) {
    user_.SetStatusText(std::string(kWalkingBlock) + " " +
                        std::to_string(i + 1) + " / " + std::to_string(count));
    const host::EntityPtr& entity = (*entities)[i];
    Result<std::string> object_name = entity->ObjectName();
    if (!object_name.ok() || !EqualsNoCase(*object_name, kPolylineName)) {
      continue;
    }
    host::PolylinePtr polyline = host::As<host::Polyline>(entity);
    if (polyline == nullptr) continue;
    if (Result<bool> visible = polyline->Visible(); !visible.ok() || !*visible)
      continue;
    Result<std::vector<double>> xy = polyline->Coordinates();
    if (!xy.ok()) continue;
    const size_t vertices = xy->size() / 2;
    if (vertices < 4 || vertices > 5) continue;
    // No break: of several qualifying polylines the last one is the frame.
    definition.inner = FirstFourVertices(*xy);
  }
}

double FrameReader::ReadReference(const host::BlockReference& reference,
                                  Definition& definition, bool xref, int row) {
  if (!xref && !options_.attribute_tag.empty()) {
    ReadAttribute(reference, definition, row);
  }
  Result<double> rotation = reference.Rotation();
  if (rotation.ok()) table_.SetNumber(row, Column::kAngle, *rotation);
  table_.SetCell(row, Column::kTyp, std::string(xref ? kTypXRef : kTypBlock));

  bool by_box = options_.block_mode == BlockSearchMode::kBoundingBox;
  if (options_.block_mode == BlockSearchMode::kBoxWhenUnrotated) {
    // An unreadable rotation counts as 0, as an empty value would.
    by_box = rotation.value_or(0) == 0;
  }
  if (by_box) {
    if (Result<host::BoundingBox> box = reference.GetBoundingBox(); box.ok()) {
      table_.SetCorners(
          row, {Point{box->min.x, box->min.y}, Point{box->max.x, box->min.y},
                Point{box->max.x, box->max.y}, Point{box->min.x, box->max.y}});
    }
    return 0;  // the box is axis-aligned
  }
  if (!definition.walked) WalkDefinition(definition);
  if (!definition.inner) return 0;  // the corner cells stay empty
  BlockPlacement placement;
  placement.base = definition.origin;
  placement.rotation = rotation.value_or(0);
  if (Result<double> sx = reference.XScaleFactor(); sx.ok()) {
    placement.x_scale = *sx;
  }
  if (Result<double> sy = reference.YScaleFactor(); sy.ok()) {
    placement.y_scale = *sy;
  }
  if (Result<host::Point> at = reference.InsertionPoint(); at.ok()) {
    placement.insertion = {at->x, at->y};
  }
  table_.SetCorners(row, PlaceCorners(*definition.inner, placement));
  return placement.rotation;
}

void FrameReader::Measure(int row, double angle) {
  // Without four readable corners there is nothing to measure; the
  // measure cells stay as they are.
  std::optional<Quad> corners = table_.Corners(row);
  if (!corners) return;
  WriteMeasures(table_, row, MeasureFrame(*corners, angle, options_.measure));
}

}  // namespace lmt::frames

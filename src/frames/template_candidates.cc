#include "frames/template_candidates.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>

#include "core/check.h"
#include "core/text_case.h"
#include "frames/frame_template.h"
#include "host/block.h"
#include "host/entity.h"

namespace lmt::frames {
namespace {

struct Sides {
  double first = 0;
  double second = 0;
};

// A frame polyline has four or five vertices (the fifth closes it by hand),
// as the search takes them.
std::optional<Sides> FrameSides(const host::Polyline& polyline) {
  Result<std::vector<double>> xy = polyline.Coordinates();
  if (!xy.ok()) return std::nullopt;
  const size_t vertices = xy->size() / 2;
  if (vertices != 4 && vertices != 5) return std::nullopt;
  const std::vector<double>& c = *xy;
  return Sides{std::hypot(c[2] - c[0], c[3] - c[1]),
               std::hypot(c[4] - c[2], c[5] - c[3])};
}

// Sizes in a group key: drawings carry noise in the last digits of turned
// frames' corners, which must not split one frame size into two groups.
double Rounded(double v) { return std::round(v * 1000) / 1000; }

// What one block definition contributes, read once per name.
struct DefinitionInfo {
  bool xref = false;
  std::optional<Sides> inner;  // the last four-corner polyline inside
};

DefinitionInfo ReadDefinition(host::Blocks* blocks, const std::string& name) {
  DefinitionInfo info;
  if (blocks == nullptr) return info;
  Result<host::BlockPtr> block = blocks->Item(name);
  if (!block.ok()) return info;
  info.xref = (*block)->IsXRef().value_or(false);
  Result<std::vector<host::EntityPtr>> items = (*block)->Items();
  if (!items.ok()) return info;
  for (const host::EntityPtr& item : *items) {
    // The search takes the last visible one, and so do the sizes shown.
    host::PolylinePtr polyline = host::As<host::Polyline>(item);
    if (polyline && polyline->Visible().value_or(false)) {
      if (std::optional<Sides> sides = FrameSides(*polyline)) {
        info.inner = sides;
      }
    }
  }
  return info;
}

class Grouper {
 public:
  explicit Grouper(host::Database& database) {
    Result<host::BlocksPtr> blocks = database.Blocks();
    if (blocks.ok()) blocks_ = *blocks;
  }

  void Add(const host::EntityPtr& entity) {
    if (host::PolylinePtr polyline = host::As<host::Polyline>(entity)) {
      AddPolyline(*polyline);
    } else if (host::BlockReferencePtr reference =
                   host::As<host::BlockReference>(entity)) {
      AddReference(*reference);
    }
  }

  std::vector<CandidateGroup> Groups() {
    std::vector<CandidateGroup> groups;
    for (size_t index : order_) groups.push_back(groups_[index]);
    std::stable_sort(groups.begin(), groups.end(),
                     [](const CandidateGroup& a, const CandidateGroup& b) {
                       return a.count > b.count;
                     });
    return groups;
  }

 private:
  using Key = std::tuple<std::string, std::string, double, double>;

  void AddPolyline(const host::Polyline& polyline) {
    std::optional<Sides> sides = FrameSides(polyline);
    if (!sides) return;
    const std::string layer = polyline.Layer().value_or("");
    CandidateGroup group;
    group.kind = std::string(kKindPolyline);
    group.layer = layer;
    group.width = Rounded(sides->first);
    group.height = Rounded(sides->second);
    Count(Key(group.kind, core::FoldText(layer), group.width, group.height),
          std::move(group), polyline);
  }

  void AddReference(const host::BlockReference& reference) {
    Result<std::string> name = reference.EffectiveName();
    if (!name.ok() || name->empty()) name = reference.Name();
    if (!name.ok() || name->empty()) return;
    const DefinitionInfo& info = Definition(*name);
    // A block is a frame only by the polyline it holds; an external
    // reference is offered whatever it holds, as the search reads it.
    if (!info.xref && !info.inner) return;
    CandidateGroup group;
    group.kind = std::string(info.xref ? kKindXRef : kKindBlock);
    group.block_name = *name;
    if (info.inner) {
      group.width = Rounded(info.inner->first *
                            std::fabs(reference.XScaleFactor().value_or(1)));
      group.height = Rounded(info.inner->second *
                             std::fabs(reference.YScaleFactor().value_or(1)));
    }
    Count(Key(group.kind, core::FoldText(*name), 0, 0), std::move(group),
          reference);
  }

  const DefinitionInfo& Definition(const std::string& name) {
    const std::string key = core::FoldText(name);
    auto found = definitions_.find(key);
    if (found != definitions_.end()) return found->second;
    return definitions_.emplace(key, ReadDefinition(blocks_.get(), name))
        .first->second;
  }

  void Count(const Key& key, CandidateGroup group, const host::Entity& member) {
    auto [slot, inserted] = index_.emplace(key, groups_.size());
    if (inserted) {
      group.handle = member.Handle().value_or("");
      groups_.push_back(std::move(group));
      order_.push_back(slot->second);
    }
    CandidateGroup& counted = groups_[slot->second];
    ++counted.count;
    // A member whose handle the host refused cannot be picked; take the
    // next one that has a handle.
    if (counted.handle.empty()) counted.handle = member.Handle().value_or("");
  }

  host::BlocksPtr blocks_;
  std::map<std::string, DefinitionInfo> definitions_;
  std::map<Key, size_t> index_;
  std::vector<CandidateGroup> groups_;
  std::vector<size_t> order_;
};

bool IsReference(const CandidateGroup& g) { return !g.block_name.empty(); }

}  // namespace

Result<std::vector<CandidateGroup>> FindTemplateCandidates(
    host::Database& database) {
  Result<host::BlockPtr> model = database.ModelSpace();
  if (!model.ok()) return model.status();
  Result<std::vector<host::EntityPtr>> items = (*model)->Items();
  if (!items.ok()) return items.status();
  Grouper grouper(database);
  for (const host::EntityPtr& entity : *items) grouper.Add(entity);
  return grouper.Groups();
}

TemplateQuery ParseTemplateQuery(std::string_view text) {
  auto after = [&](std::string_view prefix) -> std::optional<std::string> {
    if (text.size() < prefix.size() ||
        !core::EqualsIgnoreCase(text.substr(0, prefix.size()), prefix)) {
      return std::nullopt;
    }
    return std::string(text.substr(prefix.size()));
  };
  if (core::EqualsIgnoreCase(text, "auto")) {
    return {TemplateQuery::Kind::kAuto, ""};
  }
  if (std::optional<std::string> name = after("block:")) {
    return {TemplateQuery::Kind::kBlock, *name};
  }
  if (std::optional<std::string> name = after("layer:")) {
    return {TemplateQuery::Kind::kLayer, *name};
  }
  return {TemplateQuery::Kind::kHandle, std::string(text)};
}

Result<CandidateGroup> ChooseCandidate(
    const std::vector<CandidateGroup>& groups, const TemplateQuery& query) {
  LMT_CHECK(query.kind != TemplateQuery::Kind::kHandle);
  // Groups come largest first, so the first match is the largest one.
  for (const CandidateGroup& g : groups) {
    const bool match =
        query.kind == TemplateQuery::Kind::kAuto ||
        (query.kind == TemplateQuery::Kind::kBlock && IsReference(g) &&
         core::EqualsIgnoreCase(g.block_name, query.value)) ||
        (query.kind == TemplateQuery::Kind::kLayer && !IsReference(g) &&
         core::EqualsIgnoreCase(g.layer, query.value));
    if (!match || g.handle.empty()) continue;
    if (query.kind == TemplateQuery::Kind::kAuto && groups.size() > 1 &&
        groups[1].count == g.count) {
      return Status::InvalidArgument(
          "two kinds of frame are equally common; choose one with "
          "--template block:NAME, layer:NAME or a handle");
    }
    return g;
  }
  switch (query.kind) {
    case TemplateQuery::Kind::kBlock:
      return Status::NotFound("no reference of block \"" + query.value +
                              "\" holds a frame in model space");
    case TemplateQuery::Kind::kLayer:
      return Status::NotFound("no four-corner polyline on layer \"" +
                              query.value + "\" in model space");
    default:
      return Status::NotFound("no frame candidates in model space");
  }
}

}  // namespace lmt::frames

#include "batch/drawing_walk.h"

#include <string>

namespace lmt::batch {
namespace {

ValueRule RuleOf(const core::AttributeGroup& g) {
  ValueRule rule;
  rule.mode = ValueModeFromIndex(g.option_value_atribut.selected());
  rule.new_value = g.uni_text_value_atribut.text();
  rule.search = g.uni_text_zam_sh_to_atribut.text();
  rule.replacement = g.uni_text_zam_na_atribut.text();
  rule.use_prefix = g.check_prefix_atribut.checked();
  rule.prefix = g.uni_text_prefix_atribut.text();
  rule.use_suffix = g.check_suffix_atribut.checked();
  rule.suffix = g.uni_text_suffix_atribut.text();
  return rule;
}

TextGroup TextGroupOf(const core::TextGroup& g) {
  TextGroup group;
  group.enabled = g.check_text.checked();
  group.find = g.uni_text_name_text.text();
  group.mode = ValueModeFromIndex(g.option_value_text.selected());
  // One field per mode in the window: the new text, or the replacement.
  group.replacement = group.mode == ValueMode::kNewValue
                          ? g.uni_text_value_text.text()
                          : g.uni_text_zam_na_text.text();
  group.use_prefix = g.check_prefix_text.checked();
  group.prefix = g.uni_text_prefix_text.text();
  group.use_suffix = g.check_suffix_text.checked();
  group.suffix = g.uni_text_suffix_text.text();
  return group;
}

// Walks layouts and definitions; `Visit` handles one entity and returns
// the effective name of a reference whose definition is to be walked, or
// "" for none.
template <typename Visit>
class Walker {
 public:
  Walker(host::Database& drawing, const ScopeOptions& scope,
         const host::User& user, WalkStats& stats, Visit visit)
      : drawing_(drawing),
        scope_(scope),
        user_(user),
        stats_(stats),
        visit_(std::move(visit)) {}

  void Run() {
    Result<host::LayoutsPtr> layouts = drawing_.Layouts();
    if (!layouts.ok()) return Skip(layouts.status());
    Result<std::vector<host::LayoutPtr>> items = (*layouts)->Items();
    if (!items.ok()) return Skip(items.status());
    for (const host::LayoutPtr& layout : *items) {
      if (user_.interrupted()) return;
      Result<std::string> name = layout->Name();
      if (!name.ok()) {
        Skip(name.status());
        continue;
      }
      if (!LayoutInScope(*name, scope_)) continue;
      Result<host::BlockPtr> block = layout->Block();
      if (!block.ok()) {
        Skip(block.status());
        continue;
      }
      ++stats_.layouts;
      WalkBlock(**block);
    }
  }

 private:
  void Skip(Status s) { stats_.skips.push_back(std::move(s)); }

  void WalkBlock(const host::Block& block) {
    Result<std::vector<host::EntityPtr>> entities = block.Items();
    if (!entities.ok()) return Skip(entities.status());
    for (const host::EntityPtr& entity : *entities) {
      if (user_.interrupted()) return;
      std::string definition = visit_(*entity, stats_);
      if (definition.empty() || !processed_.Add(definition)) continue;
      // Recorded before the walk, so a definition that (wrongly) contains
      // itself cannot recurse for ever.
      Result<host::BlocksPtr> blocks = drawing_.Blocks();
      if (!blocks.ok()) {
        Skip(blocks.status());
        continue;
      }
      Result<host::BlockPtr> nested = (*blocks)->Item(definition);
      if (!nested.ok()) {
        Skip(nested.status());
        continue;
      }
      ++stats_.definitions;
      WalkBlock(**nested);
    }
  }

  host::Database& drawing_;
  const ScopeOptions& scope_;
  const host::User& user_;
  WalkStats& stats_;
  Visit visit_;
  ProcessedDefinitions processed_;
};

template <typename Visit>
void Walk(host::Database& drawing, const ScopeOptions& scope,
          const host::User& user, WalkStats& stats, Visit visit) {
  Walker<Visit>(drawing, scope, user, stats, std::move(visit)).Run();
}

void RewriteAttributes(const host::BlockReference& reference,
                       const AttributeGroups& groups, WalkStats& stats) {
  Result<std::vector<host::AttributePtr>> attributes =
      reference.GetAttributes();
  if (!attributes.ok()) {
    stats.skips.push_back(attributes.status());
    return;
  }
  for (const host::AttributePtr& attribute : *attributes) {
    Result<std::string> tag = attribute->TagString();
    if (!tag.ok()) {
      stats.skips.push_back(tag.status());
      continue;
    }
    Result<std::string> value = attribute->TextString();
    if (!value.ok()) {
      stats.skips.push_back(value.status());
      continue;
    }
    std::optional<std::string> rewritten =
        RewriteAttribute(groups, *tag, *value);
    if (!rewritten) continue;
    // Written also when unchanged, as the window always did.
    if (Status s = attribute->SetTextString(*rewritten); !s.ok()) {
      stats.skips.push_back(s);  // the attribute keeps its value
      continue;
    }
    ++stats.written;
  }
}

template <typename T>
void RewriteTextObject(T& object, const TextOptions& options, TextObject kind,
                       WalkStats& stats) {
  Result<std::string> content = object.TextString();
  if (!content.ok()) {
    stats.skips.push_back(content.status());
    return;
  }
  std::optional<std::string> rewritten = RewriteText(options, kind, *content);
  if (!rewritten) return;
  if (Status s = object.SetTextString(*rewritten); !s.ok()) {
    stats.skips.push_back(s);
    return;
  }
  ++stats.written;
}

}  // namespace

AttributeRun AttributeRunOf(const core::OknoFunctionReplaceAtribut& w) {
  AttributeRun run;
  run.scope.layouts = LayoutScopeFromIndex(w.option_name_layouts.selected());
  run.scope.tab_name = w.uni_text_name_layouts.text();
  run.scope.only_named_block = w.option_name_block.selected() == 1;
  run.scope.block_name = w.uni_text_name_block.text();
  run.scope.nested_blocks = w.check_block_vnutri_bloka.checked();
  const core::AttributeGroup* groups[] = {&w.atribut1, &w.atribut2,
                                          &w.atribut3};
  for (int k = 0; k < 3; ++k) {
    run.groups[k].enabled = groups[k]->check_atribut.checked();
    run.groups[k].tag = groups[k]->uni_text_name_atribut.text();
    run.groups[k].rule = RuleOf(*groups[k]);
  }
  return run;
}

TextRun TextRunOf(const core::OknoFunctionReplaceText& w) {
  TextRun run;
  run.scope.layouts = LayoutScopeFromIndex(w.option_name_layouts.selected());
  run.scope.tab_name = w.uni_text_name_layouts.text();
  run.scope.only_named_block = w.option_name_block.selected() == 1;
  run.scope.block_name = w.uni_text_name_block.text();
  TextOptions& t = run.text;
  t.texts = w.check_text.checked();
  t.leaders = w.check_leader.checked();
  t.in_blocks = w.check_block.checked();
  t.use_list = w.option_text_or_list.selected() == 1;
  const core::TextGroup* groups[] = {&w.text1, &w.text2, &w.text3};
  for (int k = 0; k < 3; ++k) t.groups[k] = TextGroupOf(*groups[k]);
  for (const core::ReplaceListRow& row : w.replace_list) {
    t.list.push_back({row.find, row.replace});
  }
  t.list_match = ListMatchFromIndex(w.option_value_list.selected());
  t.list_use_prefix = w.check_prefix_list.checked();
  t.list_prefix = w.uni_text_prefix_list.text();
  t.list_use_suffix = w.check_suffix_list.checked();
  t.list_suffix = w.uni_text_suffix_list.text();
  return run;
}

WalkStats ReplaceAttributesIn(host::Database& drawing, const AttributeRun& run,
                              const host::User& user) {
  WalkStats stats;
  auto visit = [&run](const host::Entity& entity, WalkStats& s) {
    Result<std::string> kind = entity.ObjectName();
    if (!kind.ok()) {
      s.skips.push_back(kind.status());
      return std::string();
    }
    if (*kind != kBlockReferenceName) return std::string();
    const auto* reference = dynamic_cast<const host::BlockReference*>(&entity);
    if (reference == nullptr) return std::string();
    Result<std::string> name = reference->EffectiveName();
    if (!name.ok()) {
      s.skips.push_back(name.status());
      return std::string();
    }
    Result<bool> has = reference->HasAttributes();
    if (!has.ok()) {
      s.skips.push_back(has.status());
    } else if (*has && BlockInScope(*name, run.scope)) {
      RewriteAttributes(*reference, run.groups, s);
    }
    return run.scope.nested_blocks ? *name : std::string();
  };
  Walk(drawing, run.scope, user, stats, visit);
  return stats;
}

WalkStats ReplaceTextIn(host::Database& drawing, const TextRun& run,
                        const host::User& user) {
  WalkStats stats;
  auto visit = [&run](host::Entity& entity, WalkStats& s) {
    Result<std::string> kind = entity.ObjectName();
    if (!kind.ok()) {
      s.skips.push_back(kind.status());
      return std::string();
    }
    if (std::optional<TextObject> object = TextObjectFromName(*kind)) {
      if (!TextObjectInScope(*object, run.text)) return std::string();
      if (auto* text = dynamic_cast<host::Text*>(&entity)) {
        RewriteTextObject(*text, run.text, *object, s);
      } else if (auto* mtext = dynamic_cast<host::MText*>(&entity)) {
        RewriteTextObject(*mtext, run.text, *object, s);
      } else if (auto* leader = dynamic_cast<host::MLeader*>(&entity)) {
        RewriteTextObject(*leader, run.text, *object, s);
      }
      return std::string();
    }
    if (*kind != kBlockReferenceName || !run.text.in_blocks) {
      return std::string();
    }
    auto* reference = dynamic_cast<host::BlockReference*>(&entity);
    if (reference == nullptr) return std::string();
    Result<std::string> name = reference->EffectiveName();
    if (!name.ok()) {
      s.skips.push_back(name.status());
      return std::string();
    }
    return BlockInScope(*name, run.scope) ? *name : std::string();
  };
  Walk(drawing, run.scope, user, stats, visit);
  return stats;
}

}  // namespace lmt::batch

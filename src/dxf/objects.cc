#include "dxf/objects.h"

#include <algorithm>

#include "dxf/insert.h"

namespace lmt::dxf {

std::vector<std::pair<std::string_view, uint64_t>> DictionaryEntries(
    const Entity& dict) {
  std::vector<std::pair<std::string_view, uint64_t>> out;
  auto t = dict.tags();
  for (size_t i = 0; i + 1 < t.size(); ++i) {
    if (t[i].code == 3 && (t[i + 1].code == 350 || t[i + 1].code == 360)) {
      out.emplace_back(t[i].value(), ParseHandle(t[i + 1].value()).value_or(0));
    }
  }
  return out;
}

uint64_t RemoveFromDictionary(Entity dict, std::string_view key) {
  auto t = dict.tags();
  for (size_t i = 0; i + 1 < t.size(); ++i) {
    if (t[i].code == 3 && t[i].value() == key &&
        (t[i + 1].code == 350 || t[i + 1].code == 360)) {
      uint64_t h = ParseHandle(t[i + 1].value()).value_or(0);
      dict.EraseTags(static_cast<int>(i), static_cast<int>(i) + 2);
      return h;
    }
  }
  return 0;
}

std::string_view Layout::name() const {
  int i = FindIn("AcDbLayout", 1);
  return i >= 0 ? tags()[i].value() : std::string_view();
}

int Layout::tab_order() const {
  int i = FindIn("AcDbLayout", 71);
  return i >= 0 ? static_cast<int>(ParseInt(tags()[i].value()).value_or(0)) : 0;
}

uint64_t Layout::block_record() const {
  int i = FindIn("AcDbLayout", 330);
  return i >= 0 ? ParseHandle(tags()[i].value()).value_or(0) : 0;
}

uint64_t Layout::last_viewport() const {
  int i = FindIn("AcDbLayout", 331);
  return i >= 0 ? ParseHandle(tags()[i].value()).value_or(0) : 0;
}

std::vector<Layout> Layouts(Document& doc) {
  std::vector<Layout> out;
  Entity root = doc.root_dictionary();
  if (!root.valid()) return out;
  Entity dict = doc.FindByHandle(doc.DictionaryLookup(root, "ACAD_LAYOUT"));
  if (!dict.valid()) return out;
  // Tab orders read once each, not in every comparison of the sort.
  std::vector<std::pair<int, Layout>> keyed;
  for (const auto& [key, h] : DictionaryEntries(dict)) {
    Entity e = doc.FindByHandle(h);
    if (e.valid() && e.type() == "LAYOUT") {
      Layout l(e);
      keyed.emplace_back(l.tab_order(), l);
    }
  }
  std::stable_sort(
      keyed.begin(), keyed.end(),
      [](const auto& a, const auto& b) { return a.first < b.first; });
  out.reserve(keyed.size());
  for (const auto& k : keyed) out.push_back(k.second);
  return out;
}

Block* LayoutBlock(Document& doc, const Layout& layout) {
  return doc.BlockByRecord(layout.block_record());
}

std::string_view DictionaryVar(Document& doc, std::string_view name) {
  Entity root = doc.root_dictionary();
  if (!root.valid()) return {};
  Entity vars =
      doc.FindByHandle(doc.DictionaryLookup(root, "AcDbVariableDictionary"));
  if (!vars.valid()) return {};
  Entity var = doc.FindByHandle(doc.DictionaryLookup(vars, name));
  if (!var.valid()) return {};
  int i = var.FindIn("DictionaryVariables", 1);
  return i >= 0 ? var.tags()[i].value() : std::string_view();
}

Entity GetOrCreateExtensionDictionary(Document& doc, Entity owner) {
  if (doc.IsR12()) return Entity();
  if (Entity d = doc.FindByHandle(owner.ExtensionDictionary()); d.valid()) {
    return d;
  }
  std::vector<Tag> tags = {doc.MakeTag(0, "DICTIONARY"),
                           doc.MakeTag(100, "AcDbDictionary"),
                           doc.MakeTag(280, "1"), doc.MakeTag(281, "1")};
  Entity d = doc.AddObject(std::move(tags), owner.handle());
  owner.SetExtensionDictionary(d.handle());
  return d;
}

void SetAttribValue(Document& doc, Entity attrib, std::string_view text) {
  Attrib(attrib).SetValue(text);
  Entity xd = doc.FindByHandle(attrib.ExtensionDictionary());
  if (!xd.valid()) return;
  uint64_t h = RemoveFromDictionary(xd, "ACAD_MLATT");
  if (Entity x = doc.FindByHandle(h); x.valid()) doc.Erase(x);
}

}  // namespace lmt::dxf

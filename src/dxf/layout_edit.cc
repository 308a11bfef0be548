#include "dxf/layout_edit.h"

#include <algorithm>
#include <limits>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dxf/builders.h"
#include "dxf/viewport_edit.h"

namespace lmt::dxf {
namespace {

Entity LayoutDictionary(Document& doc) {
  Entity root = doc.root_dictionary();
  if (!root.valid()) return Entity();
  return doc.FindByHandle(doc.DictionaryLookup(root, "ACAD_LAYOUT"));
}

// A paper layout with where its tab number lies among its tags (-1 when
// it has none).
struct PaperTab {
  Layout layout;
  int number_at;
  bool operator==(const Layout& l) const { return layout == l; }
};

// The paper layouts by tab order, as Layouts() lists them. A split run
// deletes layouts one by one and lists them for each: each layout's
// subclass is walked once here for its name and number, not once per
// question.
std::vector<PaperTab> PaperTabs(Document& doc) {
  Entity root = doc.root_dictionary();
  if (!root.valid()) return {};
  Entity dict = doc.FindByHandle(doc.DictionaryLookup(root, "ACAD_LAYOUT"));
  if (!dict.valid()) return {};
  std::vector<std::pair<int, PaperTab>> keyed;
  for (const auto& [key, h] : DictionaryEntries(dict)) {
    Entity e = doc.FindByHandle(h);
    if (!e.valid() || e.type() != "LAYOUT") continue;
    std::string_view name;
    int number_at = -1;
    if (const int m = e.FindSubclass("AcDbLayout"); m >= 0) {
      const int end = e.SubclassEnd(m);
      auto t = e.tags();
      int name_at = -1;
      for (int i = m + 1; i < end && (name_at < 0 || number_at < 0); ++i) {
        if (t[i].code == 1 && name_at < 0) name_at = i;
        if (t[i].code == 71 && number_at < 0) number_at = i;
      }
      if (name_at >= 0) name = t[name_at].value();
    }
    if (EqualsNoCase(name, "Model")) continue;
    const int tab = number_at >= 0
                        ? static_cast<int>(
                              ParseInt(e.tags()[number_at].value()).value_or(0))
                        : 0;
    keyed.emplace_back(tab, PaperTab{Layout(e), number_at});
  }
  std::stable_sort(
      keyed.begin(), keyed.end(),
      [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<PaperTab> out;
  out.reserve(keyed.size());
  for (const auto& k : keyed) out.push_back(k.second);
  return out;
}

void Renumber(const std::vector<PaperTab>& paper) {
  for (size_t i = 0; i < paper.size(); ++i) {
    Layout l = paper[i].layout;
    const int at = paper[i].number_at;
    if (at < 0) continue;
    // Tabs before a deleted one keep their number: leaving them alone
    // spares the arena a copy per tab and keeps their records as read.
    const std::string number = FormatInt(static_cast<int64_t>(i) + 1);
    if (l.tags()[at].value() != number) l.SetValueAt(at, number);
  }
}

// Where the layout's tab number lies among its tags (the first 71 of its
// AcDbLayout subclass, as PaperTabs finds it); -1 when it has none.
int TabNumberAt(const Entity& e) {
  const int m = e.FindSubclass("AcDbLayout");
  if (m < 0) return -1;
  const int end = e.SubclassEnd(m);
  auto t = e.tags();
  for (int i = m + 1; i < end; ++i) {
    if (t[i].code == 71) return i;
  }
  return -1;
}

// Drops the entries of `dict` that name one of `handles`, in one copy of
// its tags.
void RemoveDictionaryEntries(Document& doc, Entity dict,
                             const std::unordered_set<uint64_t>& handles) {
  std::span<const Tag> t = dict.tags();
  std::vector<Tag> kept;
  kept.reserve(t.size());
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == 3 && i + 1 < t.size() &&
        (t[i + 1].code == 350 || t[i + 1].code == 360) &&
        handles.contains(ParseHandle(t[i + 1].value()).value_or(0))) {
      ++i;
      continue;
    }
    kept.push_back(t[i]);
  }
  if (kept.size() != t.size()) doc.db().Detach(dict.id()) = std::move(kept);
}

std::string FreePaperBlockName(Document& doc) {
  // Numbers may have gaps; starting at the block count finds a free one at
  // once in drawings with a thousand layouts.
  for (size_t n = doc.blocks().size();; ++n) {
    std::string name = "*Paper_Space" + std::to_string(n);
    if (doc.FindBlock(name) == nullptr) return name;
  }
}

// Value of `code` inside the subclass, or `fallback`.
double FieldDouble(const Entity& e, std::string_view subclass, int code,
                   double fallback = 0) {
  int i = e.FindIn(subclass, code);
  return i >= 0 ? ParseDouble(e.tags()[i].value()).value_or(fallback)
                : fallback;
}

void SetField(Entity e, std::string_view subclass, int code,
              std::string_view value) {
  int i = e.FindIn(subclass, code);
  if (i >= 0) e.SetValueAt(i, value);
}

// Paper limits of a page setup (CAD programs' arithmetic): the paper in
// layout units, rotated, shifted by the printable-area origin and the plot
// offset.
void PaperLimits(const Entity& layout, double* x0, double* y0, double* x1,
                 double* y1) {
  constexpr std::string_view kPs = "AcDbPlotSettings";
  double u = layout.FindIn(kPs, 72) >= 0 && FieldDouble(layout, kPs, 72) == 0
                 ? 25.4
                 : 1.0;
  double w = FieldDouble(layout, kPs, 44) / u;
  double h = FieldDouble(layout, kPs, 45) / u;
  int rotation = static_cast<int>(FieldDouble(layout, kPs, 73));
  // Margins left, bottom, right, top on the unrotated sheet; the ones that
  // end up at the lower left depend on the rotation.
  static constexpr int kShiftCodes[4][2] = {
      {40, 41}, {41, 40}, {42, 43}, {43, 42}};
  const int* codes = kShiftCodes[rotation & 3];
  if (rotation == 1 || rotation == 3) std::swap(w, h);
  double sx =
      (FieldDouble(layout, kPs, codes[0]) + FieldDouble(layout, kPs, 46)) / u;
  double sy =
      (FieldDouble(layout, kPs, codes[1]) + FieldDouble(layout, kPs, 47)) / u;
  if (!(w > 0) || !(h > 0)) {
    w = 297;
    h = 210;
  }
  *x0 = -sx;
  *y0 = -sy;
  *x1 = w - sx;
  *y1 = h - sy;
}

// The layout's view of its own paper, a little larger than the sheet; set
// again whenever the paper changes, so that the sheet opens centred.
ViewportSettings MainViewportSettings(const Layout& layout) {
  double x0, y0, x1, y1;
  PaperLimits(layout, &x0, &y0, &x1, &y1);
  ViewportSettings main;
  main.center = Vec3{(x0 + x1) / 2, (y0 + y1) / 2, 0};
  main.width = (x1 - x0) * 1.1;
  main.height = (y1 - y0) * 1.1;
  main.view_center_x = main.center.x;
  main.view_center_y = main.center.y;
  main.view_height = main.height;
  main.id = 1;
  main.status = 1;
  return main;
}

// A page setup for drawings without a paper layout to copy: no device, an
// A4 sheet turned to landscape, millimetres, plotted 1:1.
std::vector<Tag> DefaultPlotSettings(Document& doc) {
  std::vector<Tag> t;
  auto add = [&](int code, std::string_view v) {
    t.push_back(doc.MakeTag(code, v));
  };
  add(1, "");
  add(2, "none_device");
  add(4, "ISO_A4_(210.00_x_297.00_MM)");
  add(6, "");
  for (int code : {40, 41, 42, 43}) add(code, "0.0");
  add(44, "210.0");
  add(45, "297.0");
  for (int code : {46, 47, 48, 49, 140, 141}) add(code, "0.0");
  add(142, "1.0");
  add(143, "1.0");
  add(70, "688");
  add(72, "1");
  add(73, "1");
  add(74, "5");
  add(7, "");
  add(75, "16");
  add(147, "1.0");
  if (doc.version() >= "AC1018") {  // shade plot codes
    add(76, "0");
    add(77, "2");
    add(78, "300");
  }
  add(148, "0.0");
  add(149, "0.0");
  return t;
}

// The AcDbPlotSettings codes of `from` as tags stored in `doc`.
std::vector<Tag> PlotSettingsOf(Document& doc, const Entity& from) {
  std::vector<Tag> out;
  int m = from.FindSubclass("AcDbPlotSettings");
  if (m < 0) return out;
  int end = from.SubclassEnd(m);
  bool old = doc.version() < "AC1018";
  for (int i = m + 1; i < end; ++i) {
    const Tag& tag = from.tags()[i];
    if (old && (tag.code == 76 || tag.code == 77 || tag.code == 78)) continue;
    if (doc.version() < "AC1015" && tag.code == 333) continue;
    out.push_back(doc.MakeTag(tag.code, tag.value()));
  }
  return out;
}

void SetLimits(Layout layout) {
  double x0, y0, x1, y1;
  PaperLimits(layout, &x0, &y0, &x1, &y1);
  SetField(layout, "AcDbLayout", 10, FormatDouble(x0));
  SetField(layout, "AcDbLayout", 20, FormatDouble(y0));
  SetField(layout, "AcDbLayout", 11, FormatDouble(x1));
  SetField(layout, "AcDbLayout", 21, FormatDouble(y1));
}

Status NotFreeName(std::string_view name) {
  return Status::InvalidArgument("\"" + std::string(name) +
                                 "\" is not a free layout name");
}

// The LAYOUT object of `block` with page setup `plot`, entered in the
// layout dictionary `dict` and linked both ways with the block record.
Layout LinkLayout(Document& doc, Entity dict, Block* block,
                  std::string_view name, int tab, std::vector<Tag> plot) {
  std::vector<Tag> t = {doc.MakeTag(0, "LAYOUT"),
                        doc.MakeTag(100, "AcDbPlotSettings")};
  t.insert(t.end(), plot.begin(), plot.end());
  auto add = [&](int code, std::string_view v) {
    t.push_back(doc.MakeTag(code, v));
  };
  add(100, "AcDbLayout");
  add(1, name);
  add(70, "1");
  add(71, FormatInt(tab));
  for (int code : {10, 20, 11, 21, 12, 22, 32}) add(code, "0.0");
  for (int code : {14, 24, 34}) add(code, "1e+20");
  for (int code : {15, 25, 35}) add(code, "-1e+20");
  add(146, "0.0");
  for (int code : {13, 23, 33}) add(code, "0.0");
  add(16, "1.0");
  add(26, "0.0");
  add(36, "0.0");
  add(17, "0.0");
  add(27, "1.0");
  add(37, "0.0");
  add(76, "0");
  add(330, FormatHandle(block->record_handle));
  add(331, "0");
  Layout layout(doc.AddObject(std::move(t), dict.handle()));
  layout.AddReactor(dict.handle());
  SetLimits(layout);
  Entity record = doc.FindByHandle(block->record_handle);
  if (record.valid()) record.Set(340, FormatHandle(layout.handle()));
  doc.AddToDictionary(dict, name, layout.handle());
  return layout;
}

}  // namespace

Status AddLayoutsOfSpaces(Document& doc) {
  Entity root = doc.root_dictionary();
  Block* model = doc.model_space();
  if (!root.valid() || model == nullptr) {
    return Status::InvalidArgument(
        "the drawing has no root dictionary or no model space");
  }
  Entity dict = LayoutDictionary(doc);
  if (!dict.valid()) {
    dict = doc.AddObject(
        {doc.MakeTag(0, "DICTIONARY"), doc.MakeTag(100, "AcDbDictionary"),
         doc.MakeTag(281, "1")},
        root.handle());
    dict.AddReactor(root.handle());
    doc.AddToDictionary(root, "ACAD_LAYOUT", dict.handle());
  }
  if (!doc.FindByHandle(doc.DictionaryLookup(dict, "Model")).valid()) {
    std::vector<Tag> plot = DefaultPlotSettings(doc);
    for (Tag& tag : plot) {
      // Plot settings flag 1024: the page setup of model space.
      if (tag.code == 70) tag = doc.MakeTag(70, "1712");
    }
    LinkLayout(doc, dict, model, "Model", 0, std::move(plot));
  }
  Block* paper = doc.paper_space();
  const std::vector<Layout> all = Layouts(doc);
  if (paper == nullptr ||
      std::any_of(all.begin(), all.end(),
                  [](const Layout& l) { return !l.is_model(); })) {
    return Status::Ok();
  }
  Layout layout =
      LinkLayout(doc, dict, paper, "Layout1", 1, DefaultPlotSettings(doc));
  if (Entity main = MainViewport(doc, layout); main.valid()) {
    SetField(layout, "AcDbLayout", 331, FormatHandle(main.handle()));
  }
  return Status::Ok();
}

Layout FindLayout(Document& doc, std::string_view name) {
  for (const Layout& l : Layouts(doc)) {
    if (EqualsNoCase(l.name(), name)) return l;
  }
  return Layout(Entity());
}

bool IsFreeLayoutName(Document& doc, std::string_view name) {
  return IsValidName(doc, name) && !EqualsNoCase(name, "Model") &&
         !FindLayout(doc, name).valid();
}

Status AddLayout(Document& doc, std::string_view name, Layout* out,
                 const KnownLayouts* known) {
  if (doc.IsR12()) {
    return Status::InvalidArgument(
        "R12 drawings have a single paper space and no layouts");
  }
  // Without `known`, one reading of the layout list serves every question
  // below.
  const bool check_name = known == nullptr || !known->name_is_free;
  std::vector<Layout> all;
  if (known == nullptr || check_name) all = Layouts(doc);
  const bool taken =
      check_name && (EqualsNoCase(name, "Model") ||
                     std::any_of(all.begin(), all.end(), [&](const Layout& l) {
                       return EqualsNoCase(l.name(), name);
                     }));
  if (!IsValidName(doc, name) || taken) {
    return NotFreeName(name);
  }
  Entity dict = LayoutDictionary(doc);
  if (!dict.valid()) {
    return Status::InvalidArgument("the drawing has no layout dictionary");
  }
  Layout first_paper{Entity()};
  int tab = 0;
  if (known != nullptr) {
    first_paper = known->first_paper;
    tab = known->last_tab_order;
  } else {
    for (const Layout& l : all) {
      if (!l.is_model() && !first_paper.valid()) first_paper = l;
      tab = std::max(tab, l.tab_order());
    }
  }
  std::string block_name =
      doc.paper_space() == nullptr ? "*Paper_Space" : FreePaperBlockName(doc);
  Block* block = doc.AddBlock(block_name);
  std::vector<Tag> plot = first_paper.valid() ? PlotSettingsOf(doc, first_paper)
                                              : DefaultPlotSettings(doc);
  Layout layout = LinkLayout(doc, dict, block, name, tab + 1, std::move(plot));
  Viewport vp = AddViewport(doc, block, MainViewportSettings(layout));
  SetField(layout, "AcDbLayout", 331, FormatHandle(vp.handle()));
  if (out != nullptr) *out = layout;
  return Status::Ok();
}

Status RenameLayout(Document& doc, Layout layout, std::string_view name) {
  if (!layout.valid() || layout.is_model()) {
    return Status::InvalidArgument("the Model layout cannot be renamed");
  }
  Layout same = FindLayout(doc, name);
  if (!IsValidName(doc, name) || EqualsNoCase(name, "Model") ||
      (same.valid() && !(same == layout))) {
    return NotFreeName(name);
  }
  Entity dict = LayoutDictionary(doc);
  std::string old(layout.name());
  if (dict.valid()) {
    RemoveFromDictionary(dict, old);
    doc.AddToDictionary(dict, name, layout.handle());
  }
  SetField(layout, "AcDbLayout", 1, name);
  return Status::Ok();
}

Status DeleteLayout(Document& doc, Layout layout) {
  if (!layout.valid() || layout.is_model()) {
    return Status::InvalidArgument("the Model layout cannot be deleted");
  }
  std::vector<PaperTab> paper = PaperTabs(doc);
  if (paper.size() <= 1) {
    return Status::InvalidArgument("the last paper layout cannot be deleted");
  }
  Block* block = LayoutBlock(doc, layout);
  if (block != nullptr && block == doc.paper_space()) {
    auto it = std::find(paper.begin(), paper.end(), layout);
    Layout next =
        (it + 1 != paper.end()) ? (it + 1)->layout : paper.front().layout;
    if (next == layout) next = paper.back().layout;
    if (Status s = MakeLayoutActive(doc, next); !s.ok()) return s;
  }
  if (Entity dict = LayoutDictionary(doc); dict.valid()) {
    RemoveFromDictionary(dict, layout.name());
  }
  if (block != nullptr) doc.RemoveBlock(block);
  doc.Erase(layout);
  std::erase_if(paper, [&](const PaperTab& p) { return p.layout == layout; });
  Renumber(paper);
  return Status::Ok();
}

Status DeleteLayouts(Document& doc, std::span<const Layout> layouts,
                     const std::function<Status(size_t)>& before_each) {
  auto one_by_one = [&]() -> Status {
    for (size_t k = 0; k < layouts.size(); ++k) {
      if (before_each) {
        if (Status s = before_each(k); !s.ok()) return s;
      }
      if (Status s = DeleteLayout(doc, layouts[k]); !s.ok()) return s;
    }
    return Status::Ok();
  };
  if (layouts.empty()) return Status::Ok();
  Entity dict = LayoutDictionary(doc);
  const std::vector<PaperTab> paper = PaperTabs(doc);
  if (!dict.valid() || paper.size() <= layouts.size()) return one_by_one();
  // One pass repeats the one-by-one deletions only when each tab's place
  // follows from the first listing: every tab numbered (renumbering then
  // keeps the order), every layout listed once, and each deleted layout the
  // first entry under its own name (what DeleteLayout removes).
  std::unordered_map<RecordId, size_t> place;
  for (size_t i = 0; i < paper.size(); ++i) {
    if (paper[i].number_at < 0 ||
        !place.emplace(paper[i].layout.id(), i).second) {
      return one_by_one();
    }
  }
  std::unordered_set<uint64_t> listed;
  std::unordered_map<std::string_view, uint64_t> first_under;
  for (const auto& [key, h] : DictionaryEntries(dict)) {
    if (!listed.insert(h).second) return one_by_one();
    first_under.try_emplace(key, h);
  }
  std::vector<size_t> at;
  std::vector<bool> doomed(paper.size(), false);
  for (const Layout& layout : layouts) {
    auto it = layout.valid() && !layout.is_model() ? place.find(layout.id())
                                                   : place.end();
    if (it == place.end() || doomed[it->second]) return one_by_one();
    auto key = first_under.find(layout.name());
    if (key == first_under.end() || key->second != layout.handle()) {
      return one_by_one();
    }
    doomed[it->second] = true;
    at.push_back(it->second);
  }

  // The tabs still there, in tab order, as a list to unlink from.
  constexpr size_t kNone = std::numeric_limits<size_t>::max();
  const size_t n = paper.size();
  std::vector<size_t> next(n), prev(n);
  for (size_t i = 0; i < n; ++i) {
    next[i] = i + 1 < n ? i + 1 : kNone;
    prev[i] = i > 0 ? i - 1 : kNone;
  }
  size_t head = 0, tail = n - 1;
  // Blocks go one by one, as the names of the blocks made active depend
  // on the blocks left at the time; the rest waits for the end.
  Status failure = Status::Ok();
  size_t done = 0;
  for (; done < at.size(); ++done) {
    if (before_each) {
      failure = before_each(done);
      if (!failure.ok()) break;
    }
    const size_t i = at[done];
    Block* block = LayoutBlock(doc, paper[i].layout);
    if (block != nullptr && block == doc.paper_space()) {
      size_t successor = next[i] != kNone ? next[i] : head;
      if (successor == i) successor = tail;
      failure = MakeLayoutActive(doc, paper[successor].layout);
      if (!failure.ok()) break;
    }
    if (block != nullptr) doc.RemoveBlock(block);
    (prev[i] != kNone ? next[prev[i]] : head) = next[i];
    (next[i] != kNone ? prev[next[i]] : tail) = prev[i];
  }
  if (done == 0) return failure;

  std::unordered_set<uint64_t> handles;
  std::vector<Entity> erased;
  for (size_t k = 0; k < done; ++k) {
    handles.insert(paper[at[k]].layout.handle());
    erased.push_back(paper[at[k]].layout);
  }
  RemoveDictionaryEntries(doc, dict, handles);
  doc.EraseAll(erased);
  // Each deletion renumbered the tabs left: a tab's number became its
  // place after the first deletion, then changed as it moved up, ending at
  // its last place. The same edits, without the steps between.
  const size_t first = at[0];
  size_t place_now = 0;
  for (size_t i = head; i != kNone; i = next[i]) {
    ++place_now;
    Layout l = paper[i].layout;
    const int number_at = TabNumberAt(l);
    if (number_at < 0) continue;
    const size_t place_then = i - (first < i ? 1 : 0) + 1;
    const std::string then = FormatInt(static_cast<int64_t>(place_then));
    if (l.tags()[number_at].value() != then) l.SetValueAt(number_at, then);
    if (place_now != place_then) {
      l.SetValueAt(number_at, FormatInt(static_cast<int64_t>(place_now)));
    }
  }
  return failure;
}

Status MoveLayout(Document& doc, Layout layout, int position) {
  if (!layout.valid() || layout.is_model()) {
    return Status::InvalidArgument("the Model layout cannot be moved");
  }
  std::vector<PaperTab> paper = PaperTabs(doc);
  PaperTab moved{layout, layout.FindIn("AcDbLayout", 71)};
  std::erase_if(paper, [&](const PaperTab& p) { return p.layout == layout; });
  size_t at = static_cast<size_t>(
      std::clamp(position - 1, 0, static_cast<int>(paper.size())));
  paper.insert(paper.begin() + static_cast<std::ptrdiff_t>(at), moved);
  Renumber(paper);
  return Status::Ok();
}

Status MakeLayoutActive(Document& doc, Layout layout) {
  if (!layout.valid() || layout.is_model()) {
    return Status::InvalidArgument("only a paper layout can be made active");
  }
  Block* block = LayoutBlock(doc, layout);
  if (block == nullptr) {
    return Status::InvalidArgument("layout \"" + std::string(layout.name()) +
                                   "\" has no block");
  }
  Block* current = doc.paper_space();
  if (block != current) {
    std::string old_name = block->name;
    if (current != nullptr &&
        !doc.RenameBlock(current, FreePaperBlockName(doc))) {
      return Status::InvalidArgument("cannot rename the active layout's block");
    }
    if (!doc.RenameBlock(block, "*Paper_Space")) {
      if (current != nullptr) doc.RenameBlock(current, "*Paper_Space");
      return Status::InvalidArgument("cannot rename \"" + old_name + "\"");
    }
  }
  doc.SetHeader("$TILEMODE", 70, "0");
  auto point = [&](std::string_view var, int code, bool z) {
    int i = layout.FindIn("AcDbLayout", code);
    if (i < 0) return;
    std::vector<Tag> v;
    for (int k = 0; k < (z ? 3 : 2); ++k) {
      int at = i + k;
      if (at >= static_cast<int>(layout.tags().size()) ||
          layout.tags()[at].code != static_cast<uint32_t>(code + 10 * k)) {
        break;
      }
      v.push_back(doc.MakeTag(code + 10 * k, layout.tags()[at].value()));
    }
    doc.SetHeader(var, v);
  };
  point("$PINSBASE", 12, true);
  point("$PEXTMIN", 14, true);
  point("$PEXTMAX", 15, true);
  point("$PLIMMIN", 10, false);
  point("$PLIMMAX", 11, false);
  return Status::Ok();
}

void CopyPageSetup(Document& doc, const Entity& from, Layout to) {
  int m = to.FindSubclass("AcDbPlotSettings");
  if (m < 0 || from.FindSubclass("AcDbPlotSettings") < 0) return;
  int keep_model =
      static_cast<int>(FieldDouble(to, "AcDbPlotSettings", 70)) & 1024;
  std::vector<Tag> copy = PlotSettingsOf(doc, from);
  to.EraseTags(m + 1, to.SubclassEnd(m));
  to.InsertTags(m + 1, copy);
  int flags = static_cast<int>(FieldDouble(to, "AcDbPlotSettings", 70));
  SetField(to, "AcDbPlotSettings", 70, FormatInt((flags & ~1024) | keep_model));
  FitLayoutToPaper(doc, to);
}

bool SetPlotSetting(Layout layout, int code, std::string_view value) {
  const int m = layout.FindSubclass("AcDbPlotSettings");
  if (m < 0) return false;
  const int at = layout.FindIn("AcDbPlotSettings", code);
  if (at >= 0) {
    layout.SetValueAt(at, value);
  } else {
    layout.InsertTag(layout.SubclassEnd(m), code, value);
  }
  return true;
}

void FitLayoutToPaper(Document& doc, Layout layout) {
  SetLimits(layout);
  Viewport main(MainViewport(doc, layout));
  if (main.valid() && main.id() == 1) {
    const ViewportSettings fit = MainViewportSettings(layout);
    main.SetCenter(fit.center);
    main.SetSize(fit.width, fit.height);
    main.SetViewCenter(fit.view_center_x, fit.view_center_y);
    main.SetViewHeight(fit.view_height);
  }
}

void DropDeviceDescription(Layout layout) {
  std::span<const Tag> tags = layout.tags();
  const int n = static_cast<int>(tags.size());
  for (int i = layout.XDataBegin(); i < n; ++i) {
    if (tags[i].code != 1001 || tags[i].value() != "ACAD_PSEXT") continue;
    int end = i + 1;
    while (end < n && tags[end].code != 1001) ++end;
    layout.EraseTags(i, end);
    return;
  }
}

void EraseLayoutContents(Document& doc, const Layout& layout,
                         bool keep_main_viewport) {
  Block* block = LayoutBlock(doc, layout);
  if (block == nullptr) return;
  Entity main = keep_main_viewport ? MainViewport(doc, layout) : Entity();
  std::vector<Entity> doomed;
  for (RecordId id : block->entities) {
    Entity e = doc.entity(id);
    if (!e.erased() && !(main.valid() && e == main)) doomed.push_back(e);
  }
  doc.EraseAll(doomed);
}

Entity MainViewport(Document& doc, const Layout& layout) {
  Block* block = LayoutBlock(doc, layout);
  if (block == nullptr) return Entity();
  Entity first;
  for (RecordId id : block->entities) {
    Entity e = doc.entity(id);
    if (e.erased() || e.type() != "VIEWPORT") continue;
    if (Viewport(e).id() == 1) return e;
    if (!first.valid()) first = e;
  }
  return first;
}

}  // namespace lmt::dxf

#include "layouts/layout_sorting.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

#include "core/text_case.h"
#include "host/block.h"
#include "host/entity.h"
#include "host/layout.h"

namespace lmt::layouts {
namespace {

struct Tab {
  host::LayoutPtr layout;
  std::string name;
  int32_t order = 0;
  std::optional<std::string> key;  // nullopt: goes after the keyed ones
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The attribute `tag` of the first block reference on the layout that has
// it; nullopt when none has.
std::optional<std::string> AttributeOn(const host::Layout& layout,
                                       std::string_view tag, Tab& tab,
                                       host::SkipLog& skips) {
  Result<host::BlockPtr> block = layout.Block();
  if (!block.ok()) {
    skips.Add(tab.name, "block", block.status());
    return std::nullopt;
  }
  Result<std::vector<host::EntityPtr>> items = (*block)->Items();
  if (!items.ok()) {
    skips.Add(tab.name, "walk", items.status());
    return std::nullopt;
  }
  for (const host::EntityPtr& entity : *items) {
    host::BlockReferencePtr insert = host::As<host::BlockReference>(entity);
    if (insert == nullptr) continue;
    Result<std::vector<host::AttributePtr>> attributes =
        insert->GetAttributes();
    if (!attributes.ok()) continue;  // a reference without attributes
    for (const host::AttributePtr& attribute : *attributes) {
      Result<std::string> this_tag = attribute->TagString();
      if (!this_tag.ok() || !core::EqualsIgnoreCase(*this_tag, tag)) continue;
      Result<std::string> value = attribute->TextString();
      if (value.ok()) return *value;
    }
  }
  return std::nullopt;
}

}  // namespace

Result<LayoutSort> ParseLayoutSort(std::string_view text) {
  LayoutSort sort;
  constexpr std::string_view kAttribute = "attribute:";
  if (text == "name") {
    sort.order = LayoutOrder::kName;
  } else if (text == "reverse") {
    sort.order = LayoutOrder::kReverse;
  } else if (text == "table") {
    sort.order = LayoutOrder::kTable;
  } else if (text.size() > kAttribute.size() &&
             text.substr(0, kAttribute.size()) == kAttribute) {
    sort.order = LayoutOrder::kAttribute;
    sort.tag = std::string(text.substr(kAttribute.size()));
  } else {
    return Status::InvalidArgument(
        "--by expects name, reverse, table or attribute:TAG, not '" +
        std::string(text) + "'");
  }
  return sort;
}

Result<LayoutSort> LayoutSortOf(const core::OknoSortLayouts& window) {
  using W = core::OknoSortLayouts;
  LayoutSort sort;
  switch (window.option_sort_layouts.selected()) {
    case W::kByTable:
      sort.order = LayoutOrder::kTable;
      break;
    case W::kReversed:
      sort.order = LayoutOrder::kReverse;
      break;
    case W::kByAttribute:
      sort.order = LayoutOrder::kAttribute;
      sort.tag = window.text_tag_atribut.text();
      if (sort.tag.empty()) {
        return Status::InvalidArgument(
            "the attribute order needs the attribute's tag");
      }
      break;
    default:
      sort.order = LayoutOrder::kName;
      break;
  }
  return sort;
}

int CompareNatural(std::string_view a, std::string_view b) {
  size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    if (IsDigit(a[i]) && IsDigit(b[j])) {
      size_t ei = i, ej = j;
      while (ei < a.size() && IsDigit(a[ei])) ++ei;
      while (ej < b.size() && IsDigit(b[ej])) ++ej;
      std::string_view da = a.substr(i, ei - i), db = b.substr(j, ej - j);
      while (da.size() > 1 && da[0] == '0') da.remove_prefix(1);
      while (db.size() > 1 && db[0] == '0') db.remove_prefix(1);
      if (da.size() != db.size()) return da.size() < db.size() ? -1 : 1;
      if (int c = da.compare(db); c != 0) return c;
      i = ei;
      j = ej;
      continue;
    }
    const int ca = std::tolower(static_cast<unsigned char>(a[i]));
    const int cb = std::tolower(static_cast<unsigned char>(b[j]));
    if (ca != cb) return ca < cb ? -1 : 1;
    ++i;
    ++j;
  }
  if (i < a.size()) return 1;
  if (j < b.size()) return -1;
  return a.compare(b);  // equal but for case or leading zeros: stable
}

SortReport SortLayouts(host::Database& database, const LayoutSort& sort,
                       const frames::FrameTable& table) {
  SortReport report;
  Result<host::LayoutsPtr> layouts = database.Layouts();
  if (!layouts.ok()) {
    report.skips.Add("", "layouts", layouts.status());
    return report;
  }
  Result<std::vector<host::LayoutPtr>> items = (*layouts)->Items();
  if (!items.ok()) {
    report.skips.Add("", "layouts", items.status());
    return report;
  }
  std::vector<Tab> tabs;
  for (const host::LayoutPtr& layout : *items) {
    Tab tab{layout, "", 0, std::nullopt};
    Result<std::string> name = layout->Name();
    Result<int32_t> order = layout->TabOrder();
    if (!name.ok() || !order.ok()) {
      report.skips.Add(name.ok() ? *name : "", "read layout",
                       name.ok() ? order.status() : name.status());
      continue;
    }
    if (*order == 0) continue;  // the model tab stays first
    tab.name = *name;
    tab.order = *order;
    tabs.push_back(std::move(tab));
  }
  std::stable_sort(tabs.begin(), tabs.end(), [](const Tab& a, const Tab& b) {
    return a.order < b.order;
  });
  for (const Tab& tab : tabs) report.before.push_back(tab.name);

  switch (sort.order) {
    case LayoutOrder::kName:
      std::stable_sort(tabs.begin(), tabs.end(),
                       [](const Tab& a, const Tab& b) {
                         return CompareNatural(a.name, b.name) < 0;
                       });
      break;
    case LayoutOrder::kReverse:
      std::reverse(tabs.begin(), tabs.end());
      break;
    case LayoutOrder::kTable:
    case LayoutOrder::kAttribute: {
      std::map<std::string, int> row_of;  // upper-cased name -> first row
      if (sort.order == LayoutOrder::kTable) {
        for (int row = table.last_row(); row >= 1; --row) {
          const std::string& name =
              table.Cell(row, frames::Column::kLayoutName);
          if (!name.empty()) row_of[core::FoldText(name)] = row;
        }
      }
      for (Tab& tab : tabs) {
        if (sort.order == LayoutOrder::kAttribute) {
          tab.key = AttributeOn(*tab.layout, sort.tag, tab, report.skips);
        } else if (auto it = row_of.find(core::FoldText(tab.name));
                   it != row_of.end()) {
          tab.key = std::to_string(it->second);
        }
      }
      std::stable_sort(tabs.begin(), tabs.end(),
                       [](const Tab& a, const Tab& b) {
                         if (!a.key || !b.key) return a.key && !b.key;
                         return CompareNatural(*a.key, *b.key) < 0;
                       });
      break;
    }
  }

  int32_t next = 1;
  for (Tab& tab : tabs) {
    const int32_t order = next++;
    report.after.push_back(tab.name);
    if (tab.order == order) continue;
    if (Status s = tab.layout->SetTabOrder(order); !s.ok()) {
      report.skips.Add(tab.name, "tab order", s);
      continue;
    }
    ++report.moved;
  }
  return report;
}

}  // namespace lmt::layouts

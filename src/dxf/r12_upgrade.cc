#include "dxf/r12_upgrade.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/r12_markers.h"
#include "dxf/r12_polylines.h"
#include "dxf/tag.h"

namespace lmt::dxf {
namespace {

// Rewrites the record with its subclass markers, gives it a handle when it
// has none and names its owner.
void Convert(Document& doc, RecordId id, uint64_t owner) {
  Entity e = doc.entity(id);
  std::vector<Tag> tags = WithSubclassMarkers(doc, e);
  doc.db().Detach(id) = std::move(tags);
  if (e.handle() == 0) doc.db().SetHandle(id, doc.AllocateHandle());
  e.SetOwner(owner);
}

// `0 TABLE 2 name 5 h 330 0 100 AcDbSymbolTable 70 n`, as 2000 writes a
// table head (DIMSTYLE adds its own marker).
void ConvertTableHead(Document& doc, const Table& table) {
  Entity head = doc.entity(table.head);
  const uint64_t handle = head.handle();
  const std::string count =
      std::string(head.GetString(70, FormatInt(table.entries.size())));
  std::vector<Tag> t = {doc.MakeTag(0, "TABLE"),
                        doc.MakeTag(2, table.name),
                        doc.MakeTag(5, FormatHandle(handle)),
                        doc.MakeTag(330, "0"),
                        doc.MakeTag(100, "AcDbSymbolTable"),
                        doc.MakeTag(70, count)};
  if (table.name == "DIMSTYLE") {
    t.push_back(doc.MakeTag(100, "AcDbDimStyleTable"));
  }
  doc.db().Detach(table.head) = std::move(t);
  if (handle == 0) doc.db().SetHandle(table.head, doc.AllocateHandle());
}

// Each dash of a 2000 linetype has an element kind (74), 0 for a plain
// dash; R12 has nothing else ("LTYPE" in the DXF reference).
void AddDashKinds(Document& doc, RecordId id) {
  std::vector<Tag>& t = doc.db().Detach(id);
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == 49 && (i + 1 == t.size() || t[i + 1].code != 74)) {
      t.insert(t.begin() + static_cast<std::ptrdiff_t>(i) + 1,
               doc.MakeTag(74, "0"));
    }
  }
}

void ConvertTables(Document& doc) {
  for (const Table& table : doc.tables()) {
    ConvertTableHead(doc, table);
    const uint64_t owner = doc.entity(table.head).handle();
    for (RecordId id : table.entries) {
      Convert(doc, id, owner);
      if (table.name == "LTYPE") AddDashKinds(doc, id);
    }
  }
  // Every table 2000 lists, BLOCK_RECORD last (AddTable keeps the order).
  for (std::string_view name : {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW",
                                "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"}) {
    doc.AddTable(name);
  }
}

// The entries a 2000 drawing cannot do without (dxf-notes "Minimal valid
// R2000+ file"); R12 writers often leave some out. Made in the R12 shape
// and converted like the others.
void AddRequiredEntries(Document& doc) {
  using Codes = std::initializer_list<std::pair<int, std::string_view>>;
  auto add = [&](std::string_view table, std::string_view name, Codes rest) {
    if (doc.FindTableEntry(table, name).valid()) return;
    std::vector<Tag> t = {doc.MakeTag(0, table), doc.MakeTag(2, name),
                          doc.MakeTag(70, "0")};
    for (const auto& [code, value] : rest)
      t.push_back(doc.MakeTag(code, value));
    Entity made = doc.AddTableEntry(table, std::move(t));
    Convert(doc, made.id(), made.owner());
  };
  const Codes no_dashes = {{3, ""}, {72, "65"}, {73, "0"}, {40, "0.0"}};
  add("LTYPE", "ByBlock", no_dashes);
  add("LTYPE", "ByLayer", no_dashes);
  add("LTYPE", "Continuous",
      {{3, "Solid line"}, {72, "65"}, {73, "0"}, {40, "0.0"}});
  add("LAYER", "0", {{62, "7"}, {6, "Continuous"}});
  add("STYLE", "Standard",
      {{40, "0.0"},
       {41, "1.0"},
       {50, "0.0"},
       {71, "0"},
       {42, "2.5"},
       {3, "txt"},
       {4, ""}});
  add("APPID", "ACAD", {});
  add("DIMSTYLE", "Standard", {});
}

// A block made up for a file without one gets its BLOCK and ENDBLK.
void GiveBlockEnds(Document& doc, Block* b) {
  if (b->begin == kNoRecord) {
    b->begin = doc.db().Create(
        {doc.MakeTag(0, "BLOCK"), doc.MakeTag(8, "0"), doc.MakeTag(2, b->name),
         doc.MakeTag(70, "0"), doc.MakeTag(10, "0.0"), doc.MakeTag(20, "0.0"),
         doc.MakeTag(30, "0.0"), doc.MakeTag(3, b->name), doc.MakeTag(1, "")});
  }
  if (b->end == kNoRecord) {
    b->end = doc.db().Create({doc.MakeTag(0, "ENDBLK"), doc.MakeTag(8, "0")});
  }
}

// Each block gets its BLOCK_RECORD, and it and its entities handles,
// owners and markers; R12's spaces take the names 2000 gives them.
void ConvertBlocks(Document& doc) {
  std::vector<Block*> blocks;
  for (auto& b : doc.blocks()) blocks.push_back(b.get());
  for (Block* b : blocks) {
    GiveBlockEnds(doc, b);
    Convert(doc, b->begin, 0);
    Convert(doc, b->end, 0);
  }
  // After the markers, which RenameBlock edits by.
  if (Block* model = doc.model_space()) doc.RenameBlock(model, "*Model_Space");
  if (Block* paper = doc.paper_space()) doc.RenameBlock(paper, "*Paper_Space");
  // The spaces' records first, as CAD programs write them.
  std::stable_partition(blocks.begin(), blocks.end(), [&](Block* b) {
    return b == doc.model_space() || b == doc.paper_space();
  });
  for (Block* b : blocks) {
    Entity record = doc.AddTableEntry(
        "BLOCK_RECORD", {doc.MakeTag(0, "BLOCK_RECORD"),
                         doc.MakeTag(100, "AcDbSymbolTableRecord"),
                         doc.MakeTag(100, "AcDbBlockTableRecord"),
                         doc.MakeTag(2, b->name), doc.MakeTag(340, "0")});
    const uint64_t owner = record.handle();
    doc.SetBlockRecord(b, owner);
    doc.entity(b->begin).SetOwner(owner);
    Entity end = doc.entity(b->end);
    end.SetOwner(owner);
    // ENDBLK must be on its BLOCK's layer (ezdxf's block_management.rst).
    end.SetLayer(doc.entity(b->begin).layer());
    for (RecordId id : b->entities) {
      Convert(doc, id, owner);
      const uint64_t parent = doc.entity(id).handle();
      for (RecordId child : doc.db().children(id)) {
        Convert(doc, child, parent);
      }
    }
  }
  // 2000 always has a paper space, even when nothing was drawn there.
  if (doc.paper_space() == nullptr) doc.AddBlock("*Paper_Space");
}

// R12 names a dimension style's arrow blocks (5, 6, 7); 2000 points at
// their BLOCK_RECORDs (342, 343, 344) and calls the names obsolete
// ("DIMSTYLE" in the DXF reference). A name without its block is dropped:
// the default arrow, which is what CAD programs show for it.
void LinkArrowBlocks(Document& doc) {
  Table* styles = doc.table("DIMSTYLE");
  if (styles == nullptr) return;
  for (RecordId id : styles->entries) {
    std::vector<Tag>& t = doc.db().Detach(id);
    std::vector<Tag> links;
    for (size_t i = 1; i < t.size();) {
      const int code = t[i].code;
      if (code < 5 || code > 7) {
        ++i;
        continue;
      }
      Block* b = doc.FindBlock(t[i].value());
      if (b != nullptr && !t[i].value().empty() && b->record_handle) {
        links.push_back(
            doc.MakeTag(342 + code - 5, FormatHandle(b->record_handle)));
      }
      t.erase(t.begin() + static_cast<std::ptrdiff_t>(i));
    }
    const auto xdata = std::find_if(
        t.begin(), t.end(), [](const Tag& tag) { return tag.code == 1001; });
    t.insert(xdata, links.begin(), links.end());
  }
}

// The root dictionary with an empty ACAD_GROUP, the least OBJECTS holds.
void AddRootDictionary(Document& doc) {
  if (doc.root_dictionary().valid()) return;
  auto dictionary = [&] {
    return std::vector<Tag>{doc.MakeTag(0, "DICTIONARY"),
                            doc.MakeTag(100, "AcDbDictionary"),
                            doc.MakeTag(281, "1")};
  };
  Entity root = doc.AddObject(dictionary(), 0);
  Entity groups = doc.AddObject(dictionary(), root.handle());
  groups.AddReactor(root.handle());
  doc.AddToDictionary(root, "ACAD_GROUP", groups.handle());
}

}  // namespace

void GiveR12TheR14Model(Document& doc) {
  if (!doc.IsR12()) return;
  // From here on the Document treats the drawing as R14: new records get
  // owners, new blocks records.
  doc.SetHeader("$ACADVER", 1, "AC1014");
  doc.RemoveHeader("$HANDLING");  // R12 only; handles are mandatory now
  if (!doc.HeaderValue("$DWGCODEPAGE")) {
    doc.SetHeader("$DWGCODEPAGE", 3, "ANSI_1252");
  }
  for (std::string_view section : {"CLASSES", "TABLES", "BLOCKS", "OBJECTS"}) {
    doc.EnsureSection(section);
  }
  ConvertTables(doc);
  AddRequiredEntries(doc);
  // As CAD programs open an R12 drawing; before the markers, which the
  // LWPOLYLINEs then get like every other entity.
  MakePolylinesLightweight(doc);
  ConvertBlocks(doc);
  LinkArrowBlocks(doc);
  AddRootDictionary(doc);
}

}  // namespace lmt::dxf

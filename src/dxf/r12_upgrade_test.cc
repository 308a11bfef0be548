// R12 drawings made DXF 2000 for layouts: the same subclass markers a CAD
// program writes when it saves the drawing as 2000, handles and owners
// everywhere, and drawings that lack every section but ENTITIES.
#include "dxf/r12_upgrade.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "dxf/layout_edit.h"
#include "dxf/lwpolyline.h"
#include "dxf/objects.h"
#include "dxf/test_util.h"
#include "dxf/upgrade.h"
#include "testing/dxf_check.h"

namespace lmt::dxf {
namespace {

using testing::Dxf;

std::unique_ptr<Document> Parse(const std::string& text) {
  std::unique_ptr<Document> doc;
  Status s = Document::Parse(text, "r12.dxf", &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

std::unique_ptr<Document> Load(const std::string& path) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(path, &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

// The codes under each subclass marker, extended data left out.
std::vector<std::set<int>> CodesBySubclass(Entity e) {
  std::vector<std::set<int>> out;
  auto t = e.tags();
  for (int i = 1; i < e.XDataBegin(); ++i) {
    if (t[i].code == 100) {
      out.emplace_back();
    } else if (!out.empty()) {
      out.back().insert(t[i].code);
    }
  }
  return out;
}

std::vector<std::string> Markers(Entity e) {
  std::vector<std::string> out;
  for (const Tag& t : e.tags()) {
    if (t.code == 100) out.emplace_back(t.value());
  }
  return out;
}

// Every record the conversion touches with the owner it must name.
void CheckHandlesAndOwners(Document& doc) {
  std::unordered_set<uint64_t> seen;
  auto check = [&](Entity e, uint64_t owner) {
    SCOPED_TRACE(std::string(e.type()));
    EXPECT_NE(e.handle(), 0u);
    EXPECT_TRUE(seen.insert(e.handle()).second) << "repeated handle";
    EXPECT_EQ(e.owner(), owner);
    EXPECT_EQ(doc.FindByHandle(e.handle()), e);
  };
  for (const Table& t : doc.tables()) {
    check(doc.entity(t.head), 0);
    for (RecordId id : t.entries)
      check(doc.entity(id), doc.entity(t.head).handle());
  }
  for (auto& b : doc.blocks()) {
    ASSERT_NE(b->record_handle, 0u) << b->name;
    check(doc.entity(b->begin), b->record_handle);
    check(doc.entity(b->end), b->record_handle);
    for (RecordId id : b->entities) {
      check(doc.entity(id), b->record_handle);
      for (RecordId c : doc.db().children(id)) {
        check(doc.entity(c), doc.entity(id).handle());
      }
    }
  }
}

// The same drawing saved by a CAD program as R12 and as 2000 keeps its
// entities' handles: each converted entity must carry the markers the
// program wrote, and each table entry those of its namesake.
TEST(R12UpgradeTest, MarkersMatchTheCadProgramsOwn2000Drawing) {
  LMT_SKIP_WITHOUT_SHARED();
  auto r12 = Load(testing::SamplePath("s_AC1009.dxf"));
  auto r2000 = Load(testing::SamplePath("s_AC1015.dxf"));
  ASSERT_TRUE(r12 && r2000);
  ASSERT_TRUE(r12->IsR12());
  GiveR12TheR14Model(*r12);
  EXPECT_EQ(r12->version(), "AC1014");
  CheckHandlesAndOwners(*r12);

  std::map<std::string, int> compared;
  auto compare = [&](Entity ours, Entity theirs) {
    if (!theirs.valid() || theirs.type() != ours.type()) return;
    EXPECT_EQ(Markers(ours), Markers(theirs))
        << ours.type() << " " << FormatHandle(ours.handle());
    // Each code in the subclass the program put it in. Dimension styles
    // apart: the program leaves out values that are the defaults.
    if (ours.type() != "DIMSTYLE" && Markers(ours) == Markers(theirs)) {
      std::vector<std::set<int>> a = CodesBySubclass(ours);
      std::vector<std::set<int>> b = CodesBySubclass(theirs);
      for (size_t i = 0; i < a.size(); ++i) {
        for (int code : a[i]) {
          EXPECT_TRUE(b[i].contains(code))
              << ours.type() << " " << FormatHandle(ours.handle()) << ": "
              << code << " under " << Markers(ours)[i];
        }
      }
    }
    ++compared[std::string(ours.type())];
  };
  for (auto& b : r12->blocks()) {
    for (RecordId id : b->entities) {
      Entity e = r12->entity(id);
      compare(e, r2000->FindByHandle(e.handle()));
      for (RecordId c : r12->db().children(id)) {
        compare(r12->entity(c), r2000->FindByHandle(r12->entity(c).handle()));
      }
    }
  }
  for (const Table& t : r12->tables()) {
    for (RecordId id : t.entries) {
      Entity e = r12->entity(id);
      compare(e, r2000->FindTableEntry(t.name, e.GetString(2)));
    }
  }
  // Every kind R12 has that the drawing holds: rotated and other
  // dimensions, TEXT with its second AcDbText, attributes, 2D and 3D
  // vertices, viewports, the tables.
  for (const char* type :
       {"LINE",     "ARC",    "CIRCLE",    "POINT",    "SOLID",     "3DFACE",
        "SHAPE",    "TEXT",   "ATTDEF",    "ATTRIB",   "INSERT",    "SEQEND",
        "POLYLINE", "VERTEX", "DIMENSION", "VIEWPORT", "LAYER",     "LTYPE",
        "STYLE",    "APPID",  "DIMSTYLE",  "VPORT",    "LWPOLYLINE"}) {
    EXPECT_GT(compared[type], 0) << type;
  }
}

// A file of nothing but entities, on both spaces: every section, table and
// required entry 2000 needs is made, and the result opens clean, takes
// layouts and keeps its entities' data.
TEST(R12UpgradeTest, EntitiesOnlyFileBecomesACompleteDxf2000Drawing) {
  auto doc =
      Parse(Dxf("0 SECTION|2 ENTITIES|"
                "0 TEXT|8 NOTES|10 1|20 2|40 2.5|1 Hello|72 1|11 5|21 2|73 2|"
                "0 LINE|8 0|10 0|20 0|11 100|21 50|"
                "0 POLYLINE|8 0|66 1|10 0|20 0|30 0|70 8|"
                "0 VERTEX|8 0|10 0|20 0|30 0|70 32|"
                "0 VERTEX|8 0|10 9|20 9|30 9|70 32|"
                "0 SEQEND|8 0|"
                "0 CIRCLE|8 0|67 1|10 50|20 50|40 10|"
                "0 ENDSEC|0 EOF"));
  ASSERT_TRUE(doc);
  ASSERT_TRUE(UpgradeForLayouts(*doc).ok());
  EXPECT_EQ(doc->version(), "AC1015");
  CheckHandlesAndOwners(*doc);

  std::vector<std::string> tables;
  for (const Table& t : doc->tables()) tables.push_back(t.name);
  EXPECT_EQ(tables, (std::vector<std::string>{"VPORT", "LTYPE", "LAYER",
                                              "STYLE", "VIEW", "UCS", "APPID",
                                              "DIMSTYLE", "BLOCK_RECORD"}));
  for (auto [table, name] : {std::pair{"LTYPE", "ByLayer"},
                             {"LTYPE", "Continuous"},
                             {"LAYER", "0"},
                             {"STYLE", "Standard"},
                             {"APPID", "ACAD"},
                             {"DIMSTYLE", "Standard"}}) {
    EXPECT_TRUE(doc->FindTableEntry(table, name).valid()) << name;
  }
  ASSERT_NE(doc->model_space(), nullptr);
  ASSERT_NE(doc->paper_space(), nullptr);
  EXPECT_EQ(doc->model_space()->name, "*Model_Space");
  EXPECT_EQ(doc->paper_space()->name, "*Paper_Space");
  EXPECT_EQ(doc->model_space()->entities.size(), 3u);
  ASSERT_EQ(doc->paper_space()->entities.size(), 1u);

  Entity text = doc->entity(doc->model_space()->entities[0]);
  EXPECT_EQ(Markers(text),
            (std::vector<std::string>{"AcDbEntity", "AcDbText", "AcDbText"}));
  int second = -1;  // the last marker
  for (int i = 0; i < static_cast<int>(text.tags().size()); ++i) {
    if (text.tags()[i].code == 100) second = i;
  }
  EXPECT_EQ(text.GetInt(73), 2);
  EXPECT_GT(text.Find(73), second);
  EXPECT_LT(text.Find(8), text.FindSubclass("AcDbText")) << "layer is common";
  Entity polyline = doc->entity(doc->model_space()->entities[2]);
  EXPECT_EQ(Markers(polyline),
            (std::vector<std::string>{"AcDbEntity", "AcDb3dPolyline"}));
  Entity vertex = doc->entity(doc->db().children(polyline.id())[0]);
  EXPECT_EQ(Markers(vertex),
            (std::vector<std::string>{"AcDbEntity", "AcDbVertex",
                                      "AcDb3dPolylineVertex"}));

  std::vector<std::string> names;
  for (const Layout& l : Layouts(*doc)) names.emplace_back(l.name());
  EXPECT_EQ(names, (std::vector<std::string>{"Model", "Layout1"}));
  Layout sheet{Entity()};
  ASSERT_TRUE(AddLayout(*doc, "Sheet 1", &sheet).ok());
  const std::string out = testing::TempPath("r12_entities_only.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  EXPECT_EQ(testing::Problems(out), "");
  LMT_SKIP_WITHOUT_EZDXF();
  EXPECT_NE(testing::EzdxfLayouts(out).find("Sheet 1"), std::string::npos);
}

// Handles the file had stay; R12's own header flag goes; arrow block names
// become links to their records; linetype dashes get their element kind.
TEST(R12UpgradeTest, KeepsHandlesAndLinksDimensionArrows) {
  auto doc = Parse(Dxf(
      "0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|9 $HANDLING|70 1|"
      "9 $HANDSEED|5 30|0 ENDSEC|"
      "0 SECTION|2 TABLES|"
      "0 TABLE|2 LTYPE|70 1|0 LTYPE|2 DASHED|70 0|3 __ __|72 65|73 2|40 1.0|"
      "49 0.5|49 -0.5|0 ENDTAB|"
      "0 TABLE|2 DIMSTYLE|70 1|0 DIMSTYLE|105 20|2 STANDARD|70 0|5 ARROW|"
      "6 NONE|7 |40 1.0|0 ENDTAB|0 ENDSEC|"
      "0 SECTION|2 BLOCKS|0 BLOCK|8 0|2 ARROW|70 0|10 0|20 0|30 0|3 ARROW|"
      "0 LINE|5 21|8 0|10 0|20 0|11 1|21 1|0 ENDBLK|5 22|8 0|0 ENDSEC|"
      "0 SECTION|2 ENTITIES|0 LINE|5 2A|8 0|10 0|20 0|11 1|21 1|0 ENDSEC|"
      "0 EOF"));
  ASSERT_TRUE(doc);
  ASSERT_TRUE(UpgradeForLayouts(*doc).ok());
  CheckHandlesAndOwners(*doc);
  EXPECT_FALSE(doc->HeaderValue("$HANDLING").has_value());
  EXPECT_EQ(doc->entity(doc->model_space()->entities[0]).handle(), 0x2Au);
  EXPECT_EQ(doc->entity(doc->FindBlock("ARROW")->entities[0]).handle(), 0x21u);
  EXPECT_GT(doc->AllocateHandle(), 0x30u);

  Entity style = doc->FindTableEntry("DIMSTYLE", "STANDARD");
  EXPECT_EQ(style.handle(), 0x20u);
  EXPECT_EQ(style.GetString(342),
            FormatHandle(doc->FindBlock("ARROW")->record_handle));
  for (int code : {5, 6, 7, 343, 344}) EXPECT_EQ(style.Find(code), -1) << code;
  Entity dashed = doc->FindTableEntry("LTYPE", "DASHED");
  EXPECT_EQ(dashed.GetAll(74).size(), 2u);
  EXPECT_EQ(dashed.Find(74), dashed.Find(49) + 1);

  const std::string out = testing::TempPath("r12_handles.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  EXPECT_EQ(testing::Problems(out), "");
}

// A binary R12 file has one-byte group codes; once 2000 it is written with
// two-byte ones, or nothing could read it.
TEST(R12UpgradeTest, BinaryR12IsWrittenWithTwoByteCodes) {
  const std::string path = testing::CorpusPath("025_sample_AC1009_binary.dxf");
  LMT_SKIP_WITHOUT_SHARED_FOR(path);
  auto doc = Load(path);
  ASSERT_TRUE(doc);
  ASSERT_TRUE(doc->was_binary());
  const size_t entities = doc->model_space()->entities.size();
  ASSERT_TRUE(UpgradeForLayouts(*doc).ok());
  const std::string out = testing::TempPath("r12_binary.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  auto back = Load(out);
  ASSERT_TRUE(back);
  EXPECT_TRUE(back->was_binary());
  EXPECT_EQ(back->version(), "AC1015");
  EXPECT_EQ(back->model_space()->entities.size(), entities);
  EXPECT_EQ(testing::Problems(out), "");
}

// The records of one polyline, "0 POLYLINE|..." with its vertices.
std::string Polyline(std::string_view head,
                     std::initializer_list<std::string_view> vertices) {
  std::string out = "0 POLYLINE|66 1|10 0|20 0|" + std::string(head) + "|";
  for (std::string_view v : vertices) {
    out += "0 VERTEX|8 0|" + std::string(v) + "|";
  }
  return out + "0 SEQEND|8 0|";
}

// R12 writes BYBLOCK where 2000 writes ByBlock.
std::string Upper(std::string_view s) {
  std::string out(s);
  for (char& c : out)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

Entity ByHandle(Document& doc, uint64_t handle) {
  Entity e = doc.FindByHandle(handle);
  EXPECT_TRUE(e.valid()) << FormatHandle(handle);
  return e;
}

// Simple 2D polylines become LWPOLYLINEs wherever they are, keeping what a
// lightweight polyline can hold; the others stay POLYLINEs with their
// vertices.
TEST(R12UpgradeTest, SimplePolylinesBecomeLightweightAndOthersStay) {
  auto doc = Parse(
      Dxf("0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|0 ENDSEC|"
          "0 SECTION|2 TABLES|0 TABLE|2 LTYPE|70 1|0 LTYPE|2 DASHED|70 0|"
          "3 __ __|72 65|73 2|40 1.0|49 0.5|49 -0.5|0 ENDTAB|0 ENDSEC|"
          "0 SECTION|2 BLOCKS|0 BLOCK|8 0|2 B|70 0|10 0|20 0|30 0|3 B|" +
          Polyline("5 31|8 0|70 1",
                   {"10 0|20 0|30 0", "10 1|20 0|30 0", "10 1|20 1|30 0"}) +
          "0 ENDBLK|8 0|0 ENDSEC|0 SECTION|2 ENTITIES|" +
          // Closed, linetype generation, raised, thick, upside down, default
          // widths the second vertex overrides in part; its layer and colour
          // go.
          Polyline(
              "5 21|8 FRAMES|6 DASHED|62 1|30 5.5|39 2|70 129|40 0.5|"
              "41 0.5|210 0|220 0|230 -1|1001 ACAD|1000 kept",
              {"10 0|20 0|30 5.5", "8 OTHER|62 3|10 10|20 0|40 0.5|41 2|42 0.5",
               "10 10|20 10|70 0"}) +
          // Widths equal everywhere: one constant width.
          Polyline("5 22|8 0|40 0.25|41 0.25",
                   {"10 0|20 0", "10 5|20 0|40 0.25|41 0.25"}) +
          Polyline("5 23|8 0|67 1", {"10 0|20 0", "10 5|20 5"}) +
          // Left alone: curve-fit, spline-fit, 3D, polygon mesh, polyface
          // mesh, extended data on a vertex, a single vertex. Only its flag
          // tells the 3D polyline from a 2D one.
          Polyline("5 41|8 0|70 2",
                   {"10 0|20 0", "10 1|20 1|70 1", "10 2|20 0|70 0"}) +
          Polyline("5 42|8 0|70 4|75 6",
                   {"10 0|20 0|70 16", "10 1|20 1|70 8", "10 2|20 0|70 16"}) +
          Polyline("5 43|8 0|70 8", {"10 0|20 0|30 1", "10 1|20 1|30 2"}) +
          Polyline("5 44|8 0|70 16|71 2|72 2",
                   {"10 0|20 0|70 64", "10 1|20 0|70 64", "10 0|20 1|70 64",
                    "10 1|20 1|30 1|70 64"}) +
          Polyline("5 45|8 0|70 64|71 3|72 1",
                   {"10 0|20 0|70 192", "10 1|20 0|70 192", "10 0|20 1|70 192",
                    "10 0|20 0|70 128|71 1|72 2|73 3"}) +
          Polyline("5 46|8 0", {"10 0|20 0", "10 1|20 1|1001 ACAD|1000 mine"}) +
          Polyline("5 47|8 0", {"10 0|20 0"}) + "0 ENDSEC|0 EOF"));
  ASSERT_TRUE(doc);
  ASSERT_TRUE(UpgradeForLayouts(*doc).ok());
  CheckHandlesAndOwners(*doc);

  LwPolyline raised(ByHandle(*doc, 0x21));
  ASSERT_EQ(raised.type(), "LWPOLYLINE");
  EXPECT_TRUE(doc->db().children(raised.id()).empty());
  EXPECT_EQ(Markers(raised),
            (std::vector<std::string>{"AcDbEntity", "AcDbPolyline"}));
  EXPECT_EQ(raised.tags()[raised.FindSubclass("AcDbPolyline") + 1].code, 90u)
      << "the vertex count comes first";
  EXPECT_EQ(raised.GetInt(90), 3);
  EXPECT_EQ(raised.GetInt(70), 129);
  EXPECT_TRUE(raised.closed());
  EXPECT_EQ(raised.elevation(), 5.5);
  EXPECT_EQ(raised.GetDouble(39), 2);
  EXPECT_EQ(raised.extrusion(), (Vec3{0, 0, -1}));
  EXPECT_EQ(raised.layer(), "FRAMES");
  EXPECT_EQ(raised.linetype(), "DASHED");
  EXPECT_EQ(raised.color(), 1);
  EXPECT_EQ(raised.Find(43), -1) << "widths differ";
  EXPECT_EQ(raised.vertices(), (std::vector<LwVertex>{{0, 0, 0.5, 0.5, 0},
                                                      {10, 0, 0.5, 2, 0.5},
                                                      {10, 10, 0.5, 0.5, 0}}));
  EXPECT_EQ(raised.XData("ACAD").size(), 1u);

  LwPolyline constant(ByHandle(*doc, 0x22));
  ASSERT_EQ(constant.type(), "LWPOLYLINE");
  EXPECT_EQ(constant.GetDouble(43, -1), 0.25);
  EXPECT_EQ(constant.Find(40), -1);
  EXPECT_FALSE(constant.closed());
  for (int code : {38, 39, 210}) EXPECT_EQ(constant.Find(code), -1) << code;
  EXPECT_EQ(ByHandle(*doc, 0x23).type(), "LWPOLYLINE");
  EXPECT_EQ(ByHandle(*doc, 0x23).GetInt(67), 1);
  EXPECT_EQ(ByHandle(*doc, 0x23).owner(), doc->paper_space()->record_handle);
  LwPolyline in_block(ByHandle(*doc, 0x31));
  ASSERT_EQ(in_block.type(), "LWPOLYLINE");
  EXPECT_EQ(in_block.GetDouble(43, -1), 0) << "no widths: constant 0";
  EXPECT_EQ(in_block.vertices().size(), 3u);

  const std::map<uint64_t, size_t> kept = {{0x41, 4}, {0x42, 4}, {0x43, 3},
                                           {0x44, 5}, {0x45, 5}, {0x46, 3},
                                           {0x47, 2}};
  for (auto [handle, children] : kept) {
    Entity e = ByHandle(*doc, handle);
    EXPECT_EQ(e.type(), "POLYLINE") << FormatHandle(handle);
    EXPECT_EQ(doc->db().children(e.id()).size(), children)
        << FormatHandle(handle);
  }

  const std::string out = testing::TempPath("r12_polylines.dxf");
  ASSERT_TRUE(doc->Save(out).ok());
  EXPECT_EQ(testing::Problems(out), "");
}

// The program's own 2000 copy of the sample holds LWPOLYLINEs where the R12
// copy holds simple POLYLINEs, with the same handles: ours must carry the
// same vertices, flags, widths and properties. Five of them also carry the
// R12 copy's ACAD extended data, standing in for reactors R12 cannot hold.
TEST(R12UpgradeTest, PolylinesMatchTheCadProgramsOwnLightweightOnes) {
  LMT_SKIP_WITHOUT_SHARED();
  auto r12 = Load(testing::SamplePath("s_AC1009.dxf"));
  auto r2000 = Load(testing::SamplePath("s_AC1015.dxf"));
  ASSERT_TRUE(r12 && r2000);
  ASSERT_TRUE(UpgradeForLayouts(*r12).ok());
  int compared = 0, lightweight = 0, kept = 0;
  for (auto& b : r12->blocks()) {
    for (RecordId id : b->entities) {
      Entity ours = r12->entity(id);
      if (ours.type() == "LWPOLYLINE") ++lightweight;
      if (ours.type() == "POLYLINE") ++kept;
      Entity theirs = r2000->FindByHandle(ours.handle());
      const std::string h = FormatHandle(ours.handle());
      if (!theirs.valid()) continue;
      if (ours.type() == "POLYLINE") {
        EXPECT_NE(theirs.type(), "LWPOLYLINE") << h;
        continue;
      }
      if (theirs.type() != "LWPOLYLINE") continue;
      ASSERT_EQ(ours.type(), "LWPOLYLINE") << h;
      LwPolyline a(ours), b(theirs);
      EXPECT_EQ(a.vertices(), b.vertices()) << h;
      for (int code : {90, 70, 43, 38, 39, 62, 67}) {
        EXPECT_EQ(a.Get(code).has_value(), b.Get(code).has_value())
            << h << " " << code;
        EXPECT_EQ(a.GetDouble(code), b.GetDouble(code)) << h << " " << code;
      }
      EXPECT_EQ(a.extrusion(), b.extrusion()) << h;
      EXPECT_EQ(a.layer(), b.layer()) << h;
      EXPECT_EQ(Upper(a.linetype()), Upper(b.linetype())) << h;
      ++compared;
    }
  }
  EXPECT_EQ(compared, 23);
  EXPECT_EQ(lightweight, 47);  // 24 more in blocks the 2000 copy lacks
  EXPECT_EQ(kept, 265);        // 3D polylines and a polyface mesh
}

}  // namespace
}  // namespace lmt::dxf

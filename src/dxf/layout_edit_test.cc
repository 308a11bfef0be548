#include "dxf/layout_edit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "dxf/builders.h"
#include "dxf/entity_copy.h"
#include "dxf/insert.h"
#include "dxf/test_util.h"
#include "dxf/viewport_edit.h"
#include "testing/test_paths.h"

namespace lmt::dxf {
namespace {

std::unique_ptr<Document> Open(const std::string& name) {
  std::unique_ptr<Document> doc;
  Status s = Document::Load(testing::SamplePath(name), &doc);
  EXPECT_TRUE(s.ok()) << s.ToString();
  return doc;
}

// Saves, checks the file strictly and returns what ezdxf reads of it.
std::string SaveAndRead(Document& doc, const std::string& name) {
  std::string path = testing::TempPath(name);
  Status s = doc.Save(path);
  EXPECT_TRUE(s.ok()) << s.ToString();
#ifdef _WIN32
  return "";  // python cannot run under Wine
#else
  EXPECT_EQ(testing::Problems(path), "") << name;
  return testing::EzdxfLayouts(path);
#endif
}

bool Has(const std::string& text, const std::string& line) {
#ifdef _WIN32
  (void)text;
  (void)line;
  return true;
#else
  return text.find(line) != std::string::npos;
#endif
}

std::vector<std::string> Names(Document& doc) {
  std::vector<std::string> out;
  for (const Layout& l : Layouts(doc)) out.emplace_back(l.name());
  return out;
}

TEST(LayoutEditTest, AddedLayoutIsComplete) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* sample : {"s_AC1032.dxf", "s_AC1015.dxf"}) {
    auto doc = Open(sample);
    ASSERT_TRUE(doc);
    Layout sheet(Entity{});
    ASSERT_TRUE(AddLayout(*doc, "Sheet 1", &sheet).ok());
    EXPECT_EQ(sheet.tab_order(), 4);
    Entity main = MainViewport(*doc, sheet);
    ASSERT_TRUE(main.valid());
    EXPECT_EQ(sheet.last_viewport(), main.handle());
    EXPECT_EQ(ViewportAnnotationScale(*doc, main), "1:1");
    std::string read = SaveAndRead(*doc, std::string("added_") + sample);
    EXPECT_TRUE(Has(read, "layout Sheet 1 taborder=4 block=*Paper_Space"))
        << read;
    EXPECT_TRUE(Has(read, "viewport Sheet 1 id=1 center=5.25,4 size=12.1,9.35"))
        << read;
  }
}

TEST(LayoutEditTest, NewLayoutInADrawingWithoutPaperLayoutsTakesPaperSpace) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  for (const char* name : {"Layout1", "Layout2"}) {
    ASSERT_TRUE(DeleteLayout(*doc, FindLayout(*doc, name)).ok()) << name;
  }
  EXPECT_EQ(Names(*doc), (std::vector<std::string>{"Model", "MyLayout"}));
  // The last paper layout stays.
  EXPECT_FALSE(DeleteLayout(*doc, FindLayout(*doc, "MyLayout")).ok());
  EXPECT_FALSE(DeleteLayout(*doc, FindLayout(*doc, "Model")).ok());
  std::string read = SaveAndRead(*doc, "last_layout.dxf");
  EXPECT_TRUE(Has(read,
                  "layout MyLayout taborder=1 block=*Paper_Space "
                  "active=1"))
      << read;
}

TEST(LayoutEditTest, RenameMoveDeleteRoundTrip) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  ASSERT_TRUE(AddLayout(*doc, "A", nullptr).ok());
  ASSERT_TRUE(AddLayout(*doc, "B", nullptr).ok());
  EXPECT_FALSE(AddLayout(*doc, "b", nullptr).ok());      // taken
  EXPECT_FALSE(AddLayout(*doc, "model", nullptr).ok());  // reserved
  EXPECT_FALSE(AddLayout(*doc, "a/b", nullptr).ok());    // bad character
  ASSERT_TRUE(MoveLayout(*doc, FindLayout(*doc, "B"), 1).ok());
  ASSERT_TRUE(RenameLayout(*doc, FindLayout(*doc, "A"), "Renamed").ok());
  EXPECT_FALSE(RenameLayout(*doc, FindLayout(*doc, "B"), "layout1").ok());
  EXPECT_TRUE(RenameLayout(*doc, FindLayout(*doc, "B"), "b").ok());  // case
  // MyLayout is the active one: deleting it hands *Paper_Space on.
  ASSERT_TRUE(DeleteLayout(*doc, FindLayout(*doc, "MyLayout")).ok());
  EXPECT_EQ(Names(*doc), (std::vector<std::string>{"Model", "b", "Layout1",
                                                   "Layout2", "Renamed"}));
  ASSERT_NE(doc->paper_space(), nullptr);
  std::string read = SaveAndRead(*doc, "round_trip.dxf");
  EXPECT_TRUE(Has(read, "layout b taborder=1")) << read;
  EXPECT_TRUE(Has(read, "layout Renamed taborder=4")) << read;
  EXPECT_FALSE(Has(read, "MyLayout") && !read.empty()) << read;

  std::unique_ptr<Document> back;
  ASSERT_TRUE(Document::Load(testing::TempPath("round_trip.dxf"), &back).ok());
  EXPECT_EQ(Names(*back), Names(*doc));
}

// Tab numbers as a user's file may have them (gaps, padding): deleting or
// moving a tab numbers the paper tabs 1, 2, ... in their order.
TEST(LayoutEditTest, DeleteAndMoveNumberIrregularTabsInOrder) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  ASSERT_TRUE(AddLayout(*doc, "A", nullptr).ok());
  ASSERT_TRUE(AddLayout(*doc, "B", nullptr).ok());
  auto set_tab = [&](const char* name, const char* number) {
    Layout l = FindLayout(*doc, name);
    l.SetValueAt(l.FindIn("AcDbLayout", 71), number);
  };
  set_tab("Layout1", "7");
  set_tab("Layout2", "3");
  set_tab("MyLayout", "05");
  set_tab("A", "10");
  set_tab("B", "12");
  auto tabs = [&]() {
    std::vector<std::string> out;
    for (const Layout& l : Layouts(*doc)) {
      out.push_back(std::string(l.name()) + "=" +
                    std::string(l.tags()[l.FindIn("AcDbLayout", 71)].value()));
    }
    return out;
  };
  ASSERT_TRUE(DeleteLayout(*doc, FindLayout(*doc, "A")).ok());
  EXPECT_EQ(tabs(),
            (std::vector<std::string>{"Model=0", "Layout2=1", "MyLayout=2",
                                      "Layout1=3", "B=4"}));
  ASSERT_TRUE(MoveLayout(*doc, FindLayout(*doc, "B"), 1).ok());
  EXPECT_EQ(tabs(), (std::vector<std::string>{"Model=0", "B=1", "Layout2=2",
                                              "MyLayout=3", "Layout1=4"}));
  ASSERT_TRUE(MoveLayout(*doc, FindLayout(*doc, "B"), 99).ok());
  EXPECT_EQ(tabs(),
            (std::vector<std::string>{"Model=0", "Layout2=1", "MyLayout=2",
                                      "Layout1=3", "B=4"}));
}

TEST(LayoutEditTest, ActiveLayoutIsWhereTheFileOpens) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Layout layout1 = FindLayout(*doc, "Layout1");
  size_t count = LayoutBlock(*doc, layout1)->entities.size();
  ASSERT_TRUE(MakeLayoutActive(*doc, layout1).ok());
  EXPECT_EQ(doc->paper_space(), LayoutBlock(*doc, layout1));
  EXPECT_EQ(doc->HeaderInt("$TILEMODE", 1), 0);
  std::string read = SaveAndRead(*doc, "activated.dxf");
  EXPECT_TRUE(Has(read,
                  "layout Layout1 taborder=1 block=*Paper_Space "
                  "active=1"))
      << read;
  std::unique_ptr<Document> back;
  ASSERT_TRUE(Document::Load(testing::TempPath("activated.dxf"), &back).ok());
  EXPECT_EQ(back->paper_space()->entities.size(), count);
}

TEST(LayoutEditTest, PageSetupCopiedAcrossDrawingsWithLimits) {
  LMT_SKIP_WITHOUT_SHARED();
  auto letter = Open("s_AC1015.dxf");  // inches, Letter, rotated
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Layout sheet(Entity{});
  ASSERT_TRUE(AddLayout(*doc, "Sheet", &sheet).ok());
  // An A1 page in millimetres first, so that the copy visibly changes it.
  Layout layout1 = FindLayout(*letter, "Layout1");
  CopyPageSetup(*doc, layout1, sheet);
  EXPECT_EQ(sheet.GetString(4), "Letter_(8.50_x_11.00_Inches)");
  int lim = sheet.FindIn("AcDbLayout", 11);
  ASSERT_GE(lim, 0);
  // 11 x 8.5 in, shifted by the 0.25 in margins.
  EXPECT_NEAR(*ParseDouble(sheet.tags()[lim].value()), 10.75, 1e-6);
  EXPECT_EQ(sheet.GetInt(70), 688);
  // The sheet's own view moves onto the new paper (-0.25..10.75 across,
  // -0.25..8.25 up), or the layout would open off its sheet.
  Viewport main(MainViewport(*doc, sheet));
  ASSERT_TRUE(main.valid());
  EXPECT_NEAR(main.center().x, 5.25, 1e-6);
  EXPECT_NEAR(main.center().y, 4.0, 1e-6);
  EXPECT_NEAR(main.height(), 8.5 * 1.1, 1e-6);
  SaveAndRead(*doc, "page_setup.dxf");
}

// A real program's layout: its device description goes with a new device,
// a code it lacks is added inside the plot settings, and the file stays
// sound.
TEST(LayoutEditTest, PlotSettingsEditedInPlace) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Layout layout1 = FindLayout(*doc, "Layout1");
  ASSERT_FALSE(layout1.XData("ACAD_PSEXT").empty());
  const size_t before = layout1.tags().size();
  DropDeviceDescription(layout1);
  EXPECT_TRUE(layout1.XData("ACAD_PSEXT").empty());
  EXPECT_LT(layout1.tags().size(), before);
  const int style = layout1.FindIn("AcDbPlotSettings", 7);
  ASSERT_GE(style, 0);
  layout1.EraseTags(style, style + 1);
  ASSERT_TRUE(SetPlotSetting(layout1, 4, "ISO_A2_(594.00_x_420.00_MM)"));
  ASSERT_TRUE(SetPlotSetting(layout1, 7, "acad.ctb"));
  const int added = layout1.FindIn("AcDbPlotSettings", 7);
  EXPECT_GT(added, layout1.FindSubclass("AcDbPlotSettings"));
  EXPECT_LT(added, layout1.FindSubclass("AcDbLayout"));
  EXPECT_EQ(layout1.GetString(4), "ISO_A2_(594.00_x_420.00_MM)");
  const std::string read = SaveAndRead(*doc, "plot_settings.dxf");
  EXPECT_TRUE(Has(read, "Layout1")) << read;
}

TEST(LayoutEditTest, EraseContentsKeepsTheMainViewport) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Layout layout = FindLayout(*doc, "Layout2");
  EraseLayoutContents(*doc, layout, true);
  Block* b = LayoutBlock(*doc, layout);
  ASSERT_EQ(b->entities.size(), 1u);
  EXPECT_EQ(Viewport(doc->entity(b->entities[0])).id(), 1);
  SaveAndRead(*doc, "erased_contents.dxf");
}

// The frame example of the notes: an A1 frame (42050 x 29700) at 5000,3000
// turned 30 degrees, shown at 1:50 in a 841 x 594 viewport.
TEST(ViewportEditTest, TwistedViewportReadsBackAsWritten) {
  LMT_SKIP_WITHOUT_SHARED();
  for (const char* sample : {"s_AC1032.dxf", "s_AC1015.dxf"}) {
    auto doc = Open(sample);
    ASSERT_TRUE(doc);
    Layout sheet(Entity{});
    ASSERT_TRUE(AddLayout(*doc, "Frame", &sheet).ok());
    ViewportSettings entry;
    entry.center = Vec3{420.5, 297, 0};
    entry.width = 841;
    entry.height = 594;
    double t = -30 * std::numbers::pi / 180;
    entry.view_center_x = std::cos(t) * 5000 - std::sin(t) * 3000;
    entry.view_center_y = std::sin(t) * 5000 + std::cos(t) * 3000;
    entry.view_height = 29700;
    entry.twist = -30;
    entry.layer = "VIEWPORTS";
    entry.locked = true;
    AddLayer(*doc, "VIEWPORTS");
    Viewport vp = AddViewport(*doc, LayoutBlock(*doc, sheet), entry);
    ASSERT_TRUE(vp.valid());
    EXPECT_EQ(ViewportAnnotationScale(*doc, vp), "1:50");
    entry.on = false;
    entry.id = 3;
    entry.annotation_scale = "1:100";
    entry.locked = false;
    Viewport off = AddViewport(*doc, LayoutBlock(*doc, sheet), entry);
    EXPECT_FALSE(off.is_on());
    EXPECT_EQ(off.status(), 0);
    EXPECT_FALSE(AddViewport(*doc, LayoutBlock(*doc, sheet), ViewportSettings{})
                     .valid());
    std::string read = SaveAndRead(*doc, std::string("viewport_") + sample);
    EXPECT_TRUE(Has(read,
                    "viewport Frame id=2 center=420.5,297 size=841,594 "
                    "vc=5830.13,98.0762 target=0,0,0 dir=0,0,1 height=29700 "
                    "twist=330 flags=836192 layer=VIEWPORTS status=2 "
                    "scale=1:50"))
        << read;
    EXPECT_TRUE(Has(read,
                    "flags=950880 layer=VIEWPORTS status=0 "
                    "scale=1:100"))
        << read;
  }
}

TEST(ViewportEditTest, ScaleNames) {
  EXPECT_EQ(ScaleName(0.02), "1:50");
  EXPECT_EQ(ScaleName(1), "1:1");
  EXPECT_EQ(ScaleName(2), "2:1");
  EXPECT_EQ(ScaleName(0.4), "1:2.5");
}

TEST(EntityCopyTest, InsertKeepsAttributeValuesWithNewHandles) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1032.dxf");
  ASSERT_TRUE(doc);
  Layout sheet(Entity{});
  ASSERT_TRUE(AddLayout(*doc, "Copies", &sheet).ok());
  Block* target = LayoutBlock(*doc, sheet);
  Entity src = doc->FindByHandle(0x79C);
  ASSERT_EQ(src.type(), "INSERT");
  RecordId ids[] = {src.id(), doc->FindByHandle(0x704).id()};
  std::vector<Entity> copies = CopyEntities(*doc, ids, *doc, target);
  ASSERT_EQ(copies.size(), 2u);
  Insert copy(copies[0]);
  EXPECT_NE(copy.handle(), src.handle());
  EXPECT_TRUE(copy.paper_space());
  std::vector<Attrib> a = Insert(src).attribs();
  std::vector<Attrib> b = copy.attribs();
  ASSERT_EQ(a.size(), b.size());
  for (size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].value(), b[i].value());
    EXPECT_NE(a[i].handle(), b[i].handle());
    EXPECT_EQ(b[i].owner(), copy.handle());
  }
  // The pattern's main viewport is not copied into a layout.
  Layout layout1 = FindLayout(*doc, "Layout1");
  std::vector<Entity> vps =
      CopyEntities(*doc, LayoutBlock(*doc, layout1)->entities, *doc, target);
  EXPECT_EQ(vps.size(), 1u);
  std::string read = SaveAndRead(*doc, "copied.dxf");
  EXPECT_TRUE(Has(read, "attrib Copies")) << read;
  EXPECT_TRUE(Has(read, "PRESET_ATT=hello")) << read;
}

TEST(EntityCopyTest, BetweenDrawingsBringsBlocksLayersAndScales) {
  LMT_SKIP_WITHOUT_SHARED();
  auto from = Open("s_AC1032.dxf");
  ASSERT_TRUE(from);
  auto to = Open("text_negative_extrusion.dxf");
  ASSERT_TRUE(to);
  // Dimensions and multilines name styles that are not brought along.
  std::vector<RecordId> ids;
  for (RecordId id : from->model_space()->entities) {
    std::string_view type = from->entity(id).type();
    if (type != "DIMENSION" && type != "MLINE") ids.push_back(id);
  }
  std::vector<Entity> copies = CopyEntities(*from, ids, *to, to->model_space());
  EXPECT_EQ(copies.size(), ids.size());
  EXPECT_NE(to->FindBlock("MyBlock"), nullptr);
  Layout pattern = FindLayout(*from, "Layout1");
  Layout sheet(Entity{});
  ASSERT_TRUE(AddLayout(*to, "Imported", &sheet).ok());
  std::vector<Entity> vps =
      CopyEntities(*from, LayoutBlock(*from, pattern)->entities, *to,
                   LayoutBlock(*to, sheet));
  ASSERT_EQ(vps.size(), 1u);
  EXPECT_EQ(ViewportAnnotationScale(*to, vps[0]),
            ViewportAnnotationScale(
                *from, from->entity(LayoutBlock(*from, pattern)->entities[1])));
  std::string read = SaveAndRead(*to, "copied_between.dxf");
  EXPECT_TRUE(Has(read, "PRESET_ATT=hello")) << read;
}

TEST(LayoutEditTest, R12IsRefused) {
  LMT_SKIP_WITHOUT_SHARED();
  auto doc = Open("s_AC1009.dxf");
  ASSERT_TRUE(doc);
  EXPECT_FALSE(AddLayout(*doc, "Sheet", nullptr).ok());
  ViewportSettings entry;
  entry.width = entry.height = 1;
  EXPECT_FALSE(AddViewport(*doc, doc->paper_space(), entry).valid());
}

}  // namespace
}  // namespace lmt::dxf

// The layout-creation members of the embedded host over the engine's layout
// editing: new, renamed and deleted layouts, page setups, copies, the
// standard viewport builder with its annotation scale, saving as older
// releases and layout templates; then blocks' base points and external
// references' contents.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

#include "dxf/document.h"
#include "dxf/viewport.h"
#include "dxfhost/test_support.h"
#include "testing/shell.h"
#include "testing/test_paths.h"

namespace lmt::dxfhost {
namespace {

using host::Point;

std::vector<std::string> Names(const host::DocumentPtr& doc) {
  std::vector<std::string> out;
  Result<std::vector<host::LayoutPtr>> all = (*doc->Layouts())->Items();
  EXPECT_TRUE(all.ok()) << all.status().ToString();
  if (!all.ok()) return out;
  for (const host::LayoutPtr& l : *all) {
    Result<std::string> name = l->Name();
    out.push_back(name.ok() ? *name : "?");
  }
  return out;
}

std::string AcadVer(const std::string& path) {
  std::unique_ptr<dxf::Document> doc;
  if (!dxf::Document::Load(path, &doc).ok()) return "";
  return std::string(doc->version());
}

TEST(LayoutsTest, AddRenameDelete) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  Result<host::LayoutPtr> added = layouts->Add("Лист 1");
  ASSERT_TRUE(added.ok()) << added.status().ToString();
  host::LayoutPtr sheet = *added;
  EXPECT_EQ(*sheet->Name(), "Лист 1");
  EXPECT_EQ(*(*sheet->Block())->Count(), 1);  // its own viewport
  // Taken names (case ignored) are refused; names the file cannot hold are
  // wrong arguments.
  EXPECT_EQ(layouts->Add("PATTERN").status().code(), StatusCode::kRefused);
  EXPECT_EQ(layouts->Add("Model").status().code(), StatusCode::kRefused);
  EXPECT_EQ(layouts->Add("a|b").status().code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(sheet->SetName("pattern").code(), StatusCode::kRefused);
  ASSERT_TRUE(sheet->SetName("Sheet 2").ok());
  ASSERT_TRUE(sheet->SetName("SHEET 2").ok());  // its own name, recased
  EXPECT_EQ(Names(s.doc), (std::vector<std::string>{"Model", "Layout1",
                                                    "Pattern", "SHEET 2"}));
  EXPECT_TRUE(layouts->Item("sheet 2").ok());

  // Deleting the active layout moves the session to the next one; a
  // wrapper of the deleted layout answers kNotFound.
  host::LayoutPtr layout1 = *layouts->Item("Layout1");
  ASSERT_TRUE(s.doc->SetActiveLayout(layout1).ok());
  host::BlockPtr layout1_block = *s.doc->PaperSpace();
  ASSERT_TRUE(layout1->Delete().ok());
  EXPECT_EQ(*(*s.doc->ActiveLayout())->Name(), "Pattern");
  EXPECT_EQ(layout1->Name().status().code(), StatusCode::kNotFound);
  EXPECT_EQ(layout1->Delete().code(), StatusCode::kNotFound);
  EXPECT_EQ(layout1_block->Count().status().code(), StatusCode::kNotFound);
  EXPECT_EQ(s.doc->CopyObjects({}, layout1_block).status().code(),
            StatusCode::kInvalidArgument);
  EXPECT_EQ(*layouts->Count(), 3);
  EXPECT_EQ((*layouts->Item("Model"))->Delete().code(), StatusCode::kRefused);
  // The freed name can be taken again.
  EXPECT_TRUE(layouts->Add("Layout1").ok());

  std::string out = test::ScratchDir() + "/layouts_edited.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
  test::Session reopened(out);
  EXPECT_EQ(
      Names(reopened.doc),
      (std::vector<std::string>{"Model", "Pattern", "SHEET 2", "Layout1"}));
}

TEST(LayoutsTest, DeletionsKeepTheTabsInOrderAndNumbered) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  // Each new layout is the last tab, numbered after the one before.
  int32_t last = *(*layouts->Item("Pattern"))->TabOrder();
  for (const char* name : {"A", "B", "C"}) {
    Result<host::LayoutPtr> added = layouts->Add(name);
    ASSERT_TRUE(added.ok());
    EXPECT_EQ(*(*added)->TabOrder(), ++last) << name;
  }
  ASSERT_TRUE((*layouts->Item("b"))->Delete().ok());
  EXPECT_EQ(layouts->Item("B").status().code(), StatusCode::kNotFound);
  ASSERT_TRUE((*layouts->Item("Layout1"))->Delete().ok());
  ASSERT_TRUE(layouts->Add("B").ok());  // the freed name, as the last tab
  EXPECT_EQ(Names(s.doc),
            (std::vector<std::string>{"Model", "Pattern", "A", "C", "B"}));
  std::vector<int32_t> tabs;
  const std::vector<host::LayoutPtr> all = *layouts->Items();
  for (const host::LayoutPtr& l : all) {
    tabs.push_back(*l->TabOrder());
  }
  EXPECT_EQ(tabs, (std::vector<int32_t>{0, 1, 2, 3, 4}));
  EXPECT_EQ(*(*layouts->Item("c"))->Name(), "C");
}

TEST(LayoutsTest, TheLastPaperLayoutStays) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  ASSERT_TRUE((*layouts->Item("Layout1"))->Delete().ok());
  EXPECT_EQ((*layouts->Item("Pattern"))->Delete().code(), StatusCode::kRefused);
  EXPECT_EQ(Names(s.doc), (std::vector<std::string>{"Model", "Pattern"}));
}

// The add-in's standard viewport builder, step by step, for a frame turned
// by 30 degrees at 1:50 in a copy of the pattern layout: the frame's
// corners must land on the viewport's edges, and the viewport keeps the
// annotation scale set while it was entered.
TEST(LayoutsTest, StandardViewportShowsExactlyItsFrame) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  host::LayoutPtr pattern = *layouts->Item("Pattern");
  ASSERT_TRUE(pattern->SetPlotType(host::kPlotLayout).ok());
  host::LayoutPtr sheet = *layouts->Add("Sheet");
  ASSERT_TRUE(sheet->CopyFrom(pattern).ok());
  EXPECT_EQ(*sheet->PlotType(), host::kPlotLayout);
  std::vector<host::EntityPtr> items = *(*pattern->Block())->Items();
  Result<std::vector<host::EntityPtr>> copies =
      s.doc->CopyObjects(items, *sheet->Block());
  ASSERT_TRUE(copies.ok()) << copies.status().ToString();
  ASSERT_EQ(copies->size(), 1u);
  EXPECT_EQ(*(*copies)[0]->ObjectName(), "AcDbText");
  ASSERT_TRUE(s.doc->SetActiveLayout(sheet).ok());

  const Point frame{5000, 3000, 0};
  const double theta = std::numbers::pi / 6, scale = 1.0 / 50;
  const double fw = 42050, fh = 29700;
  const double w = fw * scale, h = fh * scale;
  const Point c{10 + w / 2, 10 + h / 2, 0};
  host::BlockPtr paper = *s.doc->PaperSpace();
  Result<host::PViewportPtr> added = paper->AddPViewport(c, w, h);
  ASSERT_TRUE(added.ok()) << added.status().ToString();
  host::PViewportPtr vp = *added;
  EXPECT_FALSE(*vp->ViewportOn());  // until Display
  EXPECT_EQ(paper->AddPViewport(c, 0, h).status().code(),
            StatusCode::kInvalidArgument);
  EXPECT_EQ((*s.doc->ModelSpace())->AddPViewport(c, w, h).status().code(),
            StatusCode::kNotSupported);
  ASSERT_TRUE(vp->SetDirection(Point{0, 0, 1}).ok());
  ASSERT_TRUE(vp->SetStandardScale(host::kCustomScale).ok());
  ASSERT_TRUE(vp->SetCustomScale(scale).ok());
  ASSERT_TRUE(vp->Display(true).ok());
  ASSERT_TRUE(vp->SetTwistAngle(-theta).ok());
  Point v = std::get<Point>(*s.doc->GetVariable("VIEWCTR"));
  Point shifted{frame.x - v.x, frame.y - v.y, 0};  // block angle 0
  Point target =
      *(*s.doc->Utility())
           ->TranslateCoordinates(shifted, host::CoordinateSystem::kDisplay,
                                  host::CoordinateSystem::kWorld, false);
  ASSERT_TRUE(vp->SetTarget(target).ok());
  ASSERT_TRUE(vp->Update().ok());
  ASSERT_TRUE(vp->SetDisplayLocked(true).ok());
  // The annotation scale, entered and left as the builder does.
  ASSERT_TRUE(s.doc->SetActivePViewport(vp).ok());
  ASSERT_TRUE(s.doc->SetMSpace(true).ok());
  ASSERT_TRUE(s.doc->SetVariable("CANNOSCALE", host::Variant("1:50")).ok());
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("CANNOSCALE")), "1:50");
  EXPECT_EQ(s.doc->SetVariable("CANNOSCALE", host::Variant("1/50")).code(),
            StatusCode::kInvalidArgument);
  ASSERT_TRUE(s.doc->SetMSpace(false).ok());
  // A copy takes the scale along.
  Result<host::EntityPtr> copied = vp->Copy();
  ASSERT_TRUE(copied.ok()) << copied.status().ToString();
  host::PViewportPtr copy = host::As<host::PViewport>(*copied);
  ASSERT_NE(copy, nullptr);
  ASSERT_TRUE(copy->SetWidth(50).ok());
  ASSERT_TRUE(s.doc->SetActivePViewport(copy).ok());
  ASSERT_TRUE(s.doc->SetMSpace(true).ok());
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("CANNOSCALE")), "1:50");
  ASSERT_TRUE(s.doc->SetMSpace(false).ok());

  std::string out = test::ScratchDir() + "/standard_viewport.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
  // Read the viewport back and map the frame's corners to paper.
  std::unique_ptr<dxf::Document> back;
  ASSERT_TRUE(dxf::Document::Load(out, &back).ok());
  dxf::Viewport got(
      back->FindByHandle(std::stoull(*vp->Handle(), nullptr, 16)));
  ASSERT_TRUE(got.valid());
  double s_read = got.height() / got.view_height();
  double tw = got.twist() * std::numbers::pi / 180;
  dxf::Vec3 t = got.view_target(), vc = got.view_center(), pc = got.center();
  for (int i = 0; i < 4; ++i) {
    double lx = (i == 1 || i == 2 ? 0.5 : -0.5) * fw;
    double ly = (i >= 2 ? 0.5 : -0.5) * fh;
    Point corner{frame.x + lx * std::cos(theta) - ly * std::sin(theta),
                 frame.y + lx * std::sin(theta) + ly * std::cos(theta), 0};
    double dx = corner.x - t.x, dy = corner.y - t.y;
    double rx = dx * std::cos(tw) - dy * std::sin(tw);
    double ry = dx * std::sin(tw) + dy * std::cos(tw);
    EXPECT_NEAR(pc.x + s_read * (rx - vc.x), c.x + (lx > 0 ? w : -w) / 2, 1e-6)
        << i;
    EXPECT_NEAR(pc.y + s_read * (ry - vc.y), c.y + (ly > 0 ? h : -h) / 2, 1e-6)
        << i;
  }
  EXPECT_TRUE(got.is_on());
  EXPECT_TRUE(got.is_locked());

  // Reopened, entering the viewport answers its own scale again.
  test::Session reopened(out);
  host::LayoutPtr again = *(*reopened.doc->Layouts())->Item("Sheet");
  ASSERT_TRUE(reopened.doc->SetActiveLayout(again).ok());
  host::PViewportPtr vp_again = host::As<host::PViewport>(
      *reopened.doc->ObjectIdToObject(*vp->ObjectID()));
  ASSERT_NE(vp_again, nullptr);
  ASSERT_TRUE(reopened.doc->SetActivePViewport(vp_again).ok());
  ASSERT_TRUE(reopened.doc->SetMSpace(true).ok());
  EXPECT_EQ(std::get<std::string>(*reopened.doc->GetVariable("CANNOSCALE")),
            "1:50");
}

// Older releases are written from a converted copy: the open drawing keeps
// its own release, and Close(true) saves in the release last chosen.
TEST(LayoutsTest, SaveAsOlderReleases) {
  std::string dir = test::ScratchDir();
  std::string kept = dir + "/kept.dxf";
  {
    test::Session s(test::TestdataPath("example.dxf"));
    ASSERT_TRUE((*s.doc->Layouts())->Add("Extra").ok());
    const std::pair<int, const char*> kReleases[] = {
        {13, "AC1015"}, {25, "AC1018"}, {37, "AC1021"},
        {49, "AC1024"}, {61, "AC1027"}, {65, "AC1032"}};
    for (auto [type, acadver] : kReleases) {
      std::string path = dir + "/release" + std::to_string(type) + ".dxf";
      Status saved = s.doc->SaveAs(path, type);
      ASSERT_TRUE(saved.ok()) << type << " " << saved.ToString();
      EXPECT_EQ(AcadVer(path), acadver);
      EXPECT_EQ(test::CheckDxf(path, test::kExampleProblems), "") << type;
    }
    EXPECT_EQ(
        std::get<std::string>(*s.doc->GetVariable("ACADVER")).substr(0, 6),
        "AC1032");
    ASSERT_TRUE(s.doc->SaveAs(kept, 13).ok());
    ASSERT_TRUE((*s.doc->Layouts())->Add("After").ok());
    ASSERT_TRUE(s.doc->Close(true).ok());
  }
  EXPECT_EQ(AcadVer(kept), "AC1015");
  test::Session reopened(kept);
  EXPECT_TRUE((*reopened.doc->Layouts())->Item("After").ok());
}

TEST(LayoutsTest, LayoutTemplateImportsALayout) {
  LMT_SKIP_WITHOUT_SHARED();
  test::Session s(test::TestdataPath("example.dxf"));
  const std::string tmpl = test::SamplePath("s_AC1032.dxf");
  auto import = [&](const std::string& file, const std::string& name) {
    return s.doc->SendCommand("_-Layout _Template\r\"" + file + "\"\r\"" +
                              name + "\"\r\x1b");
  };
  ASSERT_TRUE(import(tmpl, "Layout2").ok());
  Result<host::LayoutPtr> mine = (*s.doc->Layouts())->Item("Layout2");
  ASSERT_TRUE(mine.ok()) << mine.status().ToString();
  // Its own main viewport plus the template's model viewport.
  EXPECT_EQ(*(*(*mine)->Block())->Count(), 2);

  const std::string dir = test::ScratchDir();
  std::string before = dir + "/before.dxf";
  ASSERT_TRUE(s.doc->SaveAs(before, 65).ok());
  // Bad names and files change nothing.
  EXPECT_EQ(import(tmpl, "NoSuch").code(), StatusCode::kNotFound);
  EXPECT_EQ(import(tmpl, "Model").code(), StatusCode::kNotFound);
  EXPECT_EQ(import(tmpl, "layout2").code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(import("missing.dxf", "A3").code(), StatusCode::kNotFound);
  EXPECT_EQ(s.doc->SendCommand("_-Layout _Template\r\x1b").code(),
            StatusCode::kInvalidArgument);
  std::string after = dir + "/after.dxf";
  ASSERT_TRUE(s.doc->SaveAs(after, 65).ok());
  EXPECT_EQ(test::ReadFile(before), test::ReadFile(after));
  EXPECT_EQ(test::CheckDxf(after, test::kExampleProblems), "");
}

// A relative template path is found beside the drawing.
TEST(LayoutsTest, LayoutTemplateBesideTheDrawing) {
  LMT_SKIP_WITHOUT_SHARED();
  std::string dir = test::ScratchDir();
  std::filesystem::copy_file(test::TestdataPath("example.dxf"),
                             dir + "/drawing.dxf");
  std::filesystem::copy_file(test::SamplePath("s_AC1015.dxf"),
                             dir + "/template.dxf");
  test::Session s(dir + "/drawing.dxf");
  ASSERT_TRUE(
      s.doc->SendCommand("_-Layout _Template\r\"template.dxf\"\r\"Layout2\"\r")
          .ok());
  EXPECT_EQ(Names(s.doc), (std::vector<std::string>{"Model", "Layout1",
                                                    "Pattern", "Layout2"}));
}

// The page set-up members write the codes a CAD program writes for that
// set-up: the paper's size from its name, limits and the layout's own view
// following the paper, the device description dropped; a name without a
// size or a value out of range changes nothing.
TEST(LayoutsTest, PageSetupWritesThePlotSettings) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::LayoutPtr sheet = *(*s.doc->Layouts())->Add("Sheet");
  ASSERT_TRUE(sheet->SetConfigName("DWG To PDF.pc3").ok());
  ASSERT_TRUE(
      sheet->SetCanonicalMediaName("ISO_full_bleed_A1_(841.00_x_594.00_MM)")
          .ok());
  ASSERT_TRUE(sheet->SetStyleSheet("monochrome.ctb").ok());
  ASSERT_TRUE(sheet->SetPlotRotation(0).ok());
  ASSERT_TRUE(sheet->SetCenterPlot(true).ok());
  ASSERT_TRUE(sheet->SetUseStandardScale(true).ok());
  ASSERT_TRUE(sheet->SetStandardScale(host::kScale1To1).ok());
  ASSERT_TRUE(sheet->RefreshPlotDeviceInfo().ok());
  EXPECT_EQ(*sheet->ConfigName(), "DWG To PDF.pc3");
  EXPECT_EQ(*sheet->StyleSheet(), "monochrome.ctb");
  EXPECT_TRUE(*sheet->CenterPlot());
  EXPECT_TRUE(*sheet->UseStandardScale());
  EXPECT_EQ(*sheet->StandardScale(), host::kScale1To1);
  host::PaperSize size = *sheet->GetPaperSize();
  EXPECT_EQ(size.width, 841);
  EXPECT_EQ(size.height, 594);

  EXPECT_EQ(sheet->SetCanonicalMediaName("A4").code(),
            StatusCode::kInvalidArgument);
  EXPECT_EQ(sheet->SetPlotRotation(4).code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(sheet->SetStandardScale(33).code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(*sheet->CanonicalMediaName(),
            "ISO_full_bleed_A1_(841.00_x_594.00_MM)");
  EXPECT_EQ(*sheet->PlotRotation(), 0);
  ASSERT_TRUE(sheet->SetCenterPlot(false).ok());
  EXPECT_FALSE(*sheet->CenterPlot());
  ASSERT_TRUE(sheet->SetCenterPlot(true).ok());

  // The saved drawing is read back by ezdxf.
  LMT_SKIP_WITHOUT_EZDXF();
  std::string out = test::ScratchDir() + "/page_setup.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
  testing::ShellRun check = testing::RunShell(
      testing::PythonCommand() +
      "-c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]);"
      " l=d.layouts.get('Sheet'); p=l.dxf_layout.dxf;"
      " got=(p.plot_configuration_file, p.paper_size, p.paper_width,"
      " p.paper_height, p.plot_rotation, p.plot_type,"
      " p.standard_scale_type, p.current_style_sheet, p.plot_paper_units,"
      " p.plot_layout_flags & (4 | 16), p.scale_numerator,"
      " p.scale_denominator, p.left_margin, p.top_margin,"
      " tuple(p.limmax)[:2]);"
      " want=('DWG To PDF.pc3', 'ISO_full_bleed_A1_(841.00_x_594.00_MM)',"
      " 841, 594, 0, 5, 16, 'monochrome.ctb', 1, 20, 1, 1, 0, 0,"
      " (841, 594));"
      " assert got == want, got;"
      " assert not l.dxf_layout.has_xdata('ACAD_PSEXT');"
      " v=[v for v in l.query('VIEWPORT') if v.dxf.id == 1][0];"
      " assert tuple(v.dxf.center)[:2] == (420.5, 297), v.dxf.center;"
      " p0=d.layouts.get('Pattern').dxf_layout.dxf;"
      " assert (p0.plot_configuration_file, p0.paper_size) =="
      " ('Adobe PDF', 'A3')\" " +
      testing::ShellQuote(out) + " 2>&1");
  EXPECT_EQ(check.status, 0) << check.out;
}

// ---------------------------------------------------------------- blocks

TEST(BlocksTest, CopiedReferenceKeepsItsAttributes) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::BlockReferencePtr frame =
      host::As<host::BlockReference>(s.ByHandle("94"));
  ASSERT_NE(frame, nullptr);
  Result<host::EntityPtr> copied = frame->Copy();
  ASSERT_TRUE(copied.ok()) << copied.status().ToString();
  host::BlockReferencePtr copy = host::As<host::BlockReference>(*copied);
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(*copy->Handle(), *frame->Handle());
  std::vector<host::AttributePtr> mine = *copy->GetAttributes();
  std::vector<host::AttributePtr> theirs = *frame->GetAttributes();
  ASSERT_EQ(mine.size(), theirs.size());
  ASSERT_FALSE(mine.empty());
  for (size_t i = 0; i < mine.size(); ++i) {
    EXPECT_EQ(*mine[i]->TagString(), *theirs[i]->TagString());
    EXPECT_EQ(*mine[i]->TextString(), *theirs[i]->TextString());
    EXPECT_NE(*mine[i]->Handle(), *theirs[i]->Handle());
  }
  // Changing the copy's value leaves the original's.
  ASSERT_TRUE(mine[0]->SetTextString("changed").ok());
  EXPECT_NE(*theirs[0]->TextString(), "changed");
  EXPECT_EQ(*(*s.doc->ModelSpace())->Count(), 31);
  std::string out = test::ScratchDir() + "/copied.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
}

// viewports.dxf: XPART references xref_part.dxf (a 100 x 50 line) by a
// relative path.
TEST(BlocksTest, ExternalReferenceAnswersTheReferencedModelSpace) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  host::BlocksPtr blocks = *s.doc->Blocks();
  host::BlockPtr xref;
  const std::vector<host::BlockPtr> all = *blocks->Items();
  for (const host::BlockPtr& b : all) {
    if (b->IsXRef().value_or(false)) xref = b;
  }
  ASSERT_NE(xref, nullptr);
  Result<std::vector<host::EntityPtr>> items = xref->Items();
  ASSERT_TRUE(items.ok()) << items.status().ToString();
  ASSERT_EQ(items->size(), 1u);
  EXPECT_EQ(*(*items)[0]->ObjectName(), "AcDbLine");
  EXPECT_EQ(*xref->Count(), 1);
  EXPECT_EQ(*(*xref->Item(0))->Handle(), *(*items)[0]->Handle());
  EXPECT_EQ(xref->Item(1).status().code(), StatusCode::kNotFound);
  // Closing the drawing closes what it read for its references.
  ASSERT_TRUE(s.doc->Close(false).ok());
  EXPECT_EQ((*items)[0]->ObjectName().status().code(), StatusCode::kNotFound);
}

// The same reference by an absolute path, and by a path to no file: the
// block is then empty and its extents unknown, as in a CAD program.
TEST(BlocksTest, ExternalReferenceByAbsoluteOrMissingPath) {
  const std::string source =
      test::ReadFile(test::TestdataPath("frames/xref.dxf"));
  const std::string relative = "\n  1\nxref_frame.dxf\n";
  ASSERT_NE(source.find(relative), std::string::npos);
  const std::string dir = test::ScratchDir();
  struct Case {
    std::string file;
    int count;
  };
  const std::string absolute =
      std::filesystem::absolute(test::TestdataPath("frames/xref_frame.dxf"))
          .lexically_normal()
          .string();
  for (const Case& c : {Case{absolute, 1}, Case{dir + "/none.dxf", 0}}) {
    SCOPED_TRACE(c.file);
    std::string text = source;
    text.replace(text.find(relative), relative.size(),
                 "\n  1\n" + c.file + "\n");
    const std::string path = dir + "/host.dxf";
    std::ofstream(path, std::ios::binary) << text;
    test::Session s(path);
    host::BlockPtr xref = *(*s.doc->Blocks())->Item("XPART");
    EXPECT_TRUE(*xref->IsXRef());
    EXPECT_EQ(*xref->Count(), c.count);
    if (c.count == 0) continue;
    host::PolylinePtr frame = host::As<host::Polyline>(*xref->Item(0));
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->Coordinates()->size(), 8u);
  }
}

TEST(BlocksTest, OriginIsTheBasePoint) {
  test::Session s(test::TestdataPath("frames/based.dxf"));
  host::BlocksPtr blocks = *s.doc->Blocks();
  EXPECT_EQ(*(*blocks->Item("BASED"))->Origin(), (Point{210, 0, 0}));
  EXPECT_EQ(*(*s.doc->ModelSpace())->Origin(), (Point{0, 0, 0}));
}

}  // namespace
}  // namespace lmt::dxfhost

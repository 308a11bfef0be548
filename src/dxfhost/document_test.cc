// The application and document level of the embedded host: host kinds,
// documents, variables, commands, saving, layouts, the ObjectDBX document,
// refusals through the call gate.
#include "dxfhost/document.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

#include "dxfhost/test_support.h"
#include "testing/failing_host.h"
#include "testing/test_paths.h"

namespace lmt::dxfhost {
namespace {

using host::Point;
using host::Variant;

TEST(ApplicationTest, PlaysTheChosenHostKind) {
  struct Row {
    host::HostKind kind;
    const char* version_prefix;
  };
  const Row kRows[] = {{host::HostKind::kAutoCad, "24.0"},
                       {host::HostKind::kNanoCad, "23.0"},
                       {host::HostKind::kZwCad, "2023"},
                       {host::HostKind::kBricsCad, "23.2"},
                       {host::HostKind::kIntelliCad, "11.1"}};
  for (const Row& row : kRows) {
    auto app = DxfApplication::Create(row.kind, nullptr);
    EXPECT_EQ(app->Version()->rfind(row.version_prefix, 0), 0u);
    EXPECT_EQ(app->Caption()->rfind(host::HostKindName(row.kind), 0), 0u);
    EXPECT_EQ(app->ActiveDocument().status().code(), StatusCode::kNotFound);
  }
}

TEST(ApplicationTest, PreferencesOfTheSession) {
  auto app = DxfApplication::Create(host::HostKind::kZwCad, nullptr);
  host::PreferencesPtr prefs = *app->Preferences();
  EXPECT_EQ(*prefs->SaveAsType() % 2, 1);  // a DXF type: the ".dxf" family
  EXPECT_EQ(prefs->SetSaveAsType(64).code(), StatusCode::kNotSupported);
  ASSERT_TRUE(prefs->SetSaveAsType(13).ok());
  EXPECT_EQ(*prefs->SaveAsType(), 13);
  ASSERT_TRUE(prefs->SetLayoutCreateViewport(false).ok());
  EXPECT_FALSE(*prefs->LayoutCreateViewport());
  EXPECT_EQ(app->ZoomExtents().code(), StatusCode::kNotFound);
}

TEST(ApplicationTest, DocumentsOpenAndClose) {
  LMT_SKIP_WITHOUT_SHARED();
  auto app = DxfApplication::Create(host::HostKind::kAutoCad, nullptr);
  host::DocumentsPtr docs = *app->Documents();
  Result<host::DocumentPtr> a = docs->Open(test::TestdataPath("example.dxf"));
  Result<host::DocumentPtr> b = docs->Open(test::SamplePath("s_AC1015.dxf"));
  ASSERT_TRUE(a.ok() && b.ok());
  EXPECT_EQ(*docs->Count(), 2);
  EXPECT_EQ(*(*app->ActiveDocument())->Name(), "s_AC1015.dxf");
  EXPECT_EQ(*(*a)->FullName(),
            std::filesystem::absolute(test::TestdataPath("example.dxf"))
                .lexically_normal()
                .string());
  EXPECT_EQ((*(*a)->Application()).get(), app.get());
  ASSERT_TRUE((*b)->Close(false).ok());
  EXPECT_EQ(*docs->Count(), 1);
  EXPECT_EQ(*(*app->ActiveDocument())->Name(), "example.dxf");
  EXPECT_EQ((*b)->Name().status().code(), StatusCode::kNotFound);
  EXPECT_EQ(docs->Open("/no/such/file.dxf").status().code(),
            StatusCode::kIOError);
}

TEST(DocumentTest, VariablesFromTheDrawingAndTheSession) {
  test::Session s(test::TestdataPath("example.dxf"));
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("TILEMODE")), 1);
  EXPECT_EQ(std::get<Point>(*s.doc->GetVariable("viewdir")), (Point{0, 0, 1}));
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("UCSNAME")), "");
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("WORLDUCS")), 1);
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("CANNOSCALE")), "1:1");
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("CTAB")), "Model");
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("INSUNITS")), 4);

  for (const char* name : {"FILEDIA", "PEDITACCEPT", "DRAWORDERCTL",
                           "SECURELOAD", "PDFIMPORTFILTER", "INSUNITS"}) {
    ASSERT_TRUE(s.doc->SetVariable(name, Variant(int16_t{0})).ok()) << name;
    EXPECT_EQ(*host::ToInt(*s.doc->GetVariable(name)), 0) << name;
    // As in the programs, a 16-bit variable refuses a 32-bit value.
    EXPECT_EQ(s.doc->SetVariable(name, Variant(int32_t{1})).code(),
              StatusCode::kInvalidArgument)
        << name;
  }
  ASSERT_TRUE(
      s.doc->SetVariable("PDFIMPORTIMAGEPATH", Variant(std::string("C:\\i")))
          .ok());
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("pdfimportimagepath")),
            "C:\\i");
  ASSERT_TRUE(
      s.doc->SetVariable("CANNOSCALE", Variant(std::string("1:100"))).ok());
  EXPECT_EQ(std::get<std::string>(*s.doc->GetVariable("CANNOSCALE")), "1:100");
  EXPECT_EQ(
      s.doc->SetVariable("CANNOSCALE", Variant(std::string("big"))).code(),
      StatusCode::kInvalidArgument);
  EXPECT_EQ(s.doc->SetVariable("VIEWCTR", Variant(Point{})).code(),
            StatusCode::kRefused);
  EXPECT_EQ(s.doc->GetVariable("NOSUCHVAR").status().code(),
            StatusCode::kNotFound);

  // TILEMODE 0 goes to the layout the drawing opens on; CTAB to any.
  ASSERT_TRUE(s.doc->SetVariable("TILEMODE", Variant(int16_t{0})).ok());
  EXPECT_EQ(*s.doc->ActiveSpace(), host::Space::kPaperSpace);
  ASSERT_TRUE(s.doc->SetVariable("CTAB", Variant(std::string("pattern"))).ok());
  EXPECT_EQ(*(*s.doc->ActiveLayout())->Name(), "Pattern");
  EXPECT_EQ(*(*(*s.doc->PaperSpace())->Item(0))->Handle(), "C8");
  EXPECT_EQ(std::get<Point>(*s.doc->GetVariable("VIEWCTR")), (Point{}));
}

TEST(DocumentTest, LayoutsInTabOrder) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  std::vector<std::string> names;
  std::vector<host::LayoutPtr> all = *layouts->Items();
  for (const host::LayoutPtr& l : all) names.push_back(*l->Name());
  EXPECT_EQ(names, (std::vector<std::string>{"Model", "Layout1", "Pattern"}));
  host::LayoutPtr pattern = *layouts->Item("PATTERN");
  EXPECT_EQ(*(*pattern->Block())->Count(), 1);
  EXPECT_EQ(*(*(*layouts->Item(0))->Block())->Name(), "*Model_Space");
  EXPECT_EQ(layouts->Item("Nope").status().code(), StatusCode::kNotFound);
  ASSERT_TRUE(s.doc->SetActiveLayout(pattern).ok());
  EXPECT_EQ(*(*s.doc->ActiveLayout())->Name(), "Pattern");
  ASSERT_TRUE(pattern->SetPlotType(host::kPlotLayout).ok());
  EXPECT_EQ(*pattern->PlotType(), host::kPlotLayout);
  // A new layout: its own viewport first, names unique ignoring case;
  // a new viewport starts switched off.
  Result<host::LayoutPtr> added = layouts->Add("New");
  ASSERT_TRUE(added.ok()) << added.status().ToString();
  EXPECT_EQ(*(*(*added)->Block())->Count(), 1);
  EXPECT_EQ(layouts->Add("NEW").status().code(), StatusCode::kRefused);
  EXPECT_EQ(layouts->Add("Model").status().code(), StatusCode::kRefused);
  Result<host::PViewportPtr> vp =
      (*pattern->Block())->AddPViewport(Point{5, 5, 0}, 10, 10);
  ASSERT_TRUE(vp.ok()) << vp.status().ToString();
  EXPECT_FALSE(*(*vp)->ViewportOn());
  ASSERT_TRUE((*added)->CopyFrom(pattern).ok());
  ASSERT_TRUE((*added)->Delete().ok());
  EXPECT_EQ(layouts->Item("New").status().code(), StatusCode::kNotFound);
}

TEST(DocumentTest, BlocksAndTables) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  host::BlocksPtr blocks = *s.doc->Blocks();
  EXPECT_TRUE(*(*blocks->Item("part"))->IsXRef());
  EXPECT_FALSE(*(*blocks->Item("TB"))->IsXRef());
  EXPECT_FALSE(*(*blocks->Item("TB"))->IsLayout());
  EXPECT_TRUE(*(*blocks->Item("*Model_Space"))->IsLayout());
  EXPECT_EQ(*(*blocks->Item("TB"))->Count(), 3);  // outline and two ATTDEFs

  host::LayersPtr layers = *s.doc->Layers();
  host::LayerPtr layer = *layers->Add("TEMPAddLayerLayomat");
  EXPECT_EQ(*layer->Name(), "TEMPAddLayerLayomat");
  EXPECT_EQ(*(*layers->Add("tempaddlayerlayomat"))->Name(),
            "TEMPAddLayerLayomat");  // Add returns the existing layer
  ASSERT_TRUE(s.doc->SetActiveLayer(layer).ok());
  EXPECT_EQ(layer->SetFreeze(true).code(), StatusCode::kRefused);
  host::LayerPtr frames = *layers->Item("FRAMES");
  ASSERT_TRUE(frames->SetFreeze(true).ok());
  ASSERT_TRUE(frames->SetLock(true).ok());
  EXPECT_TRUE(*frames->Freeze());
  EXPECT_TRUE(*frames->Lock());
  EXPECT_EQ(s.doc->SetActiveLayer(frames).code(), StatusCode::kRefused);
  EXPECT_EQ(frames->Delete().code(), StatusCode::kRefused);  // in use
  ASSERT_TRUE(s.doc->SetActiveLayer(*layers->Item("0")).ok());
  int before = *layers->Count();
  ASSERT_TRUE(layer->Delete().ok());
  EXPECT_EQ(*layers->Count(), before - 1);

  host::TextStylesPtr styles = *s.doc->TextStyles();
  host::TextStylePtr style = *styles->Add("Layomat");
  ASSERT_TRUE(style->SetFont(host::Font{"Arial", true, false, 204, 34}).ok());
  host::Font font = *style->GetFont();
  EXPECT_EQ(font.typeface, "Arial");
  EXPECT_TRUE(font.bold);
  EXPECT_EQ(font.charset, 204);
  ASSERT_TRUE(s.doc->SetActiveTextStyle(style).ok());
  EXPECT_EQ(*(*s.doc->ActiveTextStyle())->Name(), "Layomat");
  EXPECT_GT(*(*s.doc->Linetypes())->Count(), 0);

  std::string out = test::ScratchDir() + "/tables.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
}

TEST(DocumentTest, SaveAsTakesDxfTypesAndRefusesTheRest) {
  test::Session s(test::TestdataPath("example.dxf"));
  std::string dir = test::ScratchDir();
  for (int type : {13, 25, 37, 49, 61, 65, 71}) {
    std::string path = dir + "/t" + std::to_string(type);
    ASSERT_TRUE(s.doc->SaveAs(path, type).ok()) << type;
    EXPECT_TRUE(std::filesystem::exists(path + ".dxf")) << type;
  }
  EXPECT_EQ(*s.doc->Name(), "t71.dxf");
  // DWG is never written; R12 to R14 DXF would lose the layouts.
  for (int type : {1, 4, 5, 8, 9, 12, 24, 36, 48, 60, 64, 70}) {
    std::string path = dir + "/refused" + std::to_string(type) + ".dxf";
    Status st = s.doc->SaveAs(path, type);
    EXPECT_EQ(st.code(), StatusCode::kNotSupported) << type;
    const bool dwg = type % 2 == 0;
    EXPECT_NE(st.message().find(dwg ? "not DWG" : "layouts would be lost"),
              std::string::npos)
        << st.message();
    EXPECT_FALSE(std::filesystem::exists(path));
  }
  EXPECT_EQ(s.doc->SaveAs(dir + "/x", 2).code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(test::CheckDxf(dir + "/t13.dxf", test::kExampleProblems), "");
}

// The batch windows offer every release: an old drawing is saved in its
// own, R12 and R14 also in the newer ones (through DXF 2000).
TEST(DocumentTest, OldReleasesAreSavedWhereTheyFit) {
  std::string dir = test::ScratchDir();
  {
    test::Session r12(std::string(LMT_TESTDATA_DIR) + "/cli/frames_r12.dxf");
    EXPECT_TRUE(r12.doc->SaveAs(dir + "/r12.dxf", 1).ok());
    ASSERT_TRUE(r12.doc->SaveAs(dir + "/r12-2018.dxf", 65).ok());
    // The drawing's own problem, kept: its layout has no viewport of id 1.
    EXPECT_EQ(test::CheckDxf(dir + "/r12-2018.dxf", 1), "");
    // The open drawing stays R12.
    ASSERT_TRUE(r12.doc->SaveAs(dir + "/r12-again.dxf", 1).ok());
    EXPECT_EQ(test::ReadFile(dir + "/r12-again.dxf"),
              test::ReadFile(dir + "/r12.dxf"));
  }
  const std::string r14 = lmt::testing::CorpusPath("394_Test2.dxf");
  LMT_SKIP_WITHOUT_SHARED_FOR(r14);
  test::Session s(r14);
  ASSERT_TRUE(s.doc->SaveAs(dir + "/r14-2018.dxf", 65).ok());
  ASSERT_TRUE(s.doc->SaveAs(dir + "/r14.dxf", 9).ok());
  Status r13 = s.doc->SaveAs(dir + "/r13.dxf", 5);
  EXPECT_NE(r13.message().find("R13"), std::string::npos) << r13.message();
  EXPECT_EQ(test::CheckDxf(dir + "/r14-2018.dxf", 0), "");
}

TEST(DocumentTest, CommandsTheAddInSends) {
  test::Session s(test::TestdataPath("example.dxf"));
  std::string dir = test::ScratchDir();
  ASSERT_TRUE(s.doc->SaveAs(dir + "/before.dxf", 65).ok());

  for (const char* bad :
       {"_ZOOM\r_E\r", "_UCS\r_Origin\r", "_UCS\r_World\r_QSAVE\r",
        "(command \"_Layout\" \"_Set\" \"Missing\")"}) {
    Status st = s.doc->SendCommand(bad);
    EXPECT_FALSE(st.ok()) << bad;
  }
  Status zoom = s.doc->SendCommand("_ZOOM\r_E\r");
  EXPECT_NE(zoom.message().find("_ZOOM"), std::string::npos);
  Status tmpl =
      s.doc->SendCommand("_-Layout _Template\r\"C:\\\\t.dxf\"\r\"A3\"\r\x1b");
  EXPECT_EQ(tmpl.code(), StatusCode::kNotFound);
  ASSERT_TRUE(s.doc->SaveAs(dir + "/after.dxf", 65).ok());
  EXPECT_EQ(test::ReadFile(dir + "/before.dxf"),
            test::ReadFile(dir + "/after.dxf"));

  ASSERT_TRUE(s.doc->SendCommand("_UCS\r_World\r").ok());
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("WORLDUCS")), 1);
  ASSERT_TRUE(
      s.doc->SendCommand("(command \"_Layout\" \"_Set\" \"Layout1\")").ok());
  EXPECT_EQ(*(*s.doc->ActiveLayout())->Name(), "Layout1");
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("TILEMODE")), 0);
  ASSERT_TRUE(s.doc->SendCommand("_.LAYOUT _S Model\r").ok());
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("TILEMODE")), 1);
}

TEST(DocumentTest, TheActiveLayoutIsWhereTheSavedFileOpens) {
  std::string out = test::ScratchDir() + "/pattern.dxf";
  {
    test::Session s(test::TestdataPath("example.dxf"));
    ASSERT_TRUE(
        s.doc->SendCommand("(command \"_Layout\" \"_Set\" \"Pattern\")").ok());
    EXPECT_EQ(*(*(*s.doc->PaperSpace())->Item(0))->Handle(), "C8");
    ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  }
  EXPECT_EQ(test::CheckDxf(out, test::kExampleProblems), "");
  test::Session reopened(out);
  EXPECT_EQ(std::get<std::string>(*reopened.doc->GetVariable("CTAB")),
            "Pattern");
  EXPECT_EQ(*(*(*reopened.doc->PaperSpace())->Item(0))->Handle(), "C8");
  host::LayoutPtr layout1 = *(*reopened.doc->Layouts())->Item("Layout1");
  EXPECT_EQ(*(*layout1->Block())->Count(), 0);
}

// The deletion-outside-viewport walk: a 1:100 viewport twisted by 30
// degrees, its model window found through VIEWCTR after "_UCS _view" and a
// crossing selection in that UCS.
TEST(DocumentTest, ViewportWindowSelectsWhatTheViewportShows) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  ASSERT_TRUE(s.doc->SetVariable("CTAB", Variant(std::string("Sheet"))).ok());
  host::BlockPtr paper = *s.doc->PaperSpace();
  host::PViewportPtr vp;
  std::vector<host::EntityPtr> on_paper = *paper->Items();
  for (const host::EntityPtr& e : on_paper) {
    if (auto v = host::As<host::PViewport>(e)) vp = v;
  }
  ASSERT_NE(vp, nullptr);
  EXPECT_NEAR(*vp->CustomScale(), 0.01, 1e-12);
  EXPECT_NEAR(*vp->TwistAngle(), std::numbers::pi / 6, 1e-12);
  ASSERT_TRUE(s.doc->SetMSpace(false).ok());
  ASSERT_TRUE(s.doc->SetActivePViewport(vp).ok());
  host::BoundingBox box = *vp->GetBoundingBox();
  EXPECT_EQ(box.min, (Point{0, 0, 0}));
  ASSERT_TRUE(vp->SetDisplayLocked(true).ok());
  ASSERT_TRUE(vp->Display(true).ok());
  ASSERT_TRUE(s.doc->SetMSpace(true).ok());
  ASSERT_TRUE(s.doc->SetActivePViewport(vp).ok());
  ASSERT_TRUE(s.doc->SendCommand("_UCS\r_view\r").ok());
  EXPECT_EQ(std::get<int16_t>(*s.doc->GetVariable("WORLDUCS")), 0);

  host::UtilityPtr util = *s.doc->Utility();
  Result<Point> low = util->TranslateCoordinates(
      box.min, host::CoordinateSystem::kPaperSpaceDisplay,
      host::CoordinateSystem::kDisplay, false);
  ASSERT_TRUE(low.ok());
  Point center = std::get<Point>(*s.doc->GetVariable("VIEWCTR"));
  // In the view's UCS the window centre is the frame centre turned by the
  // twist, which is the viewport's view centre.
  EXPECT_NEAR(center.x,
              5000 * std::cos(std::numbers::pi / 6) -
                  3000 * std::sin(std::numbers::pi / 6),
              1e-6);
  double hw = *vp->Width() / 2 / *vp->CustomScale();
  double hh = *vp->Height() / 2 / *vp->CustomScale();
  host::SelectionSetPtr keep = *(*s.doc->SelectionSets())->Add("keep");
  ASSERT_TRUE(keep->Select(host::SelectMode::kCrossing,
                           Point{center.x - hw, center.y - hh, low->z},
                           Point{center.x + hw, center.y + hh, low->z},
                           host::SelectionFilter{})
                  .ok());
  std::vector<std::string> kept;
  std::vector<host::EntityPtr> members = *keep->Items();
  for (const host::EntityPtr& e : members) {
    kept.push_back(*e->ObjectName());
  }
  // Everything near the frame and the line crossing the window's edge; not
  // the far circle, nor the small one that only an untwisted window holds.
  EXPECT_EQ(kept, (std::vector<std::string>{
                      "AcDbBlockReference", "AcDbPolyline",
                      "AcDbBlockReference", "AcDbCircle", "AcDbLine"}));
  ASSERT_TRUE(s.doc->SetMSpace(false).ok());
  ASSERT_TRUE(vp->SetDisplayLocked(false).ok());
}

// A new viewport's view starts at target 0 with view centre (0, 0); the
// layout builder's centring (VIEWCTR in paper space, display to world) then
// lands the target on the frame centre.
TEST(DocumentTest, PaperSpaceViewCentreLetsTheBuilderCentreOnTheFrame) {
  test::Session s(test::TestdataPath("dxfhost/viewports.dxf"));
  ASSERT_TRUE(s.doc->SetActiveSpace(host::Space::kPaperSpace).ok());
  Point v = std::get<Point>(*s.doc->GetVariable("VIEWCTR"));
  const double beta = 0.3;
  Point rotated{v.x * std::cos(beta) - v.y * std::sin(beta),
                v.x * std::sin(beta) + v.y * std::cos(beta), 0};
  Point frame{5000, 3000, 0};
  Result<Point> target =
      (*s.doc->Utility())
          ->TranslateCoordinates(
              Point{frame.x - rotated.x, frame.y - rotated.y, 0},
              host::CoordinateSystem::kDisplay, host::CoordinateSystem::kWorld,
              false);
  ASSERT_TRUE(target.ok());
  EXPECT_EQ(*target, frame);
}

TEST(DocumentTest, PlanViewThroughTheActiveViewport) {
  test::Session s(test::TestdataPath("example.dxf"));
  host::ViewportPtr view = *s.doc->ActiveViewport();
  ASSERT_TRUE(view->SetDirection(Point{1, 1, 1}).ok());
  EXPECT_EQ(std::get<Point>(*s.doc->GetVariable("VIEWDIR")), (Point{0, 0, 1}));
  ASSERT_TRUE(s.doc->SetActiveViewport(view).ok());
  EXPECT_EQ(std::get<Point>(*s.doc->GetVariable("VIEWDIR")), (Point{1, 1, 1}));
}

// The view variables read the *Active entry back: a zoom onto a turned
// point keeps that point at the middle whatever order the members are set
// in, and nothing moves before the viewport is assigned back.
TEST(DocumentTest, ZoomAndTwistThroughTheActiveViewport) {
  test::Session s(test::TestdataPath("example.dxf"));
  ASSERT_TRUE(s.doc->SetActiveSpace(host::Space::kModelSpace).ok());
  host::ViewportPtr view = *s.doc->ActiveViewport();
  const double aspect = *view->Width() / *view->Height();
  const Point centre{104761.5, -56039.5, 0};
  ASSERT_TRUE(view->SetCenter(centre).ok());
  ASSERT_TRUE(view->SetTwist(-std::numbers::pi / 6).ok());
  ASSERT_TRUE(view->SetHeight(31185).ok());
  EXPECT_NEAR(*view->Twist(), 11 * std::numbers::pi / 6, 1e-12);
  EXPECT_EQ(std::get<double>(*s.doc->GetVariable("VIEWSIZE")), 1000);
  ASSERT_TRUE(s.doc->SetActiveViewport(view).ok());
  EXPECT_EQ(std::get<double>(*s.doc->GetVariable("VIEWSIZE")), 31185);
  const Point shown = std::get<Point>(*s.doc->GetVariable("VIEWCTR"));
  EXPECT_NEAR(shown.x, centre.x, 1e-6);
  EXPECT_NEAR(shown.y, centre.y, 1e-6);
  host::ViewportPtr again = *s.doc->ActiveViewport();
  EXPECT_NEAR(again->Center()->x, centre.x, 1e-6);
  EXPECT_NEAR(*again->Width() / *again->Height(), aspect, 1e-12);
  EXPECT_FALSE(view->SetHeight(0).ok());
}

TEST(DocumentTest, PicksGoToTheUser) {
  test::Session s(test::TestdataPath("example.dxf"));
  s.user.QueuePoint(Point{1, 2, 0});
  s.user.QueueDistance(42);
  s.user.QueuePointCancel();
  host::UtilityPtr util = *s.doc->Utility();
  EXPECT_EQ(*util->GetPoint(std::nullopt, "Start"), (Point{1, 2, 0}));
  EXPECT_EQ(*util->GetDistance(Point{}, "Length"), 42);
  EXPECT_EQ(util->GetPoint(std::nullopt, "Again").status().code(),
            StatusCode::kCancelled);
}

TEST(DbxDocumentTest, ReadsAndWritesWithoutBecomingActive) {
  auto app = DxfApplication::Create(host::HostKind::kAutoCad, nullptr);
  host::DocumentPtr active =
      *(*app->Documents())->Open(test::TestdataPath("example.dxf"));
  Result<host::DbxDocumentPtr> dbx =
      app->GetInterfaceObject("ObjectDBX.AxDbDocument.24");
  ASSERT_TRUE(dbx.ok());
  EXPECT_EQ(
      app->GetInterfaceObject("Scripting.FileSystemObject").status().code(),
      StatusCode::kNotSupported);
  EXPECT_EQ((*dbx)->ModelSpace().status().code(), StatusCode::kNotFound);
  ASSERT_TRUE((*dbx)->DxfIn(test::TestdataPath("dxfhost/viewports.dxf")).ok());
  host::BlockReferencePtr ref =
      host::As<host::BlockReference>(*(*(*dbx)->ModelSpace())->Item(0));
  ASSERT_TRUE((*(*ref->GetAttributes())[0]).SetTextString("8").ok());
  std::string dir = test::ScratchDir();
  ASSERT_TRUE((*dbx)->DxfOut(dir + "/dbx.dxf").ok());
  EXPECT_EQ((*dbx)->SaveAs(dir + "/dbx.dwg").code(), StatusCode::kNotSupported);
  EXPECT_EQ((*app->ActiveDocument()).get(), active.get());
  EXPECT_EQ(*(*app->Documents())->Count(), 1);

  ASSERT_TRUE((*dbx)->Open(dir + "/dbx.dxf").ok());
  // The reference of the previous content is gone with it.
  EXPECT_EQ(ref->Name().status().code(), StatusCode::kNotFound);
  host::BlockReferencePtr again =
      host::As<host::BlockReference>(*(*(*dbx)->ModelSpace())->Item(0));
  EXPECT_EQ(*(*again->GetAttributes())[0]->TextString(), "8");
  EXPECT_EQ(test::CheckDxf(dir + "/dbx.dxf", test::kExampleProblems), "");
}

TEST(FailingHostTest, RefusedCallsChangeNothing) {
  test::Session s(test::TestdataPath("example.dxf"));
  testing::FailingHost failing(*s.app);
  failing.Refuse("Entity.Erase").Refuse("SelectionSet.Select", 1);
  host::EntityPtr frame = s.ByHandle("94");
  EXPECT_EQ(frame->Erase().code(), StatusCode::kRefused);
  EXPECT_EQ(*frame->Layer(), "FRAMES");
  host::SelectionSetPtr set = *(*s.doc->SelectionSets())->Add("s");
  EXPECT_TRUE(set->Select(host::SelectMode::kAll, {}).ok());
  EXPECT_EQ(set->Select(host::SelectMode::kAll, {}).code(),
            StatusCode::kRefused);
  EXPECT_EQ(failing.CallCount("SelectionSet.Select"), 2);
  failing.Refuse("Document.*");
  EXPECT_EQ(s.doc->GetVariable("TILEMODE").status().code(),
            StatusCode::kRefused);
}

}  // namespace
}  // namespace lmt::dxfhost

namespace lmt::dxfhost {
namespace {

// A 2000 drawing keeps code-page bytes (here ANSI_1252, with \U+ escapes
// for Cyrillic): names and texts travel as UTF-8 in
// the object model and as the file's encoding in the file.
TEST(DocumentTest, TextsOfCodePageDrawingsAreUtf8) {
  LMT_SKIP_WITHOUT_SHARED();
  std::string out = test::ScratchDir() + "/cyrillic.dxf";
  {
    test::Session s(test::SamplePath("s_AC1015.dxf"));
    ASSERT_TRUE(s.doc);
    host::LayerPtr layer = *(*s.doc->Layers())->Add("Ränder");
    EXPECT_EQ(*layer->Name(), "Ränder");
    host::BlockPtr model = *s.doc->ModelSpace();
    host::TextPtr text = *model->AddText("Лист №1", Point{0, 0, 0}, 2.5);
    ASSERT_TRUE(text->SetLayer("Ränder").ok());
    EXPECT_EQ(*text->Layer(), "Ränder");
    ASSERT_TRUE(s.doc->SaveAs(out, 13).ok());
  }
  EXPECT_EQ(test::CheckDxf(out), "");
  test::Session s(out);
  EXPECT_TRUE((*s.doc->Layers())->Item("Ränder").ok());
  host::SelectionSetPtr set = *(*s.doc->SelectionSets())->Add("t");
  host::SelectionFilter f;
  f.Add(8, std::string("Ränder"));
  ASSERT_TRUE(set->Select(host::SelectMode::kAll, f).ok());
  ASSERT_EQ(*set->Count(), 1);
  EXPECT_EQ(*host::As<host::Text>(*set->Item(0))->TextString(), "Лист №1");
}

}  // namespace
}  // namespace lmt::dxfhost

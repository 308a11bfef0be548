// The layout-creation members over the engine's layout editing: new,
// renamed and deleted layouts, page setups, copies, the standard viewport
// builder, saving as older releases and layout templates.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>

#include "dxf/document.h"
#include "dxf/viewport.h"
#include "dxfhost/test_support.h"

namespace lmt::dxfhost {
namespace {

using host::Point;

// The shared checker, failing on any structural problem or ezdxf audit
// finding ("" when clean). example.dxf's own layouts lack their main
// viewport (CAD programs recreate it), which is not ours to report.
std::string StrictCheck(const std::string& path) {
#ifdef _WIN32
  (void)path;
  return "";  // python cannot run under Wine
#else
  std::string report = test::CheckDxf(path);
  if (report.empty()) report = test::ReadFile(path + ".check.txt");
  bool clean = report.find("audit errors 0, fixes 0") != std::string::npos;
  size_t at = 0;
  while ((at = report.find("   ! ", at)) != std::string::npos) {
    size_t end = report.find('\n', at);
    std::string line = report.substr(at, end - at);
    if (line.find("no VIEWPORT with id 1") == std::string::npos) clean = false;
    at = end;
  }
  return clean ? "" : report;
#endif
}

std::vector<std::string> Names(const host::DocumentPtr& doc) {
  std::vector<std::string> out;
  Result<std::vector<host::LayoutPtr>> all = (*doc->Layouts())->Items();
  EXPECT_TRUE(all.ok()) << all.status().ToString();
  if (!all.ok()) return out;
  for (const host::LayoutPtr& l : *all) {
    Result<std::string> name = l->Name();
    EXPECT_TRUE(name.ok()) << name.status().ToString();
    out.push_back(name.ok() ? *name : "?");
  }
  return out;
}

TEST(LayoutsTest, AddRenameDelete) {
  test::Session s(test::Testdata("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  host::LayoutPtr sheet = *layouts->Add("Лист 1");
  EXPECT_EQ(*sheet->Name(), "Лист 1");
  EXPECT_EQ(layouts->Add("PATTERN").status().code(), StatusCode::kRefused);
  EXPECT_EQ(layouts->Add("Model").status().code(), StatusCode::kRefused);
  EXPECT_EQ(layouts->Add("a|b").status().code(), StatusCode::kInvalidArgument);
  EXPECT_EQ(*(*sheet->Block())->Count(), 1);  // its own viewport
  ASSERT_TRUE(sheet->SetName("Sheet 2").ok());
  EXPECT_EQ(Names(s.doc), (std::vector<std::string>{"Model", "Layout1",
                                                    "Pattern", "Sheet 2"}));
  // Deleting the active layout moves the session to the next one.
  host::LayoutPtr layout1 = *layouts->Item("Layout1");
  ASSERT_TRUE(s.doc->SetActiveLayout(layout1).ok());
  ASSERT_TRUE(layout1->Delete().ok());
  EXPECT_EQ(*(*s.doc->ActiveLayout())->Name(), "Pattern");
  EXPECT_EQ(layout1->Name().status().code(), StatusCode::kNotFound);
  EXPECT_EQ((*layouts->Item("Model"))->Delete().code(), StatusCode::kRefused);
  std::string out = test::ScratchDir() + "/layouts_edited.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(StrictCheck(out), "");
}

// The add-in's standard viewport builder, step by step, for a frame turned
// by 30 degrees at 1:50: the frame's corners must land on the viewport's
// edges.
TEST(LayoutsTest, StandardViewportShowsExactlyItsFrame) {
  test::Session s(test::Testdata("example.dxf"));
  host::LayoutsPtr layouts = *s.doc->Layouts();
  host::LayoutPtr pattern = *layouts->Item("Pattern");
  host::LayoutPtr sheet = *layouts->Add("Sheet");
  ASSERT_TRUE(sheet->CopyFrom(pattern).ok());
  EXPECT_EQ(*sheet->PlotType(), *pattern->PlotType());
  std::vector<host::EntityPtr> items = *(*pattern->Block())->Items();
  Result<std::vector<host::EntityPtr>> copies =
      s.doc->CopyObjects(items, *sheet->Block());
  ASSERT_TRUE(copies.ok()) << copies.status().ToString();
  ASSERT_TRUE(s.doc->SetActiveLayout(sheet).ok());

  const Point frame{5000, 3000, 0};
  const double theta = 30 * M_PI / 180, scale = 1.0 / 50;
  const double fw = 42050, fh = 29700;
  const double w = fw * scale, h = fh * scale;
  const Point c{10 + w / 2, 10 + h / 2, 0};
  host::BlockPtr paper = *s.doc->PaperSpace();
  Result<host::PViewportPtr> added = paper->AddPViewport(c, w, h);
  ASSERT_TRUE(added.ok()) << added.status().ToString();
  host::PViewportPtr vp = *added;
  EXPECT_FALSE(*vp->ViewportOn());  // until Display
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

  std::string out = test::ScratchDir() + "/standard_viewport.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(StrictCheck(out), "");
  // Read the viewport back and map the frame's corners to paper.
  std::unique_ptr<dxf::Document> back;
  ASSERT_TRUE(dxf::Document::Load(out, &back).ok());
  dxf::Viewport got(
      back->FindByHandle(std::stoull(*vp->Handle(), nullptr, 16)));
  ASSERT_TRUE(got.valid());
  double s_read = got.height() / got.view_height();
  double tw = got.twist() * M_PI / 180;
  dxf::Vec3 t = got.view_target(), vc = got.view_center(), pc = got.center();
  for (int i = 0; i < 4; ++i) {
    double lx = (i == 1 || i == 2 ? 0.5 : -0.5) * fw;
    double ly = (i >= 2 ? 0.5 : -0.5) * fh;
    Point corner{frame.x + lx * std::cos(theta) - ly * std::sin(theta),
                 frame.y + lx * std::sin(theta) + ly * std::cos(theta), 0};
    double dx = corner.x - t.x, dy = corner.y - t.y;
    double rx = dx * std::cos(tw) - dy * std::sin(tw);
    double ry = dx * std::sin(tw) + dy * std::cos(tw);
    double qx = pc.x + s_read * (rx - vc.x);
    double qy = pc.y + s_read * (ry - vc.y);
    EXPECT_NEAR(qx, c.x + (lx > 0 ? w : -w) / 2, 1e-6) << i;
    EXPECT_NEAR(qy, c.y + (ly > 0 ? h : -h) / 2, 1e-6) << i;
  }
  EXPECT_TRUE(got.is_on());
  EXPECT_TRUE(got.is_locked());
}

TEST(LayoutsTest, SaveAsOlderReleasesAndRefusals) {
  test::Session s(test::Testdata("example.dxf"));
  ASSERT_TRUE((*s.doc->Layouts())->Add("Extra").ok());
  std::string dir = test::ScratchDir();
  for (int type : {13, 25, 37, 49, 61}) {
    std::string path = dir + "/release" + std::to_string(type) + ".dxf";
    ASSERT_TRUE(s.doc->SaveAs(path, type).ok()) << type;
    EXPECT_EQ(StrictCheck(path), "") << type;
  }
  std::string r12 = s.doc->SaveAs(dir + "/r12.dxf", 1).message();
  EXPECT_NE(r12.find("R12"), std::string::npos) << r12;
  std::string dwg = s.doc->SaveAs(dir + "/x.dwg", 64).message();
  EXPECT_NE(dwg.find("DWG"), std::string::npos) << dwg;
  EXPECT_FALSE(std::filesystem::exists(dir + "/r12.dxf"));
}

TEST(LayoutsTest, LayoutTemplateImportsALayout) {
  test::Session s(test::Testdata("example.dxf"));
  std::string tmpl = test::Sample("s_AC1032.dxf");
  ASSERT_TRUE(s.doc
                  ->SendCommand("_-Layout _Template\r\"" + tmpl +
                                "\"\r\"MyLayout\"\r\x1b")
                  .ok());
  host::LayoutPtr mine = *(*s.doc->Layouts())->Item("MyLayout");
  // Its own main viewport plus the template's model viewport.
  EXPECT_EQ(*(*mine->Block())->Count(), 2);
  // Bad names and files change nothing.
  EXPECT_EQ(s.doc
                ->SendCommand("_-Layout _Template\r\"" + tmpl +
                              "\"\r\"NoSuch\"\r\x1b")
                .code(),
            StatusCode::kNotFound);
  EXPECT_EQ(s.doc
                ->SendCommand("_-Layout _Template\r\"" + tmpl +
                              "\"\r\"MyLayout\"\r\x1b")
                .code(),
            StatusCode::kInvalidArgument);
  EXPECT_EQ(
      s.doc->SendCommand("_-Layout _Template\r\"missing.dxf\"\r\"A3\"\r\x1b")
          .code(),
      StatusCode::kNotFound);
  std::string out = test::ScratchDir() + "/template_imported.dxf";
  ASSERT_TRUE(s.doc->SaveAs(out, 65).ok());
  EXPECT_EQ(StrictCheck(out), "");
}

}  // namespace
}  // namespace lmt::dxfhost

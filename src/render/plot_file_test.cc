#include "render/plot_file.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <numbers>
#include <string>

#include "dxf/builders.h"
#include "dxf/layout_edit.h"
#include "dxf/viewport_edit.h"
#include "render/sheet_geometry.h"

namespace lmt::render {
namespace {

std::string TempFile(const std::string& name) {
  const std::filesystem::path dir =
      std::filesystem::path(LMT_BINARY_DIR) / "render_test_out";
  std::filesystem::create_directories(dir);
  return (dir / name).string();
}

std::unique_ptr<dxf::Document> LoadExample() {
  std::unique_ptr<dxf::Document> doc;
  dxf::Status s =
      dxf::Document::Load(std::string(LMT_TESTDATA_DIR) + "/example.dxf", &doc);
  EXPECT_TRUE(s.ok()) << s.message();
  return doc;
}

void SetPage(dxf::Layout& layout, double w, double h, int rotation,
             double left = 0, double bottom = 0) {
  layout.SetDouble(44, w);
  layout.SetDouble(45, h);
  layout.SetInt(73, rotation);
  layout.SetDouble(40, left);
  layout.SetDouble(41, bottom);
  layout.SetDouble(42, 0);
  layout.SetDouble(43, 0);
  layout.SetDouble(46, 0);
  layout.SetDouble(47, 0);
  layout.SetInt(72, 1);
}

TEST(SheetGeometryTest, TurnedPaperSwapsAndShiftsByTheMargins) {
  auto doc = LoadExample();
  ASSERT_TRUE(doc);
  dxf::Layout layout{dxf::Entity{}};
  ASSERT_TRUE(dxf::AddLayout(*doc, "G", &layout).ok());
  // Rotation 1 on a 420 x 297 device sheet: a portrait page; the
  // printable corner is (bottom, right) = (20, 7.5).
  SetPage(layout, 420, 297, 1, 7.5, 20);
  layout.SetDouble(42, 7.5);
  SheetGeometry g = SheetGeometryOf(*doc, layout);
  EXPECT_EQ(g.source, SheetGeometry::Source::kPageSetup);
  EXPECT_DOUBLE_EQ(g.width_mm, 297);
  EXPECT_DOUBLE_EQ(g.height_mm, 420);
  const dxf::Vec3 origin = g.paper_to_page.Apply({0, 0, 0});
  EXPECT_DOUBLE_EQ(origin.x, 20);
  EXPECT_DOUBLE_EQ(origin.y, 7.5);
}

// Draws a drawing's layout into a PNG at 4 pixels per millimetre and reads
// it back.
class PlottedSheet : public ::testing::Test {
 protected:
  void SetUp() override {
    doc_ = LoadExample();
    ASSERT_TRUE(doc_);
    ASSERT_TRUE(dxf::AddLayout(*doc_, "T", &layout_).ok());
    SetPage(layout_, 200, 100, 0);
  }
  void TearDown() override {
    if (image_) cairo_surface_destroy(image_);
  }

  void Plot() {
    const std::string path = TempFile("sheet.png");
    PlotOptions options;
    options.png_dpi = 4 * 25.4;
    std::vector<SheetResult> results;
    dxf::Status s = PlotLayouts(*doc_, std::span(&layout_, 1), path,
                                PlotFormat::kPng, options, &results);
    ASSERT_TRUE(s.ok()) << s.message();
    image_ = cairo_image_surface_create_from_png(path.c_str());
    ASSERT_EQ(cairo_surface_status(image_), CAIRO_STATUS_SUCCESS);
    ASSERT_EQ(cairo_image_surface_get_width(image_), 800);
    ASSERT_EQ(cairo_image_surface_get_height(image_), 400);
  }

  // Any dark pixel within 1 px of page point (x, y) mm.
  bool InkAt(double x, double y) {
    cairo_surface_flush(image_);
    const unsigned char* data = cairo_image_surface_get_data(image_);
    const int stride = cairo_image_surface_get_stride(image_);
    const int px = static_cast<int>(std::lround(x * 4));
    const int py = static_cast<int>(std::lround((100 - y) * 4));
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) {
        const int u = px + dx, v = py + dy;
        if (u < 0 || v < 0 || u >= 800 || v >= 400) continue;
        const uint32_t pixel =
            *reinterpret_cast<const uint32_t*>(data + v * stride + u * 4);
        const int r = (pixel >> 16) & 0xFF, g = (pixel >> 8) & 0xFF,
                  b = pixel & 0xFF;
        if (std::min({r, g, b}) < 160) return true;
      }
    }
    return false;
  }

  // A viewport at the page centre, 100 x 50, at 1:1 with `twist`, centred
  // on model point kFar, where the example drawing has nothing.
  dxf::Viewport AddView(double twist) {
    dxf::ViewportSettings v;
    v.center = {100, 50, 0};
    v.width = 100;
    v.height = 50;
    v.view_height = 50;
    v.twist = twist;
    const double a = twist * std::numbers::pi / 180;
    v.view_center_x = kFar * std::cos(a) - kFar * std::sin(a);
    v.view_center_y = kFar * std::sin(a) + kFar * std::cos(a);
    return dxf::AddViewport(*doc_, dxf::LayoutBlock(*doc_, layout_), v);
  }

  void AddModelLine(double x0, double y0, double x1, double y1,
                    std::string_view layer = "0") {
    doc_->AddEntity(
        doc_->model_space(),
        {doc_->MakeTag(0, "LINE"), doc_->MakeTag(100, "AcDbEntity"),
         doc_->MakeTag(8, layer), doc_->MakeTag(62, "5"),
         doc_->MakeTag(100, "AcDbLine"),
         doc_->MakeTag(10, std::to_string(kFar + x0)),
         doc_->MakeTag(20, std::to_string(kFar + y0)), doc_->MakeTag(30, "0"),
         doc_->MakeTag(11, std::to_string(kFar + x1)),
         doc_->MakeTag(21, std::to_string(kFar + y1)), doc_->MakeTag(31, "0")});
  }

  static constexpr double kFar = 1e6;
  std::unique_ptr<dxf::Document> doc_;
  dxf::Layout layout_{dxf::Entity{}};
  cairo_surface_t* image_ = nullptr;
};

TEST_F(PlottedSheet, TwistedViewportTurnsModelSpaceAndClipsIt) {
  // Model x runs up the paper under a 90 degree twist; the line is 200
  // long but the viewport shows only its middle 50.
  AddView(90);
  AddModelLine(-100, 0, 100, 0);
  Plot();
  EXPECT_TRUE(InkAt(100, 40));
  EXPECT_TRUE(InkAt(100, 60));
  EXPECT_FALSE(InkAt(100, 85)) << "drawn outside the viewport";
  EXPECT_FALSE(InkAt(120, 50)) << "drawn without the twist";
  EXPECT_TRUE(InkAt(50, 60)) << "viewport border";
}

TEST_F(PlottedSheet, LayersFrozenInTheViewportStayHidden) {
  dxf::Entity layer = dxf::AddLayer(*doc_, "NOTHERE", 3);
  dxf::Viewport vp = AddView(0);
  vp.InsertTag(vp.XDataBegin(), 331, dxf::FormatHandle(layer.handle()));
  AddModelLine(-10, 10, 10, 10, "NOTHERE");
  AddModelLine(-10, -10, 10, -10);
  Plot();
  EXPECT_FALSE(InkAt(100, 60));
  EXPECT_TRUE(InkAt(100, 40));
}

TEST(PlotFileTest, UnwritableFolderFailsAndLeavesNothing) {
  auto doc = LoadExample();
  ASSERT_TRUE(doc);
  std::vector<dxf::Layout> layouts = dxf::Layouts(*doc);
  ASSERT_GT(layouts.size(), 1u);
  const std::string path = TempFile("missing-folder/out.pdf");
  dxf::Status s = PlotLayouts(*doc, std::span(&layouts[1], 1), path,
                              PlotFormat::kPdf, PlotOptions(), nullptr);
  EXPECT_TRUE(s.IsIOError());
  EXPECT_NE(s.message().find("out.pdf"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace lmt::render

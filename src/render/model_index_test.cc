#include "render/model_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "dxf/builders.h"
#include "dxf/viewport.h"
#include "dxf/viewport_edit.h"

namespace lmt::render {
namespace {

// The example: six block frames 42000 x 29700 in two rows from (0, 0) at a
// pitch of 47000 across and 34700 down, each with a circle, a line and a
// title, and three polyline frames further down.
class ModelIndexTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dxf::Status s = dxf::Document::Load(
        std::string(LMT_TESTDATA_DIR) + "/example.dxf", &doc_);
    ASSERT_TRUE(s.ok()) << s.message();
  }
  std::vector<std::string> Types(const std::vector<dxf::RecordId>& ids) {
    std::vector<std::string> types;
    for (dxf::RecordId id : ids) {
      types.emplace_back(doc_->entity(id).type());
    }
    return types;
  }
  std::unique_ptr<dxf::Document> doc_;
};

TEST_F(ModelIndexTest, AFrameWindowFindsThatFrameAndNoOtherInModelOrder) {
  ModelIndex index(*doc_);
  ASSERT_EQ(index.size(), doc_->model_space()->entities.size());
  // Inside the first frame, clear of its neighbours 5000 away.
  const std::vector<dxf::RecordId> found =
      index.Meeting(Box2{1000, 1000, 41000, 28700});
  const std::vector<std::string> expected = {"INSERT", "CIRCLE", "LINE",
                                             "TEXT"};
  EXPECT_EQ(Types(found), expected);
  // The order is the model's: what is drawn later stays on top.
  const std::vector<dxf::RecordId>& model = doc_->model_space()->entities;
  EXPECT_TRUE(std::is_sorted(found.begin(), found.end(),
                             [&](dxf::RecordId a, dxf::RecordId b) {
                               return std::find(model.begin(), model.end(), a) <
                                      std::find(model.begin(), model.end(), b);
                             }));
  // Two frames side by side, and nothing at all far away.
  EXPECT_EQ(index.Meeting(Box2{1000, 1000, 88000, 28700}).size(), 8u);
  EXPECT_TRUE(index.Meeting(Box2{1e7, 1e7, 2e7, 2e7}).empty());
  EXPECT_TRUE(index.Meeting(Box2{}).empty());
}

TEST_F(ModelIndexTest, EntitiesWithoutExtentsAreAlwaysWalked) {
  // A line on a layer that is off draws nothing, but the walker must still
  // see it wherever the window is, to count what it leaves out.
  dxf::AddLayer(*doc_, "HIDDEN", -3);
  const dxf::LwVertex pts[] = {{0, 0}, {10, 10}};
  dxf::AddLwPolyline(*doc_, doc_->model_space(), pts, false,
                     dxf::EntityStyle{.layer = "HIDDEN"});
  ModelIndex index(*doc_);
  EXPECT_EQ(Types(index.Meeting(Box2{1e7, 1e7, 2e7, 2e7})),
            std::vector<std::string>{"LWPOLYLINE"});
}

TEST_F(ModelIndexTest, TwistedViewportWindowHoldsTheTurnedFrame) {
  // The notes' example: an A1 frame 42050 x 29700 at (5000, 3000) turned by
  // 30 degrees, shown at 1:50 in an 841 x 594 viewport.
  dxf::ViewportSettings v;
  v.center = {420.5, 297, 0};
  v.width = 841;
  v.height = 594;
  v.view_height = 29700;
  v.twist = 330;
  const double c = std::cos(M_PI / 6), s = std::sin(M_PI / 6);
  v.target = {5000 + 21025 * c - 14850 * s, 3000 + 21025 * s + 14850 * c, 0};
  dxf::Viewport vp = dxf::AddViewport(*doc_, doc_->paper_space(), v);
  ASSERT_TRUE(vp.valid());
  const Box2 window = ViewportWindow(vp);
  for (auto [x, y] : {std::pair{0.0, 0.0},
                      {42050.0, 0.0},
                      {42050.0, 29700.0},
                      {0.0, 29700.0}}) {
    const double wx = 5000 + x * c - y * s, wy = 3000 + x * s + y * c;
    EXPECT_TRUE(window.Meets(Box2{wx, wy, wx, wy})) << x << "," << y;
  }
  // The box of a turned rectangle, not much more.
  EXPECT_LT(window.x1 - window.x0, 42050 * c + 29700 * s + 1);
  EXPECT_LT(window.y1 - window.y0, 42050 * s + 29700 * c + 1);
}

}  // namespace
}  // namespace lmt::render

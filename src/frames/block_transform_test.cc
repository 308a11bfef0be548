#include "frames/block_transform.h"

#include <gtest/gtest.h>

#include <numbers>

namespace lmt::frames {
namespace {

constexpr double kPi = std::numbers::pi;

void ExpectNear(const Quad& got, const Quad& want) {
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(got[i].x, want[i].x, 1e-9) << "corner " << i + 1;
    EXPECT_NEAR(got[i].y, want[i].y, 1e-9) << "corner " << i + 1;
  }
}

const Quad kA3 = {{{0, 0}, {420, 0}, {420, 297}, {0, 297}}};

TEST(BlockTransformTest, ScalesRotatesAndMoves) {
  struct Case {
    BlockPlacement placement;
    Quad want;
  } cases[] = {
      {{{0, 0}, 1, 1, 0, {0, 0}}, kA3},
      {{{1000, 500}, 1, 1, 0, {0, 0}},
       {{{1000, 500}, {1420, 500}, {1420, 797}, {1000, 797}}}},
      {{{1000, 500}, 2, 2, kPi / 2, {0, 0}},
       {{{1000, 500}, {1000, 1340}, {406, 1340}, {406, 500}}}},
      {{{0, 0}, 2, 0.5, 0, {0, 0}},
       {{{0, 0}, {840, 0}, {840, 148.5}, {0, 148.5}}}},
  };
  for (const Case& c : cases)
    ExpectNear(PlaceCorners(kA3, c.placement), c.want);
}

TEST(BlockTransformTest, BasePointLandsOnTheInsertionPoint) {
  // The outline is drawn around the base point (210, 0), bottom middle.
  BlockPlacement p{{5000, 100}, 10, 10, 0, {210, 0}};
  ExpectNear(PlaceCorners(kA3, p),
             {{{2900, 100}, {7100, 100}, {7100, 3070}, {2900, 3070}}});
  EXPECT_NEAR(PlaceVertex({210, 0}, {{7, 8}, 3, 3, 1.0, {210, 0}}).x, 7, 1e-9);
}

TEST(BlockTransformTest, MirroredReferencesMirrorInTheBlockAxes) {
  // Mirrored in X: the frame lies left of the insertion point.
  ExpectNear(PlaceCorners(kA3, {{0, 0}, -1, 1, 0, {0, 0}}),
             {{{0, 0}, {-420, 0}, {-420, 297}, {0, 297}}});
  // Mirrored in X and turned half round is the same as mirrored in Y.
  ExpectNear(PlaceCorners(kA3, {{50, 60}, -1, 1, kPi, {0, 0}}),
             PlaceCorners(kA3, {{50, 60}, 1, -1, 0, {0, 0}}));
  // Mirrored in X, rotated a quarter turn: the block's X axis points up and
  // its mirrored outline therefore downwards.
  ExpectNear(PlaceCorners(kA3, {{0, 0}, -2, 2, kPi / 2, {0, 0}}),
             {{{0, 0}, {0, -840}, {-594, -840}, {-594, 0}}});
}

}  // namespace
}  // namespace lmt::frames

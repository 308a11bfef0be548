#include "dxf/entity_walk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "dxf/text_content.h"

namespace lmt::dxf {
namespace {

using Tags = std::vector<std::pair<int, std::string>>;

// A drawing from its sections' tags: layers, blocks (each a BLOCK with its
// entities) and model-space entities.
std::unique_ptr<Document> MakeDrawing(const Tags& layers, const Tags& blocks,
                                      const Tags& entities) {
  std::string text;
  auto add = [&](const Tags& tags) {
    for (const auto& [code, value] : tags) {
      text += std::to_string(code) + "\n" + value + "\n";
    }
  };
  add({{0, "SECTION"},
       {2, "HEADER"},
       {9, "$ACADVER"},
       {1, "AC1009"},
       {0, "ENDSEC"},
       {0, "SECTION"},
       {2, "TABLES"},
       {0, "TABLE"},
       {2, "LAYER"}});
  add(layers);
  add({{0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"}});
  add(blocks);
  add({{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
  add(entities);
  add({{0, "ENDSEC"}, {0, "EOF"}});
  std::unique_ptr<Document> doc;
  Status s = Document::Parse(text, "walk.dxf", &doc);
  EXPECT_TRUE(s.ok()) << s.message();
  return doc;
}

Tags Block(const std::string& name, const Tags& entities) {
  Tags t = {{0, "BLOCK"}, {8, "0"},  {2, name}, {70, "0"},
            {10, "0"},    {20, "0"}, {30, "0"}, {3, name}};
  t.insert(t.end(), entities.begin(), entities.end());
  t.push_back({0, "ENDBLK"});
  t.push_back({8, "0"});
  return t;
}

class Recorder : public PrimitiveSink {
 public:
  void Add(Primitive p) override { got.push_back(std::move(p)); }
  std::vector<Primitive> got;
};

std::vector<Primitive> WalkModel(Document& doc, const Affine& xf = Affine()) {
  EntityWalker walker(doc);
  Recorder rec;
  walker.WalkBlock(*doc.model_space(), xf, rec);
  return rec.got;
}

void ExpectPoint(Point2 p, double x, double y, double eps = 1e-9) {
  EXPECT_NEAR(p.x, x, eps);
  EXPECT_NEAR(p.y, y, eps);
}

TEST(BulgeSegmentTest, PositiveBulgeTurnsCounterClockwise) {
  // Bulge 1 is a half circle; from (0,0) to (2,0) counter-clockwise it
  // passes below the chord, through (1,-1).
  std::vector<Point2> pts = BulgeSegment({0, 0}, {2, 0}, 1, 1e-4);
  ASSERT_GT(pts.size(), 8u);
  ExpectPoint(pts.front(), 0, 0);
  ExpectPoint(pts.back(), 2, 0);
  double lowest = 0;
  for (const Point2& p : pts) {
    EXPECT_NEAR(std::hypot(p.x - 1, p.y), 1, 1e-9);
    EXPECT_LE(p.y, 1e-9);
    lowest = std::min(lowest, p.y);
  }
  EXPECT_NEAR(lowest, -1, 1e-3);
}

TEST(BulgeSegmentTest, QuarterArcKeepsItsCentreAndTolerance) {
  const double bulge = -std::tan(std::numbers::pi / 8);  // clockwise quarter
  std::vector<Point2> pts = BulgeSegment({0, 1}, {1, 0}, bulge, 0.001);
  for (size_t i = 0; i + 1 < pts.size(); ++i) {
    EXPECT_NEAR(std::hypot(pts[i].x, pts[i].y), 1, 1e-9);  // centre (0,0)
    // The chord's midpoint stays within the tolerance of the arc.
    const double mx = (pts[i].x + pts[i + 1].x) / 2;
    const double my = (pts[i].y + pts[i + 1].y) / 2;
    EXPECT_LE(1 - std::hypot(mx, my), 0.001 + 1e-12);
    EXPECT_GE(pts[i].x, -1e-9);  // never leaves the first quadrant
    EXPECT_GE(pts[i].y, -1e-9);
  }
}

TEST(EntityWalkerTest, NestedBlocksComposeTheirPlacements) {
  // INNER's line (0,0)-(1,0) sits in OUTER turned 90 degrees at (10,0);
  // OUTER is inserted at (100,100) twice as large: (120,100)-(120,102).
  auto doc = MakeDrawing({},
                         [] {
                           Tags b = Block("INNER", {{0, "LINE"},
                                                    {8, "0"},
                                                    {10, "0"},
                                                    {20, "0"},
                                                    {11, "1"},
                                                    {21, "0"}});
                           Tags o = Block("OUTER", {{0, "INSERT"},
                                                    {8, "0"},
                                                    {2, "INNER"},
                                                    {10, "10"},
                                                    {20, "0"},
                                                    {50, "90"}});
                           b.insert(b.end(), o.begin(), o.end());
                           return b;
                         }(),
                         {{0, "INSERT"},
                          {8, "0"},
                          {2, "OUTER"},
                          {10, "100"},
                          {20, "100"},
                          {41, "2"},
                          {42, "2"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 1u);
  ASSERT_EQ(got[0].paths.size(), 1u);
  ExpectPoint(got[0].paths[0][0], 120, 100);
  ExpectPoint(got[0].paths[0][1], 120, 102);
}

TEST(EntityWalkerTest, MinsertCellsFollowTheRotatedGrid) {
  // A 2 x 1 grid, 5 apart, turned 90 degrees: the second cell lies 5 up.
  auto doc = MakeDrawing(
      {}, Block("P", {{0, "POINT"}, {8, "0"}, {10, "1"}, {20, "0"}}),
      {{0, "INSERT"},
       {8, "0"},
       {2, "P"},
       {10, "0"},
       {20, "0"},
       {50, "90"},
       {70, "2"},
       {71, "1"},
       {44, "5"},
       {45, "0"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 2u);
  ExpectPoint(got[0].paths[0][0], 0, 1);
  ExpectPoint(got[1].paths[0][0], 0, 6);
}

TEST(EntityWalkerTest, LayerZeroAndByBlockTakeTheReferencesProperties) {
  // Layer RED is red (1); the block's entity is on layer 0 with colour
  // ByBlock on one line and ByLayer on another; the reference is on RED
  // with colour 3 (green) and lineweight 0.50 mm.
  auto doc = MakeDrawing(
      {{0, "LAYER"}, {2, "RED"}, {70, "0"}, {62, "1"}, {6, "CONTINUOUS"}},
      Block("B", {{0, "LINE"},
                  {8, "0"},
                  {62, "0"},
                  {370, "-2"},
                  {10, "0"},
                  {20, "0"},
                  {11, "1"},
                  {21, "0"},
                  {0, "LINE"},
                  {8, "0"},
                  {10, "0"},
                  {20, "0"},
                  {11, "1"},
                  {21, "0"}}),
      {{0, "INSERT"},
       {8, "RED"},
       {62, "3"},
       {370, "50"},
       {2, "B"},
       {10, "0"},
       {20, "0"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 2u);
  EXPECT_EQ(got[0].pen.color, AciColor(3));
  EXPECT_DOUBLE_EQ(got[0].pen.lineweight_mm, 0.5);
  EXPECT_EQ(got[1].pen.color, AciColor(1));
}

TEST(EntityWalkerTest, HiddenLayersAndInvisibleEntitiesAreLeftOut) {
  auto doc = MakeDrawing(
      {{0, "LAYER"},
       {2, "FROZEN"},
       {70, "1"},
       {62, "7"},
       {6, "CONTINUOUS"},
       {0, "LAYER"},
       {2, "OFF"},
       {70, "0"},
       {62, "-7"},
       {6, "CONTINUOUS"},
       {0, "LAYER"},
       {2, "SHOWN"},
       {70, "0"},
       {62, "7"},
       {6, "CONTINUOUS"}},
      Block("B", {{0, "POINT"}, {8, "SHOWN"}, {10, "0"}, {20, "0"}}),
      {{0, "POINT"},
       {8, "FROZEN"},
       {10, "0"},
       {20, "0"},
       {0, "POINT"},
       {8, "OFF"},
       {10, "0"},
       {20, "0"},
       {0, "POINT"},
       {8, "SHOWN"},
       {60, "1"},
       {10, "0"},
       {20, "0"},
       // A reference on a frozen layer hides even its other layers.
       {0, "INSERT"},
       {8, "FROZEN"},
       {2, "B"},
       {10, "0"},
       {20, "0"},
       {0, "POINT"},
       {8, "shown"},
       {10, "1"},
       {20, "0"}});
  EntityWalker walker(*doc);
  Recorder rec;
  walker.WalkBlock(*doc->model_space(), Affine(), rec);
  ASSERT_EQ(rec.got.size(), 1u);
  ExpectPoint(rec.got[0].paths[0][0], 1, 0);
  // A viewport freezing SHOWN hides the rest.
  walker.set_hidden_layers({"Shown"});
  Recorder none;
  walker.WalkBlock(*doc->model_space(), Affine(), none);
  EXPECT_TRUE(none.got.empty());
}

TEST(EntityWalkerTest, WidePolylineStrokesAtItsScaledWidth) {
  auto doc = MakeDrawing({}, {},
                         {{0, "POLYLINE"},
                          {8, "0"},
                          {66, "1"},
                          {10, "0"},
                          {20, "0"},
                          {30, "0"},
                          {40, "2"},
                          {41, "2"},
                          {0, "VERTEX"},
                          {8, "0"},
                          {10, "0"},
                          {20, "0"},
                          {0, "VERTEX"},
                          {8, "0"},
                          {10, "4"},
                          {20, "0"},
                          {0, "SEQEND"},
                          {8, "0"}});
  std::vector<Primitive> got = WalkModel(*doc, Affine::Scaling({0.5, 0.5, 1}));
  ASSERT_EQ(got.size(), 1u);
  EXPECT_EQ(got[0].kind, Primitive::Kind::kStroke);
  EXPECT_DOUBLE_EQ(got[0].width, 1);
  ExpectPoint(got[0].paths[0].back(), 2, 0);
}

TEST(EntityWalkerTest, TaperingSegmentBecomesAFilledOutline) {
  auto doc = MakeDrawing({}, {},
                         {{0, "LWPOLYLINE"},
                          {8, "0"},
                          {90, "2"},
                          {70, "0"},
                          {10, "0"},
                          {20, "0"},
                          {40, "2"},
                          {41, "0"},
                          {10, "10"},
                          {20, "0"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 1u);
  EXPECT_EQ(got[0].kind, Primitive::Kind::kFill);
  // An arrow: 2 wide at the start, a point at the end.
  ExpectPoint(got[0].paths[0][0], 0, 1);
  ExpectPoint(got[0].paths[0][1], 10, 0);
  ExpectPoint(got[0].paths[0].back(), 0, -1);
}

TEST(EntityWalkerTest, SolidHatchFollowsEdgesIncludingClockwiseArcs) {
  // A unit square's top edge replaced by a clockwise half circle bulging
  // up... drawn as: line (0,0)-(2,0), line (2,0)-(2,1), clockwise arc
  // around (1,1) radius 1 from 0 to 180 degrees (stored mirrored), line
  // (0,1)-(0,0).
  auto doc = MakeDrawing(
      {}, {}, {{0, "HATCH"}, {8, "0"},    {10, "0"}, {20, "0"}, {30, "0"},
               {2, "SOLID"}, {70, "1"},   {71, "0"}, {91, "1"}, {92, "0"},
               {93, "4"},    {72, "1"},   {10, "0"}, {20, "0"}, {11, "2"},
               {21, "0"},    {72, "1"},   {10, "2"}, {20, "0"}, {11, "2"},
               {21, "1"},    {72, "2"},   {10, "1"}, {20, "1"}, {40, "1"},
               {50, "360"},  {51, "180"}, {73, "0"}, {72, "1"}, {10, "0"},
               {20, "1"},    {11, "0"},   {21, "0"}, {97, "0"}, {75, "0"},
               {76, "1"},    {98, "0"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 1u);
  EXPECT_EQ(got[0].kind, Primitive::Kind::kFill);
  ASSERT_EQ(got[0].paths.size(), 1u);
  // Clockwise from angle 0 (mirrored 360) to 180 (mirrored -180) runs
  // through the bottom of the circle, (1,0).
  double lowest_inner = 1;
  for (const Point2& p : got[0].paths[0]) {
    if (p.x > 0.2 && p.x < 1.8) lowest_inner = std::min(lowest_inner, p.y);
  }
  EXPECT_LT(lowest_inner, 0.05 + 1e-9);  // within the chord tolerance
}

TEST(EntityWalkerTest, PatternHatchClipsItsLinesToTheBoundary) {
  // A 10 x 10 square with horizontal lines 1 apart.
  auto doc = MakeDrawing(
      {}, {},
      {{0, "HATCH"}, {8, "0"},  {10, "0"},  {20, "0"},  {30, "0"}, {2, "LINES"},
       {70, "0"},    {71, "0"}, {91, "1"},  {92, "2"},  {72, "0"}, {73, "1"},
       {93, "4"},    {10, "0"}, {20, "0"},  {10, "10"}, {20, "0"}, {10, "10"},
       {20, "10"},   {10, "0"}, {20, "10"}, {97, "0"},  {75, "0"}, {76, "1"},
       {52, "0"},    {41, "1"}, {77, "0"},  {78, "1"},  {53, "0"}, {43, "0"},
       {44, "0.5"},  {45, "0"}, {46, "1"},  {79, "0"},  {98, "0"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 1u);
  EXPECT_EQ(got[0].kind, Primitive::Kind::kStroke);
  EXPECT_EQ(got[0].clip.size(), 1u);
  EXPECT_EQ(got[0].paths.size(), 10u);  // y = 0.5 .. 9.5
}

TEST(EntityWalkerTest, TextAnchorsAtTheAlignmentPoint) {
  // Centred text (72 1) sits on 11; a right-aligned attribute keeps its
  // vertical alignment in 74.
  auto doc = MakeDrawing({}, {},
                         {{0, "TEXT"},
                          {8, "0"},
                          {10, "0"},
                          {20, "0"},
                          {40, "2"},
                          {1, "%%c10"},
                          {50, "90"},
                          {72, "1"},
                          {11, "5"},
                          {21, "5"}});
  std::vector<Primitive> got = WalkModel(*doc);
  ASSERT_EQ(got.size(), 1u);
  const TextRun& t = got[0].text;
  EXPECT_EQ(t.text, "\u230010");
  ExpectPoint(t.origin, 5, 5);
  ExpectPoint(t.x_axis, 0, 2);
  ExpectPoint(t.y_axis, -2, 0);
  EXPECT_EQ(t.halign, 1);
}

TEST(EntityWalkerTest, WhatCannotBeDrawnIsCounted) {
  auto doc = MakeDrawing({}, {},
                         {{0, "IMAGE"},
                          {8, "0"},
                          {0, "IMAGE"},
                          {8, "0"},
                          {0, "INSERT"},
                          {8, "0"},
                          {2, "NOSUCH"}});
  EntityWalker walker(*doc);
  Recorder rec;
  walker.WalkBlock(*doc->model_space(), Affine(), rec);
  EXPECT_TRUE(rec.got.empty());
  EXPECT_EQ(walker.not_drawn().at("IMAGE (no size)"), 2);
  EXPECT_EQ(walker.not_drawn().at("INSERT (missing block)"), 1);
}

TEST(EntityWalkerTest, TablesImageFramesAndInfiniteLines) {
  // A table's block holds a line (0,0)-(10,0) and is placed at (100,50);
  // a 4 x 2 pixel image of 0.5-unit pixels turned 90 degrees at (7,7); a
  // ray from (1,1) along +x and an xline through (0,0) along +y.
  auto doc = MakeDrawing(
      {},
      Block(
          "*T1",
          {{0, "LINE"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "10"}, {21, "0"}}),
      {{0, "ACAD_TABLE"}, {8, "0"},     {2, "*T1"}, {10, "100"}, {20, "50"},
       {0, "IMAGE"},      {8, "0"},     {10, "7"},  {20, "7"},   {11, "0"},
       {21, "0.5"},       {12, "-0.5"}, {22, "0"},  {13, "4"},   {23, "2"},
       {0, "RAY"},        {8, "0"},     {10, "1"},  {20, "1"},   {11, "2"},
       {21, "0"},         {0, "XLINE"}, {8, "0"},   {10, "0"},   {20, "0"},
       {11, "0"},         {21, "1"}});
  EntityWalker walker(*doc);
  Recorder rec;
  // Target units of a tenth: the reach is given in target units.
  walker.WalkBlock(*doc->model_space(), Affine::Scaling({10, 10, 1}), rec);
  ASSERT_EQ(rec.got.size(), 4u);
  ExpectPoint(rec.got[0].paths[0][0], 1000, 500);
  ExpectPoint(rec.got[0].paths[0][1], 1100, 500);
  const std::vector<Point2>& frame = rec.got[1].paths[0];
  ASSERT_EQ(frame.size(), 5u);
  ExpectPoint(frame[0], 70, 70);
  ExpectPoint(frame[1], 70, 90);  // four pixels up
  ExpectPoint(frame[2], 60, 90);  // two pixels left
  EXPECT_EQ(walker.not_drawn().at("IMAGE (picture; frame drawn)"), 1);
  // The ray starts at its point and runs one way; the xline runs both.
  ExpectPoint(rec.got[2].paths[0][0], 10, 10);
  EXPECT_GT(rec.got[2].paths[0][1].x, 1e4);
  EXPECT_NEAR(rec.got[2].paths[0][1].y, 10, 1e-6);
  EXPECT_LT(rec.got[3].paths[0][0].y, -1e4);
  EXPECT_GT(rec.got[3].paths[0][1].y, 1e4);
  EXPECT_LE(rec.got[3].paths[0][1].y, 1e5 + 1e-6);
}

TEST(AciColorTest, StandardEntries) {
  struct Case {
    int index;
    Rgb rgb;
  };
  const Case cases[] = {
      {1, {255, 0, 0}},     {5, {0, 0, 255}},      {7, {255, 255, 255}},
      {8, {128, 128, 128}}, {11, {255, 127, 127}}, {40, {255, 191, 0}},
      {140, {0, 191, 255}}, {165, {63, 79, 127}},  {250, {51, 51, 51}},
      {0, {0, 0, 0}},       {256, {0, 0, 0}}};
  for (const Case& c : cases) {
    EXPECT_EQ(AciColor(c.index), c.rgb) << c.index;
  }
  EXPECT_EQ(TrueColor(0xC2FF8040), (Rgb{0xFF, 0x80, 0x40}));
}

TEST(TextContentTest, MTextCodesAreStripped) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"{\\fArial|b1;Title}\\PSecond", {"Title", "Second"}},
      {"\\A1;\\H2.5x;big \\C1;red", {"big red"}},
      {"1\\S1^2; in", {"11/2 in"}},
      {"a\\\\b \\{c\\}", {"a\\b {c}"}},
      {"\\LUnder\\l\\~x", {"Under x"}},
  };
  for (const auto& [in, want] : cases) EXPECT_EQ(MTextLines(in), want) << in;
  EXPECT_EQ(PlainTextOf("%%d %%p1 %%uU%%u 100%%%"), "\u00b0 \u00b11 U 100%");
}

}  // namespace
}  // namespace lmt::dxf

// EntityWalker: drawing entities -> flat 2D primitives in a target space
// (paper millimetres for a plot, model units for a preview or extents).
//
// The walk follows block references to any depth (INSERT, MINSERT grids,
// the anonymous blocks of DIMENSIONs) with the engine's affine maps
// (geometry.h), resolves ByLayer/ByBlock colours and lineweights the way
// CAD programs do (entities on layer 0 inside a block take the reference's
// layer), and hides entities on frozen, off or non-plotting layers, plus
// any extra layers a caller hides (layers frozen in one viewport). Curves
// become polylines within a chord tolerance given in target units.
//
// Only the 2D projection of a plan view is produced: z is dropped. What the
// walker cannot draw is counted by DXF type in not_drawn(), never dropped
// silently. Of a VIEWPORT only the border is drawn: showing model space
// through it is the renderer's (render/sheet_renderer.h).
#ifndef LMT_DXF_ENTITY_WALK_H_
#define LMT_DXF_ENTITY_WALK_H_

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dxf/aci_colors.h"
#include "dxf/document.h"
#include "dxf/geometry.h"

namespace lmt::dxf {

struct Point2 {
  double x = 0, y = 0;
};

struct Pen {
  Rgb color;
  double lineweight_mm = 0.25;
};

// One line of text placed in the target space. The text's own frame has
// its origin at `origin`; `x_axis` runs along the baseline with the length
// of one text height times the width factor, `y_axis` points up with the
// length of one text height (the height of capitals). Mirrored texts have
// the axes mirrored.
struct TextRun {
  std::string text;  // UTF-8, one line
  Point2 origin;
  Point2 x_axis;
  Point2 y_axis;
  int halign = 0;  // 0 left, 1 centre, 2 right
  int valign = 0;  // 0 baseline, 1 bottom, 2 middle, 3 top
  // When positive, the text is stretched to this length in x_axis units
  // (TEXT aligned and fit).
  double fit_length = 0;
};

struct Primitive {
  enum class Kind {
    kStroke,  // paths are polylines (a closed one repeats its first point)
    kFill,    // paths are loops, filled with the even-odd rule
    kText,
    kDot,  // paths[0][0]
  };
  Primitive() = default;
  Primitive(Kind k, Pen p, std::vector<std::vector<Point2>> ps = {})
      : kind(k), pen(p), paths(std::move(ps)) {}

  Kind kind = Kind::kStroke;
  Pen pen;
  std::vector<std::vector<Point2>> paths;
  // kStroke: a polyline's own width in target units; 0 uses the pen.
  double width = 0;
  // kStroke: loops (even-odd) the strokes are clipped to; empty for none.
  // Hatch pattern lines use it.
  std::vector<std::vector<Point2>> clip;
  TextRun text;
};

class PrimitiveSink {
 public:
  virtual ~PrimitiveSink() = default;
  virtual void Add(Primitive primitive) = 0;
};

class EntityWalker {
 public:
  // `doc` must outlive the walker.
  explicit EntityWalker(Document& doc);

  // Largest distance between a curve and its chords, in target units.
  void set_tolerance(double tolerance) { tolerance_ = tolerance; }
  // Layers hidden besides the frozen, off and non-plotting ones (names,
  // any case); replaces the previous set.
  void set_hidden_layers(const std::vector<std::string_view>& names);

  // Every entity of `block`, its coordinates mapped by `to_target`.
  void WalkBlock(const Block& block, const Affine& to_target,
                 PrimitiveSink& sink);
  void WalkEntity(Entity e, const Affine& to_target, PrimitiveSink& sink);

  // Entities not drawn, by DXF type (some with a reason in brackets).
  const std::map<std::string, int>& not_drawn() const { return not_drawn_; }

 private:
  struct LayerInfo {
    Pen pen;
    bool hidden = false;
  };
  // What a block reference hands to its block's entities.
  struct Context {
    Affine xf;
    Pen by_block;
    std::string block_layer;  // the reference's layer, for layer 0
    int depth = 0;
  };

  const LayerInfo& Layer(std::string_view name);
  bool Visible(const Entity& e, const Context& c);
  Pen PenOf(const Entity& e, const Context& c);
  std::string EffectiveLayer(const Entity& e, const Context& c) const;
  void Walk(Entity e, const Context& c, PrimitiveSink& sink);
  void WalkInsert(Entity e, const Context& c, PrimitiveSink& sink);
  void WalkBlockRef(std::string_view name, const Affine& xf, Entity ref,
                    const Context& c, PrimitiveSink& sink);
  void WalkText(Entity e, const Context& c, PrimitiveSink& sink,
                bool attribute);
  void WalkMText(Entity e, const Context& c, PrimitiveSink& sink);
  void WalkHatch(Entity e, const Context& c, PrimitiveSink& sink);
  void WalkPolyline(Entity e, const Context& c, PrimitiveSink& sink);
  void WalkImageFrame(Entity e, const Context& c, const Pen& pen,
                      PrimitiveSink& sink);
  void NotDrawn(std::string what) { ++not_drawn_[what]; }
  // Segments for an arc of `sweep` radians and radius `r` (target units).
  int Segments(double sweep, double r) const;

  Document& doc_;
  double tolerance_ = 0.05;
  std::unordered_map<std::string, LayerInfo> layers_;  // upper-case names
  std::unordered_set<std::string> hidden_;             // upper-case names
  std::map<std::string, int> not_drawn_;
};

// Helpers shared with tests and renderers.

// The points of a polyline segment from `a` to `b` with `bulge` (tan of a
// quarter of the signed sweep), `a` first and `b` last, with at most
// `max_error` between the arc and its chords.
std::vector<Point2> BulgeSegment(Point2 a, Point2 b, double bulge,
                                 double max_error);

// Uniform scale of the x/y part of `a` (the square root of the absolute
// determinant): how lengths grow under the map.
double AffineScale2(const Affine& a);

}  // namespace lmt::dxf

#endif  // LMT_DXF_ENTITY_WALK_H_

// New VIEWPORT entities and their annotation scale.
//
// AddViewport writes the tag sequence a CAD program writes for the drawing's
// version (170 from 2004, the lighting and visual-style codes from 2007) and
// the viewport's own annotation scale (extension dictionary ->
// ASDK_XREC_ANNOTATION_SCALE_INFO -> XRECORD -> SCALE), creating the SCALE
// in ACAD_SCALELIST when the drawing lacks it. On/off is bit 131072 of 90
// with 68 = 0; an "on" viewport gets the given positive 68.
#ifndef LMT_DXF_VIEWPORT_EDIT_H_
#define LMT_DXF_VIEWPORT_EDIT_H_

#include <string>
#include <string_view>
#include <vector>

#include "dxf/document.h"
#include "dxf/viewport.h"

namespace lmt::dxf {

struct ViewportSettings {
  Vec3 center;  // paper coordinates
  double width = 0, height = 0;
  double view_center_x = 0, view_center_y = 0;  // DCS
  Vec3 target;                                  // WCS
  Vec3 direction{0, 0, 1};
  double view_height = 0;  // model units; 0: same as `height` (1:1)
  double twist = 0;        // degrees
  std::string layer = "0";
  bool locked = false;
  bool on = true;
  int id = 2;      // 69; 1 only for a layout's main viewport
  int status = 0;  // 68 when on; 0: id
  // SCALE name ("1:50"); empty: derived from height / view_height.
  std::string annotation_scale;
  int extra_flags = 0;  // OR-ed into 90 besides the defaults
};

// Adds a viewport to a paper-space block. Invalid Entity for R12 or when
// width, height or view height is not positive.
Viewport AddViewport(Document& doc, Block* block,
                     const ViewportSettings& entry);

// The AcDbViewport codes after 69 (view, snap and grid, flags, UCS...) for
// `entry` in the drawing's release: what AddViewport writes, and what an
// R13 or R14 viewport gains when its drawing becomes DXF 2000.
std::vector<Tag> ViewportViewTags(Document& doc, const ViewportSettings& entry);

// Points the viewport's annotation-scale XRECORD at the SCALE named `name`
// ("1:50", "2:1"), creating both when absent. False when the name is not of
// the form "a:b" with positive numbers and no such SCALE exists.
bool SetViewportAnnotationScale(Document& doc, Entity viewport,
                                std::string_view name);
// The SCALE name of the viewport's annotation scale, "" when it has none.
std::string ViewportAnnotationScale(Document& doc, const Entity& viewport);

// "1:50" for paper/model = 0.02; "2:1" for 2. Rounds to the nearest
// integer ratio of the larger side.
std::string ScaleName(double paper_per_model);

}  // namespace lmt::dxf

#endif  // LMT_DXF_VIEWPORT_EDIT_H_

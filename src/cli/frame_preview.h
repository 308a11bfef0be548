// An SVG picture of a drawing's model space with the frames of the frame
// table outlined in red, numbered and labelled with their layout names: a
// quick look at what `layomat frames` found.
//
// Drawn from the file itself (not through the CAD host) by the engine's
// walk (dxf/entity_walk.h): curves, polylines with their bulges, block
// references to any depth, and the outlines of fills; texts are left out. The
// picture shows the found frames with a margin around them, or the whole model
// space when no frame was found; Y points up as in the drawing.
#ifndef LMT_CLI_FRAME_PREVIEW_H_
#define LMT_CLI_FRAME_PREVIEW_H_

#include <string>

#include "core/status.h"
#include "frames/frame_table.h"

namespace lmt::cli {

// Reads `drawing` (recovering it, as the run did, with `recover`) and
// returns the SVG text. IOError or Corruption when the drawing cannot be
// read.
Result<std::string> RenderFramePreview(const std::string& drawing,
                                       const frames::FrameTable& table,
                                       bool recover = false);

// RenderFramePreview written to `svg_path` through a temporary file.
Status WriteFramePreview(const std::string& drawing,
                         const frames::FrameTable& table,
                         const std::string& svg_path, bool recover = false);

}  // namespace lmt::cli

#endif  // LMT_CLI_FRAME_PREVIEW_H_

// The per-object readers of the frame search: one selected drawing object
// becomes one row of the frame table. A lightweight polyline gives its own
// first four vertices; a block reference or an external reference gives
// the last visible polyline of four or five vertices inside its definition,
// placed into model space, or its bounding box, as the block search mode
// says; then every frame gets its measures (sort point, distance, position
// along the direction polyline, extents, size).
//
// Host calls are the expensive part (each one crosses into the CAD program
// over COM), so every property is read once per object, and what belongs
// to a block definition rather than to the reference (its kind, its inner
// polyline, its constant attributes) is read once per definition and kept
// for the rest of the search. The drawing does not change during a search.
//
// A host call that fails skips only its own statement: the cells it would
// have written keep what they had, and the reader goes on.
//
// Limits: the object model offers no block base point, so definitions are
// taken to have theirs at the origin (the usual case; a frame block with
// another base point comes out shifted by it).
#ifndef LMT_FRAMES_FRAME_READERS_H_
#define LMT_FRAMES_FRAME_READERS_H_

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "frames/frame_ordering.h"
#include "frames/frame_table.h"
#include "host/object_model.h"
#include "host/user.h"

namespace lmt::frames {

inline constexpr std::string_view kPolylineName = "AcDbPolyline";
inline constexpr std::string_view kReferenceName = "AcDbBlockReference";
// The object names of the only objects FrameReader::Read takes as frames.
inline constexpr std::array<std::string_view, 2> kFrameObjectNames = {
    kPolylineName, kReferenceName};

// `Option_BlockPoisk`: where the corners of a reference come from.
enum class BlockSearchMode : int {
  kInnerPolyline = 0,     // "By polyline inside"
  kBoundingBox = 1,       // "By size"
  kBoxWhenUnrotated = 2,  // "By size If rotation angle = 0"
};

struct ReaderOptions {
  // The main window's attribute tag; empty reads no attributes.
  std::string attribute_tag;
  BlockSearchMode block_mode = BlockSearchMode::kInnerPolyline;
  // IntelliCAD hands out a polyline's vertices one by one more reliably
  // than its whole coordinate array.
  bool vertex_by_vertex = false;
  // The filter window's block name, when that criterion is on: anonymous
  // references (dynamic blocks) pass the selection filter by their "*U"
  // name and are kept only when their effective name is this one.
  std::string required_block_name;
  MeasureOptions measure;
};

class FrameReader {
 public:
  // All references must outlive the reader.
  FrameReader(host::Document& document, host::User& user, ReaderOptions options,
              FrameTable& table);
  FrameReader(const FrameReader&) = delete;
  FrameReader& operator=(const FrameReader&) = delete;

  // Writes the object's ObjectID into the "ID" cell of `row` and, when the
  // object is a frame (a polyline, or a reference that passes the block
  // name), fills the row. Returns whether it was a frame, that is whether
  // the row is taken. REQUIRES: 0 < row < table.row_count().
  bool Read(const host::Entity& entity, int row);

 private:
  // What the search keeps per block definition.
  struct Definition {
    host::BlockPtr block;  // null when Blocks.Item refused
    std::optional<bool> is_xref;
    bool walked = false;
    std::optional<Quad> inner;  // the last qualifying polyline's vertices
    Point origin;               // the base point (Origin); 0 when refused
    bool constants_read = false;
    std::optional<std::string> constant_attribute;
  };

  Definition& DefinitionOf(const std::string& name);
  void ReadPolyline(const host::Polyline& polyline, int row);
  // Returns the angle the frame's sides run at: the rotation for corners
  // placed from the inner polyline, 0 for the bounding box.
  double ReadReference(const host::BlockReference& reference,
                       Definition& definition, bool xref, int row);
  void ReadAttribute(const host::BlockReference& reference,
                     Definition& definition, int row);
  void WalkDefinition(Definition& definition);
  void WriteVertex(int row, int vertex, Point p);
  void Measure(int row, double angle);

  host::Document& document_;
  host::User& user_;
  ReaderOptions options_;
  FrameTable& table_;
  bool blocks_read_ = false;  // Blocks is read once, on the first need
  host::BlocksPtr blocks_;    // null when the host refused it
  std::map<std::string, Definition> definitions_;  // by upper-case name
};

}  // namespace lmt::frames

#endif  // LMT_FRAMES_FRAME_READERS_H_

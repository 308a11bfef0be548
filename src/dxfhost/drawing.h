// Drawing: the state one open drawing shares with every object-model wrapper
// made for it (entities, blocks, layouts, selection sets), plus the small
// lookups over dxf::Document those wrappers need (layouts, spaces, the
// coordinate systems of the session).
//
// Wrappers hold a shared_ptr<Drawing> and a record id, so they stay valid as
// long as the drawing is open in the session; after Close every wrapper of
// that drawing answers kNotFound. Session state (active layout, MSpace, UCS,
// variables the drawing does not store) lives here and not in the file.
#ifndef LMT_DXFHOST_DRAWING_H_
#define LMT_DXFHOST_DRAWING_H_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/status.h"
#include "dxf/document.h"
#include "host/call_gate.h"
#include "host/host_kind.h"
#include "host/object.h"
#include "host/point.h"
#include "host/user.h"
#include "host/variant.h"

namespace lmt::dxfhost {

// Case-insensitive ordering for variable and set names.
struct NoCaseLess {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

// One tab of the drawing as the file describes it.
struct LayoutInfo {
  uint64_t handle = 0;  // the LAYOUT object; 0 for R12's implied layouts
  std::string name;
  dxf::Block* block = nullptr;
  int tab_order = 0;
};

// A named selection set's members (record ids, in selection order).
struct SelectionData {
  std::string name;
  std::vector<dxf::RecordId> members;
  bool deleted = false;
};

// R12 blocks may have no handle, yet the object model needs an id for an
// entity's owner. Such a block is named by its BLOCK record's index with the
// top bit set, which no handle in a real drawing reaches.
inline constexpr uint64_t kStandInIdBit = uint64_t{1} << 63;
inline uint64_t StandInBlockId(dxf::RecordId begin) {
  return kStandInIdBit | begin;
}
inline bool IsStandInBlockId(uint64_t id) { return (id & kStandInIdBit) != 0; }

struct Drawing {
  std::unique_ptr<dxf::Document> doc;
  std::string path;  // full path; empty for a drawing never saved
  // The release ($ACADVER) the last SaveAs wrote, which Close(true) keeps;
  // empty: the drawing's own.
  std::string save_release;
  std::shared_ptr<host::CallGate> gate;
  host::User* user = nullptr;  // may be null: picks are then cancelled
  host::HostKind kind = host::HostKind::kAutoCad;
  bool closed = false;

  // The active tab: its block (model space for the Model tab). The file's
  // *Paper_Space layout is only the one it opens on; switching tabs is
  // session state (see document.cc).
  dxf::Block* active_block = nullptr;
  // The last paper layout made active (what TILEMODE 0 returns to).
  dxf::Block* last_paper_block = nullptr;
  bool mspace = false;  // inside a paper viewport
  dxf::RecordId active_pviewport = dxf::kNoRecord;
  // The session UCS: a rotation about world Z through the origin (all the
  // add-in makes: World, and View of a plan view).
  double ucs_angle = 0;  // radians, UCS X axis from world X
  bool ucs_world = true;
  std::string ucs_name;
  // Variables the drawing does not store.
  std::map<std::string, host::Variant, NoCaseLess> session_vars;
  std::vector<std::shared_ptr<SelectionData>> selection_sets;
  // The drawings external references name, this one's and theirs, read on
  // first use and kept for the session, by full path (null: unreadable).
  std::map<std::string, std::shared_ptr<Drawing>> xrefs;

  Status Live() const;

  // File text <-> UTF-8 (the object model's text): drawings up to 2004
  // hold code-page bytes, all hold \U+XXXX escapes.
  std::string Decode(std::string_view raw) const;
  std::string Encode(std::string_view utf8) const;
  dxf::Entity entity(dxf::RecordId id) { return doc->entity(id); }

  // Tabs in tab order, "Model" first. Kept between calls: whatever adds,
  // renames or deletes a layout calls ForgetLayouts afterwards (or appends
  // a new last tab with AddKnownLayout). The reference is the cache: valid
  // until the next call after ForgetLayouts.
  const std::vector<LayoutInfo>& Layouts();
  void ForgetLayouts() { layouts_known_ = false; }
  // A layout just added as the last tab: the known list grows by it instead
  // of being read again (quadratic over a thousand new layouts).
  void AddKnownLayout(LayoutInfo info);
  // A layout just deleted (its LAYOUT object `handle`): its tab leaves the
  // known list and the others keep their order, rather than the list being
  // read again (quadratic over a split run's thousands of deletions). The
  // deletion renumbered the other tabs: LastTabOrder reads them again.
  void DropKnownLayout(uint64_t handle);
  // The highest tab number of any layout (0 with none but Model).
  int LastTabOrder();
  // The tab of that name (ASCII letters without regard to case, the first
  // of equal names), or null. Looked up, not searched: a run of a thousand
  // layouts asks for each of them by name.
  const LayoutInfo* FindLayout(std::string_view name);
  // The drawing that external-reference block `block` of `owner` names;
  // `owner` is this drawing's document or one of `xrefs`, whose folder a
  // relative path starts from. Null when the block is no reference or its
  // file cannot be read. Wrappers of its entities stay valid while this
  // drawing is open.
  std::shared_ptr<Drawing> Xref(dxf::Document& owner, const dxf::Block& block);
  // The tab whose block is `block`; name empty when it is no layout block.
  LayoutInfo LayoutOfBlock(const dxf::Block* block);
  bool IsModel(const dxf::Block* block) const {
    return block == doc->model_space();
  }
  // The block that holds entity `id` (its owner, else by the 67 flag).
  dxf::Block* BlockOfEntity(dxf::RecordId id);
  // "Model", a layout name, or "" for a block definition (code 410).
  std::string SpaceName(const dxf::Block* block);

  // The viewport the user works through: the entered paper viewport while
  // MSpace is on, else nothing (tiled model space or paper space).
  bool InViewport() const {
    return !IsModel(active_block) && mspace &&
           active_pviewport != dxf::kNoRecord;
  }

  // The cache of Layouts(), with its indexes into it by upper-case name
  // and by block (first of equals).
  void IndexLayout(size_t at);
  bool tab_orders_stale_ = false;
  // LastTabOrder's answer while the list and its numbers stand.
  std::optional<int> last_tab_order_;
  std::vector<LayoutInfo> layouts_cache_;
  std::unordered_map<std::string, size_t> layout_by_name_;
  std::unordered_map<const dxf::Block*, size_t> layout_by_block_;
  bool layouts_known_ = false;
};

// Display of the current view: the view target, its twist (radians) and the
// view centre in display coordinates (DCS). See document_view.cc.
struct ViewFrame {
  host::Point target;
  double twist = 0;
  host::Point view_center;
  host::Point direction{0, 0, 1};
};

// The model view shown in tiled model space (VPORT *Active).
ViewFrame TiledView(Drawing& d);
// The view of a paper viewport.
ViewFrame ViewportView(Drawing& d, dxf::RecordId viewport);

// The engine's outcome as an object-model Status.
Status FromDxf(const dxf::Status& s);

// Reads the drawing at `path` into a new Drawing (session state set from
// its header); `recover` repairs what a strict read refuses (see
// dxf::ReadOptions), the repairs listed in the document's repairs().
Result<std::shared_ptr<Drawing>> ReadDrawing(
    const std::string& path, std::shared_ptr<host::CallGate> gate,
    host::User* user, host::HostKind kind, bool recover = false);

// Rotation by `angle` radians about the origin (z kept).
host::Point Rotate(const host::Point& p, double angle);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_DRAWING_H_

// Layout editing: create, rename, delete, reorder and activate paper-space
// layouts, copy page setups, and clear a layout's contents.
//
// Every edit keeps the links CAD programs and their audits check: the
// BLOCK_RECORD 340 <-> LAYOUT 330 pair, the ACAD_LAYOUT entry under the
// layout's own name, the LAYOUT's owner and reactor (ACAD_LAYOUT), unique tab
// orders 1..n, and a main (id 1) viewport in every layout. R2000 and later
// only: R12 has one implied paper space, and these calls refuse it.
#ifndef LMT_DXF_LAYOUT_EDIT_H_
#define LMT_DXF_LAYOUT_EDIT_H_

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "dxf/document.h"
#include "dxf/objects.h"
#include "dxf/status.h"

namespace lmt::dxf {

// The layout named `name` (case-insensitive; "Model" included), invalid
// Entity inside when none.
Layout FindLayout(Document& doc, std::string_view name);

// True when `name` can name a new paper layout: a valid table name, not
// "Model", not taken (case-insensitive).
bool IsFreeLayoutName(Document& doc, std::string_view name);

// Creates a paper layout at the end of the tab order: BLOCK_RECORD
// *Paper_SpaceN (first free N), BLOCK/ENDBLK, the LAYOUT object (page setup
// copied from the first existing paper layout, else none_device on an A4
// landscape sheet), its ACAD_LAYOUT entry and its main viewport (id 1,
// centred on the paper). InvalidArgument for a bad or taken name or an R12
// drawing.
//
// `known` is for a caller that keeps its own list of the layouts: with it
// nothing is looked up in the layout dictionary, so adding a thousand
// layouts stays linear.
struct KnownLayouts {
  int last_tab_order = 0;        // the highest tab order in use
  Layout first_paper{Entity()};  // its page setup is copied; may be invalid
  bool name_is_free = false;     // the caller checked the name
};
Status AddLayout(Document& doc, std::string_view name, Layout* out,
                 const KnownLayouts* known = nullptr);

// Gives a drawing that has model space and one paper space but no layouts
// (an R13 or R14 drawing being made DXF 2000) its layout dictionary, a
// "Model" layout and a "Layout1" layout for the paper space, each linked
// with its block record. Layouts already there are kept.
Status AddLayoutsOfSpaces(Document& doc);

// Renames: LAYOUT code 1 and the ACAD_LAYOUT key. The block keeps its name.
Status RenameLayout(Document& doc, Layout layout, std::string_view name);

// Deletes a paper layout with its block, entities and everything they own,
// then renumbers the remaining tab orders 1..n. The active layout hands
// *Paper_Space to the next one in tab order first. "Model" and the last
// paper layout are refused (InvalidArgument).
Status DeleteLayout(Document& doc, Layout layout);

// Deletes `layouts` in this order, leaving to the byte what DeleteLayout on
// each in turn leaves (the same layouts made active, block names, tab
// numbers), but edits the layout dictionary, erases the LAYOUT objects and
// renumbers the tabs once: a split run deletes hundreds of layouts from a
// drawing of a thousand. `before_each(i)`, when given, runs just before
// layout i goes (a host moving its session off it); its failure stops the
// deletion. Drawings one pass cannot promise that for (a layout listed
// twice, a tab without a number, a dictionary key that is not its layout's
// name) are done one by one. On failure the layouts before the failing one
// are deleted and the rest are not.
Status DeleteLayouts(
    Document& doc, std::span<const Layout> layouts,
    const std::function<Status(size_t index)>& before_each = nullptr);

// Moves a paper layout to tab position `position` (1 = first after Model,
// clamped to 1..n) and renumbers all paper layouts 1..n.
Status MoveLayout(Document& doc, Layout layout, int position);

// Makes a paper layout the one the file opens on: its block becomes
// *Paper_Space (entities move between BLOCKS and ENTITIES), the previous
// one takes a free *Paper_SpaceN name, $TILEMODE becomes 0 and the paper
// header variables ($PLIMMIN, $PLIMMAX, $PEXTMIN, $PEXTMAX, $PINSBASE) are
// copied from the LAYOUT.
Status MakeLayoutActive(Document& doc, Layout layout);

// Copies the page setup (every AcDbPlotSettings code) of `from`, which may
// live in another document, onto `to`, keeping `to`'s model-type flag
// (1024), then recomputes `to`'s limits from the paper.
void CopyPageSetup(Document& doc, const Entity& from, Layout to);

// Sets AcDbPlotSettings code `code` of `layout` to `value`, adding the code
// at the end of the subclass when missing. False when the layout has no
// plot settings.
bool SetPlotSetting(Layout layout, int code, std::string_view value);

// Sets the limits and the main viewport of `layout` again from its paper,
// margins and rotation, as after a change of paper.
void FitLayoutToPaper(Document& doc, Layout layout);

// Drops the layout's "ACAD_PSEXT" XDATA, the device description a CAD
// program shows for the page setup; it no longer holds once the device or
// paper changes, and the program writes it anew.
void DropDeviceDescription(Layout layout);

// Erases every entity of the layout's block; the main (id 1) viewport stays
// when `keep_main_viewport`.
void EraseLayoutContents(Document& doc, const Layout& layout,
                         bool keep_main_viewport);

// The layout's main viewport: id 1, else its first VIEWPORT; invalid when
// there is none.
Entity MainViewport(Document& doc, const Layout& layout);

}  // namespace lmt::dxf

#endif  // LMT_DXF_LAYOUT_EDIT_H_

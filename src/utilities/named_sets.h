// The named selection sets of the layout utilities. Every set is made fresh:
// a set of the same name left over from an earlier command (of this add-in
// or another) is deleted first, so that its members are never mixed in.
#ifndef LMT_UTILITIES_NAMED_SETS_H_
#define LMT_UTILITIES_NAMED_SETS_H_

#include <string_view>

#include "core/status.h"
#include "host/document.h"
#include "host/selection_filter.h"
#include "host/selection_set.h"

namespace lmt::utilities {

// Selection-set names, shared with the rest of the add-in.
inline constexpr std::string_view kSetAllViewports = "NaborObiektov";
inline constexpr std::string_view kSetPickedViewports = "ViewportNabor";
inline constexpr std::string_view kSetKeep = "ViewpObiektiNabor";
inline constexpr std::string_view kSetWindow = "NaborViewportObiektov";
inline constexpr std::string_view kSetModel = "NaborModel";

// Walks the document's selection sets and deletes those named `name`
// (without regard to case). Ok when none is left; the first refusal
// otherwise (the walk itself, a Name or a Delete).
Status DeleteSelectionSet(host::Document& document, std::string_view name);

// DeleteSelectionSet, then SelectionSets.Add(name). A failed delete is not
// fatal by itself: Add then decides (it refuses a name still taken).
Result<host::SelectionSetPtr> RecreateSelectionSet(host::Document& document,
                                                   std::string_view name);

// Group 0 (object type) = "VIEWPORT".
host::SelectionFilter ViewportFilter();

}  // namespace lmt::utilities

#endif  // LMT_UTILITIES_NAMED_SETS_H_
